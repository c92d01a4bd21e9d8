// Event records: where their members stand.
#ifndef QMVCTL_SEL_RECORD_H
#define QMVCTL_SEL_RECORD_H

#include "qmv.h"
#include "records.h"

namespace qmvctl {

constexpr size_t kEventSize = 16;
constexpr int32_t kLastRecordId = 0xFFFE;  // from 1: the others are reserved
constexpr int kFirstOemType = 0xC0;
constexpr int kFirstOemTypeWithoutTime = 0xE0;

// IPMI 2.0, table 32-1. The table counts bytes from 1, here they count from 0.
inline constexpr Field<sel_rec> kEvent[] = {
    {&sel_rec::RecordID, 0, Width::kWord},
    {&sel_rec::RecordType, 2},
    {&sel_rec::TimeStamp, 3, Width::kDword},
    {&sel_rec::EvMRev, 9},
    {&sel_rec::SensorType, 10},
    {&sel_rec::SensorNum, 11},
    {&sel_rec::EventDir, 12, Width::kByte, 0x80, 7},
    {&sel_rec::EventType, 12, Width::kByte, 0x7F},
    {&sel_rec::EventData1, 13},
    {&sel_rec::EventData2, 14},
    {&sel_rec::EventData3, 15},
};
constexpr size_t kGeneratorId = 7;  // low byte; GeneratorID has no room for the channel and LUN in the high one

}  // namespace qmvctl

#endif
