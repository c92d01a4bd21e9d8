// The system event log, as "ipmitool sel writeraw" writes it.
#ifndef QMVCTL_SEL_DECODER_H
#define QMVCTL_SEL_DECODER_H

#include <map>
#include <string>
#include <vector>

#include "input.h"
#include "qmv.h"

namespace qmvctl {

struct EventLog {
  sel_info_rec info{};  // what a dump tells: version, number of events, time of the latest one
  std::vector<sel_rec> events;
  std::map<std::string, int> not_held;  // records that no table holds, counted by kind
};

// Decodes a dump. Throws InputError where it is cut or wrong. OEM records (types C0h to FFh) have other fields than
// table "sel" and are counted only.
EventLog decode_event_log(const Input& dump);

}  // namespace qmvctl

#endif
