// The association registry: which classes each association class relates, loaded from a read-only file. Nothing here is
// logged through the host.
#include <strings.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "core/columns.h"
#include "core/own_connection.h"
#include "core/statement.h"
#include "core/status.h"
#include "qmv/assoc.h"

namespace {

using namespace qmv;

constexpr char kRegistry[] = "/etc/Association.db";
constexpr char kAssociations[] = "association";
constexpr std::size_t kListSize = 1024;

const char* text_of(sqlite3_stmt* row, int column) {
  return reinterpret_cast<const char*>(sqlite3_column_text(row, column));
}

// Fills a text field from a column that is not NULL; of a NULL column it stays as it is.
template <std::size_t Width>
void read_present(sqlite3_stmt* row, int column, char (&field)[Width]) {
  if (text_of(row, column) != nullptr) read_text(row, column, field, Width, Before::kUnknown);
}

// Splits a column that is not NULL; of a NULL column the list and its count stay as they are.
void read_list(sqlite3_stmt* row, int column, char*** list, std::int32_t* count) {
  const char* const text = text_of(row, column);
  if (text != nullptr) GetArrayCount(text, list, count);
}

// A copy of its own of a list's element.
char* copy_of(const char* element) {
  const std::size_t size = std::strlen(element) + 1;
  auto* const copy = static_cast<char*>(std::malloc(size));
  if (copy != nullptr) std::memcpy(copy, element, size);
  return copy;
}

// Releases a list: its elements up to the count, or to the first NULL, and the list itself.
void release(char**& list, std::int32_t count) {
  for (std::int32_t i = 0; list != nullptr && i < count && list[i] != nullptr; ++i) std::free(list[i]);
  std::free(list);
  list = nullptr;
}

// The columns that both loaders read alike.
void read_common(sqlite3_stmt* row, association_rec* record) {
  read_present(row, 0, record->ClassName);
  read_present(row, 2, record->Text2);
  read_present(row, 3, record->Text3);
  record->Flag4 = sqlite3_column_int(row, 4);
  read_list(row, 5, &record->List5, &record->Count5);
  read_list(row, 6, &record->List6, &record->Count6);
  read_list(row, 7, &record->List7, &record->Count7);
}

// Grows the array by one cleared record. Returns it, NULL when memory is short.
association_rec* append(association_rec** records, std::int32_t count) {
  auto* const grown = static_cast<association_rec*>(
      count == 0 ? std::calloc(1, sizeof(association_rec))
                 : std::realloc(*records, (static_cast<std::size_t>(count) + 1) * sizeof(association_rec)));
  if (grown == nullptr) return nullptr;
  *records = grown;
  std::memset(&grown[count], 0, sizeof(association_rec));
  return &grown[count];
}

std::int32_t fail(association_rec** records, std::int32_t loaded, std::int32_t* count) {
  FreeDBData(records, loaded);
  *count = 0;
  return kFailure;
}

}  // namespace

std::int32_t GetArrayCount(const char* text, char*** list, std::int32_t* count) noexcept {
  *count = 0;
  if (text == nullptr) return kOk;
  char kept[kListSize];
  const std::size_t length = strnlen(text, sizeof(kept) - 1);
  std::memcpy(kept, text, length);
  kept[length] = 0;
  *count = 1;
  for (const char* at = kept; *at != 0; ++at) *count += *at == ',';
  // One more than counted stays NULL, so that a list of a longer pair ends.
  *list = static_cast<char**>(std::calloc(static_cast<std::size_t>(*count) + 1, sizeof(char*)));
  if (*list == nullptr) return kFailure;

  char* rest = nullptr;
  const char* element = strtok_r(kept, ",{}", &rest);
  for (std::int32_t i = 0; element != nullptr && i < *count; ++i, element = strtok_r(nullptr, "{},", &rest)) {
    (*list)[i] = copy_of(SkipWhiteSpaces(element));
    if ((*list)[i] == nullptr) return kFailure;
  }
  return kOk;
}

void fill_association_data(sqlite3_stmt* row, association_rec* record) noexcept {
  read_common(row, record);
  read_present(row, 1, record->NameSpace);
  // QUIRK: List 8 stores its count in Count7. Test: Associations.FilledRecordCountsListEightInCountSeven.
  read_list(row, 8, &record->List8, &record->Count7);
}

std::int32_t assoc_get_global_data(association_rec** records, std::int32_t* count) noexcept {
  const OwnConnection connection(kRegistry);
  if (!connection.is_open()) return kFailure;
  const std::int32_t rows = get_row_count(connection.get(), kAssociations);
  if (rows <= 0) {
    *records = nullptr;
    return kOk;
  }
  auto* const made =
      static_cast<association_rec*>(std::calloc(static_cast<std::size_t>(rows), sizeof(association_rec)));
  if (made == nullptr) return kFailure;
  *count = rows;
  const SqlText text(sqlite3_mprintf("select * from %q", kAssociations));
  Statement statement;
  statement.prepare(connection.get(), text);
  for (std::int32_t i = 0; statement.step() == SQLITE_ROW;) {
    if (i == rows) continue;  // a row that appeared since the count
    association_rec* const record = &made[i++];
    read_common(statement.get(), record);
    const char* const name_space = GetNameSpace(text_of(statement.get(), 0));
    std::memcpy(record->NameSpace, name_space, std::strlen(name_space));
    read_list(statement.get(), 8, &record->List8, &record->Count8);
  }
  *records = made;
  return kOk;
}

std::int32_t get_association_data(association_rec** records, const char* sql, std::int32_t* count) noexcept {
  const OwnConnection connection(kRegistry);
  if (!connection.is_open()) {
    std::fprintf(stderr, "Unable to open %s \n", kRegistry);
    return fail(records, 0, count);
  }
  const SqlText text(sqlite3_mprintf("%s", sql));
  Statement statement;
  if (statement.prepare(connection.get(), text) != SQLITE_OK) {
    std::fprintf(stderr, "SQL compilation error : %s \n", sql);
    return fail(records, 0, count);
  }
  std::int32_t loaded = 0;
  for (; statement.step() == SQLITE_ROW; ++loaded) {
    association_rec* const record = append(records, loaded);
    if (record == nullptr) {
      std::fputs("\n Memory allocation error \n", stderr);
      return fail(records, loaded, count);
    }
    fill_association_data(statement.get(), record);
  }
  *count = loaded;
  return kOk;
}

void FreeDBData(association_rec** records, std::int32_t count) noexcept {
  if (*records == nullptr) return;
  for (std::int32_t i = 0; i < count; ++i) {
    association_rec& record = (*records)[i];
    release(record.List7, record.Count7);
    release(record.List8, record.Count7);
    release(record.List5, record.Count5);
    release(record.List6, record.Count5);
  }
  std::free(*records);
  *records = nullptr;
}

// QUIRK: Lists 5 and 6 are not released here. Test: Associations.GlobalStructureKeepsListsFiveAndSix.
std::int32_t free_global_structure(association_rec* records, std::int32_t count) noexcept {
  if (records == nullptr) return kFailure;
  for (std::int32_t i = 0; i < count; ++i) {
    release(records[i].List7, records[i].Count7);
    release(records[i].List8, records[i].Count8);
  }
  std::free(records);
  return kOk;
}

std::int32_t GetCMPIDataType(const char* type) noexcept {
  struct Type {
    char name[10];
    std::int16_t code;
  };
  static constexpr Type kTypes[] = {{"REF", 4352},    {"uint16", 144},    {"uint64", 176},
                                    {"string", 5632}, {"dateTime", 6144}, {"uint16A", 8336}};
  if (type == nullptr) return 0;
  for (const Type& each : kTypes) {
    if (strcasecmp(each.name, type) == 0) return each.code;
  }
  return 0;
}

const char* GetNameSpace(const char* class_name) noexcept {
  static constexpr char kInterop[][28] = {"CIM_IndicationFilter", "CIM_IndicationService", "CIM_RegisteredProfile",
                                          "CIM_IndicationHandlerCIMXML", "CIM_ReferencedProfile"};
  for (const char* each : kInterop) {
    if (class_name != nullptr && strcasecmp(each, class_name) == 0) return "root/interop";
  }
  return "root/cimv2";
}

const char* SkipWhiteSpaces(const char* text) noexcept {
  return text == nullptr ? nullptr : text + std::strspn(text, " \t");
}
