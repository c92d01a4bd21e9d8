#include "torture/ends.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <map>
#include <optional>
#include <ostream>
#include <regex>
#include <string>

namespace qmv::test {

namespace {

// A code that SQLite does not have: a status that is this one was passed on.
constexpr int kOwnCode = 4242;

// A way in which the n-th call of a kind fails, and whether all that were to fail were made.
struct Way {
  void (*fail)(int nth);
  bool (*were_made)();
};

template <Faults Boundary::*kCalls, int kAnswer>
constexpr Way kAnswering = {[](int nth) { (boundary().*kCalls)[nth] = kAnswer; },
                            [] { return (boundary().*kCalls).empty(); }};

// A connection that could not be opened is there nevertheless, unless memory was short; and a text that could not be
// formatted is executed as nothing, with success.
constexpr Way kWays[] = {
    kAnswering<&Boundary::opens, kOwnCode>,
    kAnswering<&Boundary::opens, SQLITE_NOMEM>,
    {[](int nth) { boundary().fail_text = nth; }, [] { return boundary().fail_text == 0; }},
    kAnswering<&Boundary::prepares, kOwnCode>,
    kAnswering<&Boundary::steps, kOwnCode>,
    kAnswering<&Boundary::finalizes, kOwnCode>,
    kAnswering<&Boundary::execs, kOwnCode>,
    kAnswering<&Boundary::execs, SQLITE_OK>,
};

// Whether texts may be missing in records that are read with success.
bool may_lack_texts(const Call& call) {
  static const std::set<std::string> kNames = {
      // They read integers as texts, which takes memory; without it a text is NULL, and a NULL text is empty.
      "db_get_selinfo",
      "db_get_dhcp_protocol_endpoint",
      // They read the inventory strings of each row with a statement of its own, and any of these may yield no row.
      "db_get_all_fru_compact_sdr",
      "db_get_all_fru_full_sdr",
  };
  return kNames.contains(call.name);
}

// A text without what SQLite says of an error, which ends where the library goes on.
std::string without_message(const std::string& text) {
  static const std::regex kMessage(R"((rror|Failed |\)): .*?( Fail to| ?\n|$))");
  return text.find(": ") == std::string::npos ? text : std::regex_replace(text, kMessage, "$1$2");
}

// All that the end of a call is made of.
struct WholeEnd {
  Answer answer;
  Lines log;
  std::string printed;
  Left left;

  explicit WholeEnd(const Trial& trial)
      : answer(trial.answer), log(trial.log), printed(without_message(trial.printed)), left(trial.left) {
    for (LogLine& line : log) line.text = without_message(line.text);
  }

  bool operator==(const WholeEnd&) const = default;

  // Whether it is another end but for bytes that are zero here.
  bool lacks_only_bytes_of(const WholeEnd& other) const {
    if (log != other.log || printed != other.printed || left != other.left) return false;
    const std::string& whole = other.answer.content;
    const auto is_kept = [](char mine, char others) { return mine == others || mine == 0; };
    if (!std::equal(answer.content.begin(), answer.content.end(), whole.begin(), whole.end(), is_kept)) return false;
    Answer filled = answer;
    filled.content = whole;
    return filled == other.answer;
  }
};

void PrintTo(const WholeEnd& end, std::ostream* out) {
  *out << testing::PrintToString(end.answer.status) << " is the status, " << testing::PrintToString(end.answer.number)
       << " the number, handed out is " << static_cast<int>(end.answer.handed) << " with " << end.answer.content.size()
       << " bytes, " << testing::PrintToString(end.left) << " are left, " << testing::PrintToString(end.log)
       << " is logged and '" << end.printed << "' printed";
}

// The ends of a call.
class KnownEnds {
 public:
  using Try = std::function<Trial(const std::function<void()>& faults)>;

  // Adds one fault to those of each end, beginning with the healthy one, as long as that leads to new ends.
  KnownEnds(const Call& call, const Trial& healthy, const Try& tried)
      : texts_may_lack_(may_lack_texts(call)), known_{{WholeEnd(healthy), [] {}, kWays, 0}} {
    learn_from(Known(known_.front()), tried);
    const std::size_t of_one_fault = known_.size();
    for (std::size_t i = 1; i < known_.size(); ++i) learn_from(Known(known_[i]), tried);
    expect_nothing_new_behind(of_one_fault, call);
  }

  bool contain(const WholeEnd& end) const {
    return std::any_of(known_.begin(), known_.end(), [&](const Known& known) {
      return end == known.end || (texts_may_lack_ && end.lacks_only_bytes_of(known.end));
    });
  }

 private:
  struct Known {
    WholeEnd end;
    std::function<void()> faults;
    const Way* way;  // of the last fault
    int nth;
  };

  // One fault more, of the same way behind the last one, or of one of the next ways.
  void learn_from(const Known& known, const Try& tried) {
    for (const Way* way = known.way; way != std::end(kWays); ++way) {
      for (int nth = way == known.way ? known.nth + 1 : 1;; ++nth) {
        const auto faults = [before = known.faults, way, nth] {
          before();
          way->fail(nth);
        };
        const WholeEnd end(tried(faults));
        if (!way->were_made()) break;
        if (!contain(end)) known_.push_back({end, faults, way, nth});
      }
    }
  }

  // Faults that come together are answered with no other status, and leave nothing else, than one of them alone.
  void expect_nothing_new_behind(std::size_t of_one_fault, const Call& call) const {
    std::set<std::optional<std::int32_t>> statuses;
    std::set<Left> remains;
    if (call.name == "db_get_all_physicalasset_element") remains.insert({.statements = 2});  // it counts twice
    for (std::size_t i = 0; i < known_.size(); ++i) {
      const WholeEnd& end = known_[i].end;
      if (i < of_one_fault) {
        statuses.insert(end.answer.status);
        remains.insert(end.left);
      }
      EXPECT_TRUE(statuses.contains(end.answer.status)) << testing::PrintToString(end);
      EXPECT_TRUE(remains.contains(end.left)) << testing::PrintToString(end);
    }
  }

  bool texts_may_lack_;
  std::vector<Known> known_;
};

// They are learned once in each process.
std::map<std::string, KnownEnds>& ends_of_calls() {
  static std::map<std::string, KnownEnds> all;
  return all;
}

void expect_outs(const Outs& outs, const Answer& answer) {
  EXPECT_EQ(outs.number, answer.number.value_or(outs.number));
  EXPECT_EQ(outs.handed, answer.handed);
  if (outs == kUntouchedOuts) {
    EXPECT_EQ(std::string::npos, answer.content.find_first_not_of(Material().fill)) << "buffers";
  }
}

}  // namespace

const std::vector<int> kCodes = {SQLITE_ERROR, SQLITE_BUSY,    SQLITE_LOCKED, SQLITE_NOMEM,    SQLITE_READONLY,
                                 SQLITE_IOERR, SQLITE_CORRUPT, SQLITE_FULL,   SQLITE_CANTOPEN, SQLITE_MISUSE};

void expect_end(const End& end, int code, const Trial& trial) {
  if (trial.answer.status) {
    EXPECT_EQ(end.status == kCode ? code : end.status, *trial.answer.status);
  }
  EXPECT_EQ(end.left, trial.left);
  if (end.outs) expect_outs(*end.outs, trial.answer);
}

void expect_same_end(const Trial& expected, const Trial& trial) {
  EXPECT_EQ(WholeEnd(expected), WholeEnd(trial));
}

Trial FaultBelow::learned_with_ends() {
  const Trial healthy = learned();
  const auto try_once = [this](const std::function<void()>& faults) {
    const Trial trial = made(faults);
    put_back();
    return trial;
  };
  ends_of_calls().try_emplace(GetParam().name, GetParam(), healthy, try_once);
  return healthy;
}

void FaultBelow::expect_known_end(const Trial& healthy, const Trial& trial, const std::set<int>& codes) {
  const KnownEnds& known = ends_of_calls().at(GetParam().name);
  const WholeEnd end(trial);
  WholeEnd passed_on = end;
  if (codes.contains(end.answer.status.value_or(0))) passed_on.answer.status = kOwnCode;
  EXPECT_TRUE(known.contain(end) || known.contain(passed_on)) << testing::PrintToString(end);
  for (const std::string& statement : trial.statements) {
    const Texts& texts = healthy.statements;
    EXPECT_TRUE(statement == "(null)" || std::count(texts.begin(), texts.end(), statement) != 0) << statement;
  }
}

}  // namespace qmv::test
