// Fixture of the command-line tests: a directory of its own, in which the program runs, and
// documents in it.
#ifndef TARNIX_TESTS_TOOLS_CLI_TEST_H_
#define TARNIX_TESTS_TOOLS_CLI_TEST_H_

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "support/TempDir.h"
#include "support/TestPdf.h"
#include "tools/TarnixProcess.h"

namespace TarnixTools::testing {

using Json = nlohmann::json;

class CliTest : public ::testing::Test {
 protected:
  RunResult Run(const std::vector<std::string>& arguments, RunSetup setup = {}) const {
    setup.directory = directory_.Path();
    return RunTarnix(arguments, setup);
  }

  // A run that must succeed; its standard output as JSON.
  Json RunJson(std::vector<std::string> arguments) const {
    arguments.push_back("--json");
    const auto result = Run(arguments);
    EXPECT_EQ(result.status, 0) << result.err;
    return Json::parse(result.out, nullptr, false);
  }

  std::string Path(const std::string& name) const { return directory_.Path(name); }

  bool HasFile(const std::string& name) const { return Exists(Path(name)); }

  int PagesOf(const std::string& name, const std::string& password = "") const {
    return RunJson({"info", name, "--password", password})["files"][0]["pages"];
  }

  // The widths of a document's pages, by which tests tell them.
  std::vector<int> WidthsOf(const std::string& name) const {
    std::vector<int> widths(static_cast<std::size_t>(PagesOf(name)));
    const Json info = RunJson({"info", name});
    for (const Json& size : info["files"][0]["pageSizes"]) {
      std::istringstream ranges(size["pages"].get<std::string>());
      for (std::string range; std::getline(ranges, range, ',');) {
        const std::size_t dash = range.find('-');
        const int last = std::stoi(dash == std::string::npos ? range : range.substr(dash + 1));
        for (int page = std::stoi(range); page <= last; ++page) {
          widths.at(static_cast<std::size_t>(page) - 1) = size["width"].get<int>();
        }
      }
    }
    return widths;
  }

  // A document whose pages are 101, 102, ... points wide.
  void WriteNumberedPdf(const std::string& name, int pages) const {
    TestPdf pdf;
    for (int page = 1; page <= pages; ++page) {
      pdf.Page().Size(100 + page, 50);
    }
    pdf.Write(Path(name));
  }

  void WriteFile(const std::string& name, const std::string& bytes) const {
    WriteBytes(Path(name), bytes);
  }

  void WritePdf(const std::string& name, int pages) const {
    TestPdf().Pages(pages).Write(Path(name));
  }

  // An encrypted document of one page, made by the program itself.
  void WriteProtectedPdf(const std::string& name, const std::string& password) const {
    WritePdf("plain.pdf", 1);
    const auto result = Run({"split", "plain.pdf", "--ranges", "1", "--merge", "-o",
                             "protected.pdf", "--out-password", password});
    ASSERT_EQ(result.status, 0) << result.err;
    std::filesystem::rename(Path("protected.pdf"), Path(name));
  }

  TempDir directory_;
};

// What a failed run prints: nothing on standard output, one line on standard error.
inline void ExpectFailure(const RunResult& result, int status, const std::string& line) {
  EXPECT_EQ(result.status, status);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "tarnix: " + line + "\n");
}

// What a failed run prints where the cause is told in brackets behind the message.
inline void ExpectFailure(const RunResult& result, int status, const std::string& line,
                          const std::string& cause) {
  ExpectFailure(result, status, line + " (" + cause + ")");
}

// What wrong usage prints: two lines on standard error, the second of which points to --help of
// `command`.
inline void ExpectUsageError(const RunResult& result, const std::string& line,
                             const std::string& command) {
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "tarnix: " + line + "\nTry '" + command + " --help'.\n");
}

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_TOOLS_CLI_TEST_H_
