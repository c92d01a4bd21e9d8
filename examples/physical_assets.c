/*
 * physical_assets - the heart of a CIM provider: enumerates the instances of a physical element class, such as CIM_Card
 * or CIM_Chip, as a CMPI provider does in its enumInstances().
 *
 *   cc -o physical_assets physical_assets.c log.c $(pkg-config --cflags --libs qmv)
 */
#include <qmv.h>
#include <stdio.h>
#include <strings.h>

/* As CMPI numbers them. */
enum { RC_OK = 0, RC_FAILED = 1, RC_INVALID_CLASS = 5 };

/* A text that fills its field has no terminating zero, so its width goes with it. */
#define TEXT(field) (int)sizeof(field), (field)

/* Each class is a bit of the sensors' PhysicalElement. */
static const struct {
  const char* name;
  int32_t bit;
} classes[] = {
    {"CIM_Slot", 1},
    {"CIM_Card", 2},
    {"CIM_Chassis", 4},
    {"CIM_Chip", 8},
    {"CIM_PhysicalPackage", 16},
    {"CIM_PhysicalConnector", 32},
    {"CIM_PhysicalMemory", 256},
};
#define CLASSES (sizeof classes / sizeof *classes)

/* Where a provider makes a CMPIInstance and hands it to its broker. */
static void return_instance(const char* class_name, const fru_sdr_rec* asset) {
  printf("instance of %s {\n", class_name);
  printf("  Tag = \"%d.%d\";\n", asset->EntityID, asset->EntityInst);
  printf("  ElementName = \"%.*s\";\n", TEXT(asset->DevIdStr));
  printf("  Manufacturer = \"%.*s\";\n", TEXT(asset->BrdMfrName));
  printf("  PartNumber = \"%.*s\";\n", TEXT(asset->BrdPartNumber));
  printf("  SerialNumber = \"%.*s\";\n};\n", TEXT(asset->BrdSerNumber));
}

/* An entity with sensors of both kinds is listed twice. */
static int is_repeated(const fru_sdr_rec* assets, int32_t at) {
  for (int32_t i = 0; i < at; ++i) {
    if (assets[i].EntityID == assets[at].EntityID && assets[i].EntityInst == assets[at].EntityInst) return 1;
  }
  return 0;
}

static int enum_instances(struct sqlite3* db, const char* class_name) {
  size_t i = 0;
  while (i < CLASSES && strcasecmp(class_name, classes[i].name) != 0) ++i; /* CIM names are the same in any case */
  if (i == CLASSES) return RC_INVALID_CLASS;

  int32_t count = 0;
  fru_sdr_rec* assets = NULL;
  const int32_t status = db_get_all_physicalasset_element(db, &count, &assets, classes[i].bit);
  for (int32_t at = 0; status == 0 && at < count; ++at) {
    if (assets[at].IsFRUAvailable && !is_repeated(assets, at)) return_instance(classes[i].name, &assets[at]);
  }
  db_freemem(assets);
  return status == 0 ? RC_OK : RC_FAILED;
}

int main(int argc, char** argv) {
  const char* const class_name = argc > 1 ? argv[1] : "CIM_Card";
  struct sqlite3* db;
  if (db_init(&db) != 0) {
    fputs("the database cannot be opened\n", stderr);
    return RC_FAILED;
  }
  const int status = enum_instances(db, class_name);
  if (status == RC_INVALID_CLASS) fprintf(stderr, "%s is not a class of physical elements\n", class_name);
  db_close(db);
  return status;
}
