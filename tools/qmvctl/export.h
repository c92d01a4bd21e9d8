// The export of what the tables hold, as dumps that an import reads.
#ifndef QMVCTL_EXPORT_H
#define QMVCTL_EXPORT_H

#include <string>
#include <vector>

#include "import.h"

namespace qmvctl {

struct Exported {
  struct File {
    std::string name;
    size_t size;  // in bytes
  };

  std::vector<File> files;
  std::vector<std::string> notes;  // rows that an import would give otherwise
};

// Writes the files that are named, all or none. Existing files are not touched. Throws std::runtime_error when a file
// cannot be written, a FRU is not there, or an event's ID or generator does not fit a record.
Exported export_files(const Database& database, const ImportFiles& files);

}  // namespace qmvctl

#endif
