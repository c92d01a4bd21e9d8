// Gives the files of folders to a target, one after another: kept inputs are tried again by any compiler's build.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "input.h"

int main(int count, char** folders) {
  std::vector<std::filesystem::path> files;
  for (int i = 1; i < count; ++i) {
    for (const auto& entry : std::filesystem::directory_iterator(folders[i])) files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  for (const auto& file : files) {
    std::printf("%s\n", file.filename().c_str());
    std::fflush(stdout);
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  }
  bool failed = files.empty();
  if (qmv::fuzz::unreached != nullptr) {
    for (const std::string& place : qmv::fuzz::unreached()) {
      std::printf("no input reaches %s\n", place.c_str());
      failed = true;
    }
  }
  return failed ? EXIT_FAILURE : EXIT_SUCCESS;
}
