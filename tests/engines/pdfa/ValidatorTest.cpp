#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "engines/pdfa/ErrorCodes.h"
#include "engines/pdfa/PdfA.h"
#include "support/ArchiveFile.h"
#include "support/TempDir.h"

namespace TarnixTools::engines {
namespace {

using TarnixTools::testing::ArchiveFile;

class ValidatorTest : public ::testing::Test {
 protected:
  ValidatorTest() {
    PdfValidatorInitialize();
    object_ = PdfValidatorCreateObject();
  }

  ~ValidatorTest() override {
    PdfValidatorDestroyObject(object_);
    PdfValidatorUnInitialize();
  }

  platform::WidePath Write(const std::string& bytes) {
    const std::string path = directory_.Path("a.pdf");
    std::ofstream(path, std::ios::binary) << bytes;
    return platform::WidePath(path);
  }

  int Open(const std::string& bytes, std::int32_t compliance = 0) {
    return PdfValidatorOpenW(object_, Write(bytes), L"", compliance);
  }

  TarnixTools::testing::TempDir directory_;
  TPdfValidator* object_ = nullptr;
};

TEST_F(ValidatorTest, ValidatesByTheClaim) {
  ASSERT_NE(Open(ArchiveFile("2u").Bytes()), 0);
  EXPECT_EQ(PdfValidatorGetCompliance(object_), 0x1702);
  EXPECT_NE(PdfValidatorValidate(object_), 0);
  EXPECT_EQ(PdfValidatorGetFindingCount(object_), 0);
  EXPECT_NE(PdfValidatorClose(object_), 0);
}

TEST_F(ValidatorTest, ValidatesByAnotherLevel) {
  ASSERT_NE(Open(ArchiveFile("2u").Bytes(), 0x1711), 0);
  EXPECT_EQ(PdfValidatorValidate(object_), 0);
  EXPECT_EQ(PdfValidatorGetErrorCode(object_), kValidatorNoError);
  ASSERT_EQ(PdfValidatorGetFindingCount(object_), 1);
  TPdfFinding finding;
  ASSERT_NE(PdfValidatorGetFinding(object_, 0, &finding), 0);
  EXPECT_STREQ(finding.clause, "6.6.4");
  EXPECT_EQ(finding.test, 2);
  EXPECT_EQ(finding.object, 4);
}

TEST_F(ValidatorTest, ValidatesWhatClaimsNothingBy2b) {
  ASSERT_NE(Open(ArchiveFile("2b").Replace("ns/id/", "ns/xx/").Bytes()), 0);
  EXPECT_EQ(PdfValidatorGetCompliance(object_), 0x1700);
  EXPECT_EQ(PdfValidatorValidate(object_), 0);
}

TEST_F(ValidatorTest, TellsPlaces) {
  ASSERT_NE(Open(ArchiveFile("2b").Annotation("/Subtype/Text/F 4/Rect[1 2 30 40]").Bytes()), 0);
  EXPECT_EQ(PdfValidatorValidate(object_), 0);
  TPdfFinding finding;
  ASSERT_NE(PdfValidatorGetFinding(object_, 0, &finding), 0);
  EXPECT_EQ(finding.page, 1);
  EXPECT_EQ(finding.object, 20);
  EXPECT_STREQ(finding.subject, "Text");
  EXPECT_EQ(finding.has_box, 1);
  EXPECT_EQ(finding.right, 30);
}

TEST_F(ValidatorTest, TellsManyFindingsOfARuleWhenAsked) {
  const std::string bytes = ArchiveFile("2b").Object(20, "<A>").Object(21, "<B>").Bytes();
  ASSERT_NE(Open(bytes), 0);
  EXPECT_EQ(PdfValidatorValidate(object_), 0);
  EXPECT_EQ(PdfValidatorGetFindingCount(object_), 1);
  EXPECT_NE(PdfValidatorSetReportingLevel(object_, 2), 0);
  EXPECT_EQ(PdfValidatorValidate(object_), 0);
  EXPECT_EQ(PdfValidatorGetFindingCount(object_), 2);
}

TEST_F(ValidatorTest, RefusesWhatIsNoDocument) {
  EXPECT_EQ(Open("no document"), 0);
  EXPECT_EQ(PdfValidatorGetErrorCode(object_), kValidatorNotAPdfError);
  EXPECT_EQ(PdfValidatorValidate(object_), 0);
  EXPECT_EQ(PdfValidatorGetErrorCode(object_), kValidatorArgumentError);
}

TEST_F(ValidatorTest, RefusesWrongArguments) {
  EXPECT_EQ(Open(ArchiveFile("2b").Bytes(), 0x1700), 0);
  EXPECT_EQ(PdfValidatorGetErrorCode(object_), kValidatorArgumentError);
  EXPECT_EQ(PdfValidatorSetReportingLevel(object_, 3), 0);
  EXPECT_EQ(PdfValidatorClose(object_), 0);
  TPdfFinding finding;
  EXPECT_EQ(PdfValidatorGetFinding(object_, 0, &finding), 0);
  EXPECT_EQ(PdfValidatorOpenW(object_, platform::WidePath(directory_.Path("none.pdf")), L"", 0), 0);
  EXPECT_EQ(PdfValidatorGetErrorCode(object_), kValidatorOpenError);
}

TEST_F(ValidatorTest, TakesNullHandles) {
  EXPECT_EQ(PdfValidatorSetReportingLevel(nullptr, 2), 0);
  EXPECT_EQ(PdfValidatorGetErrorCode(nullptr), kValidatorArgumentError);
  EXPECT_EQ(PdfValidatorOpenW(nullptr, platform::WidePath("a"), L"", 0), 0);
  EXPECT_EQ(PdfValidatorGetCompliance(nullptr), 0);
  EXPECT_EQ(PdfValidatorValidate(nullptr), 0);
  EXPECT_EQ(PdfValidatorGetFindingCount(nullptr), -1);
  EXPECT_EQ(PdfValidatorGetFinding(nullptr, 0, nullptr), 0);
  EXPECT_EQ(PdfValidatorClose(nullptr), 0);
  EXPECT_EQ(PdfValidatorDestroyObject(nullptr), 0);
}

}  // namespace
}  // namespace TarnixTools::engines
