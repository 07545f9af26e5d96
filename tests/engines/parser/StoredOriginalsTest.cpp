// Images as the document stores them, through the parser's contract: which format that is, the bytes
// of the file, and how it fails.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/parser/ImagesFixture.h"
#include "support/ByteText.h"
#include "support/Readers.h"
#include "support/TestImage.h"
#include "support/TestJpx.h"

namespace TarnixTools::engines::parser {
namespace {

using ::testing::ElementsAre;
using testing::HexOf;
using testing::ReadBytes;

class StoredOriginals : public Images {
 protected:
  // What the next image says its format is, and the file that comes of it.
  struct Stored {
    std::int32_t format = 0;
    std::string bytes;
  };

  void Begin(int page = 1) {
    ASSERT_EQ(ExpaDocSetPageNo(document_, page), 1);
    content_ = ExpaPageGetContent(ExpaDocGetPage(document_));
    ASSERT_EQ(ExpaContentResetContent(content_, 1), 1);
  }

  TExpaImage* Next() {
    return ExpaContentGetNextImage(content_) != 0 ? ExpaContentGetImage(content_) : nullptr;
  }

  Stored StoreNext() {
    TExpaImage* image = Next();
    const Stored stored{.format = ExpaImageGetOriginal(image), .bytes = {}};
    EXPECT_EQ(ExpaImageStoreOriginalW(image, WidePath(Path("image"))), 1)
        << ExpaDocGetLastError(document_);
    return {.format = stored.format, .bytes = ReadBytes(Path("image"))};
  }

  TExpaContent* content_ = nullptr;
};

constexpr const char* kGrayPixels = "/ColorSpace/DeviceGray/BitsPerComponent 8";

TEST_F(StoredOriginals, OfJpegAndJpeg2000AreTheirDataByteForByte) {
  const std::string jpeg = testing::MakeJpeg(16, 8, {10, 20, 30});
  const std::string jpx = testing::kRedBlueJpx;
  TestPdf file;
  file.Page()
      .Content("0 9 -9 0 0 0 cm /J Do /H Do /X Do")
      .Object("j", JpegImageObject(jpeg, "/ColorSpace/DeviceRGB"))
      .Object("h", Stream("/Subtype/Image/Width 16/Height 8/BitsPerComponent 8/ColorSpace/DeviceRGB"
                          "/Filter[/ASCIIHexDecode/DCTDecode]",
                          HexOf(jpeg) + ">"))
      .Object("x", Stream("/Subtype/Image/Width 16/Height 8/Filter[/ASCIIHexDecode/JPXDecode]",
                          jpx + ">"))
      .PageEntry("/Resources<</XObject<</J {{j}}/H {{h}}/X {{x}}>>>>");
  ASSERT_TRUE(Open(file));
  Begin();
  for (int i = 0; i < 2; ++i) {
    const Stored stored = StoreNext();
    EXPECT_EQ(stored.format, 21);
    EXPECT_EQ(HexOf(stored.bytes), HexOf(jpeg));
  }
  const Stored stored = StoreNext();
  EXPECT_EQ(stored.format, 22);
  EXPECT_EQ(HexOf(stored.bytes), jpx);
  EXPECT_EQ(Next(), nullptr);
  EXPECT_TRUE(troubles_.empty());
}

// Two white rows of group 4 in three bytes, which a byte follows so that the fields begin at an even
// place (TIFF 6.0, section 2).
TEST_F(StoredOriginals, OfFaxDataAreTiffFiles) {
  ASSERT_TRUE(Open(Page(HexImage(8, 2,
                                 "/ColorSpace/DeviceGray/BitsPerComponent 1"
                                 "/DecodeParms[null<</K -1/Columns 8>>]/Filter[/ASCIIHexDecode"
                                 "/CCITTFaxDecode]",
                                 "C00400"))));
  Begin();
  const Stored stored = StoreNext();
  EXPECT_EQ(stored.format, 23);
  EXPECT_EQ(HexOf(stored.bytes),
            "49492A000C000000"
            "C00400"
            "00"
            "0A00"
            "000104000100000008000000"
            "010104000100000002000000"
            "020103000100000001000000"
            "030103000100000004000000"
            "060103000100000000000000"
            "110104000100000008000000"
            "150103000100000001000000"
            "160104000100000002000000"
            "170104000100000003000000"
            "250104000100000000000000"
            "00000000");
}

TEST_F(StoredOriginals, OfAllElseArePngFilesThatTellNoResolution) {
  ASSERT_TRUE(Open(Page(HexImage(2, 1, kGrayPixels, "80FF"))));
  Begin();
  const Stored stored = StoreNext();
  EXPECT_EQ(stored.format, 24);
  EXPECT_EQ(HexOf(stored.bytes.substr(0, 26)),
            "89504E470D0A1A0A0000000D4948445200000002000000010800");
  EXPECT_EQ(stored.bytes.find("pHYs"), std::string::npos);
  EXPECT_TRUE(troubles_.empty());
}

TEST_F(StoredOriginals, AreWhiteWhereDataIsMissing) {
  TestPdf file;
  file.Page()
      .Page()
      .Content("/I Do")
      .Object("image", HexImage(2, 2, kGrayPixels, "8080"))
      .PageEntry("/Resources<</XObject<</I {{image}}>>>>");
  ASSERT_TRUE(Open(file));
  Begin(2);
  EXPECT_EQ(StoreNext().format, 24);
  EXPECT_THAT(troubles_, ElementsAre(std::pair(2, static_cast<int>(kExpaImagePartial))));
}

TEST_F(StoredOriginals, TellWhyTheyCannotBeWritten) {
  ASSERT_TRUE(Open(Page(RedBlue())));
  Begin();
  TExpaImage* image = Next();
  EXPECT_EQ(ExpaImageStoreOriginalW(image, WidePath(Path("missing/a.png"))), 0);
  EXPECT_EQ(ExpaDocGetLastError(document_), kExpaCreateError);
  if (testing::Exists("/dev/full")) {
    EXPECT_EQ(ExpaImageStoreOriginalW(image, WidePath("/dev/full")), 0);
    EXPECT_EQ(ExpaDocGetLastError(document_), kExpaWriteError);
  }
  EXPECT_EQ(ExpaImageGetOriginal(nullptr), 0);
  EXPECT_EQ(ExpaDocGetLastError(nullptr), kExpaArgumentError);
  EXPECT_EQ(ExpaImageStoreOriginalW(nullptr, WidePath(Path("a.png"))), 0);
  EXPECT_THAT(directory_.Names(), ElementsAre("in.pdf"));
}

}  // namespace
}  // namespace TarnixTools::engines::parser
