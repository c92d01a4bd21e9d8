// Readers of a table whose rows are chosen by what they hold, or that make other records of them.
#include <algorithm>

#include "hostile/hostile_test.h"

namespace qmv::test {

namespace {

Table table_named(const std::string& name) {
  const auto all = all_tables();
  return *std::find_if(all.begin(), all.end(), [&](const Table& table) { return table.name == name; });
}

// A table whose rows hold what these readers look for.
Table read_by(Table table, const std::map<std::string, std::string>& given, const std::vector<Reader>& readers) {
  table.given = given;
  table.readers = readers;
  return table;
}

// A get-all that also takes a mask, which the usual row meets.
template <class Record>
Reader masked(const std::string& name, auto get_all) {
  return reader_of_new<Record>(name, [get_all](sqlite3* db, const Row&, Record** to) {
    std::int32_t count = 0;
    const std::int32_t status = get_all(db, &count, to, 2);
    EXPECT_EQ(1, count);
    return status;
  });
}

// A function that fills a record from a statement's row.
template <class Record>
Reader filler(const std::string& name, const std::string& table, std::int32_t (*fill)(Record*, sqlite3_stmt*)) {
  return reader_into<Record>(name, [=](sqlite3* db, const Row&, Record* to) {
    sqlite3_stmt* row = nullptr;
    sqlite3_prepare_v2(db, ("select * from " + table + ";").c_str(), -1, &row, nullptr);
    EXPECT_EQ(SQLITE_ROW, sqlite3_step(row));
    const std::int32_t status = fill(to, row);
    sqlite3_finalize(row);
    return status;
  });
}

// These members and the inventory strings.
std::vector<Field> with_strings(std::vector<Field> fields) {
  using Record = fru_sdr_rec;
  for (const Field& string :
       {FIELD(ChassisSerNumber), FIELD(ChassisPartNumber), FIELD(ChassisCustFields), FIELD(ProdSerNumber),
        FIELD(ProdPartNumber), FIELD(ProdMfrName), FIELD(BrdSerNumber), FIELD(BrdPartNumber), FIELD(BrdMfrName)})
    fields.push_back(string);
  return fields;
}

std::vector<Field> asset_fields() {
  using Record = fru_sdr_rec;
  return with_strings({FIELD(FruIDSlaveAddr), FIELD(DeviceAccessAddr), FIELD(LUNBusID), FIELD(ChannelNumber),
                       FIELD(EntityID), FIELD_FROM("EntityInstance", EntityInst), FIELD_FROM("FRUIDStrLen", IDStrLen),
                       FIELD(DevIdStr), FIELD(SensorNum), FIELD(IdStrLen), FIELD(IsFRUAvailable), FIELD(IdStr)});
}

std::vector<Field> joined_fields() {
  using Record = fru_sdr_rec;
  return with_strings({FIELD(FruIDSlaveAddr), FIELD(DeviceAccessAddr), FIELD(LUNBusID), FIELD(ChannelNumber),
                       FIELD(EntityID), FIELD(EntityInst), FIELD_FROM("IDStrLen", IdStrLen)});
}

Reader assets() {
  using Record = fru_sdr_rec;
  return masked<Record>("db_get_all_physicalasset_element", db_get_all_physicalasset_element).filling(asset_fields());
}

// A join of the FRU with a sensor of its entity.
Reader join(const std::string& name, const std::string& sensors,
            std::int32_t (*get_all)(sqlite3*, std::int32_t*, fru_sdr_rec**)) {
  return reader_of_new<fru_sdr_rec>(name,
                                    [=](sqlite3* db, const Row& row, fru_sdr_rec** to) {
                                      const std::string insert = "delete from " + sensors + "; insert into " + sensors +
                                                                 " (DeviceID, EntityID, EntityInstance) values ('d', " +
                                                                 row.at("EntityID").text + ", " +
                                                                 row.at("EntityInst").text + ");";
                                      sqlite3_exec(db, insert.c_str(), nullptr, nullptr, nullptr);
                                      std::int32_t count = 0;
                                      const std::int32_t status = get_all(db, &count, to);
                                      EXPECT_EQ(1, count);
                                      return status;
                                    })
      .filling(joined_fields());
}

Table compact(const std::map<std::string, std::string>& given, const std::vector<Reader>& readers) {
  return read_by(table_named("compact_sdr"), given, readers);
}

}  // namespace

std::vector<Table> derived_tables() {
  std::vector<Table> tables;
  {
    using Record = compact_sdr_rec;
    const auto by_mask = [](sqlite3* db, std::int32_t* count, Record** to, std::int32_t mask) {
      return db_get_all_compact_sdrs_by_phy_elem_type(db, mask, count, to);
    };
    tables.push_back(compact({{"EventTypeCode", "11"}}, {ALL(db_get_all_redundancyset)}));
    tables.push_back(compact({{"SensorType", "7"}}, {ALL(db_get_all_processor)}));
    tables.push_back(compact({{"SensorType", "12"}, {"PhysicalElement", "256"}}, {ALL(db_get_all_memory)}));
    tables.push_back(compact({{"PhysicalElement", "2"}},
                             {masked<Record>("db_get_all_compact_sdrs_by_phy_elem_type", by_mask), assets()}));
    tables.push_back(
        compact({}, {filler<Record>("db_fill_compact_sdr_fields", "compact_sdr", db_fill_compact_sdr_fields)}));
  }
  {
    using Record = full_sdr_rec;
    const auto by_mask = [](sqlite3* db, std::int32_t* count, Record** to, std::int32_t mask) {
      return db_get_all_full_sdrs_by_phy_elem_type(db, mask, count, to);
    };
    tables.push_back(read_by(table_named("full_sdr"), {{"PhysicalElement", "2"}},
                             {masked<Record>("db_get_all_full_sdrs_by_phy_elem_type", by_mask), assets()}));
    tables.push_back(read_by(table_named("full_sdr"), {},
                             {filler<Record>("db_fill_full_sdr_fields", "full_sdr", db_fill_full_sdr_fields)}));
  }
  const std::map<std::string, std::string> keys = {{"FruIDSlaveAddr", "1"}, {"DeviceAccessAddr", "2"},
                                                   {"LUNBusID", "3"},       {"ChannelNumber", "4"},
                                                   {"EntityID", "5"},       {"EntityInst", "6"}};
  tables.push_back(read_by(table_named("fru"), keys,
                           {join("db_get_all_fru_compact_sdr", "compact_sdr", db_get_all_fru_compact_sdr),
                            join("db_get_all_fru_full_sdr", "full_sdr", db_get_all_fru_full_sdr)}));
  return tables;
}

}  // namespace qmv::test
