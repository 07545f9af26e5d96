// Whole conversions: each step has its part in them, and none undoes what another one did.
#include "engines/pdfa/convert/ConversionTest.h"
#include "engines/pdfa/convert/ConvertedDocument.h"
#include "foundation/JobWatch.h"
#include "support/Expected.h"
#include "support/Readers.h"

namespace TarnixTools::engines::pdfa {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using testing::QpdfDocument;
using testing::RawPdf;

class ConvertedDocumentTest : public ::testing::Test {
 protected:
  void SetUp() override { TARNIX_NEED_PROGRAM("qpdf"); }

  // The document at the level, which it must reach.
  QpdfDocument Converted(RawPdf file, Level level, const std::string& trailer = "/Root 1 0 R") {
    const std::string in = testing::WriteBytes(directory_.Path("in.pdf"), file.Table(trailer));
    const std::string out = directory_.Path("out.pdf");
    const ConversionResult result =
        ConvertedDocument(platform::WidePath(in), "").Save(platform::WidePath(out), level);
    report_ = result.report.Text(true);
    EXPECT_EQ(result.reached, level) << report_;
    EXPECT_TRUE(result.is_as_wanted);
    EXPECT_EQ(testing::QpdfComplaints(out), "");
    return QpdfDocument(out);
  }

  // All of the document with its streams in plain.
  std::string Plain() const {
    return testing::RunProgram({"qpdf", "--qdf", directory_.Path("out.pdf"), "-"}).output;
  }

  testing::TempDir directory_;
  std::string report_;
};

// A page with the resources and this content.
RawPdf WithContent(const std::string& content, const std::string& resources,
                   const std::string& catalog = "") {
  RawPdf file = OnePage("/Contents 4 0 R/Resources<<" + resources + ">>", catalog);
  file.Stream(4, "", content);
  return file;
}

TEST_F(ConvertedDocumentTest, HasNoSignatures) {
  RawPdf file = OnePage("/Annots[4 0 R]", "/AcroForm<</Fields[4 0 R]/SigFlags 3>>");
  file.Object(4, "<</Type/Annot/Subtype/Widget/FT/Sig/T(s)/Rect[0 0 0 0]/F 132/V 5 0 R>>");
  file.Object(5,
              "<</Type/Sig/Filter/Adobe.PPKLite/SubFilter/adbe.pkcs7.detached/ByteRange[0 1 2 3]"
              "/Contents<00>>>");
  Converted(file, Level::k2b);
  EXPECT_THAT(report_, HasSubstr("left out: signatures, which do not hold in another file"));
  EXPECT_THAT(Plain(), Not(HasSubstr("/ByteRange")));
}

TEST_F(ConvertedDocumentTest, HasNothingThatIsForbidden) {
  Converted(OnePage("", "/OpenAction<</S/JavaScript/JS(x)>>"), Level::k2b);
  EXPECT_THAT(Plain(), Not(HasSubstr("/JavaScript")));
}

TEST_F(ConvertedDocumentTest, HasLayersWithNames) {
  RawPdf file = OnePage("", "/OCProperties<</OCGs[4 0 R]/D<<>>>>");
  file.Object(4, "<</Type/OCG/Name(One)>>");
  EXPECT_EQ(Converted(file, Level::k2b).Catalog()["/OCProperties"]["/D"]["/Name"], "u:Default");
}

TEST_F(ConvertedDocumentTest, HasAttachmentsThatSayWhatTheyAre) {
  RawPdf file = OnePage("", "/Names<</EmbeddedFiles<</Names[(a)4 0 R]>>>>");
  file.Object(4, "<</Type/Filespec/F(a.txt)/EF<</F 5 0 R>>>>");
  file.Stream(5, "/Type/EmbeddedFile", "text");
  Converted(file, Level::k3b);
  EXPECT_THAT(Plain(), HasSubstr("/AFRelationship"));
}

TEST_F(ConvertedDocumentTest, HasAnnotationsThatArePrinted) {
  RawPdf file = OnePage("/Annots[4 0 R]");
  file.Object(4, "<</Type/Annot/Subtype/Link/Rect[0 0 9 9]/A<</S/URI/URI(x)>>>>");
  const QpdfDocument written = Converted(file, Level::k2b);
  EXPECT_EQ(written.Follow(written.Follow(written.Page(1))["/Annots"][0])["/F"], 4);
}

TEST_F(ConvertedDocumentTest, HasNoTransparencyInPart1) {
  Converted(WithContent("/H gs 10 20 30 10 re f", "/ExtGState<</H<</ca .5>>>>"), Level::k1b);
  EXPECT_THAT(report_, HasSubstr("into pictures"));
}

TEST_F(ConvertedDocumentTest, HasFormsWithTheirOwnResources) {
  RawPdf file = WithContent("/F Do", "/XObject<</F 5 0 R>>/ExtGState<</G<</LW 2>>>>");
  file.Stream(5, "/Subtype/Form/BBox[0 0 9 9]", "/G gs 0 0 9 9 re S");
  Converted(file, Level::k2b);
}

TEST_F(ConvertedDocumentTest, HasNoBoxesThatAreTooSmall) {
  const QpdfDocument written = Converted(OnePage("/ArtBox[0 0 1 1]"), Level::k2b);
  EXPECT_FALSE(written.Follow(written.Page(1)).contains("/ArtBox"));
}

TEST_F(ConvertedDocumentTest, HasFontsInIt) {
  RawPdf file = WithContent("BT /F 9 Tf (A) Tj ET", "/Font<</F 5 0 R>>");
  file.Object(5, "<</Type/Font/Subtype/Type1/BaseFont/Helvetica/Encoding/WinAnsiEncoding>>");
  Converted(file, Level::k2b);
  EXPECT_THAT(report_, HasSubstr("changed: font Helvetica, which was not embedded"));
}

TEST_F(ConvertedDocumentTest, HasColoursThatAreKnown) {
  const QpdfDocument written = Converted(WithContent("1 0 0 0 k 0 0 9 9 re f", ""), Level::k2b);
  const auto page = written.Follow(written.Page(1));
  EXPECT_TRUE(written.Follow(page["/Resources"])["/ColorSpace"].contains("/DefaultCMYK"));
}

TEST_F(ConvertedDocumentTest, HasNothingHiddenInPart1) {
  RawPdf file = WithContent("/OC /L BDC 1 2 3 4 re f EMC 5 6 7 8 re f", "/Properties<</L 5 0 R>>",
                            "/OCProperties<</OCGs[5 0 R]/D<</OFF[5 0 R]>>>>");
  file.Object(5, "<</Type/OCG/Name(x)>>");
  Converted(file, Level::k1b);
  EXPECT_THAT(Plain(), Not(HasSubstr("1 2 3 4 re")));
  EXPECT_THAT(Plain(), HasSubstr("5 6 7 8 re"));
}

TEST_F(ConvertedDocumentTest, HasNoUnknownOperators) {
  Converted(WithContent("7 8 what 0 0 9 9 re f", ""), Level::k2b);
  EXPECT_THAT(Plain(), Not(HasSubstr("what")));
  EXPECT_THAT(Plain(), HasSubstr("0 0 9 9 re f"));
}

TEST_F(ConvertedDocumentTest, HasImagesThatAreAllowed) {
  RawPdf file = WithContent("/I Do", "/XObject<</I 5 0 R>>");
  file.Stream(5, "/Subtype/Image/Width 1/Height 1/ColorSpace/DeviceGray/BitsPerComponent 16", "ab");
  Converted(file, Level::k1b);
  EXPECT_THAT(Plain(), Not(HasSubstr("/BitsPerComponent 16")));
}

TEST_F(ConvertedDocumentTest, HasTagsAtLevelA) {
  const QpdfDocument written = Converted(WithContent("0 0 9 9 re f", ""), Level::k2a);
  EXPECT_TRUE(written.Catalog().contains("/StructTreeRoot"));
  EXPECT_THAT(Plain(), HasSubstr("/Figure<</MCID 0>>BDC"));
}

// In hundredths, each told once: the survey, then each level that is tried, which is written and judged.
TEST_F(ConvertedDocumentTest, TellsHowFarItIs) {
  std::string many;
  for (int i = 0; i < 8192; ++i) {
    many += "0 ";
  }
  std::string text;
  for (const std::string& catalog : {std::string(), "/Many[" + many + "]"}) {
    RawPdf file;
    file.Object(1, "<</Type/Catalog/Pages 2 0 R" + catalog + ">>");
    file.Object(2, "<</Type/Pages/Kids[3 0 R 4 0 R]/Count 2>>");
    file.Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 100]>>");
    file.Object(4, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 100]>>");
    const std::string in = testing::WriteBytes(directory_.Path("in.pdf"), file.Table());
    for (const Level level : {Level::k1b, Level::k2b, Level::k1a}) {
      std::string told;
      const JobWatch watch(
          [&told](const std::string&, std::int64_t done, std::int64_t of) {
            const std::string now =
                std::to_string(done) + (of == 100 ? "" : "/" + std::to_string(of)) + " ";
            told += told.ends_with(" " + now) ? "" : now;
            return true;
          },
          "job");
      ConvertedDocument document(platform::WidePath(in), "");
      document.Save(platform::WidePath(directory_.Path("out.pdf")), level);
      text += std::string(NameOf(level)) + ": " + told + "\n";
    }
  }
  EXPECT_TRUE(testing::IsAsExpected("pdfa/convert/progress.txt", text));
}

TEST_F(ConvertedDocumentTest, ClaimsItsLevel) {
  Converted(OnePage(""), Level::k3b);
  EXPECT_THAT(Plain(), HasSubstr("<pdfaid:part>3</pdfaid:part>"));
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
