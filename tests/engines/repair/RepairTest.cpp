#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/repair/ErrorCodes.h"
#include "engines/repair/ProblemCodes.h"
#include "engines/repair/Repair.h"
#include "support/RawPdf.h"
#include "support/Readers.h"
#include "support/TempDir.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines {
namespace {

using platform::WidePath;
using repair::ProblemCode;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using testing::Exists;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing::PageTexts;
using testing::QpdfComplaints;
using testing::RawPdf;
using testing::ReadBytes;
using testing::TestPdf;
using testing::WriteBytes;

// A document without a usable cross-reference.
std::string Torn() {
  std::string bytes = TestPdf().Pages(3).Bytes();
  return bytes.substr(0, bytes.rfind("xref\n0"));
}

class RepairTest : public ::testing::Test {
 protected:
  RepairTest() {
    PdfRepairInitialize();
    object_ = PdfRepairCreateObject();
    TestPdf().Pages(3).Write(directory_.Path("in.pdf"));
    WriteBytes(directory_.Path("torn.pdf"), Torn());
  }

  ~RepairTest() override {
    PdfRepairDestroyObject(object_);
    PdfRepairUnInitialize();
  }

  std::string Path(const std::string& name) const { return directory_.Path(name); }

  int Open(const std::string& name, const std::wstring& password = L"") {
    return PdfRepairOpenW(object_, WidePath(Path(name)), password);
  }

  int Save(const std::string& name, const std::wstring& password = L"") {
    return PdfRepairSaveAsW(object_, WidePath(Path(name)), password, password, 0x804);
  }

  std::int32_t Code() const { return PdfRepairGetErrorCode(object_); }

  static std::string MessageOf(const TPdfRepairError* error) {
    std::string text(static_cast<std::size_t>(PdfRepairErrorGetMessageA(error, nullptr, 0)), 'x');
    PdfRepairErrorGetMessageA(error, text.data(), static_cast<std::int32_t>(text.size()));
    EXPECT_EQ(text.back(), '\0');
    text.pop_back();
    return text;
  }

  std::vector<std::string> Messages() {
    std::vector<std::string> messages;
    for (const auto* error = PdfRepairGetFirstError(object_); error != nullptr;
         error = PdfRepairGetNextError(object_)) {
      messages.push_back(MessageOf(error));
    }
    return messages;
  }

  testing::TempDir directory_;
  TPdfRepair* object_ = nullptr;
};

TEST_F(RepairTest, FindsNothingInASoundDocument) {
  ASSERT_EQ(Open("in.pdf"), 1);
  EXPECT_EQ(PdfRepairAnalyze(object_), 1);
  EXPECT_EQ(PdfRepairGetFirstError(object_), nullptr);
  EXPECT_EQ(PdfRepairGetNextError(object_), nullptr);
  EXPECT_EQ(PdfRepairAnalyzeAndRepair(object_), 1);
  EXPECT_THAT(Messages(), IsEmpty());
  EXPECT_EQ(PdfRepairGetReportCount(object_), 0);
}

TEST_F(RepairTest, CopiesASoundDocumentByteForByte) {
  ASSERT_EQ(Open("in.pdf"), 1);
  ASSERT_EQ(PdfRepairAnalyzeAndRepair(object_), 1);
  EXPECT_EQ(Save("out.pdf"), 1);
  EXPECT_EQ(ReadBytes(Path("out.pdf")), ReadBytes(Path("in.pdf")));
}

TEST_F(RepairTest, WritesASoundDocumentAnewWhereThatIsWanted) {
  ASSERT_EQ(Open("in.pdf"), 1);
  EXPECT_EQ(PdfRepairSetRebuildOptions(object_, PdfRepairGetRebuildOptions(object_) | 1), 1);
  ASSERT_EQ(PdfRepairAnalyzeAndRepair(object_), 1);
  EXPECT_EQ(Save("out.pdf"), 1);
  EXPECT_NE(ReadBytes(Path("out.pdf")), ReadBytes(Path("in.pdf")));
  EXPECT_EQ(PageTexts(Path("out.pdf")), PageTexts(Path("in.pdf")));
}

// What was analyzed last counts.
TEST_F(RepairTest, RepairsNothingWhenItIsOnlyAnalyzedAgain) {
  ASSERT_EQ(Open("torn.pdf"), 1);
  ASSERT_EQ(PdfRepairAnalyzeAndRepair(object_), 1);
  ASSERT_EQ(PdfRepairAnalyze(object_), 1);
  EXPECT_EQ(Save("out.pdf"), 1);
  EXPECT_EQ(ReadBytes(Path("out.pdf")), ReadBytes(Path("torn.pdf")));
}

// What was to be put right was of the document before.
TEST_F(RepairTest, WritesAnewWhatNobodyHasLookedAt) {
  ASSERT_EQ(Open("torn.pdf"), 1);
  ASSERT_EQ(PdfRepairAnalyzeAndRepair(object_), 1);
  ASSERT_EQ(Open("in.pdf"), 1);
  EXPECT_THAT(Messages(), IsEmpty());
  EXPECT_EQ(PdfRepairGetReportCount(object_), 0);
  EXPECT_EQ(PdfRepairSetRebuildOptions(object_, 1), 1);
  EXPECT_EQ(Save("out.pdf"), 1);
  EXPECT_NE(ReadBytes(Path("out.pdf")), ReadBytes(Path("in.pdf")));
  EXPECT_EQ(PageTexts(Path("out.pdf")), PageTexts(Path("in.pdf")));
}

TEST_F(RepairTest, HasNoDocumentWhenOneCannotBeOpened) {
  ASSERT_EQ(Open("in.pdf"), 1);
  ASSERT_EQ(Open("none.pdf"), 0);
  EXPECT_EQ(PdfRepairAnalyze(object_), 0);
  EXPECT_EQ(Code(), kRepairArgumentError);
  EXPECT_EQ(PdfRepairClose(object_), 0);
}

TEST_F(RepairTest, TellsWhatCanBePutRight) {
  ASSERT_EQ(Open("torn.pdf"), 1);
  EXPECT_EQ(PdfRepairAnalyze(object_), 1);
  const TPdfRepairError* first = PdfRepairGetFirstError(object_);
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(PdfRepairErrorGetErrorCode(first), static_cast<std::int32_t>(ProblemCode::kEndMissing));
  EXPECT_THAT(MessageOf(first), EndsWith(": the end-of-file marker is missing; can be fixed"));
}

// What nobody has looked at is not called sound.
TEST_F(RepairTest, ListsThatItCouldNotLookAtAll) {
  WriteBytes(Path("large.pdf"),
             RawPdf().Pages(1, "/Contents 4 0 R").Stream(4, "", std::string(500'000, ' ')).Table());
  ASSERT_EQ(Open("large.pdf"), 1);
  std::filesystem::resize_file(Path("large.pdf"), 20);
  EXPECT_EQ(PdfRepairAnalyze(object_), 0);
  EXPECT_EQ(Messages(),
            std::vector<std::string>{"The document could not be looked at to its end; lost"});
  EXPECT_EQ(Save("out.pdf"), 0);
  EXPECT_FALSE(Exists(Path("out.pdf")));
}

TEST_F(RepairTest, PutsADamagedDocumentRight) {
  ASSERT_EQ(Open("torn.pdf"), 1);
  EXPECT_EQ(PdfRepairAnalyzeAndRepair(object_), 1);
  EXPECT_THAT(Messages().front(), HasSubstr("; fixed"));
  EXPECT_EQ(Save("out.pdf"), 1);
  EXPECT_EQ(PdfRepairClose(object_), 1);
  EXPECT_EQ(Code(), kRepairNoError);
  EXPECT_EQ(QpdfComplaints(Path("out.pdf")), "");
  EXPECT_EQ(PageTexts(Path("out.pdf")), PageTexts(Path("in.pdf")));
  EXPECT_THAT(directory_.Names(), ElementsAre("in.pdf", "out.pdf", "torn.pdf"));
}

TEST_F(RepairTest, WritesNothingAnewThatWasOnlyAnalyzed) {
  ASSERT_EQ(Open("torn.pdf"), 1);
  ASSERT_EQ(PdfRepairAnalyze(object_), 1);
  EXPECT_EQ(Save("out.pdf"), 1);
  EXPECT_EQ(ReadBytes(Path("out.pdf")), Torn());
}

TEST_F(RepairTest, LooksAtWhatIsAskedFor) {
  EXPECT_EQ(PdfRepairGetAnalysisOptions(object_), 7u);
  ASSERT_EQ(Open("torn.pdf"), 1);
  EXPECT_EQ(PdfRepairSetAnalysisOptions(object_, 4), 1);
  EXPECT_EQ(PdfRepairAnalyze(object_), 1);
  EXPECT_EQ(PdfRepairGetFirstError(object_), nullptr);
  EXPECT_EQ(PdfRepairSetAnalysisOptions(object_, 0xF1), 1);
  EXPECT_EQ(PdfRepairGetAnalysisOptions(object_), 0xF1u);
  EXPECT_EQ(PdfRepairAnalyze(object_), 1);
  EXPECT_NE(PdfRepairGetFirstError(object_), nullptr);
}

TEST_F(RepairTest, CutsAMessageToItsBuffer) {
  ASSERT_EQ(Open("torn.pdf"), 1);
  ASSERT_EQ(PdfRepairAnalyze(object_), 1);
  char text[8] = "#######";
  const auto size = PdfRepairErrorGetMessageA(PdfRepairGetFirstError(object_), text, 5);
  EXPECT_GT(size, 8);
  EXPECT_STREQ(text, "Byte");
  EXPECT_EQ(text[5], '#');
}

TEST_F(RepairTest, EncryptsWithAPassword) {
  ASSERT_EQ(Open("in.pdf"), 1);
  ASSERT_EQ(PdfRepairAnalyzeAndRepair(object_), 1);
  EXPECT_EQ(Save("out.pdf", L"pw"), 1);
  EXPECT_THAT(testing::QpdfEncryption(Path("out.pdf"), "pw"), HasSubstr("P = 2052"));
  EXPECT_EQ(QpdfComplaints(Path("out.pdf"), "pw"), "");
}

TEST_F(RepairTest, TakesEncryptionOffWithoutAPassword) {
  testing::EncryptWithQpdf(Path("in.pdf"), Path("secret.pdf"), "pw", "pw");
  ASSERT_EQ(Open("secret.pdf", L"pw"), 1);
  ASSERT_EQ(PdfRepairAnalyzeAndRepair(object_), 1);
  EXPECT_THAT(Messages(), IsEmpty());
  EXPECT_EQ(Save("out.pdf"), 1);
  EXPECT_FALSE(testing::QpdfNeedsPassword(Path("out.pdf")));
  EXPECT_EQ(PageTexts(Path("out.pdf")), PageTexts(Path("in.pdf")));
}

TEST_F(RepairTest, NeedsTheRightPassword) {
  testing::EncryptWithQpdf(Path("in.pdf"), Path("secret.pdf"), "pw", "pw");
  EXPECT_EQ(Open("secret.pdf"), 0);
  EXPECT_EQ(Code(), kRepairPasswordError);
  EXPECT_EQ(Open("secret.pdf", L"wrong"), 0);
  EXPECT_EQ(Code(), 17);
}

TEST_F(RepairTest, TellsWhyADocumentDoesNotOpen) {
  EXPECT_EQ(Open("missing.pdf"), 0);
  EXPECT_EQ(Code(), kRepairOpenError);
  WriteBytes(Path("text.pdf"), "no document");
  EXPECT_EQ(Open("text.pdf"), 0);
  EXPECT_EQ(Code(), kRepairNotAPdfError);
}

TEST_F(RepairTest, ADocumentWithoutPagesFailsWhenItIsSaved) {
  WriteBytes(Path("hopeless.pdf"), "%PDF-1.4\n1 0 obj\n(text)\nendobj\n");
  ASSERT_EQ(Open("hopeless.pdf"), 1);
  EXPECT_EQ(PdfRepairAnalyzeAndRepair(object_), 0);
  EXPECT_THAT(Messages(), ::testing::Contains("No page can be found; lost"));
  EXPECT_EQ(Save("out.pdf"), 0);
  EXPECT_EQ(Code(), kRepairNoPagesError);
  EXPECT_FALSE(Exists(Path("out.pdf")));
}

TEST_F(RepairTest, TellsThatTheOutputCannotBeMade) {
  ASSERT_EQ(Open("in.pdf"), 1);
  EXPECT_EQ(Save("missing/out.pdf"), 0);
  EXPECT_EQ(Code(), kRepairCreateError);
}

TEST_F(RepairTest, WritesOverItsInput) {
  ASSERT_EQ(Open("torn.pdf"), 1);
  ASSERT_EQ(PdfRepairAnalyzeAndRepair(object_), 1);
  EXPECT_EQ(Save("torn.pdf"), 1);
  EXPECT_EQ(QpdfComplaints(Path("torn.pdf")), "");
}

TEST_F(RepairTest, RefusesCallsOutOfOrder) {
  EXPECT_EQ(PdfRepairAnalyze(object_), 0);
  EXPECT_EQ(Code(), kRepairArgumentError);
  EXPECT_EQ(PdfRepairAnalyzeAndRepair(object_), 0);
  EXPECT_EQ(Save("out.pdf"), 0);
  EXPECT_EQ(PdfRepairClose(object_), 0);
  TPdfRepairReportEntry entry;
  EXPECT_EQ(PdfRepairGetReportEntry(object_, 0, &entry), 0);
}

TEST_F(RepairTest, ForgetsProblemsWhenItIsClosed) {
  ASSERT_EQ(Open("torn.pdf"), 1);
  ASSERT_EQ(PdfRepairAnalyze(object_), 1);
  EXPECT_EQ(PdfRepairClose(object_), 1);
  EXPECT_EQ(PdfRepairGetFirstError(object_), nullptr);
  EXPECT_EQ(PdfRepairGetReportCount(object_), 0);
}

TEST_F(RepairTest, ReportsWhatReadersDoNotMind) {
  WriteBytes(Path("lint.pdf"), ReadBytes(Path("in.pdf")) + "\nmore");
  ASSERT_EQ(Open("lint.pdf"), 1);
  ASSERT_EQ(PdfRepairAnalyze(object_), 1);
  EXPECT_EQ(PdfRepairGetFirstError(object_), nullptr);
  ASSERT_EQ(PdfRepairGetReportCount(object_), 1);
  TPdfRepairReportEntry entry;
  ASSERT_EQ(PdfRepairGetReportEntry(object_, 0, &entry), 1);
  EXPECT_EQ(entry.kind, TPdfRepairedKind::kDamage);
  EXPECT_FALSE(entry.is_lost);
  EXPECT_STREQ(entry.reason, "other bytes follow the end-of-file marker");
}

TEST_F(RepairTest, TakesNullHandles) {
  EXPECT_EQ(PdfRepairDestroyObject(nullptr), 0);
  EXPECT_EQ(PdfRepairOpenW(nullptr, WidePath(Path("in.pdf")), L""), 0);
  EXPECT_EQ(PdfRepairGetErrorCode(nullptr), kRepairArgumentError);
  EXPECT_EQ(PdfRepairGetFirstError(nullptr), nullptr);
  EXPECT_EQ(PdfRepairGetNextError(nullptr), nullptr);
  EXPECT_EQ(PdfRepairErrorGetErrorCode(nullptr), 0);
  EXPECT_EQ(PdfRepairErrorGetMessageA(nullptr, nullptr, 0), 0);
  EXPECT_EQ(PdfRepairGetReportCount(nullptr), -1);
  EXPECT_EQ(PdfRepairGetAnalysisOptions(nullptr), 0u);
  EXPECT_EQ(PdfRepairGetRebuildOptions(nullptr), 0u);
  EXPECT_EQ(PdfRepairClose(nullptr), 0);
}

}  // namespace
}  // namespace TarnixTools::engines
