#include "torture/databases.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>
#include <stdexcept>

#include "support/boundary.h"
#include "torture/tables.h"

namespace qmv::test {

namespace {

// What is read in each of the fixed files.
const std::map<std::string, std::set<std::string>> kTablesOfFile = {
    {"cim.db", {"compact_sdr", "full_sdr", "sel", "event_type"}},
    {"tmp_cim.db", {"concrete_job", "error_info"}},
    {"smashclp.db", {"jobs"}},
    {"Association.db", {"association", "association_reg"}},
};

// In the header of a database file: every transaction that writes counts.
constexpr std::size_t kEndOfChangeCounter = 28;

// The beginning of a file, empty where there is none.
std::string file_text(const std::string& path, std::size_t length) {
  std::ifstream file(path, std::ios::binary);
  std::string text(length, 0);
  file.read(text.data(), static_cast<std::streamsize>(length));
  text.resize(static_cast<std::size_t>(file.gcount()));
  return text;
}

}  // namespace

const std::string& image_for(const Call& call) {
  return call.wants_narrow_sensors ? image_with_narrow_sensors() : image_of_all_tables();
}

Database::Database(const std::string& image) : image_(image), db_(opened(image)) {
  rows(db_, "select 1 from sqlite_master;");
}

Database::~Database() {
  settle();
  __real_sqlite3_close(db_);
}

void Database::settle() {
  while (sqlite3_stmt* left = sqlite3_next_stmt(db_, nullptr)) __real_sqlite3_finalize(left);
  if (sqlite3_get_autocommit(db_) == 0) rows(db_, "rollback;");
}

bool Database::is_changed() const {
  return std::memcmp(bytes(), image_.data(), kEndOfChangeCounter) != 0;
}

void Database::put_back() {
  settle();
  if (!is_changed()) return;
  // The pager sees the older change counter and reads its pages anew; the schema, which did not change, stays loaded.
  std::memcpy(bytes(), image_.data(), image_.size());
  rows(db_, "select 1 from sqlite_master;");
}

unsigned char* Database::bytes() const {
  sqlite3_int64 size = 0;
  unsigned char* const bytes = sqlite3_serialize(db_, "main", &size, SQLITE_SERIALIZE_NOCOPY);
  if (bytes == nullptr || static_cast<std::size_t>(size) < image_.size()) throw std::runtime_error("the image is gone");
  return bytes;
}

FixedFiles::FixedFiles()
    : folder_(testing::TempDir() + "qmv-XXXXXX"),
      images_{
          {"uptime", "12345.67 1.0\n"}, {"all.db", image_of_all_tables()}, {"narrow.db", image_with_narrow_sensors()}} {
  if (mkdtemp(folder_.data()) == nullptr) throw std::runtime_error("no folder " + folder_);
  for (const auto& [file, tables] : kTablesOfFile) images_[file] = image_of_tables(tables);
  for (const auto& [file, image] : images_) put_back(file);
}

FixedFiles::~FixedFiles() {
  std::filesystem::remove_all(folder_);
}

void FixedFiles::put_back(const std::string& file) const {
  const std::string path = folder_ + "/" + file;
  const std::string& image = images_.at(file);
  const bool is_sound = !std::filesystem::remove(path + "-journal") &&
                        file_text(path, kEndOfChangeCounter) == image.substr(0, kEndOfChangeCounter);
  if (!is_sound) std::ofstream(path, std::ios::binary) << image;
}

const FixedFiles& fixed_files() {
  static const FixedFiles only;
  return only;
}

}  // namespace qmv::test
