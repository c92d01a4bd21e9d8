// Whom the library is compared with. Each brings the same records from the same rows.
#ifndef QMV_BENCH_CONTENDERS_H
#define QMV_BENCH_CONTENDERS_H

#include <qmv.h>
#include <sqlite3.h>

#include <memory>
#include <string>
#include <vector>

namespace qmv::bench {

// The fewest SQLite calls that can fill the records: sqlite3_prepare_v2, a number of rows that the caller knows, one
// block of zeros, of a text only its bytes. No log lines.
namespace limit {

std::int32_t get_all(sqlite3* db, std::int32_t known_count, compact_sdr_rec** records);
std::int32_t get_masked(sqlite3* db, std::int32_t mask, std::int32_t known_count, compact_sdr_rec** records);
std::int32_t get_one(sqlite3* db, const char* DeviceID, compact_sdr_rec** record);

}  // namespace limit

// What the library does, step by step and with the same log lines, written down in the obvious way: blocks from malloc
// that are cleared afterwards, every text copied by the whole width of its field.
namespace plain {

std::int32_t count(sqlite3* db, std::int32_t* count, std::int32_t mask) noexcept;
std::int32_t get_all(sqlite3* db, std::int32_t* count, compact_sdr_rec** records) noexcept;
std::int32_t get_masked(sqlite3* db, std::int32_t mask, std::int32_t* count, compact_sdr_rec** records) noexcept;
std::int32_t get_one(sqlite3* db, const char* DeviceID, compact_sdr_rec** record) noexcept;
std::int32_t get_pairs(sqlite3* db, std::int32_t* count, fru_sdr_rec** records) noexcept;
std::int32_t set(sqlite3* db, const compact_sdr_rec* record) noexcept;

std::int32_t get_all_capabilities(sqlite3* db, std::int32_t* count, ssh_capabilities_rec** records) noexcept;
std::int32_t get_capabilities(sqlite3* db, const char* InstanceID, ssh_capabilities_rec** record) noexcept;
std::int32_t set_capabilities(sqlite3* db, const ssh_capabilities_rec* record) noexcept;

}  // namespace plain

// A general C++ library for SQLite, used as its documentation shows, on a connection of its own.
class Wrapper {
 public:
  virtual ~Wrapper() = default;
  virtual std::vector<compact_sdr_rec> get_all() = 0;
  virtual std::vector<compact_sdr_rec> get_one(const char* DeviceID) = 0;
  virtual void set(const compact_sdr_rec& record) = 0;
  virtual void execute(const char* sql) = 0;
};

std::unique_ptr<Wrapper> open_sqlitecpp(const std::string& path);
std::unique_ptr<Wrapper> open_soci(const std::string& path);

}  // namespace qmv::bench

#endif
