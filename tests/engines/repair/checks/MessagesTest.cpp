// What is said of each kind of damage, word by word: where, what, and what becomes of it. Below it
// what readers do not mind. And what is written of such a document.
#include "engines/repair/CheckTest.h"
#include "pdf/filters/Filters.h"
#include "pdf/write/DocumentText.h"
#include "support/Expected.h"
#include "support/TestImages.h"

namespace TarnixTools::engines::repair {
namespace {

using testing::RawPdf;

struct Row {
  std::string bytes;
  const char* messages;
};

class MessagesTest : public CheckTest {
 protected:
  // name: of the text of what is written of all rows.
  void ExpectRows(const std::string& name, const std::vector<Row>& rows) {
    std::string written;
    for (std::size_t i = 0; i < rows.size(); ++i) {
      testing::WriteBytes(Path("in.pdf"), rows[i].bytes);
      RepairedDocument document(platform::WidePath(Path("in.pdf")), "");
      document.Analyze(kAnalyzeAll);
      std::string messages;
      for (const Problem& problem : document.problems().damage()) {
        messages += MessageOf(problem, Tense::kDone) + "\n";
      }
      for (const Problem& problem : document.problems().lint()) {
        messages += "- " + MessageOf(problem, Tense::kDone) + "\n";
      }
      EXPECT_EQ(messages, rows[i].messages) << "of the row " << i;
      document.Save(platform::WidePath(Path("out.pdf")), {.is_repaired = true, .is_rebuilt = true});
      written += "row " + std::to_string(i) + "\n" + testing::DocumentText(Output()) + "\n";
    }
    EXPECT_TRUE(testing::IsAsExpected("repair/" + name + ".txt", written));
  }

  static std::string Deflated(const std::string& data) {
    std::string deflated;
    pdf::DeflateTo(deflated, data, 6);
    return deflated;
  }
};

// The second of two pages as given.
std::string SecondPage(const std::string& page,
                       const std::string& tree = "/Kids[3 0 R 4 0 R]/Count 2",
                       const std::string& catalog = "/Type/Catalog") {
  return RawPdf()
      .Object(1, "<<" + catalog + "/Pages 2 0 R>>")
      .Object(2, "<</Type/Pages" + tree + ">>")
      .Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 300 200]>>")
      .Object(4, page)
      .Table();
}

TEST_F(MessagesTest, OfPages) {
  ExpectRows(
      "pages",
      {
          {SecondPage("<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/Rotate 270/CropBox[1 1 5 5]>>"),
           ""},
          {SecondPage("<</Parent 2 0 R/MediaBox[0 0 9 9]>>"),
           "Page 2: object 4: a page or a part of the page tree does not say what it is; fixed\n"},
          {SecondPage("<</Type/Page/Parent 3 0 R/MediaBox[0 0 9 9]>>"),
           "Page 2: object 4: the page does not refer to the part of the page tree that has it; "
           "fixed\n"},
          {SecondPage("<</Type/Page/Parent 2 0 R>>"),
           "Page 2: object 4: the page has no size (MediaBox); fixed\n"},
          {SecondPage("<</Type/Page/Parent 2 0 R/MediaBox 7/CropBox 8>>"),
           "- Page 2: object 4: the size of the page cannot be used (MediaBox); fixed\n"
           "- Page 2: object 4: the size of the page cannot be used (CropBox); fixed\n"},
          {SecondPage("<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/Rotate 91>>"),
           "Page 2: object 4: the rotation of the page is no multiple of 90 degrees; fixed\n"},
          {SecondPage("<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]/Rotate/Up>>"),
           "Page 2: object 4: the rotation of the page is no multiple of 90 degrees; fixed\n"},
          {SecondPage("<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]>>",
                      "/Kids[3 0 R 4 0 R]/Count 7"),
           "The page tree gives the wrong number of pages; fixed\n"},
          {SecondPage("<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]>>",
                      "/Kids[3 0 R 2 0 R 4 0 R]/Count 2"),
           "Object 2: a part of the page tree leads back to itself or stands twice; worked "
           "around\n"},
          {SecondPage("(no page)"),
           "Objects had to be looked for in the whole file; worked around\n"
           "Page 2: the page cannot be read; an empty one stands for it; lost\n"
           "The page tree gives the wrong number of pages; fixed\n"},
          {SecondPage("<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]>>", "/Kids[3 0 R 4 0 R]/Count 2",
                      ""),
           "An entry of the document catalog cannot be used (Type); fixed\n"},
          {SecondPage("null", "/Kids[3 0 R<</Type/Page/Rotate 4/CropBox 5>>]/Count 2"),
           "Page 2: the page does not refer to the part of the page tree that has it; fixed\n"
           "Page 2: the page has no size (MediaBox); fixed\n"
           "Page 2: the rotation of the page is no multiple of 90 degrees; fixed\n"
           "- Page 2: the size of the page cannot be used (CropBox); fixed\n"},
      });
}

TEST_F(MessagesTest, OfTrees) {
  const auto page = [](const std::string& catalog) { return OnePage("", catalog); };
  ExpectRows(
      "trees",
      {
          {page(
               "/Names 1/Dests 1/Outlines 1/PageLabels 1/AcroForm 1/StructTreeRoot 1/OCProperties 1"
               "/Metadata 1/MarkInfo 1/ViewerPreferences 1/Perms 1/Extensions 1")
               .Table(),
           "An entry of the document catalog cannot be used (Names); lost\n"
           "An entry of the document catalog cannot be used (Dests); lost\n"
           "An entry of the document catalog cannot be used (Outlines); lost\n"
           "An entry of the document catalog cannot be used (PageLabels); lost\n"
           "An entry of the document catalog cannot be used (AcroForm); lost\n"
           "An entry of the document catalog cannot be used (StructTreeRoot); lost\n"
           "An entry of the document catalog cannot be used (OCProperties); lost\n"
           "An entry of the document catalog cannot be used (Metadata); lost\n"
           "An entry of the document catalog cannot be used (MarkInfo); lost\n"
           "An entry of the document catalog cannot be used (ViewerPreferences); lost\n"
           "An entry of the document catalog cannot be used (Perms); lost\n"
           "An entry of the document catalog cannot be used (Extensions); lost\n"
           "A part of a number tree cannot be used (PageLabels); lost\n"},
          {page("/Names<</Dests 10 0 R/AP 10 0 R/JavaScript 10 0 R/Pages 10 0 R/Templates 10 0 R"
                "/IDS 10 0 R/URLS 10 0 R/EmbeddedFiles 10 0 R/Renditions 10 0 R/Own 10 0 R>>"
                "/PageLabels 11 0 R/StructTreeRoot 12 0 R")
               .Object(10, "<</Kids[(no node)]>>")
               .Object(11, "<</Nums[0<<>>]/Kids[(no node)]>>")
               .Object(12, "<</ParentTree<</Nums[]/Kids[(no node)]>>>>")
               .Table(),
           "Object 10: a part of a name tree cannot be used (Dests); lost\n"
           "Object 10: a part of a name tree cannot be used (AP); lost\n"
           "Object 10: a part of a name tree cannot be used (JavaScript); lost\n"
           "Object 10: a part of a name tree cannot be used (Pages); lost\n"
           "Object 10: a part of a name tree cannot be used (Templates); lost\n"
           "Object 10: a part of a name tree cannot be used (IDS); lost\n"
           "Object 10: a part of a name tree cannot be used (URLS); lost\n"
           "Object 10: a part of a name tree cannot be used (EmbeddedFiles); lost\n"
           "Object 10: a part of a name tree cannot be used (Renditions); lost\n"
           "Object 11: a part of a number tree cannot be used (PageLabels); lost\n"
           "A part of a number tree cannot be used (ParentTree); lost\n"},
          {page("/Names<</Dests<</Kids[10 0 R 10 0 R]>>>>")
               .Object(10, "<</Limits[(a)(a)]/Names[(a)[3 0 R/Fit](b)]>>")
               .Table(),
           "A part of a name tree cannot be used (Dests); fixed\n"},
          {page("/Outlines 10 0 R")
               .Object(10, "<</First 11 0 R/Last 13 0 R/Count 3>>")
               .Object(11, "<</Title(a)/Parent 10 0 R/Next 12 0 R/First 14 0 R/Last 14 0 R>>")
               .Object(12, "<</Title(b)/Parent 10 0 R/Next 11 0 R>>")
               .Object(14, "<</Title(c)/Parent 11 0 R/Next 15 0 R>>")
               .Table(),
           "Object 12: items of the outline lead back to each other (Next); fixed\n"
           "Object 14: an item of the outline cannot be used (Next); lost\n"},
          {page("/Outlines<</First 11 0 R/Last 11 0 R/Count 1>>")
               .Object(11, "<</Title(a)/First 11 0 R>>")
               .Table(),
           "Object 11: items of the outline lead back to each other (First); fixed\n"},
          {page("/Outlines 10 0 R").Object(10, "<</First 11 0 R/Last 11 0 R/Count 1>>").Table(),
           "Object 10: an item of the outline cannot be used (First); lost\n"},
          {page("/StructTreeRoot 10 0 R")
               .Object(10, "<</Type/StructTreeRoot/K[11 0 R 12 0 R 13 0 R]>>")
               .Object(11, "<</S/P/K[0<</Type/MCR/MCID 1>>11 0 R(none)]>>")
               .Object(12, "<</S/P/K(none)>>")
               .Object(13, "<</S/P/K 14 0 R>>")
               .Object(14, "[15 0 R 16 0 R]")
               .Object(15, "<</S/P/K 14 0 R>>")
               .Object(16, "<</S/P/K 10 0 R>>")
               .Table(),
           "Object 12: a part of the structure tree cannot be used; lost\n"
           "Object 11: a part of the structure tree cannot be used; lost\n"
           "- Object 15: a part of the structure tree leads back to itself or stands twice; fixed\n"
           "- Object 11: a part of the structure tree leads back to itself or stands twice; "
           "fixed\n"},
      });
}

TEST_F(MessagesTest, OfFieldsAndAnnotations) {
  ExpectRows("fields",
             {
                 {OnePage("", "/AcroForm<</Fields[10 0 R(none)]>>")
                      .Object(10, "<</T(a)/FT/Tx/Kids[11 0 R 12 0 R 10 0 R 13 0 R]>>")
                      .Object(11, "<</T(b)/Kids 14 0 R>>")
                      .Object(12, "(none)")
                      .Object(14, "[15 0 R]")
                      .Object(15, "<</T(c)/Kids 14 0 R>>")
                      .Table(),
                  "The form field is damaged; lost\n"
                  "Object 12: the form field is damaged; lost\n"
                  "Object 10: form fields lead back to each other; fixed\n"
                  "Object 15: form fields lead back to each other; fixed\n"},
                 {OnePage("", "/AcroForm 10 0 R").Object(10, "<</Fields(none)>>").Table(),
                  "Object 10: the list of form fields cannot be used (Fields); worked around\n"},
                 {OnePage("", "/AcroForm<</Fields(none)>>").Table(),
                  "The list of form fields cannot be used (Fields); worked around\n"},
                 {OnePage("/Annots[10 0 R 11 0 R 12 0 R null 13 0 R 14 0 R(none)99 0 R]")
                      .Object(10, "<</Subtype/Text/Rect[0 0 9 9]>>")
                      .Object(11, "<</Subtype/Text/Rect[0 0 9]>>")
                      .Object(12, "(none)")
                      .Object(13, "<</Subtype(Text)/Rect[0 0 9 9]>>")
                      .Object(14, "<</Subtype/Text/Rect 15 0 R>>")
                      .Object(15, "[0 0 9 9]")
                      .Table(),
                  "Page 1: object 11: an annotation of the page cannot be used; lost\n"
                  "Page 1: object 12: an annotation of the page cannot be used; lost\n"
                  "Page 1: object 13: an annotation of the page cannot be used; lost\n"
                  "Page 1: object 3: an annotation of the page cannot be used; lost\n"},
                 {OnePage("/Annots(none)").Table(),
                  "Page 1: object 3: an annotation of the page cannot be used (Annots); lost\n"},
                 {OnePage("/Annots 10 0 R").Object(10, "<<>>").Table(),
                  "Page 1: object 3: an annotation of the page cannot be used (Annots); lost\n"},
             });
}

TEST_F(MessagesTest, OfContent) {
  const auto with = [](const std::string& content, const std::string& resources = "") {
    return OnePage("/Contents 10 0 R/Resources<<" + resources + ">>")
        .Stream(10, "", content)
        .Table();
  };
  RawPdf forms = OnePage("/Contents 10 0 R/Resources<</XObject<</F 11 0 R>>>>");
  forms.Stream(10, "", "/F Do /F Do")
      .Stream(11, "/Subtype/Form/BBox[0 0 9 9]/Resources<</XObject<</F 11 0 R>>>>",
              "odd 9 re /F Do");
  ExpectRows(
      "content",
      {
          {with("odd 0 0 9 9 re even f"),
           "Page 1: object 3: the content has an operator that does not exist (2 times); fixed\n"},
          {with("9 9 re 1 w 1 rg f"),
           "Page 1: object 3: an operator of the content lacks what it works on (2 times); "
           "fixed\n"},
          {with("0 0 9 9 re f (text"),
           "Page 1: object 3: the content ends early; worked around\n"
           "- Page 1: object 3: what the content opens and what it closes do not match (1 times); "
           "fixed\n"},
          {with("0 0 9 9 re f [1 2"),
           "Page 1: object 3: the content ends early; worked around\n"
           "- Page 1: object 3: what the content opens and what it closes do not match (1 times); "
           "fixed\n"},
          {with("0 0 9 9 re f > 1 0 0 rg"),
           "Page 1: object 3: the content is damaged; worked around\n"},
          {with("q q 0 0 9 9 re f"),
           "- Page 1: object 3: what the content opens and what it closes do not match (1 times); "
           "fixed\n"},
          {with("0 0 9 9 re f Q"),
           "- Page 1: object 3: what the content opens and what it closes do not match (1 times); "
           "fixed\n"},
          {with("/P BMC /P BMC 0 0 9 9 re f EMC EMC EMC"),
           "- Page 1: object 3: what the content opens and what it closes do not match (1 times); "
           "fixed\n"},
          {with("BT BT ET ET ET"),
           "- Page 1: object 3: what the content opens and what it closes do not match (3 times); "
           "fixed\n"},
          {with("0 0 9 9 re f 1 2"),
           "- Page 1: object 3: what the content opens and what it closes do not match (1 times); "
           "fixed\n"},
          {with("/F Do /F Do /G Do", "/XObject<</G 11 0 R>>"),
           "Page 1: object 3: the content uses a resource that is not named (1 XObject); lost\n"
           "Page 1: object 3: a resource that the content uses is not there (1 XObject); lost\n"},
          {OnePage("/Contents 10 0 R").Stream(10, "", "/G Do").Table(),
           "Page 1: object 3: the page has no resources; lost\n"},
          {with("/G gs /H gs /F 9 Tf /C cs /S sh /P scn"),
           "Page 1: object 3: the content uses a resource that is not named (1 ColorSpace); lost\n"
           "Page 1: object 3: the content uses a resource that is not named (1 Font); lost\n"
           "Page 1: object 3: the content uses a resource that is not named (1 Pattern); lost\n"
           "Page 1: object 3: the content uses a resource that is not named (1 Shading); lost\n"
           "- Page 1: object 3: the content sets a graphics state that is not named (2 times); "
           "worked "
           "around\n"},
          {forms.Table(),
           "Page 1: object 11: the content has an operator that does not exist (1 times); fixed\n"
           "Page 1: object 11: an operator of the content lacks what it works on (1 times); fixed\n"
           "Page 1: object 11: the content is nested too deep; worked around\n"},
          {OnePage("/Contents[10 0 R 11 0 R 12 0 R]")
               .Stream(10, "", "q")
               .Object(11, "(no stream)")
               .Stream(12, "", "Q")
               .Table(),
           "Page 1: object 3: a part of the content is missing; lost\n"},
      });
}

TEST_F(MessagesTest, OfStreams) {
  const auto with = [](const std::string& entries, const std::string& data) {
    return RawPdf().Pages(1).Stream(4, entries, data).Table("/Root 1 0 R/Own 4 0 R");
  };
  std::string wrapped = Deflated("sound");
  wrapped.back() = static_cast<char>(wrapped.back() ^ 1);
  ExpectRows(
      "streams",
      {
          {with("/Filter[/ASCIIHexDecode/FlateDecode]", "00>"),
           "Object 4: the data of the stream is damaged (3 bytes, of which 0 can be had); lost\n"},
          {with("/Filter/FlateDecode", wrapped),
           "Object 4: what wraps the data of the stream is missing or wrong; fixed\n"},
          {with("/Filter/MyOwnDecode", "data"),
           "- Object 4: the data of the stream is coded in an unknown way; worked around\n"},
          {with("/Filter[/ASCIIHexDecode/MyOwnDecode]", "4"),
           "Object 4: the data of the stream is damaged (1 bytes, of which 1 can be had); lost\n"
           "- Object 4: the data of the stream is coded in an unknown way; worked around\n"},
          {with("/Filter/FlateDecode/F(elsewhere)", "data"), ""},
          {with("/Filter/FlateDecode/F<</UF(elsewhere)>>", "data"), ""},
          {with("/Filter[/Crypt/FlateDecode]", Deflated("sound")), ""},
          {with("/Type/ObjStm/N 1/First 4/Filter/FlateDecode", "data"), ""},
          {with("/Type/XRef/Filter/FlateDecode", "data"), ""},
      });
}

TEST_F(MessagesTest, OfFontsAndImages) {
  const auto font = [](const std::string& entries, const std::string& descriptor = "",
                       const std::string& program = "") {
    return OnePage("/Resources<</Font<</F 10 0 R>>>>")
        .Object(10, "<</Type/Font" + entries + ">>")
        .Object(11, "<</Type/FontDescriptor" + descriptor + ">>")
        .Stream(12, "", program)
        .Table();
  };
  const auto image = [](const std::string& entries, const std::string& data) {
    return OnePage("/Resources<</XObject<</I 10 0 R>>>>")
        .Stream(10, "/Subtype/Image" + entries, data)
        .Object(11, "(no stream)")
        .Table();
  };
  const std::string gray = "/Width 4/Height 2/BitsPerComponent 8/ColorSpace/DeviceGray";
  const std::string jpeg = "/Filter/DCTDecode/BitsPerComponent 8/ColorSpace/DeviceRGB";
  ExpectRows(
      "fonts_images",
      {
          {OnePage("/Resources 10 0 R").Object(10, "<</Font[1]/XObject 1/ProcSet[/PDF]>>").Table(),
           "Page 1: object 10: the resources cannot be used (Font); lost\n"
           "Page 1: object 10: the resources cannot be used (XObject); lost\n"},
          {OnePage("/Resources 10 0 R").Object(10, "(none)").Table(),
           "Page 1: object 3: the resources cannot be used; lost\n"},
          {font("/Subtype/Type1/BaseFont/Garamond"),
           "- Page 1: object 10: the font is not embedded; worked around\n"},
          {font("/Subtype/Odd"), "Page 1: object 10: the font cannot be used (Odd); lost\n"},
          {font("/Subtype/TrueType/Widths[500]/FontDescriptor 11 0 R", "/FontFile2 12 0 R", "junk"),
           "Page 1: object 10: the program of the font cannot be read; lost\n"},
          {font("/Subtype/TrueType/FontDescriptor 11 0 R", "/FontFile2 12 0 R", "junk"),
           "Page 1: object 10: the program of the font cannot be read; lost\n"
           "- Page 1: object 10: the font lacks widths; worked around\n"},
          {font("/Subtype/Type1/BaseFont/Helvetica/ToUnicode 12 0 R", "", "nothing of the kind"),
           "Page 1: object 10: a character map of the font cannot be read (ToUnicode); lost\n"},
          {font("/Subtype/Type0/Encoding 12 0 R/DescendantFonts[<</Subtype/CIDFontType2>>]", "",
                "nothing of the kind"),
           "Page 1: object 10: a character map of the font cannot be read (Encoding); lost\n"
           "- Page 1: object 10: the font is not embedded; worked around\n"},
          {image(gray + "/SMask 11 0 R/Mask(none)", "12345678"),
           "Page 1: object 10: the mask of the image cannot be used (SMask); lost\n"
           "Page 1: object 10: the mask of the image cannot be used (Mask); lost\n"},
          {image(gray, "1234567"),
           "Page 1: object 10: the image has less data than its size asks for (7 bytes of 8); "
           "worked "
           "around\n"},
          {image(jpeg + "/Width 1/Height 1", testing::TestJpeg(3)),
           "Page 1: object 10: the image's data has another size than the image says (16 x 8); "
           "fixed\n"},
          {image(jpeg + "/Width 1/Height 1", "no picture"),
           "Page 1: object 10: the data of the image is damaged; lost\n"},
          {image("/Filter/JPXDecode/Width 1/Height 1", "no picture"),
           "Page 1: object 10: the data of the image is damaged; lost\n"},
          {image("/Width 0/Height 2/ColorSpace/DeviceGray", "x"),
           "Page 1: object 10: the image cannot be used (Width, Height); lost\n"},
          {image("/Width 4/Height 2/BitsPerComponent 8/ColorSpace/Odd", std::string(24, 'x')),
           "Page 1: object 10: the colour space of the image cannot be used; worked around\n"},
          {image("/Width 4/Height 2/BitsPerComponent 8/ColorSpace/Odd", std::string(3, 'x')),
           "Page 1: object 10: the colour space of the image cannot be used; lost\n"},
      });
}

TEST_F(MessagesTest, OfFiles) {
  const auto raw = [] { return RawPdf().Pages(1); };
  const std::string sound = raw().Table();
  std::string cut = sound;
  cut.resize(cut.find("startxref"));
  ExpectRows(
      "files",
      {
          {With(sound, "%PDF-1.7", "%XYZ-1.7"), "The file header is missing; fixed\n"},
          {"junk\n" + sound, "Byte 5: other bytes stand before the file header; fixed\n"},
          {With(sound, "%PDF-1.7", "%PDF-1.x"),
           "Byte 0: the file header names no version; fixed\n"},
          {With(sound, "%PDF-1.7", "%PDF-3.0"),
           "Byte 0: the file header names no version; fixed\n"},
          {With(sound, "%%EOF", ""), "Byte 318: the end-of-file marker is missing; fixed\n"},
          {sound + "more", "- Byte 317: other bytes follow the end-of-file marker; fixed\n"},
          {sound + std::string(1100, ' '),
           "Byte 317: the end-of-file marker is far from the end; fixed\n"},
          {With(sound, "xref\n0 ", "xref\n1 "),
           "Byte 180: a part of the cross-reference cannot be read; fixed\n"},
          {cut,
           "Byte 303: the end-of-file marker is missing; fixed\n"
           "Nothing tells where the cross-reference starts; fixed\n"
           "Objects had to be looked for in the whole file; worked around\n"},
          {raw().Table("/Root 1 0 R", 5),
           "Objects had to be looked for in the whole file (3 not in their places); worked "
           "around\n"},
          {With(sound, "/Size ", "/Size 2/Was "),
           "The trailer gives the wrong number of objects (2 given, 4 there); fixed\n"},
          {With(sound, "/Size ", "/Was "),
           "The trailer gives the wrong number of objects (none given, 4 there); fixed\n"},
          {With(sound, "/Size ", "/Size 9"),
           "- The trailer gives more objects than there are (94 given, 4 there); fixed\n"},
          {With(sound, "0000000000 65535 f \n", "0000000000 65535 f\n"),
           "- Byte 180: an entry of the cross-reference has another form than it should; fixed\n"},
          {raw().Object(4, "(text)").Table("/Root 1 0 R/Info 4 0 R"),
           "An entry of the trailer cannot be used (Info); fixed\n"},
          {raw().Object(4, "<</Length 99>>\nstream\ndata\nendstream").Table(),
           "Object 4: the length of the stream is wrong (99 given, 4 there); fixed\n"},
          {raw().Object(4, "<<>>\nstream\ndata\nendstream").Table(),
           "Object 4: the length of the stream is wrong (none given); fixed\n"},
          {raw().Object(4, "<</Length 4>>\nstream\ndata").Table(),
           "Object 4: nothing ends the stream; fixed\n"},
          {raw().Object(4, "<</Length 4>>\nstream data\nendstream").Table(),
           "Object 4: the length of the stream is wrong (4 given, 5 there); fixed\n"
           "- Object 4: the line that starts the stream's data does not end as it should; fixed\n"},
          {raw().Mark(4).Raw("4 0 obj\n(text)\n").Table(),
           "Object 4: nothing ends the object; fixed\n"},
          {raw().Mark(4).Raw("5 0 obj\n(text)\nendobj\n").Table("/Root 1 0 R/Own 4 0 R"),
           "Objects had to be looked for in the whole file (1 not in their places); worked around\n"
           "Object 4: the object is missing; lost\n"},
          {raw().Object(4, "<</A (text)").Table("/Root 1 0 R/Own 4 0 R"),
           "Object 4: the object is damaged; lost\n"},
          {raw().Object(4, "<</A 1/A 2>>").Table(),
           "- Object 4: a dictionary of the object has a key twice; fixed\n"},
      });
}

}  // namespace
}  // namespace TarnixTools::engines::repair
