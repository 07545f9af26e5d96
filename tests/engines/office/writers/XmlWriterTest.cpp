#include <functional>

#include <gtest/gtest.h>

#include "engines/office/writers/package/EncodedUri.h"
#include "engines/office/writers/package/XmlWriter.h"

namespace TarnixTools::engines::office {
namespace {

std::string Written(const std::function<void(XmlWriter&)>& write) {
  pdf::StringSink sink;
  XmlWriter xml(sink);
  write(xml);
  xml.Finish();
  const std::string bytes = sink.Take();
  return bytes.substr(bytes.find('\n') + 1);
}

TEST(XmlWriter, WritesElementsAndAttributes) {
  EXPECT_EQ(Written([](XmlWriter& xml) {
              xml.Open("a", {{"n", 3}});
              xml.Leaf("b");
              xml.Element("c", "text");
              xml.Close();
            }),
            "<a n=\"3\"><b/><c>text</c></a>");
}

TEST(XmlWriter, ClosesWhatIsOpenAtTheEnd) {
  EXPECT_EQ(Written([](XmlWriter& xml) {
              xml.Open("a");
              xml.Open("b");
            }),
            "<a><b/></a>");
}

TEST(XmlWriter, EscapesWhatIsMarkup) {
  EXPECT_EQ(Written([](XmlWriter& xml) {
              xml.Element("a", "<\">&", {{"b", "<\"\n&"}});
            }),
            "<a b=\"&lt;&quot;&#10;&amp;\">&lt;\"&gt;&amp;</a>");
}

TEST(XmlWriter, LeavesOutWhatXmlForbids) {
  EXPECT_EQ(Written([](XmlWriter& xml) { xml.Element("a", "x\x01\x1F\uFFFFy\xC3z"); }),
            "<a>xy\uFFFDz</a>");
}

TEST(EncodedUri, KeepsWhatAUriMayHave) {
  EXPECT_EQ(EncodedUri("https://example.org/a%20b?c=d#e"), "https://example.org/a%20b?c=d#e");
}

TEST(EncodedUri, EncodesWhatItMayNot) {
  EXPECT_EQ(EncodedUri("http://e.org/a b%zz\"<\xC3\xA4>#1#2"),
            "http://e.org/a%20b%25zz%22%3C%C3%A4%3E#1%232");
}

}  // namespace
}  // namespace TarnixTools::engines::office
