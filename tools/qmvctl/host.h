// What the library's host provides: the debug output.
#ifndef QMVCTL_HOST_H
#define QMVCTL_HOST_H

namespace qmvctl {

// Whether traces are written; errors always are.
void show_traces(bool is_on);

}  // namespace qmvctl

#endif
