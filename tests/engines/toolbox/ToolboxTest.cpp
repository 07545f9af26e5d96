#include <vector>

#include <gtest/gtest.h>

#include "engines/toolbox/ErrorCodes.h"
#include "engines/toolbox/Toolbox.h"
#include "engines/toolbox/WrittenDocument.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageGeometry.h"
#include "pdf/tree/PageTree.h"
#include "pdf/write/Serialize.h"
#include "support/MemoryFile.h"
#include "support/RawPdf.h"
#include "support/TestPdf.h"

namespace TarnixTools::engines::toolbox {
namespace {

using pdf::Object;
using ::TarnixTools::testing::RawPdf;
using ::TarnixTools::testing::TestPdf;

TPdfDocument* Open(MemoryFile& file, const char* password = "") {
  const TPdfStream stream = file.Descriptor();
  return PdfDocumentOpenA(&stream, password);
}

TPdfDocument* Create(MemoryFile& file, const TPdfEncryption* encryption = nullptr) {
  const TPdfStream stream = file.Descriptor();
  return PdfDocumentCreateW(&stream, 0, encryption);
}

int CountPages(TPdfDocument* document) {
  TPdfPageList* pages = PdfDocumentGetPages(document);
  const int count = PdfPageListGetCount(pages);
  PdfClose(pages);
  return count;
}

// Copies pages, given by their indexes, from source to target, each turned by the angle.
void CopyPages(TPdfDocument* source, TPdfDocument* target, const std::vector<int>& indexes,
               int angle = 0) {
  TPdfPageList* source_pages = PdfDocumentGetPages(source);
  TPdfPageList* target_pages = PdfDocumentGetPages(target);
  for (const int index : indexes) {
    TPdfPage* page = PdfPageListGet(source_pages, index);
    TPdfPage* copy = PdfDocumentCopyPage(target, page, 15);
    ASSERT_NE(copy, nullptr);
    if (angle != 0) {
      EXPECT_EQ(PdfPageRotate(copy, angle), 1);
    }
    EXPECT_EQ(PdfPageListAppend(target_pages, copy), 1);
    PdfClose(copy);
    PdfClose(page);
  }
  PdfClose(source_pages);
  PdfClose(target_pages);
}

// Bytes of a new document with these pages of a document.
std::string Copied(const std::string& bytes, const std::vector<int>& indexes, int angle = 0) {
  MemoryFile input{bytes};
  MemoryFile output;
  TPdfDocument* source = Open(input);
  TPdfDocument* target = Create(output);
  CopyPages(source, target, indexes, angle);
  EXPECT_EQ(PdfClose(source), 1);
  EXPECT_EQ(PdfClose(target), 1);
  EXPECT_EQ(input.releases, 1);
  EXPECT_EQ(output.releases, 1);
  return output.bytes;
}

TEST(Toolbox, CopiesPagesInTheOrderAskedFor) {
  WrittenDocument result(Copied(TestPdf().Pages(3).Bytes(), {2, 0, 1}));
  ASSERT_EQ(result.PageCount(), 3U);
  EXPECT_NE(result.Data(result.Page(0).Get("Contents")).find("Page 3"), std::string::npos);
  EXPECT_NE(result.Data(result.Page(1).Get("Contents")).find("Page 1"), std::string::npos);
}

TEST(Toolbox, LeavesLostContentsOut) {
  RawPdf pdf;
  pdf.Pages(3, "/Contents[9 0 R 20 0 R null]")
      .Object(4, "<</Type/Page/Parent 2 0 R/Contents 9 0 R>>")
      .Object(5, "<</Type/Page/Parent 2 0 R/Contents 21 0 R>>")
      .Stream(20, "", "q Q")
      .Object(21, "[22 0 R 20 0 R 9 0 R]")
      .Object(22, "(no stream)");
  const std::string sound = pdf.Table();
  const std::string damaged = sound.substr(0, sound.find("xref"));
  for (const std::string& bytes : {sound, damaged}) {
    WrittenDocument result(Copied(bytes, {0, 1, 2}));
    const Object contents = result.Page(0).Get("Contents");
    ASSERT_EQ(contents.Items().size(), 1U);
    EXPECT_EQ(result.Data(contents.Items()[0]), "q Q");
    EXPECT_TRUE(result.Page(1).Get("Contents").IsNull());
  }
  WrittenDocument result(Copied(damaged, {2}));
  EXPECT_EQ(result.Page(0).Get("Contents").Items().size(), 1U);
}

TEST(Toolbox, BringsSharedResourcesOnce) {
  RawPdf pdf;
  pdf.Pages(3, "/MediaBox[0 0 9 9]/Resources<</Font<</F 20 0 R>>>>")
      .Object(20, "<</Type/Font/BaseFont/Shared>>");
  WrittenDocument result(Copied(pdf.Table(), {0, 1, 2}));
  EXPECT_EQ(result.Count([](const Object& o) { return o.Get("BaseFont").IsName("Shared"); }), 1);
}

TEST(Toolbox, ResolvesWhatPagesInherit) {
  RawPdf pdf;
  pdf.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(
          2,
          "<</Type/Pages/Kids[3 0 R 4 0 R]/Count 2/MediaBox[0 0 30 40]/CropBox[1 1 9 9]/Rotate 90"
          "/Resources<</Font<</F 5 0 R>>>>>>")
      .Object(3, "<</Type/Page/Parent 2 0 R>>")
      .Object(4, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 7 7]/Rotate 0>>")
      .Object(5, "<</Type/Font/BaseFont/Shared>>");
  WrittenDocument result(Copied(pdf.Table(), {0, 1}));
  const Object first = result.Page(0);
  const Object second = result.Page(1);
  EXPECT_EQ(result.Text(first.Get("MediaBox")), "[0 0 30 40]");
  EXPECT_EQ(result.Text(first.Get("CropBox")), "[1 1 9 9]");
  EXPECT_EQ(first.Get("Rotate").IntegerOr(0), 90);
  EXPECT_EQ(result.Text(second.Get("MediaBox")), "[0 0 7 7]");
  EXPECT_EQ(second.Get("Rotate").IntegerOr(0), 0);
  EXPECT_EQ(first.Get("Resources").AsReference(), second.Get("Resources").AsReference());
}

TEST(Toolbox, GivesAMediaBoxToPagesWithoutOne) {
  WrittenDocument result(Copied(TestPdf().Page("x").NoMediaBox().Bytes(), {0}));
  EXPECT_EQ(result.Text(result.Page(0).Get("MediaBox")), "[0 0 612 792]");
}

TEST(Toolbox, LeavesBoxesOutThatAreNoRectangles) {
  const std::string bytes =
      TestPdf()
          .InheritedEntry("/MediaBox[0 0 30 40]/CropBox[1 1 9 9]")
          .Page("x")
          .NoMediaBox()
          .PageEntry("/MediaBox[(a)null 3]/CropBox 7/TrimBox[1 2 3]/ArtBox[1 2 3 4]")
          .Bytes();
  WrittenDocument result(Copied(bytes, {0}));
  const Object page = result.Page(0);
  EXPECT_EQ(result.Text(page.Get("MediaBox")), "[0 0 612 792]");
  EXPECT_FALSE(page.Has("CropBox"));
  EXPECT_FALSE(page.Has("TrimBox"));
  EXPECT_EQ(result.Text(page.Get("ArtBox")), "[1 2 3 4]");
}

// What the only page of a document measures.
std::string GeometryText(const std::string& bytes) {
  const auto document = pdf::Document::Open(std::make_unique<pdf::MemorySource>(bytes), "");
  const pdf::PageTree pages(*document);
  const pdf::PageGeometry geometry = pdf::ReadPageGeometry(*document, pages, pages.pages().at(0));
  std::string text = std::to_string(geometry.rotation) + " " + std::to_string(geometry.user_unit);
  for (const pdf::Box& box : {geometry.media_box, geometry.crop_box, geometry.bleed_box,
                              geometry.trim_box, geometry.art_box}) {
    pdf::AppendBox(text, box);
  }
  return text;
}

// Whatever the boxes are written as, the copy measures what the page does.
TEST(Toolbox, KeepsTheGeometryOfPages) {
  for (const char* entries :
       {"/MediaBox[0 0 200 100]", "/MediaBox[200 100 0 0]/CropBox[150 50 400 400]",
        "/MediaBox[/a 0 200 100]/CropBox[null 99 0 R 200 50]", "/MediaBox[0 0 200 100 7]",
        "/MediaBox[0 0 200 0]/CropBox[10 10 50 60]", "/CropBox[900 900 950 950]",
        "/MediaBox[0 0 99999999999999 100]", "/MediaBox[0 0 200 100]/CropBox[300 300 400 400]",
        "/MediaBox[0 0 200 100]/TrimBox[(a) 10 20 30]/BleedBox[5 5 300 95]/ArtBox[0 0 0 0]",
        "/MediaBox[-10.5 -20 .25 80]/Rotate -90/UserUnit 2.5", "/Rotate 463/UserUnit/Large",
        "/Rotate 99999999999"}) {
    const std::string source = TestPdf().Page("x").NoMediaBox().PageEntry(entries).Bytes();
    EXPECT_EQ(GeometryText(Copied(source, {0})), GeometryText(source)) << entries;
  }
}

TEST(Toolbox, TurnsPages) {
  const std::string bytes = TestPdf()
                                .Page("a")
                                .Page("b")
                                .Rotate(270)
                                .Page("c")
                                .Rotate(-90)
                                .Page("d")
                                .Rotate(45)
                                .Page("e")
                                .Rotate(100)
                                .Bytes();
  WrittenDocument result(Copied(bytes, {0, 1, 2, 3, 4}, 180));
  EXPECT_EQ(result.Page(0).Get("Rotate").IntegerOr(0), 180);
  EXPECT_EQ(result.Page(1).Get("Rotate").IntegerOr(0), 90);
  EXPECT_EQ(result.Page(2).Get("Rotate").IntegerOr(0), 90);
  EXPECT_EQ(result.Page(3).Get("Rotate").IntegerOr(0), 180);
  EXPECT_EQ(result.Page(4).Get("Rotate").IntegerOr(0), 270);
}

TEST(Toolbox, BringsAnnotationsAndLeadsLinksToCopies) {
  const std::string bytes =
      TestPdf()
          .Page("a")
          .Annotation("/Type/Annot/Subtype/Link/Rect[0 0 9 9]/Dest[{{page 2}}/Fit]/P {{page 1}}")
          .Page("b")
          .Bytes();
  WrittenDocument result(Copied(bytes, {1, 0}));
  const Object annotation = result.Follow(result.Page(1).Get("Annots").Items()[0]);
  EXPECT_EQ(annotation.Get("Dest").Items()[0].AsReference().number, result.PageNumber(0));
  EXPECT_EQ(annotation.Get("P").AsReference().number, result.PageNumber(1));
}

TEST(Toolbox, DoesNotDragOtherPagesAlong) {
  const std::string bytes =
      TestPdf()
          .Page("a")
          .Annotation("/Type/Annot/Subtype/Link/Rect[0 0 9 9]/Dest[{{page 2}}/Fit]")
          .PageEntry("/B[{{page 2}}]/Thumb {{page 2}}/StructParents 4/PieceInfo<</X {{page 2}}>>")
          .Page("b")
          .Bytes();
  WrittenDocument result(Copied(bytes, {0}));
  EXPECT_EQ(result.Count([](const Object& o) { return o.Get("Type").IsName("Page"); }), 1);
  EXPECT_FALSE(result.Page(0).Has("StructParents"));
}

TEST(Toolbox, CopiesAPageTwiceWithAnnotationsOfItsOwn) {
  const std::string bytes =
      TestPdf().Page("a").Annotation("/Type/Annot/Subtype/Text/Rect[0 0 9 9]").Bytes();
  WrittenDocument result(Copied(bytes, {0, 0}));
  ASSERT_EQ(result.PageCount(), 2U);
  EXPECT_NE(result.Page(0).Get("Annots").Items()[0].AsReference(),
            result.Page(1).Get("Annots").Items()[0].AsReference());
  EXPECT_EQ(result.Page(0).Get("Contents").AsReference(),
            result.Page(1).Get("Contents").AsReference());
}

TEST(Toolbox, BuildsABalancedTreeOfManyPages) {
  constexpr int kPages = 5000;
  std::vector<int> all(kPages);
  for (int i = 0; i < kPages; ++i) {
    all[static_cast<std::size_t>(i)] = i;
  }
  WrittenDocument result(Copied(RawPdf().Pages(kPages).Table(), all));
  EXPECT_EQ(result.PageCount(), static_cast<std::size_t>(kPages));
}

TEST(Toolbox, WritesSeveralTargetsFromOneSource) {
  MemoryFile input{TestPdf().Pages(4).Bytes()};
  MemoryFile outputs[2];
  TPdfDocument* source = Open(input);
  TPdfDocument* targets[2] = {Create(outputs[0]), Create(outputs[1])};
  CopyPages(source, targets[0], {0, 2});
  CopyPages(source, targets[1], {1});
  CopyPages(source, targets[0], {3});
  EXPECT_EQ(PdfClose(targets[0]), 1);
  EXPECT_EQ(PdfClose(source), 1);
  EXPECT_EQ(PdfClose(targets[1]), 1);
  EXPECT_EQ(WrittenDocument(outputs[0].bytes).PageCount(), 3U);
  EXPECT_EQ(WrittenDocument(outputs[1].bytes).PageCount(), 1U);
}

TEST(Toolbox, ForgetsATargetThatIsDiscarded) {
  MemoryFile input{TestPdf().Pages(2).Bytes()};
  MemoryFile output;
  TPdfDocument* source = Open(input);
  TPdfDocument* target = Create(output);
  CopyPages(source, target, {0});
  EXPECT_EQ(PdfDocumentDiscard(target), 1);
  EXPECT_EQ(output.releases, 1);
  EXPECT_EQ(PdfClose(source), 1);
}

TEST(Toolbox, WritesADocumentWithoutPages) {
  MemoryFile output;
  EXPECT_EQ(PdfClose(Create(output)), 1);
  EXPECT_EQ(WrittenDocument(output.bytes).PageCount(), 0U);
}

TEST(Toolbox, ReportsThatTheTargetCannotBeWritten) {
  for (const std::size_t room : {0U, 100U, 500U}) {
    MemoryFile input{TestPdf().Pages(2).Bytes()};
    MemoryFile output;
    output.room = room;
    TPdfDocument* source = Open(input);
    TPdfDocument* target = Create(output);
    CopyPages(source, target, {0, 1});
    PdfClose(source);
    EXPECT_EQ(PdfClose(target), 0) << room;
    EXPECT_EQ(PdfGetLastError(), kToolboxWriteError) << room;
    EXPECT_EQ(output.releases, 1);
  }
}

TEST(Toolbox, ReportsThatTheSourceCannotBeReadAnyMore) {
  RawPdf pdf;
  pdf.Pages(1, "/MediaBox[0 0 9 9]/Contents 9 0 R")
      .Stream(9, "/Filter/DCTDecode", std::string(9'000'000, 'x'));
  MemoryFile input{pdf.Table()};
  MemoryFile output;
  TPdfDocument* source = Open(input);
  TPdfDocument* target = Create(output);
  CopyPages(source, target, {0});
  input.reads_fail = true;
  PdfClose(source);
  EXPECT_EQ(PdfClose(target), 0);
  EXPECT_EQ(PdfGetLastError(), kToolboxReadError);
}

TEST(Toolbox, TellsWhyADocumentDoesNotOpen) {
  MemoryFile empty;
  EXPECT_EQ(Open(empty), nullptr);
  EXPECT_EQ(PdfGetLastError(), kToolboxNotAPdfError);
  EXPECT_EQ(empty.releases, 0) << "the file is still the caller's";
  EXPECT_EQ(PdfDocumentGetPages(nullptr), nullptr);
  EXPECT_EQ(PdfGetLastError(), kToolboxNotAPdfError) << "a null handle leaves the cause readable";
}

TEST(Toolbox, EncryptsAndAsksForThePassword) {
  MemoryFile input{TestPdf().Pages(1).Bytes()};
  MemoryFile output;
  const TPdfEncryption encryption{L"us\u00E9r", L"owner", 3900};
  TPdfDocument* source = Open(input);
  TPdfDocument* target = Create(output, &encryption);
  CopyPages(source, target, {0});
  PdfClose(source);
  EXPECT_EQ(PdfClose(target), 1);
  for (const char* wrong : {"", "wrong"}) {
    MemoryFile locked{output.bytes};
    EXPECT_EQ(Open(locked, wrong), nullptr);
    EXPECT_EQ(PdfGetLastError(), 17);
  }
  for (const char* right : {"us\u00E9r", "owner"}) {
    MemoryFile locked{output.bytes};
    TPdfDocument* opened = Open(locked, right);
    ASSERT_NE(opened, nullptr);
    EXPECT_EQ(PdfDocumentIsEncrypted(opened), 1);
    EXPECT_EQ(CountPages(opened), 1);
    PdfClose(opened);
  }
}

TEST(Toolbox, RefusesCallsThatMakeNoSense) {
  MemoryFile input{TestPdf().Pages(1).Bytes()};
  MemoryFile output;
  TPdfDocument* source = Open(input);
  TPdfDocument* target = Create(output);
  TPdfPageList* pages = PdfDocumentGetPages(source);
  EXPECT_EQ(PdfPageListGet(pages, 1), nullptr);
  EXPECT_EQ(PdfPageListGet(pages, -1), nullptr);
  TPdfPage* page = PdfPageListGet(pages, 0);
  EXPECT_EQ(PdfDocumentCopyPage(source, page, 15), nullptr);
  EXPECT_EQ(PdfPageRotate(page, 90), 0) << "not a copy";
  TPdfPage* copy = PdfDocumentCopyPage(target, page, 15);
  EXPECT_EQ(PdfPageRotate(copy, 45), 0);
  EXPECT_EQ(PdfPageListAppend(pages, copy), 0) << "a list of another document";
  EXPECT_EQ(PdfGetLastError(), kToolboxArgumentError);
  PdfClose(copy);
  PdfClose(page);
  PdfClose(pages);
  PdfClose(source);
  PdfDocumentDiscard(target);
}

TPdfSize SizeOf(const std::string& bytes) {
  MemoryFile input{bytes};
  TPdfDocument* source = Open(input);
  TPdfPageList* pages = PdfDocumentGetPages(source);
  TPdfPage* page = PdfPageListGet(pages, 0);
  TPdfSize size;
  EXPECT_EQ(PdfPageGetSize(page, &size), 1);
  PdfClose(page);
  PdfClose(pages);
  PdfClose(source);
  return size;
}

TEST(Toolbox, MeasuresThePageAsItIsSeen) {
  const auto size_of = [](const std::string& entries) {
    const TPdfSize size = SizeOf(TestPdf().Page("x").NoMediaBox().PageEntry(entries).Bytes());
    return std::to_string(static_cast<int>(size.width)) + "x" +
           std::to_string(static_cast<int>(size.height));
  };
  EXPECT_EQ(size_of("/MediaBox[0 0 200 100]"), "200x100");
  EXPECT_EQ(size_of("/MediaBox[200 100 0 0]"), "200x100");
  EXPECT_EQ(size_of("/MediaBox[0 0 200 100]/Rotate 270"), "100x200");
  EXPECT_EQ(size_of("/MediaBox[0 0 200 100]/CropBox[10 10 60 90]"), "50x80");
  EXPECT_EQ(size_of("/MediaBox[0 0 200 100]/CropBox[-50 -50 60 900]"), "60x100");
  EXPECT_EQ(size_of("/MediaBox[0 0 200 100]/CropBox[500 500 600 600]"), "200x100");
  EXPECT_EQ(size_of("/MediaBox[0 0 200 100]/Rotate 100"), "100x200");
  EXPECT_EQ(size_of("/MediaBox[0 0 200 100]/Rotate 45"), "200x100");
  EXPECT_EQ(size_of("/MediaBox[0 0 200 100]/Rotate 90.0"), "100x200");
  EXPECT_EQ(size_of("/MediaBox[0 0 200 100]/UserUnit 2"), "400x200");
  EXPECT_EQ(size_of("/MediaBox[(a)null 3]"), "612x792");
  EXPECT_EQ(size_of("/MediaBox 7"), "612x792");
}

TEST(Toolbox, ReadsDocumentInformation) {
  MemoryFile input{TestPdf().Page("x").InfoEntry("/Author(Ren\\351)/Producer<FEFF20AC>").Bytes()};
  TPdfDocument* source = Open(input);
  TPdfMetadata* metadata = PdfDocumentGetMetadata(source);
  char buffer[2048];
  EXPECT_EQ(PdfMetadataGetAuthorA(metadata, buffer, sizeof buffer), 1);
  EXPECT_STREQ(buffer, "Ren\u00E9");
  EXPECT_EQ(PdfMetadataGetProducerA(metadata, buffer, sizeof buffer), 1);
  EXPECT_STREQ(buffer, "\u20AC");
  EXPECT_EQ(PdfMetadataGetKeywordsA(metadata, buffer, sizeof buffer), 1);
  EXPECT_STREQ(buffer, "");
  EXPECT_EQ(PdfMetadataGetAuthorA(metadata, buffer, 5), 1);
  EXPECT_STREQ(buffer, "Ren") << "no half character";
  PdfClose(metadata);
  PdfClose(source);
}

TEST(Toolbox, TurnsPagesByAnyNumberOfQuarters) {
  const auto turned = [](const std::string& own, const std::vector<int>& angles) {
    MemoryFile input{TestPdf().Page("").PageEntry(own).Bytes()};
    MemoryFile output;
    TPdfDocument* source = Open(input);
    TPdfDocument* target = Create(output);
    TPdfPageList* pages = PdfDocumentGetPages(source);
    TPdfPageList* copies = PdfDocumentGetPages(target);
    TPdfPage* page = PdfPageListGet(pages, 0);
    TPdfPage* copy = PdfDocumentCopyPage(target, page, 15);
    for (const int angle : angles) {
      EXPECT_EQ(PdfPageRotate(copy, angle), 1);
    }
    EXPECT_EQ(PdfPageListAppend(copies, copy), 1);
    PdfClose(copy);
    PdfClose(page);
    PdfClose(pages);
    PdfClose(copies);
    PdfClose(source);
    EXPECT_EQ(PdfClose(target), 1);
    return WrittenDocument(output.bytes).Page(0).Get("Rotate").IntegerOr(0);
  };
  EXPECT_EQ(turned("", {}), 0);
  EXPECT_EQ(turned("", {90}), 90);
  EXPECT_EQ(turned("", {270}), 270);
  EXPECT_EQ(turned("", {360}), 0);
  EXPECT_EQ(turned("", {450}), 90);
  EXPECT_EQ(turned("", {-90}), 270);
  EXPECT_EQ(turned("", {-450}), 270);
  EXPECT_EQ(turned("", {90, 90}), 180);
  EXPECT_EQ(turned("", {270, 270, 270}), 90);
  EXPECT_EQ(turned("", {-270, -270}), 180);
  EXPECT_EQ(turned("/Rotate 270", {180}), 90);
  EXPECT_EQ(turned("/Rotate -90", {}), 270);
  EXPECT_EQ(turned("/Rotate 720", {-90}), 270);
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
