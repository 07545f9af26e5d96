#include <fstream>
#include <sstream>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "engines/pdfa/ErrorCodes.h"
#include "engines/pdfa/PdfA.h"
#include "support/ArchiveFile.h"
#include "support/Expected.h"
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

// On a page that is turned and begins elsewhere, as it is seen.
TEST_F(ValidatorTest, TellsAllOfAFinding) {
  std::string text;
  for (const char* page : {"", "/Rotate 90", "/Rotate 180", "/Rotate 270", "/CropBox[20 10 150 90]",
                           "/UserUnit 2", "/Rotate 90/CropBox[20 10 150 90]"}) {
    ASSERT_NE(Open(ArchiveFile("2b")
                       .Page(page)
                       .Annotation("/Subtype/Sound/F 6/Rect[30 20 60 35]")
                       .Bytes()),
              0);
    EXPECT_EQ(PdfValidatorValidate(object_), 0);
    text += std::string(page) + "\n";
    for (int i = 0; i < PdfValidatorGetFindingCount(object_); ++i) {
      TPdfFinding finding;
      EXPECT_NE(PdfValidatorGetFinding(object_, i, &finding), 0);
      std::ostringstream line;
      line << finding.clause << '-' << finding.test << " object " << finding.object << " page "
           << finding.page << " box " << finding.has_box << " [" << finding.left << ' '
           << finding.bottom << ' ' << finding.right << ' ' << finding.top << "] "
           << finding.subject << "\n"
           << finding.wrong << "\n"
           << finding.cure << "\n";
      text += line.str();
    }
  }
  EXPECT_TRUE(TarnixTools::testing::IsAsExpected("pdfa/findings/told.txt", text));
}

// Of many findings of one rule some are told, and one where not more was asked for.
TEST_F(ValidatorTest, TellsSoManyFindingsOfARule) {
  ArchiveFile file("2b");
  for (int i = 20; i < 125; ++i) {
    file.Object(i, "<A>");
  }
  ASSERT_NE(Open(file.Bytes()), 0);
  for (const auto& [level, count] : {std::pair(0, 1), std::pair(1, 1), std::pair(2, 100)}) {
    EXPECT_NE(PdfValidatorSetReportingLevel(object_, level), 0);
    EXPECT_EQ(PdfValidatorValidate(object_), 0);
    EXPECT_EQ(PdfValidatorGetFindingCount(object_), count) << level;
  }
  EXPECT_EQ(PdfValidatorSetReportingLevel(object_, -1), 0);
  EXPECT_EQ(PdfValidatorSetReportingLevel(object_, 3), 0);
  EXPECT_EQ(PdfValidatorValidate(object_), 0);
  EXPECT_EQ(PdfValidatorGetFindingCount(object_), 100);
  TPdfFinding finding;
  EXPECT_NE(PdfValidatorGetFinding(object_, 99, &finding), 0);
  EXPECT_EQ(PdfValidatorGetFinding(object_, 100, &finding), 0);
  EXPECT_EQ(PdfValidatorGetFinding(object_, -1, &finding), 0);
  EXPECT_EQ(PdfValidatorGetFinding(object_, 0, nullptr), 0);
  EXPECT_NE(PdfValidatorClose(object_), 0);
  EXPECT_EQ(PdfValidatorGetFindingCount(object_), 0);
  EXPECT_EQ(PdfValidatorGetCompliance(object_), 0);
  EXPECT_EQ(PdfValidatorGetErrorCode(object_), kValidatorArgumentError);
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

// What cannot be opened leaves nothing open.
TEST_F(ValidatorTest, ForgetsTheDocumentBefore) {
  for (const bool is_wrong_level : {false, true}) {
    ASSERT_NE(Open(ArchiveFile("2b").Catalog("/AA<<>>").Bytes()), 0);
    EXPECT_EQ(PdfValidatorValidate(object_), 0);
    EXPECT_EQ(PdfValidatorGetFindingCount(object_), 1);
    EXPECT_EQ(is_wrong_level ? Open(ArchiveFile("2b").Bytes(), 0x1700) : Open("no document"), 0);
    EXPECT_EQ(PdfValidatorGetFindingCount(object_), 0);
    EXPECT_EQ(PdfValidatorGetCompliance(object_), 0);
    EXPECT_EQ(PdfValidatorValidate(object_), 0);
    EXPECT_EQ(PdfValidatorGetErrorCode(object_), kValidatorArgumentError);
    EXPECT_EQ(PdfValidatorClose(object_), 0);
  }
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
