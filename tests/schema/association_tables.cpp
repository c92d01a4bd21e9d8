// The association registry.
#include "table.h"

namespace qmv::test {
namespace {

// An association whose lists have one element each.
struct Single {
  association_rec rec;
  char List5[256];
  char List6[256];
  char List7[256];
  char List8[256];
};

// Loads the one association, and keeps the elements of its lists.
Reader single_of(const std::string& name, auto load) {
  return reader_into<Single>(name, [load](sqlite3*, const Row&, Single* to) {
    association_rec* records = nullptr;
    std::int32_t count = 0;
    const std::int32_t status = load(&records, &count);
    EXPECT_EQ(1, count);
    if (records == nullptr) return status;
    to->rec = *records;
    std::strcpy(to->List5, records->List5[0]);
    std::strcpy(to->List6, records->List6[0]);
    std::strcpy(to->List7, records->List7[0]);
    std::strcpy(to->List8, records->List8[0]);
    FreeDBData(&records, count);
    return status;
  });
}

Table association() {
  using Record = Single;
  const auto selected = [](association_rec** to, std::int32_t* count) {
    return get_association_data(to, "select * from association;", count);
  };
  std::vector<Field> fields = {FIELD_FROM("ClassName", rec.ClassName),
                               FIELD_FROM("Text2", rec.Text2),
                               FIELD_FROM("Text3", rec.Text3),
                               FIELD_FROM("Flag4", rec.Flag4),
                               FIELD(List5),
                               FIELD(List6),
                               FIELD(List7),
                               FIELD(List8)};
  const std::vector<Field> without_name_space = fields;  // which follows from the class there
  fields.push_back(FIELD_FROM("NameSpace", rec.NameSpace));
  return {"Association",
          "association",
          {},
          fields,
          {},
          {single_of("get_association_data", selected),
           single_of("assoc_get_global_data", assoc_get_global_data).filling(without_name_space)}};
}

Table association_reg() {
  using Record = association_reg_rec;
  const auto load = [](sqlite3* db, const Row&, Record** to) {
    std::int32_t count = 0;
    const std::int32_t status = load_plugins(to, &count, sqlite3_db_filename(db, "main"));
    EXPECT_EQ(1, count);
    return status;
  };
  return {"Association",
          "association_reg",
          {},
          {FIELD(RegColumn3), FIELD(RegColumn0), FIELD(RegColumn2), FIELD(RegColumn1)},
          {},
          {reader_of_new<Record>("load_plugins", load)}};
}

}  // namespace

std::vector<Table> association_tables() {
  return {association(), association_reg()};
}

}  // namespace qmv::test
