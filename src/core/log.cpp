#include "core/log.h"

namespace qmv {

const char* file_name(Module module) {
  // One text with the names at a fixed distance: an array of pointers would have to be relocated at load time.
  static constexpr char kNames[][22] = {
      "db.c", "db_sdrd.c", "db_seld.c", "db_frud.c", "db_static_instance.c", "db_dynamic_instance.c"};
  return kNames[static_cast<unsigned>(module)];
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
#pragma GCC diagnostic ignored "-Wformat-security"
void trace(Site site, const char* text) {
  if (text != nullptr) HTRC_LINUXAPP_Runtime_DbgOut(kTraceLevel, text, file_name(site.module()), site.line());
}

void trace(Site site, const char* text, std::int32_t count) {
  HTRC_LINUXAPP_Runtime_DbgOut(kTraceLevel, text, file_name(site.module()), site.line(), count);
}
#pragma GCC diagnostic pop

}  // namespace qmv
