#include "core/forms.h"

#include "core/shared_texts.h"

namespace qmv {

const char* text_at(const void* form, std::uint16_t distance) {
  if (distance == 0) return nullptr;
  if (distance >= kSharedText) return kSharedTexts + (distance - kSharedText);
  return static_cast<const char*>(form) + distance;
}

}  // namespace qmv
