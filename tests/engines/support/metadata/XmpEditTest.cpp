#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/metadata/XmpEdit.h"

namespace TarnixTools::engines {
namespace {

using namespace std::string_literals;

constexpr const char* kPdfA = "http://www.aiim.org/pdfa/ns/id/";
constexpr const char* kDc = "http://purl.org/dc/elements/1.1/";

// A packet with these descriptions.
std::string Packet(const std::string& descriptions) {
  return "<?xpacket begin=\"\xEF\xBB\xBF\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n"
         "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\">\n"
         "<rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">\n" +
         descriptions + "</rdf:RDF>\n</x:xmpmeta>\n   \n<?xpacket end=\"w\"?>";
}

std::string Description(const std::string& attributes, const std::string& content) {
  return "<rdf:Description rdf:about=\"\"" + attributes + ">" + content + "</rdf:Description>\n";
}

// The packet without a claim; "refused" for one that is refused.
std::string WithoutClaim(const std::string& packet) {
  const XmpChange change = {kPdfA, "", "", ""};
  const auto edited = EditXmp(packet, {&change, 1});
  return edited ? edited->bytes : "refused";
}

std::string Utf16(const std::string& ascii, bool is_big_endian, bool has_mark) {
  std::string bytes = !has_mark ? "" : is_big_endian ? "\xFE\xFF" : "\xFF\xFE";
  for (const char c : ascii) {
    bytes += is_big_endian ? "\0"s + c : c + "\0"s;
  }
  return bytes;
}

TEST(XmpEdit, TakesPropertiesOut) {
  const std::string other = "<dc:format>application/pdf</dc:format>";
  const std::string spaces = " xmlns:dc=\""s + kDc + "\" xmlns:a=\"" + kPdfA + "\"";
  EXPECT_EQ(WithoutClaim(Packet(Description(spaces, "\n <a:part>2</a:part>\n " + other +
                                                        "\n <a:conformance>B</a:conformance>"))),
            Packet(Description(spaces, "\n " + other)));
  EXPECT_EQ(WithoutClaim(Packet(Description(spaces + " a:part=\"2\"\n  a:conformance='B'", other))),
            Packet(Description(spaces, other)));
  EXPECT_EQ(WithoutClaim(Packet(Description(spaces, "<a:part/>") + Description(spaces, other))),
            Packet(Description(spaces, "") + Description(spaces, other)));
}

TEST(XmpEdit, GoesByNamespacesNotByPrefixes) {
  const std::string packet = Packet(
      "<d:Description xmlns:d=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\" d:about='' "
      "xmlns='" +
      std::string(kPdfA) +
      "'><part>1</part>"
      "<pdfaid:part xmlns:pdfaid=\"http://other/\">2</pdfaid:part>"
      "<q:part xmlns:q='" +
      std::string(kPdfA) + "'>3</q:part></d:Description>");
  const std::string cut = WithoutClaim(packet);
  EXPECT_EQ(cut.find("<part>"), std::string::npos);
  EXPECT_EQ(cut.find("<q:part"), std::string::npos);
  EXPECT_NE(cut.find("<pdfaid:part"), std::string::npos);
}

TEST(XmpEdit, PassesOverWhatIsNoProperty) {
  const std::string claim = "<a:part>1</a:part>";
  const std::string spaces = " xmlns:a=\""s + kPdfA + "\"";
  for (const std::string& content :
       {"<!-- " + claim + " -->", "<x>" + claim + "</x>", "<![CDATA[" + claim + "]]>",
        "<?pi " + claim + "?>", "<x y='1>2'/>"s}) {
    const std::string packet = Packet(Description(spaces, content));
    EXPECT_EQ(WithoutClaim(packet), packet);
  }
}

TEST(XmpEdit, PutsOtherValuesInTheirPlaces) {
  const std::string packet = Packet(
      "<rdf:Description rdf:about='uuid:1' xmlns:dc='" + std::string(kDc) +
      "'><dc:creator><rdf:Seq><rdf:li>Old</rdf:li></rdf:Seq></dc:creator></rdf:Description>\n");
  const std::vector<XmpChange> changes = {
      {kDc, "creator", "dc", "<rdf:Seq><rdf:li>New</rdf:li></rdf:Seq>"},
      {kDc, "title", "dc", "of none"}};
  const auto edited = EditXmp(packet, changes);
  ASSERT_TRUE(edited);
  EXPECT_EQ(edited->found, (std::vector<std::size_t>{1, 0}));
  EXPECT_EQ(edited->bytes.find("Old"), std::string::npos);
  EXPECT_EQ(edited->bytes.find("of none"), std::string::npos);
  EXPECT_NE(edited->bytes.find("rdf:about='uuid:1'><dc:creator xmlns:dc=\"" + std::string(kDc) +
                               "\"><rdf:Seq><rdf:li>New</rdf:li></rdf:Seq></dc:creator>"
                               "</rdf:Description>\n</rdf:RDF>"),
            std::string::npos);
}

TEST(XmpEdit, TellsWhatItTookOut) {
  const std::vector<XmpChange> changes = {
      {kPdfA, "part", "", ""}, {kPdfA, "", "", ""}, {kDc, "", "", ""}};
  const std::string space = " xmlns:p=\"" + std::string(kPdfA) + "\"";
  const auto elements = EditXmp(
      Packet(Description(space, "<p:part> 1 </p:part><p:part>2</p:part><p:rev/>")), changes);
  ASSERT_TRUE(elements);
  EXPECT_EQ(elements->found, (std::vector<std::size_t>{2, 3, 0}));
  EXPECT_EQ(elements->values, (std::vector<std::string>{" 1 ", " 1 ", ""}));
  const auto attributes =
      EditXmp(Packet(Description(space + " p:amd='x' p:part='3'", "")), changes);
  ASSERT_TRUE(attributes);
  EXPECT_EQ(attributes->values, (std::vector<std::string>{"3", "x", ""}));
}

TEST(XmpEdit, ReadsUtf16) {
  const std::string claimed =
      "<?xml version='1.0' encoding='UTF-16'?>"
      "<r:RDF xmlns:r='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>"
      "<r:Description xmlns:a='" +
      std::string(kPdfA) + "' a:part='1' r:about=''/></r:RDF>";
  const std::string expected =
      "<r:RDF xmlns:r='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>"
      "<r:Description xmlns:a='" +
      std::string(kPdfA) + "' r:about=''/></r:RDF>";
  for (const bool is_big_endian : {false, true}) {
    for (const bool has_mark : {false, true}) {
      EXPECT_EQ(WithoutClaim(Utf16(claimed, is_big_endian, has_mark)), expected);
      const std::string plain = Utf16(expected, is_big_endian, has_mark);
      EXPECT_EQ(WithoutClaim(plain), plain) << "what is not changed stays as it is";
    }
  }
  EXPECT_EQ(WithoutClaim(Utf16(claimed, true, true) + "x"), "refused");
}

TEST(XmpEdit, RefusesWhatItCannotBeSureOf) {
  const std::string fine = Packet("");
  EXPECT_EQ(WithoutClaim(fine), fine);
  EXPECT_EQ(WithoutClaim(""), "refused");
  EXPECT_EQ(WithoutClaim("<a/>"), "refused") << "no description of anything";
  EXPECT_EQ(WithoutClaim("<!DOCTYPE x [<!ENTITY e 'x'>]>" + fine), "refused");
  for (const char* content : {"<a", "<a>", "</a>", "<a b=c/>", "<a b='/>", "<a b='<'/>", "<a/b>",
                              "< a/>", "<!-- ", "<a></b>", "</a b='1'>", "<a b='1'c='2'/>"}) {
    EXPECT_EQ(WithoutClaim(Packet(content)), "refused") << content;
  }
  EXPECT_EQ(WithoutClaim(Packet("<a xmlns:b='http&#x3A;//x'/>")), "refused");
  std::string deep;
  for (int i = 0; i < 300; ++i) {
    deep = "<a>" + deep + "</a>";
  }
  EXPECT_EQ(WithoutClaim(Packet(deep)), "refused");
  std::string names;
  for (int i = 0; i < 300; ++i) {
    names += " xmlns:n" + std::to_string(i) + "='x'";
  }
  EXPECT_EQ(WithoutClaim(Packet("<a" + names + "/>")), "refused");
}

TEST(XmpEdit, WritesTextAsXml) {
  EXPECT_EQ(XmlText("a<b>&\"\r\n\x01\xC3\xA4\xEF\xBF\xBF"), "a&lt;b&gt;&amp;\"&#xD;\n\xC3\xA4");
  EXPECT_EQ(XmlText("\xC3"), "\xEF\xBF\xBD");
}

}  // namespace
}  // namespace TarnixTools::engines
