// What is read of packets, written of them, and made of them for PDF/A, whole.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/metadata/PdfAClaim.h"
#include "engines/support/metadata/PdfAPacket.h"
#include "engines/support/metadata/XmpDate.h"
#include "engines/support/metadata/XmpEdit.h"
#include "engines/support/metadata/XmpExtensions.h"
#include "engines/support/metadata/XmpWriter.h"
#include "support/Expected.h"

namespace TarnixTools::engines {
namespace {

using namespace std::string_literals;
using testing::IsAsExpected;

std::string Packet(const std::string& content) {
  return "<?xpacket begin='\xEF\xBB\xBF' id='W5M0MpCehiHzreSzNTczkc9d'?><x:xmpmeta "
         "xmlns:x='adobe:ns:meta/'><rdf:RDF "
         "xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#' xmlns:s='http://s/' "
         "xmlns:t='http://t/' xmlns:dc='http://purl.org/dc/elements/1.1/' "
         "xmlns:xmp='http://ns.adobe.com/xap/1.0/' xmlns:pdf='http://ns.adobe.com/pdf/1.3/'>" +
         content + "</rdf:RDF></x:xmpmeta><?xpacket end='w'?>";
}

std::string About(const std::string& properties) {
  return "<rdf:Description rdf:about=''>" + properties + "</rdf:Description>";
}

std::string Shown(const XmpNode& node, int level) {
  constexpr const char* kKinds[] = {"", " struct", " bag", " seq", " alt"};
  std::string text(static_cast<std::size_t>(2 * level), ' ');
  text += std::string(node.prefix) + ":" + std::string(node.name) + " {" +
          std::string(node.name_space) + "}" + kKinds[static_cast<int>(node.kind)] +
          (node.is_uri ? " uri" : "") + " \"" + node.value + "\"\n";
  for (const XmpNode& qualifier : node.qualifiers) {
    text += " ?" + Shown(qualifier, level + 1);
  }
  for (const XmpNode& child : node.children) {
    text += Shown(child, level + 1);
  }
  return text;
}

std::string Shown(const XmpTree& tree) {
  constexpr const char* kStates[] = {"fine", "too large", "malformed", "no RDF", "bad RDF"};
  constexpr const char* kEncodings[] = {"", " in UTF-16", " in UTF-32"};
  std::string text = kStates[static_cast<int>(tree.state)];
  text += kEncodings[static_cast<int>(tree.encoding)];
  if (tree.header) {
    text += tree.header->has_bytes ? ", bytes" : "";
    text += tree.header->has_encoding ? ", encoding" : "";
  } else {
    text += ", no header";
  }
  text += "\n";
  for (const XmpNode& property : tree.properties) {
    text += Shown(property, 1);
  }
  return text;
}

// Letters that all programs show.
std::string Plain(const std::string& text) {
  std::string plain;
  for (const char c : text) {
    plain += c == '\n' || (c >= ' ' && c <= '~') ? c : '.';
  }
  return plain;
}

const std::vector<std::string>& Descriptions() {
  static const std::vector<std::string> descriptions = {
      "",
      "text",
      "<rdf:Description/>",
      "<rdf:Description rdf:about='a'/><rdf:Description rdf:about='b'/>",
      "<rdf:Description/><rdf:Description rdf:about='b'/><rdf:Description rdf:about=''/>",
      "<rdf:Description about='a' s:a='1'/>",
      "<rdf:Description ID='a' s:a='1'/>",
      "<rdf:Description rdf:about='' rdf:ID='a'/>",
      "<rdf:Description rdf:nodeID='a' s:a='1'/>",
      "<rdf:Description rdf:li='a'/>",
      "<rdf:Description a='1'/>",
      "<rdf:Description rdf:a='1'/>",
      "<rdf:Bag/>",
      "<s:Own s:a='1'/>",
      "<rdf:Description xml:lang='de' s:a='1'/>",
      About("text"),
      About("<s:a>1</s:a><s:a>2</s:a>"),
      About("<s:a>1</s:a>") + About("<s:a>2</s:a>"),
      About("<s:a>1</s:a>") + About("<t:a>2</t:a>"),
      About("<s:a xml:lang='de'>1</s:a>"),
      About("<s:a xml:lang='de' xml:lang='en'>1</s:a>"),
      About("<s:a rdf:ID='x'>1</s:a>"),
      About("<s:a rdf:datatype='x'>1</s:a>"),
      About("<s:a rdf:datatype='x' s:b='1'>1</s:a>"),
      About("<s:a rdf:resource='http://x/'/>"),
      About("<s:a rdf:resource='http://x/' s:q='1' t:q='2'/>"),
      About("<s:a rdf:resource='http://x/' rdf:value='1'/>"),
      About("<s:a rdf:resource='http://x/' rdf:nodeID='1'/>"),
      About("<s:a rdf:nodeID='1'/>"),
      About("<s:a rdf:resource='http://x/'>text</s:a>"),
      About("<s:a rdf:value='1' s:q='2'/>"),
      About("<s:a s:f='1' t:g='2'/>"),
      About("<s:a s:f='1' rdf:li='2'/>"),
      About("<s:a rdf:parseType='Resource'><s:f>1</s:f><s:g>2</s:g></s:a>"),
      About("<s:a rdf:parseType='Resource'/>"),
      About("<s:a rdf:parseType='Literal'>1</s:a>"),
      About("<s:a rdf:parseType='Resource' s:b='1'/>"),
      About("<s:a rdf:parseType='Resource'>text<s:f>1</s:f></s:a>"),
      About("<s:a rdf:parseType='Resource'><s:f>1</s:f><s:f>2</s:f></s:a>"),
      About("<s:a rdf:parseType='Resource'><rdf:value>1</rdf:value><s:q>2</s:q></s:a>"),
      About(
          "<s:a rdf:parseType='Resource'><rdf:value xml:lang='de'>1</rdf:value><s:q>2</s:q></s:a>"),
      About("<s:a><rdf:Description><rdf:value "
            "rdf:resource='u'/><s:q>2</s:q></rdf:Description></s:a>"),
      About("<s:a><rdf:Description><rdf:value><rdf:Bag><rdf:li>1</rdf:li></rdf:Bag></rdf:value>"
            "<s:q>2</s:q></rdf:Description></s:a>"),
      About("<s:a><rdf:Description s:f='1'><s:g>2</s:g></rdf:Description></s:a>"),
      About("<s:a><rdf:Description xml:lang='de' s:f='1'/></s:a>"),
      About("<s:a><s:Own><s:f>1</s:f></s:Own></s:a>"),
      About("<s:a><rdf:Own><s:f>1</s:f></rdf:Own></s:a>"),
      About("<s:a><own><s:f>1</s:f></own></s:a>"),
      About("<s:a>text<rdf:Bag/></s:a>"),
      About("<s:a> <rdf:Bag/>text</s:a>"),
      About("<s:a><rdf:Bag/><rdf:Bag/></s:a>"),
      About("<s:a><rdf:Bag><rdf:li>1</rdf:li> <rdf:li xml:lang='de'>2</rdf:li></rdf:Bag></s:a>"),
      About("<s:a><rdf:Seq><rdf:li rdf:resource='u'/><rdf:li rdf:parseType='Resource'><s:f>1</s:f>"
            "</rdf:li></rdf:Seq></s:a>"),
      About("<s:a><rdf:Alt><rdf:li xml:lang='x-default'>1</rdf:li></rdf:Alt></s:a>"),
      About("<s:a><rdf:Bag s:f='1'/></s:a>"),
      About("<s:a><rdf:Bag><s:f>1</s:f></rdf:Bag></s:a>"),
      About("<s:a><rdf:Bag>text</rdf:Bag></s:a>"),
      About("<s:a><rdf:Bag><rdf:li><rdf:Seq><rdf:li>1</rdf:li></rdf:Seq></rdf:li></rdf:Bag></s:a>"),
      About("<rdf:li>1</rdf:li>"),
      About("<rdf:RDF>1</rdf:RDF>"),
      About("<rdf:type rdf:resource='u'/>"),
      About("<a>1</a>"),
      About("<u:a>1</u:a>"),
      About("<u:a xmlns:u='http://u/'>1</u:a><u:b>2</u:b>"),
      About("<a xmlns='http://u/'>1<!-- c --><?p i?>2</a>"),
      About("<s:a xmlns:s='http://v/'>1</s:a><s:a>2</s:a>"),
      About("<s:a xmlns:u='http://u&amp;/'>1</s:a>"),
      About("<s:a>&amp;&lt;&gt;&quot;&apos;&#65;&#x42;&#x20AC;</s:a>"),
      About("<s:a>&nbsp;</s:a>"),
      About("<s:a>&#0;</s:a>"),
      About("<s:a>&#x;</s:a>"),
      About("<s:a>&#xD800;</s:a>"),
      About("<s:a>&#65</s:a>"),
      About("<s:a>&#6A;</s:a>"),
      About("<s:a>&;</s:a>"),
      About("<s:a>]]></s:a>"),
      About("<s:a><![CDATA[<&>]]>]</s:a>"),
      About("<s:a><![CDATA[</s:a>"),
      About("<s:a><!-- </s:a>"),
      About("<s:a><!DOCTYPE a></s:a>"),
      About("<s:a><?p </s:a>"),
      About("<s:a t:q='a&#xA;b\n\tc' rdf:value='1'/>"),
      About("<s:a t:q=\"'\" t:r='\"' rdf:value='1'/>"),
      About("<s:a t:q='<' rdf:value='1'/>"),
      About("<s:a t:q='1't:r='2' rdf:value='1'/>"),
      About("<s:a t:q = '1' rdf:value\n=\n'1' />"),
      About("<s:a t:q rdf:value='1'/>"),
      About("<s:a t:q=1/>"),
      About("<s:a t:q='1/>"),
      About("<s:a ='1'/>"),
      About("<s:a></s:a ><s:b></ s:b>"),
      About("<s:a></s:b>"),
      About("<s:a></s:a t:q='1'>"),
      About("<s:a/ >"),
      About("<s:a><s:b"),
      About("<>1</>"),
      About("<s:>1</s:>"),
      About("<:a>1</:a>"),
      About("<s:1a>1</s:1a>"),
      About("<s:a.-_1>1</s:a.-_1>"),
      About("<s:a+b>1</s:a+b>"),
      About("<s:a:b>1</s:a:b>"),
      About("<-s:a xmlns:-s='x'>1</-s:a>"),
      About("<s:a>\x01</s:a>"),
      About("<s:a>\xFF</s:a>"),
      About("<s:a>\xEF\xBF\xBE</s:a>"),
      About("<s:a>\xC3\xA4\t\r\n</s:a>"),
      "<rdf:RDF/>" + About("<s:a>1</s:a>"),
      About("<s:a s:lang='de' rdf:value='1'/>"),
      About("<s:a xml:space='preserve'>1</s:a>"),
      About("<s:a> <rdf:Bag/> </s:a>"),
  };
  return descriptions;
}

TEST(PacketTexts, AreReadAsTheseTrees) {
  std::string text;
  for (const std::string& description : Descriptions()) {
    text += Plain(description) + "\n= " + Plain(Shown(ReadXmp(Packet(description))));
  }
  EXPECT_TRUE(IsAsExpected("metadata/trees.txt", text));
}

// Names of RDF's grammar, old ones of it, and one that it leaves to others.
TEST(PacketTexts, HaveNoNamesOfTheGrammarForProperties) {
  std::string elements;
  std::string attributes;
  for (const char* name : {"RDF", "ID", "about", "parseType", "resource", "nodeID", "datatype",
                           "li", "Description", "aboutEach", "aboutEachPrefix", "bagID", "own"}) {
    const auto state = [&](const std::string& description) {
      return ReadXmp(Packet(description)).state == XmpState::kFine ? name + " "s : std::string();
    };
    elements += state(About("<rdf:"s + name + ">1</rdf:" + name + ">"));
    attributes += state("<rdf:Description rdf:"s + name + "='1'/>");
  }
  EXPECT_EQ(elements, "own ");
  EXPECT_EQ(attributes, "ID about nodeID own ");
}

std::string Wide(const std::string& text, int zeros, bool is_big_endian) {
  std::string wide;
  const std::string fill(static_cast<std::size_t>(zeros), '\0');
  for (const char c : text) {
    wide += is_big_endian ? fill + c : c + fill;
  }
  return wide;
}

TEST(PacketTexts, AreReadInTheseForms) {
  const std::string bare =
      "<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'><rdf:Description "
      "xmlns:s='http://s/' s:a='1'/></rdf:RDF>";
  const std::string declared = "<?xml version='1.0'?>" + bare;
  const std::vector<std::string> packets = {
      "",
      " ",
      "text",
      bare,
      declared,
      " \r\n" + bare + "\t\n",
      "text" + bare,
      bare + "text",
      bare + bare,
      "<a/>",
      "<a>",
      "</a>",
      "<a>" + bare + "</a>",
      "<a>" + bare + "<b>" + bare + "text</b></a>",
      "\xEF\xBB\xBF" + bare,
      "<!DOCTYPE a>" + bare,
      "<!-- a -->" + bare + "<!-- b -->",
      "<?xpacket?>" + bare,
      "<?xpacket begin='' bytes='1' encoding='x'?>" + bare,
      "<?xpacket begin='' bytes ='1' encoding= 'x'?>" + bare,
      "<?xpacket begin='' xbytes='1' encodings='x'?>" + bare,
      "<?xpacket begin='\xFF' bytes='1'?>" + bare,
      "  <?xpacket begin='\xFF'?>" + bare,
      "    <?xpacket begin='\xFF'?>" + bare,
      "<?xpacket begin='\xFF' " + bare,
      Wide(declared, 1, true),
      Wide(declared, 1, false),
      Wide(declared, 3, true),
      Wide(declared, 3, false),
      "\xFE\xFF" + Wide(declared, 1, true),
      "\xFF\xFE" + Wide(declared, 1, false),
      "\0\0\xFE\xFF"s + Wide(declared, 3, true),
      "\xFF\xFE\0\0"s + Wide(declared, 3, false),
      "\xFE\xFF" + Wide(declared, 1, true) + "x",
      "\0\0\xFE\xFF"s + Wide(declared, 3, true) + "xy",
  };
  std::string text;
  for (const std::string& packet : packets) {
    text += Plain(packet) + "\n= " + Plain(Shown(ReadXmp(packet)));
  }
  EXPECT_TRUE(IsAsExpected("metadata/forms.txt", text));
}

// Every kind of value, under prefixes that stand for other things elsewhere.
std::string ManyProperties() {
  return About(
             "<s:simple>a &lt; \"b\" &amp; c&#xD;</s:simple><s:empty/><s:uri "
             "rdf:resource='u\"&amp;&#xA;&#x9;'/>"
             "<s:bag><rdf:Bag><rdf:li>1</rdf:li><rdf:li "
             "xml:lang='d\"e'>2</rdf:li></rdf:Bag></s:bag>"
             "<s:seq><rdf:Seq/></s:seq><s:alt><rdf:Alt><rdf:li xml:lang='x-default'>t</rdf:li>"
             "</rdf:Alt></s:alt><s:struct rdf:parseType='Resource'><t:f>1</t:f><s:g><rdf:Seq>"
             "<rdf:li rdf:parseType='Resource'><t:h>2</t:h></rdf:li></rdf:Seq></s:g></s:struct>"
             "<s:qualified xml:lang='de' rdf:value='1' t:q='2' s:q='3'/>") +
         About(
             "<dc:title><rdf:Alt><rdf:li xml:lang='x-default'>T</rdf:li><rdf:li xml:lang='fr'>U"
             "</rdf:li></rdf:Alt></dc:title><dc:creator><rdf:Seq><rdf:li>A</rdf:li></rdf:Seq>"
             "</dc:creator><dc:description>D</dc:description><dc:subject>one</dc:subject>"
             "<dc:date>2020-01-02</dc:date><dc:format>application/pdf</dc:format>"
             "<xmp:Label>L</xmp:Label><xmp:Rating>many</xmp:Rating><xmp:CreateDate>2020</"
             "xmp:CreateDate>"
             "<pdf:Keywords>K</pdf:Keywords><pdf:Trapped>False</pdf:Trapped>") +
         About(
             "<pdf:a xmlns:pdf='http://own/'>1</pdf:a><u:b xmlns:u='http://u/'><rdf:Bag><rdf:li>1"
             "</rdf:li></rdf:Bag></u:b><u:c xmlns:u='http://u/'><rdf:Alt><rdf:li xml:lang='de'>1"
             "</rdf:li></rdf:Alt></u:c><u:d xmlns:u='http://u/'><rdf:Alt><rdf:li>1</rdf:li>"
             "</rdf:Alt></u:d><ns1:e xmlns:ns1='http://n/'>2</ns1:e><x "
             "xmlns='http://none/'>3</x>") +
         About(
             "<id:part xmlns:id='http://www.aiim.org/pdfa/ns/id/'>1</id:part>"
             "<id:conformance xmlns:id='http://www.aiim.org/pdfa/ns/id/'>B</id:conformance>"
             "<mm:DocumentID xmlns:mm='http://ns.adobe.com/xap/1.0/mm/'>d</mm:DocumentID>");
}

TEST(PacketTexts, AreWrittenAgain) {
  const XmpTree tree = ReadXmp(Packet(ManyProperties()));
  ASSERT_EQ(tree.state, XmpState::kFine);
  EXPECT_TRUE(IsAsExpected("metadata/written.txt", WriteXmp(tree.properties)));
  EXPECT_EQ(Shown(ReadXmp(WriteXmp({}))), "fine\n");
}

XmpInfoValues ManyValues() {
  return {
      "Title", "Author", "Subject", "Keywords", "Creator", "Producer", "D:20200102030405+01'00'",
      "D:2020"};
}

std::string MadeText(const XmpTree& tree, const PdfALevel& level, const XmpInfoValues& info) {
  const PdfAPacket packet = MakePdfAPacket(tree, level, info);
  std::string text = packet.bytes + "\n";
  for (const std::string& name : packet.dropped) {
    text += "dropped " + name + "\n";
  }
  return text;
}

TEST(PacketTexts, AreMadeForPdfA) {
  const XmpTree tree = ReadXmp(Packet(ManyProperties()));
  EXPECT_TRUE(IsAsExpected("metadata/made.txt", MadeText(tree, {1, 'b'}, {}) +
                                                    MadeText(tree, {2, 'u'}, ManyValues()) +
                                                    MadeText(XmpTree(), {3, 'a'}, ManyValues())));
  XmpInfoValues odd;
  odd[6] = "yesterday";
  odd[7] = "";
  odd[0] = "";
  EXPECT_TRUE(IsAsExpected("metadata/made-of-little.txt", MadeText(XmpTree(), {1, 'a'}, odd)));
}

TEST(PacketTexts, TellDates) {
  std::string text;
  for (const char* date : {"2020",
                           "2020-",
                           "2020-01",
                           "2020-12-31",
                           "2020-12-32",
                           "2020-12-00",
                           "2020-01-02T",
                           "2020-01-02T03",
                           "2020-01-02T03:04",
                           "2020-01-02T03:04Z",
                           "2020-01-02T24:00Z",
                           "2020-01-02T23:59:59Z",
                           "2020-01-02T23:60Z",
                           "2020-01-02T23:59:60Z",
                           "2020-01-02T03:04:05.678+01:30",
                           "2020-01-02T03:04:05.+01:30",
                           "2020-01-02T03:04:05-23:59",
                           "2020-01-02T03:04:05-24:00",
                           "2020-01-02T03:04:05+01",
                           "2020-01-02T03:04:05+01:60",
                           "2020-01-02T03:04:05+01:",
                           "2020-01-02T03:04:05Zx",
                           "2020-01-02 03:04",
                           "202",
                           "20200",
                           "0000",
                           "9999-12-31",
                           "",
                           "x",
                           "D:2020",
                           "D:202001",
                           "D:20200102",
                           "D:2020010203",
                           "D:202001020304",
                           "D:20200102030405",
                           "D:20200102030405Z",
                           "D:20200102030405Z00'00'",
                           "D:20200102030405Z00'00",
                           "D:20200102030405Z00'",
                           "D:20200102030405Z00",
                           "D:20200102030405Z01'00'",
                           "D:20200102030405Z0",
                           "D:20200102030405+01'30'",
                           "D:20200102030405+01'30",
                           "D:20200102030405+01'",
                           "D:20200102030405+01",
                           "D:20200102030405-0130",
                           "D:20200102030405-23'59'",
                           "D:20200102030405-24'00'",
                           "D:20200102030405-01'60'",
                           "D:20200102030405'",
                           "D:20200102030405+",
                           "D:20201302",
                           "D:20200132",
                           "D:2020010224",
                           "D:202001020360",
                           "D:20200102030460",
                           "D:2020010",
                           "D:",
                           "20200102",
                           "d:2020",
                           "D:20200102030405+01'30''",
                           "D:20200102Z"}) {
    const auto xmp = ReadXmpDate(date);
    const auto info = ReadInfoDate(date);
    text += std::string(date) + " | " + (xmp ? XmpDateText(*xmp) : "none") + " | " +
            (info ? XmpDateText(*info) : "none") + "\n";
  }
  EXPECT_TRUE(IsAsExpected("metadata/dates.txt", text));
}

TEST(PacketTexts, AreEditedInTheirText) {
  const XmpChange changes[] = {{"http://s/", "a", "n", "<new/>"}, {"http://t/", {}, {}, {}}};
  std::string text;
  for (const std::string& content :
       {About("<s:a>1</s:a>"), About("\n <s:a>1</s:a>\n <s:b>2</s:b>\n"),
        About("<s:b>1</s:b><s:a><rdf:Bag><rdf:li>1</rdf:li></rdf:Bag></s:a>"), About("<s:a/>x"),
        "<rdf:Description rdf:about='x' s:a='1' s:b='2' t:c = \"3\"/>"s,
        "<rdf:Description rdf:about='x' s:a='1'/><rdf:Description rdf:about='y' s:a='2'/>"s,
        About("<s:b><s:a>1</s:a></s:b><t:a/><t:b>2</t:b>"),
        "<rdf:Description xmlns:s='http://v/' s:a='1'/>"s,
        "<rdf:Description xmlns:v='http://s/' v:a='1'/>"s,
        About("<v:a xmlns:v='http://s/'>1</v:a>"), About("<s:c>text</s:c>"), About("<s:a>"),
        "<s:a>1</s:a>"s, "<!DOCTYPE x>"s, ""s,
        About("<s:b><s:c xmlns:z=''>1</s:c></s:b><s:a>1</s:a>"),
        About("<s:b xmlns:z=''>1</s:b><s:a>1</s:a>")}) {
    const std::string packet = Packet(content);
    const auto edited = EditXmp(packet, changes);
    text += content + "\n= ";
    if (!edited) {
      text += "refused\n";
      continue;
    }
    const std::size_t begin = edited->bytes.find("1.3/'>") + 6;
    text += edited->bytes.substr(begin, edited->bytes.find("</x:xmpmeta>") - begin);
    for (std::size_t i = 0; i < edited->found.size(); ++i) {
      text += "\n  " + std::to_string(edited->found[i]) + " \"" + edited->values[i] + "\"";
    }
    text += "\n";
  }
  EXPECT_TRUE(IsAsExpected("metadata/edited.txt", text));
}

// Schemas with fields that are wrong in all ways.
std::string Schemas(const std::string& schema) {
  return "<rdf:Description rdf:about='' "
         "xmlns:pdfaExtension='http://www.aiim.org/pdfa/ns/extension/'"
         " xmlns:pdfaSchema='http://www.aiim.org/pdfa/ns/schema#'"
         " xmlns:pdfaProperty='http://www.aiim.org/pdfa/ns/property#'"
         " xmlns:pdfaType='http://www.aiim.org/pdfa/ns/type#'"
         " xmlns:pdfaField='http://www.aiim.org/pdfa/ns/field#'><pdfaExtension:schemas><rdf:Bag>"
         "<rdf:li rdf:parseType='Resource'>" +
         schema +
         "</rdf:li></rdf:Bag></pdfaExtension:schemas></rdf:Description>"
         "<rdf:Description rdf:about=''><s:a>1</s:a><s:b "
         "rdf:parseType='Resource'><t:f>2</t:f></s:b>"
         "<s:c>x</s:c></rdf:Description>";
}

std::string DescribedText(const XmpTree& tree) {
  constexpr const char* kParts[] = {"schema", "property", "type", "field"};
  std::string text;
  for (const XmpExtensionObject& object : DescribeXmpExtensions(tree)) {
    text += std::string("  ") + kParts[static_cast<int>(object.part)] + " \"" + object.name + "\"" +
            (object.has_other_fields ? " and more" : "") + ":";
    for (const XmpExtensionEntry& entry : object.entries) {
      text += " " + std::string(entry.name) + (entry.is_there ? "" : "-") +
              (entry.has_right_prefix ? "p" : "") + (entry.has_right_value ? "v" : "") +
              (entry.is_needed ? "!" : "") + (entry.IsRight() ? "" : "?");
    }
    text += "\n";
  }
  for (const XmpRelease release : {XmpRelease::k2004, XmpRelease::k2005}) {
    const XmpJudge judge(release, ReadXmpExtensions(tree));
    for (const XmpNode& property : tree.properties) {
      const XmpPropertyFacts facts = judge.FactsOf(property, {});
      text += "  " + std::string(property.name) + (facts.is_predefined ? " known" : "") +
              (facts.is_declared ? " declared" : "") + (facts.has_right_type ? " right" : "") + ";";
    }
    text += "\n";
  }
  return text;
}

TEST(PacketTexts, DescribeSchemas) {
  const std::string names = "<pdfaSchema:schema>S</pdfaSchema:schema>";
  const std::string space = "<pdfaSchema:namespaceURI>http://s/</pdfaSchema:namespaceURI>";
  const std::string prefix = "<pdfaSchema:prefix>s</pdfaSchema:prefix>";
  const auto property = [](const std::string& name, const std::string& type,
                           const std::string& category) {
    return "<rdf:li rdf:parseType='Resource'><pdfaProperty:name>" + name +
           "</pdfaProperty:name><pdfaProperty:valueType>" + type +
           "</pdfaProperty:valueType><pdfaProperty:category>" + category +
           "</pdfaProperty:category><pdfaProperty:description>D</pdfaProperty:description></"
           "rdf:li>";
  };
  const auto properties = [](const std::string& items) {
    return "<pdfaSchema:property><rdf:Seq>" + items + "</rdf:Seq></pdfaSchema:property>";
  };
  const auto type = [](const std::string& more) {
    return "<pdfaSchema:valueType><rdf:Seq><rdf:li rdf:parseType='Resource'><pdfaType:type>My Kind"
           "</pdfaType:type><pdfaType:namespaceURI>http://t/</pdfaType:namespaceURI>"
           "<pdfaType:prefix>t</pdfaType:prefix><pdfaType:description>K</pdfaType:description>" +
           more + "</rdf:li></rdf:Seq></pdfaSchema:valueType>";
  };
  const std::string field =
      "<pdfaType:field><rdf:Seq><rdf:li rdf:parseType='Resource'><pdfaField:name>f</pdfaField:name>"
      "<pdfaField:valueType>Integer</pdfaField:valueType><pdfaField:description>F"
      "</pdfaField:description></rdf:li></rdf:Seq></pdfaType:field>";
  const std::string all = names + space + prefix;
  const std::string usual =
      properties(property("a", "Text", "external") + property("b", "my  kind", "internal") +
                 property("c", "Open Choice of Integer", "other"));
  std::string text;
  for (const std::string& schema :
       {all + usual + type(field), all + usual + type(""), all + usual, all, names + usual,
        names + prefix + usual + type(field), all + "<s:more>1</s:more>" + usual + type(field),
        all + properties(property("", "Unheard", "")) + type("<pdfaType:more>1</pdfaType:more>"),
        all + "<pdfaSchema:property>text</pdfaSchema:property>",
        all + "<pdfaSchema:property><rdf:Bag>" + property("a", "bag Text", "external") +
            "</rdf:Bag></pdfaSchema:property>",
        "<s:schema>S</s:schema><s:namespaceURI>x</s:namespaceURI><s:prefix>p</s:prefix>"s,
        "<pdfaSchema:schema><rdf:Bag/></pdfaSchema:schema>" + space, ""s}) {
    const XmpTree tree = ReadXmp(Packet(Schemas(schema)));
    text += schema + "\n" + DescribedText(tree);
    const PdfAPacket made = MakePdfAPacket(tree, {2, 'b'}, {});
    text += "  dropped";
    for (const std::string& name : made.dropped) {
      text += " " + name;
    }
    text += "\n" + DescribedText(ReadXmp(made.bytes));
  }
  EXPECT_TRUE(IsAsExpected("metadata/schemas.txt", text));
}

}  // namespace
}  // namespace TarnixTools::engines
