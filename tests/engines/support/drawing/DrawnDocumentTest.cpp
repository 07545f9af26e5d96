#include <gtest/gtest.h>

#include "engines/support/drawing/DrawingError.h"
#include "engines/support/drawing/DrawnDocument.h"
#include "engines/support/drawing/DrawnPages.h"
#include "pdf/Error.h"
#include "pdf/crypt/Security.h"
#include "support/RawPdf.h"
#include "support/Surroundings.h"
#include "support/TempDir.h"
#include "support/TestImages.h"
#include "support/TestJbig2.h"
#include "support/TestJpx.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines {
namespace {

using platform::WidePath;
using testing::RawPdf;
using testing::TestPdf;

class DrawnDocumentTest : public DrawingTest {
 protected:
  std::string Path(const std::string& name = "in.pdf") const { return directory_.Path(name); }

  std::string Write(const TestPdf& file) const { return file.Write(Path()); }

  std::string Write(const std::string& bytes) const { return testing::WriteBytes(Path(), bytes); }

  static DrawingErrorCode CodeOf(const std::string& path, const std::string& password = "") {
    try {
      DrawnDocument(WidePath(path), password);
    } catch (const DrawingError& error) {
      EXPECT_STREQ(error.what(), "a page cannot be drawn");
      return error.code();
    }
    ADD_FAILURE() << "it opened";
    return DrawingErrorCode::kMemory;
  }

  const testing::TempDir directory_;
};

// A page of 72 by 36 points whose left half is red.
TestPdf HalfRed() {
  TestPdf file;
  file.Page().Size(72, 36).Content("1 0 0 rg 0 0 36 36 re f");
  return file;
}

std::string FromHex(const std::string& hex) {
  std::string bytes;
  for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
    bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
  }
  return bytes;
}

std::string StreamObject(const std::string& entries, const std::string& data) {
  return "<<" + entries + "/Length " + std::to_string(data.size()) + ">>\nstream\n" + data +
         "\nendstream";
}

// A page of 72 by 72 points that the image fills.
TestPdf FilledBy(const std::string& image) {
  TestPdf file;
  file.Page()
      .Size(72, 72)
      .Content("72 0 0 72 0 0 cm /I Do")
      .PageEntry("/Resources<</XObject<</I {{image}}>>>>")
      .Object("image", image);
  return file;
}

TEST_F(DrawnDocumentTest, DrawsPages) {
  const PageBitmap page = DrawnAt72(Write(HalfRed()));
  EXPECT_EQ(page.width, 72);
  EXPECT_EQ(page.height, 36);
  EXPECT_EQ(ColorAt(page, 10, 10), kRed);
  EXPECT_EQ(ColorAt(page, 50, 10), kWhite);
  EXPECT_FALSE(page.is_partial);
}

TEST_F(DrawnDocumentTest, DrawsPagesAsTheyAreSeen) {
  TestPdf file = HalfRed();
  file.Rotate(90).PageEntry("/UserUnit 2/CropBox[18 0 72 36]");
  const PageBitmap page = DrawnAt72(Write(file));
  EXPECT_EQ(page.width, 72);
  EXPECT_EQ(page.height, 108);
  EXPECT_EQ(ColorAt(page, 36, 20), kRed);
  EXPECT_EQ(ColorAt(page, 36, 60), kWhite);
}

TEST_F(DrawnDocumentTest, OverlooksUnitsThatCannotBe) {
  for (const char* unit : {"0", "-2", "/Large", "99999999", "0.00001"}) {
    TestPdf file = HalfRed();
    file.PageEntry(std::string("/UserUnit ") + unit);
    EXPECT_EQ(DrawnAt72(Write(file)).width, 72) << unit;
  }
}

// PDFium counts pages by what the tree says, the core by what it has.
TEST_F(DrawnDocumentTest, RefusesPagesThatOnlyACountTellsOf) {
  const std::string bytes = RawPdf()
                                .Object(1, "<</Type/Catalog/Pages 2 0 R>>")
                                .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 9>>")
                                .Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 72 36]>>")
                                .Table();
  DrawnDocument document(WidePath(Write(bytes)), "");
  EXPECT_EQ(DrawPage(document, 0, 72).width, 72);
  for (int index = 1; index < document.page_count(); ++index) {
    try {
      EXPECT_GT(DrawPage(document, index, 72).width, 0);
    } catch (const DrawingError& error) {
      EXPECT_EQ(error.code(), DrawingErrorCode::kPage) << index;
    }
  }
  EXPECT_THROW(document.LoadPage(document.page_count()), DrawingError);
}

TEST_F(DrawnDocumentTest, DrawsWhatPopplerDraws) {
  TARNIX_NEED_PROGRAM("pdftoppm");
  for (const char* name : {"letter.pdf", "plan.pdf", "report.pdf"}) {
    const std::string path = testing::ExamplesDir() + "/" + name;
    DrawnDocument document(WidePath(path), "");
    for (int i = 0; i < document.page_count(); ++i) {
      const PageBitmap ours = DrawPage(document, i, 100);
      EXPECT_LT(DifferenceOf(ours, DrawnByPoppler(path, i + 1, 100)), 4) << name << " page " << i;
    }
  }
}

TEST_F(DrawnDocumentTest, DrawsAnnotationsAndFields) {
  const std::string form =
      StreamObject("/Type/XObject/Subtype/Form/BBox[0 0 18 18]", "0 0 1 rg 0 0 18 18 re f");
  TestPdf file = HalfRed();
  file.Object("form", form)
      .Object("field",
              "<</Type/Annot/Subtype/Widget/FT/Tx/T(a)/F 4/Rect[54 0 72 18]/AP<</N {{form}}>>>>")
      .CatalogEntry("/AcroForm<</Fields[{{field}}]>>")
      .PageEntry(
          "/Annots[{{field}}<</Type/Annot/Subtype/Stamp/F 4/Rect[0 18 18 36]/AP<</N {{form}}>>>>]");
  const PageBitmap page = DrawnAt72(Write(file));
  EXPECT_EQ(ColorAt(page, 60, 30), kBlue);
  EXPECT_EQ(ColorAt(page, 8, 8), kBlue);
}

TEST_F(DrawnDocumentTest, OpensEncryptedDocuments) {
  TARNIX_NEED_PROGRAM("qpdf");
  testing::EncryptWithQpdf(Write(HalfRed()), Path("locked.pdf"), "user", "owner");
  EXPECT_EQ(ColorAt(DrawnAt72(Path("locked.pdf"), 0, "user"), 10, 10), kRed);
  EXPECT_THROW(DrawnDocument(WidePath(Path("locked.pdf")), "wrong"), pdf::Error);
}

TEST_F(DrawnDocumentTest, TellsWhatItCannotOpen) {
  EXPECT_EQ(CodeOf(Path("missing.pdf")), DrawingErrorCode::kFile);
  EXPECT_EQ(CodeOf(Write(std::string("no document"))), DrawingErrorCode::kNotAPdf);
}

TEST_F(DrawnDocumentTest, TellsWhichPagesThereAreNot) {
  DrawnDocument document(WidePath(Write(HalfRed())), "");
  EXPECT_EQ(document.page_count(), 1);
  for (const int index : {-1, 1}) {
    try {
      document.LoadPage(index);
      ADD_FAILURE();
    } catch (const DrawingError& error) {
      EXPECT_EQ(error.code(), DrawingErrorCode::kPage);
    }
  }
  EXPECT_EQ(ColorAt(DrawPage(document, 0, 72), 10, 10), kRed);
}

TEST_F(DrawnDocumentTest, DrawsPagesInAnyOrder) {
  TestPdf file;
  for (int i = 0; i < 12; ++i) {
    file.Page().Size(20, 10 + i).Content("0 0 1 rg 0 0 20 " + std::to_string(i) + " re f");
  }
  DrawnDocument document(WidePath(Write(file)), "");
  for (const int index : {11, 0, 5, 5, 6}) {
    const PageBitmap page = DrawPage(document, index, 72);
    EXPECT_EQ(page.height, 10 + index);
    EXPECT_EQ(ColorAt(page, 10, 9), kWhite);
    EXPECT_EQ(ColorAt(page, 10, page.height - 1), index == 0 ? kWhite : kBlue);
  }
}

// PDFium believes /Count; the core counts.
TEST_F(DrawnDocumentTest, DrawsPagesThatPdfiumDoesNotFind) {
  RawPdf file;
  file.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(2, "<</Type/Pages/Kids[3 0 R 5 0 R]/Count 1/MediaBox[0 0 72 72]>>")
      .Object(3, "<</Type/Pages/Parent 2 0 R/Kids[4 0 R]/Count 0>>")
      .Object(4, "<</Type/Page/Parent 3 0 R/Contents 6 0 R>>")
      .Object(5, "<</Type/Page/Parent 2 0 R/Contents 6 0 R>>")
      .Stream(6, "", "1 0 0 rg 0 0 36 72 re f");
  const std::string path = Write(file.Table());
  DrawnDocument document(WidePath(path), "");
  ASSERT_EQ(document.page_count(), 2);
  for (const int index : {0, 1}) {
    EXPECT_EQ(ColorAt(DrawPage(document, index, 72), 10, 10), kRed);
  }
}

TEST_F(DrawnDocumentTest, DrawsWhatIsLeftOfDamagedDocuments) {
  std::string bytes = HalfRed().Bytes();
  bytes.resize(bytes.find("xref\n"));  // neither table nor trailer
  EXPECT_EQ(ColorAt(DrawnAt72(Write(bytes)), 10, 10), kRed);
}

TEST_F(DrawnDocumentTest, ShowsTheMediaBoxWhereTheCropBoxLiesBesideIt) {
  TestPdf file = HalfRed();
  file.PageEntry("/CropBox[300 300 400 400]");
  const PageBitmap page = DrawnAt72(Write(file));
  EXPECT_EQ(page.width, 72);
  EXPECT_EQ(ColorAt(page, 10, 10), kRed);
}

// The profile is of RGB, the image of gray.
TEST_F(DrawnDocumentTest, DrawsImagesWhoseProfileIsOfOtherColors) {
  TestPdf file = FilledBy(StreamObject(
      "/Subtype/Image/Width 1/Height 1/BitsPerComponent 8/ColorSpace[/ICCBased {{profile}}]",
      "\x80"));
  file.Object("profile", StreamObject("/N 1", testing::TestRgbProfile(2.2, true)));
  EXPECT_TRUE(IsNear(DrawnAt72(Write(file)), 36, 36, {128, 128, 128}));
}

TEST_F(DrawnDocumentTest, DrawsJpeg2000ImagesWithAlpha) {
  const PageBitmap page = DrawnAt72(Write(FilledBy(StreamObject(
      "/Subtype/Image/Width 16/Height 8/BitsPerComponent 8/ColorSpace/DeviceGray/Filter/JPXDecode",
      FromHex(testing::kGrayAlphaJpx)))));
  EXPECT_TRUE(IsNear(page, 18, 36, kBlack));
  EXPECT_TRUE(IsNear(page, 54, 36, {80, 80, 80}));
}

TEST_F(DrawnDocumentTest, DrawsJbig2ImagesWithRefinedSymbols) {
  const PageBitmap page =
      DrawnAt72(Write(FilledBy(StreamObject("/Subtype/Image/Width 120/Height 12/BitsPerComponent 1"
                                            "/ColorSpace/DeviceGray/Filter/JBIG2Decode",
                                            FromHex(testing::kRefinedJbig2)))));
  EXPECT_LT(ColorAt(page, 7, 27)[0], 200);
}

// The copy that is made for such an image has to ask PDFium for it.
TEST_F(DrawnDocumentTest, DrawsImagesThatNeedPdfiumForTheirCopy) {
  TARNIX_NEED_CORPUS("cases/slow_page.pdf");
  const PageBitmap page = DrawnAt72(testing::CorpusDir() + "/cases/slow_page.pdf");
  EXPECT_EQ(page.width, 132);
  EXPECT_FALSE(page.is_partial);
}

TEST_F(DrawnDocumentTest, LeavesOutWhatHasNoEnd) {
  TestPdf file;
  file.Page()
      .Size(72, 36)
      .Content("1 0 0 rg 0 0 36 36 re f /F Do")
      .PageEntry("/Resources<</XObject<</F {{form}}>>>>")
      .Object("form",
              StreamObject("/Type/XObject/Subtype/Form/BBox[0 0 9 9]/Resources<</XObject<</F "
                           "{{form}}>>>>",
                           "/F Do /F Do"));
  file.Page().Size(9, 9);
  DrawnDocument document(WidePath(Write(file)), "");
  const PageBitmap page = DrawPage(document, 0, 72);
  EXPECT_TRUE(page.is_partial);
  EXPECT_EQ(ColorAt(page, 10, 10), kRed);
  EXPECT_FALSE(DrawPage(document, 1, 72).is_partial);
}

// Hundred thousand large circles, each of another gray, over a red page.
std::string ManyCircles() {
  std::string content = "1 0 0 rg 0 0 600 600 re f\n";
  for (int i = 0; i < 100'000; ++i) {
    content += std::to_string(0.1 + (i % 90) / 100.0) +
               " g 100 300 m 100 575 500 575 500 300 c 500 25 100 25 100 300 c f\n";
  }
  return content;
}

// In seconds.
double ProcessorTime() {
  return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

TEST_F(DrawnDocumentTest, StopsWhenTheTimeIsOver) {
  TestPdf file;
  file.Page().Size(600, 600).Content(ManyCircles());
  file.Page().Size(72, 36).Content("0 0 1 rg 0 0 36 36 re f");
  DrawnDocument document(WidePath(Write(file)), "");
  document.time().set_most(std::chrono::milliseconds(100));
  document.LoadPage(0);
  document.Place({.left = 0, .top = 0, .width = 600, .height = 600});
  std::vector<std::uint8_t> pixels(std::size_t{600} * 600 * 4, 0xFF);
  const double before = ProcessorTime();
  document.Draw(pixels.data(), 600, 0, 600);
  EXPECT_LT(ProcessorTime() - before, 1);  // all of it takes many
  EXPECT_TRUE(document.is_page_partial());
  const std::uint8_t* corner = pixels.data();
  EXPECT_EQ(corner[2], 255);
  EXPECT_EQ(corner[1], 0) << "what was drawn by then is kept";
  document.ReleasePage();
  const PageBitmap next = DrawPage(document, 1, 72);
  EXPECT_FALSE(next.is_partial);
  EXPECT_EQ(ColorAt(next, 10, 10), kBlue);
}

TEST_F(DrawnDocumentTest, LeavesBandsWhiteWhenTheTimeIsOver) {
  DrawnDocument document(WidePath(Write(HalfRed())), "");
  document.time().set_most(std::chrono::nanoseconds(0));
  const PageBitmap page = DrawPage(document, 0, 72);
  EXPECT_TRUE(page.is_partial);
  EXPECT_EQ(ColorAt(page, 10, 10), kWhite);
}

// Each list of kids has the next one in two nodes.
TEST_F(DrawnDocumentTest, DrawsPagesOfATreeThatUnfolds) {
  RawPdf file;
  file.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(2, "<</Type/Pages/Kids 4 0 R/Count 1>>")
      .Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 72 72]>>");
  for (int number = 4; number < 44; ++number) {
    const std::string node = "<</Type/Pages/Count 1/Kids " + std::to_string(number + 1) + " 0 R>>";
    file.Object(number, "[" + node + node + "]");
  }
  file.Object(44, "[3 0 R]");
  DrawnDocument document(WidePath(Write(file.Table())), "");
  EXPECT_EQ(DrawPage(document, 0, 72).width, 72);
}

// Each function is made of the next one, twice.
TEST_F(DrawnDocumentTest, LeavesFunctionsOutThatUnfold) {
  RawPdf file;
  file.Pages(1, "/MediaBox[0 0 72 72]/Contents 4 0 R/Resources<</Shading<</S 5 0 R>>>>")
      .Stream(4, "", "/S sh 1 0 0 rg 0 0 36 36 re f")
      .Object(5, "<</ShadingType 2/ColorSpace/DeviceGray/Coords[0 0 72 0]/Function 6 0 R>>");
  for (int number = 6; number < 46; ++number) {
    const std::string next = std::to_string(number + 1) + " 0 R ";
    file.Object(number, "<</FunctionType 3/Domain[0 1]/Bounds[0.5]/Encode[0 1 0 1]/Functions[" +
                            next + next + "]>>");
  }
  file.Object(46, "<</FunctionType 2/Domain[0 1]/C0[0]/C1[1]/N 1>>");
  DrawnDocument document(WidePath(Write(file.Table())), "");
  EXPECT_EQ(ColorAt(DrawPage(document, 0, 72), 10, 60), kRed);
}

TEST_F(DrawnDocumentTest, StopsWhenItIsCancelled) {
  DrawnDocument document(WidePath(Write(HalfRed())), "");
  std::atomic<bool> is_cancelled = true;
  document.time().set_cancel_flag(&is_cancelled);
  EXPECT_TRUE(DrawPage(document, 0, 72).is_partial);
  is_cancelled = false;
  const PageBitmap page = DrawPage(document, 0, 72);
  EXPECT_FALSE(page.is_partial);
  EXPECT_EQ(ColorAt(page, 10, 10), kRed);
}

}  // namespace
}  // namespace TarnixTools::engines
