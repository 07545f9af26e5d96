// PdfDoc: what documents say of themselves beside their pages, in what is made of them.
#include "support/DocumentTest.h"
#include "support/QpdfDocument.h"

namespace TarnixTools {
namespace {

using testing::QpdfComplaints;
using testing::QpdfDocument;
using testing::TestPdf;

class PdfDocSettingsTest : public testing::DocumentTest {
 protected:
  void SetUp() override { TARNIX_NEED_PROGRAM("qpdf"); }

  // Pages with a paragraph each, in one section.
  PdfDoc MakeTagged(const std::string& name, const std::string& language) const {
    TestPdf pdf;
    pdf.Object("root", "<</Type/StructTreeRoot/K {{top}}/ParentTree<</Nums[0[{{p1}}]1[{{p2}}]]>>>>")
        .Object("top", "<</Type/StructElem/S/Document/P {{root}}/K[{{p1}} {{p2}}]>>");
    for (const char* page : {"1", "2"}) {
      pdf.Page("a")
          .PageEntry("/StructParents " + std::to_string(page[0] - '1'))
          .Content("/P<</MCID 0>>BDC EMC")
          .Object(std::string("p") + page, std::string("<</Type/StructElem/S/P/P {{top}}/K 0/Pg "
                                                       "{{page ") +
                                               page + "}}>>");
    }
    pdf.CatalogEntry("/StructTreeRoot {{root}}/MarkInfo<</Marked true>>/Lang(" + language + ")");
    return {pdf.Write(Path(name)), "", true};
  }
};

TEST_F(PdfDocSettingsTest, PiecesKeepTheLanguage) {
  MakeTagged("doc.pdf", "de-AT").Split(1, Path(""), "", "");
  for (const char* name : {"doc-01.pdf", "doc-02.pdf"}) {
    EXPECT_EQ(QpdfDocument(Path(name)).Catalog()["/Lang"], "u:de-AT");
    EXPECT_EQ(QpdfComplaints(Path(name)), "");
  }
}

TEST_F(PdfDocSettingsTest, MergedDocumentsThatAgreeKeepTheLanguage) {
  PdfDoc::Merge({MakeTagged("a.pdf", "de"), MakeTagged("b.pdf", "de")}, Path("out.pdf"), "");
  EXPECT_EQ(QpdfDocument(Path("out.pdf")).Catalog()["/Lang"], "u:de");
}

TEST_F(PdfDocSettingsTest, MergedDocumentsThatDifferKeepTheirLanguagesEach) {
  PdfDoc::Merge({MakeTagged("a.pdf", "de"), MakeTagged("b.pdf", "fr")}, Path("out.pdf"), "");
  const QpdfDocument written(Path("out.pdf"));
  EXPECT_FALSE(written.Catalog().contains("/Lang"));
  const auto top = written.Follow(written.Follow(written.Catalog()["/StructTreeRoot"])["/K"]);
  ASSERT_EQ(top["/K"].size(), 2U);
  EXPECT_EQ(written.Follow(top["/K"][0])["/Lang"], "u:de");
  EXPECT_EQ(written.Follow(top["/K"][1])["/Lang"], "u:fr");
  EXPECT_EQ(QpdfComplaints(Path("out.pdf")), "");
}

TEST_F(PdfDocSettingsTest, ReportsALanguageThatHasNoPlace) {
  const auto untagged = [this](const std::string& language) {
    const std::string path = Path(language + ".pdf");
    return PdfDoc(TestPdf().Pages(1).CatalogEntry("/Lang(" + language + ")").Write(path), "", true);
  };
  PdfReport report;
  PdfDoc::Merge({untagged("de"), untagged("fr")}, Path("out.pdf"), "", &report);
  ASSERT_FALSE(report.GetEntries().empty());
  EXPECT_EQ(PdfReport::GetText(report.GetEntries().back()),
            "2 languages dropped: of untagged text, next to text in others");
}

TEST_F(PdfDocSettingsTest, AWholeDocumentOpensWhereItDid) {
  const std::string path = TestPdf()
                               .Pages(3)
                               .CatalogEntry("/OpenAction<</S/GoTo/D[{{page 2}}/FitH 99]>>")
                               .Write(Path("doc.pdf"));
  PdfDoc doc(path, "", true);
  doc.Rotate(PdfRotationAngle::Rotate90, Path("turned.pdf"), "");
  const QpdfDocument turned(Path("turned.pdf"));
  const auto action = turned.Follow(turned.Catalog()["/OpenAction"]);
  EXPECT_EQ(action["/S"], "/GoTo");
  EXPECT_EQ(action["/D"][0], turned.Page(2));
  MakePdf("other.pdf", 1);
  PdfDoc::Merge({doc, Doc("other.pdf")}, Path("merged.pdf"), "");
  const QpdfDocument merged(Path("merged.pdf"));
  EXPECT_EQ(merged.Follow(merged.Catalog()["/OpenAction"])["/D"][0], merged.Page(2));
  PdfDoc::Merge({Doc("other.pdf"), doc}, Path("merged.pdf"), "");
  EXPECT_FALSE(QpdfDocument(Path("merged.pdf")).Catalog().contains("/OpenAction"));
}

TEST_F(PdfDocSettingsTest, NoOutputIsOfALowerVersionThanItsSources) {
  MakePdf("a.pdf", 1);
  const PdfDoc newer(TestPdf().Pages(2).CatalogEntry("/Version/2.0").Write(Path("b.pdf")), "",
                     true);
  PdfDoc::Merge({Doc("a.pdf"), newer}, Path("out.pdf"), "");
  EXPECT_EQ(QpdfDocument(Path("out.pdf")).Catalog()["/Version"], "/2.0");
}

}  // namespace
}  // namespace TarnixTools
