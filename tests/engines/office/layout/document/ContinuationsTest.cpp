// Captions beside what they tell of, and sentences that go on in the next column.
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "engines/office/layout/document/Continuations.h"
#include "engines/office/writers/WriterDocuments.h"
#include "engines/support/layout/paragraphs/FlowParagraphs.h"

namespace TarnixTools::engines::office {
namespace {

Block PictureAt(double top) {
  Picture picture;
  picture.box = {72, top, 172, top + 50};
  return Block{picture};
}

bool IsCaption(const std::string& text) {
  OfficeDocument document =
      DocumentOf({PageWith({PictureAt(100), Block{TextAt(72, 170, {text})}})});
  FindCaptions(document);
  return FlowParagraphs(document.pages[0].layout)[0]->role == ParagraphRole::kCaption;
}

TEST(Captions, BeginWithWordsForThem) {
  for (const char* text : {"Figure 1", "Fig. 2: x", "Table 9", "Abbildung 3", "Abb. 0", "Tabelle 4",
                           "Tableau IV", "Figura V", "Tabla 5", "Chart 6 and more"}) {
    EXPECT_TRUE(IsCaption(text)) << text;
  }
  for (const char* text : {"Figure", "Figure ", "Figure a", "Figures 1", "figure 1", "Figure:1",
                           "Figure /", "Figure X", "Plate 1", "See Figure 1"}) {
    EXPECT_FALSE(IsCaption(text)) << text;
  }
}

TEST(Captions, StandBesideSomething) {
  const auto is_caption = [](std::vector<Block> blocks, std::size_t index) {
    OfficeDocument document = DocumentOf({PageWith(std::move(blocks))});
    FindCaptions(document);
    return FlowParagraphs(document.pages[0].layout).at(index)->role == ParagraphRole::kCaption;
  };
  const Block caption{TextAt(72, 90, {"Table 1"})};
  const Block text{TextAt(72, 80, {"Text"})};
  EXPECT_TRUE(is_caption({caption, Block{TableAt(72, 100, {"a", "b", "c", "d"})}}, 0));
  EXPECT_TRUE(is_caption({Block{Drawing()}, caption}, 0));
  EXPECT_FALSE(is_caption({caption}, 0));
  EXPECT_FALSE(is_caption({PictureAt(0), text, caption}, 1));
  EXPECT_FALSE(is_caption({caption, text, PictureAt(200)}, 0));
  Paragraph heading = TextAt(72, 90, {"Table 1"});
  heading.role = ParagraphRole::kHeading;
  EXPECT_FALSE(is_caption({Block{heading}, PictureAt(200)}, 0));
}

// A paragraph as wide as its column, or less wide.
Paragraph Full(const std::string& text, double width = 441) {
  return LineBetween(72, 72 + width, 700, text);
}

bool GoesOn(const Paragraph& before, const Paragraph& next) {
  OfficeDocument document =
      DocumentOf({PageWith({Block{before}}), PageWith({}), PageWith({Block{next}})});
  FindContinuations(document);
  return FlowParagraphs(document.pages[2].layout)[0]->goes_on;
}

TEST(Continuations, AreSentencesThatAreNotAtTheirEnd) {
  const Paragraph next = LineBetween(72, 300, 100, "in small letters");
  EXPECT_TRUE(GoesOn(Full("The sentence goes on"), next));
  EXPECT_TRUE(GoesOn(Full("The sentence goes on,"), next));
  for (const char* end : {"It ends.", "Does it?", "It does!", "These:", "and;"}) {
    EXPECT_FALSE(GoesOn(Full(end), next)) << end;
  }
  EXPECT_FALSE(GoesOn(Full("The sentence goes on"), LineBetween(72, 300, 100, "With a capital")));
  EXPECT_FALSE(GoesOn(Full("The sentence goes on"), LineBetween(72, 300, 100, "")));
  EXPECT_FALSE(GoesOn(Full(""), next));
}

TEST(Continuations, FollowLinesThatAreFull) {
  const Paragraph next = LineBetween(72, 300, 100, "in small letters");
  EXPECT_TRUE(GoesOn(Full("The sentence", 397), next));  // nine tenths of 441
  EXPECT_FALSE(GoesOn(Full("The sentence", 396), next));
}

TEST(Continuations, LookAlikeAndAreOfOneKind) {
  const Paragraph before = Full("The sentence goes on");
  Paragraph next = LineBetween(72, 300, 100, "in small letters");
  next.label = ListLabel{};
  EXPECT_FALSE(GoesOn(before, next));
  next.label.reset();
  next.role = ParagraphRole::kCaption;
  EXPECT_FALSE(GoesOn(before, next));
  Paragraph caption = before;
  caption.role = ParagraphRole::kCaption;
  EXPECT_TRUE(GoesOn(caption, next));
  next.role = ParagraphRole::kBody;
  EXPECT_TRUE(GoesOn(caption, next));
  caption.role = ParagraphRole::kHeading;
  EXPECT_FALSE(GoesOn(caption, next));
  next.lines[0].pieces[0].look = 1;
  const auto with_look = [&](double size, const char* family) {
    OfficePage first = PageWith({Block{before}});
    OfficePage second = PageWith({Block{next}});
    second.layout.looks.push_back(
        {std::make_shared<const Typeface>(Typeface{.family = family}), size, Rgb{}, std::nullopt});
    OfficeDocument document = DocumentOf({first, second});
    FindContinuations(document);
    return FlowParagraphs(document.pages[1].layout)[0]->goes_on;
  };
  EXPECT_TRUE(with_look(kTestSize + 0.29, "Liberation Serif"));
  EXPECT_FALSE(with_look(kTestSize + 0.3, "Liberation Serif"));
  EXPECT_FALSE(with_look(kTestSize, "Another"));
}

}  // namespace
}  // namespace TarnixTools::engines::office
