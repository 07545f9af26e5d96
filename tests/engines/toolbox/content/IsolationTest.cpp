// What is painted over a page stays apart from what the page's content leaves behind.
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
using ::testing::HasSubstr;
using ::testing::Not;

std::string BlackPng() {
  TestPng png;
  png.width = 1;
  png.height = 1;
  png.color_type = 0;
  png.rows = std::string(2, '\0');
  return png.Bytes();
}

constexpr TPdfRectangle kSquare = {40, 50, 60, 70};

// The square is where it should be, whatever stands in the page's contents.
void ExpectSquare(const std::string& path, const std::string& what, int page = 1) {
  const Ink ink = DarkInk(path, page);
  EXPECT_TRUE(ink.is_there) << what;
  EXPECT_NEAR(ink.left, kSquare.left, 0.5) << what;
  EXPECT_NEAR(ink.bottom, kSquare.bottom, 0.5) << what;
  EXPECT_NEAR(ink.right, kSquare.right, 0.5) << what;
  EXPECT_NEAR(ink.top, kSquare.top, 0.5) << what;
}

const std::vector<std::string> kContents = {
    "",
    "   ",
    "q 1 0 0 1 100 100 cm",
    "q q 3 0 0 3 0 0 cm Q",
    "1 0 0 1 100 100 cm",
    "0 0 5 5 re W n",
    "0 0 5 5 re W",
    "0 0 m 99 99 l",
    "Q Q 2 0 0 2 0 0 cm",
    "q Q Q 2 0 0 2 0 0 cm q",
    "BT /F1 12 Tf 50 0 0 50 9 9 Tm",
    "/OC /L0 BDC",
    "/Artifact BMC q 0 0 1 1 re W n",
    "1 0 0 1 50",
    "(abc (def",
    "(abc\\",
    "<48656C",
    "[(a) 5 <41>",
    "/P <</MCID 0",
    "% a comment",
    "q 0 0 1 1 re W n % Q",
    "0 0 0 0 500 500 cm BI /W 1 /H 1 /BPC 8 /CS /G ID",
    "BI /W 100 /H 100 /BPC 8 /CS /G ID abc",
    "BI /W 1 /H 1",
    "]]>> ) } Q Q",
    "1 0 0 1 30 30 c",
    "2 0 0 2 0 0 cm 0 g 0 G 1 Tr 5 Ts",
};

TEST(Isolation, KeepsWhatIsPaintedOverInItsPlace) {
  TARNIX_NEED_PROGRAM("pdftoppm");
  for (const std::string& content : kContents) {
    Painted painted(TestPdf().Page("").Size(200, 150).Content(content).Bytes());
    painted.Paint([](Canvas& page) { EXPECT_EQ(page.Image(BlackPng(), kSquare), 1); });
    ExpectSquare(painted.path(), content);
  }
}

TEST(Isolation, KeepsWhatIsPaintedUnderInItsPlace) {
  TARNIX_NEED_PROGRAM("pdftoppm");
  for (const std::string& content : kContents) {
    Painted painted(TestPdf().Page("").Size(200, 150).Content(content).Bytes());
    painted.Paint([](Canvas& page) { EXPECT_EQ(page.Image(BlackPng(), kSquare, true), 1); });
    ExpectSquare(painted.path(), content);
  }
}

// Streams of one page may be cut between any two tokens, and are by some within one.
TEST(Isolation, ReadsSeveralStreamsAsOne) {
  TARNIX_NEED_PROGRAM("pdftoppm");
  const std::vector<std::vector<std::string>> contents = {
      {"q 2 0 0 2", "0 0 cm"},    {"q", "Q Q 2 0 0 2 0 0 cm"},
      {"Q", "q 0 0 1 1 re W n"},  {"(abc", "def q", ") Tj q 0 0 1 1 re W n"},
      {"BT", "ET BT", "/F 5 Tf"}, {"/A BMC", "EMC EMC /B BMC"},
  };
  for (const auto& streams : contents) {
    RawPdf pdf;
    std::string references;
    for (std::size_t i = 0; i < streams.size(); ++i) {
      references += std::to_string(10 + i) + " 0 R ";
    }
    pdf.Pages(1, "/MediaBox[0 0 200 150]/Contents[" + references + "]");
    for (std::size_t i = 0; i < streams.size(); ++i) {
      pdf.Stream(static_cast<int>(10 + i), "", streams[i]);
    }
    Painted painted(pdf.Table());
    painted.Paint([](Canvas& page) { page.Image(BlackPng(), kSquare); });
    ExpectSquare(painted.path(), streams.back());
  }
}

TEST(Isolation, LeavesThePageAsItWas) {
  TARNIX_NEED_PROGRAM("pdftoppm");
  // A Q too many is ignored: the colour and the place that were set stay.
  for (const char* content : {"0 g 40 0 0 40 0 0 cm Q 1 1.25 .5 .5 re f",
                              "q Q 0 g 1 0 0 1 40 0 cm Q Q 0 50 20 20 re f Q"}) {
    Painted painted(TestPdf().Page("").Size(200, 150).Content(content).Bytes());
    painted.Paint([](Canvas& page) { page.Image(BlackPng(), {40, 50, 41, 51}); });
    ExpectSquare(painted.path(), content);
  }
}

TEST(Isolation, CopesWithPagesWithoutContents) {
  TARNIX_NEED_PROGRAM("pdftoppm");
  for (const char* entry : {"", "/Contents null", "/Contents[]", "/Contents 99 0 R",
                            "/Contents[99 0 R null]", "/Contents(x)", "/Contents 20 0 R"}) {
    RawPdf pdf;
    pdf.Pages(1, std::string("/MediaBox[0 0 200 150]") + entry).Object(20, "[]");
    Painted painted(pdf.Table());
    painted.Paint([](Canvas& page) { page.Image(BlackPng(), kSquare); });
    ExpectSquare(painted.path(), entry);
    EXPECT_EQ(QpdfComplaints(painted.path()), "") << entry;
  }
}

TEST(Isolation, DoesNotPaintOntoPagesThatShareContents) {
  TARNIX_NEED_PROGRAM("pdftoppm");
  RawPdf pdf;
  pdf.Pages(3, "/MediaBox[0 0 200 150]/Contents 10 0 R/Resources 11 0 R")
      .Stream(10, "", "Q q 0.9 g 0 0 200 10 re f")
      .Object(11, "<</Font<<>>>>");
  Painted painted(pdf.Table());
  painted.Paint([](Canvas& page) {
    if (page.index() == 1) {
      page.Image(BlackPng(), kSquare);
    }
  });
  EXPECT_FALSE(DarkInk(painted.path(), 1).is_there);
  ExpectSquare(painted.path(), "second page", 2);
  EXPECT_FALSE(DarkInk(painted.path(), 3).is_there);
  EXPECT_EQ(QpdfComplaints(painted.path()), "");
}

TEST(Isolation, PaintsOntoEachCopyOfAPageForItself) {
  TARNIX_NEED_PROGRAM("pdftoppm");
  Painted painted(TestPdf().Page("").Size(200, 150).Bytes());
  int count = 0;
  painted.Paint(
      [&](Canvas& page) {
        if (++count == 2) {
          page.Image(BlackPng(), kSquare);
        }
      },
      nullptr, {0, 0});
  EXPECT_FALSE(DarkInk(painted.path(), 1).is_there);
  ExpectSquare(painted.path(), "second copy", 2);
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
