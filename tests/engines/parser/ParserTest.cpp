// The content parser's contract: what its calls tell, and how they fail.
#include <gtest/gtest.h>

#include "engines/parser/ImagesFixture.h"
#include "support/Readers.h"

namespace TarnixTools::engines::parser {
namespace {

TEST_F(Images, TellTheirMatrix) {
  ASSERT_TRUE(Open(Page(RedBlue(), "q 2 0 0 3 10 20 cm 1 0 0 1 1 1 cm /I Do Q")));
  ExpaDocSetPageNo(document_, 1);
  TExpaContent* content = ExpaPageGetContent(ExpaDocGetPage(document_));
  EXPECT_EQ(ExpaContentGetNextImage(content), 0);  // not reset yet
  EXPECT_EQ(ExpaDocGetLastError(document_), kExpaArgumentError);
  ExpaContentResetContent(content, 1);
  EXPECT_EQ(ExpaContentGetImage(content), nullptr);
  ASSERT_EQ(ExpaContentGetNextImage(content), 1);
  const TExpaMatrix* matrix = ExpaGSGetCTM(ExpaContentGetGraphicsState(content));
  EXPECT_EQ(matrix->a, 2);
  EXPECT_EQ(matrix->d, 3);
  EXPECT_EQ(matrix->e, 12);
  EXPECT_EQ(matrix->f, 23);
  EXPECT_EQ(matrix->is_skewed, 0);
  EXPECT_EQ(ExpaContentGetNextImage(content), 0);
  EXPECT_EQ(ExpaGSGetCTM(ExpaContentGetGraphicsState(content)), nullptr);
}

TEST_F(Images, AreNoneBehindOneThatIsLost) {
  ASSERT_TRUE(Open(Page(HexImage(0, 8, "/ColorSpace/DeviceGray/BitsPerComponent 8", ""))));
  ExpaDocSetPageNo(document_, 1);
  TExpaContent* content = ExpaPageGetContent(ExpaDocGetPage(document_));
  ExpaContentResetContent(content, 1);
  EXPECT_EQ(ExpaContentGetNextImage(content), 0);
  EXPECT_EQ(ExpaContentGetImage(content), nullptr);
  EXPECT_EQ(ExpaContentGetGraphicsState(content), nullptr);
  EXPECT_EQ(troubles_, (std::vector<std::pair<int, int>>{{1, kExpaImageLost}}));
}

TEST_F(Images, TellTheirMatrixInPointsOfWhatIsSeen) {
  TestPdf file = Page(RedBlue(), "2 0 0 3 60 70 cm /I Do");
  file.NoMediaBox().PageEntry("/MediaBox[0 0 200 100]/CropBox[50 50 900 900]/UserUnit 2");
  ASSERT_TRUE(Open(file));
  ExpaDocSetPageNo(document_, 1);
  TExpaContent* content = ExpaPageGetContent(ExpaDocGetPage(document_));
  ExpaContentResetContent(content, 1);
  ASSERT_EQ(ExpaContentGetNextImage(content), 1);
  const TExpaMatrix* matrix = ExpaGSGetCTM(ExpaContentGetGraphicsState(content));
  EXPECT_EQ(matrix->a, 4);
  EXPECT_EQ(matrix->d, 6);
  EXPECT_EQ(matrix->e, 20);
  EXPECT_EQ(matrix->f, 40);
}

TEST_F(Images, TellWhyTheyCannotBeStored) {
  ASSERT_TRUE(Open(Page(RedBlue())));
  ExpaDocSetPageNo(document_, 1);
  TExpaContent* content = ExpaPageGetContent(ExpaDocGetPage(document_));
  ExpaContentResetContent(content, 1);
  ASSERT_EQ(ExpaContentGetNextImage(content), 1);
  TExpaImage* image = ExpaContentGetImage(content);
  EXPECT_EQ(ExpaImageStoreW(image, WidePath(Path("missing/a.jpg")), kExpaJpeg), 0);
  EXPECT_EQ(ExpaDocGetLastError(document_), kExpaCreateError);
  EXPECT_EQ(ExpaImageStoreW(image, WidePath(Path("a.png")), 12), 0);
  EXPECT_EQ(ExpaDocGetLastError(document_), kExpaArgumentError);
  for (const int orientation : {0, 9}) {
    EXPECT_EQ(ExpaImageChangeOrientation(image, orientation), 0);
  }
  for (int orientation = 8; orientation >= 1; --orientation) {
    EXPECT_EQ(ExpaImageChangeOrientation(image, orientation), 1);
  }
  if (testing::Exists("/dev/full")) {
    EXPECT_EQ(ExpaImageStoreW(image, WidePath("/dev/full"), kExpaJpeg), 0);
    EXPECT_EQ(ExpaDocGetLastError(document_), kExpaWriteError);
  }
}

// As JPEG files can have, in both directions.
TEST_F(Images, HaveSoManyPixelsASideAtMost) {
  const auto image = [](int width, int height) {
    return Stream("/Subtype/Image/ColorSpace/DeviceGray/BitsPerComponent 1/Width " +
                      std::to_string(width) + "/Height " + std::to_string(height),
                  std::string(static_cast<std::size_t>((width + 7) / 8 * height), '\0'));
  };
  EXPECT_EQ(ExtractImage(image(65'500, 1)).width, 65'500);
  EXPECT_EQ(ExtractImage(image(1, 65'500)).height, 65'500);
  EXPECT_TRUE(troubles_.empty());
  for (const auto& [width, height] : {std::pair(65'501, 1), std::pair(1, 65'501)}) {
    ASSERT_TRUE(Open(Page(image(width, height))));
    EXPECT_TRUE(Extract().empty());
  }
  EXPECT_EQ(troubles_,
            (std::vector<std::pair<int, int>>{{1, kExpaImageLost}, {1, kExpaImageLost}}));
}

// The orientation is asked for before each file, and may be another one.
TEST_F(Images, AreStoredInEachOrientation) {
  ASSERT_TRUE(Open(Page(RedBlue())));
  ExpaDocSetPageNo(document_, 1);
  TExpaContent* content = ExpaPageGetContent(ExpaDocGetPage(document_));
  ExpaContentResetContent(content, 1);
  ASSERT_EQ(ExpaContentGetNextImage(content), 1);
  TExpaImage* image = ExpaContentGetImage(content);
  // Where red is then: left, below, right or above.
  const std::vector<std::string> sides = {"left",  "right", "right", "left",
                                          "above", "above", "below", "below"};
  for (int orientation = 1; orientation <= 8; ++orientation) {
    ExpaImageChangeOrientation(image, orientation);
    EXPECT_EQ(ExpaImageStoreW(image, WidePath(Path("a.jpg")), kExpaJpeg), 1);
    const JpegImage stored = ReadJpeg(Path("a.jpg"));
    const bool is_wide = stored.width == 16;
    const bool is_red_first = stored.At(1, 1)[0] > 200;
    EXPECT_EQ(stored.At(stored.width - 2, stored.height - 2)[0] > 200, !is_red_first);
    EXPECT_EQ(is_wide ? (is_red_first ? "left" : "right") : (is_red_first ? "above" : "below"),
              sides.at(static_cast<std::size_t>(orientation) - 1))
        << orientation;
  }
}

TEST_F(Images, ComeFromAndGoToPathsThatAreNoUtf8) {
  const std::string path = Page(RedBlue()).Write(Path("J\xF6rg.pdf"));
  ASSERT_EQ(ExpaDocOpenW(document_, WidePath(path), L""), 1);
  ExpaDocSetPageNo(document_, 1);
  TExpaContent* content = ExpaPageGetContent(ExpaDocGetPage(document_));
  ExpaContentResetContent(content, 1);
  ASSERT_EQ(ExpaContentGetNextImage(content), 1);
  EXPECT_EQ(
      ExpaImageStoreW(ExpaContentGetImage(content), WidePath(Path("\xFF\xE9.jpg")), kExpaJpeg), 1);
  EXPECT_EQ(ReadJpeg(Path("\xFF\xE9.jpg")).width, 16);
}

TEST_F(Images, NeedADocument) {
  EXPECT_EQ(ExpaDocOpenW(document_, WidePath(Path("missing.pdf")), L""), 0);
  EXPECT_EQ(ExpaDocGetLastError(document_), kExpaFileError);
  testing::WriteBytes(Path("text.pdf"), "no document");
  EXPECT_EQ(ExpaDocOpenW(document_, WidePath(Path("text.pdf")), L""), 0);
  EXPECT_EQ(ExpaDocGetLastError(document_), kExpaNotAPdfError);
  EXPECT_EQ(ExpaDocGetPageCount(document_), 0);
  EXPECT_EQ(ExpaDocSetPageNo(document_, 1), 0);
  TestPdf two;
  two.Page().Page();
  ASSERT_TRUE(Open(two));
  EXPECT_EQ(ExpaDocGetPageCount(document_), 2);
  EXPECT_EQ(ExpaDocGetPage(document_), nullptr);
  for (const int page : {-1, 0, 3}) {
    EXPECT_EQ(ExpaDocSetPageNo(document_, page), 0);
    EXPECT_EQ(ExpaDocGetLastError(document_), kExpaArgumentError);
  }
  EXPECT_EQ(ExpaDocSetPageNo(document_, 1), 1);
  EXPECT_EQ(ExpaDocSetPageNo(document_, 2), 1);
  EXPECT_NE(ExpaDocGetPage(document_), nullptr);
  EXPECT_EQ(ExpaDocClose(document_), 1);
  EXPECT_EQ(ExpaDocGetPage(document_), nullptr);
  EXPECT_EQ(ExpaDocGetPageCount(document_), 0);
  EXPECT_EQ(ExpaDocGetPage(document_), nullptr);
  EXPECT_EQ(ExpaPageGetContent(nullptr), nullptr);
  EXPECT_EQ(ExpaContentResetContent(nullptr, 1), 0);
  EXPECT_EQ(ExpaContentGetNextImage(nullptr), 0);
  EXPECT_EQ(ExpaContentGetImage(nullptr), nullptr);
  EXPECT_EQ(ExpaContentGetGraphicsState(nullptr), nullptr);
  EXPECT_EQ(ExpaGSGetCTM(nullptr), nullptr);
  EXPECT_EQ(ExpaImageChangeOrientation(nullptr, 1), 0);
  EXPECT_EQ(ExpaImageStoreW(nullptr, WidePath(""), kExpaJpeg), 0);
  EXPECT_EQ(ExpaDocSetPageNo(nullptr, 1), 0);
  EXPECT_EQ(ExpaDocGetPage(nullptr), nullptr);
  EXPECT_EQ(ExpaDocSetReport(nullptr, nullptr, nullptr), 0);
  EXPECT_EQ(ExpaDocGetPageCount(nullptr), 0);
  EXPECT_EQ(ExpaDocOpenW(nullptr, WidePath(""), L""), 0);
  EXPECT_EQ(ExpaDocGetLastError(nullptr), kExpaArgumentError);
}

}  // namespace
}  // namespace TarnixTools::engines::parser
