#include "support/Surroundings.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string_view>

namespace TarnixTools::testing {

namespace {

// What tests expect was written with certain fonts: neither they nor the programs that they start see others.
const bool kSeesItsFonts =
    setenv("FONTCONFIG_FILE", TARNIX_SOURCE_DIR "/tests/support/fonts.conf", 1) == 0;

}  // namespace

std::string SourceDir() {
  return TARNIX_SOURCE_DIR;
}

std::string ExamplesDir() {
  return SourceDir() + "/examples";
}

std::string CorpusDir() {
  return TARNIX_CORPUS_DIR;
}

std::vector<std::string> DocumentsIn(const std::string& directory) {
  std::vector<std::string> paths;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(directory)) {
    if (entry.path().extension() == ".pdf") {
      paths.push_back(entry.path().string());
    }
  }
  std::sort(paths.begin(), paths.end());
  return paths;
}

std::string BuiltTarnix() {
  return TARNIX_CLI_PATH;
}

std::string FaultInjector() {
  return TARNIX_FAULT_INJECTOR;
}

bool KeepsFreedMemory() {
  return std::string_view(TARNIX_SANITIZE).find("address") != std::string_view::npos;
}

}  // namespace TarnixTools::testing
