// What holds for every document that is written: programs refuse a file whose parts do not keep the
// schemas, or do not go together.
#include <gtest/gtest.h>
#include <zip.h>

#include "engines/office/writers/RichDocuments.h"
#include "engines/office/writers/WriterDocuments.h"
#include "engines/office/writers/schema/OfficeSchema.h"
#include "engines/office/writers/schema/PackageCheck.h"

namespace TarnixTools::engines::office {
namespace {

TEST(WrittenPackages, AreSoundDocuments) {
  for (const auto& [name, document] : RichDocuments()) {
    if (document.pages.empty()) {
      continue;  // no document has none
    }
    EXPECT_EQ(PackageComplaints(PartsOf(WordBytesOf(document))), "") << name;
  }
}

TEST(WrittenPackages, AreSoundPresentations) {
  for (const auto& [name, document] : RichDocuments()) {
    EXPECT_EQ(PackageComplaints(PartsOf(SlideBytesOf(document))), "") << name;
  }
}

// The checks notice what they are for.
TEST(WrittenPackages, AreHeldToTheSchemas) {
  const auto complaint = [](const std::string& content) {
    return SchemaComplaints(
        "<a:tbl xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\">" + content +
        "</a:tbl>");
  };
  const std::string grid = "<a:tblPr/><a:tblGrid><a:gridCol w=\"5\"/></a:tblGrid>";
  EXPECT_EQ(complaint("<a:tblGrid/><a:tblPr/>"),
            "a:tbl has the children a:tblGrid a:tblPr\na:tblGrid has the children\n");
  EXPECT_EQ(complaint(grid), "a:tbl has the children a:tblPr a:tblGrid\n");
  EXPECT_EQ(complaint(grid + "<a:tr h=\"0\"><a:tc/></a:tr>"),
            "a:tr has h=0\na:tc has the children\n");
  EXPECT_EQ(complaint(grid + "<a:tr x=\"1\"><b:tc/></a:tr>"),
            "a:tr has the children b:tc\na:tr has no h\na:tr may have no x\n"
            "b:tc has a prefix without a namespace\nb:tc is not known in a:tr\n");
  EXPECT_EQ(SchemaComplaints("<a:tblPr xmlns:a=\"http://example.org/\" firstRow=\"2\">x</a:tblPr>"),
            "xmlns:a is http://example.org/\na:tblPr has the text x\na:tblPr has firstRow=2\n");
}

TEST(WrittenPackages, AreHeldToWhatTheyReferTo) {
  Parts parts = PartsOf(SlideBytesOf(DocumentOf({PageWith({Block{TextAt(72, 100, {"Text"})}})})));
  Parts without = parts;
  without.erase("ppt/slideLayouts/slideLayout1.xml");
  EXPECT_NE(PackageComplaints(without), "");
  std::string& rels = parts.at("ppt/slides/_rels/slide1.xml.rels");
  rels.replace(rels.find("slideLayout\""), 11, "slideMaster");
  EXPECT_NE(PackageComplaints(parts), "");
}

// By a library that reads the directory of an archive first.
TEST(WrittenPackages, AreArchivesThatOthersRead) {
  const std::string archive = WordBytesOf(RichDocuments().at("a book"));
  const Parts parts = PartsOf(archive);
  zip_source_t* source = zip_source_buffer_create(archive.data(), archive.size(), 0, nullptr);
  zip_t* zip = zip_open_from_source(source, ZIP_RDONLY | ZIP_CHECKCONS, nullptr);
  ASSERT_NE(zip, nullptr);
  EXPECT_EQ(zip_get_num_entries(zip, 0), static_cast<zip_int64_t>(parts.size()));
  for (const auto& [name, part] : parts) {
    zip_stat_t entry;
    ASSERT_EQ(zip_stat(zip, name.c_str(), 0, &entry), 0) << name;
    EXPECT_EQ(entry.size, part.size());
    std::string bytes(part.size(), '\0');
    zip_file_t* file = zip_fopen(zip, name.c_str(), 0);
    ASSERT_NE(file, nullptr) << name;
    EXPECT_EQ(zip_fread(file, bytes.data(), bytes.size()), static_cast<zip_int64_t>(part.size()));
    EXPECT_EQ(bytes, part) << name;
    zip_fclose(file);
  }
  EXPECT_STREQ(zip_get_name(zip, 0, 0), "_rels/.rels");
  zip_discard(zip);
}

}  // namespace
}  // namespace TarnixTools::engines::office
