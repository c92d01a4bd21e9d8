// The import of a server's dumps into the database.
#ifndef QMVCTL_IMPORT_H
#define QMVCTL_IMPORT_H

#include <optional>
#include <string>
#include <vector>

#include "database.h"
#include "inventory.h"
#include "progress.h"

namespace qmvctl {

struct FruFile {
  int id;  // FRU device ID
  std::string file;
};

struct ImportFiles {
  std::string repository;  // empty when there is none
  std::vector<FruFile> frus;
  std::string event_log;  // empty when there is none
};

// The dumps themselves.
struct Dumps {
  struct Image {
    int id;
    Input bytes;
  };

  std::optional<Input> repository;
  std::vector<Image> frus;
  std::optional<Input> event_log;
};

// What an import of these dumps stores in that database. Throws std::runtime_error when a dump is wrong.
Inventory gather(const Database& database, const Dumps& dumps);

// What db_get_selinfo() makes of a stored record: from the second field on, each one comes from the column before its
// own.
sel_info_rec shifted(const sel_info_rec& stored);

// Imports the files in one transaction, all rows through the library: reads the files, ties what belongs together,
// empties the tables that are filled, fills them, reads everything back and compares it. Without a repository the
// images renew the FRUs that the database knows, and the sensors of their entities. Returns what was stored. Throws
// std::runtime_error, and nothing of the import stays, when a file is wrong or a row reads back different.
Inventory import_files(Database& database, const ImportFiles& files, Progress& progress);

}  // namespace qmvctl

#endif
