// PdfDoc: document information.
#include "support/DocumentTest.h"

namespace TarnixTools {
namespace {

using testing::Backslashes;
using ::testing::ElementsAre;
using testing::Failure;
using testing::FailureOf;
using ::testing::HasSubstr;
using ::testing::Not;
using testing::QpdfComplaints;
using testing::QpdfJson;
using testing::RunProgram;
using testing::TestPdf;

class PdfDocMetadataTest : public testing::DocumentTest {
 protected:
  PdfDocMetadataTest() {
    TestPdf()
        .Pages(2)
        .InfoEntry("/Title (A title) /Author (Old) /Keywords <FEFF00E9> /Producer (Old one)")
        .Write(Path("doc.pdf"));
  }

  std::vector<std::string> Values(const std::string& name, const std::string& password = "") const {
    PdfDoc document = Doc(name, password);
    return {document.GetMetaData(PdfMetadataParam::Author),
            document.GetMetaData(PdfMetadataParam::Keywords),
            document.GetMetaData(PdfMetadataParam::Creator),
            document.GetMetaData(PdfMetadataParam::Producer)};
  }
};

TEST_F(PdfDocMetadataTest, ReadsTheFourEntries) {
  EXPECT_THAT(Values("doc.pdf"), ElementsAre("Old", "\xC3\xA9", "", "Old one"));
  MakePdf("bare.pdf", 1);
  EXPECT_THAT(Values("bare.pdf"), ElementsAre("", "", "", ""));
}

TEST_F(PdfDocMetadataTest, RejectsAnEntryThatIsNone) {
  PdfDoc document = Doc("doc.pdf");
  EXPECT_EQ(FailureOf([&] { document.GetMetaData(static_cast<PdfMetadataParam>(4)); }),
            Failure(PdfExceptionCode::InternalError, "Invalid PDF META param requested [4]"));
  EXPECT_EQ(FailureOf([&] { document.GetMetaData(static_cast<PdfMetadataParam>(-1)); }).message,
            "Invalid PDF META param requested [-1]");
}

TEST_F(PdfDocMetadataTest, EndsAtTheFirstNul) {
  TestPdf().Page("a").InfoEntry("/Author(a\\000b)/Creator(\\000c)").Write(Path("nul.pdf"));
  EXPECT_THAT(Values("nul.pdf"), ElementsAre("a", "", "", ""));
}

TEST_F(PdfDocMetadataTest, LooksForTheInformationBeforeTheEntry) {
  testing::WriteBytes(Path("not.pdf"), "hello");
  PdfDoc none = Doc("not.pdf");
  for (const int param : {0, 4}) {
    const Failure failure =
        FailureOf([&] { none.GetMetaData(static_cast<PdfMetadataParam>(param)); });
    EXPECT_EQ(failure.code, PdfExceptionCode::EngineError);
    EXPECT_NE(failure.engine_code, 0);
    EXPECT_EQ(failure.message, "Could not get meta from file [" + Backslashes(Path("not.pdf")) +
                                   "] (" + std::to_string(failure.engine_code) + ")");
  }
}

TEST_F(PdfDocMetadataTest, SetsTheFourEntriesOfACopy) {
  const std::string before = testing::ReadBytes(Path("doc.pdf"));
  Doc("doc.pdf").SetMetaData({"Ada", "a, b", "Pen", "Press"}, Path("out.pdf"), "");
  EXPECT_THAT(Values("out.pdf"), ElementsAre("Ada", "a, b", "Pen", "Press"));
  EXPECT_EQ(Doc("out.pdf").GetPagesNum(), 2);
  EXPECT_EQ(testing::ReadBytes(Path("doc.pdf")), before);
}

TEST_F(PdfDocMetadataTest, BringsNothingOfTheOldInformationAlong) {
  TARNIX_NEED_PROGRAM("qpdf");
  Doc("doc.pdf").SetMetaData({"Ada"}, Path("out.pdf"), "");
  EXPECT_THAT(Values("out.pdf"), ElementsAre("Ada", "", "", ""));
  const std::string json = QpdfJson(Path("out.pdf"));
  EXPECT_THAT(json, Not(HasSubstr("/Producer")));
  EXPECT_THAT(json, Not(HasSubstr("A title")));
  EXPECT_EQ(QpdfComplaints(Path("out.pdf")), "");
}

TEST_F(PdfDocMetadataTest, WritesAnEmptyProducerAsACarriageReturn) {
  TARNIX_NEED_PROGRAM("qpdf");
  Doc("doc.pdf").SetMetaData({"", "", "", ""}, Path("out.pdf"), "");
  EXPECT_THAT(Values("out.pdf"), ElementsAre("", "", "", "\r"));
  const std::string json = QpdfJson(Path("out.pdf"));
  EXPECT_THAT(json, HasSubstr("\"/Author\": \"u:\""));
  EXPECT_THAT(json, HasSubstr("\"/Producer\": \"u:\\r\""));
}

TEST_F(PdfDocMetadataTest, WritesNoInformationWhenNoValueIsGiven) {
  TARNIX_NEED_PROGRAM("qpdf");
  Doc("doc.pdf").SetMetaData({}, Path("out.pdf"), "");
  EXPECT_EQ(Doc("out.pdf").GetPagesNum(), 2);
  EXPECT_THAT(QpdfJson(Path("out.pdf")), Not(HasSubstr("/Info")));
}

TEST_F(PdfDocMetadataTest, RejectsAFifthValueAndWritesNothing) {
  EXPECT_EQ(FailureOf([&] {
              Doc("doc.pdf").SetMetaData({"a", "b", "c", "d", "e"}, Path("out.pdf"), "");
            }),
            Failure(PdfExceptionCode::InternalError, "Invalid PDF META param ID [4]"));
  EXPECT_EQ(FailureOf([&] {
              Doc("doc.pdf").SetMetaData(std::vector<std::string>(9), Path("out.pdf"), "pw");
            }).message,
            "Invalid PDF META param ID [4]")
      << "the first that is none";
  EXPECT_THAT(directory_.Names(), ElementsAre("doc.pdf"));
}

TEST_F(PdfDocMetadataTest, KeepsLongValuesWhole) {
  TARNIX_NEED_PROGRAM("qpdf");
  const std::string value(10000, 'k');
  Doc("doc.pdf").SetMetaData({"", value}, Path("out.pdf"), "");
  EXPECT_THAT(QpdfJson(Path("out.pdf")), HasSubstr("\"u:" + value + "\""));
  static_assert(PdfDoc::PDFDOC_MAX_META_LENGTH == 2048);
  EXPECT_EQ(Values("out.pdf")[1], value.substr(0, 2047));
}

TEST_F(PdfDocMetadataTest, IsReadByOthers) {
  TARNIX_NEED_PROGRAM("pdfinfo");
  Doc("doc.pdf").SetMetaData(
      {"Zo\xC3\xAB \xC5\x82 (x\\", "\xE6\x97\xA5\xE6\x9C\xAC \xF0\x9F\x98\x80",
       "a\xFF"
       "b",
       ""},
      Path("out.pdf"), "pw");
  const std::string info =
      RunProgram({"pdfinfo", "-enc", "UTF-8", "-upw", "pw", Path("out.pdf")}).output;
  EXPECT_THAT(info, HasSubstr(" Zo\xC3\xAB \xC5\x82 (x\\\n"));
  EXPECT_THAT(info, HasSubstr(" \xE6\x97\xA5\xE6\x9C\xAC \xF0\x9F\x98\x80\n"));
  EXPECT_THAT(info, HasSubstr(" a\xEF\xBF\xBD"
                              "b\n"));
}

TEST_F(PdfDocMetadataTest, ProtectsTheCopyWhenAPasswordIsGiven) {
  Doc("doc.pdf").SetMetaData({"Ada"}, Path("out.pdf"), "pw");
  EXPECT_TRUE(PdfDoc::HasPassword(Path("out.pdf")));
  EXPECT_THAT(Values("out.pdf", "pw"), ElementsAre("Ada", "", "", ""));
  EXPECT_THAT(testing::ReadBytes(Path("out.pdf")), Not(HasSubstr("Ada")));
}

TEST_F(PdfDocMetadataTest, MayReplaceTheDocumentItself) {
  PdfDoc document = Doc("doc.pdf");
  document.SetMetaData({"Ada"}, Path("doc.pdf"), "");
  EXPECT_EQ(document.GetMetaData(PdfMetadataParam::Author), "Ada");
  EXPECT_THAT(directory_.Names(), ElementsAre("doc.pdf"));
}

TEST_F(PdfDocMetadataTest, LeavesTheOldOutputWhenItFails) {
  testing::WriteBytes(Path("out.pdf"), "what was there");
  EXPECT_NE(FailureOf([&] {
              Doc("doc.pdf").SetMetaData({"a", "b", "c", "d", "e"}, Path("out.pdf"), "");
            }),
            Failure());
  EXPECT_EQ(testing::ReadBytes(Path("out.pdf")), "what was there");
}

TEST_F(PdfDocMetadataTest, ReportsWhatCannotBeOpened) {
  Doc("doc.pdf").Lock("pw", Path("locked.pdf"));
  EXPECT_EQ(FailureOf([&] { Doc("locked.pdf", "wrong").SetMetaData({"a"}, Path("out.pdf"), ""); }),
            Failure(PdfExceptionCode::PasswordError,
                    "Invalid password for PDF [" + Backslashes(Path("locked.pdf")) + "]", 17));
  testing::WriteBytes(Path("not.pdf"), "hello");
  EXPECT_EQ(FailureOf([&] { Doc("not.pdf").SetMetaData({"a"}, Path("out.pdf"), ""); }).code,
            PdfExceptionCode::EngineError);
  EXPECT_EQ(FailureOf([&] { Doc("doc.pdf").SetMetaData({"a"}, Path("no/out.pdf"), ""); }).code,
            PdfExceptionCode::FileNotFound);
  EXPECT_THAT(directory_.Names(), ElementsAre("doc.pdf", "locked.pdf", "not.pdf"));
}

}  // namespace
}  // namespace TarnixTools
