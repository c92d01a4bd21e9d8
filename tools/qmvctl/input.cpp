#include "input.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>
#include <numeric>

namespace qmvctl {

InputError::InputError(const std::string& file, size_t offset, const std::string& text)
    : std::runtime_error(file + ": offset " + std::to_string(offset) + ": " + text) {}

Input Input::read(const std::string& path) {
  errno = 0;
  std::ifstream stream(path, std::ios::binary);
  std::vector<uint8_t> bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
  if (!stream) throw std::runtime_error(path + ": " + (errno ? std::strerror(errno) : "cannot be read"));
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
