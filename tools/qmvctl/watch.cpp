#include "watch.h"

#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstddef>
#include <map>
#include <utility>

#include "commands.h"
#include "reports.h"

namespace qmvctl {

namespace {

volatile std::sig_atomic_t is_interrupted = 0;
bool is_unread = false;  // nobody reads standard output any more

bool is_over() {
  return is_interrupted || is_unread;
}

// While it lives, the first interrupt sets the flag and ends a sleep in place of the process; it does not fail a write.
class InterruptHandler {
 public:
  InterruptHandler() {
    is_interrupted = 0;
    struct sigaction action {};
    action.sa_handler = [](int) { is_interrupted = 1; };
    action.sa_flags = static_cast<int>(SA_RESETHAND | SA_RESTART);
    sigaction(SIGINT, &action, &former_);
  }
  InterruptHandler(const InterruptHandler&) = delete;
  InterruptHandler& operator=(const InterruptHandler&) = delete;
  ~InterruptHandler() { sigaction(SIGINT, &former_, nullptr); }

 private:
  struct sigaction former_ {};
};

// Half a second, unless it is over before.
void wait_for_next_look() {
  constexpr int kMilliseconds = 500;
  pollfd output{STDOUT_FILENO, 0, 0};
  is_unread = poll(&output, 1, kMilliseconds) > 0;
}

// However long another process locks the file, the log is followed on afterwards.
int wait_until_over(void*, int) {
  if (!is_over()) wait_for_next_look();
  return !is_over();
}

// Changes with every commit of another connection.
int data_version(const Database& database) {
  int version = 0;
  database.query("pragma data_version;", [&](sqlite3_stmt* row) { version = sqlite3_column_int(row, 0); });
  return version;
}

// Which file a name means: what is stored in another one of that name is not seen.
std::pair<dev_t, ino_t> identity_of(const std::string& file) {
  struct stat found {};
  return stat(file.c_str(), &found) == 0 ? std::pair(found.st_dev, found.st_ino) : std::pair(dev_t{}, ino_t{});
}

// The log in one state of the file. A schema that another connection has changed is read before: the library's
// statements would fail once.
Listing look(const Database& database) {
  const auto ignore = [](sqlite3_stmt*) {};
  database.query("begin;", ignore);
  Listing events;
  try {
    database.query("select count(*) from sqlite_master;", ignore);
    events = list_events(database);
  } catch (const std::runtime_error&) {
    db_execute(database.handle(), "rollback;");
    throw;
  }
  database.query("commit;", ignore);
  return events;
}

class Follower {
 public:
  Follower(const Form& form, std::ostream& out) : form_(form), out_(out) { form_.is_growing = true; }

  // Prints what is new in a list, but for the first rows.
  void show(Listing events, size_t skipped) {
    std::map<Json, Json> known;
    std::vector<Json> news;
    for (Json& row : events.rows) {
      const Json& id = row.at("record_id");
      const auto before = known_.find(id);
      const bool is_new = before == known_.end() || before->second != row;
      known.emplace(id, row);
      if (is_new && known.size() > skipped) news.push_back(std::move(row));
    }
    known_ = std::move(known);
    events.rows = std::move(news);
    print(events);
  }

 private:
  void print(const Listing& events) {
    if (events.rows.empty()) return;
    constexpr int kInOneLine = -1;
    if (form_.kind == Form::Kind::kJson) {
      for (const Json& row : events.rows) out_ << json_text(row, kInOneLine) << '\n';
    } else {
      report(out_, form_, events);
      form_.has_heads = false;
    }
    out_.flush();
  }

  Form form_;
  std::ostream& out_;
  std::map<Json, Json> known_;  // rows by record ID
};

void follow(const Database& database, const Form& form, size_t last, std::ostream& out) {
  Follower follower(form, out);
  const auto identity = identity_of(database.file());
  int version = data_version(database);
  Listing events = look(database);
  const size_t count = events.rows.size();
  follower.show(std::move(events), count - std::min(last, count));
  while (!is_over() && out) {
    wait_for_next_look();
    if (identity_of(database.file()) != identity) database.fail("the file was replaced or removed");
    const int now = data_version(database);
    if (now == version) continue;
    version = now;
    follower.show(look(database), 0);
  }
}

}  // namespace

void watch_events(const Database& database, const Form& form, size_t last, std::ostream& out) {
  const InterruptHandler handler;
  is_unread = false;
  sqlite3_busy_handler(database.handle(), wait_until_over, nullptr);
  try {
    follow(database, form, last, out);
  } catch (const std::runtime_error&) {
    if (!is_over()) throw;  // it was, while the file was locked
  }
}

}  // namespace qmvctl
