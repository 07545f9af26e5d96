// Where tests find what they work on. Known to one source file only, so that the compiled tests are
// alike in every checkout.
//
//   const std::string letter = ExamplesDir() + "/letter.pdf";
//   TARNIX_NEED_CORPUS("general");
#ifndef TARNIX_TESTS_SUPPORT_SURROUNDINGS_H_
#define TARNIX_TESTS_SUPPORT_SURROUNDINGS_H_

#include <string>
#include <vector>

#include "support/TempDir.h"

namespace TarnixTools::testing {

// Absolute paths without a slash at their end.
std::string SourceDir();
std::string ExamplesDir();

// The documents to compare on, as CMake was told by TARNIX_CORPUS_DIR; empty when it was not.
std::string CorpusDir();

// Paths of the PDF documents in a folder and the folders in it, sorted.
std::vector<std::string> DocumentsIn(const std::string& directory);

// The program `tarnix` of this build; empty when the build has none.
std::string BuiltTarnix();

// The library that makes the system fail a program (faults/FaultInjector.cpp); empty when the build
// has none.
std::string FaultInjector();

// Whether this build checks addresses: memory that has been freed stays in use for a while.
bool KeepsFreedMemory();

// Ends the test as skipped when the corpus does not have this file or folder.
#define TARNIX_NEED_CORPUS(name)                                                               \
  do {                                                                                         \
    if (::TarnixTools::testing::CorpusDir().empty() ||                                         \
        !::TarnixTools::testing::Exists(::TarnixTools::testing::CorpusDir() + "/" + (name))) { \
      GTEST_SKIP() << "needs " << (name) << " of the corpus (TARNIX_CORPUS_DIR)";              \
    }                                                                                          \
  } while (false)

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_SUPPORT_SURROUNDINGS_H_
