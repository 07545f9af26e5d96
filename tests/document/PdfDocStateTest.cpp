// PdfDoc between operations: what is open, what an object remembers, and which outputs it refuses.
#include "document/WritingOperations.h"
#include "support/DocumentTest.h"

namespace TarnixTools {
namespace {

using testing::Backslashes;
using testing::Failure;
using testing::FailureOf;
using ::testing::HasSubstr;
using testing::QpdfEncryption;
using testing::TestPdf;
using testing::WriteBytes;

class PdfDocStateTest : public testing::DocumentTest {
 protected:
  // Those that write no file of a name that is given.
  std::vector<Operation> Others() const {
    const std::string directory = Path("");
    return {
        {"GetPagesNum", [](PdfDoc& document, auto&&...) { document.GetPagesNum(); }},
        {"GetPageSize",
         [](PdfDoc& document, auto&&...) { document.GetPageSize(2, PdfSizeUnits::Points, 72, 1); }},
        {"GetPageSizes", [](PdfDoc& document, auto&&...) { document.GetPageSizes(); }},
        {"IsValidRange",
         [](PdfDoc& document, auto&&...) { document.IsValidRange(PdfPageRange(1, 9)); }},
        {"IsEncrypted", [](PdfDoc& document, auto&&...) { document.IsEncrypted(); }},
        {"GetMetaData",
         [](PdfDoc& document, auto&&...) { document.GetMetaData(PdfMetadataParam::Creator); }},
        {"GetTitle", [](PdfDoc& document, auto&&...) { document.GetTitle(); }},
        {"GetSubject", [](PdfDoc& document, auto&&...) { document.GetSubject(); }},
        {"GetSummary", [](PdfDoc& document, auto&&...) { document.GetSummary(); }},
        {"GetPdfaCompliance", [](PdfDoc& document, auto&&...) { document.GetPdfaCompliance(); }},
        {"ValidatePdfA", [](PdfDoc& document, auto&&...) { document.ValidatePdfA(); }},
        {"GetXmpMetaData",
         [=](PdfDoc& document, auto&&...) { document.GetXmpMetaData(directory + "a.xmp"); }},
        {"Split into parts",
         [=](PdfDoc& document, auto&&...) { document.Split(1, directory, "", ""); }},
        {"Split by ranges",
         [=](PdfDoc& document, auto&&...) {
           document.Split({PdfPageRange(1, 2)}, directory, "", false, "", "");
         }},
        {"UnLock",
         [=](PdfDoc& document, auto&&...) { document.UnLock("", directory + "unlocked.pdf"); }},
    };
  }

  // Its path and its password can be changed then, and else not.
  static bool IsClosed(PdfDoc document) {
    document.SetPath("another.pdf");
    document.SetPassword("another");
    EXPECT_EQ(document.GetPath() == "another.pdf", document.GetPassword() == "another");
    return document.GetPath() == "another.pdf";
  }
};

TEST_F(PdfDocStateTest, IsClosedAfterEveryOperation) {
  MakePdf("doc.pdf", 2);
  for (const auto& operations : {WritingOperations(), Others()}) {
    for (const Operation& operation : operations) {
      PdfDoc document = Doc("doc.pdf");
      operation.run(document, Path("out.pdf"), "");
      EXPECT_TRUE(IsClosed(document)) << operation.name;
      EXPECT_EQ(document.GetLastError(), 0) << operation.name;
      EXPECT_EQ(document.GetPath(), Backslashes(Path("doc.pdf"))) << operation.name;
    }
  }
}

TEST_F(PdfDocStateTest, IsClosedAfterAWrongPasswordToo) {
  MakePdf("doc.pdf", 2);
  Doc("doc.pdf").Lock("pw", Path("locked.pdf"));
  const Failure refused(PdfExceptionCode::PasswordError,
                        "Invalid password for PDF [" + Backslashes(Path("locked.pdf")) + "]", 17);
  for (const auto& operations : {WritingOperations(), Others()}) {
    for (const Operation& operation : operations) {
      const std::string name = operation.name;
      PdfDoc document = Doc("locked.pdf", "wrong");
      const Failure failure = FailureOf([&] { operation.run(document, Path("out.pdf"), ""); });
      EXPECT_TRUE(IsClosed(document)) << name;
      if (name.find("PDF/A") != std::string::npos || name.find("Pdf") != std::string::npos ||
          name.find("Xmp") != std::string::npos) {
        EXPECT_EQ(failure.code, PdfExceptionCode::EngineError) << "another engine: " << name;
        EXPECT_EQ(failure.engine_code, 17) << name;
        EXPECT_EQ(document.GetLastError(), 0) << name;
      } else if (name == "IsEncrypted") {
        EXPECT_EQ(failure, Failure());
        EXPECT_EQ(document.GetLastError(), 17);
      } else {
        EXPECT_EQ(failure, refused) << name;
        EXPECT_EQ(document.GetLastError(), 17) << name;
      }
    }
  }
  EXPECT_THAT(directory_.Names(), ::testing::ElementsAre("doc.pdf", "locked.pdf"));
}

TEST_F(PdfDocStateTest, RefusesAnEmptyOutputPath) {
  MakePdf("doc.pdf", 2);
  for (const Operation& operation : WritingOperations()) {
    PdfDoc document = Doc("doc.pdf");
    const Failure failure = FailureOf([&] { operation.run(document, "", "pw"); });
    EXPECT_EQ(failure,
              Failure(PdfExceptionCode::InvalidParameter, "Empty path received at PDF doc"))
        << operation.name;
    EXPECT_TRUE(IsClosed(document)) << operation.name;
  }
}

TEST_F(PdfDocStateTest, ProtectsOutputsWithAllPermissionsAndOnePassword) {
  TARNIX_NEED_PROGRAM("qpdf");
  MakePdf("doc.pdf", 2);
  std::vector<Operation> operations = WritingOperations();
  operations.push_back(
      {"Merge", [](PdfDoc& document, const std::string& output, const std::string& password) {
         PdfDoc::Merge({document}, output, password);
       }});
  operations.push_back(
      {"Append", [](PdfDoc& document, const std::string& output, const std::string& password) {
         PdfDoc created(output, password, false);
         created.Create(true);
         created.Append(document);
       }});
  operations.push_back(
      {"Split", [](PdfDoc& document, const std::string& output, const std::string& password) {
         const std::size_t name = output.rfind('/') + 1;
         document.Split({PdfPageRange(1, 2)}, output.substr(0, name), "", true, output.substr(name),
                        password);
       }});
  for (const Operation& operation : operations) {
    PdfDoc document = Doc("doc.pdf");
    operation.run(document, Path("out.pdf"), "pw");
    const std::string encryption = QpdfEncryption(Path("out.pdf"), "pw");
    EXPECT_THAT(encryption, HasSubstr("P = 3900\n")) << operation.name;
    EXPECT_THAT(encryption, HasSubstr("Supplied password is owner password")) << operation.name;
    EXPECT_THAT(encryption, HasSubstr("Supplied password is user password")) << operation.name;
    std::remove(Path("out.pdf").c_str());
  }
}

TEST_F(PdfDocStateTest, StaysOpenAfterAUnitThatIsNone) {
  PdfDoc document(MakePdf("doc.pdf", 2), "", true);
  FailureOf([&] { document.GetPageSize(1, static_cast<PdfSizeUnits>(5), 72, 1); });
  document.SetPassword("another");
  EXPECT_EQ(document.GetPassword(), "");
  EXPECT_EQ(document.GetPagesNum(), 2);
  EXPECT_TRUE(IsClosed(document));
}

// The page is looked for in the document that is still open, whatever is on the disk now.
TEST_F(PdfDocStateTest, UsesWhatIsOpenWhenASizeFailed) {
  PdfDoc document(MakePdf("doc.pdf", 2), "", true);
  FailureOf([&] { document.GetPageSize(3, PdfSizeUnits::Points, 72, 1); });
  PdfDoc::Delete(*std::make_unique<PdfDoc>(Path("doc.pdf"), "", true));
  EXPECT_EQ(document.GetPageSize(2, PdfSizeUnits::Points, 72, 1).GetWidth(), 612);
  EXPECT_EQ(FailureOf([&] { document.GetPagesNum(); }).message,
            "Unable to open file " + Backslashes(Path("doc.pdf")));
}

TEST_F(PdfDocStateTest, CopiesRememberAWrongPassword) {
  MakePdf("doc.pdf", 2);
  Doc("doc.pdf").Lock("pw", Path("locked.pdf"));
  PdfDoc document = Doc("locked.pdf", "wrong");
  FailureOf([&] { document.GetPagesNum(); });
  PdfDoc copy(document);
  PdfDoc assigned;
  assigned = document;
  PdfDoc moved(std::move(document));
  for (PdfDoc* same : {&copy, &assigned, &moved}) {
    EXPECT_EQ(same->GetLastError(), 17);
    same->SetPassword("pw");
    EXPECT_EQ(FailureOf([&] { same->GetPagesNum(); }).code, PdfExceptionCode::PasswordError);
  }
  EXPECT_EQ(FailureOf([&] { PdfDoc::Merge({copy}, Path("out.pdf"), ""); }).code,
            PdfExceptionCode::PasswordError);
}

TEST_F(PdfDocStateTest, CopiesHoldAllThatIsSet) {
  PdfDoc document(MakePdf("a.b.pdf", 2), "secret", true);
  document.AddRange(PdfPageRange(1, 1));
  document.SetKeepMetadata(true);
  document.SetPieceNames("{n}.pdf");
  document.Split(1, Path(""), "", "");
  PdfDoc copy(document);
  PdfDoc assigned;
  assigned = document;
  PdfDoc moved(std::move(document));
  for (const PdfDoc* same : {&copy, &assigned, &moved}) {
    EXPECT_EQ(same->GetPath(), Backslashes(Path("a.b.pdf")));
    EXPECT_EQ(same->GetDocDirectory(), Backslashes(Path("")));
    EXPECT_EQ(same->GetDocName(true), "a.b.pdf");
    EXPECT_EQ(same->GetDocName(false), "a.b");
    EXPECT_EQ(same->GetPassword(), "secret");
    EXPECT_EQ(same->GetRangesNum(), 1);
    EXPECT_TRUE(same->GetKeepMetadata());
    EXPECT_EQ(same->GetPieceNames(), "{n}.pdf");
    EXPECT_THAT(same->GetPieces(), ::testing::ElementsAre(Path("01.pdf"), Path("02.pdf")));
  }
}

// The first to close it closes it for all of them.
TEST_F(PdfDocStateTest, CopiesOfACreatedDocumentShareIt) {
  MakePdf("doc.pdf", 2);
  PdfDoc created(Path("out.pdf"), "", false);
  created.Create(false);
  PdfDoc copy(created);
  copy.SetPath("another.pdf");
  EXPECT_EQ(copy.GetPath(), Backslashes(Path("out.pdf")));
  copy.Append(Doc("doc.pdf"));
  EXPECT_EQ(Doc("out.pdf").GetPagesNum(), 2);
  EXPECT_TRUE(IsClosed(created));
  EXPECT_EQ(FailureOf([&] { created.Create(false); }), Failure());
}

TEST_F(PdfDocStateTest, CreateTruncatesOnlyWhatIsCompleted) {
  WriteBytes(Path("out.pdf"), "old");
  PdfDoc created(Path("out.pdf"), "secret", false);
  created.Create(true);
  EXPECT_EQ(created.GetPassword(), "secret");
  EXPECT_EQ(FailureOf([&] { created.Create(true); }).code, PdfExceptionCode::InternalError);
  EXPECT_EQ(created.GetPassword(), "secret");
  created.Append(std::list<PdfDoc>());
  EXPECT_EQ(FailureOf([&] { Doc("out.pdf").GetPagesNum(); }).code, PdfExceptionCode::PasswordError);
  EXPECT_EQ(Doc("out.pdf", "secret").GetPagesNum(), 0);
}

TEST_F(PdfDocStateTest, PasswordQuestionsNeedAPath) {
  const Failure expected(PdfExceptionCode::InvalidParameter, "Empty path received at PDF doc");
  EXPECT_EQ(FailureOf([] { PdfDoc::HasPassword(""); }), expected);
  EXPECT_EQ(FailureOf([] { PdfDoc::IsValidPassword("", "pw"); }), expected);
}

TEST_F(PdfDocStateTest, OfAMissingFileIsToldByEachEngine) {
  PdfDoc missing(Path("missing.pdf"), "", false);
  const std::string path = Backslashes(Path("missing.pdf"));
  EXPECT_EQ(FailureOf([&] { missing.GetXmpMetaData(Path("a.xmp")); }),
            Failure(PdfExceptionCode::EngineError,
                    "Unable to open PDF file [" + path + "] for XMP extraction", 2));
  EXPECT_EQ(FailureOf([&] { missing.GetPdfaCompliance(); }),
            Failure(PdfExceptionCode::EngineError,
                    "Unable to open PDF file [" + path + "] for compliance verification", 2));
  EXPECT_EQ(FailureOf([&] { missing.ValidatePdfA(); }),
            Failure(PdfExceptionCode::EngineError,
                    "Could not open validator object for file [" + path + "] [0x0000000C]", 12));
  EXPECT_EQ(FailureOf([&] { missing.GetMetaData(PdfMetadataParam::Author); }),
            Failure(PdfExceptionCode::FileNotFound, "Unable to open file " + path));
  EXPECT_EQ(missing.GetLastError(), 0);
}

}  // namespace
}  // namespace TarnixTools
