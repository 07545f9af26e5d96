// The structure that is made of laid-out pages, and what marks it in their content, whole.
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engines/pdfa/convert/OpenedConversion.h"
#include "engines/pdfa/convert/StepText.h"
#include "engines/pdfa/convert/contents/EditedContents.h"
#include "engines/pdfa/convert/tags/Tags.h"
#include "support/TestPackets.h"

namespace TarnixTools::engines::pdfa {
namespace {

using testing::IsAsExpected;
using testing::RawPdf;

class TagTextsTest : public StepTextTest {
 protected:
  std::string TagText(const RawPdf& file, const std::vector<Level>& levels) {
    return Text(file, levels, [](Conversion& conversion) {
      MendTags(conversion);
      WriteEditedContents(conversion);
    });
  }
};

std::string Line(int x, int y, int size, const std::string& text) {
  return "BT /F " + std::to_string(size) + " Tf " + std::to_string(x) + " " + std::to_string(y) +
         " Td (" + text + ") Tj ET\n";
}

std::string RuledTable() {
  std::string content;
  for (int i = 0; i <= 3; ++i) {
    content += "50 " + std::to_string(300 + 20 * i) + " m 350 " + std::to_string(300 + 20 * i) +
               " l S 50 " + "300 m 50 360 l S ";
    content +=
        std::to_string(50 + 100 * i) + " 300 m " + std::to_string(50 + 100 * i) + " 360 l S ";
  }
  const char* const cells[] = {"Name", "Size", "Color", "Box", "12", "red", "Jar", "7", "blue"};
  for (int i = 0; i < 9; ++i) {
    content += Line(55 + 100 * (i % 3), 345 - 20 * (i / 3), 10, cells[i]);
  }
  return content;
}

// Two pages with headings, paragraphs, lists in lists, columns, a ruled table, figures, labels in
// figures, decoration, forms, links, notes and marks of an older structure.
RawPdf Pages() {
  RawPdf file;
  file.Object(1, "<</Type/Catalog/Pages 2 0 R>>");
  file.Object(2, "<</Type/Pages/Kids[3 0 R 4 0 R 3 0 R 8 0 R]/Count 4>>");
  const std::string resources =
      "/Resources<</Font<</F 5 0 R>>/XObject<</I 6 0 R/Text 7 0 R/Long 9 0 R/Bare 13 0 R>>"
      "/Shading<</S 14 0 R>>>>";
  file.Object(3,
              "<</Type/Page/Parent 2 0 R/MediaBox[0 0 600 800]/Contents 10 0 R/Annots[20 0 R 21 0 "
              "R 22 0 R 23 0 R 24 0 R]/StructParents 9" +
                  resources + ">>");
  file.Object(4, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 600 800]/Rotate 90/Contents 11 0 R" +
                     resources + ">>");
  file.Object(5, "<</Type/Font/Subtype/Type1/BaseFont/Helvetica/Encoding/WinAnsiEncoding>>");
  file.Stream(6, "/Subtype/Image/Width 1/Height 1/ColorSpace/DeviceGray/BitsPerComponent 8", "x");
  file.Stream(7, "/Subtype/Form/BBox[0 0 100 20]/Resources<</Font<</F 5 0 R>>>>",
              "BT /F 10 Tf (short text) Tj ET");
  file.Object(8,
              "<</Type/Page/Parent 2 0 R/MediaBox[0 0 600 800]/Contents 12 0 R" + resources + ">>");
  file.Stream(9, "/Subtype/Form/BBox[0 0 500 100]/Resources<</Font<</F 5 0 R>>>>",
              "BT /F 10 Tf 12 TL 0 80 Td (" + std::string(80, 'a') + ") Tj (" +
                  std::string(80, 'b') + ")' (" + std::string(80, 'c') + ")' (" +
                  std::string(80, 'd') + ")' ET");
  std::string content =
      "q 0.9 g 0 780 600 20 re f Q\n" + Line(50, 740, 24, "The title of it all") +
      Line(50, 700, 16, "A first part") +
      "BT /F 10 Tf 12 TL 50 680 Td (Some words that are the beginning of it) Tj T* "
      "(and more of them on the next line here) Tj ET\n" +
      Line(50, 650, 10, "1. The first of the items") +
      Line(70, 636, 10, "a) A thing within the first") +
      Line(70, 622, 10, "b) Another thing within it") +
      Line(50, 608, 10, "2. The second of the items") + Line(50, 580, 16, "A second part") +
      Line(50, 560, 10, "\\225 A thing with a bullet") +
      Line(50, 546, 10, "\\225 Another thing with one") + "q 100 0 0 80 300 400 cm /I Do Q\n" +
      RuledTable() + "400 600 m 450 650 l 470 600 l 430 580 480 560 500 620 c b\n" +
      "/Artifact BMC 0 0 600 5 re f EMC /Span<</Lang(de)>>BDC " +
      Line(50, 250, 10, "Words in a language") + "EMC /P<</MCID 3>>BDC " +
      Line(50, 220, 10, "Words that had a mark") + "EMC /P<</MCID 4/ActualText(x)>>BDC " +
      Line(50, 190, 10, "Words that mean x") + "EMC EMC\n" +
      "q 1 0 0 1 50 150 cm /Text Do Q q 1 0 0 1 50 30 cm /Long Do Q /Bare Do";
  file.Stream(10, "", content);
  content = "BT /F 10 Tf ";
  for (int line = 0; line < 8; ++line) {
    const std::string y = std::to_string(500 - 12 * line);
    content += "1 0 0 1 50 " + y + " Tm (words of the left column that go) Tj ";
    content += "1 0 0 1 320 " + y + " Tm (words of the right column that) Tj\n";
  }
  content +=
      "ET BT /F 10 Tf 50 300 Td [(one cell)-9000(another)-9000(a third one)]TJ 0 -14 Td [(red)"
      "-11000(green)-10000(blue)]TJ ET BI/W 1/H 1/CS/G/BPC 8 ID x EI /S sh";
  file.Stream(11, "", content);
  file.Stream(12, "", "0 0 9 9 re f q 40 0 0 40 100 100 cm BI/W 1/H 1/CS/G/BPC 8 ID x EI Q");
  file.Stream(13, "/Subtype/Form/BBox[0 0 9 9]", "0 0 m");
  file.Object(14,
              "<</ShadingType 2/ColorSpace/DeviceRGB/Coords[0 0 1 1]/Function<</FunctionType 2"
              "/Domain[0 1]/N 1>>>>");
  file.Object(20, "<</Type/Annot/Subtype/Link/Rect[50 676 120 690]/StructParent 7>>");
  file.Object(21, "<</Type/Annot/Subtype/Widget/Rect[400 700 500 720]>>");
  file.Object(22, "<</Type/Annot/Subtype/Popup/Rect[400 700 500 720]>>");
  file.Object(23, "<</Type/Annot/Subtype/Text/Rect[500 100 520 120]>>");
  file.Object(24, "<</Type/Annot/Subtype/Link/Rect[300 400 400 480]>>");
  return file;
}

TEST_F(TagTextsTest, AreMadeOfPages) {
  EXPECT_TRUE(IsAsExpected("pdfa/convert/tags-1a.txt", TagText(Pages(), {Level::k1a})));
  EXPECT_TRUE(IsAsExpected("pdfa/convert/tags-2a.txt", TagText(Pages(), {Level::k2a})));
}

// The structure of a document whose elements are those of its annotations, which are objects from 10
// on: elements in groups, leaves of the parent tree, each with its first and last item.
std::string GroupsText(OpenedConversion& opened, int count) {
  pdf::DocumentRewriter& rewriter = opened.conversion().rewriter;
  pdf::Arena arena;
  const auto load = [&](const pdf::Object& reference) {
    return rewriter.Load(reference.AsReference().number, arena);
  };
  const auto ends = [](const pdf::Object& list) {
    std::string text;
    for (const pdf::Object& item : {list.Items().front(), list.Items().back()}) {
      pdf::AppendObject(text, item);
      text += " ";
    }
    return text + "of " + std::to_string(list.Items().size()) + "\n";
  };
  const pdf::Object root = load(rewriter.Load(rewriter.catalog(), arena).Get("StructTreeRoot"));
  std::string text;
  pdf::AppendObject(text, root);
  const pdf::Object elements = load(root.Get("K")).Get("K");
  text += "\nelements " + ends(elements);
  for (const pdf::Object& element : {elements.Items().front(), elements.Items().back()}) {
    const pdf::Object group = load(element);
    text += std::string(group.Get("S").Text()) + " in " +
            std::to_string(group.Get("P").AsReference().number) + ": ";
    text += group.Get("K").IsArray() ? ends(group.Get("K")) : "an annotation\n";
  }
  const pdf::Object leaves = load(root.Get("ParentTree")).Get("Kids");
  for (const pdf::Object& leaf : leaves.Items()) {
    pdf::AppendObject(text, load(leaf).Get("Limits"));
    text += " " + ends(load(leaf).Get("Nums"));
  }
  for (const int number : {10, 9 + count}) {
    text += opened.ChangedText(static_cast<std::uint32_t>(number)) + "\n";
  }
  return text;
}

std::string Item(int x, int y, const std::string& label, const std::string& text) {
  return "BT /F 10 Tf " + std::to_string(x) + " " + std::to_string(y) + " Td (" + label +
         ") Tj 20 0 Td (" + text + ") Tj ET\n";
}

// Lists of all kinds, some in the items of others, and two tables in which cells go over others.
TEST_F(TagTextsTest, AreMadeOfLists) {
  std::string content = Line(50, 760, 10, "Some words that come before the list of all things");
  int y = 740;
  for (const auto& [first, second] :
       {std::pair("1.", "2."), std::pair("a)", "b)"), std::pair("A.", "B."), std::pair("i)", "ii)"),
        std::pair("I.", "II."), std::pair("\\225", "\\225")}) {
    content += Item(50, y, first, "The first of the items") +
               Item(90, y - 14, "\\225", "What is in the first item") +
               Item(90, y - 28, "\\225", "And what else is in it") +
               Item(50, y - 42, second, "The second of the items") +
               Line(50, y - 70, 10, "Words between the lists that are here");
    y -= 95;
  }
  content +=
      "50 60 m 350 60 l S 50 80 m 350 80 l S 50 100 m 350 100 l S 50 60 m 50 100 l S "
      "350 60 m 350 100 l S 200 60 m 200 80 l S" +
      Line(55, 86, 10, "A head over two") + Line(55, 66, 10, "one") + Line(205, 66, 10, "two");
  RawPdf file = OnePage("/Contents 4 0 R/Resources<</Font<</F 5 0 R>>>>");
  file.Object(
      3,
      "<</Type/Page/Parent 2 0 R/MediaBox[0 0 600 800]/Contents 4 0 R/Resources<</Font<</F 5 0 "
      "R>>>>>>");
  file.Stream(4, "", content);
  file.Object(5, "<</Type/Font/Subtype/Type1/BaseFont/Helvetica/Encoding/WinAnsiEncoding>>");
  EXPECT_TRUE(IsAsExpected("pdfa/convert/tags-lists.txt", TagText(file, {Level::k2a})));
}

// Whether a structure has any content, by what its root consists of.
TEST_F(TagTextsTest, AreMadeWhereNothingBelongsToThem) {
  std::string text;
  for (const char* kids :
       {"", "/K[]", "/K<</S/P>>", "/K<</S/P/K 0>>", "/K<</S/P/K[0]>>", "/K<</S/P/K[<</S/P>>[1]]>>",
        "/K[<</S/P>><</S/P/K[<</Type/MCR/MCID 2>>]>>]", "/K<</S/P/K<</Type/OBJR/Obj 3 0 R>>>>",
        "/K<</S/P/MCID 0>>", "/K<</S/P/Obj 3 0 R>>", "/K<</S/P/K<</S/P/K<</S/P/K 7>>>>>>",
        "/K<</S/P/K 4 0 R>>", "/K<</S/P/K(x)>>", "/K 1"}) {
    RawPdf file = OnePage("", std::string("/StructTreeRoot<<") + kids + ">>");
    file.Object(4, "[1]");
    OpenedConversion opened(file, Level::k2a);
    MendTags(opened.conversion());
    text += std::string(kids) + "\n" + opened.Report();
  }
  EXPECT_TRUE(IsAsExpected("pdfa/convert/tags-made.txt", text));
}

// Forms in forms, drawn once more, that show text, paths, images and shadings; one with more text than
// a paragraph has is one block, and so is a table that such a form draws.
TEST_F(TagTextsTest, AreMadeOfForms) {
  RawPdf file;
  file.Object(1, "<</Type/Catalog/Pages 2 0 R>>");
  file.Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1/Resources 5 0 R>>");
  file.Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 600 800]/Contents 4 0 R>>");
  std::string content = Line(50, 760, 10, "Words that the page shows itself");
  int y = 700;
  for (const char* name : {"Text", "TextIn", "Text", "TextIn", "Path", "PathIn", "Image", "ImageIn",
                           "Shading", "ShadingIn", "Nothing", "NothingIn", "Most", "More"}) {
    content += "q 1 0 0 1 50 " + std::to_string(y) + " cm /" + name + " Do Q\n";
    y -= 30;
  }
  file.Stream(4, "", content + "q 1 0 0 1 0 -200 cm /Table Do Q\n");
  std::string names;
  const auto form = [&](int number, const std::string& name, const std::string& drawn) {
    names += "/" + name + " " + std::to_string(number) + " 0 R";
    file.Stream(number, "/Subtype/Form/BBox[0 0 500 500]/Resources 5 0 R", drawn);
  };
  form(10, "Text", "BT /F 10 Tf (some text) Tj ET");
  form(11, "TextIn", "/Text Do");
  form(12, "Path", "0 0 m 20 10 l 5 9 l b");
  form(13, "PathIn", "/Path Do");
  form(14, "Image", "10 0 0 10 0 0 cm /I Do");
  form(15, "ImageIn", "/Image Do /Nothing Do");
  form(16, "Shading", "0 0 10 10 re W n /S sh");
  form(17, "ShadingIn", "/Shading Do");
  form(18, "Nothing", "0 0 m 5 5 l n BT ET");
  form(19, "NothingIn", "/Nothing Do");
  form(20, "Most",
       "BT /F 1 Tf (" + std::string(150, 'a') + ") Tj (" + std::string(150, 'b') + ") Tj ET");
  form(21, "More", "BT /F 1 Tf (" + std::string(301, 'c') + ") Tj ET");
  form(22, "Table", RuledTable() + "BT /F 1 Tf 60 307 Td (" + std::string(300, 'd') + ") Tj ET");
  file.Object(5, "<</Font<</F 6 0 R>>/XObject<</I 7 0 R" + names + ">>/Shading<</S 8 0 R>>>>");
  file.Object(6, "<</Type/Font/Subtype/Type1/BaseFont/Helvetica/Encoding/WinAnsiEncoding>>");
  file.Stream(7, "/Subtype/Image/Width 1/Height 1/ColorSpace/DeviceGray/BitsPerComponent 8", "x");
  file.Object(8,
              "<</ShadingType 2/ColorSpace/DeviceRGB/Coords[0 0 1 1]/Function<</FunctionType 2"
              "/Domain[0 1]/N 1>>>>");
  EXPECT_TRUE(IsAsExpected("pdfa/convert/tags-forms.txt", TagText(file, {Level::k2a})));
}

// Blanks and text that nobody sees are of the block before them, and of one of their own where there is
// none on the page.
TEST_F(TagTextsTest, AreMadeOfBlanks) {
  RawPdf file;
  file.Object(1, "<</Type/Catalog/Pages 2 0 R>>");
  file.Object(2, "<</Type/Pages/Kids[3 0 R 4 0 R]/Count 2/Resources<</Font<</F 5 0 R>>>>>>");
  file.Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 600 800]/Contents 6 0 R>>");
  file.Object(4, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 600 800]/Contents 7 0 R>>");
  file.Object(5, "<</Type/Font/Subtype/Type1/BaseFont/Helvetica/Encoding/WinAnsiEncoding>>");
  const std::string blank = "BT /F 10 Tf 300 20 Td ( ) Tj ET\n";
  file.Stream(6, "",
              blank + Line(50, 700, 10, "Words of a paragraph") + blank + Line(50, 500, 10, "") +
                  "BT /F 10 Tf 3 Tr 50 400 Td (not seen) Tj ET 0 0 9 9 re f " + blank +
                  Line(50, 300, 10, "Words of another paragraph") + "BT /F 10 Tf [( )( )]TJ ET");
  file.Stream(7, "", blank + "0 0 9 9 re f " + blank);
  EXPECT_TRUE(IsAsExpected("pdfa/convert/tags-blanks.txt", TagText(file, {Level::k2a})));
}

// Text over pictures, pictures and drawings behind text, and pictures beside it.
TEST_F(TagTextsTest, AreMadeOfPicturesAndWhatIsOverThem) {
  RawPdf file = OnePage("");
  file.Object(
      3,
      "<</Type/Page/Parent 2 0 R/MediaBox[0 0 600 800]/Contents 4 0 R/Resources<</Font<</F 5 "
      "0 R>>/XObject<</I 6 0 R>>>>>>");
  const auto image = [](const std::string& matrix) { return "q " + matrix + " cm /I Do Q\n"; };
  std::string content = image("500 0 0 120 50 660");
  for (int i = 0; i < 6; ++i) {
    content += Line(60, 760 - 14 * i, 10,
                    "Words of a paragraph that stands over a picture and is as wide as that");
  }
  content += image("200 0 0 150 60 480") + Line(100, 560, 10, "A label") +
             Line(100, 520, 10, "Another label");
  for (int i = 0; i < 6; ++i) {
    content += Line(60, 450 - 14 * i, 10,
                    "Words of a paragraph that stands below the picture and is wider than it");
  }
  content += "0.9 g 50 250 500 90 re f 0 g\n";
  for (int i = 0; i < 5; ++i) {
    content += Line(60, 320 - 14 * i, 10,
                    "Words of a paragraph on a ground that is gray and as wide as the page");
  }
  content += "60 100 m 200 220 l 120 90 l 260 210 l h S " + Line(140, 150, 10, "Drawn") +
             image("100 0 0 100 400 100");
  file.Stream(4, "", content);
  file.Object(5, "<</Type/Font/Subtype/Type1/BaseFont/Helvetica/Encoding/WinAnsiEncoding>>");
  file.Stream(6, "/Subtype/Image/Width 1/Height 1/ColorSpace/DeviceGray/BitsPerComponent 8", "x");
  EXPECT_TRUE(IsAsExpected("pdfa/convert/tags-pictures.txt", TagText(file, {Level::k2a})));
}

// Annotations beyond a thousand are in groups of a thousand, as are the pairs of the parent tree.
TEST_F(TagTextsTest, AreInGroupsWhereThereAreMany) {
  std::string text;
  for (const int count : {1000, 1001, 2001}) {
    std::string annotations;
    for (int i = 0; i < count; ++i) {
      annotations += std::to_string(10 + i) + " 0 R ";
    }
    RawPdf file = OnePage("/Annots[" + annotations + "]");
    for (int i = 0; i < count; ++i) {
      file.Object(10 + i, "<</Subtype/Stamp/Rect[0 0 9 9]>>");
    }
    OpenedConversion opened(file, Level::k2a);
    MendTags(opened.conversion());
    text += "== " + std::to_string(count) + "\n" + GroupsText(opened, count);
  }
  EXPECT_TRUE(IsAsExpected("pdfa/convert/tags-groups.txt", text));
}

// Languages of the document and of its packet, of which one is taken.
TEST_F(TagTextsTest, HaveALanguage) {
  std::string text;
  for (const char* language : {"", "()", "(de)", "(de-1901)", "(de_DE)", "/de"}) {
    for (const char* of_packet :
         {"", "<dc:language>fr</dc:language>",
          "<dc:language><rdf:Bag><rdf:li>en-US</rdf:li></rdf:Bag></dc:language>",
          "<dc:language><rdf:Bag/></dc:language>", "<dc:language>f_r</dc:language>"}) {
      RawPdf file =
          OnePage("", "/Metadata 4 0 R" +
                          (*language != '\0' ? std::string("/Lang") + language : std::string()));
      file.Stream(4, "/Type/Metadata/Subtype/XML",
                  testing::TestPacket(std::string("<rdf:Description rdf:about='' "
                                                  "xmlns:dc='http://purl.org/dc/elements/1.1/'>") +
                                      of_packet + "</rdf:Description>"));
      for (const Level level : {Level::k1a, Level::k2a}) {
        OpenedConversion opened(file, level);
        MendTags(opened.conversion());
        const pdf::Object catalog = opened.Changed(opened.conversion().rewriter.catalog());
        text += std::string(NameOf(level) + 6) + " " + language + " " + of_packet + ": " +
                std::string(catalog.Get("Lang").Text()) + "\n";
      }
    }
  }
  EXPECT_TRUE(IsAsExpected("pdfa/convert/languages.txt", text));
}

TEST_F(TagTextsTest, AreMendedWhereTheyAre) {
  RawPdf file = OnePage("/Contents 4 0 R/StructParents 0",
                        "/StructTreeRoot 5 0 R/Lang(de_DE)/Metadata 10 0 R");
  file.Stream(4, "", "/P<</MCID 0>>BDC 0 0 9 9 re f EMC");
  file.Object(
      5, "<</Type/StructTreeRoot/K[6 0 R]/RoleMap<</Own/P/Lost/Odd/THead/Odd/A/B/B/A/H1/Big>>>>");
  file.Object(6, "<</S/Own/K[7 0 R 8 0 R 9 0 R<</S/Big/K 0>>]>>");
  file.Object(7, "<</S/Lost/K[0 <</S/A>>]>>");
  file.Object(8, "<</S/THead/K<</S/H1/K<</Type/MCR/MCID 0>>>>>>");
  file.Object(9, "<</S/Sp#C3#A4t/K[]>>");
  file.Stream(
      10, "/Type/Metadata/Subtype/XML",
      testing::TestPacket("<rdf:Description rdf:about='' "
                          "xmlns:dc='http://purl.org/dc/elements/1.1/'><dc:language><rdf:Bag>"
                          "<rdf:li>fr-FR</rdf:li><rdf:li>de</rdf:li></rdf:Bag></dc:language>"
                          "</rdf:Description>"));
  EXPECT_TRUE(
      IsAsExpected("pdfa/convert/tags-mended.txt", TagText(file, {Level::k1a, Level::k3a})));
  RawPdf empty = OnePage("/StructParents 3/Annots[5 0 R]",
                         "/StructTreeRoot<</K<</S/Document/K[]>>>>/Lang(de-1901)/Outlines 6 0 R");
  empty.Object(5, "<</Type/Annot/Subtype/TrapNet/Rect[0 0 9 9]/StructParent 2>>");
  empty.Object(6, "<</First 7 0 R>>").Object(7, "<</Title(a)/SE 8 0 R>>").Object(8, "<</SE 1>>");
  EXPECT_TRUE(
      IsAsExpected("pdfa/convert/tags-empty.txt", TagText(empty, {Level::k1a, Level::k3a})));
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
