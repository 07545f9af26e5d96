#include <cstdio>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/pdfa/ClaimProof.h"
#include "engines/pdfa/ErrorCodes.h"
#include "engines/pdfa/PdfA.h"
#include "pdf/Error.h"
#include "pdf/syntax/HexText.h"
#include "support/ArchiveFile.h"
#include "support/RawPdf.h"
#include "support/Readers.h"
#include "support/TempDir.h"
#include "support/TestPackets.h"

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

// What the stream is in the file cannot be replaced by what it says.
TEST_F(ClaimProofTest, FailsWhereAPacketIsStoredOtherwise) {
  std::string hex;
  for (const char c : TarnixTools::testing::TestPacket(TarnixTools::testing::ClaimOf("2"))) {
    TarnixTools::pdf::AppendHexByte(hex, c);
  }
  TarnixTools::testing::RawPdf pdf;
  pdf.Object(1, "<</Type/Catalog/Pages 2 0 R/Metadata 4 0 R>>");
  pdf.Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>");
  pdf.Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]>>");
  pdf.Stream(4, "/Type/Metadata/Subtype/XML/Filter/ASCIIHexDecode", hex + ">");
  const platform::FilePtr file(std::fopen(WriteBytes(Path(), pdf.Table()).c_str(), "r+b"));
  try {
    pdfa::ProveClaim(file.get());
    FAIL() << "nobody said that it cannot be done";
  } catch (const TarnixTools::pdf::Error& error) {
    EXPECT_EQ(error.code(), TarnixTools::pdf::ErrorCode::kInternal);
    EXPECT_STREQ(error.what(), "the packet is not stored as it is");
  }
}

}  // namespace
}  // namespace TarnixTools::engines
