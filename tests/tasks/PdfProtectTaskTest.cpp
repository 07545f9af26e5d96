#include "PdfProtectTask.h"
#include "support/DocumentTest.h"
#include "support/Surroundings.h"

namespace TarnixTools {
namespace {

using ::testing::ElementsAre;
using testing::Failure;
using testing::FailureOf;
using ::testing::HasSubstr;
using ::testing::Not;
using testing::ProgramResult;
using testing::QpdfComplaints;
using testing::QpdfEncryption;
using testing::RunProgram;

class PdfProtectTaskTest : public testing::DocumentTest {
 protected:
  PdfProtectTaskTest() : task_(PdfDoc(MakePdf("report.pdf", 2, "Secret"), "", true)) {
    task_.SetOutputPath(directory_.MakeDir("out"));
  }

  static Failure NoPassword() {
    return {PdfExceptionCode::PasswordError, "No password provided to protect PDF doc"};
  }

  // Protects the document with the password and checks that it opens with that one only.
  void ExpectOpensWith(const std::string& password) {
    task_.SetPassword(password);
    task_.Execute();
    const std::string path = Path("out/locked_report.pdf");
    EXPECT_TRUE(PdfDoc::HasPassword(path));
    EXPECT_TRUE(PdfDoc::IsValidPassword(path, password));
    EXPECT_FALSE(PdfDoc::IsValidPassword(path, "not " + password));
    EXPECT_EQ(QpdfComplaints(path, password), "");
  }

  PdfProtectTask task_;
};

TEST_F(PdfProtectTaskTest, HasDefaults) {
  EXPECT_EQ(task_.GetPdfDocsNum(), 1);
  EXPECT_EQ(task_.GetOutPrefix(), "locked");
  EXPECT_EQ(task_.GetOutPdfName(), "");
  EXPECT_EQ(task_.GetPassword(), "");
  EXPECT_EQ(PdfProtectTask(Doc("report.pdf"), "pw").GetPassword(), "pw");
}

TEST_F(PdfProtectTaskTest, NamesTheOutput) {
  task_.SetPassword("pw");
  task_.Execute();
  EXPECT_THAT(directory_.Names("out"), ElementsAre("locked_report.pdf"));
  task_.SetOutPrefix("safe");
  task_.SetOutPrefix("");
  task_.Execute();
  task_.SetOutPdfName("x.pdf");
  task_.Execute();
  EXPECT_THAT(directory_.Names("out"),
              ElementsAre("locked_report.pdf", "safe_report.pdf", "x.pdf"));
  EXPECT_TRUE(PdfDoc::HasPassword(Path("out/x.pdf")));
  PdfDoc safe = Doc("out/safe_report.pdf");
  PdfDoc::Delete(safe);
  task_.SetOutPdfName("");
  task_.Execute();
  EXPECT_THAT(directory_.Names("out"),
              ElementsAre("locked_report.pdf", "safe_report.pdf", "x.pdf"));
}

TEST_F(PdfProtectTaskTest, NeedsAPasswordOfItsOwn) {
  EXPECT_EQ(FailureOf([&] { task_.Execute(); }), NoPassword());
  task_.SetOutPassword("not this one");
  EXPECT_EQ(FailureOf([&] { task_.Execute(); }), NoPassword());
  EXPECT_THAT(directory_.Names("out"), ElementsAre());
}

TEST_F(PdfProtectTaskTest, GivesTheOwnerAPasswordOfItsOwn) {
  task_.SetPassword("reader");
  task_.SetOwnerPassword("owner");
  task_.Execute();
  const std::string path = Path("out/locked_report.pdf");
  EXPECT_TRUE(PdfDoc::IsValidPassword(path, "reader"));
  EXPECT_TRUE(PdfDoc::IsValidPassword(path, "owner"));
  EXPECT_FALSE(PdfDoc::IsValidPassword(path, ""));
}

TEST_F(PdfProtectTaskTest, LetsEverybodyReadWhereOnlyTheOwnerHasAPassword) {
  TARNIX_NEED_PROGRAM("qpdf");
  constexpr std::uint32_t kFillFormsAndPrint = 0x104;
  task_.SetOwnerPassword("owner");
  EXPECT_EQ(task_.GetPermissions(), 3900U);
  task_.SetPermissions(kFillFormsAndPrint);
  task_.Execute();
  const std::string path = Path("out/locked_report.pdf");
  EXPECT_FALSE(PdfDoc::HasPassword(path));
  EXPECT_TRUE(Doc("out/locked_report.pdf").IsEncrypted());
  const std::string facts = QpdfEncryption(path, "");
  EXPECT_THAT(facts, HasSubstr("print low resolution: allowed"));
  EXPECT_THAT(facts, HasSubstr("modify forms: allowed"));
  EXPECT_THAT(facts, HasSubstr("extract for any purpose: not allowed"));
  EXPECT_THAT(facts, HasSubstr("modify annotations: not allowed"));
  EXPECT_THAT(facts, HasSubstr("print high resolution: not allowed"));
}

TEST_F(PdfProtectTaskTest, DoesNotUseTheOutputPassword) {
  task_.SetPassword("pw");
  task_.SetOutPassword("other");
  task_.Execute();
  EXPECT_TRUE(PdfDoc::IsValidPassword(Path("out/locked_report.pdf"), "pw"));
  EXPECT_FALSE(PdfDoc::IsValidPassword(Path("out/locked_report.pdf"), "other"));
}

TEST_F(PdfProtectTaskTest, NeedsExactlyOneDocumentBeforeThePasswordIsLookedAt) {
  task_.AddPdfDoc(Doc("report.pdf"));
  EXPECT_EQ(
      FailureOf([&] { task_.Execute(); }),
      Failure(PdfExceptionCode::InvalidParameter, "Invalid number of PDF docs [2] (1 expected)"));
  task_.ClearPdfDocs();
  EXPECT_EQ(FailureOf([&] { task_.Execute(); }).message,
            "Invalid number of PDF docs [0] (1 expected)");
}

TEST_F(PdfProtectTaskTest, EncryptsWithAes256AndAllPermissions) {
  TARNIX_NEED_PROGRAM("qpdf");
  task_.SetPassword("pw");
  task_.Execute();
  const std::string encryption = QpdfEncryption(Path("out/locked_report.pdf"), "pw");
  EXPECT_THAT(encryption, HasSubstr("R = 6\nP = 3900\n"));
  EXPECT_THAT(encryption, HasSubstr("stream encryption method: AESv3"));
  EXPECT_THAT(encryption, HasSubstr("string encryption method: AESv3"));
  EXPECT_THAT(encryption, Not(HasSubstr("not allowed")));
}

TEST_F(PdfProtectTaskTest, IsReadByOthersWithThePasswordOnly) {
  task_.SetPassword("pw");
  task_.Execute();
  const std::string path = Path("out/locked_report.pdf");

  const std::string draw_pdfium = testing::SourceDir() + "/tests/scripts/draw_pdfium";

  struct Reader {
    std::string program;
    std::vector<std::string> with_password;
    std::vector<std::string> without;
  };

  const std::vector<Reader> readers = {
      {"qpdf", {"--password=pw", "--check", path}, {"--check", path}},
      {"pdfinfo", {"-upw", "pw", path}, {path}},
      {"mutool", {"pages", "-p", "pw", path}, {"pages", path}},
      {draw_pdfium, {"-upw", "pw", path, Path("page")}, {path, Path("page")}},
  };
  int read = 0;
  for (const Reader& reader : readers) {
    if (!testing::HasProgram(reader.program)) {
      continue;
    }
    std::vector<std::string> command = {reader.program};
    command.insert(command.end(), reader.with_password.begin(), reader.with_password.end());
    const int status = RunProgram(command).exit_status;
    if (status == 77) {
      continue;  // it has no PDFium
    }
    ++read;
    EXPECT_EQ(status, 0) << reader.program;
    command = {reader.program};
    command.insert(command.end(), reader.without.begin(), reader.without.end());
    EXPECT_NE(RunProgram(command).exit_status, 0) << reader.program;
  }
  if (read == 0) {
    GTEST_SKIP() << "needs qpdf, pdfinfo or mutool";
  }
}

TEST_F(PdfProtectTaskTest, TakesUnicodePasswords) {
  TARNIX_NEED_PROGRAM("qpdf");
  TARNIX_NEED_PROGRAM("pdftotext");
  ExpectOpensWith(
      "Gr\xC3\xBC\xC3\x9F"
      "e \xE6\x97\xA5\xE6\x9C\xAC \xF0\x9F\x98\x80");
  EXPECT_EQ(Texts("out/locked_report.pdf", task_.GetPassword()), Labels(1, 2, "Secret"));
}

// Who types it the same way once more gets in; for other programs it is "caf" and U+FFFD.
TEST_F(PdfProtectTaskTest, DoesNotLockOutWhosePasswordIsNotUtf8) {
  TARNIX_NEED_PROGRAM("qpdf");
  task_.SetPassword("caf\xE9");
  task_.Execute();
  const std::string path = Path("out/locked_report.pdf");
  EXPECT_EQ(Doc("out/locked_report.pdf", "caf\xE9").GetPagesNum(), 2);
  EXPECT_FALSE(PdfDoc::IsValidPassword(path, "caf"));
  EXPECT_FALSE(PdfDoc::IsValidPassword(path, "\xE9"));
  EXPECT_EQ(QpdfComplaints(path, "caf\xEF\xBF\xBD"), "");
}

// Soft hyphens are dropped when a password is prepared: nothing would be left.
TEST_F(PdfProtectTaskTest, RefusesPasswordsThatProtectNothing) {
  for (const std::string password : {"", "\xC2\xAD", "\xC2\xAD\xC2\xAD"}) {
    task_.SetPassword(password);
    EXPECT_EQ(FailureOf([this] { task_.Execute(); }), NoPassword());
  }
  EXPECT_TRUE(directory_.Names("out").empty());
}

TEST_F(PdfProtectTaskTest, TakesLongPasswords) {
  TARNIX_NEED_PROGRAM("qpdf");
  const std::string password(200, 'x');
  ExpectOpensWith(password);
  EXPECT_EQ(Doc("out/locked_report.pdf", password).GetPagesNum(), 2);
  // Of a password's UTF-8, 127 bytes count.
  EXPECT_TRUE(PdfDoc::IsValidPassword(Path("out/locked_report.pdf"), password.substr(0, 127)));
  EXPECT_FALSE(PdfDoc::IsValidPassword(Path("out/locked_report.pdf"), password.substr(0, 126)));
}

TEST_F(PdfProtectTaskTest, ProtectsAnewWhatWasProtected) {
  PdfDoc(Path("report.pdf"), "", true).Lock("old", Path("old.pdf"));
  PdfProtectTask task(Doc("old.pdf", "old"), "new");
  task.SetOutputPath(Path("out"));
  task.Execute();
  EXPECT_FALSE(PdfDoc::IsValidPassword(Path("out/locked_old.pdf"), "old"));
  EXPECT_EQ(Doc("out/locked_old.pdf", "new").GetPagesNum(), 2);
}

TEST_F(PdfProtectTaskTest, IsCopiedAndMovedWithAllItHolds) {
  task_.SetPassword("pw");
  task_.SetOutPrefix("p");
  task_.SetOutPdfName("x.pdf");
  PdfProtectTask copy(task_);
  PdfProtectTask moved(std::move(task_));
  for (PdfProtectTask* same : {&copy, &moved}) {
    EXPECT_EQ(same->GetPassword(), "pw");
    EXPECT_EQ(same->GetOutPrefix(), "p");
    EXPECT_EQ(same->GetOutPdfName(), "x.pdf");
    same->Execute();
  }
  EXPECT_THAT(directory_.Names("out"), ElementsAre("x.pdf"));
}

}  // namespace
}  // namespace TarnixTools
