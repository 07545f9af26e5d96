// Resources of pages that something is painted onto.
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/toolbox/content/Painted.h"
#include "support/RawPdf.h"
#include "support/TestImages.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines::toolbox {
namespace {

using TarnixTools::testing::QpdfComplaints;
using TarnixTools::testing::RawPdf;
using TarnixTools::testing::RunProgram;
using TarnixTools::testing::TestPdf;
using TarnixTools::testing::TestPng;
using ::testing::Each;
using ::testing::HasSubstr;

constexpr const char* kFont = "<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>";

std::string Picture(char gray) {
  TestPng png;
  png.width = 1;
  png.height = 1;
  png.color_type = 0;
  png.rows = std::string(1, '\0') + gray;
  return png.Bytes();
}

int CountOf(const std::string& path, const std::string& part) {
  const std::string text =
      RunProgram({"qpdf", "--qdf", "--object-streams=disable", path, "-"}).output;
  int count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
    ++count;
  }
  return count;
}

class PaintedResources : public ::testing::Test {
 protected:
  void SetUp() override {
    TARNIX_NEED_PROGRAM("pdftotext");
    TARNIX_NEED_PROGRAM("qpdf");
    TARNIX_NEED_FONT("Liberation Sans");
  }
};

TEST_F(PaintedResources, AreAddedWhereverThePagesOwnAre) {
  const std::vector<std::string> places = {
      "/Resources<</Font<</F 10 0 R>>/ProcSet[/PDF]>>",
      "/Resources 11 0 R",
      "/Resources<</Font 12 0 R>>",
      "/Resources<</Font<</F 10 0 R>>/Font<</F 10 0 R>>>>",
  };
  for (const std::string& place : places) {
    RawPdf pdf;
    pdf.Pages(2, "/MediaBox[0 0 300 200]/Contents 20 0 R" + place)
        .Object(10, kFont)
        .Object(11, "<</Font 12 0 R>>")
        .Object(12, "<</F 10 0 R>>")
        .Stream(20, "", "BT/F 12 Tf 20 20 Td(Own)Tj ET");
    Painted painted(pdf.Table());
    painted.Paint([](Canvas& page) { page.Text(U"Ours", {.alpha = 0.5}); });
    EXPECT_EQ(QpdfComplaints(painted.path()), "") << place;
    EXPECT_THAT(painted.Texts(), Each(HasSubstr("Own"))) << place;
    EXPECT_THAT(painted.Texts(), Each(HasSubstr("Ours"))) << place;
  }
}

TEST_F(PaintedResources, AreMadeWherePagesHaveNone) {
  for (const char* entry : {"", "/Resources null", "/Resources 99 0 R", "/Resources[1]",
                            "/Resources<</Font 5/XObject null/ExtGState[]>>"}) {
    RawPdf pdf;
    pdf.Pages(1, std::string("/MediaBox[0 0 300 200]") + entry);
    Painted painted(pdf.Table());
    painted.Paint([](Canvas& page) {
      page.Text(U"Ours", {.alpha = 0.5});
      page.Image(Picture('\0'), {1, 1, 5, 5});
    });
    EXPECT_THAT(painted.Texts(), Each("Ours")) << entry;
    EXPECT_EQ(QpdfComplaints(painted.path()), "") << entry;
  }
}

TEST_F(PaintedResources, AreAddedToInheritedOnes) {
  RawPdf pdf;
  pdf.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(2,
              "<</Type/Pages/Kids[3 0 R 4 0 R]/Count 2/MediaBox[0 0 300 200]"
              "/Resources<</Font<</F 10 0 R>>>>>>")
      .Object(3, "<</Type/Page/Parent 2 0 R/Contents 20 0 R>>")
      .Object(4, "<</Type/Page/Parent 2 0 R/Contents 20 0 R>>")
      .Object(10, kFont)
      .Stream(20, "", "BT/F 12 Tf 20 20 Td(Own)Tj ET");
  Painted painted(pdf.Table());
  painted.Paint([](Canvas& page) {
    if (page.index() == 1) {
      page.Text(U"Ours");
    }
  });
  EXPECT_EQ(painted.Texts()[0], "Own");
  EXPECT_THAT(painted.Texts()[1], HasSubstr("Own"));
  EXPECT_THAT(painted.Texts()[1], HasSubstr("Ours"));
}

TEST_F(PaintedResources, HaveNamesOfTheirOwn) {
  RawPdf pdf;
  pdf.Pages(1,
            "/MediaBox[0 0 300 200]/Contents 20 0 R"
            "/Resources<</Font<</TxF0 10 0 R/Tx0.F0 10 0 R/F 10 0 R>>>>")
      .Object(10, kFont)
      .Stream(20, "", "BT/TxF0 12 Tf 20 20 Td(Own)Tj ET");
  Painted painted(pdf.Table());
  painted.Paint([](Canvas& page) { page.Text(U"Ours"); });
  EXPECT_THAT(painted.Texts()[0], HasSubstr("Own"));
  EXPECT_THAT(painted.Texts()[0], HasSubstr("Ours"));
  const std::string fonts = RunProgram({"pdffonts", painted.path()}).output;
  EXPECT_THAT(fonts, HasSubstr("Helvetica"));
  EXPECT_THAT(fonts, HasSubstr("LiberationSans"));
}

TEST_F(PaintedResources, StandManyRoundsOfPainting) {
  std::string bytes = TestPdf().Page("Own").Bytes();
  for (int round = 0; round < 5; ++round) {
    Painted painted(bytes);
    painted.Paint([&](Canvas& page) {
      page.Text(U"Round" + std::u32string(1, U'0' + static_cast<char32_t>(round)),
                {.y = 100.0 + 30 * round, .alpha = 0.4});
    });
    bytes = painted.bytes();
    EXPECT_EQ(QpdfComplaints(painted.path()), "");
    for (int done = 0; done <= round; ++done) {
      EXPECT_THAT(painted.Texts()[0], HasSubstr("Round" + std::to_string(done)));
    }
  }
}

TEST_F(PaintedResources, HoldEachPictureOnce) {
  Painted painted(TestPdf().Pages(4).Bytes());
  painted.Paint([](Canvas& page) {
    for (double x : {10.0, 40.0}) {
      EXPECT_EQ(page.Image(Picture('\0'), {x, 10, x + 20, 30}), 1);
    }
    page.Image(Picture('\x55'), {80, 10, 100, 30});
  });
  EXPECT_EQ(CountOf(painted.path(), "/Subtype /Image"), 2);
  EXPECT_EQ(QpdfComplaints(painted.path()), "");
}

// Large files are told apart by all of their bytes: here by some behind the picture itself.
TEST_F(PaintedResources, HoldEachLargePictureOnce) {
  constexpr std::size_t kLarge = std::size_t{1} << 20;
  const std::string picture = Picture('\0');
  std::vector<std::string> files;
  for (const std::size_t size : {kLarge, kLarge + 1, kLarge + 600'000}) {
    const std::string file = picture + std::string(size - picture.size(), 'x');
    files.push_back(file);
    for (const std::size_t at : {picture.size(), std::size_t{300'000}, file.size() - 1}) {
      files.push_back(file);
      files.back()[at] = 'y';
    }
  }
  Painted painted(TestPdf().Pages(2).Bytes());
  painted.Paint([&](Canvas& page) {
    for (const std::string& file : files) {
      EXPECT_EQ(page.Image(file, {10, 10, 30, 30}), 1);
    }
  });
  EXPECT_EQ(CountOf(painted.path(), "/Subtype /Image"), static_cast<int>(files.size()));
}

TEST_F(PaintedResources, DoNotHoldPicturesThatAreNotPainted) {
  Painted painted(TestPdf().Page("x").Bytes());
  painted.Paint([](Canvas& page) {
    MemoryFile file{Picture('\0')};
    const TPdfStream stream = file.Descriptor();
    TPdfImage* image = PdfDocumentCreateImage(page.target(), &stream);
    EXPECT_EQ(PdfImageGetWidth(image), 1);
    EXPECT_EQ(PdfClose(image), 1);
  });
  EXPECT_EQ(CountOf(painted.path(), "/Subtype /Image"), 0);
}

TEST_F(PaintedResources, RefuseWhatIsNoPicture) {
  Painted painted(TestPdf().Page("x").Bytes());
  painted.Paint([](Canvas& page) {
    for (const char* bytes : {"", "no picture", "\x89PNG\r\n\x1a\n", "\xff\xd8\xff"}) {
      MemoryFile file{bytes};
      const TPdfStream stream = file.Descriptor();
      EXPECT_EQ(PdfDocumentCreateImage(page.target(), &stream), nullptr);
      EXPECT_EQ(PdfGetLastError(), kToolboxImageError) << bytes;
      EXPECT_EQ(file.releases, 0);
    }
    MemoryFile file{Picture('\0')};
    file.reads_fail = true;
    const TPdfStream stream = file.Descriptor();
    EXPECT_EQ(PdfDocumentCreateImage(page.target(), &stream), nullptr);
    EXPECT_EQ(PdfGetLastError(), kToolboxReadError);
  });
}

TEST_F(PaintedResources, FailTheDocumentWhenTheyCannotBeWritten) {
  TestPng png;
  png.width = 400;
  png.height = 400;
  png.color_type = 0;
  std::uint32_t noise = 1;
  for (int i = 0; i < 400 * 401; ++i) {
    noise = noise * 1664525 + 1013904223;
    png.rows += i % 401 == 0 ? '\0' : static_cast<char>(noise >> 24);
  }
  MemoryFile input{TestPdf().Page("x").Bytes()};
  MemoryFile output;
  output.room = 100;
  const TPdfStream input_stream = input.Descriptor();
  const TPdfStream output_stream = output.Descriptor();
  TPdfDocument* source = PdfDocumentOpenA(&input_stream, "");
  TPdfDocument* target = PdfDocumentCreateW(&output_stream, 0, nullptr);
  TPdfPageList* pages = PdfDocumentGetPages(source);
  TPdfPage* page = PdfPageListGet(pages, 0);
  TPdfPage* copy = PdfDocumentCopyPage(target, page, 15);
  Canvas canvas(target, copy, 0);
  int painted = 1;
  for (int i = 0; i < 8 && painted == 1; ++i) {
    png.rows[1] = static_cast<char>(i);
    painted = canvas.Image(png.Bytes(), {0, 0, 9, 9});
  }
  EXPECT_EQ(painted, 0);
  EXPECT_EQ(PdfGetLastError(), kToolboxWriteError);
  output.room = 1'000'000'000;
  PdfClose(copy);
  PdfClose(page);
  PdfClose(pages);
  EXPECT_EQ(PdfClose(source), 1);
  EXPECT_EQ(PdfClose(target), 0);
  EXPECT_EQ(PdfGetLastError(), kToolboxWriteError);
}

// Of a document of which some pages are copied, what none of them uses stays behind.
TEST_F(PaintedResources, DoNotBringWhatOtherPagesUse) {
  RawPdf pdf;
  pdf.Pages(2, "/MediaBox[0 0 300 200]/Contents 20 0 R/Resources 11 0 R")
      .Object(10, kFont)
      .Object(11, "<</Font<</F 10 0 R/G 13 0 R>>>>")
      .Object(13, "<</Type/Font/Subtype/Type1/BaseFont/Courier>>")
      .Stream(20, "", "BT/F 12 Tf 20 20 Td(Own)Tj ET");
  Painted painted(pdf.Table());
  painted.Paint([](Canvas& page) { page.Text(U"Ours"); }, nullptr, {1});
  EXPECT_THAT(painted.Texts()[0], HasSubstr("Own"));
  EXPECT_THAT(painted.Texts()[0], HasSubstr("Ours"));
  EXPECT_EQ(CountOf(painted.path(), "/Courier"), 0);
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
