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

// What FRUs and sensors fill of the members of a pair.
std::vector<Field> fields_of_fru() {
  using Record = fru_sdr_rec;
  return with_strings({FIELD(FruIDSlaveAddr), FIELD(DeviceAccessAddr), FIELD(LUNBusID), FIELD(ChannelNumber),
                       FIELD(EntityID), FIELD(EntityInst)});
}
std::vector<Field> fields_of_sensor() {
  using Record = fru_sdr_rec;
  return {FIELD(EntityID), FIELD_FROM("EntityInstance", EntityInst), FIELD(IdStr)};
}
Field length_of(const std::string& column) {
  using Record = fru_sdr_rec;
  return FIELD_FROM(column, IdStrLen);
}
std::vector<Field> with(std::vector<Field> fields, const Field& one_more) {
  fields.push_back(one_more);
  return fields;
}

Reader assets() {
  using Record = fru_sdr_rec;
  return masked<Record>("db_get_all_physicalasset_element", db_get_all_physicalasset_element).filling(asset_fields());
}

void run(sqlite3* db, const std::string& statements) {
  EXPECT_EQ(SQLITE_OK, sqlite3_exec(db, statements.c_str(), nullptr, nullptr, nullptr)) << sqlite3_errmsg(db);
}

// The other row of a pair: a FRU, or a sensor of its entity.
constexpr std::int32_t kEntity = 5;
constexpr std::int32_t kInstance = 6;
constexpr char kFruBeside[] =
    "delete from fru; insert into fru values (1, 2, 3, 4, 5, 6, 7, 'd', 'e', 'f', 'g', 'h', 'i', 'j', 'k', 'l', 'm');";
std::string sensor_beside(const std::string& sensors) {
  return "delete from " + sensors + "; insert into " + sensors +
         " (DeviceID, EntityID, EntityInstance, IdStrLen, IdStr) values ('d', 5, 6, 8, 'sensor');";
}

Reader all_pairs(const std::string& name, std::int32_t (*get_all)(sqlite3*, std::int32_t*, fru_sdr_rec**),
                 const std::string& beside) {
  return reader_of_new<fru_sdr_rec>(name, [=](sqlite3* db, const Row&, fru_sdr_rec** to) {
    run(db, beside);
    std::int32_t count = 0;
    const std::int32_t status = get_all(db, &count, to);
    EXPECT_EQ(1, count);
    return status;
  });
}

// Its statement does not compile with the schema's sensor tables, which have columns of the FRU's names.
Reader one_pair(const std::string& name, const std::string& sensors,
                std::int32_t (*get_one)(sqlite3*, std::int32_t, std::int32_t, fru_sdr_rec*),
                const std::string& beside) {
  return reader_into<fru_sdr_rec>(name, [=](sqlite3* db, const Row&, fru_sdr_rec* to) {
    run(db, beside);
    run(db, "create temp view " + sensors + " as select EntityID, EntityInstance, IdStrLen, IdStr from main." +
                sensors + ";");
    const std::int32_t status = get_one(db, kEntity, kInstance, to);
    run(db, "drop view temp." + sensors + ";");
    return status;
  });
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
  {
    const auto all_compact = [](const std::string& beside) {
      return all_pairs("db_get_all_fru_compact_sdr", db_get_all_fru_compact_sdr, beside);
    };
    const auto one_compact = [](const std::string& beside) {
      return one_pair("db_get_fru_compact_sdr", "compact_sdr", db_get_fru_compact_sdr, beside);
    };
    const auto all_full = [](const std::string& beside) {
      return all_pairs("db_get_all_fru_full_sdr", db_get_all_fru_full_sdr, beside);
    };
    const auto one_full = [](const std::string& beside) {
      return one_pair("db_get_fru_full_sdr", "full_sdr", db_get_fru_full_sdr, beside);
    };
    const std::map<std::string, std::string> fru = {{"FruIDSlaveAddr", "1"}, {"DeviceAccessAddr", "2"},
                                                    {"LUNBusID", "3"},       {"ChannelNumber", "4"},
                                                    {"EntityID", "5"},       {"EntityInst", "6"}};
    const std::vector<Field> with_own_length = with(fields_of_fru(), length_of("IDStrLen"));
    tables.push_back(read_by(table_named("fru"), fru,
                             {all_compact(sensor_beside("compact_sdr")).filling(with_own_length),
                              all_full(sensor_beside("full_sdr")).filling(with_own_length),
                              one_compact(sensor_beside("compact_sdr")).filling(fields_of_fru()),
                              one_full(sensor_beside("full_sdr")).filling(with_own_length)}));
    const std::map<std::string, std::string> sensor = {{"EntityID", "5"}, {"EntityInstance", "6"}};
    tables.push_back(
        compact(sensor, {all_compact(kFruBeside).filling(fields_of_sensor()),
                         one_compact(kFruBeside).filling(with(fields_of_sensor(), length_of("IdStrLen")))}));
    tables.push_back(
        read_by(table_named("full_sdr"), sensor,
                {all_full(kFruBeside).filling(fields_of_sensor()), one_full(kFruBeside).filling(fields_of_sensor())}));
  }
  return tables;
}

}  // namespace qmv::test
