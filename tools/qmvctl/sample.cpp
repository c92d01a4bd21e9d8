#include "sample.h"

namespace qmvctl {

void store_sample_instances(Database& database) {
  store_sample_profiles(database);
  store_sample_remote_access(database);
  store_sample_text_redirection(database);
  store_sample_accounts(database);
  store_sample_boot(database);
  store_sample_power(database);
  store_sample_indications(database);
}

}  // namespace qmvctl
