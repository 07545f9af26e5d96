#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/support/drawing/UndrawnObjects.h"
#include "pdf/file/ByteSource.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"
#include "support/RawPdf.h"
#include "support/SmallImages.h"
#include "support/TestImages.h"
#include "support/TestJbig2.h"
#include "support/TestJpx.h"

namespace TarnixTools::engines {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::RawPdf;

const std::string kForm = "/Type/XObject/Subtype/Form/BBox[0 0 9 9]";
const std::string kImage = "/Subtype/Image/Width 16/Height 8/BitsPerComponent 8";

std::string BytesOf(const std::string& hex) {
  std::string bytes;
  for (std::size_t i = 0; i < hex.size(); i += 2) {
    bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
  }
  return bytes;
}

// Objects 5 to 7 are images that PDFium draws nothing of, 8 the profile of 5; 9 is a plain one.
class UndrawnObjectsTest : public ::testing::Test {
 protected:
  UndrawnObjectsTest() {
    const std::string profile = testing::TestRgbProfile(2.2, true);
    file_.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
        .Object(2, "<</Type/Pages/Count 2/Kids[3 0 R 4 0 R]>>")
        .Stream(5, kImage + "/ColorSpace[/ICCBased 8 0 R]", "x")
        .Stream(6, kImage + "/ColorSpace/DeviceGray/Filter/JPXDecode",
                BytesOf(testing::kGrayAlphaJpx))
        .Stream(7,
                "/Subtype/Image/Width 120/Height 12/BitsPerComponent 1/ImageMask true/Filter"
                "[/ASCIIHexDecode/JBIG2Decode]",
                std::string(testing::kRefinedJbig2) + ">")
        .Stream(8, "/N 1", profile)
        .Stream(9, kImage + "/ColorSpace/DeviceGray/SMask 6 0 R", "x");
  }

  // Looks at two pages with these entries.
  void Find(const std::string& first, const std::string& second = "") {
    file_.Object(3, "<</Type/Page/Parent 2 0 R" + first + ">>");
    file_.Object(4, "<</Type/Page/Parent 2 0 R" + second + ">>");
    bytes_ = file_.Table();
    document_ = pdf::Document::Open(std::make_unique<pdf::MemorySource>(bytes_), "");
    const pdf::PageTree pages(*document_);
    undrawn_ = std::make_unique<UndrawnObjects>(*document_);
    undrawn_->FindOnPage(pages, 0);
    undrawn_->FindOnPage(pages, 1);
  }

  RawPdf file_;
  std::string bytes_;
  std::unique_ptr<pdf::Document> document_;
  std::unique_ptr<UndrawnObjects> undrawn_;
};

TEST_F(UndrawnObjectsTest, OnThePage) {
  Find("/Resources<</XObject<</I 5 0 R/J 6 0 R/K 7 0 R>>>>");
  EXPECT_THAT(undrawn_->profiles(), ElementsAre(8U));
  EXPECT_THAT(undrawn_->images(), ElementsAre(6U, 7U));
}

TEST_F(UndrawnObjectsTest, EachOnce) {
  Find("/Resources<</XObject<</I 5 0 R/J 6 0 R/K 6 0 R>>>>",
       "/Resources<</XObject<</J 6 0 R>>/ColorSpace<</C[/ICCBased 8 0 R]>>>>");
  EXPECT_THAT(undrawn_->profiles(), ElementsAre(8U));
  EXPECT_THAT(undrawn_->images(), ElementsAre(6U));
}

TEST_F(UndrawnObjectsTest, NoneOnPlainPages) {
  file_.Stream(10, kImage + "/ColorSpace/DeviceGray", "x");
  Find("/Resources<</XObject<</I 10 0 R>>/ColorSpace<</C[/CalGray<<>>]/D/DeviceRGB>>>>");
  EXPECT_TRUE(undrawn_->empty());
}

TEST_F(UndrawnObjectsTest, AsMasks) {
  Find("/Resources<</XObject<</I 9 0 R>>>>");
  EXPECT_THAT(undrawn_->images(), ElementsAre(6U));
}

TEST_F(UndrawnObjectsTest, InAppearances) {
  file_.Stream(10, kForm + "/Resources<</XObject<</I 5 0 R/J 6 0 R>>>>", "")
      .Object(11, "<</Subtype/Stamp/AP<</N<</On 10 0 R>>>>>>");
  Find("", "/Annots[11 0 R]");
  EXPECT_THAT(undrawn_->profiles(), ElementsAre(8U));
  EXPECT_THAT(undrawn_->images(), ElementsAre(6U));
}

TEST_F(UndrawnObjectsTest, InPatternsSoftMasksAndGlyphs) {
  file_.Stream(10, "/PatternType 1/Resources<</XObject<</I 5 0 R>>>>", "")
      .Object(11, "<</SMask<</S/Alpha/G 12 0 R>>>>")
      .Stream(12, kForm + "/Resources<</XObject<</I 6 0 R>>>>", "")
      .Object(13, "<</Subtype/Type3/CharProcs<</a 14 0 R>>/Resources<</XObject<</I 7 0 R>>>>>>")
      .Stream(14, "", "");
  Find("/Resources<</Pattern<</P 10 0 R>>/ExtGState<</G 11 0 R>>/Font<</T 13 0 R>>>>");
  EXPECT_THAT(undrawn_->profiles(), ElementsAre(8U));
  EXPECT_THAT(undrawn_->images(), ::testing::UnorderedElementsAre(6U, 7U));
}

TEST_F(UndrawnObjectsTest, ProfilesWithinSpaces) {
  Find("/Resources<</Shading<</S<</ColorSpace[/Indexed[/ICCBased 8 0 R]0(x)]>>>>>>");
  EXPECT_THAT(undrawn_->profiles(), ElementsAre(8U));
  EXPECT_THAT(undrawn_->images(), IsEmpty());
}

// Of JPEG 2000 data those whose components are not what the image says, or what nobody says. With
// one more than RGB has, alpha may be left out.
TEST_F(UndrawnObjectsTest, Jpeg2000ImagesByTheirComponents) {
  const std::vector<std::string> spaces = {"",
                                           "/DeviceGray",
                                           "/DeviceRGB",
                                           "/DeviceCMYK",
                                           "[/Indexed/DeviceRGB 0<000000>]",
                                           "[/Separation/A/DeviceRGB 4 0 R]",
                                           "[/DeviceN[/A/B]/DeviceRGB 4 0 R]",
                                           "/Odd"};
  const std::map<std::string, std::string> odd = {
      {"bits.jp2", "..xx...."},      {"cmyk.j2k", ".x..x..."},    {"deep.jp2", "..xx...."},
      {"four_bits.jp2", "..xx...."}, {"gray16.jp2", "..xx...."},  {"mixed.jp2", "xxxxx..."},
      {"offset.jp2", ".x.xx..."},    {"palette.jp2", "..xx...."}, {"profile.jp2", "..xx...."},
      {"rgba.jp2", "xx..x..."},      {"signed.jp2", "..xx...."},  {"ycc.jp2", ".x.xx..."}};
  std::string names;
  std::vector<std::string> images;
  int next = 20;
  for (const testing::SmallImage& image : testing::SmallJpx()) {
    for (const std::string& space : spaces) {
      file_.Stream(next,
                   "/Subtype/Image/Width 3/Height 2/Filter/JPXDecode" +
                       (space.empty() ? "" : "/ColorSpace" + space),
                   image.bytes);
      names += "/I" + std::to_string(next) + " " + std::to_string(next) + " 0 R";
      images.push_back(image.name);
      ++next;
    }
  }
  Find("/Resources<</XObject<<" + names + ">>>>");
  std::map<std::string, std::string> found;
  for (std::size_t i = 0; i < images.size(); ++i) {
    const auto number = static_cast<std::uint32_t>(20 + i);
    const bool is_odd = std::ranges::count(undrawn_->images(), number) == 1;
    found[images[i]] += is_odd ? 'x' : '.';
  }
  EXPECT_EQ(found, odd);
}

TEST_F(UndrawnObjectsTest, ImagesByTheirFilters) {
  const std::string jpx = BytesOf(testing::kGrayAlphaJpx);
  const std::string jbig2 = testing::kRefinedJbig2 + std::string(">");
  const std::string gray = kImage + "/ColorSpace/DeviceGray/Filter";
  const std::string bits = "/Subtype/Image/Width 120/Height 12/BitsPerComponent 1/Filter";
  file_.Stream(20, gray + "[/JPXDecode]", jpx)
      .Stream(21, gray + "[/ASCIIHexDecode/JPXDecode]", testing::kGrayAlphaJpx + std::string(">"))
      .Stream(22, gray + " 23 0 R", jpx)
      .Object(23, "/JPXDecode")
      .Stream(24, gray + "/JPXDecode", "no picture")
      .Stream(25, gray + "/DCTDecode", jpx)
      .Stream(26, bits + "/JBIG2Decode", BytesOf(testing::kRefinedJbig2))
      .Stream(27, bits + "[/ASCIIHexDecode 28 0 R]", jbig2)
      .Object(28, "/JBIG2Decode")
      .Stream(29, bits + "[/JBIG2Decode/ASCIIHexDecode]", jbig2)
      .Stream(30, bits + "/JBIG2Decode", "no picture")
      .Stream(1, gray + "/JPXDecode/Type/Catalog/Pages 2 0 R", jpx);
  Find(
      "/Resources<</XObject<</A 1 0 R/B 20 0 R/C 21 0 R/D 22 0 R/E 24 0 R/F 25 0 R/G 26 0 R/H 27 0 "
      "R/I 29 0 R/J 30 0 R/K<</Subtype/Image/Filter/JPXDecode>>>>>>");
  EXPECT_THAT(undrawn_->images(), ::testing::UnorderedElementsAre(1U, 20U, 22U, 26U, 27U));
}

// Each function is made of the next one, twice.
TEST_F(UndrawnObjectsTest, FunctionsThatUnfold) {
  for (int number = 10; number < 40; ++number) {
    const std::string next = std::to_string(number + 1) + " 0 R ";
    file_.Object(number, "<</FunctionType 3/Functions[" + next + next + "]>>");
  }
  Find("/Resources<</Shading<</S<</Function 10 0 R>>/T<</Function[39 0 R 38 0 R]>>>>>>",
       "/Resources<</ColorSpace<</C[/Separation/Spot/DeviceRGB<</Functions[11 0 R]>>]>>"
       "/ExtGState<</G<</TR 12 0 R/TR2 39 0 R/SMask<</TR 13 0 R>>>>>>>>");
  EXPECT_THAT(undrawn_->functions(), ::testing::UnorderedElementsAre(10U, 11U, 12U, 13U));
}

}  // namespace
}  // namespace TarnixTools::engines
