#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "engines/support/metadata/XmpInfo.h"
#include "support/RawPdf.h"

namespace TarnixTools::engines {
namespace {

using namespace std::string_literals;

std::string Rdf(const std::string& properties) {
  return "<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#' "
         "xmlns:dc='http://purl.org/dc/elements/1.1/' xmlns:xmp='http://ns.adobe.com/xap/1.0/' "
         "xmlns:pdf='http://ns.adobe.com/pdf/1.3/'><rdf:Description rdf:about=''>" +
         properties + "</rdf:Description></rdf:RDF>";
}

struct Row {
  XmpInfoField field;
  const char* key;
  const char* property;
  const char* type;
};

// ISO 19005-1, table 1.
constexpr Row kRows[] = {
    {XmpInfoField::kTitle, "Title", "dc:title", "lang alt"},
    {XmpInfoField::kAuthor, "Author", "dc:creator", "seq propername"},
    {XmpInfoField::kSubject, "Subject", "dc:description", "lang alt"},
    {XmpInfoField::kKeywords, "Keywords", "pdf:Keywords", "text"},
    {XmpInfoField::kCreator, "Creator", "xmp:CreatorTool", "agentname"},
    {XmpInfoField::kProducer, "Producer", "pdf:Producer", "agentname"},
    {XmpInfoField::kCreationDate, "CreationDate", "xmp:CreateDate", "date"},
    {XmpInfoField::kModDate, "ModDate", "xmp:ModifyDate", "date"},
};

std::string ValueOf(const Row& row, const std::string& text) {
  const std::string type = row.type;
  if (type == "lang alt") {
    return "<rdf:Alt><rdf:li xml:lang='x-default'>" + text + "</rdf:li></rdf:Alt>";
  }
  return type.starts_with("seq") ? "<rdf:Seq><rdf:li>" + text + "</rdf:li></rdf:Seq>" : text;
}

TEST(XmpInfo, IsSaidInBothPlaces) {
  for (const Row& row : kRows) {
    SCOPED_TRACE(row.key);
    const XmpMirror& mirror = XmpMirrorOf(row.field);
    EXPECT_EQ(mirror.field, row.field);
    EXPECT_EQ(mirror.key, row.key);
    EXPECT_EQ(mirror.type, row.type);
    EXPECT_EQ(std::string(mirror.prefix) + ":" + std::string(mirror.name), row.property);
    const bool is_date = mirror.type == "date";
    const std::string tag = row.property;
    const XmpTree tree =
        ReadXmp(Rdf("<" + tag + ">" + ValueOf(row, is_date ? "2020-02-03T04:05:06Z" : "said") +
                    "</" + tag + ">"));
    EXPECT_TRUE(XmpAgrees(tree, mirror, is_date ? "D:20200203050506+01'00'" : "said"));
    EXPECT_FALSE(XmpAgrees(tree, mirror, is_date ? "D:20200203040507Z" : "not said"));
    EXPECT_FALSE(XmpAgrees(tree, mirror, ""));
    EXPECT_FALSE(XmpAgrees(ReadXmp(Rdf("")), mirror, ""));
  }
}

TEST(XmpInfo, IsReadFromTheInformation) {
  testing::RawPdf file;
  file.Pages(1).Object(4,
                       "<</Title(title)/Author(author\\000\\000)/Subject 5 0 R/Keywords()"
                       "/Creator/Name/Producer<FEFF00E4>/ModDate(D:2020)>>");
  file.Object(5, "(a\\000b)");
  const std::string bytes = file.Table("/Root 1 0 R/Info 4 0 R");
  const auto document = pdf::Document::Open(std::make_unique<pdf::MemorySource>(bytes), "");
  const XmpInfoValues values = ReadXmpInfoValues(*document);
  EXPECT_EQ(values[0], "title");
  EXPECT_EQ(values[1], "author");
  EXPECT_EQ(values[2], "a\0b"s);
  EXPECT_EQ(values[3], "");
  EXPECT_EQ(values[4], std::nullopt);
  EXPECT_EQ(values[5], "\u00E4");
  EXPECT_EQ(values[6], std::nullopt);
  EXPECT_EQ(values[7], "D:2020");
}

TEST(XmpInfo, IsTheTextForAllLanguagesOrTheOnlyOne) {
  const auto text = [](XmpInfoField field, const std::string& properties) {
    return XmpFieldText(ReadXmp(Rdf(properties)), XmpMirrorOf(field)).value_or("none");
  };
  EXPECT_EQ(text(XmpInfoField::kTitle,
                 "<dc:title><rdf:Alt><rdf:li xml:lang='de'>eins</rdf:li><rdf:li "
                 "xml:lang='x-default'>one</rdf:li></rdf:Alt></dc:title>"),
            "one");
  EXPECT_EQ(text(XmpInfoField::kTitle,
                 "<dc:title><rdf:Alt><rdf:li xml:lang='de'>eins</rdf:li></rdf:Alt></dc:title>"),
            "none");
  EXPECT_EQ(text(XmpInfoField::kTitle, "<dc:title>one</dc:title>"), "none");
  EXPECT_EQ(text(XmpInfoField::kAuthor,
                 "<dc:creator><rdf:Seq><rdf:li>a</rdf:li><rdf:li>b</rdf:li></rdf:Seq>"
                 "</dc:creator>"),
            "none");
  EXPECT_EQ(
      text(XmpInfoField::kAuthor, "<dc:creator><rdf:Bag><rdf:li>a</rdf:li></rdf:Bag></dc:creator>"),
      "a");
  EXPECT_EQ(text(XmpInfoField::kAuthor, "<dc:creator>a</dc:creator>"), "none");
  EXPECT_EQ(text(XmpInfoField::kKeywords, "<pdf:Keywords>a</pdf:Keywords>"), "a");
  EXPECT_EQ(text(XmpInfoField::kKeywords,
                 "<pdf:Keywords rdf:parseType='Resource'><pdf:a>a</pdf:a></pdf:Keywords>"),
            "none");
}

}  // namespace
}  // namespace TarnixTools::engines
