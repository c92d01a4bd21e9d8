// Every exported function as one call with plausible arguments, for tests of what holds for all of them.
#ifndef QMV_TESTS_TORTURE_CALLS_H
#define QMV_TESTS_TORTURE_CALLS_H

#include <sqlite3.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace qmv::test {

// What a call's arguments are made of.
struct Material {
  std::string text = "k";   // every text
  std::int32_t number = 3;  // every number
  char fill = 'k';          // every byte of a record that the caller brings, which ends at the end of a page,
  std::string bytes = {};   // but those with which it begins
};

// What became of a pointer to a pointer.
enum class Handed { kNothing, kNull, kBlock };

// What stands in a number that a call is to write.
constexpr std::int32_t kUntouched = -1;

// What came back. Blocks that the library handed out are released already.
struct Answer {
  std::optional<std::int32_t> status = {};  // or what else a function returns as a number
  std::optional<std::int32_t> number = {};  // that came back through a pointer
  Handed handed = Handed::kNothing;
  std::string content = {};  // of the outs, byte for byte

  bool operator==(const Answer&) const = default;
};

// The shapes of include/qmv.h. Both get-ones have one: they differ in who owns the record.
enum class Shape { kCount, kGetAll, kGetOne, kSet, kExecute, kOther };

struct Call {
  std::string name;
  Shape shape;
  std::function<Answer(sqlite3* db, const Material& material)> run;
  Material material = {};
  bool remembers = false;             // what it does depends on earlier calls of the same process
  bool wants_narrow_sensors = false;  // sensor tables without column names of the FRU's, which are ambiguous to it
};

void PrintTo(const Call& call, std::ostream* out);

// All exported functions, with what they need to do all that they can. Those that open files of their own do so by the
// fixed names.
const std::vector<Call>& calls();

// The same, and each set once more with a record whose key has no row: the others update, these insert.
std::vector<Call> calls_and_inserts();

// Whether a call changes what tables hold.
bool is_writer(const Call& call);

// Those of one shape, and those that remember.
std::vector<Call> calls_of(Shape shape);
std::vector<Call> calls_that_remember();

// The functions that are not called with arguments made of their parameters' types alone.
std::vector<Call> calls_by_hand();

}  // namespace qmv::test

#endif
