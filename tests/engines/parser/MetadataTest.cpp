// The content parser's contract: the XMP packet of a document and what it claims.
#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include "engines/parser/ErrorCodes.h"
#include "engines/parser/Parser.h"
#include "support/RawPdf.h"
#include "support/Readers.h"
#include "support/TempDir.h"
#include "support/TestPackets.h"

namespace TarnixTools::engines::parser {
namespace {

using platform::WidePath;
using testing::ClaimOf;
using testing::RawPdf;
using testing::TestPacket;

class ParserMetadata : public ::testing::Test {
 protected:
  ParserMetadata() {
    ExpaInitialize();
    document_ = ExpaDocCreateObject();
  }

  ~ParserMetadata() override {
    ExpaDocDestroyObject(document_);
    ExpaUnInitialize();
  }

  // A document with these entries in its catalog, and the packet as object 5.
  void Open(const std::string& entries, const std::string& packet, const std::string& coded = "") {
    const std::string file = RawPdf("%PDF-1.4\n")
                                 .Object(1, "<</Type/Catalog/Pages 2 0 R" + entries + ">>")
                                 .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
                                 .Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]>>")
                                 .Stream(5, "/Type/Metadata/Subtype/XML" + coded, packet)
                                 .Table();
    testing::WriteBytes(Path("doc.pdf"), file);
    ASSERT_NE(ExpaDocOpenW(document_, WidePath(Path("doc.pdf")), L""), 0);
  }

  std::string Path(const std::string& name) const { return directory_.Path(name); }

  testing::TempDir directory_;
  TExpaDoc* document_ = nullptr;
};

TEST_F(ParserMetadata, IsWrittenByteForByte) {
  const std::string packet = TestPacket("") + std::string("\0odd", 4);
  Open("/Metadata 5 0 R", packet);
  EXPECT_EQ(ExpaDocGetXMPMetadataW(document_, WidePath(Path("a.xmp"))), 1);
  EXPECT_EQ(testing::ReadBytes(Path("a.xmp")), packet);
}

TEST_F(ParserMetadata, IsNotWrittenWhereThereIsNone) {
  Open("", TestPacket(""));
  EXPECT_EQ(ExpaDocGetXMPMetadataW(document_, WidePath(Path("a.xmp"))), 0);
  EXPECT_EQ(ExpaDocGetLastError(document_), kExpaNoMetadataError);
  Open("/Metadata 3 0 R", TestPacket(""));
  EXPECT_EQ(ExpaDocGetXMPMetadataW(document_, WidePath(Path("a.xmp"))), 0);
  EXPECT_EQ(ExpaDocGetLastError(document_), kExpaMetadataError);
  Open("/Metadata 5 0 R", TestPacket(""), "/Filter/Unheard");
  EXPECT_EQ(ExpaDocGetXMPMetadataW(document_, WidePath(Path("a.xmp"))), 0);
  EXPECT_EQ(ExpaDocGetLastError(document_), kExpaMetadataError);
  EXPECT_FALSE(testing::Exists(Path("a.xmp")));
}

TEST_F(ParserMetadata, TellsWhyItCannotBeWritten) {
  Open("/Metadata 5 0 R", TestPacket(""));
  EXPECT_EQ(ExpaDocGetXMPMetadataW(document_, WidePath(Path("none/a.xmp"))), 0);
  EXPECT_EQ(ExpaDocGetLastError(document_), kExpaCreateError);
  if (testing::Exists("/dev/full")) {
    EXPECT_EQ(ExpaDocGetXMPMetadataW(document_, WidePath("/dev/full")), 0);
    EXPECT_EQ(ExpaDocGetLastError(document_), kExpaWriteError);
  }
}

TEST_F(ParserMetadata, TellsTheClaimOrTheVersion) {
  Open("/Metadata 5 0 R", TestPacket(ClaimOf("2")));
  EXPECT_EQ(ExpaDocGetCompliance(document_), 0x1701);
  Open("/Metadata 5 0 R", TestPacket(""));
  EXPECT_EQ(ExpaDocGetCompliance(document_), 0x1400);
  Open("/Version/2.0", "");
  EXPECT_EQ(ExpaDocGetCompliance(document_), 0x2000);
}

TEST_F(ParserMetadata, NeedsADocument) {
  EXPECT_EQ(ExpaDocGetXMPMetadataW(document_, WidePath(Path("a.xmp"))), 0);
  EXPECT_EQ(ExpaDocGetLastError(document_), kExpaArgumentError);
  EXPECT_EQ(ExpaDocGetCompliance(document_), 0);
  EXPECT_EQ(ExpaDocGetXMPMetadataW(nullptr, WidePath(Path("a.xmp"))), 0);
  EXPECT_EQ(ExpaDocGetCompliance(nullptr), 0);
}

}  // namespace
}  // namespace TarnixTools::engines::parser
