#include "rows.h"

namespace qmvctl {

std::vector<fru_locator_sdr_rec> fru_locators(const Database& database) {
  std::vector<fru_locator_sdr_rec> locators;
  const char* keys =
      "select FruIDSlaveAddr, DeviceAccessAddr, LUNBusID, ChannelNumber from fru_locator_sdr order by rowid;";
  database.query(keys, [&](sqlite3_stmt* row) {
    const auto key = [row](int column) { return sqlite3_column_int(row, column); };
    fru_locator_sdr_rec* locator = nullptr;
    if (db_get_fru_locator_sdr_info(database.handle(), key(0), key(1), key(2), key(3), &locator) != 0) {
      database.fail_to_read("fru_locator_sdr");
    }
    locators.push_back(*locator);
    db_freemem(locator);
  });
  return locators;
}

}  // namespace qmvctl
