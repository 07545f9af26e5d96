// Independent readers of PDF files, run as programs: what the library writes is judged by others.
//
//   TARNIX_NEED_PROGRAM("qpdf");
//   EXPECT_EQ(QpdfComplaints(path), "");
#ifndef TARNIX_TESTS_SUPPORT_READERS_H_
#define TARNIX_TESTS_SUPPORT_READERS_H_

#include <string>
#include <utility>
#include <vector>

namespace TarnixTools::testing {

struct ProgramResult {
  int exit_status = -1;  // -1 when it did not run or was killed
  std::string output;    // standard output
  std::string errors;    // standard error
};

// Runs a program, found by PATH, without a shell: arguments are passed as they are.
ProgramResult RunProgram(const std::vector<std::string>& command);

// Whether a program is installed, by name or by path.
bool HasProgram(const std::string& name);

// Ends the test as skipped when the program is not installed.
#define TARNIX_NEED_PROGRAM(name)                     \
  do {                                                \
    if (!::TarnixTools::testing::HasProgram(name)) {  \
      GTEST_SKIP() << "needs the program " << (name); \
    }                                                 \
  } while (false)

// What qpdf --check says against the file; empty when it finds neither errors nor warnings.
std::string QpdfComplaints(const std::string& path, const std::string& password = "");

// Whether the file needs a password, by qpdf.
bool QpdfNeedsPassword(const std::string& path);

// The permission flags of an encrypted file and its other encryption facts, as qpdf
// --show-encryption prints them.
std::string QpdfEncryption(const std::string& path, const std::string& password);

// The file as JSON, by qpdf --json.
std::string QpdfJson(const std::string& path, const std::string& password = "");

// The text of each page in order, by pdftotext, without white space at either end.
std::vector<std::string> PageTexts(const std::string& path, const std::string& password = "");

struct PageFacts {
  double width = 0;  // of the media box, in points, not rotated
  double height = 0;
  int rotation = 0;
};

// The facts of each page in order, by pdfinfo.
std::vector<PageFacts> PageFactsOf(const std::string& path, const std::string& password = "");

// Writes an encrypted copy (AES, 256 bits) with qpdf, and returns its path.
std::string EncryptWithQpdf(const std::string& input, const std::string& output,
                            const std::string& user_password, const std::string& owner_password);

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_SUPPORT_READERS_H_
