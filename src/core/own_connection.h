// A connection of an accessor's own: opened by path, without the busy handler, and closed with its owner.
#ifndef QMV_CORE_OWN_CONNECTION_H
#define QMV_CORE_OWN_CONNECTION_H

#include <sqlite3.h>

namespace qmv {

inline constexpr char kInstanceDatabase[] = "/tmp/cim.db";
inline constexpr char kTemporaryDatabase[] = "/tmp/tmp_cim.db";

class OwnConnection {
 public:
  explicit OwnConnection(const char* path) : open_(sqlite3_open(path, &db_) == SQLITE_OK) {}
  OwnConnection(const OwnConnection&) = delete;
  OwnConnection& operator=(const OwnConnection&) = delete;
  ~OwnConnection() { sqlite3_close(db_); }

  bool is_open() const { return open_; }
  sqlite3* get() const { return db_; }

  // Gives the handle up without closing it.
  void leave_unclosed() { db_ = nullptr; }

 private:
  sqlite3* db_ = nullptr;
  bool open_;
};

}  // namespace qmv

#endif
