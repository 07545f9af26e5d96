#include <cerrno>
#include <limits>
#include <utility>

#include "engines/rasteriser/ErrorCodes.h"
#include "engines/rasteriser/RasteriserFixture.h"
#include "support/RawPdf.h"
#include "support/Readers.h"
#include "support/Surroundings.h"

namespace TarnixTools::engines::rasteriser {
namespace {

using platform::WidePath;
using ::testing::ElementsAre;
using testing::Exists;
using testing::RawPdf;
using testing::TestPdf;

class RasteriserFailures : public RasteriserFixture {};

TEST_F(RasteriserFailures, RefusesValuesOutOfRange) {
  for (const float dpi : {0.0F, -100.0F, 1e9F, std::numeric_limits<float>::infinity(),
                          std::numeric_limits<float>::quiet_NaN()}) {
    EXPECT_EQ(Pdf2ImgSetDPI(object_, dpi), 0) << dpi;
    EXPECT_EQ(Error(), kPdf2ImgArgumentError);
  }
  EXPECT_EQ(Pdf2ImgSetImageQuality(object_, 0), 0);
  EXPECT_EQ(Pdf2ImgSetImageQuality(object_, 101), 0);
  EXPECT_EQ(Pdf2ImgSetCompression(object_, 2), 0);
  EXPECT_EQ(Pdf2ImgSetCompression(object_, 3), 1);
  EXPECT_EQ(Pdf2ImgSetBitmapDimensions(object_, 0, 10), 0);
  EXPECT_EQ(Pdf2ImgSetBitmapDimensions(object_, 10, 0), 0);
  EXPECT_EQ(Pdf2ImgSetPageSize(object_, 10, -1), 0);
  EXPECT_EQ(Pdf2ImgSetPageSize(object_, 10, 0), 0);
  EXPECT_EQ(Pdf2ImgSetPageSize(object_, 0, 10), 0);
  EXPECT_EQ(Pdf2ImgSetDPI(object_, 0.49F), 0);
  EXPECT_EQ(Pdf2ImgSetDPI(object_, 65535.1F), 0);
}

TEST_F(RasteriserFailures, TakesValuesAtTheEndsOfTheirRanges) {
  for (const int quality : {1, 100}) {
    EXPECT_EQ(Pdf2ImgSetImageQuality(object_, quality), 1);
  }
  EXPECT_EQ(Pdf2ImgSetBitmapDimensions(object_, 1, 1), 1);
  EXPECT_EQ(Pdf2ImgSetPageSize(object_, 0.5F, 0.5F), 1);
  EXPECT_EQ(Pdf2ImgSetDPI(object_, 65535), 1);
  EXPECT_EQ(Pdf2ImgSetDPI(object_, 0.5F), 1);
  EXPECT_EQ(Error(), kPdf2ImgNoError);
}

TEST_F(RasteriserFailures, MakesNoImageAfterABadResolution) {
  ASSERT_TRUE(Open(Painted("")));
  Pdf2ImgSetDPI(object_, 0);
  EXPECT_EQ(Pdf2ImgCreateImageW(object_, WidePath(Path("page.jpg"))), 0);
  EXPECT_EQ(Error(), kPdf2ImgArgumentError);
  Pdf2ImgSetDPI(object_, 72);
  EXPECT_EQ(Render(1).width, 144);
}

TEST_F(RasteriserFailures, KnowsAMissingOrWrongPassword) {
  TARNIX_NEED_PROGRAM("qpdf");
  Painted("").Write(Path("plain.pdf"));
  testing::EncryptWithQpdf(Path("plain.pdf"), Path("in.pdf"), "pw\xC3\xA9", "owner");
  EXPECT_FALSE(Open(Path("in.pdf")));
  EXPECT_EQ(Error(), 0x80410112U);
  EXPECT_FALSE(Open(Path("in.pdf"), L"wrong"));
  EXPECT_EQ(Error(), 0x80410112U);
  EXPECT_EQ(Pdf2ImgGetPageCount(object_), -1);
  EXPECT_TRUE(Open(Path("in.pdf"), L"pw\xE9"));
  EXPECT_EQ(Render(1).width, 200);
  EXPECT_TRUE(Open(Path("in.pdf"), L"owner"));
  EXPECT_EQ(Render(1).width, 200);
}

TEST_F(RasteriserFailures, TellsFilesApartThatCannotBeOpened) {
  EXPECT_FALSE(Open(Path("missing.pdf")));
  EXPECT_EQ(Error(), kPdf2ImgFileError);
  testing::WriteBytes(Path("text.pdf"), "no document");
  EXPECT_FALSE(Open(Path("text.pdf")));
  EXPECT_EQ(Error(), kPdf2ImgNotAPdfError);
  testing::WriteBytes(Path("empty.pdf"), "");
  EXPECT_FALSE(Open(Path("empty.pdf")));
  EXPECT_EQ(Error(), kPdf2ImgNotAPdfError);
}

TEST_F(RasteriserFailures, OpensDocumentsWithoutPages) {
  RawPdf file;
  file.Object(1, "<</Type/Catalog/Pages 2 0 R>>").Object(2, "<</Type/Pages/Count 0/Kids[]>>");
  testing::WriteBytes(Path("in.pdf"), file.Table());
  ASSERT_TRUE(Open(Path("in.pdf")));
  EXPECT_EQ(Pdf2ImgGetPageCount(object_), 0);
}

TEST_F(RasteriserFailures, ReportsPagesThatAreNotThere) {
  ASSERT_TRUE(Open(Painted("")));
  Listen();
  for (const int page : {0, -1, 2, std::numeric_limits<int>::min()}) {
    ASSERT_EQ(Pdf2ImgCreateImageW(object_, WidePath(Path("page.jpg"))), 1);
    EXPECT_EQ(Pdf2ImgRenderPage(object_, page), 0);
    EXPECT_EQ(Error(), kPdf2ImgPageError);
    EXPECT_EQ(Pdf2ImgCloseImage(object_), 0);
  }
  EXPECT_EQ(reports_.size(), 4U);
  EXPECT_EQ(reports_[2], std::pair(2, static_cast<std::uint32_t>(kPdf2ImgPageError)));
  EXPECT_EQ(Pdf2ImgClose(object_), 1);
  EXPECT_FALSE(Exists(Path("page.jpg")));
}

TEST_F(RasteriserFailures, RefusesImagesThatTheFormatCannotHold) {
  ASSERT_TRUE(Open(Painted("", 14400, 14400)));
  Listen();
  Pdf2ImgSetDPI(object_, 10000);
  EXPECT_EQ(Render(1).width, 0);
  EXPECT_THAT(reports_,
              ElementsAre(std::pair(1, static_cast<std::uint32_t>(kPdf2ImgImageSizeError))));
  EXPECT_FALSE(Exists(Path("page.jpg")));
  ASSERT_TRUE(Open(Path("in.pdf")));  // and goes on
  Pdf2ImgSetDPI(object_, 2);
  EXPECT_EQ(Render(1).width, 400);
}

TEST_F(RasteriserFailures, LeavesNoFileUnlessThePageIsDrawn) {
  testing::WriteBytes(Path("old.jpg"), "old");
  ASSERT_TRUE(Open(Painted("")));
  ASSERT_EQ(Pdf2ImgCreateImageW(object_, WidePath(Path("old.jpg"))), 1);
  EXPECT_EQ(Pdf2ImgCloseImage(object_), 0);
  ASSERT_EQ(Pdf2ImgCreateImageW(object_, WidePath(Path("new.jpg"))), 1);
  EXPECT_EQ(Pdf2ImgRenderPage(object_, 1), 1);
  EXPECT_EQ(Pdf2ImgClose(object_), 1);  // without CloseImage
  EXPECT_EQ(testing::ReadBytes(Path("old.jpg")), "old");
  EXPECT_THAT(directory_.Names(), ElementsAre("in.pdf", "old.jpg"));
}

TEST_F(RasteriserFailures, TellsWhenAnImageCannotBeCreated) {
  ASSERT_TRUE(Open(Painted("")));
  EXPECT_EQ(Pdf2ImgCreateImageW(object_, WidePath(Path("missing/page.jpg"))), 0);
  EXPECT_EQ(Error(), kPdf2ImgCreateError);
  EXPECT_EQ(Pdf2ImgRenderPage(object_, 1), 0);
  EXPECT_EQ(Error(), kPdf2ImgArgumentError);
}

// The calls of an image come in an order; after one that fails there is no image until the next is
// created.
TEST_F(RasteriserFailures, TakesOnePageIntoEachImage) {
  const auto create = [&](const std::string& name) {
    return Pdf2ImgCreateImageW(object_, WidePath(Path(name)));
  };
  ASSERT_TRUE(Open(Painted("")));
  Listen();
  EXPECT_EQ(Pdf2ImgRenderPage(object_, 1), 0);
  EXPECT_EQ(Error(), kPdf2ImgArgumentError);
  ASSERT_EQ(create("a.jpg"), 1);
  EXPECT_EQ(Pdf2ImgRenderPage(object_, 1), 1);
  EXPECT_EQ(Pdf2ImgRenderPage(object_, 1), 0);
  EXPECT_EQ(Error(), kPdf2ImgArgumentError);
  EXPECT_EQ(Pdf2ImgCloseImage(object_), 1);
  EXPECT_EQ(Pdf2ImgCloseImage(object_), 0);
  EXPECT_EQ(Error(), kPdf2ImgArgumentError);
  ASSERT_EQ(create("b.jpg"), 1);
  EXPECT_EQ(Pdf2ImgCloseImage(object_), 0);
  EXPECT_EQ(Pdf2ImgRenderPage(object_, 1), 0);
  ASSERT_EQ(create("c.jpg"), 1);
  EXPECT_EQ(create("missing/d.jpg"), 0);
  EXPECT_EQ(Error(), kPdf2ImgCreateError);
  EXPECT_EQ(Pdf2ImgRenderPage(object_, 1), 0);
  ASSERT_EQ(create("e.jpg"), 1);
  EXPECT_EQ(Pdf2ImgRenderPage(object_, 2), 0);
  EXPECT_EQ(Pdf2ImgRenderPage(object_, 1), 0);
  EXPECT_EQ(Error(), kPdf2ImgArgumentError);
  EXPECT_EQ(Pdf2ImgClose(object_), 1);
  EXPECT_THAT(directory_.Names(), ElementsAre("a.jpg", "in.pdf"));
  EXPECT_THAT(reports_, ElementsAre(std::pair(2, static_cast<std::uint32_t>(kPdf2ImgPageError))));
}

TEST_F(RasteriserFailures, HasNothingLeftOnceItIsClosed) {
  ASSERT_TRUE(Open(Painted("")));
  ASSERT_EQ(Pdf2ImgCreateImageW(object_, WidePath(Path("a.jpg"))), 1);
  EXPECT_EQ(Pdf2ImgClose(object_), 1);
  EXPECT_EQ(Pdf2ImgGetPageCount(object_), -1);
  ASSERT_TRUE(Open(Path("in.pdf")));
  EXPECT_EQ(Pdf2ImgRenderPage(object_, 1), 0);
  EXPECT_EQ(Error(), kPdf2ImgArgumentError);
  EXPECT_FALSE(Open(Path("missing.pdf")));
  EXPECT_EQ(Pdf2ImgGetPageCount(object_), -1);
}

TEST_F(RasteriserFailures, TellsOfEveryImageThatCannotBeWritten) {
  if (!Exists("/dev/full")) {
    GTEST_SKIP() << "needs /dev/full";
  }
  TestPdf document;
  document.Page().Size(9, 9).Page().Size(9, 9).Page().Size(9, 9);
  ASSERT_TRUE(Open(document));
  Listen();
  for (const auto& [page, path] :
       {std::pair(3, std::string("/dev/full")), {1, Path("a.jpg")}, {2, "/dev/full"}}) {
    ASSERT_EQ(Pdf2ImgCreateImageW(object_, WidePath(path)), 1);
    EXPECT_EQ(Pdf2ImgRenderPage(object_, page), 1);
    EXPECT_EQ(Pdf2ImgCloseImage(object_), 1);
  }
  EXPECT_EQ(Pdf2ImgClose(object_), 0);
  EXPECT_EQ(Error(), kPdf2ImgWriteError);
  EXPECT_EQ(platform::LastSystemError(), ENOSPC);
  const std::uint32_t code = kPdf2ImgWriteError;
  EXPECT_THAT(reports_, ElementsAre(std::pair(3, code), std::pair(2, code)));
  EXPECT_EQ(testing::ReadJpeg(Path("a.jpg")).width, 13);
  EXPECT_EQ(Pdf2ImgClose(object_), 1);
  EXPECT_EQ(reports_.size(), 2U);
  // Without anybody to be told.
  EXPECT_EQ(Pdf2ImgSetReport(object_, nullptr, this), 1);
  ASSERT_TRUE(Open(Path("in.pdf")));
  ASSERT_EQ(Pdf2ImgCreateImageW(object_, WidePath("/dev/full")), 1);
  EXPECT_EQ(Pdf2ImgRenderPage(object_, 1), 1);
  EXPECT_EQ(Pdf2ImgCloseImage(object_), 1);
  EXPECT_EQ(Pdf2ImgClose(object_), 0);
  EXPECT_EQ(reports_.size(), 2U);
}

TEST_F(RasteriserFailures, TellsWhenAnImageCannotBeWritten) {
  if (!Exists("/dev/full")) {
    GTEST_SKIP() << "needs /dev/full";
  }
  ASSERT_TRUE(Open(Painted("")));
  Listen();
  ASSERT_EQ(Pdf2ImgCreateImageW(object_, WidePath("/dev/full")), 1);
  EXPECT_EQ(Pdf2ImgRenderPage(object_, 1), 1);
  Pdf2ImgCloseImage(object_);
  EXPECT_EQ(Pdf2ImgClose(object_), 0);
  EXPECT_EQ(Error(), kPdf2ImgWriteError);
  EXPECT_THAT(reports_, ElementsAre(std::pair(1, static_cast<std::uint32_t>(kPdf2ImgWriteError))));
}

TEST_F(RasteriserFailures, FailsWithoutADocument) {
  EXPECT_EQ(Pdf2ImgGetPageCount(object_), -1);
  EXPECT_EQ(Pdf2ImgCreateImageW(object_, WidePath(Path("page.jpg"))), 0);
  EXPECT_EQ(Pdf2ImgRenderPage(object_, 1), 0);
  EXPECT_EQ(Pdf2ImgCloseImage(object_), 0);
  EXPECT_EQ(Pdf2ImgClose(object_), 1);
}

TEST_F(RasteriserFailures, RefusesNullObjects) {
  EXPECT_EQ(Pdf2ImgOpenW(nullptr, WidePath("a"), L""), 0);
  EXPECT_EQ(Pdf2ImgGetPageCount(nullptr), -1);
  EXPECT_EQ(Pdf2ImgSetDPI(nullptr, 72), 0);
  EXPECT_EQ(Pdf2ImgSetImageQuality(nullptr, 90), 0);
  EXPECT_EQ(Pdf2ImgSetCompression(nullptr, kPdf2ImgJpeg), 0);
  EXPECT_EQ(Pdf2ImgSetBitmapDimensions(nullptr, 1, 1), 0);
  EXPECT_EQ(Pdf2ImgSetPageSize(nullptr, 1, 1), 0);
  EXPECT_EQ(Pdf2ImgSetFitPage(nullptr, 1), 0);
  EXPECT_EQ(Pdf2ImgSetReport(nullptr, nullptr, nullptr), 0);
  EXPECT_EQ(Pdf2ImgCreateImageW(nullptr, WidePath("a")), 0);
  EXPECT_EQ(Pdf2ImgRenderPage(nullptr, 1), 0);
  EXPECT_EQ(Pdf2ImgCloseImage(nullptr), 0);
  EXPECT_EQ(Pdf2ImgGetErrorCode(nullptr), kPdf2ImgArgumentError);
}

}  // namespace
}  // namespace TarnixTools::engines::rasteriser
