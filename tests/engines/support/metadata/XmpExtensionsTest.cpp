#include <string>

#include <gtest/gtest.h>

#include "engines/support/metadata/XmpExtensions.h"

namespace TarnixTools::engines {
namespace {

// A packet that declares the property "s:own" of the given type and says these things, too.
std::string Packet(const std::string& type, const std::string& said,
                   const std::string& value_types = "") {
  return "<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#' "
         "xmlns:pdfaExtension='http://www.aiim.org/pdfa/ns/extension/' "
         "xmlns:pdfaSchema='http://www.aiim.org/pdfa/ns/schema#' "
         "xmlns:pdfaProperty='http://www.aiim.org/pdfa/ns/property#' "
         "xmlns:pdfaType='http://www.aiim.org/pdfa/ns/type#' "
         "xmlns:pdfaField='http://www.aiim.org/pdfa/ns/field#' "
         "xmlns:dc='http://purl.org/dc/elements/1.1/' xmlns:s='http://s/'>"
         "<rdf:Description rdf:about=''><pdfaExtension:schemas><rdf:Bag><rdf:li "
         "rdf:parseType='Resource'><pdfaSchema:schema>Own</pdfaSchema:schema>"
         "<pdfaSchema:namespaceURI>http://s/</pdfaSchema:namespaceURI>"
         "<pdfaSchema:prefix>s</pdfaSchema:prefix><pdfaSchema:property><rdf:Seq><rdf:li "
         "pdfaProperty:name='own' pdfaProperty:category='external' "
         "pdfaProperty:description='d' pdfaProperty:valueType='" +
         type + "'/></rdf:Seq></pdfaSchema:property>" + value_types +
         "</rdf:li></rdf:Bag></pdfaExtension:schemas>" + said + "</rdf:Description></rdf:RDF>";
}

const char kPairType[] =
    "<pdfaSchema:valueType><rdf:Seq><rdf:li rdf:parseType='Resource'>"
    "<pdfaType:type>Pair</pdfaType:type><pdfaType:namespaceURI>http://s/</pdfaType:namespaceURI>"
    "<pdfaType:prefix>s</pdfaType:prefix><pdfaType:description>d</pdfaType:description>"
    "<pdfaType:field><rdf:Seq><rdf:li pdfaField:name='left' pdfaField:valueType='Integer' "
    "pdfaField:description='d'/></rdf:Seq></pdfaType:field></rdf:li></rdf:Seq>"
    "</pdfaSchema:valueType>";

// Of the property with this name: p predefined, d declared, t of the right type.
std::string Facts(const std::string& packet, std::string_view name,
                  XmpRelease release = XmpRelease::k2005) {
  const XmpTree tree = ReadXmp(packet);
  EXPECT_EQ(tree.state, XmpState::kFine);
  for (const XmpNode& property : tree.properties) {
    if (property.name == name) {
      const XmpPropertyFacts facts =
          XmpJudge(release, ReadXmpExtensions(tree)).FactsOf(property, {});
      return std::string(facts.is_predefined ? "p" : "") + (facts.is_declared ? "d" : "") +
             (facts.has_right_type ? "t" : "");
    }
  }
  return "none";
}

// What is not as it should be, as "schema prefix!": "!" for what is not there.
std::string Wrong(const std::string& packet) {
  constexpr const char* kParts[] = {"schema", "property", "type", "field"};
  std::string text;
  for (const XmpExtensionObject& object : DescribeXmpExtensions(ReadXmp(packet))) {
    const std::string part = std::string(kParts[static_cast<int>(object.part)]) + " ";
    text += object.has_other_fields ? part + "others;" : "";
    for (const XmpExtensionEntry& entry : object.entries) {
      text += entry.IsRight() ? "" : part + std::string(entry.name) + (entry.is_there ? ";" : "!;");
    }
  }
  return text;
}

std::string Changed(std::string packet, const std::string& from, const std::string& to) {
  for (std::size_t at = packet.find(from); at != std::string::npos;
       at = packet.find(from, at + to.size())) {
    packet.replace(at, from.size(), to);
  }
  return packet;
}

TEST(XmpExtensions, DeclareProperties) {
  EXPECT_EQ(Facts(Packet("Integer", "<s:own>1</s:own>"), "own"), "dt");
  EXPECT_EQ(Facts(Packet("Integer", "<s:own>x</s:own>"), "own"), "d");
  EXPECT_EQ(Facts(Packet("Integer", "<s:other>1</s:other>"), "other"), "");
  EXPECT_EQ(Facts(Packet("Unheard", "<s:own>1</s:own>"), "own"), "");
  EXPECT_EQ(Facts(Packet("Text", "<dc:format>a/b</dc:format>"), "format"), "pt");
  EXPECT_EQ(Facts(Packet("Text", "<dc:format>a</dc:format>"), "format"), "p");
  EXPECT_EQ(Facts(Packet("Text", ""), "schemas"), "pt");
}

TEST(XmpExtensions, DeclareTypes) {
  EXPECT_EQ(Facts(Packet("Pair", "<s:own s:left='1'/>", kPairType), "own"), "dt");
  EXPECT_EQ(Facts(Packet("Pair", "<s:own s:left='x'/>", kPairType), "own"), "d");
  EXPECT_EQ(Facts(Packet("Pair", "<s:own s:right='1'/>", kPairType), "own"), "d");
}

TEST(XmpExtensions, ServeOtherPackets) {
  const XmpTree document = ReadXmp(Packet("Integer", ""));
  const XmpTree other = ReadXmp(Packet("Text", "<s:own>1</s:own>"));
  const XmpNode& property = *other.Find("http://s/", "own");
  EXPECT_TRUE(
      XmpJudge(XmpRelease::k2005, ReadXmpExtensions(document)).FactsOf(property, {}).is_declared);
  EXPECT_TRUE(
      XmpJudge(XmpRelease::k2005, {}).FactsOf(property, ReadXmpExtensions(other)).is_declared);
  EXPECT_FALSE(XmpJudge(XmpRelease::k2005, {}).FactsOf(property, {}).is_declared);
}

TEST(XmpExtensions, AreDescribedByTheTables) {
  const std::string fine = Packet("Pair", "", kPairType);
  EXPECT_EQ(Wrong(fine), "");
  EXPECT_EQ(Wrong(Packet("Text", "")), "") << "value types can be left out";
  EXPECT_EQ(Wrong(Packet("Pair", "")), "property valueType;");
  EXPECT_EQ(Wrong(Changed(fine, "pdfaSchema:prefix", "pdfaSchema:other")),
            "schema others;schema prefix!;");
  EXPECT_EQ(Wrong(Changed(fine, "external", "outside")), "property category;");
  EXPECT_EQ(Wrong(Changed(fine, "pdfaField:", "f:").insert(9, "xmlns:f='http://f/' ")),
            "field name;field valueType;field description;");
  EXPECT_EQ(Wrong(Changed(fine, "rdf:Seq", "rdf:Bag")),
            "schema property;schema valueType;type field;");
  EXPECT_EQ(Wrong("<rdf:RDF/>"), "");
}

}  // namespace
}  // namespace TarnixTools::engines
