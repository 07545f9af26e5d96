#include "engines/pdfa/convert/tags/TextBlocks.h"

#include <algorithm>
#include <cmath>

#include "pdf/BoxAround.h"

namespace TarnixTools::engines::pdfa {

using pdf::Point;

namespace {

// All but the first are in sizes of the text.
constexpr double kSameDirection = 0.98;  // cosine of the angle
constexpr double kSameLine = 0.5;        // superscripts are within it
constexpr double kLargestGap = 2.5;      // a column begins beyond it
constexpr double kLeastSpacing = 0.5;
constexpr double kMostSpacing = 1.9;
constexpr double kSameSpacing = 0.25;
constexpr double kIndent = 1.2;
constexpr double kOutdent = 4;
// Shares.
constexpr double kSameSize = 0.2;
constexpr double kEarlyEnd = 0.3;

double Product(const Point& left, const Point& right) {
  return left.x * right.x + left.y * right.y;
}

pdf::Box BoxOf(const TextRun& run) {
  const Point above = {run.up.x * run.size, run.up.y * run.size};
  return pdf::BoxAround(
      pdf::Box::OfCorners(run.begin.x, run.begin.y, run.end.x + above.x, run.end.y + above.y),
      pdf::Box::OfCorners(run.end.x, run.end.y, run.begin.x + above.x, run.begin.y + above.y));
}

}  // namespace

TextBlocks::Place TextBlocks::PlaceOf(const Point& point) const {
  return {Product(point, along_), Product(point, up_)};
}

std::uint32_t TextBlocks::Add(const TextRun& run) {
  const bool is_same_way = is_open_ && Product(run.along, along_) > kSameDirection &&
                           Product(run.up, up_) > kSameDirection;
  const Place place = PlaceOf(run.begin);
  if (is_same_way && IsNextLine(run, place)) {
    spacing_ = line_.up - place.up;
    BeginLine(place);
  } else if (!is_same_way || !GoesOnLine(run, place)) {
    Begin(run);
  }
  Extend(run);
  return static_cast<std::uint32_t>(blocks_->size() - 1);
}

void TextBlocks::Extend(const TextRun& run) {
  PageBlock& block = blocks_->back();
  line_end_ = std::max(line_end_, PlaceOf(run.end).along);
  left_ = std::min(left_, PlaceOf(run.begin).along);
  right_ = std::max(right_, line_end_);
  block.box = pdf::BoxAround(block.box, BoxOf(run));
  block.codes += run.codes;
  if (run.codes > codes_) {
    codes_ = run.codes;
    size_ = run.size;
    block.size = run.size;
  }
}

void TextBlocks::Begin(const TextRun& run) {
  blocks_->push_back({.box = BoxOf(run)});
  is_open_ = true;
  along_ = run.along;
  up_ = run.up;
  size_ = run.size;
  codes_ = 0;
  spacing_ = 0;
  const Place place = PlaceOf(run.begin);
  left_ = place.along;
  right_ = place.along;
  BeginLine(place);
}

void TextBlocks::BeginLine(const Place& place) {
  ++blocks_->back().lines;
  line_ = place;
  line_end_ = place.along;
}

bool TextBlocks::GoesOnLine(const TextRun& run, const Place& place) const {
  const double size = std::max(run.size, size_);
  return std::abs(place.up - line_.up) <= kSameLine * size &&
         place.along <= line_end_ + kLargestGap * size && place.along >= line_.along - size;
}

bool TextBlocks::IsNextLine(const TextRun& run, const Place& place) const {
  const double spacing = line_.up - place.up;
  const bool is_below = spacing > kLeastSpacing * size_ && spacing < kMostSpacing * size_;
  const bool is_spaced = spacing_ == 0 || std::abs(spacing - spacing_) <= kSameSpacing * size_;
  const bool has_size = std::abs(run.size - size_) <= kSameSize * size_;
  const bool is_under = place.along < right_ && place.along > left_ - kOutdent * size_;
  const bool is_indented = spacing_ != 0 && place.along > line_.along + kIndent * size_;
  return is_below && is_spaced && has_size && is_under && !is_indented && !EndedEarly();
}

// Whether the line is the last one of a paragraph.
bool TextBlocks::EndedEarly() const {
  return spacing_ != 0 && right_ - line_end_ > kEarlyEnd * (right_ - left_);
}

}  // namespace TarnixTools::engines::pdfa
