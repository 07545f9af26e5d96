#include "engines/office/writers/word/AnchoredWriter.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "engines/office/writers/text/DrawnShapes.h"
#include "engines/office/writers/text/ParagraphInitials.h"
#include "engines/office/writers/word/DrawingWriter.h"
#include "engines/office/writers/word/FlowWriter.h"
#include "engines/support/layout/Boxes.h"
#include "engines/support/pages/Cancellation.h"

namespace TarnixTools::engines::office {

namespace {

constexpr double kLevel = 6;    // points by which boxes that are level may differ
constexpr double kBoxRoom = 3;  // points that a text box is larger than its text

bool IsText(const Block& block) {
  return std::holds_alternative<Paragraph>(block.content) ||
         std::holds_alternative<Table>(block.content);
}

bool HasText(const Floating& floating) {
  return std::any_of(floating.blocks.begin(), floating.blocks.end(), IsText);
}

void WriteImageAt(Story& story, const OfficePage& page, const Block& block, bool is_behind) {
  StopIfCancelled(story.context.is_cancelled);
  if (const auto* picture = std::get_if<Picture>(&block.content)) {
    if (const auto image = ImageOf(story, page, *picture)) {
      const bool is_link = OpenLinkOf(story, page, picture->box);
      WriteAnchoredPicture(story, *image, picture->box, picture->description, is_behind);
      if (is_link) {
        story.xml.Close();
      }
    }
  } else if (const auto* drawing = std::get_if<Drawing>(&block.content)) {
    if (IsDrawnAsShapes(*drawing)) {
      WriteShapes(story, page, *drawing);
    } else if (const auto image = ImageOf(story, page, *drawing)) {
      const bool is_link = OpenLinkOf(story, page, drawing->box);
      WriteAnchoredPicture(story, *image, drawing->box, drawing->description, is_behind);
      if (is_link) {
        story.xml.Close();
      }
    }
  }
}

// The box that a shape has for text that is as large before it is turned about the middle of the
// box: lines that run down or up are no matter of turning the shape.
pdf::Box ShapeBox(const pdf::Box& box, const pdf::Box& text, double angle) {
  const double x = MiddleX(box);
  const double y = MiddleY(box);
  double width = text.width() / 2;
  double height = text.height() / 2;
  if (IsQuarter(angle)) {
    std::swap(width, height);
  }
  return {x - width, y - height, x + width, y + height};
}

}  // namespace

void WriteFloating(Story& story, const OfficePage& page, const Floating& floating) {
  std::vector<Block> blocks;
  pdf::Box text;
  for (const Block& block : WithInitialsApart(floating.blocks)) {
    if (!IsText(block)) {
      WriteImageAt(story, page, block, floating.is_behind);
      continue;
    }
    text = blocks.empty() ? BoxOf(block) : Around(text, BoxOf(block));
    text.bottom = std::min(text.bottom, TopOf(block, page.layout));
    blocks.push_back(block);
  }
  if (blocks.empty()) {
    return;
  }
  const double angle = Turned(floating.angle);
  pdf::Box outside = angle == 0 ? text : ShapeBox(floating.box, text, angle);
  (floating.is_vertical ? outside.left : outside.right) +=
      floating.is_vertical ? -kBoxRoom : kBoxRoom;
  outside.top += kBoxRoom;
  WriteTextBox(story, outside, {angle, floating.is_behind, floating.is_vertical}, [&] {
    Story inside = story;
    inside.may_have_notes = false;  // text boxes have none
    FlowWriter flow(inside, page, {text.left, text.right + kBoxRoom, text.bottom, 1});
    flow.Write(blocks);
    if (!flow.ends_with_paragraph()) {
      flow.SkipTo(flow.cursor());
    }
  });
}

void WriteAnchored(Story& story, const OfficePage& page, const std::vector<Block>& blocks) {
  for (std::size_t i = 0; i < blocks.size(); ++i) {
    const auto* drawing = std::get_if<Drawing>(&blocks[i].content);
    const bool is_shapes = drawing != nullptr && IsDrawnAsShapes(*drawing);
    if (!IsText(blocks[i]) && (is_shapes || !StandsInFlow(blocks, i))) {
      WriteImageAt(story, page, blocks[i], true);
    }
  }
}

void WriteAnchoredOfPage(Story& story, const OfficePage& page) {
  if (page.layout.background) {
    WriteBackground(story, page.layout, *page.layout.background);
  }
  for (const Floating& floating : page.layout.floats) {
    if (floating.is_behind) {
      WriteFloating(story, page, floating);
    }
  }
  for (const Band& band : page.layout.bands) {
    for (const Column& column : band.columns) {
      WriteAnchored(story, page, column.blocks);
    }
  }
  for (const Floating& floating : page.layout.floats) {
    if (!floating.is_behind && !HasText(floating)) {
      WriteFloating(story, page, floating);
    }
  }
}

std::vector<const Floating*> FloatsWithText(const PageLayout& page) {
  std::vector<const Floating*> floats;
  for (const Floating& floating : page.floats) {
    if (!floating.is_behind && HasText(floating)) {
      floats.push_back(&floating);
    }
  }
  const auto place = [](const Floating* floating) {
    return std::pair(std::lround(UpperEdge(floating->box) / kLevel), floating->box.left);
  };
  const auto vertical =
      std::stable_partition(floats.begin(), floats.end(),
                            [](const Floating* floating) { return !floating->is_vertical; });
  std::stable_sort(floats.begin(), vertical,
                   [&place](const Floating* a, const Floating* b) { return place(a) < place(b); });
  return floats;
}

}  // namespace TarnixTools::engines::office
