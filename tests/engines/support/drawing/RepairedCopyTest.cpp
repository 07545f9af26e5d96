#include <gtest/gtest.h>

#include "engines/support/drawing/RepairedCopy.h"
#include "pdf/tree/PageTree.h"
#include "pdf/write/RewriteFixture.h"
#include "support/RawPdf.h"
#include "support/TestImages.h"
#include "support/TestJbig2.h"
#include "support/TestJpx.h"

namespace TarnixTools::engines {
namespace {

using pdf::Object;
using testing::Expanded;
using testing::RawPdf;

const std::string kForm = "/Type/XObject/Subtype/Form/BBox[0 0 9 9]";

// The copy of a document, and its pages.
class CopyOf {
 public:
  explicit CopyOf(RawPdf file, const std::string& trailer = "/Root 1 0 R")
      : source_bytes_(file.Table(trailer)) {
    const auto source = testing::OpenBytes(source_bytes_);
    const pdf::PageTree pages(*source);
    pdf::StringSink sink;
    WriteRepairedCopy(*source, pages, sink);
    bytes_ = sink.Take();
    document_ = testing::OpenBytes(bytes_);
    EXPECT_EQ(document_->findings().count(), 0U);
    pages_ = std::make_unique<pdf::PageTree>(*document_);
  }

  pdf::Document& document() { return *document_; }

  std::size_t page_count() const { return pages_->pages().size(); }

  Object Page(std::size_t index) { return pages_->Load(pages_->pages()[index], arena_); }

  std::string Entry(std::string_view key, std::size_t index = 0) {
    return Expanded(*document_, Page(index).Get(key));
  }

  Object Catalog() { return document_->Catalog(arena_); }

  // What is under /XObject/I of the first page.
  Object Image() {
    const Object resources = document_->Resolve(Page(0).Get("Resources"), arena_);
    image_ = document_->Resolve(resources.Get("XObject"), arena_).Get("I").AsReference().number;
    return document_->Load({image_, 0}, arena_);
  }

  std::string ImageData() {
    Image();
    return document_->TryDecodeStream(image_)->data;
  }

 private:
  std::string source_bytes_;
  std::string bytes_;
  std::unique_ptr<pdf::Document> document_;
  std::unique_ptr<pdf::PageTree> pages_;
  pdf::Arena arena_;
  std::uint32_t image_ = 0;
};

// A document with one page that has these entries, from object 10 on free.
RawPdf OnePage(const std::string& entries, const std::string& catalog = "") {
  RawPdf file;
  file.Object(1, "<</Type/Catalog/Pages 2 0 R" + catalog + ">>")
      .Object(2, "<</Type/Pages/Count 1/Kids[3 0 R]>>")
      .Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]" + entries + ">>");
  return file;
}

TEST(RepairedCopy, HasWhatIsDrawn) {
  CopyOf copy(OnePage("/Contents 10 0 R/Resources<</Font<</F 11 0 R>>>>/Annots[12 0 R]/Rotate 90"
                      "/CropBox[1 1 5 5]/UserUnit 2/Group<</S/Transparency>>/Metadata 13 0 R",
                      "/AcroForm<</Fields[12 0 R]>>/OCProperties<</OCGs[]>>/Outlines 13 0 R")
                  .Stream(10, "", "0 g")
                  .Object(11, "(font)")
                  .Object(12, "<</Subtype/Widget/P 3 0 R>>")
                  .Object(13, "(not drawn)"),
              "/Root 1 0 R/Info 13 0 R");
  EXPECT_EQ(copy.page_count(), 1U);
  EXPECT_EQ(copy.Entry("Contents"), "<</Length 3>>(0 g)");
  EXPECT_EQ(copy.Entry("Resources"), "<</Font<</F(font)>>>>");
  EXPECT_EQ(copy.Entry("CropBox"), "[1 1 5 5]");
  EXPECT_EQ(copy.Entry("Rotate"), "90");
  EXPECT_EQ(copy.Entry("UserUnit"), "2");
  EXPECT_EQ(copy.Entry("Group"), "<</S/Transparency>>");
  EXPECT_TRUE(copy.Page(0).Get("Metadata").IsNull());
  EXPECT_TRUE(copy.Catalog().Has("AcroForm"));
  EXPECT_TRUE(copy.Catalog().Has("OCProperties"));
  EXPECT_FALSE(copy.Catalog().Has("Outlines"));
  EXPECT_TRUE(copy.document().trailer().Get("Info").IsNull());
}

TEST(RepairedCopy, RefersToItsOwnPages) {
  CopyOf copy(OnePage("/Annots[<</P 3 0 R/Parent 2 0 R>>]"));
  pdf::Arena arena;
  const Object annotation = copy.Page(0).Get("Annots").Items()[0];
  EXPECT_EQ(copy.document().Resolve(annotation.Get("P"), arena).Get("Annots").Items().size(), 1U);
  EXPECT_TRUE(annotation.Get("Parent").IsNull());
}

TEST(RepairedCopy, HasWhatPagesInherit) {
  RawPdf file;
  file.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(2,
              "<</Type/Pages/Count 3/Kids[3 0 R 3 0 R<</Type/Page/Rotate 180>>]/MediaBox[0 0 7 7]"
              "/Rotate 90/Resources 4 0 R>>")
      .Object(3, "<</Type/Page/Parent 2 0 R/MediaBox 77 0 R>>")
      .Object(4, "<</A 1>>");
  CopyOf copy(file);
  ASSERT_EQ(copy.page_count(), 3U);
  for (const std::size_t index : {0, 1, 2}) {
    EXPECT_EQ(copy.Entry("MediaBox", index), "[0 0 7 7]");
    EXPECT_EQ(copy.Entry("Resources", index), "<</A 1>>");
    EXPECT_EQ(copy.Entry("Rotate", index), index == 2 ? "180" : "90");
  }
}

TEST(RepairedCopy, HasTheGeometryThatPagesAreSeenWith) {
  EXPECT_EQ(CopyOf(OnePage("/CropBox[20 20 30 30]")).Entry("CropBox"), "null");
  EXPECT_EQ(CopyOf(OnePage("/CropBox[5 5 30 30]")).Entry("CropBox"), "[5 5 9 9]");
  EXPECT_EQ(CopyOf(OnePage("/CropBox[8.5 7 null -.25]")).Entry("CropBox"), "[0 0 8.5 7]");
  EXPECT_EQ(CopyOf(OnePage("/Rotate -90")).Entry("Rotate"), "270");
  EXPECT_EQ(CopyOf(OnePage("/Rotate 100")).Entry("Rotate"), "90");
  EXPECT_EQ(CopyOf(OnePage("/Rotate/Left")).Entry("Rotate"), "null");
  EXPECT_EQ(CopyOf(OnePage("/UserUnit 0")).Entry("UserUnit"), "null");
  EXPECT_EQ(CopyOf(OnePage("/UserUnit 1.25")).Entry("UserUnit"), "1.25");
}

TEST(RepairedCopy, LeavesOutWhatIsTooMuch) {
  const std::string endless = kForm + "/Resources<</XObject<</F 10 0 R>>>>";
  CopyOf copy(
      OnePage("/Contents 12 0 R/Resources<</XObject<</E 10 0 R/F 11 0 R>>/Own 1/Font 13 0 R>>"
              "/Annots[<</AP<</N 10 0 R>>>><</AP<</N 11 0 R>>>>]")
          .Stream(10, endless, "/F Do /F Do")
          .Stream(11, kForm, "0 g")
          .Stream(12, "", "/E Do /F Do")
          .Object(13, "<</G 1>>"));
  EXPECT_EQ(copy.Entry("Contents"), "<</Length 11>>(/E Do /F Do)");
  const std::string form = "<<" + kForm + "/Length 3>>(0 g)";
  EXPECT_EQ(copy.Entry("Resources"), "<</XObject<</F" + form + ">>/Own 1/Font<</G 1>>>>");
  EXPECT_EQ(copy.Entry("Annots"), "[<</AP<</N" + form + ">>>>]");
}

std::string FromHex(const std::string& hex) {
  std::string bytes;
  for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
    bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
  }
  return bytes;
}

const char* const kDrawsImage = "/Resources<</XObject<</I 10 0 R>>>>";

TEST(RepairedCopy, EmptiesProfilesOfOtherColors) {
  CopyOf copy(
      OnePage(kDrawsImage)
          .Stream(10,
                  "/Subtype/Image/Width 1/Height 1/BitsPerComponent 8"
                  "/ColorSpace[/ICCBased 11 0 R]",
                  "\x80")
          .Stream(11, "/N 1/Alternate/DeviceGray/Own 1", testing::TestRgbProfile(2.2, true)));
  const Object image = copy.Image();
  EXPECT_EQ(Expanded(copy.document(), image.Get("ColorSpace")),
            "[/ICCBased<</N 1/Alternate/DeviceGray/Length 0>>()]");
}

TEST(RepairedCopy, DecodesJpeg2000ImagesWithAlpha) {
  CopyOf copy(OnePage(kDrawsImage)
                  .Stream(10,
                          "/Subtype/Image/Width 16/Height 8/BitsPerComponent 8"
                          "/ColorSpace/DeviceGray/Filter/JPXDecode/Interpolate true/Mask 11 0 R",
                          FromHex(testing::kGrayAlphaJpx))
                  .Stream(11, "/ImageMask true/Width 1/Height 1/BitsPerComponent 1", "\x80"));
  const Object image = copy.Image();
  EXPECT_TRUE(image.Get("ColorSpace").IsName("DeviceGray"));
  EXPECT_TRUE(image.Get("Interpolate").BooleanOr(false));
  EXPECT_TRUE(image.Get("Mask").IsReference());
  const std::string data = copy.ImageData();
  ASSERT_EQ(data.size(), 128U);
  EXPECT_EQ(data[0], 0);
  EXPECT_EQ(data[15], 80);
}

TEST(RepairedCopy, DecodesJbig2ImagesWithRefinedSymbols) {
  CopyOf copy(OnePage(kDrawsImage)
                  .Stream(10,
                          "/Subtype/Image/Width 120/Height 12/BitsPerComponent 1/ImageMask true"
                          "/Filter/JBIG2Decode",
                          FromHex(testing::kRefinedJbig2)));
  EXPECT_TRUE(copy.Image().Get("ImageMask").BooleanOr(false));
  EXPECT_TRUE(copy.Image().Get("Filter").IsName("FlateDecode"));
  EXPECT_EQ(copy.ImageData().size(), 15U * 12);
}

// Such an image stays as it is.
TEST(RepairedCopy, KeepsImagesThatCannotBeDecoded) {
  std::string data = FromHex(testing::kGrayAlphaJpx);
  data.resize(170);  // the headers
  CopyOf copy(OnePage(kDrawsImage)
                  .Stream(10,
                          "/Subtype/Image/Width 16/Height 8/BitsPerComponent 8"
                          "/ColorSpace/DeviceGray/Filter/JPXDecode",
                          data));
  EXPECT_TRUE(copy.Image().Has("Subtype"));
}

}  // namespace
}  // namespace TarnixTools::engines
