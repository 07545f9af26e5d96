#include <cstdio>
#include <limits>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "engines/img2pdf/ErrorCodes.h"
#include "engines/img2pdf/ImageDocument.h"
#include "engines/img2pdf/Img2Pdf.h"
#include "pdf/tree/PageTree.h"
#include "pdf/write/RewriteFixture.h"
#include "support/Readers.h"
#include "support/TempDir.h"
#include "support/TestImages.h"

namespace TarnixTools::engines::img2pdf {

namespace {

using platform::WidePath;
using ::testing::ElementsAre;
using testing::Exists;
using testing::QpdfComplaints;
using testing::ReadBytes;
using testing::TestJpeg;
using testing::WriteBytes;

class Img2PdfTest : public ::testing::Test {
 protected:
  Img2PdfTest() {
    Img2PdfInitialize();
    object_ = Img2PdfCreateObject();
  }

  ~Img2PdfTest() override {
    Img2PdfDestroyObject(object_);
    Img2PdfUnInitialize();
  }

  WidePath Path(const std::string& name) const { return WidePath(directory_.Path(name)); }

  WidePath MakeImage(const std::string& name, const std::string& bytes) const {
    WriteBytes(directory_.Path(name), bytes);
    return Path(name);
  }

  int Create(const std::string& name, const std::wstring& password = L"") {
    return Img2PdfCreateW(object_, Path(name), password, password, 0xFFFFFFFF);
  }

  // The code with which a page of these bytes fails.
  std::int32_t CodeOf(const std::string& bytes) {
    EXPECT_EQ(Create("out.pdf"), 1);
    EXPECT_EQ(Img2PdfCreatePageFromImageW(object_, MakeImage("image", bytes)), 0);
    const std::int32_t code = Img2PdfGetErrorCode(object_);
    Img2PdfDestroyObject(object_);
    object_ = Img2PdfCreateObject();
    EXPECT_FALSE(Exists(directory_.Path("out.pdf")));
    return code;
  }

  // Makes out.pdf of one picture of 12 x 6 pixels, and opens it.
  void MakePage() {
    ASSERT_EQ(Create("out.pdf"), 1);
    EXPECT_EQ(Img2PdfCreatePageFromImageW(object_, MakeImage("a.jpg", TestJpeg(3))), 1);
    EXPECT_EQ(Img2PdfClose(object_), 1);
    bytes_ = testing::ReadBytes(directory_.Path("out.pdf"));
    document_ = testing::OpenBytes(bytes_);
    const pdf::PageTree pages(*document_);
    page_ = pages.Load(pages.pages().at(0), arena_);
  }

  std::string Content() {
    return document_->TryDecodeStream(page_.Get("Contents").AsReference().number)->data;
  }

  testing::TempDir directory_;
  TImg2Pdf* object_ = nullptr;
  // Of the document that was made:
  std::string bytes_;
  std::unique_ptr<pdf::Document> document_;
  pdf::Arena arena_;
  pdf::Object page_;
};

TEST_F(Img2PdfTest, MakesADocument) {
  ASSERT_EQ(Create("out.pdf"), 1);
  Img2PdfSetAdjustPage(object_, 1);
  EXPECT_EQ(Img2PdfCreatePageFromImageW(object_, MakeImage("a.jpg", TestJpeg(3))), 1);
  EXPECT_EQ(Img2PdfCreatePageFromImageW(object_, MakeImage("b.jpg", TestJpeg(1))), 1);
  EXPECT_FALSE(Exists(directory_.Path("out.pdf")));  // not before it is complete
  EXPECT_EQ(Img2PdfClose(object_), 1);
  EXPECT_EQ(Img2PdfGetErrorCode(object_), 0);
  EXPECT_EQ(QpdfComplaints(directory_.Path("out.pdf")), "");
  EXPECT_THAT(directory_.Names(), ElementsAre("a.jpg", "b.jpg", "out.pdf"));
}

TEST_F(Img2PdfTest, WritesPagesThatDrawOnePictureEach) {
  Img2PdfSetAdjustPage(object_, 1);
  MakePage();
  EXPECT_TRUE(document_->Catalog(arena_).Get("Type").IsName("Catalog"));
  EXPECT_TRUE(page_.Get("Type").IsName("Page"));
  EXPECT_FALSE(page_.Has("UserUnit"));
  EXPECT_EQ(testing::Expanded(*document_, page_.Get("MediaBox")), "[0 0 12 6]");
  EXPECT_EQ(Content(), "q 12 0 0 6 0 0 cm/Im0 Do Q");
  EXPECT_TRUE(page_.Get("Resources").Get("XObject").Has("Im0"));
}

TEST_F(Img2PdfTest, WritesNumbersWithFiveDecimals) {
  Img2PdfSetPageSize(object_, 10, 10.0 / 3);
  Img2PdfSetFitImage(object_, 1);
  MakePage();
  EXPECT_EQ(Content(), "q 6.66667 0 0 3.33333 0 0 cm/Im0 Do Q");
}

TEST_F(Img2PdfTest, WritesTheSameBytesAgain) {
  for (const char* name : {"1.pdf", "2.pdf"}) {
    ASSERT_EQ(Create(name), 1);
    EXPECT_EQ(Img2PdfCreatePageFromImageW(object_, MakeImage("a.jpg", TestJpeg(3))), 1);
    EXPECT_EQ(Img2PdfClose(object_), 1);
  }
  EXPECT_EQ(ReadBytes(directory_.Path("1.pdf")), ReadBytes(directory_.Path("2.pdf")));
}

TEST_F(Img2PdfTest, EncryptsWithAPassword) {
  ASSERT_EQ(Create("out.pdf", L"secret"), 1);
  EXPECT_EQ(Img2PdfCreatePageFromImageW(object_, MakeImage("a.jpg", TestJpeg(3))), 1);
  EXPECT_EQ(Img2PdfClose(object_), 1);
  EXPECT_EQ(QpdfComplaints(directory_.Path("out.pdf"), "secret"), "");
  EXPECT_NE(QpdfComplaints(directory_.Path("out.pdf"), "wrong"), "");
}

TEST_F(Img2PdfTest, TakesPathsThatAreNoUtf8) {
  ASSERT_EQ(Create("\xFF\xE9.pdf"), 1);
  EXPECT_EQ(Img2PdfCreatePageFromImageW(object_, MakeImage("J\xF6rg.jpg", TestJpeg(3))), 1);
  EXPECT_EQ(Img2PdfClose(object_), 1);
  EXPECT_EQ(QpdfComplaints(directory_.Path("\xFF\xE9.pdf")), "");
}

TEST_F(Img2PdfTest, KeepsTheOldFileWhenItFails) {
  WriteBytes(directory_.Path("out.pdf"), "old");
  ASSERT_EQ(Create("out.pdf"), 1);
  EXPECT_EQ(Img2PdfCreatePageFromImageW(object_, MakeImage("a.jpg", "nonsense")), 0);
  Img2PdfDestroyObject(object_);
  object_ = Img2PdfCreateObject();
  EXPECT_EQ(ReadBytes(directory_.Path("out.pdf")), "old");
}

TEST_F(Img2PdfTest, TellsWhyAPageFailed) {
  const std::string jpeg = TestJpeg(1);
  EXPECT_EQ(CodeOf(""), kImg2PdfUnknownFormatError);
  EXPECT_EQ(CodeOf("text"), kImg2PdfUnknownFormatError);
  EXPECT_EQ(CodeOf(jpeg.substr(0, 30)), kImg2PdfDamagedError);
  std::string lossless = jpeg;
  lossless[jpeg.find("\xFF\xC0") + 1] = '\xC3';
  EXPECT_EQ(CodeOf(lossless), kImg2PdfUnsupportedError);
  testing::TestPng huge{.width = 999'999, .height = 999'999, .color_type = 6};
  EXPECT_EQ(CodeOf(huge.Bytes()), kImg2PdfLimitError);
  ASSERT_EQ(Create("out.pdf"), 1);
  EXPECT_EQ(Img2PdfCreatePageFromImageW(object_, Path("missing.jpg")), 0);
  EXPECT_EQ(Img2PdfGetErrorCode(object_), kImg2PdfOpenError);
}

TEST_F(Img2PdfTest, TellsThatTheOutputCannotBeMade) {
  EXPECT_EQ(Create("missing/out.pdf"), 0);
  EXPECT_EQ(Img2PdfGetErrorCode(object_), kImg2PdfCreateError);
}

TEST_F(Img2PdfTest, TellsThatTheDiskIsFull) {
  if (!Exists("/dev/full")) {
    GTEST_SKIP();
  }
  ASSERT_EQ(Img2PdfCreateW(object_, WidePath("/dev/full"), L"", L"", 0), 1);
  EXPECT_EQ(Img2PdfCreatePageFromImageW(object_, MakeImage("a.jpg", TestJpeg(3))), 1);
  EXPECT_EQ(Img2PdfClose(object_), 0);
  EXPECT_EQ(Img2PdfGetErrorCode(object_), kImg2PdfWriteError);
}

TEST_F(Img2PdfTest, RefusesCallsThatMakeNoSense) {
  EXPECT_EQ(Img2PdfCreatePageFromImageW(object_, MakeImage("a.jpg", TestJpeg(3))), 0);
  EXPECT_EQ(Img2PdfGetErrorCode(object_), kImg2PdfArgumentError);
  EXPECT_EQ(Img2PdfClose(object_), 0);
  EXPECT_EQ(Create("1.pdf"), 1);
  EXPECT_EQ(Create("2.pdf"), 0);
  EXPECT_EQ(Img2PdfSetPageSize(object_, 0, 100), 0);
  EXPECT_EQ(Img2PdfSetPageSize(object_, 100, std::numeric_limits<double>::quiet_NaN()), 0);
  EXPECT_EQ(Img2PdfSetOrientation(object_, 0), 0);
  EXPECT_EQ(Img2PdfSetOrientation(object_, 9), 0);
  EXPECT_EQ(Img2PdfSetBorderSize(object_, std::numeric_limits<float>::quiet_NaN()), 0);
  EXPECT_EQ(Img2PdfSetBorderSize(object_, std::numeric_limits<float>::infinity()), 0);
  for (const float sign : {-1.0F, 1.0F}) {
    EXPECT_EQ(Img2PdfSetBorderSize(object_, sign * 1'000'000), 1);
    EXPECT_EQ(Img2PdfSetBorderSize(object_, sign * 1'000'001), 0);
  }
  EXPECT_EQ(Img2PdfSetBorderSize(object_, 300), 1);
  EXPECT_EQ(Img2PdfCreatePageFromImageW(object_, Path("a.jpg")), 0);  // no space on A4
  EXPECT_EQ(Img2PdfGetErrorCode(object_), kImg2PdfArgumentError);
}

TEST_F(Img2PdfTest, TakesPagesAndBordersOfAnySizeThatIsOne) {
  EXPECT_EQ(Img2PdfSetPageSize(object_, 0.5, 0.25), 1);
  EXPECT_EQ(Img2PdfSetPageSize(object_, 100, 0), 0);
  EXPECT_EQ(Img2PdfSetPageSize(object_, -1, 100), 0);
  EXPECT_EQ(Img2PdfSetPageSize(object_, std::numeric_limits<double>::infinity(), 100), 0);
  EXPECT_EQ(Img2PdfSetPageSize(object_, 100, std::numeric_limits<double>::infinity()), 0);
  for (int orientation = 1; orientation <= 8; ++orientation) {
    EXPECT_EQ(Img2PdfSetOrientation(object_, orientation), 1);
  }
  Img2PdfSetOrientation(object_, 1);
  MakePage();
  EXPECT_EQ(testing::Expanded(*document_, page_.Get("MediaBox")), "[0 0 .5 .25]");
}

std::string MessageOf(platform::FilePtr file, std::uint64_t offset = 0) {
  try {
    FileSource source(std::move(file));
    char byte = 0;
    source.ReadAt(offset, &byte, 1);
  } catch (const pdf::Error& error) {
    EXPECT_EQ(error.code(), pdf::ErrorCode::kReadFailed);
    return error.what();
  }
  return "";
}

TEST(FileSource, TellsWhatCannotBeRead) {
  const testing::TempDir directory;
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  EXPECT_EQ(MessageOf(platform::FilePtr(fdopen(ends[0], "rb"))),
            "the length of the file cannot be had");
  close(ends[1]);
  EXPECT_EQ(MessageOf(platform::FilePtr(std::fopen(directory.Path("new").c_str(), "wb"))),
            "the file cannot be read");
  EXPECT_EQ(MessageOf(platform::OpenForReading(directory.Path("new")), std::uint64_t{1} << 63U),
            "the file cannot be positioned");
}

TEST(FileSource, ReadsOnAfterItsEnd) {
  const testing::TempDir directory;
  FileSource source(platform::OpenForReading(WriteBytes(directory.Path("a"), "abcdef")));
  EXPECT_EQ(source.Size(), 6U);
  std::string bytes(4, '.');
  EXPECT_EQ(source.ReadAt(4, bytes.data(), 4), 2U);
  EXPECT_EQ(bytes, "ef..");
  EXPECT_EQ(source.ReadAt(6, bytes.data(), 4), 0U);
  EXPECT_EQ(source.ReadAt(1, bytes.data(), 4), 4U);
  EXPECT_EQ(bytes, "bcde");
}

TEST_F(Img2PdfTest, RefusesNullObjects) {
  EXPECT_EQ(Img2PdfClose(nullptr), 0);
  EXPECT_EQ(Img2PdfDestroyObject(nullptr), 0);
  EXPECT_EQ(Img2PdfCreateW(nullptr, WidePath("a.pdf"), L"", L"", 0), 0);
  EXPECT_EQ(Img2PdfCreatePageFromImageW(nullptr, WidePath("a.jpg")), 0);
  EXPECT_EQ(Img2PdfSetAdjustPage(nullptr, 1), 0);
  EXPECT_EQ(Img2PdfSetPageSize(nullptr, 1, 1), 0);
  EXPECT_EQ(Img2PdfSetCenterImage(nullptr, 1), 0);
  EXPECT_EQ(Img2PdfSetFitImage(nullptr, 1), 0);
  EXPECT_EQ(Img2PdfSetOrientation(nullptr, 1), 0);
  EXPECT_EQ(Img2PdfSetBorderSize(nullptr, 1), 0);
  EXPECT_EQ(Img2PdfGetErrorCode(nullptr), kImg2PdfArgumentError);
}

}  // namespace

}  // namespace TarnixTools::engines::img2pdf
