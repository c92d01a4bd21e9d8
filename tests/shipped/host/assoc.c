/* The association registry, and reading files whose schema is not known. */
#include <stdlib.h>
#include <string.h>

#include "host.h"

static sqlite3* open_file(const char* file) {
  sqlite3* db = NULL;
  CHECK_INT(SQLITE_OK, sqlite3_open(file, &db));
  return db;
}

static void check_list(int count, const char* joined, char** list) {
  char text[64] = "";
  for (int i = 0; list != NULL && i < count; ++i) strcat(strcat(text, list[i]), ";");
  CHECK_TEXT(joined, text);
}

/* What both loaders make of the row. */
static void check_association(const association_rec* record) {
  CHECK_FIELD("cim_registeredprofile", record->ClassName);
  CHECK_FIELD("text 2", record->Text2);
  CHECK_FIELD("text 3", record->Text3);
  CHECK_INT(4, record->Flag4);
  CHECK_INT(2, record->Count5);
  check_list(2, "A;B;", record->List5);
  CHECK_INT(2, record->Count6);
  check_list(2, "C;D;", record->List6);
  check_list(1, "E;", record->List7);
  check_list(3, "F;G;H;", record->List8);
}

static void release_list(char** list, int count) {
  for (int i = 0; i < count; ++i) free(list[i]);
  free(list);
}

static void loads_all(void) {
  association_rec* records = NULL;
  int32_t count = -1;
  CHECK_INT(0, assoc_get_global_data(&records, &count));
  CHECK_INT(1, count);
  if (!CHECK(records != NULL)) return;
  CHECK_FIELD("root/interop", records->NameSpace);
  CHECK_INT(1, records->Count7);
  CHECK_INT(3, records->Count8);
  check_association(records);
  release_list(records->List5, 2);
  release_list(records->List6, 2);
  CHECK_INT(0, free_global_structure(records, count));
  CHECK_INT(1, free_global_structure(NULL, 1));
}

static void loads_some(void) {
  association_rec* records = NULL;
  int32_t count = -1;
  CHECK_INT(0, get_association_data(&records, "select * from association where Flag4 = 4", &count));
  CHECK_INT(1, count);
  if (!CHECK(records != NULL)) return;
  CHECK_FIELD("root/other", records->NameSpace);
  CHECK_INT(3, records->Count7);
  check_association(records);
  FreeDBData(&records, count);
  CHECK(records == NULL);
}

static void fills_one(struct sqlite3* db) {
  association_rec* record = (association_rec*)calloc(1, sizeof *record);
  sqlite3_stmt* row = NULL;
  CHECK_INT(SQLITE_OK, sqlite3_prepare_v2(db, "select * from association", -1, &row, NULL));
  CHECK_INT(SQLITE_ROW, sqlite3_step(row));
  fill_association_data(row, record);
  sqlite3_finalize(row);
  check_association(record);
  FreeDBData(&record, 1);
}

static void looks_up(void) {
  char** list = NULL;
  int32_t count = -1;
  CHECK_INT(0, GetArrayCount("{CIM_Fan,\t CIM_Chip}", &list, &count));
  CHECK_INT(2, count);
  check_list(2, "CIM_Fan;CIM_Chip;", list);
  release_list(list, 2);
  CHECK_INT(5632, GetCMPIDataType("STRING"));
  CHECK_TEXT("root/interop", GetNameSpace("CIM_ReferencedProfile"));
  CHECK_TEXT("root/cimv2", GetNameSpace("CIM_Fan"));
  CHECK_TEXT("CIM_Fan ", SkipWhiteSpaces(" \tCIM_Fan "));
}

void associations(void) {
  sqlite3* const db = open_file(REGISTRY);
  make_tables(db, "association.sql");
  RUN(db,
      "insert into association values ('cim_registeredprofile', 'root/other', 'text 2', 'text 3', 4, '{ A, B}', "
      "'{C,D}', '{E}', '{F,G,H}');"
      "insert into association_reg values ('a', 'b', 'c', 'd'), ('e', 'f', 'g', 'h');");
  loads_all();
  loads_some();
  fills_one(db);
  looks_up();
  CHECK_INT(SQLITE_OK, sqlite3_close(db));
}

static void registrations(void) {
  association_reg_rec* records = NULL;
  int32_t count = -1;
  CHECK_INT(0, load_plugins(&records, &count, REGISTRY));
  CHECK_INT(2, count);
  if (CHECK(records != NULL)) {
    CHECK_FIELD("a", records[0].RegColumn0);
    CHECK_FIELD("b", records[0].RegColumn1);
    CHECK_FIELD("c", records[0].RegColumn2);
    CHECK_FIELD("d", records[0].RegColumn3);
    CHECK_FIELD("e", records[1].RegColumn0);
  }
  free(records);
}

static void columns_and_values(void) {
  column_name_node* names = NULL;
  char value[256] = "";
  CHECK_INT(0, GetColumnNames(&names, REGISTRY, "association_reg"));
  if (CHECK(names != NULL && names->Next != NULL)) {
    CHECK_FIELD("RegColumn0", names->ColumnName);
    CHECK_FIELD("RegColumn1", names->Next->ColumnName);
  }
  CHECK_INT(0, free_column_names(names));
  CHECK_INT(0, GetColumnValues(REGISTRY, value, "RegColumn1", "association_reg", 2));
  CHECK_TEXT("f", value);
}

static void counts(void) {
  sqlite3* const db = open_file(REGISTRY);
  sqlite3_stmt* rows = NULL;
  CHECK_INT(2, get_row_count(db, "association_reg"));
  CHECK_INT(0, get_row_count(db, "no"));
  CHECK_INT(SQLITE_OK, sqlite3_prepare_v2(db, "select RegColumn0 from association_reg", -1, &rows, NULL));
  CHECK_INT(2, get_table_count(rows));
  sqlite3_finalize(rows);
  CHECK_INT(SQLITE_OK, sqlite3_close(db));
}

static void static_instances(void) {
  sqlite3* const db = open_file(STATIC_INSTANCES);
  char table[256] = "";
  int32_t rows = -1;
  RUN(db,
      "create table lamps (watt); insert into lamps values (40), (60), (100);"
      "create table fans (speed);");
  CHECK_INT(SQLITE_OK, sqlite3_close(db));
  CHECK_INT(0, get_static_instances(STATIC_INSTANCES, &rows, table));
  CHECK_INT(3, rows);
  CHECK_TEXT("lamps", table);
}

void introspection(void) {
  counts();
  registrations();
  columns_and_values();
  static_instances();
}
