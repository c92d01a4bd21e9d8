/* Loaded before a program: what it opens under its fixed path is opened in the folder that QMV_FOLDER names. */
#include <sqlite3.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

int sqlite3_open(const char* file, sqlite3** db) {
  char path[4096];
  snprintf(path, sizeof path, "%s%s", getenv("QMV_FOLDER"), strrchr(file, '/'));
  return sqlite3_open_v2(path, db, SQLITE_OPEN_READWRITE, NULL); /* what is missing is a mistake */
}
