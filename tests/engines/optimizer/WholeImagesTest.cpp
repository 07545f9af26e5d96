// Documents with small images of every kind, and all that is written of them: by each profile, and
// with everything that can be asked for.
#include <algorithm>
#include <array>
#include <cstdint>
#include <sstream>
#include <string>
#include <tuple>
#include <utility>

#include <gtest/gtest.h>

#include "engines/optimizer/OptimizedDocument.h"
#include "engines/support/codecs/CcittEncoder.h"
#include "engines/support/codecs/Jbig2Encoder.h"
#include "engines/support/codecs/JpxHeader.h"
#include "pdf/write/DocumentText.h"
#include "support/Expected.h"
#include "support/JpegImage.h"
#include "support/JpxImage.h"
#include "support/RawPdf.h"
#include "support/SmallImages.h"
#include "support/TempDir.h"
#include "support/TestImage.h"
#include "support/TestImages.h"
#include "support/TestJbig2.h"
#include "support/TestScene.h"

namespace TarnixTools::engines::optimizer {
namespace {

using testing::Deflated;
using testing::RawPdf;
using testing::SceneSamples;

constexpr testing::SceneSize kSize = {72, 96};
const std::string kSides = "/Width 72/Height 96";
const std::string kFlate = "/Filter/FlateDecode";

std::string Gray(int bits = 8) {
  return Deflated(SceneSamples(kSize, 1, bits));
}

std::string Rgb(int bits = 8) {
  return Deflated(SceneSamples(kSize, 3, bits));
}

std::string Steps(int components, int bits, int step) {
  return Deflated(testing::PackedSamples(kSize, components, bits, [=](int x, int y, int component) {
    return ((x / step + 2 * (y / step) + component) % 4) / 3.0;
  }));
}

// From 0 to 3, for palettes.
std::string Indices() {
  return Deflated(testing::PackedSamples(
      kSize, 1, 8, [](int x, int y, int) { return (x / 5 + 3 * (y / 7)) % 4 / 255.0; }));
}

std::string Strokes() {
  return testing::PackedSamples(
      kSize, 1, 1, [](int x, int y, int) { return x % 12 < 3 || y % 20 < 2 ? 0.0 : 1.0; });
}

std::string Fax() {
  const std::string rows = Strokes();
  CcittEncoder encoder(72);
  for (int y = 0; y < 96; ++y) {
    encoder.AddRow(reinterpret_cast<const std::uint8_t*>(rows.data()) + y * 9, 0);
  }
  encoder.Finish();
  return std::string(encoder.data());
}

std::string Jbig2() {
  const std::string rows = Strokes();
  return EncodeJbig2({.rows = reinterpret_cast<const std::uint8_t*>(rows.data()),
                      .stride = 9,
                      .width = 72,
                      .height = 96,
                      .black = 0})
      .value();
}

// A document of one page, on which each image is drawn by "SIZE 0 0 SIZE X Y cm".
class ImageDocumentMaker {
 public:
  // Drawn so that it has 288 pixels an inch.
  void Add(const std::string& entries, const std::string& data, const std::string& place = "") {
    const std::string number = std::to_string(next_);
    names_ += "/I" + number + " " + number + " 0 R";
    content_ += "q " + (place.empty() ? "18 0 0 24 9 9 cm" : place) + " /I" + number + " Do Q\n";
    Hidden(entries, data);
  }

  // Gets the next number, as all do, and a name, so that none is what another one is.
  void Hidden(const std::string& entries, const std::string& data) {
    file_.Stream(next_, "/Type/XObject/Subtype/Image/Name/I" + std::to_string(next_) + entries,
                 data);
    ++next_;
  }

  int next() const { return next_; }

  std::string ref(int ahead = 1) const { return " " + std::to_string(next_ + ahead) + " 0 R"; }

  void Content(const std::string& content) { content_ += content; }

  RawPdf& file() { return file_; }

  std::string Bytes(const std::string& catalog = "", const std::string& page = "",
                    const std::string& resources = "") {
    return file_.Object(1, "<</Type/Catalog/Pages 2 0 R" + catalog + ">>")
        .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
        .Object(3,
                "<</Type/Page/Parent 2 0 R/MediaBox[0 0 400 400]/Contents 4 0 R/Resources<<"
                "/XObject<<" +
                    names_ + ">>" + resources + ">>" + page + ">>")
        .Stream(4, "", content_)
        .Object(5, "[/ICCBased 6 0 R]")
        .Stream(6, "/N 3", testing::TestRgbProfile(1.8, true))
        .Stream(7, "/FunctionType 4/Domain[0 1 0 1]/Range[0 1 0 1 0 1]", "{0.5}")
        .Table();
  }

 private:
  RawPdf file_;
  int next_ = 10;
  std::string names_;
  std::string content_;
};

void AddColors(ImageDocumentMaker& maker) {
  const std::string eight = kSides + kFlate + "/BitsPerComponent 8/ColorSpace";
  maker.Add(eight + "/DeviceGray", Gray());
  maker.Add(eight + "/DeviceRGB", Rgb());
  maker.Add(eight + "/DeviceCMYK", Deflated(SceneSamples(kSize, 4, 8)));
  maker.Add(eight + "/DeviceRGB", Steps(3, 8, 9));
  maker.Add(eight + "/DeviceRGB", Deflated(std::string(72 * 96 * 3, '\x33')));  // gray, one colour
  maker.Add(eight + "/DeviceGray/Decode[1 0]", Gray());
  maker.Add(eight + "/DeviceRGB/Decode[1 0 0 1 0.2 0.8]", Rgb());
  maker.Add(eight + "[/CalGray<</WhitePoint[0.95 1 1.09]/Gamma 1.8>>]", Gray());
  maker.Add(eight + "[/Lab<</WhitePoint[0.95 1 1.09]/Range[-100 100 -100 100]>>]", Rgb());
  maker.Add(eight + " 5 0 R", Rgb());
  maker.Add(eight + "[/DeviceN[/A/B]/DeviceRGB 7 0 R]", Deflated(SceneSamples(kSize, 2, 8)));
  maker.Add(eight + "[/DeviceN[/A/B]/DeviceRGB 7 0 R]", Deflated(SceneSamples(kSize, 2, 8)),
            "72 0 0 96 9 9 cm");
  maker.Add(eight + "[/Separation/A/DeviceRGB 7 0 R]", Gray());
  std::string table;
  for (int i = 0; i < 256; ++i) {
    table += {static_cast<char>(i), static_cast<char>(255 - i), static_cast<char>(i / 2)};
  }
  maker.Add(eight + "[/Indexed/DeviceRGB 255" + maker.ref() + "]", Gray());
  maker.Hidden(kFlate, Deflated(table));
  maker.Add(eight + "[/Indexed/DeviceRGB 3<000000FF000000FF000000FF>]", Indices());
  maker.Add(eight + "[/Indexed/DeviceCMYK 3<00000000FF0000000000FF00000000FF>]", Indices());
  maker.Add(eight + "[/Indexed/DeviceGray 3<0055AAFF>]/Mask[0 0]", Indices());
  maker.Add(eight + "/Odd", Rgb());
  for (const int bits : {1, 2, 4, 16}) {
    const std::string entries = kSides + kFlate + "/BitsPerComponent " + std::to_string(bits);
    maker.Add(entries + "/ColorSpace/DeviceGray", Gray(bits));
    maker.Add(entries + "/ColorSpace/DeviceRGB", Rgb(bits));
    maker.Add(entries + "/ColorSpace[/DeviceN[/A/B]/DeviceRGB 7 0 R]",
              Deflated(SceneSamples(kSize, 2, bits)));
  }
}

void AddMasks(ImageDocumentMaker& maker) {
  const std::string eight = kSides + kFlate + "/BitsPerComponent 8/ColorSpace";
  maker.Add(eight + "/DeviceRGB/SMask" + maker.ref(), Rgb());
  maker.Hidden(eight + "/DeviceGray", Gray());
  maker.Add(eight + "/DeviceRGB/SMask" + maker.ref(), Rgb());
  maker.Hidden(eight + "/DeviceGray/Matte[0 0 0]", Gray());
  maker.Add(eight + "/DeviceRGB/SMask" + maker.ref(), Rgb());
  maker.Hidden("/Width 36/Height 48/BitsPerComponent 8/ColorSpace/DeviceGray/Matte[0 0 0]" + kFlate,
               Deflated(SceneSamples({36, 48}, 1, 8)));
  maker.Add(eight + "/DeviceRGB/Mask" + maker.ref(), Rgb());
  maker.Hidden(kSides + kFlate + "/ImageMask true/BitsPerComponent 1", Deflated(Strokes()));
  maker.Add(eight + "/DeviceRGB/Mask[13 13 13 13 26 26]", Rgb());
  maker.Add(eight + "/DeviceRGB/SMaskInData 1/Intent/Perceptual/OC 5 0 R/StructParent 3", Rgb());
  maker.Add(kSides + kFlate + "/ImageMask true/BitsPerComponent 1", Deflated(Strokes()));
  maker.Add(kSides + "/ImageMask true/BitsPerComponent 1/Decode[1 0]", Strokes());
}

void AddCoded(ImageDocumentMaker& maker) {
  const std::string eight = kSides + "/BitsPerComponent 8/ColorSpace";
  for (const auto& [space, components] :
       {std::pair{"/DeviceGray", 1}, {"/DeviceRGB", 3}, {"/DeviceCMYK", 4}}) {
    const std::string samples = SceneSamples(kSize, components, 8);
    maker.Add(eight + space + "/Filter/DCTDecode",
              testing::EncodeJpeg(72, 96, components, samples, 96));
    maker.Add(eight + space + "/Filter/DCTDecode",
              testing::EncodeJpeg(72, 96, components, samples, 20), "72 0 0 96 9 9 cm");
  }
  const std::string jpeg = testing::EncodeJpeg(72, 96, 3, SceneSamples(kSize, 3, 8), 90);
  maker.Add(eight + "/DeviceRGB/Filter[/FlateDecode/DCTDecode]", Deflated(jpeg));
  maker.Add(eight + "/DeviceRGB/Filter/DCTDecode", jpeg.substr(0, jpeg.size() / 2));
  const std::string jpx = testing::EncodeJpx(72, 96, 3, SceneSamples(kSize, 3, 8), 2);
  maker.Add(kSides + "/Filter/JPXDecode", jpx);
  maker.Add(kSides + "/ColorSpace/DeviceRGB/Filter/JPXDecode", jpx);
  maker.Add(kSides + "/Filter/JPXDecode", jpx.substr(0, jpx.size() / 2));
  maker.Add(kSides + "/Filter/JPXDecode",
            testing::EncodeJpx(72, 96, 1, SceneSamples(kSize, 1, 8), 2));
  const std::string one = kSides + "/BitsPerComponent 1/ColorSpace/DeviceGray/Filter";
  maker.Add(one + "/CCITTFaxDecode/DecodeParms<</K -1/Columns 72/Rows 96>>", Fax());
  maker.Add(one + "/JBIG2Decode", Jbig2());
  maker.Add(one + "/FlateDecode", Deflated(Strokes()));
  maker.Add(one + "/FlateDecode/Decode[1 0]", Deflated(Strokes()));
  maker.Add(one + "/FlateDecode", Deflated(std::string(800, '\0') + Strokes().substr(800)));
  maker.Add(one + "/FlateDecode", Deflated(Strokes().substr(0, 400)));
  maker.Add(eight + "/DeviceRGB/Filter/FlateDecode", Rgb().substr(0, 3000));
  maker.Add(eight + "/DeviceRGB/Filter/MyDecode", Rgb());
  maker.Add("/Width 0/Height 96/BitsPerComponent 8/ColorSpace/DeviceGray", "");
  maker.Add("/Width 1/Height 1/BitsPerComponent 8/ColorSpace/DeviceRGB", "abc");
  const std::string inks = eight + "[/DeviceN[/A/B]/DeviceRGB 7 0 R]" + kFlate;
  maker.Add(inks, Deflated(SceneSamples(kSize, 2, 8).substr(0, 9000)));
  maker.Add(eight + "[/Separation/A/DeviceRGB 7 0 R]" + kFlate,
            Deflated(SceneSamples(kSize, 1, 8).substr(0, 5000)));
  maker.Add(eight + "/DeviceRGB/Filter/DCTDecode/DecodeParms<</ColorTransform 1>>", jpeg);
}

// What says its colours itself, palettes of other spaces, and symbols that readers decode differently.
void AddRare(ImageDocumentMaker& maker) {
  for (const testing::SmallImage& image : testing::SmallJpx()) {
    const auto header = ReadJpxHeader(image.bytes);
    const std::string sides =
        "/Width " + std::to_string(header->width) + "/Height " + std::to_string(header->height);
    maker.Add(sides + "/Filter/JPXDecode", image.bytes);
    maker.Add(sides + "/Filter/JPXDecode/SMaskInData 1", image.bytes);
    maker.Add(sides + "/Filter/JPXDecode/ColorSpace[/DeviceN[/A/B]/DeviceRGB 7 0 R]", image.bytes);
  }
  const std::string gray = testing::EncodeJpx(72, 96, 1, SceneSamples(kSize, 1, 8), 2);
  const std::string rgb = testing::EncodeJpx(72, 96, 3, SceneSamples(kSize, 3, 8), 2);
  maker.Add(kSides + "/Filter/JPXDecode/ColorSpace/DeviceGray", rgb);
  maker.Add(kSides + "/Filter/JPXDecode/ColorSpace/DeviceRGB", gray);
  maker.Add(kSides + "/Filter/JPXDecode/ColorSpace/DeviceCMYK", rgb);
  maker.Add(kSides + "/Filter/JPXDecode/ColorSpace[/Separation/A/DeviceRGB 7 0 R]", rgb);
  const std::string eight = kSides + kFlate + "/BitsPerComponent 8/ColorSpace";
  const std::string colors = " 3<000000FF000000FF000000FF>]";
  maker.Add(eight + "[/Indexed/DeviceRGB" + colors + "/Decode[3 0]", Indices());
  maker.Add(eight + "[/Indexed/DeviceRGB" + colors + "/Mask[1 2]", Indices());
  maker.Add(eight + "[/Indexed 5 0 R" + colors, Indices());
  maker.Add(eight + "[/Indexed[/Lab<</WhitePoint[0.95 1 1.09]>>]" + colors, Indices());
  maker.Add(eight + "[/Indexed[/CalRGB<</WhitePoint[0.95 1 1.09]>>]" + colors, Indices());
  maker.Add(eight + "[/Indexed[/DeviceN[/A/B]/DeviceRGB 7 0 R]3<0011223344556677>]", Indices());
  maker.Add(eight + "[/Indexed[/Separation/A/DeviceRGB 7 0 R]3<00112233>]", Indices());
  maker.Add(eight + "[/Indexed/DeviceRGB]", Indices());
  maker.Add(eight + "[/Indexed/DeviceRGB 3<0000>]", Indices());
  maker.Add(
      "/Width 120/Height 12/BitsPerComponent 1/ColorSpace/DeviceGray/Filter[/ASCIIHexDecode"
      "/JBIG2Decode]",
      std::string(testing::kRefinedJbig2) + ">");
}

void AddPlaces(ImageDocumentMaker& maker) {
  const std::string rgb = kSides + kFlate + "/BitsPerComponent 8/ColorSpace/DeviceRGB";
  maker.Add(rgb, Rgb(), "72 0 0 96 9 9 cm");                             // 72 pixels an inch
  maker.Add(rgb, Rgb(), "23 0 0 30 9 9 cm");                             // 225, more or less
  maker.Add(rgb, Rgb(), "0 18 -24 0 50 9 cm");                           // turned
  maker.Add(rgb, Rgb(), "9 0 0 24 9 9 cm");                              // higher than wide
  maker.Add(rgb, Rgb(), "1 1 1 1 9 9 cm");                               // without area
  maker.Add(rgb, Rgb(), "30.3 30.4 17.5 11.3 re W n 72 0 0 96 9 9 cm");  // a part of it
  maker.Add(rgb, Rgb(), "0 0 30.3 40.4 re W n 72 0 0 96 9 9 cm");        // its corners
  maker.Add(rgb, Rgb(), "60.3 80.4 90 90 re W n 72 0 0 96 9 9 cm");
  maker.Add(rgb, Rgb(), "10.3 10.4 64 77 re W n 72 0 0 96 9 9 cm");  // most of it
  maker.Add(rgb + "/SMask" + maker.ref(), Rgb(), "30.3 30.4 17.5 11.3 re W n 72 0 0 96 9 9 cm");
  maker.Hidden(kSides + kFlate + "/BitsPerComponent 8/ColorSpace/DeviceGray", Gray());
  maker.Add(rgb, Rgb(), "72 0 0 96 390 380 cm");  // over the border of the page
  maker.Add(rgb, Rgb(), "18 0 0 24 900 9 cm");    // beside it
  maker.Content("q 50 0 0 60 0 0 cm /I10 Do Q 72 0 0 96 0 0 cm /I10 Do\n");  // twice
  maker.Hidden(rgb, Rgb());                                                  // never
}

// Content with images in it, longer than a kilobyte all but one.
void AddInline(ImageDocumentMaker& maker) {
  const auto put = [&](const std::string& entries, const std::string& data) {
    maker.Content("q 18 0 0 24 9 9 cm BI " + entries + " ID " + data + "\nEI Q\n");
  };
  put("/W 72/H 96/BPC 8/CS/RGB", SceneSamples(kSize, 3, 8));
  put("/Width 72/Height 96/BitsPerComponent 8/ColorSpace/G/Interpolate true",
      SceneSamples(kSize, 1, 8));
  put("/W 72/H 96/BPC 8/CS/G/D[1 0]/L 6912", SceneSamples(kSize, 1, 8));
  put("/W 72/H 96/BPC 8/CS/CMYK", SceneSamples(kSize, 4, 8));
  put("/W 72/H 96/BPC 8/CS[/I/RGB 3<000000FF000000FF000000FF>]",
      testing::PackedSamples(kSize, 1, 8, [](int x, int, int) { return x % 4 / 255.0; }));
  put("/W 144/H 96/IM true", Strokes() + Strokes());
  put("/W 8/H 96/BPC 8/CS/G", std::string(8 * 96, 'x'));
  put("/W 72/H 96/BPC 8/CS/RGB/F/Fl", Rgb());
  put("/W 72/H 96/BPC 8/CS/RGB/DP[null]/F[/Fl]/L 9", Rgb());
  put("/Width 72/Height 96/BPC 8/CS/RGB/Filter/FlateDecode/DecodeParms<<>>/Length 9", Rgb());
}

const char* NameOf(std::size_t kind) {
  constexpr std::array<const char*, kImageClassCount> kNames = {"photographs", "flat art", "scans",
                                                                "bitonal", "soft masks"};
  return kNames.at(kind);
}

std::string ReportText(const OptimizerReport& report) {
  std::ostringstream text;
  for (std::size_t i = 0; i < report.images.size(); ++i) {
    const ClassFigures& figures = report.images.at(i);
    text << NameOf(i) << ": " << figures.images << ", to "
         << figures.bytes_after * 20 / std::max<std::uint64_t>(figures.bytes_before, 1)
         << " twentieths of their bytes; left alone " << figures.left_alone[0] << ' '
         << figures.left_alone[1] << ' ' << figures.left_alone[2] << '\n';
  }
  for (const TPdfOptimizeReportEntry& entry : report.entries) {
    text << static_cast<int>(entry.kind) << ' ' << static_cast<int>(entry.outcome) << ' '
         << entry.count << ' ' << entry.reason << '\n';
  }
  return text.str();
}

class WholeImages : public ::testing::Test {
 protected:
  std::string Written(const std::string& bytes, const OptimizerSettings& settings) {
    testing::WriteBytes(directory_.Path("in.pdf"), bytes);
    OptimizedDocument document(platform::WidePath(directory_.Path("in.pdf")), "");
    const OptimizerReport report =
        document.Save(platform::WidePath(directory_.Path("out.pdf")), {.settings = settings});
    return ReportText(report) +
           testing::DocumentText(testing::ReadBytes(directory_.Path("out.pdf")));
  }

  static OptimizerSettings ForScreen() { return *ProfileSettings(kImageProfile); }

  static OptimizerSettings Everything() {
    OptimizerSettings settings = ForScreen();
    settings.color_conversion = ColorConversion::kRgb;
    settings.clips_images = true;
    settings.bitonal_codecs = 0;
    settings.image_quality = 40;
    settings.resolution_dpi = 72;
    settings.threshold_dpi = 100;
    settings.strip = 0x47F;
    return settings;
  }

  // By each of them.
  void ExpectAll(const std::string& name, const std::string& bytes) {
    const OptimizerSettings plain = *ProfileSettings(kDefaultProfile);
    EXPECT_TRUE(testing::IsAsExpected("optimizer/" + name + ".txt",
                                      "plain\n" + Written(bytes, plain) + "\nfor screens\n" +
                                          Written(bytes, ForScreen()) + "\neverything\n" +
                                          Written(bytes, Everything())));
  }

  testing::TempDir directory_;
};

TEST_F(WholeImages, OfEveryColorSpace) {
  ImageDocumentMaker maker;
  AddColors(maker);
  ExpectAll("image_colors", maker.Bytes());
}

TEST_F(WholeImages, WithMasks) {
  ImageDocumentMaker maker;
  AddMasks(maker);
  ExpectAll("image_masks", maker.Bytes("/OutputIntents[<</S/GTS_PDFX/DestOutputProfile 8 0 R>>]"));
}

TEST_F(WholeImages, OfEveryCoding) {
  ImageDocumentMaker maker;
  AddCoded(maker);
  maker.file().Stream(8, "/N 4", "a profile of inks");
  ExpectAll("image_codings", maker.Bytes("/OutputIntents[<</DestOutputProfile 8 0 R>>]"));
}

TEST_F(WholeImages, OfRareKinds) {
  ImageDocumentMaker maker;
  AddRare(maker);
  ExpectAll("image_rarities", maker.Bytes());
}

TEST_F(WholeImages, InEveryPlace) {
  ImageDocumentMaker maker;
  AddPlaces(maker);
  ExpectAll("image_places", maker.Bytes());
}

TEST_F(WholeImages, InContent) {
  ImageDocumentMaker maker;
  AddInline(maker);
  ExpectAll("image_contents", maker.Bytes());
}

// A page's one picture, which is taken apart in text and paper, in gray and in colours.
TEST_F(WholeImages, OfScannedPages) {
  constexpr testing::SceneSize kPage = {200, 150};
  const std::string entries = "/Width 200/Height 150/BitsPerComponent 8" + kFlate + "/ColorSpace";
  for (const auto& [name, space, components] :
       {std::tuple{"gray", "/DeviceGray/OC 5 0 R/StructParent 3", 1},
        {"rgb", "/DeviceRGB", 3},
        {"icc", " 5 0 R", 3}}) {
    ImageDocumentMaker maker;
    maker.Add(entries + space, Deflated(testing::ScanSamples(kPage, components)),
              "48 0 0 36 0 0 cm");
    ExpectAll(std::string("scan_") + name, maker.Bytes("", "/CropBox[0 0 48 36]"));
  }
}

}  // namespace
}  // namespace TarnixTools::engines::optimizer
