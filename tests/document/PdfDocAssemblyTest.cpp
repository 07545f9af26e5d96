// PdfDoc: new files out of whole documents.
#include <sys/resource.h>

#include "PdfTransformation.h"
#include "support/DocumentTest.h"

namespace TarnixTools {
namespace {

using testing::Backslashes;
using ::testing::ElementsAre;
using testing::EncryptWithQpdf;
using testing::Failure;
using testing::FailureOf;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using testing::PageFactsOf;
using testing::PageTexts;
using testing::QpdfComplaints;
using testing::QpdfEncryption;
using testing::QpdfJson;
using testing::QpdfNeedsPassword;
using testing::TestPdf;

class PdfDocAssemblyTest : public testing::DocumentTest {
 protected:
  void SetUp() override {
    TARNIX_NEED_PROGRAM("qpdf");
    TARNIX_NEED_PROGRAM("pdftotext");
    TARNIX_NEED_PROGRAM("pdfinfo");
  }

  std::vector<int> Rotations(const std::string& name) const {
    std::vector<int> rotations;
    for (const testing::PageFacts& facts : PageFactsOf(Path(name))) {
      rotations.push_back(facts.rotation);
    }
    return rotations;
  }

  static Failure CannotCreate(const std::string& path) {
    return {PdfExceptionCode::FileNotFound,
            "Unable to create new file [" + Backslashes(path) + "] (No such file or directory)"};
  }

  // A page with all that copies of pages bring along: a link, another annotation, a form field and
  // an outline item.
  PdfDoc MakeRich(const std::string& name) const {
    TestPdf()
        .Page("a")
        .PageEntry("/Annots[{{link}} {{note}} {{field}}]")
        .Object("link", "<</Subtype/Link/Rect[0 0 9 9]/A<</S/URI/URI(http://example.com/)>>>>")
        .Object("note", "<</Subtype/Text/Rect[9 9 20 20]/Contents(remember)>>")
        .Object("field", "<</Subtype/Widget/Rect[9 0 20 9]/FT/Tx/T(Name)/V(filled in)>>")
        .Object("item", "<</Title(Chapter)/Dest[{{page 1}}/Fit]>>")
        .CatalogEntry("/AcroForm<</Fields[{{field}}]>>")
        .CatalogEntry("/Outlines<</First {{item}}/Last {{item}}/Count 1>>")
        .Write(Path(name));
    return Doc(name);
  }

  // Path of an encrypted document of two pages.
  std::string MakeEncrypted() {
    return EncryptWithQpdf(MakePdf("plain.pdf", 2, "Secret"), Path("encrypted.pdf"), "user",
                           "owner");
  }
};

TEST_F(PdfDocAssemblyTest, MergeWritesAllPagesInListOrder) {
  MakePdf("a.pdf", 3, "Alpha");
  MakePdf("b.pdf", 1, "Beta");
  PdfDoc::Merge({Doc("b.pdf"), Doc("a.pdf"), Doc("b.pdf")}, Path("out.pdf"), "");
  EXPECT_THAT(Texts("out.pdf"), ElementsAre("Beta 1", "Alpha 1", "Alpha 2", "Alpha 3", "Beta 1"));
  EXPECT_EQ(QpdfComplaints(Path("out.pdf")), "");
  EXPECT_FALSE(PdfDoc(Path("out.pdf"), "", true).IsEncrypted());
}

TEST_F(PdfDocAssemblyTest, MergeOfNothingWritesADocumentWithoutPages) {
  PdfDoc::Merge({}, Path("out.pdf"), "");
  EXPECT_EQ(Doc("out.pdf").GetPagesNum(), 0);
  EXPECT_EQ(QpdfComplaints(Path("out.pdf")), "");
}

TEST_F(PdfDocAssemblyTest, MergeProtectsItsOutputWhenAPasswordIsGiven) {
  PdfDoc::Merge({PdfDoc(MakePdf("a.pdf", 2, "Alpha"), "", true)}, Path("out.pdf"), "p\xC3\xA4ss");
  EXPECT_TRUE(QpdfNeedsPassword(Path("out.pdf")));
  EXPECT_EQ(QpdfComplaints(Path("out.pdf"), "p\xC3\xA4ss"), "");
  EXPECT_THAT(Texts("out.pdf", "p\xC3\xA4ss"), ElementsAre("Alpha 1", "Alpha 2"));
  EXPECT_TRUE(PdfDoc::IsValidPassword(Path("out.pdf"), "p\xC3\xA4ss"));
  EXPECT_FALSE(PdfDoc::IsValidPassword(Path("out.pdf"), "wrong"));
}

TEST_F(PdfDocAssemblyTest, MergeOpensEachInputWithItsOwnPassword) {
  const PdfDoc encrypted(MakeEncrypted(), "user", true);
  PdfDoc::Merge({PdfDoc(MakePdf("a.pdf", 1, "Alpha"), "", true), encrypted}, Path("out.pdf"), "");
  EXPECT_THAT(Texts("out.pdf"), ElementsAre("Alpha 1", "Secret 1", "Secret 2"));
  EXPECT_EQ(QpdfComplaints(Path("out.pdf")), "");
}

TEST_F(PdfDocAssemblyTest, MergeNamesTheInputWhosePasswordIsWrong) {
  const std::string path = MakeEncrypted();
  const PdfDoc plain(Path("plain.pdf"), "", true);
  EXPECT_EQ(FailureOf([&] {
              PdfDoc::Merge({plain, PdfDoc(path, "wrong", true)}, Path("out.pdf"), "");
            }),
            Failure(PdfExceptionCode::PasswordError,
                    "Invalid password for PDF [" + Backslashes(path) + "]", 17));
  EXPECT_THAT(directory_.Names(), ElementsAre("encrypted.pdf", "plain.pdf"));
}

TEST_F(PdfDocAssemblyTest, MergeNamesTheInputThatIsNoPdf) {
  testing::WriteBytes(Path("not.pdf"), "hello");
  const Failure failure = FailureOf([&] { PdfDoc::Merge({Doc("not.pdf")}, Path("out.pdf"), ""); });
  EXPECT_EQ(failure.code, PdfExceptionCode::EngineError);
  EXPECT_NE(failure.engine_code, 0);
  EXPECT_EQ(failure.message, "NULL pages object at PDF doc [" + Backslashes(Path("not.pdf")) + "]");
  EXPECT_THAT(directory_.Names(), ElementsAre("not.pdf"));
}

TEST_F(PdfDocAssemblyTest, EveryCopyNamesTheInputThatIsNoPdf) {
  testing::WriteBytes(Path("not.pdf"), "hello");
  const std::string out = Path("out.pdf");
  const Failure expected(PdfExceptionCode::EngineError,
                         "NULL pages object at PDF doc [" + Backslashes(Path("not.pdf")) + "]", 4);
  EXPECT_EQ(FailureOf([&] { PdfDoc::Merge({Doc("not.pdf")}, out, ""); }), expected);
  EXPECT_EQ(FailureOf([&] { Doc("not.pdf").Rotate(PdfRotationAngle::Rotate0, out, "pw"); }),
            expected);
  EXPECT_EQ(FailureOf([&] { Doc("not.pdf").Lock("pw", out); }), expected);
  EXPECT_EQ(FailureOf([&] { Doc("not.pdf").UnLock("", out); }), expected);
  EXPECT_EQ(FailureOf([&] { Doc("not.pdf").SetMetaData({}, out, ""); }), expected);
  EXPECT_THAT(directory_.Names(), ElementsAre("not.pdf"));
}

TEST_F(PdfDocAssemblyTest, MergeLeavesRangesOfDocumentsAlone) {
  PdfDoc doc(MakePdf("a.pdf", 3), "", true);
  doc.AddRange(PdfPageRange(2, 2));
  PdfDoc::Merge({doc}, Path("merged.pdf"), "");
  EXPECT_EQ(Texts("merged.pdf"), Labels(1, 3));
  PdfDoc created(Path("created.pdf"), "", false);
  created.Create(false);
  created.Append(doc);
  EXPECT_EQ(Texts("created.pdf"), Labels(1, 3));
}

TEST_F(PdfDocAssemblyTest, MergeNamesTheInputThatIsMissing) {
  const PdfDoc missing(Path("missing.pdf"), "", false);
  EXPECT_EQ(FailureOf([&] {
              PdfDoc::Merge({PdfDoc(MakePdf("a.pdf", 1), "", true), missing}, Path("out.pdf"), "");
            }),
            Failure(PdfExceptionCode::FileNotFound,
                    "Unable to open file " + Backslashes(Path("missing.pdf"))));
  EXPECT_THAT(directory_.Names(), ElementsAre("a.pdf"));
}

TEST_F(PdfDocAssemblyTest, MergeRejectsAnEmptyOutputPath) {
  EXPECT_EQ(FailureOf([&] { PdfDoc::Merge({}, "", ""); }),
            Failure(PdfExceptionCode::InvalidParameter, "Empty path received at PDF doc"));
}

TEST_F(PdfDocAssemblyTest, MergeHoldsOnlyOneInputOpen) {
  const PdfDoc input(MakePdf("a.pdf", 1, "Alpha"), "", true);
  rlimit old_limit{};
  ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &old_limit), 0);
  rlimit low_limit = old_limit;
  low_limit.rlim_cur = 64;
  ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &low_limit), 0);
  const Failure failure =
      FailureOf([&] { PdfDoc::Merge(std::list<PdfDoc>(300, input), Path("out.pdf"), ""); });
  setrlimit(RLIMIT_NOFILE, &old_limit);
  EXPECT_EQ(failure, Failure());
  EXPECT_EQ(Doc("out.pdf").GetPagesNum(), 300);
  EXPECT_EQ(QpdfComplaints(Path("out.pdf")), "");
}

TEST_F(PdfDocAssemblyTest, AppendFillsACreatedDocument) {
  MakePdf("a.pdf", 2, "Alpha");
  PdfDoc out(Path("out.pdf"), "", false);
  out.Create(false);
  out.Append(Doc("a.pdf"));
  EXPECT_THAT(Texts("out.pdf"), ElementsAre("Alpha 1", "Alpha 2"));
  EXPECT_EQ(out.GetPagesNum(), 2);
}

TEST_F(PdfDocAssemblyTest, AppendTakesAList) {
  MakePdf("a.pdf", 2, "Alpha");
  MakePdf("b.pdf", 1, "Beta");
  PdfDoc out(Path("out.pdf"), "", false);
  out.Create(false);
  out.Append(std::list<PdfDoc>{Doc("a.pdf"), Doc("b.pdf")});
  EXPECT_THAT(Texts("out.pdf"), ElementsAre("Alpha 1", "Alpha 2", "Beta 1"));
}

TEST_F(PdfDocAssemblyTest, AppendThatFailsWritesNothing) {
  MakePdf("a.pdf", 2, "Alpha");
  PdfDoc out(Path("out.pdf"), "", false);
  out.Create(false);
  EXPECT_EQ(FailureOf([&] {
              out.Append(std::list<PdfDoc>{Doc("a.pdf"), PdfDoc(Path("missing.pdf"), "", false)});
            }).code,
            PdfExceptionCode::FileNotFound);
  EXPECT_THAT(directory_.Names(), ElementsAre("a.pdf"));
  out.SetPath("closed.pdf");
  EXPECT_EQ(out.GetPath(), "closed.pdf");
}

TEST_F(PdfDocAssemblyTest, AppendToADocumentThatWasNotCreatedFails) {
  MakePdf("a.pdf", 2, "Alpha");
  const std::string before = testing::ReadBytes(MakePdf("b.pdf", 1, "Beta"));
  PdfDoc not_created = Doc("b.pdf");
  const Failure failure = FailureOf([&] { not_created.Append(Doc("a.pdf")); });
  EXPECT_EQ(failure.code, PdfExceptionCode::EngineError);
  EXPECT_EQ(failure.engine_code, 11);
  EXPECT_EQ(testing::ReadBytes(Path("b.pdf")), before);
}

TEST_F(PdfDocAssemblyTest, AppendToWhatIsNoDocumentFindsNoPages) {
  MakePdf("a.pdf", 2, "Alpha");
  testing::WriteBytes(Path("not.pdf"), "hello");
  PdfDoc none = Doc("not.pdf");
  const Failure failure = FailureOf([&] { none.Append(Doc("a.pdf")); });
  EXPECT_EQ(failure.code, PdfExceptionCode::EngineError);
  EXPECT_EQ(failure.message, "NULL pages object at output PDF doc");
  EXPECT_NE(failure.engine_code, 0);
}

TEST_F(PdfDocAssemblyTest, AppendChecksThePasswordOfTheDocumentItself) {
  const std::string path = MakeEncrypted();
  PdfDoc doc(path, "wrong", true);
  EXPECT_EQ(FailureOf([&] { doc.Append(Doc("plain.pdf")); }),
            Failure(PdfExceptionCode::PasswordError,
                    "Invalid password for PDF [" + Backslashes(path) + "]", 17));
}

TEST_F(PdfDocAssemblyTest, AppendToItselfIsRefused) {
  PdfDoc out(Path("out.pdf"), "", false);
  out.Create(false);
  EXPECT_EQ(FailureOf([&] { out.Append(out); }),
            Failure(PdfExceptionCode::InvalidParameter, "Unable to append PDF doc [" +
                                                            testing::Backslashes(Path("out.pdf")) +
                                                            "] to itself"));
  EXPECT_THAT(directory_.Names(), IsEmpty());
}

TEST_F(PdfDocAssemblyTest, CreateOfAnOpenDocumentIsRefused) {
  PdfDoc out(Path("out.pdf"), "", false);
  out.Create(false);
  EXPECT_EQ(
      FailureOf([&] { out.Create(false); }),
      Failure(PdfExceptionCode::InternalError,
              "Unable to create new file [" + Backslashes(Path("out.pdf")) + "] (already open)"));
}

TEST_F(PdfDocAssemblyTest, CreateWithoutEncryptionClearsThePassword) {
  PdfDoc out(Path("out.pdf"), "secret", false);
  out.Create(false);
  EXPECT_EQ(out.GetPassword(), "");
  out.Append(PdfDoc(MakePdf("a.pdf", 1), "", true));
  EXPECT_FALSE(QpdfNeedsPassword(Path("out.pdf")));
}

TEST_F(PdfDocAssemblyTest, CreateThatFailsKeepsThePassword) {
  PdfDoc out(Path("missing/out.pdf"), "secret", false);
  EXPECT_EQ(FailureOf([&] { out.Create(false); }), CannotCreate(Path("missing/out.pdf")));
  EXPECT_EQ(out.GetPassword(), "secret");
}

TEST_F(PdfDocAssemblyTest, DeleteRemovesTheFile) {
  PdfDoc doc(MakePdf("a.pdf", 1), "", true);
  PdfDoc::Delete(doc);
  EXPECT_THAT(directory_.Names(), IsEmpty());
  EXPECT_EQ(FailureOf([&] { PdfDoc::Delete(doc); }), Failure());
}

TEST_F(PdfDocAssemblyTest, DeleteTellsThatItCannot) {
  PdfDoc doc(directory_.MakeDir("a.pdf"), "", false);
  EXPECT_EQ(FailureOf([&] { PdfDoc::Delete(doc); }),
            Failure(PdfExceptionCode::FileNotFound, "Error deleting file [\\] (Is a directory)"));
}

TEST_F(PdfDocAssemblyTest, RotateTurnsEveryPageFromWhereItIs) {
  PdfDoc doc(TestPdf().Page("a").Page("b").Rotate(90).Page("c").Rotate(270).Write(Path("a.pdf")),
             "", true);
  doc.Rotate(PdfRotationAngle::Rotate90, Path("90.pdf"), "");
  EXPECT_THAT(Rotations("90.pdf"), ElementsAre(90, 180, 0));
  doc.Rotate(PdfRotationAngle::Rotate180, Path("180.pdf"), "");
  EXPECT_THAT(Rotations("180.pdf"), ElementsAre(180, 270, 90));
  doc.Rotate(PdfRotationAngle::Rotate270, Path("270.pdf"), "");
  EXPECT_THAT(Rotations("270.pdf"), ElementsAre(270, 0, 180));
  doc.Rotate(PdfRotationAngle::Rotate0, Path("0.pdf"), "");
  EXPECT_THAT(Rotations("0.pdf"), ElementsAre(0, 90, 270));
  EXPECT_THAT(Texts("90.pdf"), ElementsAre("a", "b", "c"));
  EXPECT_EQ(QpdfComplaints(Path("90.pdf")), "");
}

TEST_F(PdfDocAssemblyTest, RotateTurnsPagesThatInheritTheirRotation) {
  PdfDoc doc(TestPdf().InheritedEntry("/Rotate 90").Page("a").Write(Path("a.pdf")), "", true);
  doc.Rotate(PdfRotationAngle::Rotate90, Path("out.pdf"), "");
  EXPECT_THAT(Rotations("out.pdf"), ElementsAre(180));
}

TEST_F(PdfDocAssemblyTest, RotateByAnAngleThatIsNoneNamesTheFirstPageByIndex) {
  PdfDoc doc(MakePdf("a.pdf", 2), "", true);
  const Failure failure =
      FailureOf([&] { doc.Rotate(static_cast<PdfRotationAngle>(45), Path("out.pdf"), ""); });
  EXPECT_EQ(failure.code, PdfExceptionCode::EngineError);
  EXPECT_EQ(failure.message, "Unable to rotate page [0] at doc [a.pdf]");
  EXPECT_EQ(failure.engine_code, 11);
  EXPECT_EQ(FailureOf([&] {
              doc.Rotate(static_cast<PdfRotationAngle>(45), {2}, Path("out.pdf"), "");
            }).message,
            "Unable to rotate page [1] at doc [a.pdf]");
  EXPECT_THAT(directory_.Names(), ElementsAre("a.pdf"));
}

TEST_F(PdfDocAssemblyTest, RotateProtectsItsOutputWhenAPasswordIsGiven) {
  PdfDoc doc(MakePdf("a.pdf", 1, "Alpha"), "", true);
  doc.Rotate(PdfRotationAngle::Rotate90, Path("out.pdf"), "pw");
  EXPECT_TRUE(QpdfNeedsPassword(Path("out.pdf")));
  EXPECT_THAT(Texts("out.pdf", "pw"), ElementsAre("Alpha 1"));
}

TEST_F(PdfDocAssemblyTest, LockEncryptsAndPermitsEverything) {
  PdfDoc doc(MakePdf("a.pdf", 2, "Alpha"), "", true);
  doc.Lock("secret", Path("out.pdf"));
  EXPECT_TRUE(QpdfNeedsPassword(Path("out.pdf")));
  EXPECT_EQ(QpdfComplaints(Path("out.pdf"), "secret"), "");
  const std::string encryption = QpdfEncryption(Path("out.pdf"), "secret");
  EXPECT_THAT(encryption, HasSubstr("print high resolution: allowed"));
  EXPECT_THAT(encryption, HasSubstr("modify anything: allowed"));
  EXPECT_THAT(encryption, Not(HasSubstr("not allowed")));
  EXPECT_THAT(encryption, HasSubstr("Supplied password is owner password"));
  EXPECT_THAT(encryption, HasSubstr("Supplied password is user password"));
  EXPECT_THAT(Texts("out.pdf", "secret"), ElementsAre("Alpha 1", "Alpha 2"));
}

TEST_F(PdfDocAssemblyTest, LockWithAnEmptyPasswordStillEncrypts) {
  PdfDoc doc(MakePdf("a.pdf", 2, "Alpha"), "", true);
  doc.Lock("", Path("out.pdf"));
  EXPECT_FALSE(QpdfNeedsPassword(Path("out.pdf")));
  const std::string encryption = QpdfEncryption(Path("out.pdf"), "");
  EXPECT_THAT(encryption, HasSubstr("R = "));
  EXPECT_THAT(encryption, Not(HasSubstr("not allowed")));
  EXPECT_TRUE(Doc("out.pdf").IsEncrypted());
  EXPECT_FALSE(PdfDoc::HasPassword(Path("out.pdf")));
  EXPECT_EQ(QpdfComplaints(Path("out.pdf")), "");
  EXPECT_THAT(Texts("out.pdf"), ElementsAre("Alpha 1", "Alpha 2"));
}

TEST_F(PdfDocAssemblyTest, UnLockWritesACopyThatIsNotEncrypted) {
  PdfDoc doc(MakeEncrypted(), "", true);
  doc.SetPassword("user");
  doc.UnLock("ignored", Path("out.pdf"));
  EXPECT_FALSE(Doc("out.pdf").IsEncrypted());
  EXPECT_EQ(QpdfComplaints(Path("out.pdf")), "");
  EXPECT_THAT(Texts("out.pdf"), ElementsAre("Secret 1", "Secret 2"));
}

TEST_F(PdfDocAssemblyTest, UnLockDoesNotReadWithItsOwnPassword) {
  const std::string path = MakeEncrypted();
  PdfDoc doc(path, "", true);
  EXPECT_EQ(FailureOf([&] { doc.UnLock("user", Path("out.pdf")); }),
            Failure(PdfExceptionCode::PasswordError,
                    "Invalid password for PDF [" + Backslashes(path) + "]", 17));
  EXPECT_THAT(directory_.Names(), ElementsAre("encrypted.pdf", "plain.pdf"));
}

TEST_F(PdfDocAssemblyTest, LockAndUnLockComeBackToTheSamePages) {
  PdfDoc doc(MakePdf("a.pdf", 3, "Alpha"), "", true);
  doc.Lock("\xE6\x96\x87", Path("locked.pdf"));
  PdfDoc locked = Doc("locked.pdf", "\xE6\x96\x87");
  locked.UnLock("", Path("out.pdf"));
  EXPECT_THAT(Texts("out.pdf"), ElementsAre("Alpha 1", "Alpha 2", "Alpha 3"));
}

TEST_F(PdfDocAssemblyTest, CopiedPagesKeepInheritedBoxesAndAnnotations) {
  PdfDoc doc(TestPdf()
                 .InheritedEntry("/MediaBox [0 0 300 400]")
                 .Page("a")
                 .NoMediaBox()
                 .Annotation("/Subtype /Text /Rect [1 2 30 40] /Contents (remember)")
                 .Page("b")
                 .Annotation("/Subtype /Link /Rect [0 0 9 9] /Dest [{{page 1}} /Fit]")
                 .Write(Path("a.pdf")),
             "", true);
  PdfDoc::Merge({doc}, Path("out.pdf"), "");
  const std::vector<testing::PageFacts> facts = PageFactsOf(Path("out.pdf"));
  ASSERT_EQ(facts.size(), 2U);
  EXPECT_EQ(facts[0].width, 300);
  EXPECT_EQ(facts[0].height, 400);
  const std::string json = QpdfJson(Path("out.pdf"));
  EXPECT_THAT(json, HasSubstr("u:remember"));
  EXPECT_THAT(json, HasSubstr("/Link"));
}

TEST_F(PdfDocAssemblyTest, DocumentInformationIsNotCopied) {
  PdfDoc doc(TestPdf().Page("a").InfoEntry("/Author (Somebody)").Write(Path("a.pdf")), "", true);
  PdfDoc::Merge({doc}, Path("out.pdf"), "");
  EXPECT_THAT(QpdfJson(Path("out.pdf")), Not(HasSubstr("Somebody")));
}

TEST_F(PdfDocAssemblyTest, MakesTheOutputBeforeItOpensTheSource) {
  PdfDoc missing(Path("missing.pdf"), "", false);
  const std::string path = Path("nowhere/out.pdf");
  const Failure expected = CannotCreate(path);
  EXPECT_EQ(FailureOf([&] { missing.Rotate(PdfRotationAngle::Rotate90, path, ""); }), expected);
  EXPECT_EQ(FailureOf([&] { missing.Lock("pw", path); }), expected);
  EXPECT_EQ(FailureOf([&] { missing.Lock("pw", "owner", 0, path); }), expected);
  EXPECT_EQ(FailureOf([&] { missing.UnLock("pw", path); }), expected);
  EXPECT_EQ(FailureOf([&] { PdfDoc::Merge({missing}, path, ""); }), expected);
}

TEST_F(PdfDocAssemblyTest, OpensTheSourceBeforeItMakesTheOutput) {
  PdfDoc missing(Path("missing.pdf"), "", false);
  const std::string nowhere = Path("nowhere/");
  const std::string path = nowhere + "out.pdf";
  std::vector<PdfTransformation> number = {PdfTransformation(PdfTransformType::AddPageNumber)};
  const Failure expected(PdfExceptionCode::FileNotFound,
                         "Unable to open file " + Backslashes(Path("missing.pdf")));
  EXPECT_EQ(FailureOf([&] { missing.Split(1, nowhere, "", ""); }), expected);
  EXPECT_EQ(FailureOf([&] { missing.Split({PdfPageRange(1, 1)}, nowhere, "", false, "", ""); }),
            expected);
  EXPECT_EQ(FailureOf([&] { missing.Split({PdfPageRange(1, 1)}, nowhere, "", true, "", ""); }),
            expected);
  EXPECT_EQ(FailureOf([&] { missing.SetMetaData({"Ada"}, path, ""); }), expected);
  EXPECT_EQ(FailureOf([&] { missing.Transform(number.front(), path, ""); }), expected);
  EXPECT_EQ(FailureOf([&] { missing.Transform(number, path, ""); }), expected);
}

TEST_F(PdfDocAssemblyTest, EveryCopyBringsAllThatBelongsToThePages) {
  static_assert(PdfDoc::PDF_COPY_OPTIONS == 15);
  PdfDoc doc = MakeRich("a.pdf");
  const std::string directory = directory_.MakeDir("out") + "/";
  std::vector<PdfTransformation> number = {PdfTransformation(PdfTransformType::AddPageNumber)};
  PdfDoc::Merge({doc}, directory + "merged.pdf", "");
  doc.Rotate(PdfRotationAngle::Rotate90, directory + "turned.pdf", "");
  doc.Split({PdfPageRange(1, 1)}, directory, "", false, "", "");
  doc.SetMetaData({"Ada"}, directory + "described.pdf", "");
  doc.Transform(number.front(), directory + "numbered.pdf", "");
  doc.Transform(number, directory + "transformed.pdf", "");
  EXPECT_EQ(directory_.Names("out").size(), 6U);
  for (const std::string& name : directory_.Names("out")) {
    const std::string json = QpdfJson(directory + name);
    for (const char* part : {"/Link", "u:remember", "u:filled in", "\"title\": \"Chapter\""}) {
      EXPECT_THAT(json, HasSubstr(part)) << name;
    }
  }
}

}  // namespace
}  // namespace TarnixTools
