#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/support/images/ImageInDocument.h"
#include "pdf/Error.h"
#include "pdf/write/Serialize.h"
#include "support/TestImages.h"

namespace TarnixTools::engines {
namespace {

using ::testing::ElementsAre;
using testing::RawPdf;

// The facts of an image with these entries; what lives in an arena is not among them.
ImageFacts FactsOfEntries(const std::string& entries, const std::string& data = "x") {
  return ImageInDocument(entries, data).Facts();
}

TEST(ImageFacts, AreThoseOfTheDictionary) {
  const ImageFacts facts = FactsOfEntries(
      "/Width 7/Height 5/BitsPerComponent 4/ColorSpace/DeviceRGB/Decode[1 0 1 0 1 0]"
      "/Mask[1 2 3 4 5 6]/Matte[.5 0 1]/SMaskInData 1");
  EXPECT_EQ(facts.width, 7U);
  EXPECT_EQ(facts.height, 5U);
  EXPECT_EQ(facts.bits, 4);
  EXPECT_THAT(facts.decode, ElementsAre(1, 0, 1, 0, 1, 0));
  EXPECT_THAT(facts.color_key, ElementsAre(1, 2, 3, 4, 5, 6));
  EXPECT_THAT(facts.matte, ElementsAre(.5, 0, 1));
  EXPECT_TRUE(facts.uses_jpx_alpha);
  EXPECT_FALSE(facts.is_mask);
}

TEST(ImageFacts, HaveDefaultsForWhatIsOdd) {
  const ImageFacts facts = FactsOfEntries(
      "/Width -7/Height(x)/BitsPerComponent 3/Decode[0 1 0 1]/Mask/Name/SMask 99 0 R/Matte 5");
  EXPECT_EQ(facts.width, 0U);
  EXPECT_EQ(facts.height, 0U);
  EXPECT_EQ(facts.bits, 8);
  EXPECT_TRUE(facts.decode.empty());
  EXPECT_TRUE(facts.color_key.empty());
  EXPECT_TRUE(facts.matte.empty());
  EXPECT_EQ(facts.soft_mask, 0U);
  EXPECT_EQ(FactsOfEntries("/Width 1000000").width, 1'000'000U);
  EXPECT_EQ(FactsOfEntries("/Width 1000001").width, 0U);
}

TEST(ImageFacts, OfAMaskHaveNoColors) {
  const ImageFacts facts =
      FactsOfEntries("/ImageMask true/BitsPerComponent 8/ColorSpace/DeviceRGB/Mask[0 1]");
  EXPECT_TRUE(facts.is_mask);
  EXPECT_EQ(facts.bits, 1);
  EXPECT_TRUE(facts.color_space.IsNull());
  EXPECT_TRUE(facts.color_key.empty());
}

TEST(ImageFacts, KeepTheDecodeArrayOfIndices) {
  EXPECT_THAT(FactsOfEntries("/ColorSpace[/Indexed/DeviceRGB 1<>]/Decode[0 1]").decode,
              ElementsAre(0, 1));
  EXPECT_TRUE(FactsOfEntries("/ColorSpace/DeviceGray/Decode[0 1]").decode.empty());
}

TEST(ImageFacts, NameOneMaskOnly) {
  const std::string masks = "/SMask 11 0 R/Mask 12 0 R";
  RawPdf file;
  file.Stream(11, "", "x").Stream(12, "", "x");
  const ImageFacts facts = ImageInDocument(masks, "x", file).Facts();
  EXPECT_EQ(facts.soft_mask, 11U);
  EXPECT_EQ(facts.stencil_mask, 0U);
  EXPECT_EQ(ImageInDocument("/Mask 12 0 R", "x", file).Facts().stencil_mask, 12U);
  EXPECT_EQ(ImageInDocument("/Mask 10 0 R", "x", file).Facts().stencil_mask, 0U);
}

TEST(ImageFacts, TellTheImageFilterFromThoseBeforeIt) {
  const auto filter_of = [](const std::string& filter) {
    return FactsOfEntries("/Filter" + filter).filter;
  };
  EXPECT_EQ(filter_of("/FlateDecode"), ImageFilter::kNone);
  EXPECT_EQ(filter_of("/DCTDecode"), ImageFilter::kDct);
  EXPECT_EQ(filter_of("[/FlateDecode/DCT]"), ImageFilter::kDct);
  EXPECT_EQ(filter_of("/JPXDecode"), ImageFilter::kJpx);
  EXPECT_EQ(filter_of("[/ASCIIHexDecode/CCITTFaxDecode]"), ImageFilter::kCcitt);
  EXPECT_EQ(filter_of("/CCF"), ImageFilter::kCcitt);
  EXPECT_EQ(filter_of("/JBIG2Decode"), ImageFilter::kJbig2);
  EXPECT_EQ(filter_of("/NoSuchDecode"), ImageFilter::kUnknown);
  EXPECT_EQ(filter_of("[/DCTDecode/FlateDecode]"), ImageFilter::kUnknown);
  EXPECT_EQ(filter_of("[]"), ImageFilter::kNone);
  const ImageFacts facts = FactsOfEntries(
      "/Filter[/FlateDecode/CCITTFaxDecode]"
      "/DecodeParms[null<</K -1>>]");
  EXPECT_EQ(facts.steps.size(), 1U);
}

// Device colour spaces stand for what the resources call their defaults (8.6.5.6).
TEST(ImageFacts, TakeTheDefaultColorSpacesOfTheResources) {
  const std::string bytes =
      RawPdf()
          .Object(1,
                  "<</Type/Catalog/Pages<</Kids[]>>/Spaces<</DefaultRGB[/ICCBased 11 0 "
                  "R]/DefaultGray[/CalGray"
                  "<<>>]/DefaultCMYK[/CalRGB<<>>]>>/Images[<</ColorSpace/DeviceRGB>><<"
                  "/ColorSpace/DeviceGray>><</ColorSpace/DeviceCMYK>><</ColorSpace[/Indexed"
                  "/DeviceRGB 0<010203>]>><</ColorSpace/Pattern>><</ColorSpace[/Lab<<>>]>>]>>")
          .Stream(11, "/N 3", testing::TestRgbProfile(2.2))
          .Table();
  const auto document = testing::OpenBytes(bytes);
  pdf::Arena arena;
  const pdf::Object catalog = document->Catalog(arena);
  const auto facts_of = [&](std::size_t index) {
    return FactsOf({.document = document.get(),
                    .number = 0,
                    .dictionary = catalog.Get("Images").Items()[index],
                    .data = {},
                    .color_spaces = catalog.Get("Spaces")},
                   arena);
  };
  EXPECT_TRUE(facts_of(0).color_space.Items()[0].IsName("ICCBased"));
  EXPECT_TRUE(facts_of(0).has_default_space);
  EXPECT_TRUE(facts_of(1).color_space.Items()[0].IsName("CalGray"));
  // A default of other components is none.
  EXPECT_TRUE(facts_of(2).color_space.IsName("DeviceCMYK"));
  EXPECT_FALSE(facts_of(2).has_default_space);
  EXPECT_TRUE(facts_of(3).color_space.Items()[1].Items()[0].IsName("ICCBased"));
  EXPECT_TRUE(facts_of(3).has_default_space);
  EXPECT_TRUE(facts_of(4).color_space.IsName("Pattern"));
  EXPECT_TRUE(facts_of(5).color_space.Items()[0].IsName("Lab"));
}

TEST(ImageFacts, TakeDefaultsOfAnyNumberOfComponents) {
  const std::string bytes =
      RawPdf()
          .Object(1,
                  "<</Type/Catalog/Pages<</Kids[]>>/Spaces<</DefaultCMYK[/ICCBased 11 0 R]"
                  "/DefaultGray[/ICCBased 12 0 R]/DefaultRGB[/CalRGB<<>>]>>"
                  "/Wrong<</DefaultCMYK[/ICCBased]/DefaultGray[/CalRGB<<>>]/DefaultRGB/CalRGB>>>>")
          .Stream(11, "/N 4", "x")
          .Stream(12, "/N 1", "x")
          .Object(13, "<</ColorSpace/DeviceCMYK>>")
          .Object(14, "<</ColorSpace/DeviceGray>>")
          .Object(15, "<</ColorSpace/DeviceRGB>>")
          .Object(16, "<</ColorSpace[/Indexed/DeviceCMYK 0<00000000>]>>")
          .Table();
  const auto document = testing::OpenBytes(bytes);
  pdf::Arena arena;
  const auto text_of = [&](const char* spaces, std::uint32_t number) {
    const ImageFacts facts =
        FactsOf({.document = document.get(),
                 .number = number,
                 .dictionary = document->Load({.number = number, .generation = 0}, arena),
                 .data = {},
                 .color_spaces = document->Catalog(arena).Get(spaces)},
                arena);
    std::string text;
    pdf::AppendObject(text, facts.color_space);
    return text + (facts.has_default_space ? " default" : "");
  };
  EXPECT_EQ(text_of("Spaces", 13), "[/ICCBased 11 0 R] default");
  EXPECT_EQ(text_of("Spaces", 14), "[/ICCBased 12 0 R] default");
  EXPECT_EQ(text_of("Spaces", 15), "[/CalRGB<<>>] default");
  EXPECT_EQ(text_of("Spaces", 16), "[/Indexed[/ICCBased 11 0 R]0<00000000>] default");
  EXPECT_EQ(text_of("Wrong", 13), "/DeviceCMYK");
  EXPECT_EQ(text_of("Wrong", 14), "/DeviceGray");
  EXPECT_EQ(text_of("Wrong", 15), "/DeviceRGB");
  EXPECT_EQ(text_of("Wrong", 16), "[/Indexed/DeviceCMYK 0<00000000>]");
}

// The full dictionary of an inline image, as text.
std::string FullText(const std::string& entries) {
  const std::string bytes = RawPdf()
                                .Object(1, "<</Type/Catalog/Pages<</Kids[]>>/I<<" + entries +
                                               ">>/R<</ColorSpace<</Own[/CalRGB<<>>]>>>>>>")
                                .Table();
  const auto document = testing::OpenBytes(bytes);
  pdf::Arena arena;
  const pdf::Object catalog = document->Catalog(arena);
  std::string text;
  pdf::AppendObject(text,
                    FullInlineDictionary(*document, catalog.Get("I"), catalog.Get("R"), arena));
  return text;
}

TEST(InlineImage, HasFullNames) {
  EXPECT_EQ(FullText("/W 8/H 4/BPC 1/CS/G/D[1 0]/F/AHx/DP<</K 1>>/IM false/I true"),
            "<</Width 8/Height 4/BitsPerComponent 1/ColorSpace/DeviceGray/Decode[1 0]"
            "/Filter/ASCIIHexDecode/DecodeParms<</K 1>>/ImageMask false/Interpolate true>>");
  EXPECT_EQ(FullText("/CS/RGB/F[/A85/Fl/LZW/RL/CCF/DCT/Other]"),
            "<</ColorSpace/DeviceRGB/Filter[/ASCII85Decode/FlateDecode/LZWDecode/RunLengthDecode"
            "/CCITTFaxDecode/DCTDecode/Other]>>");
  EXPECT_EQ(FullText("/CS[/I/CMYK 1(a)]/Width 3"),
            "<</ColorSpace[/Indexed/DeviceCMYK 1(a)]/Width 3>>");
}

TEST(InlineImage, FindsNamedColorSpacesInTheResources) {
  EXPECT_EQ(FullText("/CS/Own"), "<</ColorSpace[/CalRGB<<>>]>>");
  EXPECT_EQ(FullText("/CS[/Indexed/Own 0(abc)]"), "<</ColorSpace[/Indexed[/CalRGB<<>>]0(abc)]>>");
  EXPECT_EQ(FullText("/CS/DeviceRGB"), "<</ColorSpace/DeviceRGB>>");
  EXPECT_EQ(FullText("/CS/Missing"), "<</ColorSpace/Missing>>");
}

TEST(ImageData, IsThatOfTheStream) {
  ImageInDocument image("/Filter/ASCIIHexDecode", "616263>");
  EXPECT_EQ(EncodedData(image.Image(), 100), "616263>");
  EXPECT_EQ(DecodeToImageFilter(image.Image(), image.Facts(), 100), "abc");
  pdf::StringSink sink;
  CopyEncoded(image.Image(), sink, 4);
  EXPECT_EQ(sink.bytes(), "6162");
  EXPECT_THROW(EncodedData(image.Image(), 3), pdf::Error);
}

TEST(ImageData, IsThatOfAnInlineImage) {
  const DocumentImage image{
      .document = nullptr, .number = 0, .dictionary = {}, .data = "616263>", .color_spaces = {}};
  EXPECT_EQ(EncodedData(image, 100), "616263>");
  pdf::StringSink sink;
  CopyEncoded(image, sink, 4);
  EXPECT_EQ(sink.bytes(), "6162");
}

TEST(ImageData, OfNoStreamIsEmpty) {
  ImageInDocument document("", "x");
  DocumentImage image = document.Image();
  image.number = 1;
  EXPECT_EQ(EncodedData(image, 100), "");
}

}  // namespace
}  // namespace TarnixTools::engines
