#include "engines/office/writers/word/FlowWriter.h"

#include <algorithm>

#include "engines/office/writers/text/DrawnShapes.h"
#include "engines/office/writers/text/Units.h"
#include "engines/office/writers/word/AnchoredWriter.h"
#include "engines/office/writers/word/DrawingWriter.h"
#include "engines/office/writers/word/FlowChoice.h"
#include "engines/office/writers/word/TableWriter.h"
#include "engines/support/layout/Boxes.h"
#include "engines/support/pages/Cancellation.h"

namespace TarnixTools::engines::office {

namespace {

constexpr double kLeastPitch = 0.95;
constexpr double kLeastFirstPitch = 1.1;  // at the top of a cell, where nothing is pushed down
constexpr double kTightPitch = 0.8;       // of a line in a cell that is no higher
constexpr double kCellEdge = 1;           // points of a cell's height that borders take
constexpr double kSmallestGap = 0.5;      // points; a smaller one is none
constexpr double kBelowPicture = 0.25;    // points that a line has below a picture in it
constexpr std::size_t kLooked = 200;      // blocks before and behind one that may overlap it
constexpr double kOverlap = 3;     // points by which blocks that follow each other may overlap
constexpr double kMostShift = 24;  // points that a paragraph may come to stand too low

double OfTwips(double points) {
  return static_cast<double>(Twips(points)) / 20;
}

double FirstBaseline(const Paragraph& paragraph) {
  return paragraph.lines.empty() ? LowerEdge(paragraph.box) : paragraph.lines.front().baseline;
}

}  // namespace

double TopOf(const Block& block, const PageLayout& page) {
  const auto* paragraph = std::get_if<Paragraph>(&block.content);
  if (paragraph == nullptr) {
    return UpperEdge(BoxOf(block));
  }
  const double pitch = PitchOf(*paragraph);
  const double size = LargestSize(*paragraph, page.looks);
  return FirstBaseline(*paragraph) - kAboveBaseline * std::max(pitch, kUsualPitch * size);
}

bool StandsInFlow(const std::vector<Block>& blocks, std::size_t index) {
  const pdf::Box box = BoxOf(blocks[index]);
  const std::size_t first = index - std::min(index, kLooked);
  const std::size_t last = std::min(index + kLooked + 1, blocks.size());
  bool is_free = !box.IsEmpty();
  for (std::size_t i = first; i < last && is_free; ++i) {
    const pdf::Box other = BoxOf(blocks[i]);
    is_free = i == index || (i < index ? LowerEdge(other) <= UpperEdge(box) + kOverlap
                                       : UpperEdge(other) >= LowerEdge(box) - kOverlap);
  }
  return is_free;
}

void FlowWriter::Write(const std::vector<Block>& blocks, const std::function<void()>& section) {
  bool has_ended = false;
  const std::function<void()> own_section = [&] {
    has_ended = true;
    section();
  };
  for (std::size_t i = 0; i < blocks.size(); ++i) {
    StopIfCancelled(story_.context.is_cancelled);
    const bool is_last = i + 1 == blocks.size();
    if (is_last && &blocks == last_of_page_) {
      TakeAllFloats();
    }
    WriteBlock(blocks, i, is_last && section ? own_section : std::function<void()>());
  }
  if ((section && !has_ended) || (blocks.empty() && has_start_) || !waiting_.empty()) {
    SkipTo(cursor_, section && !has_ended ? section : std::function<void()>());
  }
}

// Calls section only if it writes a paragraph.
void FlowWriter::WriteBlock(const std::vector<Block>& blocks, std::size_t index,
                            const std::function<void()>& section) {
  const Block& block = blocks[index];
  TakeFloats(UpperEdge(BoxOf(block)));
  const bool is_before_table = index + 1 < blocks.size() &&
                               std::holds_alternative<Table>(blocks[index + 1].content) &&
                               !StandsApart(blocks[index + 1]);
  if (StandsApart(block)) {
    waiting_.push_back({.box = BoxOf(block), .blocks = {block}});
  } else if (const auto* paragraph = std::get_if<Paragraph>(&block.content)) {
    WriteText(*paragraph, is_before_table ? UpperEdge(BoxOf(blocks[index + 1])) : 0, section);
  } else if (const auto* table = std::get_if<Table>(&block.content)) {
    WriteTableAt(*table);
  } else if (StandsInFlow(blocks, index)) {
    WriteImage(block, section);
  }
}

void FlowWriter::TakeFloats(double y) {
  if (floats_ == nullptr) {
    return;
  }
  std::erase_if(*floats_, [&](const Floating* floating) {
    const double middle = MiddleX(floating->box);
    const bool is_beside = !room_.is_column || (middle >= room_.left && middle <= room_.right);
    if (is_beside && UpperEdge(floating->box) < y) {
      waiting_.push_back(*floating);
      return true;
    }
    return false;
  });
}

void FlowWriter::TakeAllFloats() {
  if (floats_ != nullptr) {
    for (const Floating* floating : *floats_) {
      waiting_.push_back(*floating);
    }
    floats_->clear();
  }
}

// What would come too low, as tables before it have become higher than they were, or would find no
// room on the page, stays where it was.
bool FlowWriter::StandsApart(const Block& block) const {
  if (apart_.contains(&block)) {
    return true;
  }
  const auto* paragraph = std::get_if<Paragraph>(&block.content);
  if (paragraph == nullptr || room_.depth > 0 || room_.page_bottom <= 0 || HasNoteMark(block)) {
    return false;
  }
  const double shift = cursor_ - TopOf(block, page_.layout);
  const bool is_too_low = shift > kMostShift;
  return is_too_low || (shift > 0 && LowerEdge(BoxOf(block)) + shift > room_.page_bottom);
}

void FlowWriter::SkipTo(double y, const std::function<void()>& section) {
  ParagraphPlace place = PlaceFor(cursor_);
  place.pitch = std::max(y - cursor_, 1.0);
  place.write_section = section;
  WriteSpacer(story_, place);
  cursor_ += OfTwips(place.pitch);
  ends_with_paragraph_ = true;
  is_after_table_ = false;
}

ParagraphPlace FlowWriter::PlaceFor(double top) {
  if (has_start_ && start_.has_spacer && top - cursor_ > kSmallestGap) {
    start_.has_spacer = false;
    SkipTo(top);
  }
  ParagraphPlace place;
  place.left = room_.left;
  place.right = room_.right;
  place.before = std::max(OfTwips(top - cursor_), 0.0);
  if (has_start_) {
    place.begins_page = start_.begins_page;
    place.begins_column = start_.begins_column;
    place.write_anchored = start_.write_anchored;
    has_start_ = false;
  }
  place.is_in_cell = room_.bottom > 0;
  if (!waiting_.empty()) {
    place.write_anchored = [this, anchored = std::move(place.write_anchored),
                            waiting = std::exchange(waiting_, {})] {
      if (anchored) {
        anchored();
      }
      for (const Floating& floating : waiting) {
        WriteFloating(story_, page_, floating);
      }
    };
  }
  return place;
}

double FlowWriter::PitchFor(const Paragraph& paragraph) const {
  const double size = std::max(LargestSize(paragraph, page_.layout.looks), 1.0);
  const double pitch = PitchOf(paragraph);
  if (pitch > size * 0.5) {
    return OfTwips(pitch);
  }
  const double room = (FirstBaseline(paragraph) - cursor_) / kAboveBaseline;
  const bool is_top = room_.depth > 0 && cursor_ <= room_.top;
  const double least = (is_top ? kLeastFirstPitch : kLeastPitch) * size;
  const double wanted = std::clamp(room, least, kUsualPitch * size);
  return OfTwips(room_.bottom > 0
                     ? std::clamp(room_.bottom - kCellEdge - cursor_, kTightPitch * size, wanted)
                     : wanted);
}

// A cell grows with what does not fit, and pushes down all that is below it: its text rather stands
// a little higher.
void FlowWriter::KeepInCell(ParagraphPlace& place, std::size_t lines) const {
  if (room_.bottom > 0) {
    const double free =
        room_.bottom - kCellEdge - cursor_ - place.pitch * static_cast<double>(lines);
    place.before = OfTwips(std::clamp(place.before, 0.0, std::max(free, 0.0)));
  }
}

void FlowWriter::WriteText(const Paragraph& paragraph, double next_top,
                           const std::function<void()>& section) {
  const double pitch = PitchFor(paragraph);
  if (paragraph.initial && has_start_ && (start_.begins_page || start_.begins_column)) {
    SkipTo(cursor_);  // the frame of a letter cannot begin a page
  }
  ParagraphPlace place = PlaceFor(FirstBaseline(paragraph) - kAboveBaseline * pitch);
  place.pitch = pitch;
  place.write_section = section;
  const std::size_t lines = std::max<std::size_t>(paragraph.lines.size(), 1);
  KeepInCell(place, lines);
  cursor_ += place.before + pitch * static_cast<double>(lines);
  if (next_top > cursor_) {
    place.after = OfTwips(next_top - cursor_);
    cursor_ += place.after;
  }
  WriteParagraph(story_, page_, paragraph, place);
  ends_with_paragraph_ = true;
  is_after_table_ = false;
}

void FlowWriter::WriteTableAt(const Table& table) {
  const double top = UpperEdge(table.box);
  if (HasToStart() || is_after_table_ || top - cursor_ > kSmallestGap) {
    SkipTo(top);
  }
  cursor_ += WriteTable(story_, page_, table, room_, cursor_);
  ends_with_paragraph_ = false;
  is_after_table_ = true;
}

bool FlowWriter::WriteImage(const Block& block, const std::function<void()>& section) {
  const auto* picture = std::get_if<Picture>(&block.content);
  const auto* drawing = std::get_if<Drawing>(&block.content);
  if (drawing != nullptr && IsDrawnAsShapes(*drawing)) {
    return false;
  }
  const auto image =
      picture != nullptr ? ImageOf(story_, page_, *picture) : ImageOf(story_, page_, *drawing);
  if (!image) {
    return false;
  }
  const pdf::Box box = BoxOf(block);
  ParagraphPlace place = PlaceFor(UpperEdge(box));
  place.write_section = section;
  WritePictureParagraph(story_, page_, *image, box,
                        picture != nullptr ? picture->description : drawing->description, place);
  cursor_ += place.before + box.height() + kBelowPicture;
  ends_with_paragraph_ = true;
  is_after_table_ = false;
  return true;
}

}  // namespace TarnixTools::engines::office
