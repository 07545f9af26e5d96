#include <set>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/pdfa/Findings.h"
#include "engines/pdfa/RuleCase.h"
#include "support/ArchiveFile.h"

namespace TarnixTools::testing {
namespace {

using ::testing::Contains;
using ::testing::IsEmpty;

constexpr RuleCase kPacketCases[] = {
    {"1b", "6.7.2-1", Part::kBytes, "", "/Metadata|/Metadate"},
    {"2b", "6.6.2.1-1", Part::kBytes, "", "/Metadata 4 0 R|/Metadata 9 0 R"},
    {"1b", "6.7.2-2", Part::kBytes, "", "/Subtype/XML|/Filter[]"},
    {"1b", "6.7.5-1", Part::kBytes, "",
     " id='W5M0MpCehiHzreSzNTczkc9d'| bytes='1234567890123456789'"},
    {"2b", "6.6.2.1-2", Part::kBytes, "",
     " id='W5M0MpCehiHzreSzNTczkc9d'| bytes='1234567890123456789'"},
    {"1b", "6.7.5-2", Part::kBytes, "",
     " id='W5M0MpCehiHzreSzNTczkc9d'| encoding='UTF-8'          "},
    {"2b", "6.6.2.1-3", Part::kBytes, "",
     " id='W5M0MpCehiHzreSzNTczkc9d'| encoding='UTF-8'          "},
    {"1b", "6.7.9-1", Part::kBytes, "", "</rdf:RDF>|</rdf:RDG>"},
    {"2b", "6.6.2.1-4", Part::kBytes, "", "<rdf:Description|<!rf:Description"},
    {"1b", "6.7.11-1", Part::kBytes, "", "ns/id/|ns/ix/"},
    {"2b", "6.6.4-1", Part::kBytes, "", "ns/id/|ns/ix/"},
    {"1b", "6.7.11-2", Part::kBytes, "", "part>1<|part>2<"},
    {"2b", "6.6.4-2", Part::kBytes, "", "part>2<|part>1<"},
    {"3b", "6.6.4-2", Part::kBytes, "", "part>3<|part>2<"},
    {"1b", "6.7.11-3", Part::kBytes, "conformance>B|conformance>A", "conformance>B|conformance>C"},
    {"1a", "6.7.11-3", Part::kBytes, "", "conformance>A|conformance>B"},
    {"2b", "6.6.4-3", Part::kBytes, "conformance>B|conformance>U", "conformance>B|conformance>b"},
    {"2u", "6.6.4-3", Part::kBytes, "conformance>U|conformance>A", "conformance>U|conformance>B"},
    {"3a", "6.6.4-3", Part::kBytes, "", "conformance>A|conformance>U"},
};

TEST(PacketRules, HoldAndBreak) {
  ExpectCases(kPacketCases, "pdfa/findings/packets.txt");
}

// In UTF-16, each of its bytes with a zero byte in front of it.
TEST(PacketRules, WantUtf8) {
  const std::string bytes = ArchiveFile("2b").Bytes();
  const std::size_t begin = bytes.find("<x:xmpmeta");
  std::string packet = "\xFE\xFF";
  for (const char c : bytes.substr(begin, bytes.find("<?xpacket end") - begin)) {
    packet += std::string(1, '\0') + c;
  }
  const auto rules = [&](const std::string& level) {
    return BrokenRules(ArchiveFile(level).Stream(4, "/Type/Metadata/Subtype/XML", packet).Bytes(),
                       level);
  };
  EXPECT_THAT(rules("2b"), ::testing::ElementsAre("6.6.2.1-5"));
  EXPECT_THAT(rules("1b"), ::testing::ElementsAre("6.7.11-2"));
}

std::string Description(const std::string& prefix, const std::string& name_space,
                        const std::string& properties) {
  return "<rdf:Description rdf:about='' xmlns:" + prefix + "='" + name_space + "'>" + properties +
         "</rdf:Description>";
}

std::set<std::string> RulesOf(const std::string& level, const std::string& packet) {
  return BrokenRules(ArchiveFile(level).Packet(packet).Bytes(), level);
}

TEST(PropertyRules, WantDefinedOnesOfTheirType) {
  const std::string right =
      Description("xmp", "http://ns.adobe.com/xap/1.0/", "<xmp:CreatorTool>a</xmp:CreatorTool>");
  const std::string wrong =
      Description("xmp", "http://ns.adobe.com/xap/1.0/", "<xmp:CreateDate>today</xmp:CreateDate>");
  const std::string unknown = Description("own", "http://example.com/", "<own:a>b</own:a>");
  EXPECT_THAT(RulesOf("1b", right), IsEmpty());
  EXPECT_THAT(RulesOf("2b", right), IsEmpty());
  EXPECT_THAT(RulesOf("1b", wrong), Contains("6.7.9-3"));
  EXPECT_THAT(RulesOf("2b", wrong), Contains("6.6.2.3.1-2"));
  EXPECT_THAT(RulesOf("1b", unknown), Contains("6.7.9-2"));
  EXPECT_THAT(RulesOf("2b", unknown), Contains("6.6.2.3.1-1"));
}

TEST(ClaimRules, WantTheirPrefix) {
  constexpr const char* kNamespace = "http://www.aiim.org/pdfa/ns/id/";
  const auto with = [](const std::string& property) {
    return Description("other", kNamespace, "<other:" + property + ">1</other:" + property + ">");
  };
  EXPECT_THAT(RulesOf("1b", with("amd")), Contains("6.7.11-6"));
  EXPECT_THAT(RulesOf("2b", with("amd")), Contains("6.6.4-6"));
  EXPECT_THAT(RulesOf("2b", with("corr")), Contains("6.6.4-7"));
}

TEST(ClaimRules, WantTheirPrefixForPartAndLevel) {
  const auto rules = [](const std::string& level) {
    std::string bytes = ArchiveFile(level).Bytes();
    for (std::size_t at = 0; (at = bytes.find("pdfaid:", at)) != std::string::npos;) {
      bytes.replace(at, 6, "claims");
    }
    bytes.replace(bytes.find("xmlns:pdfaid"), 12, "xmlns:claims");
    return BrokenRules(bytes, level);
  };
  EXPECT_THAT(rules("1b"), Contains("6.7.11-4"));
  EXPECT_THAT(rules("1b"), Contains("6.7.11-5"));
  EXPECT_THAT(rules("2b"), Contains("6.6.4-4"));
  EXPECT_THAT(rules("2b"), Contains("6.6.4-5"));
}

// An extension schema in which a text is replaced by another.
std::string Extension(const std::string& text = "", const std::string& by = "") {
  std::string packet =
      "<rdf:Description rdf:about='' xmlns:pdfaExtension='http://www.aiim.org/pdfa/ns/extension/'"
      " xmlns:pdfaSchema='http://www.aiim.org/pdfa/ns/schema#'"
      " xmlns:pdfaProperty='http://www.aiim.org/pdfa/ns/property#'"
      " xmlns:pdfaType='http://www.aiim.org/pdfa/ns/type#'"
      " xmlns:pdfaField='http://www.aiim.org/pdfa/ns/field#'><pdfaExtension:schemas><rdf:Bag>"
      "<rdf:li rdf:parseType='Resource'><pdfaSchema:schema>Own</pdfaSchema:schema>"
      "<pdfaSchema:namespaceURI>http://example.com/</pdfaSchema:namespaceURI>"
      "<pdfaSchema:prefix>own</pdfaSchema:prefix><pdfaSchema:property><rdf:Seq>"
      "<rdf:li rdf:parseType='Resource'><pdfaProperty:name>a</pdfaProperty:name>"
      "<pdfaProperty:valueType>Kind</pdfaProperty:valueType>"
      "<pdfaProperty:category>internal</pdfaProperty:category>"
      "<pdfaProperty:description>A</pdfaProperty:description></rdf:li></rdf:Seq>"
      "</pdfaSchema:property><pdfaSchema:valueType><rdf:Seq><rdf:li rdf:parseType='Resource'>"
      "<pdfaType:type>Kind</pdfaType:type>"
      "<pdfaType:namespaceURI>http://example.com/kind</pdfaType:namespaceURI>"
      "<pdfaType:prefix>kind</pdfaType:prefix><pdfaType:description>K</pdfaType:description>"
      "<pdfaType:field><rdf:Seq><rdf:li rdf:parseType='Resource'>"
      "<pdfaField:name>f</pdfaField:name><pdfaField:valueType>Text</pdfaField:valueType>"
      "<pdfaField:description>F</pdfaField:description></rdf:li></rdf:Seq></pdfaType:field>"
      "</rdf:li></rdf:Seq></pdfaSchema:valueType></rdf:li></rdf:Bag></pdfaExtension:schemas>"
      "</rdf:Description>";
  for (std::size_t at = 0; !text.empty() && (at = packet.find(text, at)) != std::string::npos;
       at += by.size()) {
    packet.replace(at, text.size(), by);
  }
  return packet;
}

struct ExtensionCase {
  const char* rule;  // of part 1
  const char* text;
  const char* by;
};

// The number of a rule of 6.7.8 in the later parts.
std::string LaterNumber(const std::string& rule) {
  const int test = std::stoi(rule.substr(rule.find('-') + 1));
  return "6.6.2.3.3-" + std::to_string(test - 1);
}

constexpr ExtensionCase kExtensionCases[] = {
    {"6.7.8-2", "rdf:Bag", "rdf:Seq"},
    {"6.7.8-3", "pdfaSchema:schema", "pdfaSchema:schemb"},
    {"6.7.8-4", "pdfaSchema:namespaceURI", "pdfaSchema:namespaceURL"},
    {"6.7.8-5", "pdfaSchema:prefix", "pdfaSchema:prefax"},
    {"6.7.8-8", "pdfaProperty:name", "pdfaProperty:nome"},
    {"6.7.8-9", "pdfaProperty:valueType>Kind", "pdfaProperty:valueType>Nothing"},
    {"6.7.8-10", "internal", "inside"},
    {"6.7.8-11", "pdfaProperty:description", "pdfaProperty:text"},
    {"6.7.8-12", "pdfaType:type", "pdfaType:typo"},
    {"6.7.8-13", "pdfaType:namespaceURI", "pdfaType:namespaceURL"},
    {"6.7.8-14", "pdfaType:prefix", "pdfaType:prefax"},
    {"6.7.8-15", "pdfaType:description", "pdfaType:text"},
    {"6.7.8-17", "pdfaField:name", "pdfaField:nome"},
    {"6.7.8-18", "pdfaField:valueType>Text", "pdfaField:valueType>Nothing"},
    {"6.7.8-19", "pdfaField:description", "pdfaField:text"},
};

TEST(ExtensionRules, HoldAndBreak) {
  EXPECT_THAT(RulesOf("1b", Extension()), IsEmpty());
  EXPECT_THAT(RulesOf("2b", Extension()), IsEmpty());
  for (const ExtensionCase& of : kExtensionCases) {
    SCOPED_TRACE(of.text);
    const std::string packet = Extension(of.text, of.by);
    EXPECT_THAT(RulesOf("1b", packet), Contains(of.rule));
    EXPECT_THAT(RulesOf("2b", packet), Contains(LaterNumber(of.rule)));
  }
}

// What is an array otherwise.
TEST(ExtensionRules, WantListsWhereTheyAre) {
  struct Row {
    const char* rule;
    const char* name;
  };

  for (const Row& row :
       {Row{"6.7.8-6", "pdfaSchema:property"}, Row{"6.7.8-7", "pdfaSchema:valueType"},
        Row{"6.7.8-16", "pdfaType:field"}}) {
    const std::string name = row.name;
    std::string packet = Extension();
    const std::size_t begin = packet.find("<" + name + ">") + name.size() + 2;
    packet.replace(begin, packet.find("</" + name + ">") - begin, "text");
    EXPECT_THAT(RulesOf("1b", packet), Contains(row.rule)) << name;
    EXPECT_THAT(RulesOf("2b", packet), Contains(LaterNumber(row.rule))) << name;
  }
}

TEST(ExtensionRules, WantNoOtherFields) {
  const std::string packet =
      Extension("<pdfaType:prefix>", "<pdfaType:more>x</pdfaType:more><pdfaType:prefix>");
  EXPECT_THAT(RulesOf("1b", packet), Contains("6.7.8-1"));
  EXPECT_THAT(RulesOf("2b", packet), Contains("6.6.2.3.2-1"));
}

struct InformationCase {
  const char* rule;
  const char* entry;
  const char* same;
  const char* other;
};

constexpr InformationCase kInformationCases[] = {
    {"6.7.3-1", "/CreationDate(D:20200102030405Z)",
     "<xmp:CreateDate>2020-01-02T04:04:05+01:00</xmp:CreateDate>",
     "<xmp:CreateDate>2020-01-02T03:04:06Z</xmp:CreateDate>"},
    {"6.7.3-2", "/Title(a)",
     "<dc:title><rdf:Alt><rdf:li xml:lang='x-default'>a</rdf:li></rdf:Alt></dc:title>",
     "<dc:title><rdf:Alt><rdf:li xml:lang='x-default'>b</rdf:li></rdf:Alt></dc:title>"},
    {"6.7.3-3", "/Author(a)", "<dc:creator><rdf:Seq><rdf:li>a</rdf:li></rdf:Seq></dc:creator>",
     "<dc:creator><rdf:Seq><rdf:li>a</rdf:li><rdf:li>b</rdf:li></rdf:Seq></dc:creator>"},
    {"6.7.3-4", "/Subject(a)",
     "<dc:description><rdf:Alt><rdf:li xml:lang='x-default'>a</rdf:li></rdf:Alt></dc:description>",
     ""},
    {"6.7.3-5", "/Keywords(a)", "<pdf:Keywords>a</pdf:Keywords>", "<pdf:Keywords>b</pdf:Keywords>"},
    {"6.7.3-6", "/Creator(a)", "<xmp:CreatorTool>a</xmp:CreatorTool>", ""},
    {"6.7.3-7", "/Producer(a)", "<pdf:Producer>a</pdf:Producer>", "<pdf:Producer>A</pdf:Producer>"},
    {"6.7.3-8", "/ModDate(D:2020)", "<xmp:ModifyDate>2020</xmp:ModifyDate>", ""},
};

TEST(InformationRules, HoldAndBreak) {
  for (const InformationCase& of : kInformationCases) {
    SCOPED_TRACE(of.entry);
    const auto rules = [&](const std::string& level, const std::string& properties) {
      return BrokenRules(
          ArchiveFile(level)
              .Object(20, "<<" + std::string(of.entry) + ">>")
              .Trailer("/Info 20 0 R")
              .Packet("<rdf:Description rdf:about='' xmlns:dc='http://purl.org/dc/elements/1.1/'"
                      " xmlns:xmp='http://ns.adobe.com/xap/1.0/'"
                      " xmlns:pdf='http://ns.adobe.com/pdf/1.3/'>" +
                      properties + "</rdf:Description>")
              .Bytes(),
          level);
    };
    EXPECT_THAT(rules("1b", of.same), IsEmpty());
    EXPECT_THAT(rules("1b", of.other), Contains(of.rule));
    EXPECT_THAT(rules("2b", of.other), IsEmpty());
  }
}

// The title is no string, or no text in languages.
TEST(InformationRules, WantTextsOfTheSameKind) {
  const auto rules = [](const std::string& title, const std::string& in_packet) {
    return BrokenRules(ArchiveFile("1b")
                           .Object(20, "<</Title " + title + ">>")
                           .Trailer("/Info 20 0 R")
                           .Packet(Description("dc", "http://purl.org/dc/elements/1.1/", in_packet))
                           .Bytes(),
                       "1b");
  };
  EXPECT_THAT(rules("1", ""), Contains("6.7.3-2"));
  EXPECT_THAT(rules("(a)", "<dc:title>a</dc:title>"), Contains("6.7.3-2"));
  EXPECT_THAT(rules("null", ""), IsEmpty());
}

// Packets of pages and images may use what the document's declares.
TEST(PropertyRules, LookAtAllPackets) {
  const auto rules = [](const std::string& in_document, const std::string& name_space) {
    return BrokenRules(
        ArchiveFile("2b")
            .Packet(in_document)
            .Page("/Metadata 20 0 R")
            .Stream(20, "/Type/Metadata/Subtype/XML",
                    "<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>" +
                        Description("own", name_space,
                                    "<own:a rdf:parseType='Resource'><k:f "
                                    "xmlns:k='http://example.com/kind'>x</k:f></own:a>") +
                        "</rdf:RDF>")
            .Bytes(),
        "2b");
  };
  EXPECT_THAT(rules("", "http://example.com/"), Contains("6.6.2.3.1-1"));
  EXPECT_THAT(rules(Extension(), "http://example.com/other"), Contains("6.6.2.3.1-1"));
  EXPECT_THAT(rules(Extension(), "http://example.com/"), IsEmpty());
}

}  // namespace
}  // namespace TarnixTools::testing
