// The host of the benchmark programs, which drops every log line: what a line costs is the host's affair, and the same
// for all contenders.
#include <qmv.h>

void HTRC_LINUXAPP_DbgOut(int, const char*, ...) {}
void HTRC_LINUXAPP_Runtime_DbgOut(int, const char*, ...) {}
