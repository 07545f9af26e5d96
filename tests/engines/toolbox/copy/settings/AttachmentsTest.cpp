#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/toolbox/copy/CopiedDocument.h"
#include "engines/toolbox/copy/settings/Attachments.h"
#include "pdf/tree/NameTree.h"
#include "pdf/tree/TextString.h"
#include "support/Readers.h"
#include "support/TempDir.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines::toolbox {
namespace {

using pdf::Object;
using ::TarnixTools::testing::ReadBytes;
using ::TarnixTools::testing::RunProgram;
using ::TarnixTools::testing::TempDir;
using ::TarnixTools::testing::TestPdf;
using ::TarnixTools::testing::WriteBytes;

TestPdf& AddFile(TestPdf& file, const std::string& object, const std::string& name,
                 const std::string& data) {
  return file
      .Object(object + ".data", "<</Type/EmbeddedFile/Length " + std::to_string(data.size()) +
                                    ">>\nstream\n" + data + "\nendstream")
      .Object(object, "<</Type/Filespec/F(" + name + ")/UF(" + name + ")/EF<</F {{" + object +
                          ".data}}>>>>");
}

// A file with two pages and these attachments: file names and what they hold. Their names in the
// tree are the same.
TestPdf FileWith(const std::vector<std::pair<std::string, std::string>>& attachments) {
  TestPdf file;
  file.Pages(2);
  std::string names;
  for (const auto& [name, data] : attachments) {
    AddFile(file, name, name, data);
    names += "(" + name + "){{" + name + "}}";
  }
  return file.CatalogEntry("/Names<</EmbeddedFiles<</Names[" + names + "]>>>>");
}

class Attached : public CopiedDocument {
 public:
  using CopiedDocument::CopiedDocument;

  struct File {
    std::string name;  // in the tree
    std::string file_name;
    std::string data;

    friend bool operator==(const File&, const File&) = default;

    friend std::ostream& operator<<(std::ostream& out, const File& file) {
      return out << file.name << " = " << file.file_name << ": " << file.data;
    }
  };

  std::vector<File> Files() {
    std::vector<File> files;
    const Object tree = Get(Catalog(), "Names").Get("EmbeddedFiles");
    pdf::ReadNameTree(document(), tree, [&](std::string_view name, const Object& value) {
      const Object specification = Follow(value);
      EXPECT_EQ(specification.Get("F").Text(), specification.Get("UF").Text());
      files.push_back({std::string(name), std::string(specification.Get("UF").Text()),
                       Data(Get(specification, "EF").Get("F"))});
    });
    return files;
  }
};

using Files = std::vector<Attached::File>;

TEST(Attachments, ComeWithAWholeDocument) {
  Attached copy({{FileWith({{"a.txt", "A"}, {"b.txt", "B"}}).Bytes()}});
  EXPECT_EQ(copy.Files(), (Files{{"a.txt", "a.txt", "A"}, {"b.txt", "b.txt", "B"}}));
  EXPECT_EQ(copy.Reported(TPdfCopiedKind::kAttachment, TPdfCopyOutcome::kKept), 2U);
  EXPECT_EQ(copy.Reported(TPdfCopiedKind::kAttachment, TPdfCopyOutcome::kRenamed), 0U);
}

TEST(Attachments, MayStandInTheirTree) {
  TestPdf file;
  file.Pages(1);
  AddFile(file, "a", "a.txt", "A");
  file.CatalogEntry(
      "/Names<</EmbeddedFiles<</Names[(a)<</Type/Filespec/F(a.txt)/UF(a.txt)"
      "/EF<</F {{a.data}}>>>>]>>>>");
  Attached copy({{file.Bytes()}});
  EXPECT_EQ(copy.Files(), (Files{{"a", "a.txt", "A"}}));
}

TEST(Attachments, StayBehindWhenAPageDoes) {
  Attached copy({{FileWith({{"a.txt", "secret"}}).Bytes(), {1}}});
  EXPECT_EQ(copy.Files(), Files{});
  EXPECT_EQ(copy.bytes().find("secret"), std::string::npos);
  EXPECT_EQ(copy.Reported(TPdfCopiedKind::kAttachment, TPdfCopyOutcome::kDropped), 1U);
}

TEST(Attachments, OfSeveralDocumentsAreNumberedWhereTheyClash) {
  Attached copy({{FileWith({{"a.txt", "1"}, {"b", "2"}}).Bytes()},
                 {FileWith({{"a.txt", "3"}, {"c", "4"}}).Bytes()},
                 {FileWith({{"a.txt", "5"}, {"b", "6"}}).Bytes()}});
  EXPECT_EQ(copy.Files(), (Files{{"a (2).txt", "a (2).txt", "3"},
                                 {"a (3).txt", "a (3).txt", "5"},
                                 {"a.txt", "a.txt", "1"},
                                 {"b", "b", "2"},
                                 {"b (2)", "b (2)", "6"},
                                 {"c", "c", "4"}}));
  EXPECT_EQ(copy.Reported(TPdfCopiedKind::kAttachment, TPdfCopyOutcome::kRenamed), 3U);
}

TEST(Attachments, SkipNumbersThatAreTaken) {
  Attached copy({{FileWith({{"a.txt", "1"}, {"a (2).txt", "2"}}).Bytes()},
                 {FileWith({{"a.txt", "3"}}).Bytes()}});
  EXPECT_EQ(copy.Files(), (Files{{"a (2).txt", "a (2).txt", "2"},
                                 {"a (3).txt", "a (3).txt", "3"},
                                 {"a.txt", "a.txt", "1"}}));
}

TEST(Attachments, AreNumberedByNameAndFileNameEach) {
  const auto file = [](const std::string& name, const std::string& file_name) {
    TestPdf pdf;
    AddFile(pdf.Pages(1), "x", file_name, name);
    return pdf.CatalogEntry("/Names<</EmbeddedFiles<</Names[(" + name + "){{x}}]>>>>").Bytes();
  };
  Attached same_name({{file("n", "a.txt")}, {file("n", "b.txt")}});
  EXPECT_EQ(same_name.Files(), (Files{{"n", "a.txt", "n"}, {"n (2)", "b.txt", "n"}}));
  Attached same_file_name({{file("m", "a.txt")}, {file("n", "a.txt")}});
  EXPECT_EQ(same_file_name.Files(), (Files{{"m", "a.txt", "m"}, {"n", "a (2).txt", "n"}}));
}

TEST(Attachments, KeepEqualFileNamesOfOneDocument) {
  TestPdf file;
  AddFile(file.Pages(1), "x", "same.txt", "1");
  AddFile(file, "y", "same.txt", "2");
  file.CatalogEntry("/Names<</EmbeddedFiles<</Names[(x){{x}}(y){{y}}(z){{x}}(z){{x}}(z){{y}}]>>>>");
  Attached copy({{file.Bytes()}});
  EXPECT_EQ(copy.Files(), (Files{{"x", "same.txt", "1"},
                                 {"y", "same.txt", "2"},
                                 {"z", "same.txt", "1"},
                                 {"z (2)", "same.txt", "2"}}));
}

TEST(Attachments, AreTheFilesThatAnnotationsAndTheCatalogName) {
  TestPdf file = FileWith({{"a.txt", "A"}});
  file.CatalogEntry("/AF[{{a.txt}} 7 null]")
      .Annotation("/Subtype/FileAttachment/Rect[0 0 9 9]/FS {{a.txt}}");
  Attached copy({{file.Bytes()}});
  const Object entry = copy.Get(copy.Get(copy.Catalog(), "Names"), "EmbeddedFiles");
  const auto number = entry.Get("Names").Items()[1].AsReference();
  EXPECT_EQ(copy.Catalog().Get("AF").Items()[0].AsReference(), number);
  EXPECT_EQ(copy.Follow(copy.Page(1).Get("Annots").Items()[0]).Get("FS").AsReference(), number);
}

// The one that is numbered in the tree holds the same file as the annotation's.
TEST(Attachments, LeaveTheNameThatAnAnnotationShows) {
  TestPdf second = FileWith({{"a.txt", "B"}});
  second.Annotation("/Subtype/FileAttachment/Rect[0 0 9 9]/FS {{a.txt}}");
  Attached copy({{FileWith({{"a.txt", "A"}}).Bytes()}, {second.Bytes()}});
  EXPECT_EQ(copy.Files(), (Files{{"a (2).txt", "a (2).txt", "B"}, {"a.txt", "a.txt", "A"}}));
  const Object shown = copy.Get(copy.Follow(copy.Page(3).Get("Annots").Items()[0]), "FS");
  EXPECT_EQ(shown.Get("UF").Text(), "a.txt");
  EXPECT_EQ(copy.Data(shown.Get("EF").Get("F")), "B");
}

TEST(Attachments, OfACatalogAreNumberedWithTheTree) {
  TestPdf file = FileWith({{"a.txt", "A"}});
  file.CatalogEntry("/AF[{{a.txt}}]");
  Attached copy({{file.Bytes()}, {file.Bytes()}});
  const auto associated = copy.Catalog().Get("AF").Items();
  ASSERT_EQ(associated.size(), 2U);
  EXPECT_EQ(copy.Follow(associated[0]).Get("UF").Text(), "a.txt");
  EXPECT_EQ(copy.Follow(associated[1]).Get("UF").Text(), "a (2).txt");
}

TEST(Attachments, KeepAPortfolioOfASingleDocument) {
  TestPdf file = FileWith({{"a.txt", "A"}});
  file.CatalogEntry("/Collection {{c}} /PageMode/UseAttachments")
      .Object("c", "<</Type/Collection/View/D/D(a.txt)/Schema<</S<</Subtype/F/N(S)>>>>>>");
  Attached copy({{file.Bytes()}});
  EXPECT_EQ(copy.Get(copy.Catalog(), "Collection").Get("D").Text(), "a.txt");
  EXPECT_TRUE(copy.Catalog().Get("PageMode").IsName("UseAttachments"));
  for (const auto& [first, second] : {std::pair(file.Bytes(), TestPdf().Pages(1).Bytes()),
                                      std::pair(TestPdf().Pages(1).Bytes(), file.Bytes())}) {
    Attached merged({{first}, {second}});
    EXPECT_FALSE(merged.Catalog().Has("Collection"));
    EXPECT_EQ(merged.Files().size(), 1U);
  }
}

TEST(Attachments, LeaveOutWhatHoldsNoFile) {
  TestPdf file;
  AddFile(file.Pages(1), "x", "x", "X");
  file.Object("loop", "<</Kids[{{loop}} {{tree}} {{page 1}} 3]/Names[(l){{loop}}]>>")
      .Object("tree",
              "<</Kids[{{loop}}]/Names[(a)(text)(b)<</F(b)>>(c)<</EF 7>>(d)<</EF<</F 99 0 R"
              "/UF{{page 1}}>>>>(e) 98 0 R (f){{page 1}}/g {{x}}(x){{x}}(y)]>>")
      .CatalogEntry("/Names<</EmbeddedFiles {{tree}}>>");
  Attached copy({{file.Bytes()}});
  EXPECT_EQ(copy.Files(), (Files{{"x", "x", "X"}}));
  EXPECT_EQ(copy.Reported(TPdfCopiedKind::kAttachment, TPdfCopyOutcome::kDropped), 7U);
}

TEST(Attachments, ManyOfOneNameAreNumberedQuickly) {
  std::vector<std::pair<std::string, std::string>> names;
  for (int i = 0; i < 3000; ++i) {
    names.emplace_back("n" + std::to_string(i), "x");
  }
  const std::string bytes = FileWith(names).Bytes();
  Attached copy({{bytes}, {bytes}, {bytes}});
  const Files files = copy.Files();
  EXPECT_EQ(files.size(), 9000U);
  EXPECT_EQ(files[1].name, "n0 (2)");
  EXPECT_EQ(files[2].name, "n0 (3)");
}

TEST(Attachments, ReachIndependentReaders) {
  TARNIX_NEED_PROGRAM("pdfdetach");
  TARNIX_NEED_PROGRAM("qpdf");
  TempDir directory;
  std::string data;
  for (int i = 0; i < 300'000; ++i) {
    data += static_cast<char>(i * 31 + i / 256);
  }
  const std::string path = directory.Path("merged.pdf");
  const TPdfEncryption encryption{L"", L"owner", 3900};
  for (const TPdfEncryption* protection :
       {static_cast<const TPdfEncryption*>(nullptr), &encryption}) {
    WriteBytes(path, CopyAll({{FileWith({{"a.bin", data}}).Bytes()},
                              {FileWith({{"a.bin", "other"}}).Bytes()}},
                             15, nullptr, protection));
    EXPECT_EQ(testing::QpdfComplaints(path), "");
    const std::string target = directory.MakeDir(protection == nullptr ? "plain" : "protected");
    EXPECT_EQ(RunProgram({"pdfdetach", "-saveall", "-o", target, path}).exit_status, 0);
    EXPECT_EQ(ReadBytes(target + "/a.bin"), data);
    EXPECT_EQ(ReadBytes(target + "/a (2).bin"), "other");
    EXPECT_EQ(RunProgram({"qpdf", "--show-attachment=a (2).bin", path}).output, "other");
  }
}

TEST(NumberedName, PutsTheNumberBeforeTheExtension) {
  EXPECT_EQ(NumberedName("a.txt", 2), "a (2).txt");
  EXPECT_EQ(NumberedName("a", 10), "a (10)");
  EXPECT_EQ(NumberedName(".profile", 2), ".profile (2)");
  EXPECT_EQ(NumberedName("dir.d/a", 2), "dir.d/a (2)");
  EXPECT_EQ(NumberedName("dir.d\\.a", 2), "dir.d\\.a (2)");
  EXPECT_EQ(NumberedName("a.", 2), "a (2).");
  EXPECT_EQ(NumberedName("", 2), " (2)");
}

TEST(NumberedName, KeepsTheEncoding) {
  using std::string_literals::operator""s;
  EXPECT_EQ(NumberedName("\xFE\xFF\x00\xE4\x00.\x00t"s, 2),
            "\xFE\xFF\x00\xE4\x00 \x00(\x00"
            "2\x00)\x00.\x00t"s);
  EXPECT_EQ(NumberedName("\xFF\xFE\xE4\x00.\x00t\x00"s, 2),
            "\xFF\xFE\xE4\x00 \x00(\x00"
            "2\x00)\x00.\x00t\x00"s);
  EXPECT_EQ(NumberedName("\xEF\xBB\xBF\xC3\xA4.t", 2), "\xEF\xBB\xBF\xC3\xA4 (2).t");
  // U+2E00 is no dot.
  EXPECT_EQ(NumberedName("\xFE\xFF\x2E\x00"s, 3),
            "\xFE\xFF\x2E\x00\x00 \x00(\x00"
            "3\x00)"s);
  EXPECT_EQ(NumberedName("\xFE\xFF\x00"s, 3),
            "\xFE\xFF\x00 \x00(\x00"
            "3\x00)\x00"s);
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
