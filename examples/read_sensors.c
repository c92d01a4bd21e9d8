/*
 * read_sensors - a C host: prints the name, number and entity of every sensor in the instance database.
 *
 *   cc -o read_sensors read_sensors.c log.c $(pkg-config --cflags --libs qmv)
 */
#include <qmv.h>
#include <stdio.h>
#include <stdlib.h>

/* A text that fills its field has no terminating zero, so its width goes with it. */
#define TEXT(field) (int)sizeof(field), (field)

static void print_sensor(int width, const char* name, int32_t number, int32_t entity, int32_t instance) {
  printf("%.*s, %02Xh, %d.%d\n", width, name, (unsigned)number, entity, instance);
}

static int print_full_sensors(struct sqlite3* db) {
  int32_t count = 0;            /* stays as it is when there are no rows */
  full_sdr_rec* sensors = NULL; /* one block for all of them */
  const int32_t status = db_get_all_full_sdrs(db, &count, &sensors);
  for (int32_t i = 0; status == 0 && i < count; ++i) {
    const full_sdr_rec* sensor = &sensors[i];
    print_sensor(TEXT(sensor->SensorName), sensor->SensorNum, sensor->EntityID, sensor->EntityInstance);
  }
  db_freemem(sensors); /* whatever the status */
  return status;
}

static int print_compact_sensors(struct sqlite3* db) {
  int32_t count = 0;
  compact_sdr_rec* sensors = NULL;
  const int32_t status = db_get_all_compact_sdrs(db, &count, &sensors);
  for (int32_t i = 0; status == 0 && i < count; ++i) {
    const compact_sdr_rec* sensor = &sensors[i];
    print_sensor(TEXT(sensor->SensorName), sensor->SensorNum, sensor->EntityID, sensor->EntityInstance);
  }
  db_freemem(sensors);
  return status;
}

int main(void) {
  struct sqlite3* db;
  if (db_init(&db) != 0) {
    fputs("the database cannot be opened\n", stderr);
    return EXIT_FAILURE;
  }
  const int is_read = print_full_sensors(db) == 0 && print_compact_sensors(db) == 0;
  db_close(db);
  return is_read ? EXIT_SUCCESS : EXIT_FAILURE;
}
