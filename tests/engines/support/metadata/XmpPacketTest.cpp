#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "engines/support/metadata/XmpPacket.h"
#include "support/RawPdf.h"
#include "support/TestPackets.h"

namespace TarnixTools::engines {
namespace {

using testing::ClaimOf;
using testing::RawPdf;
using testing::TestPacket;

// A document whose catalog has the entry, with a stream 5 of these bytes.
std::unique_ptr<pdf::Document> DocumentWith(const std::string& entry, const std::string& bytes) {
  const std::string file = RawPdf()
                               .Object(1, "<</Type/Catalog/Pages 2 0 R" + entry + ">>")
                               .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
                               .Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]>>")
                               .Stream(5, "/Type/Metadata/Subtype/XML", bytes)
                               .Table();
  return pdf::Document::Open(std::make_unique<pdf::MemorySource>(file), "");
}

std::optional<XmpPacket> PacketOf(const std::string& bytes) {
  const auto document = DocumentWith("/Metadata 5 0 R", bytes);
  return ReadXmpPacket(*document, 5);
}

TEST(XmpPacket, IsTheOneOfTheCatalog) {
  EXPECT_EQ(XmpPacketNumber(*DocumentWith("/Metadata 5 0 R", "")), 5U);
  EXPECT_EQ(XmpPacketNumber(*DocumentWith("/Metadata 6 0 R", "")), 0U);
  EXPECT_EQ(XmpPacketNumber(*DocumentWith("/Metadata(text)", "")), 0U);
  EXPECT_EQ(XmpPacketNumber(*DocumentWith("", "")), 0U);
}

TEST(XmpPacket, LosesItsClaim) {
  const auto packet = PacketOf(TestPacket(ClaimOf("1")));
  ASSERT_TRUE(packet);
  EXPECT_TRUE(packet->has_claim);
  EXPECT_EQ(packet->claimed_part, 1);
  EXPECT_EQ(packet->bytes.find("<pdfaid:"), std::string::npos);
}

TEST(XmpPacket, TellsWhichPartItClaims) {
  EXPECT_EQ(PacketOf(TestPacket(ClaimOf(" 2\n")))->claimed_part, 2);
  EXPECT_EQ(PacketOf(TestPacket(ClaimOf("")))->claimed_part, 0);
  EXPECT_EQ(PacketOf(TestPacket(ClaimOf("one")))->claimed_part, 0);
  EXPECT_TRUE(PacketOf(TestPacket(ClaimOf("one")))->has_claim);
}

TEST(XmpPacket, TellsThePartWhateverComesBeforeIt) {
  const std::string claim =
      "<rdf:Description rdf:about='' xmlns:pdfaid='http://www.aiim.org/pdfa/ns/id/'>"
      "<pdfaid:conformance>3</pdfaid:conformance><pdfaid:part>2</pdfaid:part><pdfaid:corr>4"
      "</pdfaid:corr></rdf:Description>";
  EXPECT_EQ(PacketOf(TestPacket(claim))->claimed_part, 2);
}

TEST(XmpPacket, ClaimsSomethingWithoutAPart) {
  const auto packet =
      PacketOf(TestPacket("<rdf:Description xmlns:pdfaid='http://www.aiim.org/pdfa/ns/id/' "
                          "pdfaid:conformance='B'/>"));
  ASSERT_TRUE(packet);
  EXPECT_TRUE(packet->has_claim);
  EXPECT_EQ(packet->claimed_part, 0);
}

TEST(XmpPacket, StaysAsItIsWithoutAClaim) {
  const auto packet = PacketOf(TestPacket(""));
  ASSERT_TRUE(packet);
  EXPECT_FALSE(packet->has_claim);
  EXPECT_EQ(packet->claimed_part, 0);
  EXPECT_EQ(packet->bytes, TestPacket(""));
}

TEST(XmpPacket, IsNoneWhenItCannotBeRead) {
  EXPECT_FALSE(PacketOf("no packet"));
  const auto document = DocumentWith("", "");
  EXPECT_FALSE(ReadXmpPacket(*document, 3));  // no stream
}

}  // namespace
}  // namespace TarnixTools::engines
