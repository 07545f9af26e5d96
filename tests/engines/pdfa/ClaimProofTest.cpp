#include <cstdio>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/pdfa/ErrorCodes.h"
#include "engines/pdfa/PdfA.h"
#include "support/ArchiveFile.h"
#include "support/Readers.h"
#include "support/TempDir.h"

namespace TarnixTools::engines {
namespace {

using TarnixTools::testing::ArchiveFile;
using TarnixTools::testing::QpdfComplaints;
using TarnixTools::testing::ReadBytes;
using TarnixTools::testing::WriteBytes;
using ::testing::HasSubstr;
using ::testing::Not;

class ClaimProofTest : public ::testing::Test {
 protected:
  std::int32_t Prove(const std::string& bytes) {
    const platform::FilePtr file(std::fopen(WriteBytes(Path(), bytes).c_str(), "r+b"));
    return PdfValidatorProveClaim(file.get());
  }

  std::string Path() const { return directory_.Path("a.pdf"); }

  std::string Written() const { return ReadBytes(Path()); }

  TarnixTools::testing::TempDir directory_;
};

TEST_F(ClaimProofTest, LeavesADocumentAloneThatIsWhatItClaims) {
  const std::string bytes = ArchiveFile("2u").Bytes();
  EXPECT_EQ(Prove(bytes), 0x1702);
  EXPECT_EQ(Written(), bytes);
}

TEST_F(ClaimProofTest, LeavesADocumentAloneThatClaimsNothing) {
  const std::string bytes = ArchiveFile("2b").Replace("ns/id/", "ns/xx/").Bytes();
  EXPECT_EQ(Prove(bytes), 0);
  EXPECT_EQ(Written(), bytes);
}

TEST_F(ClaimProofTest, TakesAClaimOutThatDoesNotHold) {
  const std::string bytes = ArchiveFile("1b").Annotation("/Subtype/Text/Rect[1 2 3 4]").Bytes();
  EXPECT_EQ(Prove(bytes), 0);
  EXPECT_EQ(Written().size(), bytes.size());
  EXPECT_THAT(Written(), Not(HasSubstr("pdfaid:part>")));
  EXPECT_EQ(QpdfComplaints(Path()), "");
}

// A page that is not tagged.
TEST_F(ClaimProofTest, LowersAClaimToWhatHolds) {
  for (const auto& [untrue, part] : {std::pair("1a", "1"), std::pair("2a", "2")}) {
    const std::string bytes =
        ArchiveFile(std::string(part) + "b").Replace("conformance>B<", "conformance>A<").Bytes();
    EXPECT_EQ(Prove(bytes), *part == '1' ? 0x1401 : 0x1702) << untrue;
    EXPECT_EQ(Written().size(), bytes.size());
    EXPECT_THAT(Written(), Not(HasSubstr("conformance>A<")));
    EXPECT_EQ(Prove(Written()), *part == '1' ? 0x1401 : 0x1702) << "once and for all";
  }
}

TEST_F(ClaimProofTest, FailsWhereNothingCanBeProven) {
  EXPECT_EQ(PdfValidatorProveClaim(nullptr), -1);
  EXPECT_EQ(PdfValidatorGetErrorCode(nullptr), kValidatorArgumentError);
  EXPECT_EQ(Prove("no document"), -1);
  EXPECT_EQ(PdfValidatorGetErrorCode(nullptr), kValidatorNotAPdfError);
}

TEST_F(ClaimProofTest, FailsWhereAWrongClaimCannotBeTakenOut) {
  WriteBytes(Path(), ArchiveFile("2b").Annotation("/Subtype/Text/Rect[1 2 3 4]").Bytes());
  const platform::FilePtr file(std::fopen(Path().c_str(), "rb"));
  EXPECT_EQ(PdfValidatorProveClaim(file.get()), -1);
}

}  // namespace
}  // namespace TarnixTools::engines
