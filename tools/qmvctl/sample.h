// The sample: the profile instances and jobs of a plausible small controller, stored through the library's setters.
// Values are those of the DMTF classes that the tables are named with, 0 (unknown) or 1 (other) where no value fits;
// lists are separated by commas. Identifiers begin "QMV:", addresses are those reserved for documentation.
#ifndef QMVCTL_SAMPLE_H
#define QMVCTL_SAMPLE_H

#include "database.h"

namespace qmvctl {

// Each fills the tables of a new database; a row that is not stored is an error.
void store_sample_instances(Database& database);   // of the instance database
void store_sample_jobs(Database& database);        // of the temporary database
void store_sample_shell_jobs(Database& database);  // of the command-line shell's database

// The families of profile tables.
void store_sample_profiles(Database& database);
void store_sample_remote_access(Database& database);
void store_sample_text_redirection(Database& database);
void store_sample_accounts(Database& database);
void store_sample_boot(Database& database);
void store_sample_power(Database& database);
void store_sample_indications(Database& database);

}  // namespace qmvctl

#endif
