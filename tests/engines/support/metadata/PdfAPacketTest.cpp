#include <algorithm>
#include <iterator>
#include <memory>
#include <string>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/support/metadata/PdfAClaim.h"
#include "engines/support/metadata/PdfAPacket.h"
#include "engines/support/metadata/XmpExtensions.h"
#include "engines/support/metadata/XmpWriter.h"
#include "support/RawPdf.h"
#include "support/TestPackets.h"

namespace TarnixTools::engines {
namespace {

using testing::ClaimOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using testing::RawPdf;
using testing::TestPacket;

std::string Description(const std::string& content) {
  return "<rdf:Description rdf:about='' xmlns:dc='http://purl.org/dc/elements/1.1/' "
         "xmlns:xmp='http://ns.adobe.com/xap/1.0/' xmlns:s='http://s/'>" +
         content + "</rdf:Description>";
}

PdfAPacket Made(const std::string& descriptions, const XmpInfoValues& info = {},
                const PdfALevel& level = {2, 'b'}) {
  return MakePdfAPacket(ReadXmp(TestPacket(descriptions)), level, info);
}

XmpInfoValues InfoWith(XmpInfoField field, const std::string& value) {
  XmpInfoValues info;
  info[static_cast<std::size_t>(field)] = value;
  return info;
}

// Every property of the packet is one that PDF/A allows.
void ExpectAllowed(const PdfAPacket& packet, XmpRelease release) {
  const XmpTree tree = ReadXmp(packet.bytes);
  ASSERT_EQ(tree.state, XmpState::kFine) << packet.bytes;
  const XmpJudge judge(release, ReadXmpExtensions(tree));
  for (const XmpNode& property : tree.properties) {
    const XmpPropertyFacts facts = judge.FactsOf(property, {});
    EXPECT_TRUE((facts.is_predefined || facts.is_declared) && facts.has_right_type)
        << property.name;
  }
}

TEST(PdfAPacket, ClaimsTheLevelAndNoOther) {
  const PdfAPacket packet = Made(ClaimOf("1"), {}, {3, 'u'});
  const XmpTree tree = ReadXmp(packet.bytes);
  EXPECT_EQ(ClaimedPdfACode(tree), 0x1712);
  for (const char* name : {"part", "conformance"}) {
    const XmpNode* node = tree.Find(kPdfAIdNamespace, name);
    EXPECT_TRUE(node != nullptr && node->prefix == "pdfaid") << name;
  }
  EXPECT_TRUE(tree.header);
  EXPECT_FALSE(tree.header->has_bytes || tree.header->has_encoding);
  EXPECT_EQ(packet.bytes, Made(ClaimOf("1"), {}, {3, 'u'}).bytes);
}

TEST(PdfAPacket, SaysWhatTheInformationSays) {
  XmpInfoValues info;
  const char* const values[] = {"T & <x>", "A", "S", "K", "C", "P", "D:20200203040506+01'00'",
                                "D:2020"};
  std::copy(std::begin(values), std::end(values), info.begin());
  const PdfAPacket packet =
      Made(Description("<dc:creator><rdf:Seq><rdf:li>Other</rdf:li></rdf:Seq></dc:creator>"), info);
  const XmpTree tree = ReadXmp(packet.bytes);
  for (const XmpMirror& mirror : kXmpMirrors) {
    EXPECT_TRUE(XmpAgrees(tree, mirror, values[static_cast<int>(mirror.field)])) << mirror.key;
    EXPECT_FALSE(XmpAgrees(tree, mirror, "x")) << mirror.key;
  }
  ExpectAllowed(packet, XmpRelease::k2005);
}

TEST(PdfAPacket, KeepsWhatTheInformationLeavesOut) {
  const PdfAPacket packet = Made("", InfoWith(XmpInfoField::kModDate, "no date"));
  EXPECT_THAT(packet.dropped, IsEmpty());
  const XmpTree tree = ReadXmp(packet.bytes);
  EXPECT_EQ(XmpFieldText(tree, kXmpMirrors[0]), "A title") << "made a text in languages";
  EXPECT_EQ(tree.Find(kXmpNamespace, "ModifyDate"), nullptr);
  ExpectAllowed(packet, XmpRelease::k2005);
}

TEST(PdfAPacket, KeepsOtherLanguages) {
  const XmpTree given =
      ReadXmp("<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>" +
              Description("<dc:title><rdf:Alt><rdf:li xml:lang='x-default'>Old</rdf:li><rdf:li "
                          "xml:lang='de'>Titel</rdf:li></rdf:Alt></dc:title>") +
              "</rdf:RDF>");
  const PdfAPacket packet = MakePdfAPacket(given, {2, 'b'}, InfoWith(XmpInfoField::kTitle, "New"));
  EXPECT_THAT(packet.bytes, HasSubstr("<rdf:li xml:lang=\"de\">Titel</rdf:li>"));
  EXPECT_THAT(packet.bytes, Not(HasSubstr("Old")));
}

TEST(PdfAPacket, DeclaresWhatNoSpecificationKnows) {
  const PdfAPacket packet =
      Made(Description("<s:a>1</s:a><s:b><rdf:Bag><rdf:li>2</rdf:li></rdf:Bag></s:b><s:c s:f='3'/>"
                       "<xmp:Label>mine</xmp:Label>"));
  EXPECT_THAT(packet.dropped, ElementsAre("s:c"));
  EXPECT_THAT(packet.bytes, HasSubstr("<pdfaProperty:name>a</pdfaProperty:name>"));
  EXPECT_THAT(packet.bytes, Not(HasSubstr("<pdfaProperty:name>Label<")));
  ExpectAllowed(packet, XmpRelease::k2005);
  const PdfAPacket older = Made(Description("<xmp:Label>mine</xmp:Label>"), {}, {1, 'b'});
  EXPECT_THAT(older.bytes, HasSubstr("<pdfaProperty:name>Label<"));
  ExpectAllowed(older, XmpRelease::k2004);
}

TEST(PdfAPacket, KeepsItsDeclarations) {
  const PdfAPacket first = Made(Description("<s:a>1</s:a>"));
  const PdfAPacket again = MakePdfAPacket(ReadXmp(first.bytes), {2, 'b'}, {});
  EXPECT_EQ(again.bytes, first.bytes);
}

TEST(PdfAPacket, DropsWhatItsOwnDeclarationDoesNotAllow) {
  std::string given = Made(Description("<s:a><rdf:Bag><rdf:li>1</rdf:li></rdf:Bag></s:a>")).bytes;
  const std::string type = "bag Text";
  given.replace(given.find(type), type.size(), "Integer");
  const PdfAPacket packet = MakePdfAPacket(ReadXmp(given), {2, 'b'}, {});
  EXPECT_THAT(packet.dropped, ElementsAre("s:a"));
  ExpectAllowed(packet, XmpRelease::k2005);
}

TEST(PdfAPacket, DropsWhatIsOfTheWrongType) {
  const PdfAPacket packet = Made(Description(
      "<xmp:Rating>five</xmp:Rating><dc:type>novel</dc:type><dc:subject>a</dc:subject>"));
  EXPECT_THAT(packet.dropped, ElementsAre("xmp:Rating"));
  ExpectAllowed(packet, XmpRelease::k2005);
}

TEST(PdfAPacket, IsMadeOfNothing) {
  for (const char* given : {"", "no packet", "<a/>"}) {
    const PdfAPacket packet = MakePdfAPacket(ReadXmp(given), {1, 'a'}, {});
    EXPECT_EQ(ClaimedPdfACode(ReadXmp(packet.bytes)), 0x1402);
  }
}

TEST(PdfAPacket, WritesEveryKindOfNode) {
  const std::string rdf =
      "<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>" +
      Description(
          "<s:a rdf:parseType='Resource'><rdf:value>1</rdf:value><s:q>\"2\"</s:q></s:a>"
          "<s:b rdf:resource='http://x/?a=1&amp;b'/><s:c rdf:parseType='Resource'>"
          "<s:d><rdf:Alt><rdf:li xml:lang='a&quot;b'>&lt;</rdf:li></rdf:Alt></s:d></s:c>") +
      "<rdf:Description xmlns:s='http://t/'><s:a/></rdf:Description></rdf:RDF>";
  const std::string once = WriteXmp(ReadXmp(rdf).properties);
  const XmpTree tree = ReadXmp(once);
  ASSERT_EQ(tree.state, XmpState::kFine) << once;
  EXPECT_EQ(tree.Find("http://s/", "a")->qualifiers.front().value, "\"2\"");
  EXPECT_TRUE(tree.Find("http://s/", "b")->is_uri);
  EXPECT_EQ(tree.Find("http://s/", "c")->children.front().children.front().Language(), "a\"b");
  EXPECT_EQ(tree.Find("http://t/", "a")->prefix, "ns1") << "the other one has the prefix";
  EXPECT_EQ(WriteXmp(tree.properties), once);
}

TEST(PdfAClaim, HasCodes) {
  EXPECT_EQ(PdfACode(1, 'b'), 0x1401);
  EXPECT_EQ(PdfACode(3, 'a'), 0x1713);
  EXPECT_EQ(PdfACode(1, 'u'), 0);
  EXPECT_EQ(ClaimedPdfACode(ReadXmp(TestPacket(ClaimOf("2")))), 0x1701);
  EXPECT_EQ(ClaimedPdfACode(ReadXmp(TestPacket(ClaimOf("4")))), 0);
  EXPECT_EQ(ClaimedPdfACode(ReadXmp(TestPacket(ClaimOf("22")))), 0);
  EXPECT_EQ(ClaimedPdfACode(ReadXmp(TestPacket(""))), 0);
  for (const auto& [conformance, code] :
       {std::pair("A", 0x1703), std::pair("B", 0x1701), std::pair("U", 0x1702), std::pair("C", 0),
        std::pair("Z", 0), std::pair("[", 0), std::pair("a", 0), std::pair("b", 0),
        std::pair("@", 0), std::pair("", 0), std::pair("BB", 0)}) {
    std::string packet = TestPacket(ClaimOf("2"));
    packet.replace(packet.find(">B<") + 1, 1, conformance);
    EXPECT_EQ(ClaimedPdfACode(ReadXmp(packet)), code) << conformance;
  }
}

TEST(PdfAClaim, KnowsWhatTwoLevelsHaveInCommon) {
  EXPECT_EQ(CommonPdfACode(0x1703, 0x1701), 0x1701);
  EXPECT_EQ(CommonPdfACode(0x1401, 0x1402), 0x1401);
  EXPECT_EQ(CommonPdfACode(0x1712, 0x1712), 0x1712);
  EXPECT_EQ(CommonPdfACode(0x1701, 0x1711), 0);
  EXPECT_EQ(CommonPdfACode(0, 0x1711), 0);
  EXPECT_EQ(PdfALevelOf(0x1712)->conformance, 'u');
  EXPECT_FALSE(PdfALevelOf(0x1700));
}

// The code of a document with this catalog entry and this packet.
std::int32_t ComplianceWith(const std::string& entry, const std::string& packet) {
  const std::string file = RawPdf()
                               .Object(1, "<</Type/Catalog/Pages 2 0 R" + entry + ">>")
                               .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
                               .Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]>>")
                               .Stream(5, "/Type/Metadata/Subtype/XML", packet)
                               .Table();
  return ComplianceOf(*pdf::Document::Open(std::make_unique<pdf::MemorySource>(file), ""));
}

TEST(PdfAClaim, IsThatOfTheDocumentOrItsVersion) {
  EXPECT_EQ(ComplianceWith("/Metadata 5 0 R", TestPacket(ClaimOf("3"))), 0x1711);
  EXPECT_EQ(ComplianceWith("/Version/2.0/Metadata 5 0 R", TestPacket("")), 0x2000);
  EXPECT_EQ(ComplianceWith("/Version/1.7", TestPacket(ClaimOf("3"))), 0x1700);
}

}  // namespace
}  // namespace TarnixTools::engines
