// Input files: bytes that are read with a check of every access.
#ifndef QMVCTL_INPUT_H
#define QMVCTL_INPUT_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace qmvctl {

// What is wrong with an input file, as "FILE: offset N: TEXT".
class InputError : public std::runtime_error {
 public:
  InputError(const std::string& file, size_t offset, const std::string& text);
};

// A file's bytes, or a piece of them. Whatever lies outside is an InputError with the file's name and the file's
// offset.
class Input {
 public:
  // Reads a whole file. Throws std::runtime_error when it cannot be read, or is longer than so many bytes.
  static Input read(const std::string& path, size_t longest);

  Input(std::string name, std::vector<uint8_t> bytes);

  size_t size() const { return size_; }
  uint8_t byte(size_t at) const;
  uint16_t word(size_t at) const;   // low byte first
  uint32_t dword(size_t at) const;  // low byte first

  // The bytes from `at` on. `what` names them in the message when they are not all there.
  Input piece(size_t at, size_t length, const std::string& what) const;

  // The sum of all bytes, modulo 256: 0 where the last byte is a zero checksum.
  uint8_t sum() const;

  [[noreturn]] void fail(size_t at, const std::string& text) const;

 private:
  struct File {
    std::string name;
    std::vector<uint8_t> bytes;
  };

  std::shared_ptr<const File> file_;
  size_t start_ = 0;
  size_t size_ = 0;
};

}  // namespace qmvctl

#endif
