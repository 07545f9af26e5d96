// PdfDoc::Transform on pages whose content is damaged, or stops readers: what is painted is seen all
// the same, by poppler and by MuPDF, and so is what could be seen of the page before.
#include "PdfTransformation.h"
#include "support/DocumentTest.h"
#include "support/PageViews.h"
#include "support/RawPdf.h"
#include "support/TestImage.h"

namespace TarnixTools {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::Picture;
using testing::RawPdf;

constexpr int kDpi = 72;
constexpr testing::Pixel kMagenta = {255, 0, 255};
constexpr testing::Pixel kBlue = {0, 0, 255};

const PdfReportEntry kDamaged = {PdfReportKind::Damage, PdfReportOutcome::Dropped, 1, 1,
                                 "page content damaged, what could be read of it is shown"};

class DecoratedDamageTest : public testing::DocumentTest {
 protected:
  DecoratedDamageTest() {
    testing::WriteBytes(Path("magenta.png"), testing::PngOf(20, 20, {255, 0, 255}));
    image_.SetInputImage(Path("magenta.png"));
    image_.SetPixelsPerPoint(1);
  }

  void SetUp() override {
    TARNIX_NEED_PROGRAM("pdftoppm");
    TARNIX_NEED_PROGRAM("mutool");
    TARNIX_NEED_PROGRAM("qpdf");
  }

  // A page of 100 by 100 points with these content streams, each with entries and data.
  void MakePage(const std::vector<std::pair<std::string, std::string>>& streams) const {
    std::string references;
    for (std::size_t i = 0; i < streams.size(); ++i) {
      references += std::to_string(10 + i) + " 0 R ";
    }
    RawPdf pdf;
    pdf.Pages(1, "/MediaBox[0 0 100 100]/Resources<<>>/Contents[" + references + "]");
    for (std::size_t i = 0; i < streams.size(); ++i) {
      pdf.Stream(static_cast<int>(10 + i), streams[i].first, streams[i].second);
    }
    testing::WriteBytes(Path("doc.pdf"), pdf.Table());
  }

  // The stamp, in the middle of the page, is seen over the content.
  PdfReport ExpectStampSeen(const std::string& what) {
    PdfDoc document = Doc("doc.pdf");
    document.Transform(image_, Path("out.pdf"), "");
    for (const auto& pictures : {testing::Pictures(Path("out.pdf"), kDpi),
                                 testing::PicturesByMupdf(Path("out.pdf"), kDpi)}) {
      EXPECT_EQ(pictures.at(0).At(50, 50), kMagenta) << what;
      EXPECT_NE(pictures.at(0).At(35, 50), kMagenta) << what;
    }
    EXPECT_EQ(testing::QpdfComplaints(Path("out.pdf")), "") << what;
    return document.GetReport();
  }

  // Both readers see the corner in the colour, which the content fills before it goes wrong.
  void ExpectCorner(const testing::Pixel& color, const std::string& what) const {
    for (const auto& pictures : {testing::Pictures(Path("out.pdf"), kDpi),
                                 testing::PicturesByMupdf(Path("out.pdf"), kDpi)}) {
      EXPECT_EQ(pictures.at(0).At(5, 95), color) << what;
    }
  }

  PdfTransformation image_{PdfTransformType::StampImage};
};

// Blue in the corner, and then so much that damage can come late.
std::string LongContent() {
  std::string content = "0 0 1 rg 0 0 10 10 re f\n";
  for (int i = 0; i < 500; ++i) {
    content += std::to_string(i * 7919 % 100) + " 95 2 3 re f\n";
  }
  return content;
}

std::string Corrupted(std::string data) {
  for (std::size_t i = data.size() * 3 / 4; i < data.size() * 3 / 4 + 6; ++i) {
    data[i] = static_cast<char>(~data[i]);
  }
  return data;
}

TEST_F(DecoratedDamageTest, IsSeenOverADamagedStream) {
  const std::string sound = testing::Deflated(LongContent());
  MakePage({{"/Filter/FlateDecode", Corrupted(sound)}});
  EXPECT_THAT(ExpectStampSeen("corrupted").GetEntries(), Contains(kDamaged));
  ExpectCorner(kBlue, "corrupted");
  MakePage({{"/Filter/FlateDecode", sound.substr(0, sound.size() / 2)}});
  EXPECT_THAT(ExpectStampSeen("cut").GetEntries(), Contains(kDamaged));
  ExpectCorner(kBlue, "cut");
  MakePage({{"/Filter/ASCIIHexDecode", "302030203120726720302030203130203130207265206620zz41>"}});
  EXPECT_THAT(ExpectStampSeen("hexadecimal").GetEntries(), Contains(kDamaged));
  ExpectCorner(kBlue, "hexadecimal");
}

TEST_F(DecoratedDamageTest, IsSeenOverAStreamOfWhichNothingCanBeRead) {
  MakePage({{"", "0 0 1 rg 0 0 10 10 re f"}, {"/Filter/FlateDecode", "no such data at all"}});
  EXPECT_THAT(ExpectStampSeen("garbage").GetEntries(), Contains(kDamaged));
  ExpectCorner(kBlue, "garbage");
}

TEST_F(DecoratedDamageTest, ReportsNothingOfSoundStreams) {
  MakePage({{"/Filter/FlateDecode", testing::Deflated(LongContent())}});
  EXPECT_THAT(
      ExpectStampSeen("sound").GetEntries(),
      ElementsAre(PdfReportEntry{PdfReportKind::ImageStamp, PdfReportOutcome::Added, 1, 1, ""}));
}

TEST_F(DecoratedDamageTest, IsSeenOverAnInlineImageThatDoesNotEnd) {
  for (const char* image :
       {"BI /W 100 /H 100 /BPC 8 /CS /G ID abc", "BI /W 100 /H 100 /BPC 8 /CS /G /F /AHx ID 00f",
        "BI /W 100 /H 100 /BPC 8 /CS /G /F /A85 ID abcde", "BI /W 10 /H 10 /BPC 8 /CS /G ID ",
        "BI /W 10 /H 10"}) {
    MakePage({{"", std::string("0 0 1 rg 0 0 10 10 re f q 0 0 0 0 0 0 cm ") + image}});
    ExpectStampSeen(image);
    ExpectCorner(kBlue, image);
  }
}

TEST_F(DecoratedDamageTest, IsSeenWhereOperatorsLackOperands) {
  for (const char* wrong : {"cm", "1 cm", "1 rg", "gs", "Do", "/F Tf", "[1] d", "Tj", "l", "re",
                            "sh", "w w w", "BDC", "0 0 m 5 l", "q 1 0 0 1 9 cm"}) {
    MakePage({{"", std::string("0 0 1 rg 0 0 10 10 re f\n") + wrong}});
    EXPECT_THAT(
        ExpectStampSeen(wrong).GetEntries(),
        ElementsAre(PdfReportEntry{PdfReportKind::ImageStamp, PdfReportOutcome::Added, 1, 1, ""}));
    ExpectCorner(kBlue, wrong);
  }
}

TEST_F(DecoratedDamageTest, IsSeenAfterManyOperatorsThatAreNone) {
  std::string content = "0 0 1 rg 0 0 10 10 re f\n";
  for (int i = 0; i < 200; ++i) {
    content += "nosuch\n";
  }
  MakePage({{"", content}});
  ExpectStampSeen("unknown operators");
  ExpectCorner(kBlue, "unknown operators");
}

// The page itself is seen as before by each of the readers, wherever it stops.
TEST_F(DecoratedDamageTest, LeavesThePageAsEachReaderHasIt) {
  MakePage({{"", "q 0 1 0 rg 0 0 30 30 re f 1 cm"}, {"", "1 0 0 rg 70 0 30 30 re f Q Q cm"}});
  ExpectStampSeen("two streams");
  const auto expect_same = [](const Picture& before, const Picture& after) {
    const auto difference = testing::DifferenceOf(before, after, kDpi);
    ASSERT_TRUE(difference);
    EXPECT_NEAR(difference->left, 40, 1);
    EXPECT_NEAR(difference->right, 60, 1);
    EXPECT_NEAR(difference->bottom, 40, 1);
    EXPECT_NEAR(difference->top, 60, 1);
  };
  expect_same(testing::Pictures(Path("doc.pdf"), kDpi).at(0),
              testing::Pictures(Path("out.pdf"), kDpi).at(0));
  expect_same(testing::PicturesByMupdf(Path("doc.pdf"), kDpi).at(0),
              testing::PicturesByMupdf(Path("out.pdf"), kDpi).at(0));
}

TEST_F(DecoratedDamageTest, KeepsFontsAndStringsOfAPageThatStopsReaders) {
  RawPdf pdf;
  pdf.Pages(2,
            "/MediaBox[0 0 100 100]/Contents 10 0 R/Resources<</Font<</F 11 0 R>>"
            "/Properties<</P<</T(a string)>>>>>>")
      .Stream(10, "", "/Span /P BDC BT /F 9 Tf 5 5 Td (Own text) Tj ET EMC w")
      .Object(11, "<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>");
  testing::WriteBytes(Path("doc.pdf"), pdf.Table());
  PdfDoc document = Doc("doc.pdf");
  document.Transform(image_, Path("out.pdf"), "secret");
  EXPECT_THAT(Texts("out.pdf", "secret"), ElementsAre("Own text", "Own text"));
  EXPECT_EQ(testing::QpdfComplaints(Path("out.pdf"), "secret"), "");
  const std::string json = testing::QpdfJson(Path("out.pdf"), "secret");
  EXPECT_NE(json.find("a string"), std::string::npos);
}

TEST_F(DecoratedDamageTest, KeepsTheTagsOfAPageThatStopsReaders) {
  TARNIX_NEED_PROGRAM("pdfinfo");
  RawPdf pdf;
  pdf.Object(1, "<</Type/Catalog/Pages 2 0 R/MarkInfo<</Marked true>>/StructTreeRoot 20 0 R>>")
      .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
      .Object(3,
              "<</Type/Page/Parent 2 0 R/MediaBox[0 0 100 100]/Contents 10 0 R/StructParents 0"
              "/Resources<</Font<</F 11 0 R>>>>>>")
      .Stream(10, "",
              "/H1 <</MCID 0>> BDC BT /F 9 Tf 5 80 Td (A title) Tj ET EMC "
              "/P <</MCID 1>> BDC BT /F 9 Tf 5 5 Td (A text) Tj ET EMC w")
      .Object(11, "<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>")
      .Object(20, "<</Type/StructTreeRoot/K[21 0 R]/ParentTree<</Nums[0[22 0 R 23 0 R]]>>>>")
      .Object(21, "<</Type/StructElem/S/Document/P 20 0 R/K[22 0 R 23 0 R]>>")
      .Object(22, "<</Type/StructElem/S/H1/P 21 0 R/Pg 3 0 R/K 0>>")
      .Object(23, "<</Type/StructElem/S/P/P 21 0 R/K<</Type/MCR/Pg 3 0 R/MCID 1>>>>");
  testing::WriteBytes(Path("doc.pdf"), pdf.Table());
  const auto tags = [&](const std::string& name) {
    return testing::RunProgram({"pdfinfo", "-struct-text", Path(name)}).output;
  };
  ExpectStampSeen("tagged");
  EXPECT_THAT(tags("doc.pdf"), ::testing::HasSubstr("A title"));
  EXPECT_EQ(tags("out.pdf"), tags("doc.pdf"));
}

TEST_F(DecoratedDamageTest, LeavesOutWhatIsNoStream) {
  for (const auto layer : {PdfTransformLayerPos::Over, PdfTransformLayerPos::Under}) {
    RawPdf pdf;
    pdf.Pages(1, "/MediaBox[0 0 100 100]/Contents[10 0 R 11 0 R 12 0 R 13 0 R 99 0 R null]")
        .Stream(10, "", "0 0 1 rg 0 0 10 10 re f")
        .Object(11, "<</Type/Nothing>>")
        .Object(12, "(text)")
        .Object(13, "[10 0 R]");
    testing::WriteBytes(Path("doc.pdf"), pdf.Table());
    image_.SetLayerPosition(layer);
    ExpectStampSeen("no streams");
    ExpectCorner(kBlue, "no streams");
    const std::string json = testing::QpdfJson(Path("out.pdf"));
    EXPECT_EQ(json.find("/Nothing"), std::string::npos);
  }
}

}  // namespace
}  // namespace TarnixTools
