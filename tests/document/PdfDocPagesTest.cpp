// PdfDoc's questions to a file: pages, sizes, ranges, passwords.
#include <limits>

#include <sys/stat.h>

#include "support/DocumentTest.h"
#include "support/RawPdf.h"

namespace TarnixTools {
namespace {

using testing::Backslashes;
using testing::EncryptWithQpdf;
using testing::Failure;
using testing::FailureOf;
using testing::RawPdf;
using ::testing::StartsWith;
using testing::TestPdf;
using testing::WriteBytes;

class PdfDocPagesTest : public testing::DocumentTest {
 protected:
  static Failure InvalidPassword(const std::string& path) {
    return {PdfExceptionCode::PasswordError, "Invalid password for PDF [" + Backslashes(path) + "]",
            17};
  }

  // Path of an encrypted document of two pages.
  std::string MakeEncrypted(const std::string& user_password, const std::string& owner_password) {
    return EncryptWithQpdf(MakePdf("plain.pdf", 2), Path("encrypted.pdf"), user_password,
                           owner_password);
  }
};

TEST_F(PdfDocPagesTest, CountsPages) {
  EXPECT_EQ(PdfDoc(MakePdf("a.pdf", 3), "", true).GetPagesNum(), 3);
  EXPECT_EQ(PdfDoc(MakePdf("none.pdf", 0), "", true).GetPagesNum(), 0);
}

// Of four pages two cannot be read, and the page tree's count is as damaged as they are.
TEST_F(PdfDocPagesTest, CountsPagesThatAreLostLikeEveryJob) {
  RawPdf pdf;
  pdf.Pages(4).Object(2, "<</Type/Pages/Kids[3 0 R 4 0 R 5 0 R 6 0 R null]/Count x>>");
  std::string bytes = pdf.Table();
  bytes[bytes.find("\n4 0 obj") + 5] = '?';
  bytes[bytes.find("\n6 0 obj") + 5] = '?';
  WriteBytes(Path("a.pdf"), bytes);
  PdfDoc doc(Path("a.pdf"), "", true);
  EXPECT_EQ(doc.GetPagesNum(), 4);
  EXPECT_EQ(doc.GetPageSizes().size(), 4U);
  doc.Split(3, Path(""), "", "");
  EXPECT_EQ(PdfDoc(Path("a-01.pdf"), "", true).GetPagesNum(), 3);
  EXPECT_EQ(PdfDoc(Path("a-02.pdf"), "", true).GetPagesNum(), 1);
  doc.Rotate(PdfRotationAngle::Rotate90, Path("turned.pdf"), "");
  EXPECT_EQ(PdfDoc(Path("turned.pdf"), "", true).GetPagesNum(), 4);
  std::int64_t lost = 0;
  for (const PdfReportEntry& entry : doc.GetReport().GetEntries()) {
    lost += entry.reason == "page lost, an empty one stands for it" ? entry.count : 0;
  }
  EXPECT_EQ(lost, 2);
}

TEST_F(PdfDocPagesTest, OpensTheFileForEachQuestion) {
  PdfDoc doc(MakePdf("a.pdf", 3), "", true);
  EXPECT_EQ(doc.GetPagesNum(), 3);
  MakePdf("a.pdf", 5);
  EXPECT_EQ(doc.GetPagesNum(), 5);
  doc.SetPath(MakePdf("b.pdf", 1));
  EXPECT_EQ(doc.GetPagesNum(), 1);
}

TEST_F(PdfDocPagesTest, CountingCompletesADocumentThatWasCreated) {
  PdfDoc doc(Path("new.pdf"), "", false);
  doc.Create(false);
  EXPECT_EQ(doc.GetPagesNum(), 0);
  EXPECT_THAT(directory_.Names(), ::testing::ElementsAre("new.pdf"));
  EXPECT_EQ(Doc("new.pdf").GetPagesNum(), 0);
}

TEST_F(PdfDocPagesTest, SizeInEveryUnit) {
  PdfDoc doc(TestPdf().Page("a").Size(595.28, 841.89).Write(Path("a4.pdf")), "", true);
  const PdfSize millimeters = doc.GetPageSize(1, PdfSizeUnits::Millimeters, 72, 0);
  EXPECT_NEAR(millimeters.GetWidth(), 210, 0.01);
  EXPECT_NEAR(millimeters.GetHeight(), 297, 0.01);
  const PdfSize centimeters = doc.GetPageSize(1, PdfSizeUnits::Centimeters, 72, 0);
  EXPECT_NEAR(centimeters.GetWidth(), 21, 0.001);
  EXPECT_NEAR(centimeters.GetHeight(), 29.7, 0.001);
  const PdfSize inches = doc.GetPageSize(1, PdfSizeUnits::Inches, 72, 0);
  EXPECT_NEAR(inches.GetWidth(), 595.28 / 72, 1e-6);
  EXPECT_NEAR(inches.GetHeight(), 841.89 / 72, 1e-6);
  const PdfSize points = doc.GetPageSize(1, PdfSizeUnits::Points, 1, 5);
  EXPECT_NEAR(points.GetWidth(), 595.28, 1e-4);
  EXPECT_NEAR(points.GetHeight(), 841.89, 1e-4);
  const PdfSize custom = doc.GetPageSize(1, PdfSizeUnits::Custom, 72, 10);
  EXPECT_NEAR(custom.GetWidth(), 59.528, 1e-5);
  EXPECT_NEAR(custom.GetHeight(), 84.189, 1e-5);
}

TEST_F(PdfDocPagesTest, SizeIsDividedByTheResolutionOrTheDivisor) {
  PdfDoc doc(TestPdf().Page("a").Page("b").Size(720, 360).Write(Path("a.pdf")), "", true);
  const auto expect = [&doc](PdfSizeUnits units, double width, double height) {
    const PdfSize size = doc.GetPageSize(2, units, 144, 48);
    EXPECT_DOUBLE_EQ(size.GetWidth(), width);
    EXPECT_DOUBLE_EQ(size.GetHeight(), height);
  };
  expect(PdfSizeUnits::Centimeters, 12.7, 6.35);
  expect(PdfSizeUnits::Millimeters, 127, 63.5);
  expect(PdfSizeUnits::Custom, 15, 7.5);
  expect(PdfSizeUnits::Inches, 5, 2.5);
  expect(PdfSizeUnits::Points, 720, 360);
}

TEST_F(PdfDocPagesTest, SizeIsThatOfThePageAsSeen) {
  PdfDoc doc(TestPdf()
                 .InheritedEntry("/MediaBox [0 0 300 400]")
                 .Page("inherited")
                 .NoMediaBox()
                 .Page("rotated")
                 .Size(300, 400)
                 .Rotate(90)
                 .Page("cropped")
                 .Size(300, 400)
                 .PageEntry("/CropBox [10 20 110 220]")
                 .Write(Path("a.pdf")),
             "", true);
  const auto size = [&doc](int page) { return doc.GetPageSize(page, PdfSizeUnits::Points, 1, 1); };
  EXPECT_DOUBLE_EQ(size(1).GetWidth(), 300);
  EXPECT_DOUBLE_EQ(size(1).GetHeight(), 400);
  EXPECT_DOUBLE_EQ(size(2).GetWidth(), 400);
  EXPECT_DOUBLE_EQ(size(2).GetHeight(), 300);
  EXPECT_DOUBLE_EQ(size(3).GetWidth(), 100);
  EXPECT_DOUBLE_EQ(size(3).GetHeight(), 200);
}

TEST_F(PdfDocPagesTest, SizeOfAPageThatIsNotThere) {
  PdfDoc doc(MakePdf("a.pdf", 3), "", true);
  EXPECT_EQ(FailureOf([&] { doc.GetPageSize(0, PdfSizeUnits::Points, 72, 1); }),
            Failure(PdfExceptionCode::InvalidParameter,
                    "Page number [0] is out of the expected range [1-3]"));
  EXPECT_EQ(FailureOf([&] { doc.GetPageSize(4, PdfSizeUnits::Points, 72, 1); }).message,
            "Page number [4] is out of the expected range [1-3]");
  EXPECT_EQ(FailureOf([&] { doc.GetPageSize(-2, PdfSizeUnits::Points, 72, 1); }).message,
            "Page number [-2] is out of the expected range [1-3]");
  PdfDoc none(MakePdf("none.pdf", 0), "", true);
  EXPECT_EQ(FailureOf([&] { none.GetPageSize(1, PdfSizeUnits::Points, 72, 1); }).message,
            "Page number [1] is out of the expected range [1-0]");
}

TEST_F(PdfDocPagesTest, SizeInAnUnknownUnit) {
  PdfDoc doc(MakePdf("a.pdf", 3), "", true);
  EXPECT_EQ(FailureOf([&] { doc.GetPageSize(2, static_cast<PdfSizeUnits>(9), 72, 1); }),
            Failure(PdfExceptionCode::InvalidParameter,
                    "Unable not get page [2] dimensions (invalid units value [9])"));
  EXPECT_EQ(FailureOf([&] { doc.GetPageSize(3, static_cast<PdfSizeUnits>(5), 72, 1); }).message,
            "Unable not get page [3] dimensions (invalid units value [5])");
  EXPECT_EQ(FailureOf([&] { doc.GetPageSize(1, static_cast<PdfSizeUnits>(-1), 72, 1); }).message,
            "Unable not get page [1] dimensions (invalid units value [-1])");
}

TEST_F(PdfDocPagesTest, LooksForThePageBeforeTheUnit) {
  PdfDoc doc(MakePdf("a.pdf", 3), "", true);
  EXPECT_EQ(FailureOf([&] { doc.GetPageSize(4, static_cast<PdfSizeUnits>(9), 72, 1); }),
            Failure(PdfExceptionCode::InvalidParameter,
                    "Page number [4] is out of the expected range [1-3]"));
}

TEST_F(PdfDocPagesTest, StaysOpenAfterASizeFailedUntilTheNextOperation) {
  PdfDoc doc(MakePdf("a.pdf", 3), "", true);
  FailureOf([&] { doc.GetPageSize(0, PdfSizeUnits::Points, 72, 1); });
  doc.SetPath("other.pdf");
  EXPECT_EQ(doc.GetPath(), Backslashes(Path("a.pdf")));
  EXPECT_EQ(doc.GetPagesNum(), 3);
  doc.SetPath("other.pdf");
  EXPECT_EQ(doc.GetPath(), "other.pdf");
}

TEST_F(PdfDocPagesTest, CopyOfAnOpenDocumentIsClosedWithIt) {
  PdfDoc doc(MakePdf("a.pdf", 3), "", true);
  FailureOf([&] { doc.GetPageSize(0, PdfSizeUnits::Points, 72, 1); });
  {
    PdfDoc copy(doc);
    EXPECT_EQ(copy.GetPagesNum(), 3);
    copy.SetPath("closed.pdf");
    EXPECT_EQ(copy.GetPath(), "closed.pdf");
  }
  EXPECT_EQ(doc.GetPagesNum(), 3);
  FailureOf([&] { doc.GetPageSize(0, PdfSizeUnits::Points, 72, 1); });
  PdfDoc other;
  other = doc;
  doc = PdfDoc(MakePdf("b.pdf", 1), "", true);
  EXPECT_EQ(other.GetPagesNum(), 3);
  EXPECT_EQ(doc.GetPagesNum(), 1);
}

TEST_F(PdfDocPagesTest, RangeIsValidWhenAllItsPagesAreThere) {
  PdfDoc doc(MakePdf("a.pdf", 3), "", true);
  EXPECT_TRUE(doc.IsValidRange(PdfPageRange(1, 3)));
  EXPECT_TRUE(doc.IsValidRange(PdfPageRange(3, 3)));
  EXPECT_FALSE(doc.IsValidRange(PdfPageRange(1, 4)));
  EXPECT_FALSE(doc.IsValidRange(PdfPageRange(4, 4)));
  EXPECT_FALSE(doc.IsValidRange(PdfPageRange(1, std::numeric_limits<int>::max())));
  EXPECT_FALSE(PdfDoc(MakePdf("none.pdf", 0), "", true).IsValidRange(PdfPageRange(1, 1)));
}

TEST_F(PdfDocPagesTest, RangesAreKeptUnchecked) {
  PdfDoc doc;
  doc.AddRange(PdfPageRange(1, 1000));
  doc.AddRange(PdfPageRange(1, 1000));
  EXPECT_EQ(doc.GetRangesNum(), 2);
  doc.ClearRanges();
  EXPECT_EQ(doc.GetRangesNum(), 0);
}

TEST_F(PdfDocPagesTest, WhatIsNoPdfIsAnEngineError) {
  for (const std::string& content :
       {std::string(), std::string("hello"), std::string(5000, '\0')}) {
    const std::string path = WriteBytes(Path("not.pdf"), content);
    PdfDoc doc(path, "", true);
    const std::vector<std::function<void()>> operations = {
        [&] { doc.GetPagesNum(); },
        [&] { doc.GetPageSizes(); },
        [&] { doc.IsValidRange(PdfPageRange(1, 1)); },
        [&] { doc.IsEncrypted(); },
        [&] { doc.Split(1, directory_.Path() + "/", "", ""); },
        [&] { doc.Split({PdfPageRange(1, 1)}, directory_.Path() + "/", "", false, "", ""); },
    };
    for (const auto& operation : operations) {
      const Failure failure = FailureOf(operation);
      EXPECT_EQ(failure.code, PdfExceptionCode::EngineError);
      EXPECT_NE(failure.engine_code, 0);
      char code[32];
      std::snprintf(code, sizeof(code), "0x%08lX", failure.engine_code);
      EXPECT_EQ(failure.message,
                "Unable to open PDF [" + Backslashes(path) + "] (engine error [" + code + "])");
      EXPECT_EQ(doc.GetLastError(), failure.engine_code);
    }
    EXPECT_EQ(FailureOf([&] { doc.GetPageSize(1, PdfSizeUnits::Points, 72, 1); }),
              Failure(PdfExceptionCode::InvalidParameter, "Unable to obtain current doc pages"));
    EXPECT_FALSE(PdfDoc::HasPassword(path));
    EXPECT_FALSE(PdfDoc::IsValidPassword(path, ""));
  }
  EXPECT_THAT(directory_.Names(), ::testing::ElementsAre("not.pdf"));
}

TEST_F(PdfDocPagesTest, PathAndPasswordMayChangeAfterAnOpenThatFailed) {
  PdfDoc doc(WriteBytes(Path("not.pdf"), "hello"), "", true);
  FailureOf([&] { doc.GetPagesNum(); });
  doc.SetPath(MakePdf("a.pdf", 2));
  EXPECT_EQ(doc.GetPagesNum(), 2);
  EXPECT_NE(doc.GetLastError(), 0);  // of the first: a success does not reset it
}

TEST_F(PdfDocPagesTest, PipeAsInputIsAnErrorAndNoEndlessWait) {
  const std::string path = Path("pipe.pdf");
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  PdfDoc doc(path, "", true);
  EXPECT_EQ(FailureOf([&] { doc.GetPagesNum(); }).code, PdfExceptionCode::EngineError);
}

TEST_F(PdfDocPagesTest, DocumentWithoutEncryptionNeedsNoPassword) {
  const std::string path = MakePdf("a.pdf", 1);
  EXPECT_FALSE(PdfDoc::HasPassword(path));
  EXPECT_TRUE(PdfDoc::IsValidPassword(path, ""));
  EXPECT_TRUE(PdfDoc::IsValidPassword(path, "anything"));
  EXPECT_FALSE(PdfDoc(path, "", true).IsEncrypted());
}

TEST_F(PdfDocPagesTest, PasswordQuestionsAboutAMissingFile) {
  const std::string path = Path("missing.pdf");
  const Failure expected(PdfExceptionCode::FileNotFound,
                         "File not found or invalid content: [" + path + "]");
  EXPECT_EQ(FailureOf([&] { PdfDoc::HasPassword(path); }), expected);
  EXPECT_EQ(FailureOf([&] { PdfDoc::IsValidPassword(path, "x"); }), expected);
}

TEST_F(PdfDocPagesTest, ProtectedDocumentNeedsOneOfItsPasswords) {
  TARNIX_NEED_PROGRAM("qpdf");
  const std::string path = MakeEncrypted("user", "owner");
  EXPECT_TRUE(PdfDoc::HasPassword(path));
  EXPECT_TRUE(PdfDoc::IsValidPassword(path, "user"));
  EXPECT_TRUE(PdfDoc::IsValidPassword(path, "owner"));
  EXPECT_FALSE(PdfDoc::IsValidPassword(path, ""));
  EXPECT_FALSE(PdfDoc::IsValidPassword(path, "wrong"));
  EXPECT_TRUE(PdfDoc(path, "user", true).IsEncrypted());
  EXPECT_TRUE(PdfDoc(path, "wrong", true).IsEncrypted());
  EXPECT_EQ(PdfDoc(path, "user", true).GetPagesNum(), 2);
}

TEST_F(PdfDocPagesTest, ProtectedDocumentIsRefusedWithoutItsPassword) {
  TARNIX_NEED_PROGRAM("qpdf");
  const std::string path = MakeEncrypted("user", "owner");
  for (const char* password : {"", "wrong"}) {
    PdfDoc doc(path, password, true);
    EXPECT_EQ(FailureOf([&] { doc.GetPagesNum(); }), InvalidPassword(path));
    EXPECT_EQ(FailureOf([&] { doc.GetPageSize(1, PdfSizeUnits::Points, 72, 1); }),
              InvalidPassword(path));
    EXPECT_EQ(FailureOf([&] { doc.IsValidRange(PdfPageRange(1, 1)); }), InvalidPassword(path));
    EXPECT_EQ(doc.GetLastError(), 17);
  }
}

TEST_F(PdfDocPagesTest, StaysRefusedAfterAWrongPassword) {
  TARNIX_NEED_PROGRAM("qpdf");
  const std::string path = MakeEncrypted("user", "owner");
  PdfDoc doc(path, "wrong", true);
  FailureOf([&] { doc.GetPagesNum(); });
  doc.SetPassword("user");
  EXPECT_EQ(doc.GetPassword(), "user");
  EXPECT_EQ(FailureOf([&] { doc.GetPagesNum(); }), InvalidPassword(path));
  EXPECT_EQ(PdfDoc(path, "user", true).GetPagesNum(), 2);
}

TEST_F(PdfDocPagesTest, AWrongPasswordIsForgottenWithTheNextOpeningThatFails) {
  TARNIX_NEED_PROGRAM("qpdf");
  const std::string path = MakeEncrypted("user", "owner");
  PdfDoc doc(path, "wrong", true);
  FailureOf([&] { doc.GetPagesNum(); });
  ASSERT_EQ(doc.GetLastError(), 17);
  WriteBytes(path, "hello");
  EXPECT_EQ(FailureOf([&] { doc.GetPagesNum(); }).code, PdfExceptionCode::EngineError);
  EXPECT_EQ(doc.GetLastError(), 4);
  MakePdf("encrypted.pdf", 3);
  EXPECT_EQ(doc.GetPagesNum(), 3);
  EXPECT_EQ(doc.GetLastError(), 4);
}

TEST_F(PdfDocPagesTest, EncryptedDocumentThatOpensWithoutPassword) {
  TARNIX_NEED_PROGRAM("qpdf");
  const std::string path = MakeEncrypted("", "owner");
  EXPECT_FALSE(PdfDoc::HasPassword(path));
  EXPECT_TRUE(PdfDoc::IsValidPassword(path, ""));
  EXPECT_TRUE(PdfDoc(path, "", true).IsEncrypted());
  EXPECT_EQ(PdfDoc(path, "", true).GetPagesNum(), 2);
}

}  // namespace
}  // namespace TarnixTools
