// What is drawn for annotations that have no appearance, operator by operator; but for text.
#include <optional>
#include <sstream>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "engines/pdfa/convert/Annotated.h"
#include "engines/pdfa/convert/annotations/ButtonAppearance.h"
#include "engines/pdfa/convert/annotations/DrawnAppearance.h"
#include "engines/pdfa/convert/annotations/FieldBox.h"
#include "engines/pdfa/convert/annotations/FieldEntries.h"

namespace TarnixTools::engines::pdfa {
namespace {

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

}  // namespace
}  // namespace TarnixTools::engines::pdfa
