// The profile tables, one for each CIM class that is published, keep the same rules. The rules stand in
// profile_rules_test.cpp; the test of a family of tables instantiates them with its tables and accessors, says in the
// options where they depart, and proves on its own what is theirs alone.
#ifndef QMV_TESTS_UNIT_PROFILE_RULES_H
#define QMV_TESTS_UNIT_PROFILE_RULES_H

#include <cstdint>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "support/table_test.h"

namespace qmv::test {

// A text member and the width that it is to have.
#define TEXT(member, bytes)                                                               \
  [] {                                                                                    \
    static_assert(sizeof(decltype(Record{}.member)) == (bytes), "the width of " #member); \
    return FIELD(member);                                                                 \
  }()
#define NUMBER(member) TEXT(member, 4)

using ProfileTable = RecordTable;

// A get-all of the rows 100 and 200. "%d" in what it says at the end stands for their number.
struct ProfileGetAllCase {
  std::string name;
  const ProfileTable& table;
  Get<std::int32_t*> call;
  std::string reading = {};
  std::string done = {};
  std::string count_failed = {};

  std::vector<Field> reads = {};  // where each member's value comes from, when that is not its own column
  bool clears_the_pointer = false;
  bool passes_codes_on = false;  // answers SQLite's code when the row statement does not compile; else 1
  std::int32_t without_memory = 1;
};

// Where a get-one puts what it reads.
enum class Into { kNewRecord, kCallersRecord };

// A get-one of the row 100.
struct ProfileGetOneCase {
  std::string name;
  const ProfileTable& table;
  Get<const Texts&> call;  // with the values of the key columns
  Texts keys = {};         // columns; none when the first row is taken, whatever it is
  std::string statement;   // for row 100
  std::string reading = {};
  std::string done = {};  // empty when nothing is said
  std::string no_row = {};
  std::string no_statement = {};

  std::vector<Field> reads = {};
  Into into = Into::kNewRecord;
  bool says_reading_before_the_step = false;
  bool passes_codes_on = false;
  bool tests_memory = true;  // else a failure is neither said nor leaves the statement open
  std::int32_t without_memory = 1;
};

// A set of the record that row 100 makes.
struct ProfileSetCase {
  std::string name;
  const ProfileTable& table;
  std::function<std::int32_t(sqlite3* db, const void* record)> call;
  std::string insert;
  std::string update;
  std::string present = {};
  std::string done = {};

  bool update_is_rejected = false;  // by SQLite, so that the row stays
};

// A get-one into a new record, by no key, one text or two, without the record's type.
template <class Record>
auto by_nothing(std::int32_t (*get)(sqlite3* db, Record** record)) {
  return erased<Record>([get](sqlite3* db, const Texts&, Record** record) { return get(db, record); });
}
template <class Record>
auto by_text(std::int32_t (*get)(sqlite3* db, const char* key, Record** record)) {
  return erased<Record>(
      [get](sqlite3* db, const Texts& keys, Record** record) { return get(db, keys[0].c_str(), record); });
}
template <class Record>
auto by_texts(std::int32_t (*get)(sqlite3* db, const char* first, const char* second, Record** record)) {
  return erased<Record>([get](sqlite3* db, const Texts& keys, Record** record) {
    return get(db, keys[0].c_str(), keys[1].c_str(), record);
  });
}

// A get-one into the caller's record, without the record's type.
template <class Record, class Call>
auto filling(Call call) {
  return [call](void** place, auto... arguments) { return call(arguments..., static_cast<Record*>(*place)); };
}

// The same by no key or one text.
template <class Record>
auto filling_by_nothing(std::int32_t (*get)(sqlite3* db, Record* record)) {
  return filling<Record>([get](sqlite3* db, const Texts&, Record* record) { return get(db, record); });
}
template <class Record>
auto filling_by_text(std::int32_t (*get)(sqlite3* db, const char* key, Record* record)) {
  return filling<Record>(
      [get](sqlite3* db, const Texts& keys, Record* record) { return get(db, keys[0].c_str(), record); });
}

// A set without the record's type.
template <class Record>
auto storing(std::int32_t (*set)(sqlite3* db, const Record* record)) {
  return [set](sqlite3* db, const void* record) { return set(db, static_cast<const Record*>(record)); };
}

inline void PrintTo(const ProfileTable& one, std::ostream* out) {
  *out << one.name;
}
inline void PrintTo(const ProfileGetAllCase& one, std::ostream* out) {
  *out << one.name;
}
inline void PrintTo(const ProfileGetOneCase& one, std::ostream* out) {
  *out << one.name;
}
inline void PrintTo(const ProfileSetCase& one, std::ostream* out) {
  *out << one.name;
}

class ProfileTest : public TableTest {
 protected:
  explicit ProfileTest(const ProfileTable& table) : TableTest("db_static_instance.c", table), table_(table) {}

  LogLine counted() const { return trace("Successfully returns the ssh count"); }

  // Whether a record is the one of `first`, read from these columns, or each member from its own when there are none.
  // Members that are not read hold what was there before.
  void expect_record(int first, const void* record, const std::vector<Field>& reads, char before = 0) const;

  // Lengths of a text around the width of its field.
  static std::vector<std::size_t> lengths_around(std::size_t width) { return {width - 1, width, width + 1, 5000}; }

  const ProfileTable& table_;
};

class ProfileGetAll : public ProfileTest, public testing::WithParamInterface<ProfileGetAllCase> {
 protected:
  ProfileGetAll() : ProfileTest(GetParam().table) {}

  std::string select_count() const { return "select count(*) from " + table_.name + ";"; }
  std::string select() const { return "select * from " + table_.name + ";"; }
  LogLine done(int rows) const;

  // Calls it with a pointer and a count of the test's own, which are to be kept unless the test says otherwise.
  std::int32_t get_all() { return GetParam().call(&records_, db, &count_); }
  void expect_pointer_kept() const;
  void expect_outputs_kept() const;
  void TearDown() override;

  const char* record(std::size_t i) const { return static_cast<const char*>(records_) + i * table_.record_size; }

  std::int32_t count_ = -1;
  void* records_ = this;
};

class ProfileGetOne : public ProfileTest, public testing::WithParamInterface<ProfileGetOneCase> {
 protected:
  ProfileGetOne() : ProfileTest(GetParam().table), callers_(table_.record_size, kBefore) {}

  bool has_keys() const { return !GetParam().keys.empty(); }
  bool makes_record() const { return GetParam().into == Into::kNewRecord; }
  bool is_key(const Field& field) const;

  // Reads the row 100, whose keys are these.
  std::int32_t get();
  std::int32_t get(const Texts& keys) { return GetParam().call(&place_, db, keys); }
  void expect_nothing_written() const;
  void TearDown() override;

  // The lines from the reading's on, that line only when it is said so early.
  Lines lines_before_the_row(const std::string& last) const;

  static constexpr char kBefore = '\x55';
  Bytes callers_;
  void* place_ = callers_.data();
};

class ProfileSet : public ProfileTest, public testing::WithParamInterface<ProfileSetCase> {
 protected:
  ProfileSet() : ProfileTest(GetParam().table) {}

  bool is_key(const Field& field) const {
    return ("," + table_.key + ",").find("," + std::string(field.column) + ",") != std::string::npos;
  }
  std::int32_t set(const Bytes& record) { return GetParam().call(db, record.data()); }

  // What is logged of a set that finds its key.
  Lines lines_of_an_update() const;
};

}  // namespace qmv::test

#endif
