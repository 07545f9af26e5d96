#include <limits>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/optimizer/ErrorCodes.h"
#include "engines/optimizer/Optimizer.h"
#include "support/RawPdf.h"
#include "support/Readers.h"
#include "support/TempDir.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines {
namespace {

using platform::WidePath;
using ::testing::ElementsAre;
using testing::Exists;
using ::testing::IsEmpty;
using testing::QpdfComplaints;
using testing::RawPdf;
using testing::ReadBytes;
using testing::TestPdf;
using testing::WriteBytes;

class OptimizerTest : public ::testing::Test {
 protected:
  OptimizerTest() {
    PdfOptimizeInitialize();
    object_ = PdfOptimizeCreateObject();
    TestPdf().Pages(20).Write(directory_.Path("in.pdf"));
  }

  ~OptimizerTest() override {
    PdfOptimizeDestroyObject(object_);
    PdfOptimizeUnInitialize();
  }

  std::string Path(const std::string& name) const { return directory_.Path(name); }

  int Open(const std::string& name, const std::wstring& password = L"") {
    return PdfOptimizeOpenW(object_, WidePath(Path(name)), password);
  }

  int Save(const std::string& name, const std::wstring& password = L"") {
    return PdfOptimizeSaveAsW(object_, WidePath(Path(name)), password, password, 0xFFFFFFFF);
  }

  std::int32_t Code() const { return PdfOptimizeGetErrorCode(object_); }

  // The code with which a file of these bytes does not open.
  std::int32_t CodeOf(const std::string& bytes) {
    WriteBytes(Path("other.pdf"), bytes);
    EXPECT_EQ(Open("other.pdf"), 0);
    return Code();
  }

  testing::TempDir directory_;
  TPdfOptimizer* object_ = nullptr;
};

TEST_F(OptimizerTest, MakesADocumentSmaller) {
  ASSERT_EQ(Open("in.pdf"), 1);
  EXPECT_EQ(Save("out.pdf"), 1);
  EXPECT_EQ(PdfOptimizeClose(object_), 1);
  EXPECT_EQ(Code(), kOptimizerNoError);
  EXPECT_LT(ReadBytes(Path("out.pdf")).size(), ReadBytes(Path("in.pdf")).size());
  EXPECT_EQ(QpdfComplaints(Path("out.pdf")), "");
  EXPECT_THAT(directory_.Names(), ElementsAre("in.pdf", "out.pdf"));
}

TEST_F(OptimizerTest, SavesAsOftenAsWanted) {
  ASSERT_EQ(Open("in.pdf"), 1);
  EXPECT_EQ(Save("1.pdf"), 1);
  EXPECT_EQ(Save("2.pdf"), 1);
  EXPECT_EQ(ReadBytes(Path("1.pdf")), ReadBytes(Path("2.pdf")));
}

TEST_F(OptimizerTest, EncryptsWithAPassword) {
  ASSERT_EQ(Open("in.pdf"), 1);
  EXPECT_EQ(Save("out.pdf", L"secret"), 1);
  EXPECT_EQ(QpdfComplaints(Path("out.pdf"), "secret"), "");
  EXPECT_NE(QpdfComplaints(Path("out.pdf"), "wrong"), "");
  ASSERT_EQ(Open("out.pdf", L"secret"), 1);
  EXPECT_EQ(Save("plain.pdf"), 1);
  EXPECT_EQ(QpdfComplaints(Path("plain.pdf")), "");
}

TEST_F(OptimizerTest, NeedsTheRightPassword) {
  ASSERT_EQ(Open("in.pdf"), 1);
  ASSERT_EQ(Save("locked.pdf", L"secret"), 1);
  EXPECT_EQ(Open("locked.pdf"), 0);
  EXPECT_EQ(Code(), 17);
  EXPECT_EQ(Open("locked.pdf", L"wrong"), 0);
  EXPECT_EQ(Code(), 17);
}

TEST_F(OptimizerTest, TellsWhyADocumentDoesNotOpen) {
  EXPECT_EQ(Open("missing.pdf"), 0);
  EXPECT_EQ(Code(), kOptimizerOpenError);
  EXPECT_EQ(CodeOf(""), kOptimizerNotAPdfError);
  EXPECT_EQ(CodeOf("text"), kOptimizerNotAPdfError);
  EXPECT_EQ(CodeOf(RawPdf().Object(1, "<</Type/Catalog>>").Table("/Root 1 0 R/Encrypt 5 0 R")),
            kOptimizerDamagedSecurityError);
}

TEST_F(OptimizerTest, ADocumentThatDoesNotOpenLeavesNoneOpen) {
  ASSERT_EQ(Open("in.pdf"), 1);
  EXPECT_EQ(Open("missing.pdf"), 0);
  EXPECT_EQ(Save("out.pdf"), 0);
  EXPECT_EQ(Code(), kOptimizerArgumentError);
}

TEST_F(OptimizerTest, TellsThatTheOutputCannotBeMade) {
  ASSERT_EQ(Open("in.pdf"), 1);
  EXPECT_EQ(Save("missing/out.pdf"), 0);
  EXPECT_EQ(Code(), kOptimizerCreateError);
  EXPECT_EQ(Save("out.pdf"), 1);  // the document is as good as before
}

TEST_F(OptimizerTest, TellsThatTheDiskIsFull) {
  if (!Exists("/dev/full")) {
    GTEST_SKIP();
  }
  ASSERT_EQ(Open("in.pdf"), 1);
  EXPECT_EQ(PdfOptimizeSaveAsW(object_, WidePath("/dev/full"), L"", L"", 0), 0);
  EXPECT_EQ(Code(), kOptimizerWriteError);
}

TEST_F(OptimizerTest, RefusesCallsOutOfOrder) {
  EXPECT_EQ(Save("out.pdf"), 0);
  EXPECT_EQ(Code(), kOptimizerArgumentError);
  EXPECT_EQ(PdfOptimizeClose(object_), 0);
  ASSERT_EQ(Open("in.pdf"), 1);
  EXPECT_EQ(PdfOptimizeClose(object_), 1);
  EXPECT_EQ(PdfOptimizeClose(object_), 0);
  EXPECT_EQ(Save("out.pdf"), 0);
  EXPECT_THAT(directory_.Names(), ElementsAre("in.pdf"));
}

TEST_F(OptimizerTest, KeepsSettingsWithinTheirRanges) {
  const float infinity = std::numeric_limits<float>::infinity();
  const float no_number = std::numeric_limits<float>::quiet_NaN();
  EXPECT_EQ(PdfOptimizeSetProfile(object_, 1), 0);
  EXPECT_EQ(Code(), kOptimizerArgumentError);
  EXPECT_EQ(PdfOptimizeSetColorConversion(object_, 2), 0);
  EXPECT_EQ(PdfOptimizeSetColorConversion(object_, -1), 0);
  EXPECT_EQ(PdfOptimizeSetImageQuality(object_, 0), 0);
  EXPECT_EQ(PdfOptimizeSetImageQuality(object_, 101), 0);
  for (const float dpi : {-1.0F, 65536.0F, infinity, no_number}) {
    EXPECT_EQ(PdfOptimizeSetResolutionDPI(object_, dpi), 0);
    EXPECT_EQ(PdfOptimizeSetThresholdDPI(object_, dpi), 0);
  }
}

TEST_F(OptimizerTest, TakesEverySetting) {
  EXPECT_EQ(PdfOptimizeSetProfile(object_, 0), 1);
  EXPECT_EQ(PdfOptimizeSetProfile(object_, 2), 1);
  EXPECT_EQ(PdfOptimizeSetColorConversion(object_, 1), 1);
  EXPECT_EQ(PdfOptimizeSetBitonalCompressions(object_, 0x80), 1);
  EXPECT_EQ(PdfOptimizeSetContinuousCompressions(object_, 0xFFFFFFFF), 1);
  EXPECT_EQ(PdfOptimizeSetImageQuality(object_, 100), 1);
  EXPECT_EQ(PdfOptimizeSetResolutionDPI(object_, 0), 1);
  EXPECT_EQ(PdfOptimizeSetThresholdDPI(object_, 65535), 1);
  EXPECT_EQ(PdfOptimizeSetClipImages(object_, 1), 1);
  EXPECT_EQ(PdfOptimizeSetOptimizeResources(object_, 1), 1);
  EXPECT_EQ(PdfOptimizeSetRemoveRedundantObjects(object_, 1), 1);
  EXPECT_EQ(PdfOptimizeSetRemoveStandardFonts(object_, 1), 1);
  EXPECT_EQ(PdfOptimizeSetSubsetFonts(object_, 1), 1);
  EXPECT_EQ(PdfOptimizeSetReduceColorComplexity(object_, 1), 1);
  EXPECT_EQ(PdfOptimizeSetStrip(object_, 0x47F), 1);
  ASSERT_EQ(Open("in.pdf"), 1);
  EXPECT_EQ(Save("out.pdf"), 1);
  EXPECT_EQ(QpdfComplaints(Path("out.pdf")), "");
}

TEST_F(OptimizerTest, HasNothingToReportOfASoundDocument) {
  EXPECT_EQ(PdfOptimizeGetReportCount(object_), 0);
  ASSERT_EQ(Open("in.pdf"), 1);
  EXPECT_EQ(Save("out.pdf"), 1);
  EXPECT_EQ(PdfOptimizeGetReportCount(object_), 0);
  TPdfOptimizeReportEntry entry;
  EXPECT_EQ(PdfOptimizeGetReportEntry(object_, 0, &entry), 0);
  TPdfImageFigures figures;
  EXPECT_EQ(PdfOptimizeGetImageFigures(object_, TPdfImageClass::kSoftMask, &figures), 1);
  EXPECT_EQ(figures.images, 0U);
  EXPECT_EQ(PdfOptimizeGetImageFigures(object_, static_cast<TPdfImageClass>(5), &figures), 0);
  EXPECT_EQ(PdfOptimizeGetImageFigures(object_, TPdfImageClass::kBitonal, nullptr), 0);
}

TEST_F(OptimizerTest, ReportsWhatIsLost) {
  std::string cut = ReadBytes(Path("in.pdf"));
  cut.resize(cut.size() / 2);
  WriteBytes(Path("cut.pdf"), cut);
  ASSERT_EQ(Open("cut.pdf"), 1);
  EXPECT_EQ(Save("out.pdf"), 1);
  ASSERT_GT(PdfOptimizeGetReportCount(object_), 0);
  TPdfOptimizeReportEntry entry;
  ASSERT_EQ(PdfOptimizeGetReportEntry(object_, 0, &entry), 1);
  EXPECT_EQ(entry.kind, TPdfOptimizedKind::kDamage);
  EXPECT_EQ(entry.count, 1U);
  EXPECT_STRNE(entry.reason, "");
  EXPECT_EQ(PdfOptimizeGetReportEntry(object_, -1, &entry), 0);
  EXPECT_EQ(PdfOptimizeGetReportEntry(object_, 0, nullptr), 0);
  EXPECT_EQ(Save("missing/out.pdf"), 0);
  EXPECT_EQ(PdfOptimizeGetReportCount(object_), 0);  // a failed save has nothing to tell
}

TEST_F(OptimizerTest, TakesNullHandles) {
  TPdfImageFigures figures;
  TPdfOptimizeReportEntry entry;
  EXPECT_EQ(PdfOptimizeOpenW(nullptr, WidePath("in.pdf"), L""), 0);
  EXPECT_EQ(PdfOptimizeGetErrorCode(nullptr), kOptimizerArgumentError);
  EXPECT_EQ(PdfOptimizeSaveAsW(nullptr, WidePath("out.pdf"), L"", L"", 0), 0);
  EXPECT_EQ(PdfOptimizeClose(nullptr), 0);
  EXPECT_EQ(PdfOptimizeDestroyObject(nullptr), 0);
  EXPECT_EQ(PdfOptimizeGetImageFigures(nullptr, TPdfImageClass::kPhotograph, &figures), 0);
  EXPECT_EQ(PdfOptimizeGetReportCount(nullptr), -1);
  EXPECT_EQ(PdfOptimizeGetReportEntry(nullptr, 0, &entry), 0);
  EXPECT_EQ(PdfOptimizeSetProfile(nullptr, 2), 0);
  EXPECT_EQ(PdfOptimizeSetColorConversion(nullptr, 0), 0);
  EXPECT_EQ(PdfOptimizeSetBitonalCompressions(nullptr, 0), 0);
  EXPECT_EQ(PdfOptimizeSetContinuousCompressions(nullptr, 0), 0);
  EXPECT_EQ(PdfOptimizeSetImageQuality(nullptr, 75), 0);
  EXPECT_EQ(PdfOptimizeSetResolutionDPI(nullptr, 0), 0);
  EXPECT_EQ(PdfOptimizeSetThresholdDPI(nullptr, 0), 0);
  EXPECT_EQ(PdfOptimizeSetClipImages(nullptr, 0), 0);
  EXPECT_EQ(PdfOptimizeSetOptimizeResources(nullptr, 0), 0);
  EXPECT_EQ(PdfOptimizeSetRemoveRedundantObjects(nullptr, 0), 0);
  EXPECT_EQ(PdfOptimizeSetRemoveStandardFonts(nullptr, 0), 0);
  EXPECT_EQ(PdfOptimizeSetSubsetFonts(nullptr, 0), 0);
  EXPECT_EQ(PdfOptimizeSetReduceColorComplexity(nullptr, 0), 0);
  EXPECT_EQ(PdfOptimizeSetStrip(nullptr, 0), 0);
}

TEST_F(OptimizerTest, TakesPathsThatAreNoUtf8) {
  TestPdf().Pages(3).Write(Path("J\xF6rg.pdf"));
  ASSERT_EQ(Open("J\xF6rg.pdf"), 1);
  EXPECT_EQ(Save("\xFF\xE9.pdf"), 1);
  EXPECT_EQ(QpdfComplaints(Path("\xFF\xE9.pdf")), "");
}

}  // namespace
}  // namespace TarnixTools::engines
