// FRU images of any bytes. Where the first byte is odd, checksums are made right, or hardly any image would get past
// them.
#include <cstdint>
#include <vector>

#include "fru_decoder.h"
#include "texts.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

// Makes the sum of some bytes 0 by the last of them.
void repair(Bytes& image, std::size_t start, std::size_t length) {
  if (length == 0 || start + length > image.size()) return;
  std::uint8_t sum = 0;
  for (std::size_t i = start; i + 1 < start + length; ++i) sum = static_cast<std::uint8_t>(sum + image[i]);
  image[start + length - 1] = static_cast<std::uint8_t>(-sum);
}

Bytes repaired(Bytes image) {
  if (image.size() < 8) return image;
  image[0] = 1;
  repair(image, 0, 8);
  for (std::size_t area = 2; area <= 4; ++area) {
    const std::size_t start = image[area] * std::size_t{8};
    if (start == 0 || start + 2 > image.size()) continue;
    image[start] = 1;
    repair(image, start, image[start + 1] * std::size_t{8});
  }
  return image;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  Bytes image(bytes, bytes + size);
  if (size > 0 && image[0] % 2 == 1) image = repaired(std::move(image));
  fru_rec fru{};
  try {
    qmvctl::decode_fru({"file", std::move(image)}, fru);
  } catch (const qmvctl::InputError&) {
  }
  qmv::fuzz::require_texts(fru);
  return 0;
}
