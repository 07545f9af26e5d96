#include "engines/pdfa/convert/transparency/TransparentAreas.h"

#include <algorithm>
#include <array>

#include "pdf/BoxAround.h"

namespace TarnixTools::engines::pdfa {

using pdf::Box;
using pdf::Object;

namespace {

constexpr pdf::WalkOptions kOptions = {.images = true,
                                       .text = true,
                                       .paths = true,
                                       .shadings = true,
                                       .clips = true,
                                       .style = true,
                                       .forms = true,
                                       .appearances = true};
// What is remembered of a page's painting, and how many areas there are at most.
constexpr std::size_t kMaxPainted = 2'000;
constexpr std::size_t kMaxAreas = 16;
// How wide a code is taken to be at most, in sizes of the text.
constexpr double kCodeWidth = 1.2;

bool Overlap(const Box& left, const Box& right) {
  return !left.Within(right).IsEmpty();
}

bool IsWhite(const pdf::Color& color) {
  std::array<double, 4> numbers{};
  const std::size_t count = color.ReadComponents(numbers);
  return (count == 1 || count == 3) &&
         std::all_of(numbers.begin(), numbers.begin() + static_cast<std::ptrdiff_t>(count),
                     [](double number) { return number == 1; });
}

}  // namespace

TransparentAreas::TransparentAreas(pdf::Document& document, const pdf::PageTree& pages)
    : document_(&document), pages_(&pages), walker_(document, *this, kOptions) {}

TransparentPage TransparentAreas::Find(std::size_t page_index) {
  found_ = {};
  frames_.clear();
  painted_.clear();
  has_painted_more_ = false;
  annotation_ = 0;
  walker_.BeginPage(*pages_, page_index);
  walker_.Run();
  JoinAreas();
  return std::move(found_);
}

bool TransparentAreas::EnterContent(const pdf::ContentEntry& entry) {
  const bool is_appearance = entry.kind == pdf::ResourceKind::kAppearance;
  if (is_appearance) {
    annotation_ = entry.user;
    frames_.clear();
  }
  const bool is_within =
      !frames_.empty() && (frames_.back().is_transparent || IsTransparent(*frames_.back().state));
  frames_.push_back({.state = entry.state, .is_transparent = is_within});
  return true;
}

void TransparentAreas::LeaveContent(const pdf::ContentEntry& /*entry*/) {
  frames_.pop_back();
}

bool TransparentAreas::IsTransparent(const pdf::GraphicsState& state) const {
  const pdf::Transparency& look = state.transparency;
  const bool is_normal = look.blend_mode.IsNull() || look.blend_mode.IsName("Normal") ||
                         look.blend_mode.IsName("Compatible");
  return look.fill_alpha < 1 || look.stroke_alpha < 1 || !is_normal || !look.soft_mask.IsNull();
}

void TransparentAreas::Note(const Box& box, const pdf::GraphicsState& state, bool is_transparent) {
  const Box seen = box.Within(state.clip.box);
  if (state.clip.IsEmpty() || !(seen.right >= seen.left) || !(seen.top >= seen.bottom)) {
    return;
  }
  if (is_transparent && annotation_ != 0) {
    found_.annotations.insert(annotation_);
  } else if (is_transparent) {
    found_.areas.push_back(seen);
    if (found_.areas.size() > kMaxPainted) {
      JoinAreas();
    }
  }
  if (painted_.size() < kMaxPainted) {
    painted_.push_back(seen);
  } else {
    has_painted_more_ = true;
  }
}

bool TransparentAreas::HasPaintUnder(const Box& box) const {
  return has_painted_more_ || std::any_of(painted_.begin(), painted_.end(),
                                          [&](const Box& other) { return Overlap(other, box); });
}

bool TransparentAreas::HasSoftMask(const pdf::ImageUse& image) {
  if (image.number == 0) {
    return false;
  }
  pdf::Arena arena;
  const Object dictionary = document_->Load({image.number, 0}, arena);
  return document_->Resolve(dictionary.Get("SMask"), arena).IsDictionary() ||
         document_->Resolve(dictionary.Get("SMaskInData"), arena).IntegerOr(0) != 0;
}

void TransparentAreas::DrawImage(const pdf::ImageUse& image) {
  const Box box = Box{0, 0, 1, 1}.Through(image.state.matrix);
  const bool is_transparent = frames_.back().is_transparent || IsTransparent(image.state);
  Note(box, image.state, is_transparent || (HasSoftMask(image) && HasPaintUnder(box)));
}

std::optional<pdf::TextAdvance> TransparentAreas::ShowText(const pdf::StringUse& string) {
  if (string.state.text.mode != pdf::TextMode::kInvisible) {
    const auto codes = static_cast<double>(string.bytes.size());
    const Box glyphs = {-0.5, -0.5, 0.5 + codes * kCodeWidth, 1.5};
    Note(glyphs.Through(string.state.text.GlyphMatrix() * string.state.matrix), string.state,
         frames_.back().is_transparent || IsTransparent(string.state));
  }
  return std::nullopt;
}

void TransparentAreas::PaintPath(const pdf::PathUse& path) {
  const bool is_transparent = frames_.back().is_transparent || IsTransparent(path.state);
  if (!is_transparent && path.fills && !path.strokes && IsWhite(path.state.fill)) {
    return;
  }
  const double width = path.strokes ? path.state.line.width : 0;
  const Box pen = Box{-width, -width, width, width}.Through(
      {path.state.matrix.a, path.state.matrix.b, path.state.matrix.c, path.state.matrix.d, 0, 0});
  Note({path.box.left + pen.left, path.box.bottom + pen.bottom, path.box.right + pen.right,
        path.box.top + pen.top},
       path.state, is_transparent);
}

void TransparentAreas::PaintShading(const pdf::ShadingUse& shading) {
  Note(shading.state.clip.box, shading.state,
       frames_.back().is_transparent || IsTransparent(shading.state));
}

// Those that overlap become one; all of them do when they are too many.
void TransparentAreas::JoinAreas() {
  std::vector<Box> joined;
  for (Box area : found_.areas) {
    auto other = joined.begin();
    while (other != joined.end()) {
      if (Overlap(*other, area)) {
        area = pdf::BoxAround(area, *other);
        joined.erase(other);
        other = joined.begin();
      } else {
        ++other;
      }
    }
    joined.push_back(area);
    if (joined.size() > kMaxAreas) {
      Box all = joined.front();
      for (const Box& one : joined) {
        all = pdf::BoxAround(all, one);
      }
      joined = {all};
    }
  }
  found_.areas = std::move(joined);
}

}  // namespace TarnixTools::engines::pdfa
