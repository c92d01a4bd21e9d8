// Changes of the event log, through the library.
#ifndef QMVCTL_EVENT_LOG_H
#define QMVCTL_EVENT_LOG_H

#include <cstdint>
#include <set>

#include "database.h"

namespace qmvctl {

// Adds an event behind the last one and returns its record ID. The event's own RecordID does not count. Throws
// std::runtime_error when the last ID, FFFEh, is taken.
int32_t add_event(Database& database, sel_rec event);

// Deletes events, all or, where one does not exist, none.
void delete_events(Database& database, const std::set<int32_t>& record_ids);

// Deletes all events and returns how many there were.
size_t clear_events(Database& database);

}  // namespace qmvctl

#endif
