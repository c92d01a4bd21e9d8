#include <SQLiteCpp/SQLiteCpp.h>

#include <cstring>

#include "compact_columns.h"
#include "contenders.h"

namespace qmv::bench {

namespace {

void read(const SQLite::Statement& row, compact_sdr_rec& record) {
  int index = 0;
#define READ_INTEGER(column, member) record.member = row.getColumn(index++).getInt();
#define READ_TEXT(column, member) \
  std::strncpy(record.member, row.getColumn(index++).getText(), sizeof(record.member) - 1);
  COMPACT_COLUMNS(READ_INTEGER, READ_TEXT, READ_TEXT)
  record.FruRecord.EntityID = record.EntityID;
  record.FruRecord.EntityInst = record.EntityInstance;
}

class SqliteCpp : public Wrapper {
 public:
  explicit SqliteCpp(const std::string& path) : db_(path, SQLite::OPEN_READWRITE) {}

  std::vector<compact_sdr_rec> get_all() override {
    return read_all(SQLite::Statement(db_, "select * from compact_sdr"));
  }

  std::vector<compact_sdr_rec> get_one(const char* DeviceID) override {
    SQLite::Statement query(db_, "select * from compact_sdr where DeviceID = ?");
    query.bind(1, DeviceID);
    return read_all(std::move(query));
  }

  void set(const compact_sdr_rec& record) override {
#define VALUE(column, member) "?, "
#define LAST_VALUE(column, member) "?"
    SQLite::Statement insert(db_, "replace into compact_sdr values (" COMPACT_COLUMNS(VALUE, VALUE, LAST_VALUE) ")");
    int index = 1;
#define BIND(column, member) insert.bind(index++, record.member);
    COMPACT_COLUMNS(BIND, BIND, BIND)
    insert.exec();
  }

  void execute(const char* sql) override {
    db_.exec(sql);
  }

 private:
  static std::vector<compact_sdr_rec> read_all(SQLite::Statement query) {
    std::vector<compact_sdr_rec> records;
    while (query.executeStep()) read(query, records.emplace_back());
    return records;
  }

  SQLite::Database db_;
};

}  // namespace

std::unique_ptr<Wrapper> open_sqlitecpp(const std::string& path) {
  return std::make_unique<SqliteCpp>(path);
}

}  // namespace qmv::bench
