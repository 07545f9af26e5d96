#include "engines/optimizer/images/ImageDocuments.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

#include "engines/support/codecs/CcittCodes.h"
#include "engines/support/codecs/CcittEncoder.h"
#include "engines/support/codecs/Jbig2Encoder.h"
#include "engines/support/pictures/StandardProfiles.h"
#include "support/JpegImage.h"
#include "support/JpxImage.h"
#include "support/RawPdf.h"
#include "support/TestImage.h"
#include "support/TestImages.h"
#include "support/TestScene.h"

namespace TarnixTools::engines::optimizer {
namespace {

using testing::Deflated;
using testing::EncodeJpeg;
using testing::EncodeJpx;
using testing::IsSceneStroke;
using testing::kScene;
using testing::PackedSamples;
using testing::RawPdf;
using testing::SceneColor;
using testing::SceneSamples;
using testing::SceneStrokes;

// Drawn so large, the scene has 450 pixels per inch: all levels resample it.
const std::string kDraw = "q 76.8 0 0 102.4 20 20 cm /I Do Q\n";
const std::string kPaper = "0.9 0.95 0.7 rg 0 0 120 145 re f\n";
const std::string kInkFunction = "/FunctionType 4/Domain[0 1]/Range[0 1 0 1 0 1]";
const std::string kFourInks = "/FunctionType 4/Domain[0 1 0 1 0 1 0 1]";
const std::string kTwoInksFunction = "/FunctionType 4/Domain[0 1 0 1]/Range[0 1 0 1 0 1]";

std::string Sides(int width, int height) {
  return "/Width " + std::to_string(width) + "/Height " + std::to_string(height);
}

// The document of an image, object 10, which the page knows as /I. `others` has what it refers to,
// from 11 on.
std::string DocumentOf(const std::string& image_entries, const std::string& data,
                       RawPdf others = RawPdf(), const std::string& content = kDraw,
                       const std::string& page_entries = "", const std::string& resources = "",
                       const std::string& objects = "") {
  return others.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
      .Object(3,
              "<</Type/Page/Parent 2 0 R/MediaBox[0 0 120 145]/Contents 4 0 R/Resources"
              "<</XObject<</I 10 0 R" +
                  objects + ">>" + resources + ">>" + page_entries + ">>")
      .Stream(4, "", kPaper + content)
      .Stream(10, "/Type/XObject/Subtype/Image" + image_entries, data)
      .Table();
}

std::string SceneEntries(const std::string& color_space, int bits = 8) {
  return Sides(kScene.width, kScene.height) + "/ColorSpace" + color_space + "/BitsPerComponent " +
         std::to_string(bits) + "/Filter/FlateDecode";
}

// The scene by its components, with further entries of the image.
std::string Scene(const std::string& color_space, int components, int bits = 8,
                  const std::string& entries = "", RawPdf others = RawPdf()) {
  return DocumentOf(SceneEntries(color_space, bits) + entries,
                    Deflated(SceneSamples(kScene, components, bits)), std::move(others));
}

std::string SceneRgb() {
  return Deflated(SceneSamples(kScene, 3, 8));
}

// By a palette: its index is the red of the scene in sixteen steps and its green in as many.
std::string Indexed(const std::string& base, int components, RawPdf others = RawPdf()) {
  std::string table;
  for (int i = 0; i < 256; ++i) {
    for (int component = 0; component < components; ++component) {
      const int part = component % 2 == 0 ? i / 16 : i % 16;
      table += static_cast<char>(component == 3 ? 20 : part * 17);
    }
  }
  others.Stream(11, "", table);
  const auto index = [](int x, int y, int) {
    const auto color = SceneColor(x, y);
    return (std::floor(color[0] * 15.99) * 16 + std::floor(color[1] * 15.99)) / 255;
  };
  return DocumentOf(SceneEntries("[/Indexed" + base + " 255 11 0 R]"),
                    Deflated(PackedSamples(kScene, 1, 8, index)), std::move(others));
}

std::string FewColors(int bits) {
  std::string table;
  const int count = 1 << bits;
  for (int i = 0; i < count; ++i) {
    table += {static_cast<char>(i * 255 / (count - 1)), '\x40', static_cast<char>(255 - i * 10)};
  }
  testing::RawPdf others;
  others.Stream(11, "", table);
  const auto index = [](int x, int y, int) {
    return IsSceneStroke(x, y) ? 0.0 : (x / 40 + y / 40) % 2 == 0 ? 0.999 : 0.5;
  };
  return DocumentOf(
      SceneEntries("[/Indexed/DeviceRGB " + std::to_string(count - 1) + " 11 0 R]", bits),
      Deflated(PackedSamples(kScene, 1, bits, index)), std::move(others));
}

RawPdf WithProfile(const std::string& profile, int components) {
  return RawPdf().Stream(11, "/N " + std::to_string(components), profile);
}

RawPdf WithFunction(const std::string& function, const std::string& program) {
  return RawPdf().Stream(12, function, program);
}

// Opaque in the middle and less towards the sides.
std::string Alpha() {
  return PackedSamples(kScene, 1, 8, [](int x, int y, int) {
    const double away = std::hypot(x - kScene.width / 2.0, y - kScene.height / 2.0);
    return std::clamp(1.4 - away / 300, 0.0, 1.0);
  });
}

std::string SoftMask() {
  RawPdf others;
  others.Stream(11, "/Type/XObject/Subtype/Image" + SceneEntries("/DeviceGray"), Deflated(Alpha()));
  return Scene("/DeviceRGB", 3, 8, "/SMask 11 0 R", std::move(others));
}

// Mixed with black by the mask.
std::string Matte() {
  const std::string alpha = Alpha();
  const std::string mixed = PackedSamples(kScene, 3, 8, [&](int x, int y, int component) {
    const auto at = static_cast<std::size_t>(y * kScene.width + x);
    return SceneColor(x, y).at(static_cast<std::size_t>(component)) *
           static_cast<unsigned char>(alpha[at]) / 255;
  });
  RawPdf others;
  others.Stream(11, "/Type/XObject/Subtype/Image/Matte[0 0 0]" + SceneEntries("/DeviceGray"),
                Deflated(alpha));
  return DocumentOf(SceneEntries("/DeviceRGB") + "/SMask 11 0 R", Deflated(mixed),
                    std::move(others));
}

std::string StencilMask() {
  RawPdf others;
  others.Stream(11,
                "/Type/XObject/Subtype/Image/ImageMask true/BitsPerComponent 1"
                "/Filter/FlateDecode" +
                    Sides(kScene.width, kScene.height),
                Deflated(SceneStrokes(kScene)));
  return Scene("/DeviceRGB", 3, 8, "/Mask 11 0 R", std::move(others));
}

// The strokes, which have these colours alone, are left out.
std::string ColorKey() {
  return Scene("/DeviceRGB", 3, 8, "/Mask[13 13 13 13 26 26]");
}

std::string ImageMask(const std::string& entries) {
  return DocumentOf("/ImageMask true/BitsPerComponent 1/Filter/FlateDecode" +
                        Sides(kScene.width, kScene.height) + entries,
                    Deflated(SceneStrokes(kScene)), RawPdf(), "0.7 0 0.2 rg " + kDraw);
}

std::string Strokes(const std::string& filter, const std::string& data,
                    const std::string& entries = "") {
  return DocumentOf(Sides(kScene.width, kScene.height) +
                        "/ColorSpace/DeviceGray/BitsPerComponent 1/Filter/" + filter + entries,
                    data);
}

std::string Jbig2Data() {
  const std::string rows = SceneStrokes(kScene);
  return EncodeJbig2({.rows = reinterpret_cast<const std::uint8_t*>(rows.data()),
                      .stride = kScene.width / 8,
                      .width = kScene.width,
                      .height = kScene.height,
                      .black = 0})
      .value();
}

std::string FaxG4Data() {
  const std::string rows = SceneStrokes(kScene);
  CcittEncoder encoder(kScene.width);
  for (int y = 0; y < kScene.height; ++y) {
    encoder.AddRow(reinterpret_cast<const std::uint8_t*>(rows.data()) + y * kScene.width / 8, 0);
  }
  encoder.Finish();
  return std::string(encoder.data());
}

const std::string kFaxG4Entries = "/DecodeParms<</K -1/Columns 480/Rows 640>>";

void AppendRun(std::string& bits, bool is_black, int length) {
  const auto& codes = is_black ? kBlackRunCodes : kWhiteRunCodes;
  if (length >= 64) {
    bits += codes.at(static_cast<std::size_t>(63 + length / 64));
  }
  bits += codes.at(static_cast<std::size_t>(length % 64));
}

// One-dimensional, each row from a byte of its own on.
std::string FaxG3() {
  std::string data;
  for (int y = 0; y < kScene.height; ++y) {
    std::string bits;
    bool is_black = false;
    for (int x = 0; x < kScene.width; is_black = !is_black) {
      const int start = x;
      while (x < kScene.width && IsSceneStroke(x, y) == is_black) {
        ++x;
      }
      AppendRun(bits, is_black, x - start);
    }
    bits.resize((bits.size() + 7) / 8 * 8, '0');
    for (std::size_t i = 0; i < bits.size(); i += 8) {
      data += static_cast<char>(std::stoi(bits.substr(i, 8), nullptr, 2));
    }
  }
  return Strokes("CCITTFaxDecode", data,
                 "/DecodeParms<</K 0/Columns 480/Rows 640/EncodedByteAlign true"
                 "/EndOfBlock false>>");
}

std::string Jpeg(const std::string& color_space, int components, const std::string& samples,
                 const std::string& entries = "", RawPdf others = RawPdf()) {
  return DocumentOf(Sides(kScene.width, kScene.height) + "/ColorSpace" + color_space +
                        "/BitsPerComponent 8/Filter/DCTDecode" + entries,
                    EncodeJpeg(kScene.width, kScene.height, components, samples, 95),
                    std::move(others));
}

// As programs for pictures write it: turned round, which /Decode turns back.
std::string JpegCmykTurned() {
  std::string samples = SceneSamples(kScene, 4, 8);
  for (char& sample : samples) {
    sample = static_cast<char>(~sample);
  }
  return Jpeg("/DeviceCMYK", 4, samples, "/Decode[1 0 1 0 1 0 1 0]");
}

std::string Jpx(const std::string& color_space, int components) {
  return DocumentOf(
      Sides(kScene.width, kScene.height) + color_space + "/Filter/JPXDecode",
      EncodeJpx(kScene.width, kScene.height, components, SceneSamples(kScene, components, 8), 4));
}

// A form, a pattern, or what else has content that draws the image. It is object 12 and /X.
RawPdf WithContent(const std::string& entries, const std::string& content = kDraw) {
  return RawPdf().Stream(12, entries + "/Resources<</XObject<</I 10 0 R>>>>", content);
}

std::string InForm() {
  return DocumentOf(SceneEntries("/DeviceRGB"), SceneRgb(),
                    WithContent("/Type/XObject/Subtype/Form/BBox[0 0 240 300]/Matrix[0.5 0 0 0.5 "
                                "0 0]",
                                "q 153.6 0 0 204.8 40 40 cm /I Do Q"),
                    "q /X Do Q", "", "", "/X 12 0 R");
}

std::string InPattern() {
  return DocumentOf(SceneEntries("/DeviceRGB"), SceneRgb(),
                    WithContent("/Type/Pattern/PatternType 1/PaintType 1/TilingType 1"
                                "/BBox[0 0 120 145]/XStep 120/YStep 145"),
                    "/Pattern cs /X scn 10 10 100 125 re f", "", "/Pattern<</X 12 0 R>>");
}

std::string InGlyph() {
  RawPdf others;
  others.Stream(12, "", "1 0 d0 q 1 0 0 1 0 0 cm /I Do Q")
      .Object(11,
              "<</Type/Font/Subtype/Type3/FontBBox[0 0 1 1]/FontMatrix[1 0 0 1 0 0]"
              "/CharProcs<</a 12 0 R>>/Encoding<</Type/Encoding/Differences[97/a]>>/FirstChar 97"
              "/LastChar 97/Widths[1]/Resources<</XObject<</I 10 0 R>>>>>>");
  return DocumentOf(SceneEntries("/DeviceRGB"), SceneRgb(), std::move(others),
                    "BT /F 90 Tf 15 25 Td (a) Tj ET", "", "/Font<</F 11 0 R>>");
}

std::string InAppearance() {
  return DocumentOf(SceneEntries("/DeviceRGB"), SceneRgb(),
                    WithContent("/Type/XObject/Subtype/Form/BBox[0 0 120 145]"), "",
                    "/Annots[<</Type/Annot/Subtype/Stamp/F 4/Rect[0 0 120 145]"
                    "/AP<</N 12 0 R>>>>]");
}

// Its data stands in the content.
std::string InlineImage() {
  const std::string samples = SceneSamples({120, 160}, 3, 8);
  std::string hex;
  for (const char sample : samples) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    hex += kDigits[static_cast<unsigned char>(sample) >> 4U];
    hex += kDigits[static_cast<unsigned char>(sample) & 15U];
  }
  return "BI/W 120/H 160/BPC 8/CS/RGB/F/AHx ID " + hex + ">\nEI";
}

std::string Inline(const std::string& placing) {
  return DocumentOf(SceneEntries("/DeviceRGB"), SceneRgb(), RawPdf(),
                    placing + InlineImage() + " Q\n");
}

std::string InlineInForm() {
  return DocumentOf(SceneEntries("/DeviceRGB"), SceneRgb(),
                    WithContent("/Type/XObject/Subtype/Form/BBox[0 0 1 1]", InlineImage()),
                    "q 76.8 0 0 102.4 20 20 cm /X Do Q", "", "", "/X 12 0 R");
}

// Over the whole page, at 300 pixels per inch.
std::string ScannedPage(const std::string& color_space, int components) {
  constexpr testing::SceneSize kPage{500, 604};
  return DocumentOf(Sides(kPage.width, kPage.height) + "/ColorSpace" + color_space +
                        "/BitsPerComponent 8/Filter/FlateDecode",
                    Deflated(testing::ScanSamples(kPage, components)),
                    WithProfile(testing::TestRgbProfile(1.8), 3), "q 120 0 0 145 0 0 cm /I Do Q\n");
}

std::string DrawnTwice() {
  return DocumentOf(SceneEntries("/DeviceRGB"), SceneRgb(), RawPdf(),
                    "q 12 0 0 16 2 2 cm /I Do Q " + kDraw);
}

std::string NeverDrawn() {
  return DocumentOf(SceneEntries("/DeviceRGB"), SceneRgb(), RawPdf(), "");
}

std::string WithDefaultRgb() {
  return DocumentOf(SceneEntries("/DeviceRGB"), SceneRgb(),
                    WithProfile(testing::TestRgbProfile(1.8, true), 3), kDraw, "",
                    "/ColorSpace<</DefaultRGB[/ICCBased 11 0 R]>>");
}

// The data ends in the middle.
std::string Truncated(const std::string& entries, const std::string& data) {
  return DocumentOf(Sides(kScene.width, kScene.height) + entries, data.substr(0, data.size() / 2));
}

std::string TruncatedJpeg() {
  return Truncated("/ColorSpace/DeviceRGB/BitsPerComponent 8/Filter/DCTDecode",
                   EncodeJpeg(kScene.width, kScene.height, 3, SceneSamples(kScene, 3, 8), 95));
}

std::string TruncatedJpx() {
  return Truncated("/ColorSpace/DeviceRGB/Filter/JPXDecode",
                   EncodeJpx(kScene.width, kScene.height, 3, SceneSamples(kScene, 3, 8), 4));
}

// There are samples for a part of the rows.
std::string TooHigh() {
  return DocumentOf(Sides(kScene.width, 2 * kScene.height) +
                        "/ColorSpace/DeviceRGB/BitsPerComponent 8/Filter/FlateDecode",
                    SceneRgb());
}

std::string OnePixel() {
  return DocumentOf(Sides(1, 1) + "/ColorSpace/DeviceRGB/BitsPerComponent 8", "\x20\x90\xE0");
}

std::string OneColor() {
  std::string samples;
  for (int i = 0; i < kScene.width * kScene.height; ++i) {
    samples += "\x20\x90\xE0";
  }
  return DocumentOf(SceneEntries("/DeviceRGB"), Deflated(samples));
}

std::string GrayIn(const std::string& color_space, RawPdf others = RawPdf()) {
  const auto sample = [](int x, int y, int) { return SceneColor(x, y)[1]; };
  return DocumentOf(SceneEntries(color_space), Deflated(PackedSamples(kScene, 3, 8, sample)),
                    std::move(others));
}

std::string GrayInRgb() {
  return GrayIn("/DeviceRGB");
}

// The profile says that it is sRGB's, and its gray is not that of DeviceGray.
std::string GrayInOtherIcc() {
  return GrayIn("[/ICCBased 11 0 R]",
                WithProfile(testing::TestRgbProfile(1.2) + "sRGB IEC61966-2-1", 3));
}

// L* of 0 to 100, a* and b* between -100 and 100.
std::string Lab() {
  return Scene("[/Lab<</WhitePoint[0.9505 1 1.089]/Range[-100 100 -100 100]>>]", 3);
}

}  // namespace

const std::vector<ImageDocument>& ImageDocuments() {
  static const std::vector<ImageDocument> kDocuments = {
      {"DeviceGray", [] { return Scene("/DeviceGray", 1); }},
      {"DeviceRgb", [] { return Scene("/DeviceRGB", 3); }},
      {"DeviceCmyk", [] { return Scene("/DeviceCMYK", 4); }, Keeps::kLookOfInks},
      {"CalGray", [] { return Scene("[/CalGray<</WhitePoint[0.9505 1 1.089]/Gamma 1.8>>]", 1); }},
      {"CalRgb",
       [] { return Scene("[/CalRGB<</WhitePoint[0.9505 1 1.089]/Gamma[1.8 1.8 1.8]>>]", 3); }},
      {"Lab", Lab},
      {"IccSrgb",
       [] { return Scene("[/ICCBased 11 0 R]", 3, 8, "", WithProfile(SrgbProfile(), 3)); }},
      {"IccGray",
       [] { return Scene("[/ICCBased 11 0 R]", 1, 8, "", WithProfile(GrayProfile(), 1)); }},
      {"IccOther",
       [] {
         return Scene("[/ICCBased 11 0 R]", 3, 8, "",
                      WithProfile(testing::TestRgbProfile(1.8, true), 3));
       }},
      {"IndexedRgb", [] { return Indexed("/DeviceRGB", 3); }},
      {"IndexedGray", [] { return Indexed("/DeviceGray", 1); }},
      {"IndexedCmyk", [] { return Indexed("/DeviceCMYK", 4); }, Keeps::kLookOfInks},
      {"IndexedDeviceN",
       [] {
         return Indexed("[/DeviceN[/A/B]/DeviceRGB 12 0 R]", 2,
                        WithFunction(kTwoInksFunction, "{0.5}"));
       }},
      {"IndexedFourBits", [] { return FewColors(4); }},
      {"IndexedTwoBits", [] { return FewColors(2); }},
      {"IndexedOneBit", [] { return FewColors(1); }, Keeps::kPixels},
      {"Separation",
       [] {
         return Scene("[/Separation/Spot/DeviceRGB 12 0 R]", 1, 8, "",
                      WithFunction(kInkFunction, "{1 exch sub dup 0.8 mul 0.6}"));
       }},
      {"DeviceN",
       [] {
         return Scene("[/DeviceN[/A/B]/DeviceRGB 12 0 R]", 2, 8, "",
                      WithFunction(kTwoInksFunction, "{0.5}"));
       }},
      {"DeviceNThree",
       [] {
         return Scene("[/DeviceN[/A/B/C]/DeviceRGB 12 0 R]", 3, 8, "",
                      WithFunction("/FunctionType 4/Domain[0 1 0 1 0 1]/Range[0 1 0 1 0 1]",
                                   "{1 exch sub}"));
       }},
      {"DeviceNFour",
       [] {
         return Scene("[/DeviceN[/A/B/C/D]/DeviceCMYK 12 0 R]", 4, 8, "",
                      WithFunction(kFourInks + "/Range[0 1 0 1 0 1 0 1]", "{}"));
       }},
      {"DeviceNFive",
       [] {
         return Scene("[/DeviceN[/A/B/C/D/E]/DeviceCMYK 12 0 R]", 5, 8, "",
                      WithFunction("/FunctionType 4/Domain[0 1 0 1 0 1 0 1 0 1]"
                                   "/Range[0 1 0 1 0 1 0 1]",
                                   "{pop}"));
       }},
      {"DeviceNFourBits",
       [] {
         return Scene("[/DeviceN[/A/B]/DeviceRGB 12 0 R]", 2, 4, "/Decode[1 0 0 1]",
                      WithFunction(kTwoInksFunction, "{0.5}"));
       }},
      {"DecodeGray", [] { return Scene("/DeviceGray", 1, 8, "/Decode[1 0]"); }},
      {"DecodeRgb", [] { return Scene("/DeviceRGB", 3, 8, "/Decode[1 0 0 1 0.2 0.8]"); }},
      {"DecodeCmyk", [] { return Scene("/DeviceCMYK", 4, 8, "/Decode[1 0 1 0 1 0 1 0]"); },
       Keeps::kLookOfInks},
      {"OneBit", [] { return Strokes("FlateDecode", Deflated(SceneStrokes(kScene))); },
       Keeps::kPixels},
      {"TwoBits", [] { return Scene("/DeviceGray", 1, 2); }},
      {"FourBits", [] { return Scene("/DeviceGray", 1, 4); }},
      {"FourBitsRgb", [] { return Scene("/DeviceRGB", 3, 4); }},
      {"SixteenBits", [] { return Scene("/DeviceGray", 1, 16); }},
      {"SixteenBitsRgb", [] { return Scene("/DeviceRGB", 3, 16); }},
      {"SoftMask", SoftMask},
      {"Matte", Matte},
      {"StencilMask", StencilMask},
      {"ColorKey", ColorKey, Keeps::kPixels},
      {"ImageMask", [] { return ImageMask(""); }, Keeps::kPixels},
      {"ImageMaskTurned", [] { return ImageMask("/Decode[1 0]"); }, Keeps::kPixels},
      {"Jpx", [] { return Jpx("/ColorSpace/DeviceRGB", 3); }},
      {"JpxGray", [] { return Jpx("/ColorSpace/DeviceGray", 1); }},
      {"JpxOfItsOwnColors", [] { return Jpx("", 3); }},
      {"Jbig2", [] { return Strokes("JBIG2Decode", Jbig2Data()); }, Keeps::kPixels},
      {"FaxG3", FaxG3, Keeps::kPixels},
      {"FaxG4", [] { return Strokes("CCITTFaxDecode", FaxG4Data(), kFaxG4Entries); },
       Keeps::kPixels},
      {"JpegGray", [] { return Jpeg("/DeviceGray", 1, SceneSamples(kScene, 1, 8)); }},
      {"JpegRgb", [] { return Jpeg("/DeviceRGB", 3, SceneSamples(kScene, 3, 8)); }},
      {"JpegIcc",
       [] {
         return Jpeg("[/ICCBased 11 0 R]", 3, SceneSamples(kScene, 3, 8), "",
                     WithProfile(testing::TestRgbProfile(1.8, true), 3));
       }},
      {"JpegCmyk", [] { return Jpeg("/DeviceCMYK", 4, SceneSamples(kScene, 4, 8)); },
       Keeps::kLookOfInks},
      {"JpegCmykTurned", JpegCmykTurned, Keeps::kLookOfInks},
      {"InForm", InForm},
      {"InPattern", InPattern},
      {"InGlyph", InGlyph},
      {"InAppearance", InAppearance},
      {"Inline", [] { return Inline("q 76.8 0 0 102.4 20 20 cm "); }},
      {"InlineInForm", InlineInForm},
      {"ScannedPage", [] { return ScannedPage("/DeviceRGB", 3); }},
      {"ScannedPageGray", [] { return ScannedPage("/DeviceGray", 1); }},
      {"ScannedPageIcc", [] { return ScannedPage("[/ICCBased 11 0 R]", 3); }},
      {"DrawnTwice", DrawnTwice},
      {"NeverDrawn", NeverDrawn, Keeps::kPixels},
      {"WithDefaultRgb", WithDefaultRgb},
      {"Truncated",
       [] {
         return Truncated("/ColorSpace/DeviceRGB/BitsPerComponent 8/Filter/FlateDecode",
                          SceneRgb());
       },
       Keeps::kPixels},
      {"TruncatedFax",
       [] {
         return Truncated(
             "/ColorSpace/DeviceGray/BitsPerComponent 1/Filter/CCITTFaxDecode" + kFaxG4Entries,
             FaxG4Data());
       },
       Keeps::kPixels},
      {"TruncatedJbig2",
       [] {
         return Truncated("/ColorSpace/DeviceGray/BitsPerComponent 1/Filter/JBIG2Decode",
                          Jbig2Data());
       },
       Keeps::kPixels},
      {"TruncatedJpeg", TruncatedJpeg, Keeps::kPixels},
      {"TruncatedJpx", TruncatedJpx, Keeps::kPixels},
      {"TooHigh", TooHigh, Keeps::kPixels},
      {"OnePixel", OnePixel, Keeps::kPixels},
      {"OneColor", OneColor},
      {"GrayInOtherIcc", GrayInOtherIcc},
      {"GrayInRgb", GrayInRgb},
  };
  return kDocuments;
}

}  // namespace TarnixTools::engines::optimizer
