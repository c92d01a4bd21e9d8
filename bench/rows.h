// The database file that all contenders work on.
#ifndef QMV_BENCH_ROWS_H
#define QMV_BENCH_ROWS_H

#include <qmv.h>

#include <string>
#include <vector>

namespace qmv::bench {

inline constexpr int kSensors = 1000;
inline constexpr int kSensorsPerEntity = 4;
inline constexpr int kEntitiesPerFru = 5;    // every fifth entity is a FRU, with a row in table "fru"
inline constexpr std::int32_t kMask = 1024;  // PhysicalElement of every eighth entity
inline constexpr int kCapabilities = 12;  // SSH capabilities; a controller has a dozen rows of a profile table at most

// Makes the tables of a schema file and fills them: compact sensors, the FRUs of their entities, and SSH capabilities.
// Texts of sensors have 8 to 30 characters; the inventory of a sensor without a FRU is empty, and one text in eleven is
// NULL. So half of the texts are empty, as in what real servers give.
void create_database(const std::string& path, const std::string& schema);

// Sensors of the file, changed, and sensors that it has not yet.
std::vector<compact_sdr_rec> changed_sensors(int count);
std::vector<compact_sdr_rec> new_sensors(int count);

// The key of a sensor of the file.
std::string device_id(int sensor);

// SSH capabilities. The file has the first kCapabilities, of revision 0.
ssh_capabilities_rec capabilities(int number, int revision);

}  // namespace qmv::bench

#endif
