#include <soci/soci.h>
#include <soci/sqlite3/soci-sqlite3.h>

#include <cstring>

#include "compact_columns.h"
#include "contenders.h"

namespace qmv::bench {

namespace {

template <std::size_t Width>
void copy(const std::string& text, char (&field)[Width]) {
  std::memcpy(field, text.data(), std::min(text.size(), Width));
}

void read(const soci::row& row, compact_sdr_rec& record) {
  std::size_t index = 0;
#define READ_INTEGER(column, member) record.member = row.get<int>(index++, 0);
#define READ_TEXT(column, member) copy(row.get<std::string>(index++, ""), record.member);
  COMPACT_COLUMNS(READ_INTEGER, READ_TEXT, READ_TEXT)
  record.FruRecord.EntityID = record.EntityID;
  record.FruRecord.EntityInst = record.EntityInstance;
}

class Soci : public Wrapper {
 public:
  explicit Soci(const std::string& path) : db_(soci::sqlite3, "dbname=" + path) {}

  std::vector<compact_sdr_rec> get_all() override {
    std::vector<compact_sdr_rec> records;
    const soci::rowset<soci::row> rows = (db_.prepare << "select * from compact_sdr");
    for (const soci::row& row : rows) read(row, records.emplace_back());
    return records;
  }

  std::vector<compact_sdr_rec> get_one(const char* DeviceID) override {
    std::vector<compact_sdr_rec> records;
    const std::string key = DeviceID;
    soci::row row;
    db_ << "select * from compact_sdr where DeviceID = :DeviceID", soci::use(key), soci::into(row);
    read(row, records.emplace_back());
    return records;
  }

  void set(const compact_sdr_rec& record) override {
    // Executed when the statement ends, after the temporaries in it are gone: so each value has a name.
#define NAME_INTEGER(column, member) const int column = record.member;
#define NAME_TEXT(column, member) \
  const std::string column(record.member, strnlen(record.member, sizeof(record.member)));
#define VALUE(column, member) ":" #column ", "
#define LAST_VALUE(column, member) ":" #column
#define USE(column, member) , soci::use(column)
    COMPACT_COLUMNS(NAME_INTEGER, NAME_TEXT, NAME_TEXT)
    db_ << "replace into compact_sdr values (" COMPACT_COLUMNS(VALUE, VALUE, LAST_VALUE) ")" COMPACT_COLUMNS(USE, USE,
                                                                                                             USE);
  }

  void execute(const char* sql) override {
    db_ << sql;
  }

 private:
  soci::session db_;
};

}  // namespace

std::unique_ptr<Wrapper> open_soci(const std::string& path) {
  return std::make_unique<Soci>(path);
}

}  // namespace qmv::bench
