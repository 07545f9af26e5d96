// Fonts of real documents, cut down, and looked at by other readers.

#include <string>

#include <gtest/gtest.h>

#include "engines/optimizer/fonts/FontFixture.h"
#include "support/PageViews.h"
#include "support/Readers.h"
#include "support/Surroundings.h"

namespace TarnixTools::engines::optimizer {
namespace {

constexpr int kDpi = 50;
constexpr std::size_t kEvery = 9;  // of the documents

// The document with its fonts cut; nothing for one that cannot be opened.
std::optional<std::string> WithFontsCut(const std::string& bytes, FontReport& report) {
  try {
    const auto document = testing::OpenBytes(bytes);
    FontUse use(*document);
    use.KeepFormFonts();
    testing::NoteText(*document, use);
    pdf::DocumentRewriter rewriter(*document);
    report = testing::CutAll(*document, rewriter, use, {});
    pdf::StringSink sink;
    rewriter.Write(sink);
    return sink.Take();
  } catch (const pdf::Error&) {
    return std::nullopt;
  }
}

TEST(FontCorpus, LooksAndReadsAsBefore) {
  TARNIX_NEED_CORPUS("general");
  TARNIX_NEED_PROGRAM("pdftoppm");
  TARNIX_NEED_PROGRAM("mutool");
  const testing::TempDir directory;
  const auto documents = testing::DocumentsIn(testing::CorpusDir() + "/general");
  std::size_t cut = 0;
  for (std::size_t i = 0; i < documents.size(); i += kEvery) {
    SCOPED_TRACE(documents[i]);
    FontReport report;
    const auto written = WithFontsCut(testing::ReadBytes(documents[i]), report);
    if (!written || report.bytes_after == report.bytes_before) {
      continue;
    }
    ++cut;
    const std::string path = testing::WriteBytes(directory.Path("cut.pdf"), *written);
    EXPECT_EQ(testing::PageTexts(path), testing::PageTexts(documents[i]));
    EXPECT_TRUE(testing::Pictures(path, kDpi) == testing::Pictures(documents[i], kDpi));
    EXPECT_TRUE(testing::PicturesByMupdf(path, kDpi) ==
                testing::PicturesByMupdf(documents[i], kDpi));
  }
  EXPECT_GT(cut, 3U);
}

}  // namespace
}  // namespace TarnixTools::engines::optimizer
