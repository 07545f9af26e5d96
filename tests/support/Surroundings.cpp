#include "support/Surroundings.h"

namespace TarnixTools::testing {

std::string SourceDir() {
  return TARNIX_SOURCE_DIR;
}

std::string ExamplesDir() {
  return SourceDir() + "/examples";
}

std::string CorpusDir() {
  return TARNIX_CORPUS_DIR;
}

std::string BuiltTarnix() {
  return TARNIX_CLI_PATH;
}

}  // namespace TarnixTools::testing
