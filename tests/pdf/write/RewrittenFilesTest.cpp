#include <gtest/gtest.h>

#include "pdf/Error.h"
#include "pdf/tree/PageTree.h"
#include "pdf/write/DocumentRewriter.h"
#include "pdf/write/RewriteFixture.h"
#include "support/Readers.h"
#include "support/Surroundings.h"
#include "support/TempDir.h"

namespace TarnixTools::pdf {
namespace {

using testing::DifferenceOf;
using testing::DocumentsIn;
using testing::OpenBytes;
using testing::ReadBytes;
using testing::RewrittenBytes;

// The identifier is a digest of how the file was written as well as of what.
std::string WithoutId(std::string bytes) {
  const std::size_t start = bytes.rfind("/ID[");
  return bytes.erase(start, bytes.find(']', start) - start);
}

// A document written again has the same objects and pages, and what is written of that is the same
// to the byte.
void ExpectTheSameAgain(const std::string& path, const RewriteOptions& options) {
  SCOPED_TRACE(path);
  const std::string bytes = ReadBytes(path);
  const auto source = OpenBytes(bytes);
  const std::string once = RewrittenBytes(*source, options);
  const auto written = OpenBytes(once);
  EXPECT_EQ(DifferenceOf(*source, *written), "");
  EXPECT_FALSE(written->is_rebuilt());
  EXPECT_TRUE(RewrittenBytes(*OpenBytes(bytes), options) == once);
  EXPECT_TRUE(WithoutId(RewrittenBytes(*written, options)) == WithoutId(once));
  if (testing::HasProgram("qpdf")) {
    const testing::TempDir directory;
    const std::string complaints =
        testing::QpdfComplaints(testing::WriteBytes(directory.Path("again.pdf"), once));
    // What was wrong before stays wrong.
    EXPECT_TRUE(complaints.empty() || !testing::QpdfComplaints(path).empty()) << complaints;
  }
}

TEST(RewrittenFiles, OfTheExamplesAreTheSameDocuments) {
  for (const std::string& path : DocumentsIn(testing::ExamplesDir())) {
    for (const FileLayout layout : {FileLayout::kObjectStreams, FileLayout::kTable}) {
      RewriteOptions options;
      options.layout = layout;
      ExpectTheSameAgain(path, options);
    }
  }
}

// Every twelfth sound document of the corpus, in six tests that run side by side.
class RewrittenCorpus : public ::testing::TestWithParam<std::size_t> {};

TEST_P(RewrittenCorpus, IsTheSame) {
  TARNIX_NEED_CORPUS("general");
  const std::vector<std::string> paths = DocumentsIn(testing::CorpusDir());
  for (std::size_t i = 12 * GetParam(); i < paths.size(); i += 12 * 6) {
    if (paths[i].find("/damaged/") != std::string::npos) {
      continue;
    }
    try {
      ExpectTheSameAgain(paths[i], {});
    } catch (const Error& error) {
      EXPECT_EQ(error.code(), ErrorCode::kPasswordRequired) << paths[i];
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Every12th, RewrittenCorpus,
                         ::testing::Range(std::size_t{0}, std::size_t{6}));

// Damaged ones are written as what can be read of them.
TEST(RewrittenFiles, OfDamagedDocumentsCanBeRead) {
  TARNIX_NEED_CORPUS("damaged");
  const std::vector<std::string> paths = DocumentsIn(testing::CorpusDir() + "/damaged");
  for (std::size_t i = 0; i < paths.size(); i += 12) {
    SCOPED_TRACE(paths[i]);
    const std::string bytes = ReadBytes(paths[i]);
    std::size_t count = 0;
    try {
      const auto source = OpenBytes(bytes);
      const PageTree tree(*source);
      count = tree.pages().size();
      DocumentRewriter rewriter(*source);
      rewriter.SetPages(tree);
      StringSink sink;
      rewriter.Write(sink);
      const std::string again = sink.Take();
      const auto written = OpenBytes(again);
      EXPECT_EQ(PageTree(*written).pages().size(), count);
      EXPECT_EQ(written->findings().count(), 0U);
    } catch (const Error& error) {
      EXPECT_EQ(count, 0U) << error.what();
    }
  }
}

}  // namespace
}  // namespace TarnixTools::pdf
