#include <string>

#include <gtest/gtest.h>

#include "engines/support/metadata/MetadataLimits.h"
#include "engines/support/metadata/XmpTree.h"

namespace TarnixTools::engines {
namespace {

using namespace std::string_literals;

constexpr std::string_view kSpace = "http://example.com/s/";

// A packet whose RDF has this content.
std::string Packet(const std::string& content) {
  return "<?xpacket begin=\"\xEF\xBB\xBF\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n"
         "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\"><rdf:RDF "
         "xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\" xmlns:s=\"" +
         std::string(kSpace) + "\">" + content + "</rdf:RDF></x:xmpmeta><?xpacket end=\"w\"?>";
}

std::string Description(const std::string& content, const std::string& attributes = "") {
  return "<rdf:Description rdf:about=\"\"" + attributes + ">" + content + "</rdf:Description>";
}

// A node on one line: "title=alt(Text[lang=en])".
std::string Shown(const XmpNode& node);

std::string ShownAll(const std::vector<XmpNode>& nodes) {
  std::string text;
  for (const XmpNode& node : nodes) {
    text += (text.empty() ? "" : ",") + Shown(node);
  }
  return text;
}

std::string Shown(const XmpNode& node) {
  constexpr const char* kKinds[] = {"", "struct", "bag", "seq", "alt"};
  std::string text = node.name.empty() ? "" : std::string(node.name) + "=";
  text += node.is_uri ? "uri:" + node.value : node.value;
  if (node.kind != XmpKind::kSimple) {
    text += kKinds[static_cast<int>(node.kind)] + "("s + ShownAll(node.children) + ")";
  }
  return node.qualifiers.empty() ? text : text + "[" + ShownAll(node.qualifiers) + "]";
}

std::string Properties(const std::string& content) {
  const XmpTree tree = ReadXmp(Packet(content));
  EXPECT_EQ(tree.state, XmpState::kFine) << content;
  return ShownAll(tree.properties);
}

XmpState StateOf(const std::string& content) {
  return ReadXmp(Packet(content)).state;
}

TEST(XmpTree, HasSimpleValues) {
  EXPECT_EQ(Properties(Description("<s:a>x &lt;&#x41; y</s:a> <s:b/><s:c><![CDATA[<&]]></s:c>")),
            "a=x <A y,b=,c=<&");
  EXPECT_EQ(Properties(Description("<s:b><!-- no -->1<!-- no -->2</s:b>", " s:a='x&amp;\n'")),
            "a=x& ,b=12");
  EXPECT_EQ(Properties(Description("<s:a rdf:resource='http://x/'/><s:b rdf:value='1' s:q='2'/>")),
            "a=uri:http://x/,b=1[q=2]");
}

TEST(XmpTree, HasArrays) {
  EXPECT_EQ(Properties(Description("<s:a><rdf:Bag> <rdf:li>1</rdf:li>\n<rdf:li/></rdf:Bag></s:a>"
                                   "<s:b><rdf:Seq/></s:b><s:c><rdf:Alt><rdf:li "
                                   "xml:lang='x-default'>t</rdf:li></rdf:Alt></s:c>")),
            "a=bag(1,),b=seq(),c=alt(t[lang=x-default])");
}

TEST(XmpTree, HasStructures) {
  const std::string expected = "a=struct(f=1,g=2)";
  EXPECT_EQ(Properties(Description("<s:a rdf:parseType='Resource'><s:f>1</s:f><s:g>2</s:g></s:a>")),
            expected);
  EXPECT_EQ(Properties(Description("<s:a><rdf:Description s:f='1'><s:g>2</s:g>"
                                   "</rdf:Description></s:a>")),
            expected);
  EXPECT_EQ(Properties(Description("<s:a s:f='1' s:g='2'/>")), expected);
  EXPECT_EQ(Properties(Description("<s:a><s:T><s:f>1</s:f></s:T></s:a>")),
            "a=struct(f=1)[type=http://example.com/s/T]");
}

TEST(XmpTree, HasQualifiers) {
  EXPECT_EQ(Properties(Description("<s:a xml:lang='de'>x</s:a><s:b rdf:parseType='Resource'>"
                                   "<rdf:value>1</rdf:value><s:q>2</s:q></s:b>")),
            "a=x[lang=de],b=1[q=2]");
  const XmpTree tree = ReadXmp(Packet(Description("<s:a xml:lang='de'>x</s:a><s:b/>")));
  EXPECT_EQ(tree.Find(kSpace, "a")->Language(), "de");
  EXPECT_FALSE(tree.Find(kSpace, "b")->Language());
  EXPECT_EQ(tree.Find(kSpace, "c"), nullptr);
  EXPECT_EQ(tree.Find("other", "a"), nullptr);
}

TEST(XmpTree, JoinsDescriptions) {
  EXPECT_EQ(Properties(Description("<s:a/>") + "\n" + Description("<s:b/>")), "a=,b=");
  EXPECT_EQ(StateOf(Description("<s:a/>") + Description("<s:a/>")), XmpState::kBadRdf);
  EXPECT_EQ(StateOf("<rdf:Description rdf:about='u:1'/><rdf:Description rdf:about='u:2'/>"),
            XmpState::kBadRdf);
  EXPECT_EQ(StateOf("<rdf:Description about=''/><rdf:Description rdf:about='u:2'/>"),
            XmpState::kFine);
}

TEST(XmpTree, KnowsWhatXmpAllows) {
  for (const char* content :
       {"<s:T/>", "text", "<rdf:Description s:a='1'>text</rdf:Description>",
        "<rdf:Description rdf:about='' rdf:ID='x'/>", "<rdf:Description rdf:parseType='x'/>",
        "<rdf:Description noname='x'/>"}) {
    EXPECT_EQ(StateOf(content), XmpState::kBadRdf) << content;
  }
  for (const char* content :
       {"<s:a>x<rdf:Bag/></s:a>",
        "<s:a><rdf:Bag/>x</s:a>",
        "<s:a><rdf:Bag/><rdf:Bag/></s:a>",
        "<rdf:li>x</rdf:li>",
        "<s:a><rdf:Bag><s:b/></rdf:Bag></s:a>",
        "<nospace/>",
        "<s:a rdf:parseType='Literal'>x</s:a>",
        "<s:a rdf:parseType='Collection'/>",
        "<s:a rdf:resource='x' rdf:value='y'/>",
        "<s:a rdf:resource='x'>y</s:a>",
        "<s:a s:f='1'><s:b/></s:a>",
        "<rdf:about/>",
        "<rdf:Description/>",
        "<s:a><rdf:Bag s:q='1'/></s:a>",
        "<s:a><rdf:List/></s:a>",
        "<s:a rdf:parseType='Resource'><s:f/><s:f/></s:a>",
        "<s:a rdf:bagID='x'/>",
        "<s:a rdf:parseType='Resource' rdf:li='x'/>",
        "<s:a rdf:li='x'/>",
        "<s:a rdf:parseType='Resource'><rdf:value><rdf:Description><rdf:value>1</rdf:value><s:q/>"
        "</rdf:Description></rdf:value><s:q/></s:a>"}) {
    EXPECT_EQ(StateOf(Description(content)), XmpState::kBadRdf) << content;
  }
}

TEST(XmpTree, IsWellFormedXml) {
  EXPECT_EQ(ReadXmp("").state, XmpState::kMalformed);
  EXPECT_EQ(ReadXmp("<a/>").state, XmpState::kNoRdf);
  EXPECT_EQ(ReadXmp("\xEF\xBB\xBF<a/>").state, XmpState::kNoRdf);
  EXPECT_EQ(ReadXmp("<a/><b/>").state, XmpState::kMalformed);
  EXPECT_EQ(ReadXmp("<a/>x").state, XmpState::kMalformed);
  EXPECT_EQ(ReadXmp("x<a/>").state, XmpState::kMalformed);
  EXPECT_EQ(ReadXmp("<a>").state, XmpState::kMalformed);
  EXPECT_EQ(ReadXmp("<!DOCTYPE a [<!ENTITY e 'x'>]><a>&e;</a>").state, XmpState::kMalformed);
  for (const char* content : {"<s:a>&e;</s:a>", "<s:a>&</s:a>", "<s:a>&#0;</s:a>", "<s:a>]]></s:a>",
                              "<s:a s:b='1' s:b='2'/>", "<u:a/>", "<s:a u:b='1'/>", "<s:1/>",
                              "<s:a>\x01</s:a>", "<s:a>\xFF</s:a>", "<s:a></s:b>"}) {
    EXPECT_EQ(StateOf(Description(content)), XmpState::kMalformed) << content;
  }
}

TEST(XmpTree, HasTheCharactersOfXml) {
  const auto state = [](const std::string& reference) {
    return StateOf(Description("<s:a>&#" + reference + ";</s:a>"));
  };
  for (const char* fine : {"9", "10", "13", "32", "x20", "xD7FF", "xE000", "xFFFD", "x10000",
                           "x10FFFF", "x41", "x4a", "x4A"}) {
    EXPECT_EQ(state(fine), XmpState::kFine) << fine;
  }
  for (const char* wrong : {"0", "8", "11", "12", "14", "31", "xD800", "xDFFF", "xFFFE", "xFFFF",
                            "x110000", "", "x", "4A", "x4G", "-1", "99999999999"}) {
    EXPECT_EQ(state(wrong), XmpState::kMalformed) << wrong;
  }
  EXPECT_EQ(Properties(Description("<s:a>&lt;&gt;&amp;&apos;&quot;&#65;&#x20AC;</s:a>")),
            "a=<>&'\"A\u20AC");
  for (const char* wrong : {"&LT;", "&lt", "&;", "& lt;"}) {
    EXPECT_EQ(StateOf(Description("<s:a>" + std::string(wrong) + "</s:a>")), XmpState::kMalformed);
  }
}

// A mark of the encoding that a program has spoiled.
TEST(XmpTree, PassesOverItsHeader) {
  const std::string rdf = Packet(Description("<s:a/>"));
  for (const std::string& mark : {"\xEF\xBB?"s, "\0"s, "\xFF\xFE"s}) {
    const std::size_t start = rdf.starts_with("<?") ? rdf.find("?>") + 2 : 0;
    EXPECT_EQ(ReadXmp("<?xpacket begin='" + mark + "' id='x'?>" + rdf.substr(start)).state,
              XmpState::kFine);
  }
  EXPECT_EQ(ReadXmp("<?other \xFF?><a/>").state, XmpState::kMalformed);
}

TEST(XmpTree, IsBounded) {
  EXPECT_EQ(ReadXmp(std::string(limits::kMaxMetadataBytes + 1, ' ')).state, XmpState::kTooLarge);
  std::string deep;
  for (std::size_t i = 0; i < limits::kMaxXmlNesting; ++i) {
    deep += "<s:a rdf:parseType='Resource'>";
  }
  EXPECT_EQ(StateOf(Description(deep)), XmpState::kTooLarge);
  std::string many;
  for (std::size_t i = 0; i < limits::kMaxXmpNodes; ++i) {
    many += "<s:a/>";
  }
  EXPECT_EQ(StateOf(Description(many)), XmpState::kTooLarge);
}

TEST(XmpTree, TakesNoNamespaceThatCannotBeWrittenAgain) {
  for (const char* const name : {"a&amp;b", "a>b", "a&#x9;b"}) {
    EXPECT_EQ(
        StateOf("<rdf:Description xmlns:o=\"" + std::string(name) + "\"><o:a/></rdf:Description>"),
        XmpState::kTooLarge)
        << name;
  }
}

TEST(XmpTree, TellsHowItIsWritten) {
  const std::string rdf = "<a/>";
  EXPECT_FALSE(ReadXmp(rdf).header);
  const XmpTree plain = ReadXmp("<?xpacket begin='' id='x'?>" + rdf);
  ASSERT_TRUE(plain.header);
  EXPECT_FALSE(plain.header->has_bytes);
  EXPECT_FALSE(plain.header->has_encoding);
  const XmpTree marked = ReadXmp("\xEF\xBB\xBF<?xpacket begin='' id='x' bytes='9'?>" + rdf);
  ASSERT_TRUE(marked.header);
  EXPECT_TRUE(marked.header->has_bytes);
  const XmpTree old = ReadXmp("<?xpacket begin='' id='x' bytes='9' encoding = 'UTF-8'?>" + rdf);
  EXPECT_TRUE(old.header->has_bytes);
  EXPECT_TRUE(old.header->has_encoding);
  EXPECT_EQ(plain.encoding, XmpEncoding::kUtf8);
  EXPECT_EQ(ReadXmp("\xFE\xFF\0<\0a\0/\0>"s).encoding, XmpEncoding::kUtf16);
  EXPECT_EQ(ReadXmp("<\0\0\0a\0\0\0/\0\0\0>\0\0\0"s).encoding, XmpEncoding::kUtf32);
  EXPECT_EQ(ReadXmp("<\0\0\0a\0\0\0/\0\0\0>\0\0\0"s).state, XmpState::kNoRdf);
}

}  // namespace
}  // namespace TarnixTools::engines
