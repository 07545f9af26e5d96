// What is found on a page before it is drawn, how images are fitted, and what a repaired copy has:
// by tables that are compared whole.
#include <array>
#include <cmath>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/codecs/CcittEncoder.h"
#include "engines/support/drawing/DrawingLimits.h"
#include "engines/support/drawing/PageObjects.h"
#include "engines/support/drawing/PictureChoice.h"
#include "engines/support/drawing/RepairedCopy.h"
#include "engines/support/drawing/Unfolding.h"
#include "engines/support/pdfium/PdfiumFile.h"
#include "engines/support/pdfium/PdfiumSession.h"
#include "pdf/file/ByteSource.h"
#include "pdf/tree/PageTree.h"
#include "pdf/write/DocumentText.h"
#include "pdf/write/RewriteFixture.h"
#include "support/Expected.h"
#include "support/JpegImage.h"
#include "support/RawPdf.h"
#include "support/TestImage.h"
#include "support/TestImages.h"
#include "support/TestJbig2.h"
#include "support/TestJpx.h"
#include "support/TestScene.h"

namespace TarnixTools::engines {
namespace {

using testing::Deflated;
using testing::RawPdf;

std::string BoxText(const PixelBox& box) {
  return "[" + std::to_string(box.left) + " " + std::to_string(box.top) + " " +
         std::to_string(box.right) + " " + std::to_string(box.bottom) + "]";
}

std::string MatrixText(const pdf::Matrix& matrix) {
  std::ostringstream text;
  for (const double value : {matrix.a, matrix.b, matrix.c, matrix.d, matrix.e, matrix.f}) {
    text << ' ' << std::round(value * 100) / 100 + 0.0;
  }
  return text.str();
}

std::string FitText(const ImageObject& image) {
  const std::optional<PictureFit> fit = FitOf(image);
  if (!fit) {
    return "none";
  }
  std::ostringstream text;
  text << BoxText(fit->box) << ' ' << fit->width() << " x " << fit->height()
       << (fit->is_across ? " across" : "") << (fit->goes_left ? " left" : "")
       << (fit->goes_up ? " up" : "") << (fit->comes_in_order ? " in order" : "");
  for (const auto& [x, y] : {std::pair{0, 0}, {2, 0}, {0, 3}, {5, 7}}) {
    const auto [column, row] = fit->SourceOf(x, y);
    text << " (" << column << ' ' << row << ')';
  }
  return text.str();
}

ImageObject ObjectOf(const pdf::Matrix& matrix, std::uint32_t width = 200,
                     std::uint32_t height = 200) {
  return {.width = width,
          .height = height,
          .matrix = matrix,
          .clip = {0, 0, 1000, 1000},
          .is_opaque = true};
}

TEST(DrawingTables, OfFits) {
  std::ostringstream text;
  for (const pdf::Matrix& matrix :
       std::vector<pdf::Matrix>{{100, 0, 0, 90, 10, 20},         {100, 0, 0, -90, 10, 120},
                                {-100, 0, 0, 90, 110, 20},       {-100, 0, 0, -90, 110, 120},
                                {0, 100, 90, 0, 10, 20},         {0, -100, 90, 0, 10, 120},
                                {0, 100, -90, 0, 110, 20},       {0, -100, -90, 0, 110, 120},
                                {100.01, 0, 0, 90.01, 10, 20},   {100.03, 0, 0, 90.03, 9.97, 19.97},
                                {100.5, 0, 0, 90.5, 10.5, 20.5}, {100, 0.4, 0.4, 90, 10, 20},
                                {100, 0.6, 0, 90, 10, 20},       {100, 0, 0.6, 90, 10, 20},
                                {0.4, 100, 90, 0.4, 10, 20},     {0.6, 100, 90, 0, 10, 20},
                                {0, 100, 90, 0.6, 10, 20},       {0.3, 0, 0, 0.3, 10.4, 20.4},
                                {70, 70, -70, 70, 100, 20},      {100, 0, 0, 90, 2000, 20},
                                {100, 0, 0, 90, -99, 20},        {100, 0, 0, 90, -101, 20},
                                {1e6, 0, 0, 90, 10, 20},         {100, 0, 0, 90, 10, -1e6},
                                {400, 0, 0, 400, 0, 0},          {401, 0, 0, 400, 0, 0},
                                {200, 0, 0, 200, 0, 0},          {201, 0, 0, 199, 0, 0},
                                {199, 0, 0, 201, 0, 0},          {0, 0, 0, 0, 10, 20}}) {
    text << MatrixText(matrix) << ": " << FitText(ObjectOf(matrix)) << '\n';
  }
  for (const auto& [width, height] : {std::pair{200U, 100U},
                                      {199U, 100U},
                                      {20'000U, 1U},
                                      {32'768U, 16'384U},
                                      {32'769U, 16'384U}}) {
    text << width << " x " << height << ": "
         << FitText(ObjectOf({50, 0, 0, -1, 10, 20}, width, height)) << '\n';
  }
  ImageObject other = ObjectOf({100, 0, 0, 90, 10, 20});
  other.is_opaque = false;
  text << "not opaque: " << FitText(other) << '\n';
  other.is_opaque = true;
  other.clip = {10, 20, 10, 90};
  text << "clipped: " << FitText(other) << '\n';
  EXPECT_TRUE(testing::IsAsExpected("drawing/fits.txt", text.str()));
}

TEST(DrawingTables, OfPlaces) {
  const pdf::Matrix place = {1, 2, 3, 4, 5, 6};
  EXPECT_TRUE(IsSamePlace(place, place));
  for (int i = 0; i < 6; ++i) {
    std::array<double, 6> values = {1, 2, 3, 4, 5, 6};
    const auto moved = [&](double by) {
      std::array<double, 6> m = values;
      m.at(static_cast<std::size_t>(i)) += by;
      return pdf::Matrix{m[0], m[1], m[2], m[3], m[4], m[5]};
    };
    EXPECT_TRUE(IsSamePlace(place, moved(0.49))) << i;
    EXPECT_TRUE(IsSamePlace(place, moved(-0.49))) << i;
    EXPECT_FALSE(IsSamePlace(place, moved(0.5))) << i;
    EXPECT_FALSE(IsSamePlace(place, moved(-0.5))) << i;
  }
}

constexpr testing::SceneSize kSize = {160, 130};

// An image, object 10, with these entries; from 11 to 13 there is what it may refer to.
std::string ImageFile(const std::string& entries, const std::string& data) {
  return RawPdf()
      .Object(1, "<</Type/Catalog/Pages<</Kids[]>>>>")
      .Stream(10, "/Type/XObject/Subtype/Image/Width 160/Height 130" + entries, data)
      .Stream(11, "/N 3", testing::TestRgbProfile(2.2))
      .Stream(
          12,
          "/Type/XObject/Subtype/Image/Width 1/Height 1/BitsPerComponent 8/ColorSpace/DeviceGray",
          "x")
      .Stream(13, "/N 1", testing::TestRgbProfile(2.2))
      .Table();
}

std::string FaxOf(const std::string& bits) {
  CcittEncoder encoder(kSize.width);
  const std::size_t row_bytes = (static_cast<std::size_t>(kSize.width) + 7) / 8;
  for (std::size_t start = 0; start < bits.size(); start += row_bytes) {
    encoder.AddRow(reinterpret_cast<const std::uint8_t*>(bits.data()) + start, 0);
  }
  encoder.Finish();
  return std::string(encoder.data());
}

TEST(DrawingTables, OfFittedImages) {
  const std::string gray = testing::SceneSamples(kSize, 1, 8);
  const std::string rgb = testing::SceneSamples(kSize, 3, 8);
  const std::string cmyk = testing::SceneSamples(kSize, 4, 8);
  const std::string bits = testing::SceneStrokes(kSize);
  const std::string eight = "/BitsPerComponent 8/ColorSpace";
  const std::string fax = "/Filter/CCITTFaxDecode/DecodeParms<</K -1/Columns 160/Rows 130>>";
  const std::string jpeg = testing::EncodeJpeg(160, 130, 3, rgb, 90);
  const std::string gray_jpeg = testing::EncodeJpeg(160, 130, 1, gray, 90);
  const std::string small_jpeg = testing::EncodeJpeg(80, 65, 3, rgb.substr(0, 80 * 65 * 3), 90);
  const std::vector<std::pair<std::string, std::string>> images = {
      {eight + "/DeviceGray", gray},
      {eight + "/G", gray},
      {eight + "/DeviceRGB", rgb},
      {eight + "/RGB", rgb},
      {eight + "[/DeviceRGB]", rgb},
      {eight + "/DeviceCMYK", cmyk},
      {eight + "[/CalGray<</WhitePoint[1 1 1]>>]", gray},
      {eight + "[/CalRGB<</WhitePoint[1 1 1]>>]", rgb},
      {eight + "[/Lab<</WhitePoint[1 1 1]>>]", rgb},
      {eight + "[/ICCBased 11 0 R]", rgb},
      {eight + "[/ICCBased 13 0 R]", gray},
      {eight + "[/Indexed/DeviceRGB 1<FF00000000FF>]", std::string(160 * 130, '\1')},
      {eight + "[/I/RGB 1<FF00000000FF>]", std::string(160 * 130, '\1')},
      {eight + "[/Indexed/DeviceCMYK 1<FF00000000FF0000>]", std::string(160 * 130, '\1')},
      {eight + "[/Separation/A/DeviceRGB 11 0 R]", gray},
      {"/BitsPerComponent 1/ColorSpace/DeviceGray", bits},
      {"/BitsPerComponent 1/ColorSpace/DeviceGray" + fax, FaxOf(bits)},
      {"/BitsPerComponent 1/ColorSpace[/Indexed/DeviceRGB 1<FF00000000FF>]" + fax, FaxOf(bits)},
      {"/BitsPerComponent 8/ColorSpace/DeviceGray" + fax, FaxOf(bits)},
      {"/BitsPerComponent 1/ColorSpace/DeviceRGB" + fax, FaxOf(bits)},
      {"/BitsPerComponent 1/ColorSpace/DeviceGray" + fax, FaxOf(bits).substr(0, 40)},
      {"/BitsPerComponent 1/ImageMask true", bits},
      {eight + "/DeviceRGB/SMask 12 0 R", rgb},
      {eight + "/DeviceRGB/Mask 12 0 R", rgb},
      {eight + "/DeviceRGB/Mask[0 0 0 0 0 0]", rgb},
      {eight + "/DeviceRGB/OC<</Type/OCG>>", rgb},
      {eight + "/DeviceRGB/SMaskInData 1", rgb},
      {eight + "/DeviceRGB/Decode[1 0 1 0 1 0]", rgb},
      {eight + "/DeviceRGB/Filter/FlateDecode", Deflated(rgb)},
      {eight + "/DeviceRGB/Filter/FlateDecode", Deflated(rgb).substr(0, 2000)},
      {eight + "/DeviceRGB", rgb.substr(0, 20'000)},
      {eight + "/DeviceRGB/Filter/DCTDecode", jpeg},
      {eight + "/DeviceRGB/Filter/DCTDecode", jpeg.substr(0, jpeg.size() / 2)},
      {eight + "/DeviceRGB/Filter/DCTDecode", gray_jpeg},
      {eight + "/DeviceGray/Filter/DCTDecode", gray_jpeg},
      {eight + "/DeviceRGB/Filter/DCTDecode", small_jpeg},
      {"/BitsPerComponent 4/ColorSpace/DeviceRGB/Filter/DCTDecode", jpeg},
      {eight + "/DeviceRGB/Filter[/FlateDecode/DCTDecode]", Deflated(jpeg)},
      {eight + "/DeviceRGB/Filter/DCTDecode", "no picture"},
      {eight + "/DeviceRGB/Filter/JPXDecode", "no picture"},
      {eight + "/DeviceRGB/Filter/Own", rgb},
  };
  std::string text;
  for (const auto& [entries, data] : images) {
    text += entries + ":";
    for (const pdf::Matrix& matrix :
         std::vector<pdf::Matrix>{{80, 0, 0, -65, 0, 65}, {170, 0, 0, 150, 0, 0}}) {
      const ImageObject object = ObjectOf(matrix, 160, 130);
      const std::string bytes = ImageFile(entries, data);
      const auto document = testing::OpenBytes(bytes);
      const auto fit = FitOf(object);
      const RowSourcePtr rows = fit ? OpenFitted(*document, 10, object, *fit) : nullptr;
      if (rows == nullptr) {
        text += " none";
        continue;
      }
      std::string all(rows->row_bytes() * rows->height(), '\0');
      for (std::uint32_t y = 0; y < rows->height(); ++y) {
        rows->ReadRow(reinterpret_cast<std::uint8_t*>(all.data()) + y * rows->row_bytes());
      }
      text += " " + std::to_string(rows->width()) + " x " + std::to_string(rows->height()) + " " +
              testing::DataText(all);
    }
    text += "\n";
  }
  // Of another size than PDFium says.
  const std::string bytes = ImageFile(eight + "/DeviceGray", gray);
  const auto document = testing::OpenBytes(bytes);
  for (const auto& [width, height] : {std::pair{161U, 130U}, {160U, 131U}}) {
    const ImageObject object = ObjectOf({80, 0, 0, -65, 0, 65}, width, height);
    EXPECT_EQ(OpenFitted(*document, 10, object, *FitOf(object)), nullptr);
  }
  EXPECT_TRUE(testing::IsAsExpected("drawing/fitted.txt", text));
}

TEST(DrawingTables, OfResourcesThatChangeColors) {
  const auto changes = [](const std::string& resources) {
    const std::string bytes = RawPdf()
                                  .Object(1, "<</Type/Catalog/Pages<</Kids[]>>>>")
                                  .Object(5, "<<" + resources + ">>")
                                  .Object(6, "<</TR/Identity>>")
                                  .Object(7, "<</TR2/Default>>")
                                  .Table();
    const auto document = testing::OpenBytes(bytes);
    pdf::Arena arena;
    return ChangesColors(*document, document->Load({.number = 5, .generation = 0}, arena));
  };
  EXPECT_FALSE(changes(""));
  EXPECT_FALSE(
      changes("/ColorSpace<</DefaultCMYK/DeviceCMYK/A/DeviceRGB>>/ExtGState<</A<</LW 1>>>>"));
  EXPECT_TRUE(changes("/ColorSpace<</DefaultGray/DeviceGray>>"));
  EXPECT_TRUE(changes("/ColorSpace<</DefaultRGB/DeviceRGB>>"));
  EXPECT_TRUE(changes("/ExtGState<</A<</LW 1>>/B 6 0 R>>"));
  EXPECT_TRUE(changes("/ExtGState<</B 7 0 R>>"));
  std::string states;
  for (std::size_t i = 0; i < limits::kMaxStatesLookedAt; ++i) {
    states += "/S" + std::to_string(i) + "<</LW 1>>";
  }
  EXPECT_FALSE(changes("/ExtGState<<" + states + ">>"));
  EXPECT_TRUE(changes("/ExtGState<<" + states + "/More<</LW 1>>>>"));
}

std::uint64_t SizeOf(const std::string& value, RawPdf file = RawPdf()) {
  const std::string bytes =
      file.Object(1, "<</Type/Catalog/Pages<</Kids[]>>>>").Object(5, value).Table();
  const auto document = testing::OpenBytes(bytes);
  return Unfolding(*document, "Kids").SizeOf(pdf::Object::Ref({5, 0}));
}

TEST(DrawingTables, OfUnfoldedTrees) {
  EXPECT_EQ(SizeOf("4"), 1U);
  EXPECT_EQ(SizeOf("[]"), 1U);
  EXPECT_EQ(SizeOf("[1 2 [3]]"), 5U);
  EXPECT_EQ(SizeOf("<<>>"), 2U);
  EXPECT_EQ(SizeOf("<</Kids[<<>><<>>]/Other[1 2 3]>>"), 6U);
  EXPECT_EQ(SizeOf("<</Kids[6 0 R 6 0 R]>>", RawPdf().Object(6, "<</Kids[1 2]>>")), 10U);
  EXPECT_EQ(SizeOf("[6 0 R 5 0 R]", RawPdf().Object(6, "1")), Unfolding::kEndless);
  EXPECT_EQ(SizeOf("[6 0 R 6 0 R 6 0 R]", RawPdf().Object(6, "[6 0 R]")), Unfolding::kEndless);
}

// The page's objects, at three places on a bitmap.
TEST(DrawingTables, OfPageObjects) {
  {
    const PdfiumLock pdfium;
    if (!pdfium.is_available() || !pdfium->has_object_functions) {
      GTEST_SKIP() << "needs PDFium with functions for page objects";
    }
  }
  const std::string gray =
      "/Type/XObject/Subtype/Image/Width 4/Height 2/BitsPerComponent 8"
      "/ColorSpace/DeviceGray";
  const std::string content =
      "10 20 30 40 re f q 20 0 0 30 40 50 cm /I Do Q 5 w 10 100 m 60 140 l S\n"
      "q 10 10 50 60 re W n 20 0 0 -30 40 50 cm /I Do Q\n"
      "q 10 10 50 60 re W n 20 20 90 90 re W n 0 30 -20 0 60 50 cm /J Do Q\n"
      "q 10 10 m 60 10 l 60 70 l 10 70 l h W n 20 0 0 30 40 50 cm /I Do Q\n"
      "q 10 10 m 60 10 l 60 70 l 15 75 l h W n 20 0 0 30 40 50 cm /I Do Q\n"
      "q 10 10 m 60 10 l 60 70 l h W n 20 0 0 30 40 50 cm /I Do Q\n"
      "q 10 10 m 60 10 90 90 10 70 c h W n 20 0 0 30 40 50 cm /I Do Q\n"
      "q /A gs 20 0 0 30 40 50 cm /I Do Q q /OC /L BDC 20 0 0 30 40 50 cm /I Do EMC Q\n"
      "/P BMC q 20 0 0 30 40 50 cm /I Do Q EMC /OCX BMC q 20 0 0 30 40 50 cm /I Do Q EMC\n"
      "q 15 15 -15 15 100 100 cm /I Do Q q 8 0 0 9 1 2 cm BI/W 1/H 1/BPC 8/CS/G ID x EI Q\n"
      "3 Tr BT /F 9 Tf 20 150 Td (hidden) Tj ET";
  const std::string bytes =
      RawPdf()
          .Object(1, "<</Type/Catalog/Pages 2 0 R/OCProperties<</OCGs[8 0 R]/D<<>>>>>>")
          .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
          .Object(3,
                  "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 160]/Contents 4 0 R/Resources<<"
                  "/XObject<</I 5 0 R/J 6 0 R>>/ExtGState<</A<</ca 0.5>>>>/Properties<</L 8 0 R>>"
                  "/Font<</F<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>>>>>>>")
          .Stream(4, "", content)
          .Stream(5, gray, "12345678")
          .Stream(6, gray + "/SMask 5 0 R", "12345678")
          .Object(8, "<</Type/OCG/Name(a)>>")
          .Table();
  PdfiumLock pdfium;
  bool needs_password = false;
  const auto file =
      PdfiumFile::Open(pdfium, std::make_unique<pdf::MemorySource>(bytes), "", needs_password);
  pdfium::Page* page = file->LoadPage(0);
  std::ostringstream text;
  for (const Placement& placement :
       {Placement{0, 0, 200, 160}, {10, -20, 400, 320}, {0, 0, 100, 160}}) {
    const PageObjects found = ObjectsOf(pdfium, page, placement);
    text << "at " << placement.left << ' ' << placement.top << ' ' << placement.width << ' '
         << placement.height << '\n';
    for (const ImageObject& image : found.images) {
      text << image.objects_before << " before, " << image.width << " x " << image.height << ", by"
           << MatrixText(image.matrix) << ", on the page" << MatrixText(image.to_page) << ", clip "
           << BoxText(image.clip) << (image.is_opaque ? ", opaque" : "") << '\n';
    }
    for (const PixelBox& box : found.boxes) {
      text << BoxText(box) << '\n';
    }
  }
  file->ClosePage(page);
  EXPECT_TRUE(testing::IsAsExpected("drawing/objects.txt", text.str()));
}

std::string CopyText(RawPdf file, const std::string& trailer = "/Root 1 0 R") {
  const std::string bytes = file.Table(trailer);
  const auto document = testing::OpenBytes(bytes);
  const pdf::PageTree pages(*document);
  pdf::StringSink sink;
  WriteRepairedCopy(*document, pages, sink);
  return testing::DocumentText(sink.Take()) + "\n";
}

TEST(DrawingTables, OfRepairedCopies) {
  const std::string form = "/Type/XObject/Subtype/Form/BBox[0 0 9 9]";
  const std::string gray = "/Type/XObject/Subtype/Image/Width 4/Height 2/BitsPerComponent 8";
  RawPdf whole;
  whole
      .Object(1,
              "<</Type/Catalog/Pages 2 0 R/AcroForm 20 0 R/OCProperties<</OCGs[21 0 R]>>/Names<<>>"
              "/Outlines 22 0 R/Metadata 23 0 R/ViewerPreferences<<>>/Lang(en)>>")
      .Object(2,
              "<</Type/Pages/Kids[3 0 R 4 0 R 3 0 R]/Count 3/MediaBox[0 0 99 88]/Rotate 90"
              "/Resources<</Font<</F 24 0 R>>>>>>")
      .Object(3,
              "<</Type/Page/Parent 2 0 R/CropBox[1 2 50 60]/UserUnit 2/Contents[5 0 R]/Group<</S"
              "/Transparency>>/Annots[25 0 R]/Thumb 26 0 R/B[]/Trans<<>>/Tabs/S>>")
      .Object(
          4,
          "<</Type/Page/Parent 2 0 R/MediaBox[0 0 10 20]/Rotate 0/Resources<</XObject<</I 27 0 R"
          "/J 28 0 R/K 30 0 R>>/ColorSpace<</C[/ICCBased 29 0 R]>>>>/Contents 5 0 R>>")
      .Stream(5, "/Filter/FlateDecode", Deflated("/I Do"))
      .Object(20, "<</Fields[25 0 R]/DR<<>>>>")
      .Object(21, "<</Type/OCG/Name(a)>>")
      .Object(22, "<</Title(no)>>")
      .Stream(23, "/Type/Metadata", "<x/>")
      .Object(24, "<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>")
      .Object(25,
              "<</Type/Annot/Subtype/Widget/Rect[0 0 9 9]/P 3 0 R/Parent 2 0 R/AP<</N 31 0 R>>>>")
      .Stream(26, gray + "/ColorSpace/DeviceGray", "12345678")
      .Stream(27, gray + "/ColorSpace[/ICCBased 29 0 R]/Interpolate true", "12345678")
      .Stream(28, gray + "/ColorSpace[/ICCBased 29 0 R]/SMask 26 0 R", "12345678")
      .Stream(29, "/N 1/Alternate/DeviceGray/Range[0 1]/Own 1", testing::TestRgbProfile(2.2))
      .Stream(30, gray + "/ColorSpace/DeviceGray/Filter/DCTDecode", testing::TestJpeg(1))
      .Stream(31, form, "0 g");
  RawPdf endless;
  endless.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
      .Object(3,
              "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/Contents 4 0 R/Resources<</ProcSet[/PDF]"
              "/XObject<</F 5 0 R/G 6 0 R/H 7 0 R>>/Font<</F 8 0 R>>>>/Annots[9 0 R 10 0 R]>>")
      .Stream(4, "", "/F Do /G Do /H Do")
      .Stream(5, form + "/Resources<</XObject<</F 5 0 R>>>>", "/F Do /F Do")
      .Stream(6, form, "0 g")
      .Stream(7, form + "/Resources<</XObject<</F 5 0 R>>>>", "/F Do")
      .Object(8, "<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>")
      .Object(9, "<</Subtype/Square/Rect[0 0 9 9]/AP<</N 5 0 R>>>>")
      .Object(10, "<</Subtype/Square/Rect[0 0 9 9]/AP<</N 6 0 R>>>>");
  RawPdf shading;
  shading.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
      .Object(3,
              "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/Contents 4 0 R/Resources<</Shading<</S<<"
              "/ShadingType 2/ColorSpace/DeviceGray/Coords[0 0 9 9]/Function 5 0 R>>>>/ExtGState<<"
              "/A<</TR 5 0 R>>/B<</TR2 6 0 R/BG 6 0 R>>>>>>>>")
      .Stream(4, "", "/S sh")
      .Object(5, "<</FunctionType 3/Domain[0 1]/Functions[5 0 R]/Bounds[]/Encode[0 1]>>")
      .Object(6,
              "<</FunctionType 3/Domain[0 1]/Functions[6 0 R 6 0 R]/Bounds[0.5]/Encode[0 1 0 1]>>");
  RawPdf images;
  std::string alpha;
  for (std::size_t i = 0; i + 1 < std::string_view(testing::kGrayAlphaJpx).size(); i += 2) {
    alpha += static_cast<char>(
        std::stoi(std::string(std::string_view(testing::kGrayAlphaJpx).substr(i, 2)), nullptr, 16));
  }
  const std::string sides = "/Type/XObject/Subtype/Image/Width 16/Height 8/BitsPerComponent 8";
  const std::string symbols =
      "/Subtype/Image/Width 120/Height 12/BitsPerComponent 1/ImageMask true/Own 4/DecodeParms[null "
      "null]"
      "/Filter[/ASCIIHexDecode/JBIG2Decode]";
  images.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
      .Object(3,
              "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/Contents 4 0 R/Resources<</XObject<</A "
              "5 0 R/B 6 0 R"
              "/C 7 0 R/D 8 0 R/E 9 0 R>>/Pattern<</P 10 0 R>>/ColorSpace<</I[/Indexed[/ICCBased "
              "12 0 R]0<00>]"
              "/S[/Separation/X[/ICCBased 13 0 R]14 0 R]/N[/DeviceN[/X][/ICCBased 12 0 R]14 0 "
              "R]/G[/Pattern"
              "[/ICCBased 15 0 R]]>>>>>>")
      .Stream(4, "", "/A Do")
      .Stream(5,
              sides +
                  "/ColorSpace/DeviceGray/Interpolate true/OC 16 0 R/SMask 17 0 "
                  "R/Filter/JPXDecode",
              alpha)
      .Stream(6, sides + "/Mask 18 0 R/Filter/JPXDecode/ColorSpace/DeviceGray", alpha)
      .Stream(7, sides + "/Mask[0 1]/Filter/JPXDecode/ColorSpace/DeviceRGB", alpha)
      .Stream(8, symbols, std::string(testing::kRefinedJbig2) + ">")
      .Stream(9, sides + "/ColorSpace/DeviceGray/Filter/JPXDecode", "no picture")
      .Stream(10,
              "/PatternType 1/PaintType 1/TilingType 1/BBox[0 0 9 9]/XStep 9/YStep "
              "9/Resources<</XObject<</A "
              "11 0 R>>>>",
              "/A Do")
      .Stream(11, sides + "/ColorSpace[/ICCBased 12 0 R]", "x")
      .Stream(12, "/N 1/Alternate/DeviceGray", testing::TestRgbProfile(2.2))
      .Stream(13, "/N 4/Alternate/DeviceCMYK", testing::TestRgbProfile(2.2))
      .Object(14, "<</FunctionType 2/Domain[0 1]/N 1>>")
      .Stream(15, "/N 3/Alternate/DeviceRGB", testing::TestRgbProfile(2.2))
      .Object(16, "<</Type/OCG/Name(a)>>")
      .Stream(17, sides + "/ColorSpace/DeviceGray", "x")
      .Stream(18, sides + "/ImageMask true", "x");
  EXPECT_TRUE(testing::IsAsExpected(
      "drawing/copies.txt", CopyText(whole, "/Root 1 0 R/Info 22 0 R/Own 5") + CopyText(endless) +
                                CopyText(shading) + CopyText(images)));
}

}  // namespace
}  // namespace TarnixTools::engines
