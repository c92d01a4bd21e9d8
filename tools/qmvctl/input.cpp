#include "input.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <numeric>

namespace qmvctl {

InputError::InputError(const std::string& file, size_t offset, const std::string& text)
    : std::runtime_error(file + ": offset " + std::to_string(offset) + ": " + text) {}

Input Input::read(const std::string& path, size_t longest) {
  constexpr size_t kTogether = 4096;
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(std::fopen(path.c_str(), "rb"), std::fclose);
  std::vector<uint8_t> bytes;
  size_t count = stream ? kTogether : 0;
  while (count == kTogether && bytes.size() <= longest) {
    const size_t before = bytes.size();
    bytes.resize(before + kTogether);
    count = std::fread(&bytes[before], 1, kTogether, stream.get());
    bytes.resize(before + count);
  }
  if (!stream || std::ferror(stream.get())) throw std::runtime_error(path + ": " + std::strerror(errno));
  if (bytes.size() > longest) throw std::runtime_error(path + ": too long for a dump");
  return {path, std::move(bytes)};
}

Input::Input(std::string name, std::vector<uint8_t> bytes)
    : file_(std::make_shared<const File>(File{std::move(name), std::move(bytes)})), size_(file_->bytes.size()) {}

uint8_t Input::byte(size_t at) const {
  if (at >= size_) fail(at, "the data ends here, more is needed");
  return file_->bytes[start_ + at];
}

uint16_t Input::word(size_t at) const {
  return static_cast<uint16_t>(byte(at) | byte(at + 1) << 8);
}

uint32_t Input::dword(size_t at) const {
  return word(at) | static_cast<uint32_t>(word(at + 2)) << 16;
}

Input Input::piece(size_t at, size_t length, const std::string& what) const {
  if (at > size_ || length > size_ - at) {
    fail(at, what + " needs " + std::to_string(length) + " bytes, but " + std::to_string(at < size_ ? size_ - at : 0) +
                 " are there");
  }
  Input piece = *this;
  piece.start_ = start_ + at;
  piece.size_ = length;
  return piece;
}

uint8_t Input::sum() const {
  const auto first = file_->bytes.begin() + static_cast<std::ptrdiff_t>(start_);
  return std::accumulate(first, first + static_cast<std::ptrdiff_t>(size_), uint8_t{0},
                         [](uint8_t sum, uint8_t byte) { return static_cast<uint8_t>(sum + byte); });
}

void Input::fail(size_t at, const std::string& text) const {
  throw InputError(file_->name, start_ + at, text);
}

}  // namespace qmvctl
