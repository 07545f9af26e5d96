// Runs a fuzz target over its seeds, as an ordinary test: no fuzzer needed. Arguments are files or
// folders of files; a folder that does not exist is an empty one. The empty input is always run
// too. The test fails when the target crashes or a sanitizer stops it.
//
//   DocumentFuzzer fuzz/seeds/DocumentFuzzer
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
extern "C" __attribute__((weak)) int LLVMFuzzerInitialize(int* argc, char*** argv);

namespace {

std::vector<std::filesystem::path> SeedFiles(const std::filesystem::path& place) {
  if (std::filesystem::is_regular_file(place)) {
    return {place};
  }
  std::vector<std::filesystem::path> files;
  if (std::filesystem::is_directory(place)) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(place)) {
      if (entry.is_regular_file()) {
        files.push_back(entry.path());
      }
    }
  }
  std::sort(files.begin(), files.end());
  return files;
}

std::string ReadFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void Run(const std::string& input) {
  // An exact-size copy, so that a read past the end is seen by the address sanitizer.
  const std::vector<std::uint8_t> bytes(input.begin(), input.end());
  LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
}

}  // namespace

int main(int argc, char** argv) {
  if (LLVMFuzzerInitialize != nullptr) {
    LLVMFuzzerInitialize(&argc, &argv);
  }
  Run("");
  std::size_t count = 1;
  for (int i = 1; i < argc; ++i) {
    for (const auto& path : SeedFiles(argv[i])) {
      std::cerr << path.native() << '\n';
      Run(ReadFile(path));
      ++count;
    }
  }
  std::cout << count << " inputs replayed\n";
}
