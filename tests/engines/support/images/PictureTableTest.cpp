// Pictures of every colour space, depth and /Decode, with masks of every kind, pixel by pixel, with what
// the dictionaries say. The pixels of those in DeviceGray and DeviceRGB and of their palettes are the
// ones that poppler decodes.
#include <cstdio>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/images/ImageAlpha.h"
#include "engines/support/images/ImageColors.h"
#include "engines/support/images/ImageInDocument.h"
#include "engines/support/images/ImageSamples.h"
#include "engines/support/images/PdfiumPicture.h"
#include "pdf/Error.h"
#include "pdf/write/Serialize.h"
#include "support/ByteText.h"
#include "support/Expected.h"
#include "support/RawPdf.h"
#include "support/SmallImages.h"
#include "support/TestImages.h"

namespace TarnixTools::engines {
namespace {

using testing::IsAsExpected;
using testing::NoiseBytes;
using testing::RawPdf;
using testing::ShortBytes;

std::string NumberText(double number) {
  char text[32];
  std::snprintf(text, sizeof text, " %.6g", number);
  return text;
}

template <typename Numbers>
std::string ListText(const char* name, const Numbers& numbers) {
  std::string text = numbers.empty() ? "" : std::string(" ") + name;
  for (const auto& number : numbers) {
    text += NumberText(static_cast<double>(number));
  }
  return text;
}

std::string FactsText(const ImageFacts& facts) {
  std::string text = std::to_string(facts.width) + " x " + std::to_string(facts.height) + " x " +
                     std::to_string(facts.bits) + (facts.is_mask ? " mask" : "") + " filter " +
                     std::to_string(static_cast<int>(facts.filter)) + " after " +
                     std::to_string(facts.steps.size()) + " space ";
  pdf::AppendObject(text, facts.color_space);
  text += " parameters ";
  pdf::AppendObject(text, facts.filter_parameters);
  return text + (facts.has_default_space ? " default" : "") +
         (facts.uses_jpx_alpha ? " channel" : "") + " masks " + std::to_string(facts.soft_mask) +
         " " + std::to_string(facts.stencil_mask) + ListText("decode", facts.decode) +
         ListText("key", facts.color_key) + ListText("matte", facts.matte);
}

std::string SpaceText(const ColorSpace& space) {
  const bool is_lab = space.kind == ColorKind::kLab;
  return std::to_string(static_cast<int>(space.kind)) + " of " + std::to_string(space.components) +
         (space.is_computed() ? "" : " not computed") + (space.icc != nullptr ? " icc" : "") +
         (space.palette.empty() ? "" : " palette " + testing::ShortBytesOf(space.palette, 15)) +
         (is_lab ? ListText("range", space.lab_range) : "");
}

std::string SamplesText(const DocumentImage& image, const ImageFacts& facts) {
  const std::optional<ImageSamples> samples = OpenSamples(image, facts);
  if (!samples) {
    return "no samples";
  }
  const SampleFormat& format = samples->rows->format();
  std::string bytes;
  for (std::uint32_t y = 0; y < format.height; ++y) {
    const auto row = samples->rows->ReadRow();
    bytes.append(row.begin(), row.end());
  }
  return "samples " + std::to_string(format.width) + " x " + std::to_string(format.height) + " x " +
         std::to_string(format.components) + " x " + std::to_string(format.bits) + " " +
         ShortBytes(bytes) + " space " + SpaceText(samples->space) +
         ListText("decode", samples->decode) +
         (samples->alpha ? " alpha " + testing::ShortBytesOf(samples->alpha->samples) +
                               (samples->alpha->is_premultiplied ? " mixed" : "")
                         : "") +
         (samples->is_complete ? "" : " cut");
}

std::string AlphaText(const DocumentImage& image, const ImageFacts& facts) {
  std::optional<ImageAlpha> alpha = OpenAlpha(image, facts);
  std::string text = "alpha " + std::to_string(static_cast<int>(AlphaKindOf(facts)));
  if (!alpha) {
    return text;
  }
  const Pixels pixels = ReadAll(*alpha->rows);
  return text + " " + std::to_string(pixels.width) + " x " + std::to_string(pixels.height) + " " +
         std::to_string(pixels.rows_with_data) + " rows " + ShortBytes(pixels.bytes) +
         ListText("matte", alpha->matte) + (alpha->is_premultiplied ? " mixed" : "");
}

// All of an image in a few lines; without pixels where only PDFium could draw them.
std::string ImageText(const std::string& entries, const std::string& data,
                      const RawPdf& others = RawPdf()) {
  std::string text = entries + "\n  ";
  try {
    ImageInDocument image(entries, data, others);
    pdf::Arena arena;
    const DocumentImage there = image.Image();
    const ImageFacts facts = FactsOf(there, arena);
    text += FactsText(facts) + "\n  " + SamplesText(there, facts) + ", " + AlphaText(there, facts);
    if (OpenColors(there, facts).colors == nullptr) {
      return text + "\n  not decoded here\n";
    }
    const Pixels pixels = image.Read();
    text += "\n  " + std::to_string(pixels.width) + " x " + std::to_string(pixels.height) + " x " +
            std::to_string(BytesPerPixel(pixels.layout)) + " " +
            std::to_string(pixels.rows_with_data) + " rows " + ShortBytes(pixels.bytes, 30);
    RowSource* again = image.Open();
    if (again != nullptr && again->is_bilevel()) {
      std::string bits;
      std::string row(again->width() / 8 + 1, '\0');
      for (std::uint32_t y = 0; y < again->height(); ++y) {
        again->ReadBits(reinterpret_cast<std::uint8_t*>(row.data()));
        bits += row;
      }
      text += " bits " + ShortBytes(bits);
    }
  } catch (const pdf::Error& error) {
    text += std::string("! ") + error.what();
  }
  return text + "\n";
}

struct Space {
  const char* entry;
  int components;
};

const std::vector<Space> kSpaces = {
    {"/DeviceGray", 1},
    {"/DeviceRGB", 3},
    {"/DeviceCMYK", 4},
    {"[/CalGray<</WhitePoint[.95 1 1.1]/Gamma 2>>]", 1},
    {"[/Indexed/DeviceRGB 3<00112233445566778899AABB>]", 1},
    {"[/Indexed/DeviceGray 3<00408FFF>]", 1},
    {"[/Indexed/DeviceCMYK 3<00000000FF000000102030FF0080FF00>]", 1},
    {"[/Indexed[/Lab<</WhitePoint[.9642 1 .8249]/Range[-100 90 -80 "
     "127]>>]3<00808080FF10C81040F0F010>]",
     1},
    {"[/Lab<</WhitePoint[.9642 1 .8249]>>]", 3},
    {"[/Lab<</WhitePoint[.9642 1 .8249]/Range[-20 30 -40 50]>>]", 3},
    {"[/ICCBased 11 0 R]", 3},
    {"[/ICCBased 12 0 R]", 1},
    {"[/ICCBased 13 0 R]", 3},
    {"[/ICCBased 14 0 R]", 4},
};

RawPdf Profiles() {
  RawPdf file;
  return file.Stream(11, "/N 3", testing::TestRgbProfile(1.8))
      .Stream(12, "/N 1", testing::TestProfile("GRAY"))
      .Stream(13, "/N 2/Alternate/DeviceRGB", "none")
      .Stream(14, "/N 4", "none");
}

std::string Decode(int components, const std::string& pair) {
  return "/Decode[" + Repeat(pair + " ", components) + "]";
}

std::string Size(int width, int height, int bits) {
  return "/Width " + std::to_string(width) + "/Height " + std::to_string(height) +
         "/BitsPerComponent " + std::to_string(bits);
}

// Data for three rows of five pixels; of indices, none is beyond a palette of four colours.
std::string DataFor(const Space& space, int bits) {
  std::string data = NoiseBytes(static_cast<std::size_t>(space.components * bits * 9));
  if (std::string_view(space.entry).starts_with("[/Indexed") && bits > 2) {
    for (char& byte : data) {
      byte = static_cast<char>(byte & (bits == 4 ? 0x33 : 0x03));
    }
  }
  return data;
}

TEST(PictureTable, OfColorSpacesAndDepths) {
  std::string text;
  for (const Space& space : kSpaces) {
    for (const int bits : {1, 2, 4, 8, 16}) {
      const int components = space.components;
      const std::string data = DataFor(space, bits);
      const std::string entries = Size(5, 3, bits) + "/ColorSpace" + space.entry;
      text += ImageText(entries, data, Profiles());
      if (bits == 2 || bits == 8) {
        text += ImageText(entries + Decode(components, "1 0"), data, Profiles());
        text += ImageText(entries + Decode(components, ".25 .5"), data, Profiles());
      }
    }
  }
  EXPECT_TRUE(IsAsExpected("images/spaces.txt", text));
}

TEST(PictureTable, OfInks) {
  std::string data;
  for (unsigned corner = 0; corner < 16; ++corner) {
    for (const unsigned amount : {255U, 254U, 128U, 60U, 1U}) {
      for (unsigned ink = 0; ink < 4; ++ink) {
        data += static_cast<char>((corner >> ink & 1U) != 0 ? amount : amount % 17);
      }
    }
  }
  ImageInDocument image(Size(5, 16, 8) + "/ColorSpace/DeviceCMYK", data);
  EXPECT_TRUE(IsAsExpected("images/inks.txt", image.Rows()));
}

// Lightness down, both colour axes along.
TEST(PictureTable, OfLab) {
  std::string data;
  for (const int lightness : {0, 1, 20, 21, 128, 254, 255}) {
    for (const int a : {0, 60, 128, 200, 255}) {
      for (const int b : {0, 70, 128, 255}) {
        data +=
            std::string{static_cast<char>(lightness), static_cast<char>(a), static_cast<char>(b)};
      }
    }
  }
  ImageInDocument image(Size(20, 7, 8) + "/ColorSpace[/Lab<</WhitePoint[.9642 1 .8249]>>]", data);
  EXPECT_TRUE(IsAsExpected("images/lab.txt", image.Rows()));
}

TEST(PictureTable, OfColorSpacesThatAreNone) {
  std::string text;
  for (const char* entry : {"/Pattern",
                            "/G",
                            "/RGB",
                            "/CMYK",
                            "[/G]",
                            "[/CalRGB<<>>]",
                            "[/I/RGB 1<000000FFFFFF>]",
                            "[/Indexed/RGB 0<>]",
                            "[/Indexed/RGB -1<0102>]",
                            "[/Indexed/RGB 300<010203>]",
                            "[/Indexed[/Indexed/RGB 0<>]0<>]",
                            "[/Indexed/DeviceRGB 1 15 0 R]",
                            "[/Indexed]",
                            "[]",
                            "5",
                            "[/ICCBased]",
                            "[/ICCBased 15 0 R]",
                            "[/ICCBased 16 0 R]",
                            "[/Lab]",
                            "[/Lab<</Range[1 2 3]>>]",
                            "[/Separation/Spot/DeviceRGB<<>>]",
                            "[/DeviceN[/A/B]/DeviceRGB]",
                            "[/DeviceN[]/DeviceRGB]",
                            "[/Indexed[/Separation/Spot/DeviceRGB<<>>]1<00FF>]"}) {
    ImageInDocument image(Size(2, 1, 8) + "/ColorSpace" + entry, NoiseBytes(8),
                          RawPdf()
                              .Stream(15, "", "abcdefghi")
                              .Stream(16, "/N 5/Alternate 17 0 R", "")
                              .Object(17, "[/ICCBased 16 0 R]"));
    pdf::Arena arena;
    const auto space = SpaceOf(image.Image(), image.Facts());
    text += std::string(entry) + " " + (space ? SpaceText(*space) : "none") + "\n";
  }
  EXPECT_TRUE(IsAsExpected("images/odd_spaces.txt", text));
}

TEST(PictureTable, OfMasks) {
  std::string text;
  const auto add = [&](const std::string& entries, const std::string& mask_entries,
                       const std::string& mask) {
    text += mask_entries + "\n" +
            ImageText(Size(4, 3, 8) + entries, NoiseBytes(36),
                      RawPdf().Stream(11, "/Subtype/Image" + mask_entries, mask));
  };
  const std::string rgb = "/ColorSpace/DeviceRGB";
  const std::string gray = "/ColorSpace/DeviceGray";
  const std::string soft = Size(4, 3, 8) + gray;
  for (const std::string& space : {gray, rgb}) {
    add(space + "/SMask 11 0 R", soft, NoiseBytes(12, 256, 9));
    add(space + "/SMask 11 0 R", soft + "/Decode[1 0]", NoiseBytes(12, 256, 9));
    add(space + "/SMask 11 0 R", soft + (space == gray ? "/Matte[.2]" : "/Matte[0 .5 1]"),
        NoiseBytes(12, 256, 9));
    add(space + "/SMask 11 0 R", Size(2, 5, 4) + gray, NoiseBytes(5, 256, 9));
    add(space + "/SMask 11 0 R", Size(9, 1, 1) + gray, "\xA5\x80");
    add(space + "/SMask 11 0 R", soft, NoiseBytes(5, 256, 9));
    add(space + "/SMask 11 0 R", soft + "/Matte[1 2]", NoiseBytes(12, 256, 9));
    add(space + "/SMask 11 0 R", Size(4, 3, 8) + rgb, NoiseBytes(36, 256, 9));
    add(space + "/SMask 11 0 R", "/Width 0/Height 3", "abc");
    add(space + "/Mask 11 0 R", "/ImageMask true" + Size(4, 3, 1), "\x50\xA0\xF0");
    add(space + "/Mask 11 0 R", "/ImageMask true/Decode[1 0]" + Size(4, 3, 1), "\x50\xA0\xF0");
    add(space + "/Mask 11 0 R", "/ImageMask true" + Size(4, 3, 1), "\x50");
    add(space + "/Mask 11 0 R", "/ImageMask true" + Size(13, 2, 1), "\x50\xA0\xF0\x33");
    add(space + "/Mask 11 0 R/SMaskInData 1", "/ImageMask true" + Size(4, 3, 1), "\x50\xA0\xF0");
  }
  EXPECT_TRUE(IsAsExpected("images/masks.txt", text));
}

// A matte counts in colours that mix as those of sRGB do, with a number for each component.
TEST(PictureTable, OfMattes) {
  std::string text;
  const std::vector<Space> spaces = {{"/DeviceGray", 1},
                                     {"/DeviceRGB", 3},
                                     {"/DeviceCMYK", 4},
                                     {"[/Lab<<>>]", 3},
                                     {"[/Indexed/DeviceRGB 1<102030F0E0D0>]", 1},
                                     {"[/CalRGB<<>>]", 3}};
  for (const auto& [space, components] : spaces) {
    for (const char* matte : {"", ".2", "-1 .5 2", "0 .1 .2 .3", "1 1 1"}) {
      text += std::string(matte) + ": " +
              ImageText(Size(3, 2, 8) + "/SMask 11 0 R/ColorSpace" + space,
                        std::string(space[1] == 'I' ? 6 : 0, '\1') +
                            NoiseBytes(static_cast<std::size_t>(6 * components)),
                        RawPdf().Stream(11,
                                        "/Subtype/Image/ColorSpace/DeviceGray" + Size(3, 2, 8) +
                                            "/Matte[" + matte + "]",
                                        std::string("\0\1\x7F\x80\xFE\xFF", 6)));
    }
  }
  EXPECT_TRUE(IsAsExpected("images/mattes.txt", text));
}

TEST(PictureTable, OfColorKeys) {
  std::string text;
  for (const int bits : {1, 2, 4, 8, 16}) {
    const int most = bits == 16 ? 65535 : (1 << bits) - 1;
    const std::string low = "0 " + std::to_string(most / 2);
    const std::string high = std::to_string(most / 2) + " " + std::to_string(most);
    const std::string data = NoiseBytes(static_cast<std::size_t>(bits * 9));
    for (const std::string& key :
         {low, high, low + " " + low + " " + low, high + " " + low + " " + high}) {
      for (const char* space : {"/DeviceGray", "/DeviceRGB"}) {
        text += ImageText(Size(5, 3, bits) + "/ColorSpace" + space + "/Mask[" + key + "]", data);
      }
    }
  }
  EXPECT_TRUE(IsAsExpected("images/keys.txt", text));
}

TEST(PictureTable, OfFilters) {
  std::string text;
  const std::string gray = "/ColorSpace/DeviceGray";
  const std::string fax = Size(20, 4, 1) + gray + "/Filter/CCITTFaxDecode/DecodeParms<<";
  const std::string noise = NoiseBytes(60, 256, 20);
  for (const char* parameters :
       {"", "/K -1/Columns 20", "/K 0/Columns 20", "/K 4/Columns 20", "/Columns 20/BlackIs1 true",
        "/Columns 20/EncodedByteAlign true", "/Columns 20/EndOfLine true", "/Columns 0",
        "/Columns 1000000", "/Columns 1000001", "/Columns 9", "/Columns 33/K -1"}) {
    text += ImageText(fax + parameters + ">>", noise);
  }
  text += ImageText(Size(20, 4, 8) + "/ColorSpace/DeviceRGB/Filter/CCITTFaxDecode", noise);
  for (const testing::SmallImage& image : testing::SmallImages(".jpg")) {
    for (const char* space : {"/DeviceGray", "/DeviceRGB", "/DeviceCMYK", "[/Lab<<>>]"}) {
      text += image.name + " " +
              ImageText(Size(17, 9, 8) + "/Filter/DCTDecode/ColorSpace" + space +
                            (*space == '[' ? "/DecodeParms<</ColorTransform 0>>" : ""),
                        image.bytes);
    }
  }
  EXPECT_TRUE(IsAsExpected("images/filters.txt", text));
}

TEST(PictureTable, OfJpx) {
  std::string text;
  for (const testing::SmallImage& image : testing::SmallJpx()) {
    for (const char* entries :
         {"", "/SMaskInData 1", "/ColorSpace/DeviceGray", "/ColorSpace/DeviceRGB",
          "/ColorSpace/DeviceCMYK/SMaskInData 2", "/ColorSpace[/Indexed/DeviceRGB 1<010203FFFEFD>]",
          "/ImageMask true/Decode[1 0]"}) {
      text +=
          image.name + " " + ImageText(Size(6, 4, 8) + "/Filter/JPXDecode" + entries, image.bytes);
    }
  }
  EXPECT_TRUE(IsAsExpected("images/jpx.txt", text));
}

TEST(PictureTable, OfJbig2) {
  std::string text;
  for (const testing::SmallImage& image : testing::SmallJbig2()) {
    for (const char* entries : {"", "/Decode[1 0]", "/DecodeParms<</JBIG2Globals 11 0 R>>"}) {
      text += image.name + " " +
              ImageText(Size(41, 25, 1) + "/ColorSpace/DeviceGray/Filter/JBIG2Decode" + entries,
                        image.bytes, RawPdf().Stream(11, "", ""));
    }
  }
  EXPECT_TRUE(IsAsExpected("images/jbig2.txt", text));
}

TEST(PictureTable, OfEntriesThatAreOdd) {
  std::string text;
  for (const char* entries :
       {"",
        "/Width 3",
        "/Height 3",
        "/Width 2/Height 2/ColorSpace/DeviceGray",
        "/Width 2/Height 1000000/ColorSpace/DeviceGray",
        "/Width 2/Height 1000001",

        "/Width 2/Height 2/BitsPerComponent 0/ColorSpace/DeviceGray",
        "/Width 2/Height 2/BitsPerComponent 12/ColorSpace/DeviceGray",
        "/Width 2/Height 2/ColorSpace/DeviceGray/Decode[0 1]",
        "/Width 2/Height 2/ColorSpace/DeviceGray/Decode[0]",
        "/Width 2/Height 2/ColorSpace/DeviceGray/Decode[0 1 0 .5]",
        "/Width 2/Height 2/ColorSpace/DeviceRGB/Decode[0 1 0 1 0 1]",
        "/Width 2/Height 2/ColorSpace/DeviceRGB/Decode[0 1 0 1]",
        "/Width 8/Height 2/ImageMask true",
        "/Width 8/Height 2/ImageMask true/Decode[1 0]",
        "/Width 8/Height 2/ImageMask true/BitsPerComponent 8/Mask[0 1]",
        "/Width 2/Height 2/Filter/Unknown",
        "/Width 2/Height 2/Filter[/Unknown/FlateDecode]",
        "/Width 2/Height 2/ColorSpace/DeviceGray/Filter[/Crypt/ASCIIHexDecode]",
        "/Width 2/Height 2/ColorSpace/DeviceGray/Filter/RunLengthDecode",
        "/Width 2/Height 2/ColorSpace/DeviceGray/Filter/ASCIIHexDecode",
        "/Width 2/Height 2/Filter[/ASCIIHexDecode/DCTDecode]/DecodeParms[null<</ColorTransform "
        "0>>]",
        "/Width 2/Height 2/Mask 10 0 R/SMask 10 0 R/ColorSpace/DeviceGray"}) {
    text += ImageText(entries, "abc4142>");
  }
  EXPECT_TRUE(IsAsExpected("images/odd.txt", text));
}

using PictureTableByPdfium = NeedsPdfium;

// Spot colours, by their functions: from white to what C1 is.
TEST_F(PictureTableByPdfium, OfSpotColors) {
  const std::string tint = "<</FunctionType 2/Domain[0 1]/C0[1 1 1]/C1[1 0 .2]/N 1>>";
  const std::string entries = Size(3, 2, 8) + "/ColorSpace[/Separation/Spot/DeviceRGB" + tint + "]";
  const std::string data("\0\x33\x66\x99\xCC\xFF", 6);
  const std::string rows = "FFFFFF FFCCD6 FF99AD\nFF6685 FF335C FF0033\n";
  ImageInDocument image(entries, data);
  EXPECT_EQ(image.Rows(), rows);
  DocumentImage there = image.Image();
  there.number = 0;
  there.data = data;
  pdf::Arena arena;
  const ImageFacts facts = FactsOf(there, arena);
  RowSourcePtr color = OpenWithPdfium(there, facts, false);
  RowSourcePtr gray = OpenWithPdfium(there, facts, true);
  ASSERT_TRUE(color && gray);
  EXPECT_EQ(ReadAll(*color).Text(), rows);
  EXPECT_EQ(ReadAll(*gray).Text(), "FF CC 99\n66 33 00\n");  // green
  EXPECT_GT(color->held_bytes(), 24U);
}

// A picture that may come out smaller.
TEST(PictureTable, OfSmallerPictures) {
  std::string text;
  const std::string jpeg = testing::SmallImages("rgb.jpg").at(0).bytes;
  for (const std::uint32_t least : {1U, 2U, 3U, 4U, 5U, 8U, 9U, 16U, 17U, 18U}) {
    ImageInDocument image(Size(17, 9, 8) + "/ColorSpace/DeviceRGB/Filter/DCTDecode", jpeg);
    const Pixels pixels = image.Read({least, 1});
    text += std::to_string(least) + ": " + std::to_string(pixels.width) + " x " +
            std::to_string(pixels.height) + " " + ShortBytes(pixels.bytes) + "\n";
  }
  EXPECT_TRUE(IsAsExpected("images/smaller.txt", text));
}

}  // namespace
}  // namespace TarnixTools::engines
