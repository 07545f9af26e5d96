// What is drawn for annotations that have no appearance, operator by operator.
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engines/pdfa/convert/OpenedConversion.h"
#include "engines/pdfa/convert/annotations/AppearanceFonts.h"
#include "engines/pdfa/convert/annotations/ButtonAppearance.h"
#include "engines/pdfa/convert/annotations/DrawnAppearance.h"
#include "engines/pdfa/convert/annotations/FieldBox.h"
#include "engines/pdfa/convert/annotations/FieldEntries.h"
#include "engines/pdfa/convert/annotations/TextAppearance.h"
#include "engines/pdfa/convert/annotations/TextLines.h"

namespace TarnixTools::engines::pdfa {
namespace {

// A document whose object 4 is an annotation with the entries.
class Annotated : public OpenedConversion {
 public:
  explicit Annotated(const std::string& entries, const std::string& form = "")
      : OpenedConversion(FileWith(entries, form)), annotation_(Loaded(4)) {}

  const pdf::Object& annotation() const { return annotation_; }

 private:
  static testing::RawPdf FileWith(const std::string& entries, const std::string& form) {
    testing::RawPdf file;
    file.Object(1, "<</Type/Catalog/Pages 2 0 R/AcroForm<</Fields[4 0 R]" + form + ">>>>");
    file.Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>");
    file.Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 100]/Annots[4 0 R]>>");
    return file.Object(4, "<</Type/Annot" + entries + ">>");
  }

  pdf::Object annotation_;
};

constexpr std::size_t kPlenty = 1'000;

struct Drawn {
  std::optional<MadeAppearance> made;
  std::size_t numbers_left = kPlenty;
};

Drawn Draw(const std::string& entries, bool may_blend = true, std::size_t numbers = kPlenty) {
  Annotated annotated(entries);
  Drawn drawn{.made = {}, .numbers_left = numbers};
  drawn.made =
      DrawnAppearance(annotated.annotation(), annotated.document(), may_blend, drawn.numbers_left);
  return drawn;
}

constexpr const char* kRect = "/Rect[10 20 50 40]";
constexpr const char* kQuads = "/QuadPoints[10 40 50 40 10 20 50 20]";

TEST(DrawnAppearance, PaintsWhatTheEntriesSay) {
  struct Row {
    std::string entries;
    const char* content;
  };

  const Row rows[] = {
      {"/Subtype/Square", "0 G\n1 w\n10.5 20.5 39 19 re\nS\n"},
      {"/Subtype/Square/IC[1 0 0]/C[0 0 1]/BS<</W 4>>/RD[1 2 3 4]",
       "1 0 0 rg\n0 0 1 RG\n4 w\n13 24 32 10 re\nB\n"},
      {"/Subtype/Square/C[]/IC[.5]", ".5 g\n0 G\n1 w\n10.5 20.5 39 19 re\nf\n"},
      {"/Subtype/Square/IC[.5]/BS<</W 0>>", ".5 g\n0 G\n0 w\n10 20 40 20 re\nf\n"},
      {"/Subtype/Square/Border[0 0 2]/RD[1 2 3]", "0 G\n2 w\n11 21 38 18 re\nS\n"},
      {"/Subtype/Square/BS<</W 100>>", "0 G\n40 w\n30 40 0 -20 re\nS\n"},
      {"/Subtype/Circle",
       "0 G\n1 w\n10.5 30 m\n10.5 35.247 19.23 39.5 30 39.5 c\n40.77 39.5 49.5 35.247 49.5 30 c\n"
       "49.5 24.753 40.77 20.5 30 20.5 c\n19.23 20.5 10.5 24.753 10.5 30 c\nh S\n"},
      {"/Subtype/Line/L[11 21 49 39]/C[0 1 0]", "0 1 0 RG\n1 w\n11 21 m\n49 39 l\nS\n"},
      {"/Subtype/Polygon/Vertices[10 20 50 20 30 40]",
       "0 G\n1 w\n10 20 m\n50 20 l\n30 40 l\nh S\n"},
      {"/Subtype/Polygon/Vertices[10 20 50 20 30]/IC[0 1 1 0]",
       "1 0 0 rg\n0 G\n1 w\n10 20 m\n50 20 l\nh B\n"},
      {"/Subtype/Polygon/Vertices[10/x 50 20(y)40]", "0 G\n1 w\n10 0 m\n50 20 l\n0 40 l\nh S\n"},
      {"/Subtype/Squiggly/QuadPoints[50 20.2 10 20.2 50 20 10 20]",
       "0 G\n.062 w\n50 20.012 m\n10 20.137 l\nS\n"},
      {"/Subtype/PolyLine/Vertices[10 20 50 20 30 40]/BS<</W 2>>",
       "0 G\n2 w\n10 20 m\n50 20 l\n30 40 l\nS\n"},
      {"/Subtype/Ink/InkList[[1][10 20 50 40][10 40 50 20 30 30]]",
       "0 G\n1 w\n10 20 m\n50 40 l\nS\n10 40 m\n50 20 l\n30 30 l\nS\n"},
      {std::string("/Subtype/Highlight") + kQuads,
       "1 1 0 rg\n10 20 m\n50 20 l\n50 40 l\n10 40 l\nf\n"},
      {std::string("/Subtype/Highlight/C[0 1 0 .5]") + kQuads,
       ".5 0 .5 rg\n10 20 m\n50 20 l\n50 40 l\n10 40 l\nf\n"},
      {std::string("/Subtype/Underline") + kQuads, "0 G\n1.25 w\n10 21.25 m\n50 21.25 l\nS\n"},
      {std::string("/Subtype/StrikeOut/C[1 0 0]") + kQuads,
       "1 0 0 RG\n1.25 w\n10 30 m\n50 30 l\nS\n"},
      {"/Subtype/StrikeOut/QuadPoints[10 40 50 44 14 20 54 24 1 2 3 2 1 2 3 2 9 9]",
       "0 G\n1.25 w\n12 30 m\n52 34 l\nS\n.062 w\n1 2 m\n3 2 l\nS\n"},
      {std::string("/Subtype/Squiggly/C[.5]") + kQuads,
       ".5 G\n1.25 w\n10 21.25 m\n15 23.75 l\n20 21.25 l\n25 23.75 l\n30 21.25 l\n35 23.75 l\n"
       "40 21.25 l\n45 23.75 l\n50 21.25 l\nS\n"},
      {"/Subtype/Squiggly/QuadPoints[10 40 12 48 10 24 12 32]", "0 G\n1 w\n10 25 m\n12 35 l\nS\n"},
      {"/Subtype/Text/C[0 1 0]",
       "0 G\n0 1 0 rg\n11 21 18 18 re\nB\n15 25 m\n25 25 l\nS\n15 30 m\n25 30 l\nS\n15 35 m\n"
       "25 35 l\nS\n"},
      {"/Subtype/Text/Rect[10 20 18 90]",
       "0 G\n1 1 0 rg\n11 71 6 18 re\nB\n12 75 m\n16 75 l\nS\n12 80 m\n16 80 l\nS\n12 85 m\n"
       "16 85 l\nS\n"},
  };
  for (const Row& row : rows) {
    const bool has_rect = row.entries.find("/Rect") != std::string::npos;
    const Drawn drawn = Draw(row.entries + (has_rect ? "" : kRect));
    ASSERT_TRUE(drawn.made) << row.entries;
    EXPECT_EQ(drawn.made->content, std::string("/G gs\n") + row.content) << row.entries;
  }
}

TEST(DrawnAppearance, IsNoNoteInTwoPoints) {
  EXPECT_TRUE(Draw("/Subtype/Text/Rect[10 20 12.5 22.5]").made);
  EXPECT_FALSE(Draw("/Subtype/Text/Rect[10 20 12 22.5]").made);
  EXPECT_FALSE(Draw("/Subtype/Text/Rect[10 20 12.5 22]").made);
}

TEST(DrawnAppearance, IsAsLargeAsTheAnnotationAndAsOpaque) {
  const std::string form = "<</Type/XObject/Subtype/Form/BBox[10 20 50 40]/Resources<<";
  EXPECT_EQ(Draw(std::string("/Subtype/Square") + kRect).made->dictionary,
            form + "/ExtGState<</G<</CA 1/ca 1>>>>>>>>");
  EXPECT_EQ(Draw(std::string("/Subtype/Highlight/CA .25") + kRect + kQuads).made->dictionary,
            form + "/ExtGState<</G<</CA .25/ca .25/BM/Multiply>>>>>>>>");
  EXPECT_EQ(Draw(std::string("/Subtype/Square/CA 7") + kRect).made->dictionary,
            form + "/ExtGState<</G<</CA 1/ca 1>>>>>>>>");
  const Drawn opaque = Draw(std::string("/Subtype/Square/CA .5") + kRect, false);
  EXPECT_EQ(opaque.made->dictionary, form + ">>>>");
  EXPECT_EQ(opaque.made->content, "0 G\n1 w\n10.5 20.5 39 19 re\nS\n");
}

TEST(DrawnAppearance, IsNoneWhereNothingIsSeen) {
  for (const std::string& entries :
       {std::string("/Subtype/Stamp"), std::string("/Subtype/Circle/BS<</W 0>>"),
        std::string("/Subtype/Circle/C[]"), std::string("/Subtype/Line/L[1 2 3]"),
        std::string("/Subtype/Line/L[1 2 3 4]/BS<</W 0>>"),
        std::string("/Subtype/Line/L[1 2 3 4]/C[]"),
        std::string("/Subtype/Polygon/Vertices[1 2 3]"),
        std::string("/Subtype/PolyLine/Vertices[1 2 3]"),
        std::string("/Subtype/PolyLine/Vertices[1 2 3 4]/C[]"),
        std::string("/Subtype/Ink/InkList[[1 2 3 4]]/C[]"), std::string("/Subtype/Ink"),
        std::string("/Subtype/Highlight/QuadPoints[1 2 3 4 5 6 7]"),
        std::string("/Subtype/Highlight/C[]") + kQuads,
        std::string("/Subtype/Underline/C[]") + kQuads,
        std::string("/Subtype/Squiggly/C[]") + kQuads,
        std::string("/Subtype/Text/Rect[10 20 12 90]"),
        std::string("/Subtype/Text/Rect[10 20 90 22]")}) {
    const bool has_rect = entries.find("/Rect") != std::string::npos;
    EXPECT_FALSE(Draw(entries + (has_rect ? "" : kRect)).made) << entries;
  }
  EXPECT_FALSE(Draw(std::string("/Subtype/Highlight") + kRect + kQuads, false).made);
  EXPECT_FALSE(Draw(std::string("/Subtype/Square") + kRect, true, 0).made);
}

TEST(DrawnAppearance, TakesTheNumbersOffThatItReadAndWrote) {
  EXPECT_EQ(Draw(std::string("/Subtype/Square") + kRect).numbers_left, kPlenty - 5);
  EXPECT_EQ(Draw(std::string("/Subtype/Square/IC[1 1 1]/C[0]/RD[0 0 0 0]") + kRect).numbers_left,
            kPlenty - 5 - 8);
  EXPECT_EQ(Draw(std::string("/Subtype/Line/L[1 2 3 4]") + kRect).numbers_left, kPlenty - 9);
  EXPECT_EQ(Draw(std::string("/Subtype/Ink/InkList[[1 2 3 4][1]]") + kRect).numbers_left,
            kPlenty - 1 - 6 - 1 - 4);
  EXPECT_EQ(Draw(std::string("/Subtype/Square") + kRect, true, 3).numbers_left, 0U);
}

constexpr const char* kField = "/Subtype/Widget/Rect[0 0 80 40]";

MadeButton Button(const std::string& entries, const std::string& form = "") {
  Annotated annotated(kField + entries, form);
  return ButtonAppearance(annotated.annotation(), annotated.document());
}

TEST(ButtonAppearance, PaintsTheSignOfItsCaption) {
  const std::string circle =
      "30 20 m\n30 25.523 34.477 30 40 30 c\n45.523 30 50 25.523 50 20 c\n"
      "50 14.477 45.523 10 40 10 c\n34.477 10 30 14.477 30 20 c\nh f\n";
  const std::pair<const char*, std::string> rows[] = {
      {"", "4.8 w\n28 20 m\n36.8 10 l\n52 31.2 l\nS\n"},
      {"/MK<</CA(4)>>", "4.8 w\n28 20 m\n36.8 10 l\n52 31.2 l\nS\n"},
      {"/MK<</CA(8)>>", "4.8 w\n28.8 8.8 m\n51.2 31.2 l\nS\n4.8 w\n28.8 31.2 m\n51.2 8.8 l\nS\n"},
      {"/MK<</CA(u)>>", "40 6 m\n54 20 l\n40 34 l\n26 20 l\nf\n"},
      {"/MK<</CA(n)>>", "28 8 m\n52 8 l\n52 32 l\n28 32 l\nf\n"},
      {"/MK<</CA(H)>>",
       "40 36 m\n44.4 24.8 l\n56.8 24 l\n47.2 16.4 l\n50.4 4.8 l\n40 11.2 l\n29.6 4.8 l\n"
       "32.8 16.4 l\n23.2 24 l\n35.6 24.8 l\nf\n"},
      {"/MK<</CA(l)>>", circle},
      {"/Ff 32768", circle},
      {"/Ff 32768/MK<</CA(4)>>", "4.8 w\n28 20 m\n36.8 10 l\n52 31.2 l\nS\n"},
  };
  for (const auto& [entries, sign] : rows) {
    const MadeButton made = Button(std::string("/FT/Btn") + entries);
    EXPECT_EQ(made.on.content, "q\n0 g\n0 G\n" + sign + "Q\n") << entries;
    EXPECT_EQ(made.off.content, " ") << entries;
  }
}

TEST(ButtonAppearance, PaintsGroundAndBorderUnderTheSign) {
  const std::string look = "/FT/Btn/BS<</W 2>>/MK<</BC[1 0 0]/BG[0 1 0]";
  const MadeButton square = Button(look + "/CA(n)>>/DA(0 0 1 rg)");
  const std::string ground = "q\n0 1 0 rg\n0 0 80 40 re f\n1 0 0 RG\n2 w\n1 1 78 38 re S\nQ\n";
  EXPECT_EQ(square.off.content, ground);
  EXPECT_EQ(square.on.content,
            ground +
                "q\n0 0 1 rg\n0 0 1 RG\n29.2 9.2 m\n50.8 9.2 l\n50.8 30.8 l\n29.2 30.8 l\nf\n"
                "Q\n");
  const std::string path =
      "21 20 m\n21 30.494 29.506 39 40 39 c\n50.494 39 59 30.494 59 20 c\n"
      "59 9.506 50.494 1 40 1 c\n29.506 1 21 9.506 21 20 c\nh ";
  EXPECT_EQ(Button(look + ">>/Ff 32768").off.content,
            "q\n0 1 0 rg\n" + path + "f\n1 0 0 RG\n2 w\n" + path + "S\nQ\n");
  EXPECT_EQ(Button(look + "/CA(n)>>/Ff 32768").off.content, ground);
}

TEST(ButtonAppearance, IsInAState) {
  const auto state = [](const std::string& entries) {
    const MadeButton made = Button("/FT/Btn" + entries);
    return made.on_state + (made.is_on ? " on" : " off");
  };
  EXPECT_EQ(state(""), "Yes off");
  EXPECT_EQ(state("/AS/Ja"), "Ja on");
  EXPECT_EQ(state("/AS/Off/V/Ja"), "Yes off");
  EXPECT_EQ(state("/V/Ja"), "Ja on");
  EXPECT_EQ(state("/AS(Ja)"), "Yes off");
}

TEST(ButtonAppearance, IsOfBoxesAndRadioButtonsOnly) {
  const auto has_states = [](const std::string& entries) {
    Annotated annotated(entries);
    return HasButtonStates(annotated.annotation(), annotated.document());
  };
  EXPECT_TRUE(has_states("/Subtype/Widget/FT/Btn"));
  EXPECT_TRUE(has_states("/Subtype/Widget/FT/Btn/Ff 32768"));
  EXPECT_FALSE(has_states("/Subtype/Widget/FT/Btn/Ff 65536"));
  EXPECT_FALSE(has_states("/Subtype/Widget/FT/Tx"));
  EXPECT_FALSE(has_states("/Subtype/Link/FT/Btn"));
}

TEST(FieldBox, PaintsItsBorder) {
  const auto box = [](const std::string& entries) {
    Annotated annotated(kField + entries);
    FieldEntries fields(annotated.document(), annotated.annotation());
    return FieldBox::OfWidget(fields).Rectangle();
  };
  EXPECT_EQ(box(""), "");
  EXPECT_EQ(box("/BS<</W 2>>"), "") << "it has no colour";
  EXPECT_EQ(box("/MK<</BC[.5]>>"), "q\n.5 G\n1 w\n.5 .5 79 39 re S\nQ\n");
  EXPECT_EQ(box("/MK<</BC[.5]>>/BS<</W 0>>"), "");
  EXPECT_EQ(box("/MK<</BC[.5]>>/BS<</W 99>>"), "q\n.5 G\n20 w\n10 10 60 20 re S\nQ\n");
  EXPECT_EQ(box("/MK<</BC[.5]>>/BS<</W 2/S/D>>"), "q\n.5 G\n[3]0 d\n2 w\n1 1 78 38 re S\nQ\n");
  EXPECT_EQ(box("/MK<</BC[.5]>>/BS<</W 2/S/U>>"), "q\n.5 G\n2 w\n0 1 m\n80 1 l S\nQ\n");
  EXPECT_EQ(box("/MK<</BG[0 0 0 1]>>"), "q\n0 0 0 rg\n0 0 80 40 re f\nQ\n");
  EXPECT_EQ(box("/MK<</BG[0 0]/BC[0 0 0 0 0]>>"), "");
}

TEST(FieldBox, OfFreeTextHasABorderInTheColorOfTheText) {
  const auto box = [](const std::string& entries) {
    Annotated annotated("/Subtype/FreeText/Rect[10 10 90 50]" + entries);
    FieldEntries fields(annotated.document(), annotated.annotation());
    return FieldBox::OfFreeText(fields).Rectangle();
  };
  EXPECT_EQ(box("/C[1 1 0]/BS<</W 2/S/D>>/DA(1 0 0 rg)"),
            "q\n1 1 0 rg\n0 0 80 40 re f\n1 0 0 RG\n[3]0 d\n2 w\n1 1 78 38 re S\nQ\n");
  EXPECT_EQ(box("/BS<</W 0>>"), "");
}

TEST(FieldBox, IsTurnedByItsForm) {
  const auto form = [](const std::string& entries) {
    Annotated annotated(kField + entries);
    FieldEntries fields(annotated.document(), annotated.annotation());
    return FieldBox::OfWidget(fields).Form("x", 0).dictionary;
  };
  const std::string begin = "<</Type/XObject/Subtype/Form/BBox[0 0 ";
  EXPECT_EQ(form(""), begin + "80 40]/Resources<<>>>>");
  EXPECT_EQ(form("/MK<</R 90>>"), begin + "40 80]/Matrix[0 1 -1 0 0 0]/Resources<<>>>>");
  EXPECT_EQ(form("/MK<</R 180>>"), begin + "80 40]/Matrix[-1 0 0 -1 0 0]/Resources<<>>>>");
  EXPECT_EQ(form("/MK<</R -90>>"), begin + "40 80]/Matrix[0 -1 1 0 0 0]/Resources<<>>>>");
  EXPECT_EQ(form("/MK<</R 630>>"), begin + "40 80]/Matrix[0 -1 1 0 0 0]/Resources<<>>>>");
  EXPECT_EQ(form("/MK<</R 45>>"), begin + "80 40]/Resources<<>>>>");
}

TEST(FieldBox, NamesWhatItsContentUses) {
  Annotated annotated(kField);
  FieldEntries fields(annotated.document(), annotated.annotation());
  const FieldBox box = FieldBox::OfWidget(fields);
  const std::string begin = "<</Type/XObject/Subtype/Form/BBox[0 0 80 40]/Resources<<";
  const MadeAppearance full = box.Form("x", 7, "<</ca .5>>");
  EXPECT_EQ(full.dictionary, begin + "/Font<</F 7 0 R>>/ExtGState<</G<</ca .5>>>>>>>>");
  EXPECT_EQ(full.content, "/G gs\nx");
  const MadeAppearance empty = box.Form("", 0, "<</ca .5>>");
  EXPECT_EQ(empty.dictionary, begin + "/ExtGState<</G<</ca .5>>>>>>>>");
  EXPECT_TRUE(empty.shows_nothing());
}

TEST(FieldStyle, IsThatOfTheDefaultAppearance) {
  const auto style = [](const std::string& entries, const std::string& form = "") {
    Annotated annotated(kField + entries, form);
    FieldEntries fields(annotated.document(), annotated.annotation());
    const FieldStyle read = ReadStyle(fields);
    std::ostringstream text;
    text << read.font << " " << read.size;
    for (const double component : read.color) {
      text << " " << component;
    }
    return text.str();
  };
  EXPECT_EQ(style(""), "Helvetica 0 0");
  EXPECT_EQ(style("/DA(/TiBo 9 Tf .5 g)"), "Times-Bold 9 0.5");
  EXPECT_EQ(style("/DA(/Own 9 Tf 1 0 .5 rg)"), "Own 9 1 0 0.5");
  EXPECT_EQ(style("/DA(0 1 0 .5 k /Helv 2000 Tf)"), "Helvetica 1000 0 1 0 0.5");
  EXPECT_EQ(style("/DA(/Helv -5 Tf 1 g 0 0 rg)"), "Helvetica 0 1");
  EXPECT_EQ(style("", "/DA(/Cour 7 Tf)"), "Courier 7 0");
  EXPECT_EQ(style("/DA(/A 7 Tf)", "/DR<</Font<</A<</BaseFont/Arial>>>>>>"), "Arial 7 0");
  const std::pair<const char*, const char*> names[] = {
      {"Helv", "Helvetica"},         {"HeBo", "Helvetica-Bold"},
      {"HeOb", "Helvetica-Oblique"}, {"HeBO", "Helvetica-BoldOblique"},
      {"TiRo", "Times-Roman"},       {"TiBo", "Times-Bold"},
      {"TiIt", "Times-Italic"},      {"TiBI", "Times-BoldItalic"},
      {"Cour", "Courier"},           {"CoBo", "Courier-Bold"},
      {"CoOb", "Courier-Oblique"},   {"CoBO", "Courier-BoldOblique"},
      {"ZaDb", "ZapfDingbats"}};
  for (const auto& [resource, name] : names) {
    EXPECT_EQ(style(std::string("/DA(/") + resource + " 8 Tf)"), std::string(name) + " 8 0");
  }
}

TEST(TextLines, EndWhereTheTextSaysSo) {
  using Lines = std::vector<std::u32string>;
  EXPECT_EQ(LinesOf(U""), Lines{U""});
  EXPECT_EQ(LinesOf(U"a\rb\nc\r\nd\te"), (Lines{U"a", U"b", U"c", U"d e"}));
  EXPECT_EQ(LinesOf(U"a\r\n\r\n"), (Lines{U"a", U"", U""}));
  EXPECT_EQ(LinesOf(U"a\n\r"), (Lines{U"a", U"", U""}));
}

TEST(TextLines, AreWrappedAtSpaces) {
  using Lines = std::vector<std::u32string>;
  const auto wrapped = [](std::u32string_view text, double room) {
    return WrappedLines(text, room, [](std::u32string_view part) { return part.size() * 1.0; });
  };
  EXPECT_EQ(wrapped(U"", 5), Lines{U""});
  EXPECT_EQ(wrapped(U"ab cd", 5), Lines{U"ab cd"});
  EXPECT_EQ(wrapped(U"ab cd", 4), (Lines{U"ab", U"cd"}));
  EXPECT_EQ(wrapped(U"ab cd", 2), (Lines{U"ab", U"cd"}));
  EXPECT_EQ(wrapped(U"ab   cd\nx", 3), (Lines{U"ab", U"cd", U"x"}));
  EXPECT_EQ(wrapped(U"abcde fg", 2), (Lines{U"ab", U"cd", U"e", U"fg"}));
  EXPECT_EQ(wrapped(U"abc", 0.5), (Lines{U"a", U"b", U"c"}));
  EXPECT_EQ(wrapped(U" abc", 2), (Lines{U" a", U"bc"}));
  EXPECT_EQ(wrapped(U"   abc", 2), (Lines{U"", U"ab", U"c"}));
}

// Content with each number as "#", and the numbers.
struct Operations {
  std::string text;
  std::vector<double> numbers;
};

Operations OperationsOf(const std::string& content) {
  Operations operations;
  std::istringstream stream(content);
  for (std::string word; stream >> word;) {
    const bool is_number = word.find_first_not_of("-.0123456789") == std::string::npos;
    if (is_number) {
      operations.numbers.push_back(std::stod(word));
    }
    operations.text += (operations.text.empty() ? "" : " ") + (is_number ? "#" : word);
  }
  return operations;
}

// A text field of 160 by 40 points, with text of 10 points in black.
class TextAppearanceTest : public ::testing::Test {
 protected:
  void Draw(const std::string& entries) {
    const bool has_rect = entries.find("/Rect") != std::string::npos;
    const bool has_style = entries.find("/DA") != std::string::npos;
    annotated_ =
        std::make_unique<Annotated>((has_rect ? "" : "/Rect[0 0 160 40]") +
                                    std::string(has_style ? "" : "/DA(/Helv 10 Tf 0 g)") + entries);
    fonts_ = std::make_unique<AppearanceFonts>(annotated_->conversion());
    font_ = fonts_->Find("Helvetica", U"H*");
    ASSERT_NE(font_, nullptr);
    made_ = TextAppearance(annotated_->annotation(), annotated_->document(), *fonts_, true,
                           characters_left_);
    ASSERT_TRUE(made_);
    drawn_ = OperationsOf(made_->content);
  }

  // The numbers are those of the operators in their order.
  void Expect(const std::string& operators, const std::vector<double>& numbers) {
    EXPECT_EQ(drawn_.text, operators);
    ASSERT_EQ(drawn_.numbers.size(), numbers.size());
    for (std::size_t i = 0; i < numbers.size(); ++i) {
      EXPECT_NEAR(drawn_.numbers[i], numbers[i], 0.002) << "the number " << i;
    }
  }

  // Of one line.
  void ExpectLine(const std::vector<double>& numbers, std::u32string_view text) {
    Expect("/Tx BMC q # # # # re W n BT # g /F # Tf # # Td " + font_->Shown(text) + " Tj ET Q EMC",
           numbers);
  }

  double Width(std::u32string_view text, double size = 10) const {
    return font_->WidthOf(text) * size;
  }

  double Middle(double size = 10) const {
    return 20 - (font_->ascent() + font_->descent()) / 2 * size;
  }

  double Pitch(double size = 10) const {
    return (font_->ascent() - font_->descent()) * 1.15 * size;
  }

  std::unique_ptr<Annotated> annotated_;
  std::unique_ptr<AppearanceFonts> fonts_;
  AppearanceFont* font_ = nullptr;
  std::size_t characters_left_ = kPlenty;
  std::optional<MadeAppearance> made_;
  Operations drawn_;
};

TEST_F(TextAppearanceTest, StandsOnItsSide) {
  Draw("/Subtype/Widget/FT/Tx/V(HH)");
  ExpectLine({0, 0, 160, 40, 0, 10, 2, Middle()}, U"HH");
  EXPECT_EQ(characters_left_, kPlenty - 2);
  Draw("/Subtype/Widget/FT/Tx/V(HH)/Q 1");
  ExpectLine({0, 0, 160, 40, 0, 10, (160 - Width(U"HH")) / 2, Middle()}, U"HH");
  Draw("/Subtype/Widget/FT/Tx/V(HH)/Q 2");
  ExpectLine({0, 0, 160, 40, 0, 10, 160 - Width(U"HH") - 2, Middle()}, U"HH");
  Draw("/Subtype/Widget/FT/Btn/Ff 65536/MK<</CA(HH)>>");
  ExpectLine({0, 0, 160, 40, 0, 10, (160 - Width(U"HH")) / 2, Middle()}, U"HH");
}

TEST_F(TextAppearanceTest, KeepsOffTheBorder) {
  Draw("/Subtype/Widget/FT/Tx/V(HH)/MK<</BC[.5]>>/BS<</W 3>>");
  Expect("q # G # w # # # # re S Q /Tx BMC q # # # # re W n BT # g /F # Tf # # Td " +
             font_->Shown(U"HH") + " Tj ET Q EMC",
         {.5, 3, 1.5, 1.5, 157, 37, 3, 3, 154, 34, 0, 10, 6, Middle()});
}

TEST_F(TextAppearanceTest, FallsIntoLines) {
  Draw("/Subtype/Widget/FT/Tx/Ff 4096/V(HH\\nH)/Q 1");
  const std::string two = " Tj # # Td ";
  Expect("/Tx BMC q # # # # re W n BT # g /F # Tf # # Td " + font_->Shown(U"HH") + two +
             font_->Shown(U"H") + " Tj ET Q EMC",
         {0, 0, 160, 40, 0, 10, (160 - Width(U"HH")) / 2, 38 - font_->ascent() * 10,
          Width(U"H") / 2, -Pitch()});
  Draw("/Subtype/Widget/FT/Tx/Ff 4096/V(HH HH)/Rect[0 0 20 40]");
  Expect("/Tx BMC q # # # # re W n BT # g /F # Tf # # Td " + font_->Shown(U"HH") + two +
             font_->Shown(U"HH") + " Tj ET Q EMC",
         {0, 0, 20, 40, 0, 10, 2, 38 - font_->ascent() * 10, 0, -Pitch()});
  Draw("/Subtype/Widget/FT/Tx/V(H\\nH)");
  ExpectLine({0, 0, 160, 40, 0, 10, 2, Middle()}, U"H H");
  Draw("/Subtype/Widget/FT/Tx/Ff 4096/V(H H H)/Rect[0 0 4 40]/DA(/Helv .5 Tf 0 g)");
  Expect("/Tx BMC q # # # # re W n BT # g /F # Tf # # Td " + font_->Shown(U"H H") + two +
             font_->Shown(U"H") + " Tj ET Q EMC",
         {0, 0, 4, 40, 0, .5, 2, 38 - font_->ascent() * .5, 0, -Pitch(.5)});
}

// What would be below the field is not written; of an empty line only the place is left.
TEST_F(TextAppearanceTest, EndsBelowTheField) {
  Draw("/Subtype/Widget/FT/Tx/Ff 4096/V(H\\n\\nH\\nH\\nH\\nH\\nH)");
  const std::string next = " Tj # # Td " + font_->Shown(U"H");
  Expect("/Tx BMC q # # # # re W n BT # g /F # Tf # # Td " + font_->Shown(U"H") + next + next +
             " Tj ET Q EMC",
         {0, 0, 160, 40, 0, 10, 2, 38 - font_->ascent() * 10, 0, -2 * Pitch(), 0, -Pitch()});
}

TEST_F(TextAppearanceTest, StandsInTheCellsOfAComb) {
  Draw("/Subtype/Widget/FT/Tx/Ff 16777216/MaxLen 4/V(HH*HH)");
  const double h = (40 - Width(U"H")) / 2;
  const double star = (40 - Width(U"*")) / 2;
  const std::string next = " Tj # # Td ";
  Expect("/Tx BMC q # # # # re W n BT # g /F # Tf # # Td " + font_->Shown(U"H") + next +
             font_->Shown(U"H") + next + font_->Shown(U"*") + next + font_->Shown(U"H") +
             " Tj ET Q EMC",
         {0, 0, 160, 40, 0, 10, h, Middle(), 40, 0, 40 + star - h, 0, 40 + h - star, 0});
  Draw("/Subtype/Widget/FT/Tx/Ff 16777216/MaxLen 4/V(H)/DA(/Helv 0 Tf 0 g)");
  ExpectLine({0, 0, 160, 40, 0, 26.8, (40 - Width(U"H", 26.8)) / 2, Middle(26.8)}, U"H");
  Draw("/Subtype/Widget/FT/Tx/Ff 16777216/V(HH)");
  ExpectLine({0, 0, 160, 40, 0, 10, 2, Middle()}, U"HH");
}

TEST_F(TextAppearanceTest, IsOfSmallSizesToo) {
  Draw("/Subtype/Widget/FT/Tx/V(HH)/DA(/Helv .5 Tf 0 g)");
  ExpectLine({0, 0, 160, 40, 0, .5, 2, Middle(.5)}, U"HH");
  Draw("/Subtype/Widget/FT/Tx/Ff 16777216/MaxLen 4/V(H)/DA(/Helv 1 Tf 0 g)");
  ExpectLine({0, 0, 160, 40, 0, 1, (40 - Width(U"H", 1)) / 2, Middle(1)}, U"H");
}

TEST_F(TextAppearanceTest, HidesPasswords) {
  Draw("/Subtype/Widget/FT/Tx/Ff 8192/V(abc)");
  ExpectLine({0, 0, 160, 40, 0, 10, 2, Middle()}, U"***");
}

TEST_F(TextAppearanceTest, HasTheSizeThatFits) {
  const std::string style = "/Subtype/Widget/FT/Tx/DA(/Helv 0 Tf 0 g)";
  Draw(style + "/V(HH)");
  ExpectLine({0, 0, 160, 40, 0, 26.8, 2, Middle(26.8)}, U"HH");
  const std::u32string wide(24, U'H');
  Draw(style + "/V(" + std::string(24, 'H') + ")");
  const double size = 156 / font_->WidthOf(wide);
  ExpectLine({0, 0, 160, 40, 0, size, 2, Middle(size)}, wide);
  const std::u32string widest(100, U'H');
  Draw(style + "/V(" + std::string(100, 'H') + ")");
  ExpectLine({0, 0, 160, 40, 0, 4, 2, Middle(4)}, widest);
}

TEST_F(TextAppearanceTest, HasTheSizeInWhichAllLinesFit) {
  const std::string style = "/Subtype/Widget/FT/Tx/Ff 4096/DA(/Helv 0 Tf 0 g)/V";
  const auto size_of = [&](const std::string& text) {
    Draw(style + text);
    return drawn_.numbers.at(5);
  };
  const auto fitting = [&](int lines) {
    double size = 12;
    while (size > 4 && lines * Pitch(size) > 36) {
      --size;
    }
    return size;
  };
  EXPECT_EQ(size_of("(H)"), 12);
  EXPECT_EQ(size_of("(H\\nH\\nH)"), fitting(3));
  EXPECT_EQ(size_of("(H\\nH\\nH\\nH\\nH)"), fitting(5));
  EXPECT_LT(fitting(5), fitting(3));
  EXPECT_EQ(size_of("(H\\nH\\nH\\nH\\nH\\nH\\nH\\nH\\nH\\nH\\nH\\nH)"), 4);
}

TEST_F(TextAppearanceTest, MarksWhatIsChosen) {
  Draw("/Subtype/Widget/FT/Ch/V(b)/Opt[[(a)(H)](b)]");
  const double y = 38 - font_->ascent() * 10;
  Expect("/Tx BMC q # # # # re W n # # # rg # # # # re f BT # g /F # Tf # # Td " +
             font_->Shown(U"H") + " Tj # # Td " + font_->Shown(U"b") + " Tj ET Q EMC",
         {0, 0, 160, 40, .6, .75686, .8549, 0, y - Pitch() + font_->descent() * 10, 160, Pitch(), 0,
          10, 2, y, 0, -Pitch()});
  Draw("/Subtype/Widget/FT/Ch/V(b)/TI 1/Opt[(a)(H)]");
  ExpectLine({0, 0, 160, 40, 0, 10, 2, y}, U"H");
}

// Between the borders; options that would be too much are passed over.
TEST_F(TextAppearanceTest, MarksWhatIsChosenWithinTheBorder) {
  Draw("/Subtype/Widget/FT/Ch/V(H)/Opt[(H)]/MK<</BC[.5]>>/BS<</W 3>>");
  const double y = 34 - font_->ascent() * 10;
  Expect(
      "q # G # w # # # # re S Q /Tx BMC q # # # # re W n # # # rg # # # # re f BT # g /F # Tf # "
      "# Td " +
          font_->Shown(U"H") + " Tj ET Q EMC",
      {.5,  3,       1.5,   1.5, 157,
       37,  3,       3,     154, 34,
       .6,  .75686,  .8549, 3,   y + font_->descent() * 10,
       154, Pitch(), 0,     10,  6,
       y});
  characters_left_ = 3;
  Draw("/Subtype/Widget/FT/Ch/Opt[(HH)(**)(b)(H)]");
  Expect("/Tx BMC q # # # # re W n BT # g /F # Tf # # Td " + font_->Shown(U"HH") + " Tj # # Td " +
             font_->Shown(U"b") + " Tj ET Q EMC",
         {0, 0, 160, 40, 0, 10, 2, 38 - font_->ascent() * 10, 0, -Pitch()});
  EXPECT_EQ(characters_left_, 0U);
}

TEST_F(TextAppearanceTest, ShowsTheChosenOptionOfACombo) {
  Draw("/Subtype/Widget/FT/Ch/Ff 131072/V(b)/TI 1/Opt[[(b)(HH)](c)]");
  ExpectLine({0, 0, 160, 40, 0, 10, 2, Middle()}, U"HH");
  Draw("/Subtype/Widget/FT/Ch/Ff 131072/V(H)/Opt[(c)]");
  ExpectLine({0, 0, 160, 40, 0, 10, 2, Middle()}, U"H");
}

TEST_F(TextAppearanceTest, OfFreeTextIsAsOpaqueAsItSays) {
  Draw("/Subtype/FreeText/Contents(HH)/BS<</W 0>>/CA .5");
  EXPECT_EQ(drawn_.text.substr(0, 6), "/G gs ");
  EXPECT_NE(made_->dictionary.find("/ExtGState<</G<</CA .5/ca .5>>>>"), std::string::npos);
  EXPECT_NE(made_->dictionary.find("/Font<</F " + std::to_string(font_->number()) + " 0 R>>"),
            std::string::npos);
  Draw("/Subtype/FreeText/Contents(HH)/BS<</W 0>>/CA 1");
  EXPECT_EQ(made_->dictionary.find("/ExtGState"), std::string::npos);
  ExpectLine({0, 0, 160, 40, 0, 10, 2, 38 - font_->ascent() * 10}, U"HH");
}

TEST_F(TextAppearanceTest, IsAsLongAsThereMayBe) {
  characters_left_ = 3;
  Draw("/Subtype/Widget/FT/Tx/V(HHHHH)");
  ExpectLine({0, 0, 160, 40, 0, 10, 2, Middle()}, U"HHH");
  EXPECT_EQ(characters_left_, 0U);
  Draw("/Subtype/Widget/FT/Tx/V(HHHHH)");
  EXPECT_TRUE(made_->shows_nothing());
}

TEST(TextAppearance, IsOfWhatShowsText) {
  const auto shows = [](const std::string& entries) {
    Annotated annotated(entries);
    return ShowsText(annotated.annotation(), annotated.document());
  };
  EXPECT_TRUE(shows("/Subtype/FreeText"));
  EXPECT_TRUE(shows("/Subtype/Widget/FT/Tx"));
  EXPECT_TRUE(shows("/Subtype/Widget/FT/Ch"));
  EXPECT_TRUE(shows("/Subtype/Widget/FT/Btn/Ff 65536"));
  EXPECT_FALSE(shows("/Subtype/Widget/FT/Btn"));
  EXPECT_FALSE(shows("/Subtype/Widget/FT/Sig"));
  EXPECT_FALSE(shows("/Subtype/Text/FT/Tx"));
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
