// Following the event log.
#ifndef QMVCTL_WATCH_H
#define QMVCTL_WATCH_H

#include <ostream>

#include "database.h"
#include "listing.h"

namespace qmvctl {

// Prints the last events and then each one that is added or changed, until the process is interrupted (SIGINT)
// or nobody reads standard output any more. As JSON, each event is a line.
void watch_events(const Database& database, const Form& form, size_t last, std::ostream& out);

}  // namespace qmvctl

#endif
