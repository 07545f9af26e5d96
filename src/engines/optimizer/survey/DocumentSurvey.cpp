#include "engines/optimizer/survey/DocumentSurvey.h"

#include <algorithm>
#include <cmath>

#include "foundation/JobWatch.h"
#include "pdf/content/ContentWalker.h"
#include "pdf/content/UnshownContent.h"
#include "pdf/tree/PageGeometry.h"

namespace TarnixTools::engines::optimizer {

namespace {

constexpr pdf::Box kUnitSquare = {0, 0, 1, 1};

pdf::WalkOptions OptionsFor(bool with_text) {
  return {.images = true,
          .text = with_text,
          .clips = true,
          .style = true,
          .forms = true,
          .patterns = true,
          .soft_masks = true,
          .glyphs = true,
          .appearances = true};
}

// What undoes the matrix; nothing for one that draws things without area.
std::optional<pdf::Matrix> InverseOf(const pdf::Matrix& m) {
  const double area = m.a * m.d - m.b * m.c;
  if (!m.IsFinite() || std::abs(area) < 1e-12) {
    return std::nullopt;
  }
  return pdf::Matrix{m.d / area,
                     -m.b / area,
                     -m.c / area,
                     m.a / area,
                     (m.c * m.f - m.d * m.e) / area,
                     (m.b * m.e - m.a * m.f) / area};
}

// Whether what is painted hides what is behind it, and neither depends on how.
bool IsPlain(const pdf::GraphicsState& state) {
  const pdf::Transparency& transparency = state.transparency;
  const pdf::Object& mode = transparency.blend_mode;
  return transparency.fill_alpha >= 1 && transparency.soft_mask.IsNull() &&
         (mode.IsNull() || (mode.IsName() && mode.Text() == "Normal")) &&
         !state.rendering.overprints_fills;
}

bool IsPageOrForm(pdf::ResourceKind kind) {
  return kind == pdf::ResourceKind::kPage || kind == pdf::ResourceKind::kForm;
}

void AddTo(pdf::Box& around, const pdf::Box& box) {
  around = {std::min(around.left, box.left), std::min(around.bottom, box.bottom),
            std::max(around.right, box.right), std::max(around.top, box.top)};
}

}  // namespace

void ImagePlacement::Include(const ImagePlacement& other) {
  width_points = std::max(width_points, other.width_points);
  height_points = std::max(height_points, other.height_points);
  AddTo(shown, other.shown);
  is_known = is_known && other.is_known;
  is_page_picture = is_page_picture && other.is_page_picture;
  has_default_spaces = has_default_spaces || other.has_default_spaces;
}

DocumentSurvey::DocumentSurvey(pdf::Document& document, const pdf::PageTree& pages,
                               pdf::ContentVisitor* text)
    : text_(text) {
  WalkPages(document, pages);
  WalkRest(document, pages);
}

void DocumentSurvey::WalkPages(pdf::Document& document, const pdf::PageTree& pages) {
  pdf::ContentWalker walker(document, *this, OptionsFor(text_ != nullptr));
  JobSteps steps(static_cast<std::int64_t>(pages.pages().size()));
  for (std::size_t i = 0; i < pages.pages().size(); ++i) {
    const pdf::PageGeometry geometry = pdf::ReadPageGeometry(document, pages, pages.pages()[i]);
    page_ = {0, 0, geometry.SeenWidth(), geometry.SeenHeight()};
    walker.BeginPage(pages, i, geometry.ToSeenPoints());
    walker.Run();
    EndPage();
    steps.Done();
  }
}

void DocumentSurvey::EndPage() {
  for (const std::uint32_t number : page_pictures_) {
    placements_[number].is_page_picture =
        placements_[number].is_page_picture && images_on_page_ == 1;
  }
  images_on_page_ = 0;
  page_pictures_.clear();
}

void DocumentSurvey::WalkRest(pdf::Document& document, const pdf::PageTree& pages) {
  has_places_ = false;
  pdf::ContentWalker walker(document, *this, OptionsFor(text_ != nullptr));
  pdf::WalkUnshown(document, pages, walker, entered_);
}

const ImagePlacement* DocumentSurvey::PlacementOf(std::uint32_t number) const {
  const auto found = placements_.find(number);
  return found != placements_.end() ? &found->second : nullptr;
}

std::vector<std::uint32_t> DocumentSurvey::Images() const {
  std::vector<std::uint32_t> numbers;
  numbers.reserve(placements_.size());
  for (const auto& [number, placement] : placements_) {
    numbers.push_back(number);
  }
  std::sort(numbers.begin(), numbers.end());
  return numbers;
}

bool DocumentSurvey::EnterContent(const pdf::ContentEntry& entry) {
  if (entry.kind != pdf::ResourceKind::kPage) {
    entered_.insert(entry.number);
  }
  depth_in_others_ += IsPageOrForm(entry.kind) ? 0 : 1;
  has_inline_images_.push_back(false);
  return true;
}

void DocumentSurvey::LeaveContent(const pdf::ContentEntry& entry) {
  depth_in_others_ -= IsPageOrForm(entry.kind) ? 0 : 1;
  if (has_inline_images_.back() && entry.kind != pdf::ResourceKind::kPage) {
    contents_with_images_.insert(entry.number);
  } else if (has_inline_images_.back()) {
    for (const pdf::PageContents::Part& part : entry.parts) {
      contents_with_images_.insert(part.number);
    }
  }
  has_inline_images_.pop_back();
}

// The box around an image that lies askew is larger than the image.
bool DocumentSurvey::CoversPage(const pdf::ImageUse& image) const {
  constexpr double kLeastOfPage = 0.5;
  const pdf::Matrix& m = image.state.matrix;
  const double area = std::abs(m.a * m.d - m.b * m.c);
  return has_places_ && depth_in_others_ == 0 && IsPlain(image.state) &&
         area >= kLeastOfPage * page_.width() * page_.height();
}

void DocumentSurvey::DrawImage(const pdf::ImageUse& image) {
  ++images_on_page_;
  if (image.number == 0) {
    has_inline_images_.back() = true;
    return;
  }
  ImagePlacement& placement = placements_[image.number];
  const bool covers_page = CoversPage(image);
  placement.is_page_picture = placement.is_page_picture && covers_page;
  if (covers_page) {
    page_pictures_.push_back(image.number);
  }
  for (const std::string_view key : {"DefaultGray", "DefaultRGB", "DefaultCMYK"}) {
    placement.has_default_spaces = placement.has_default_spaces || image.color_spaces.Has(key);
  }
  const pdf::Matrix& matrix = image.state.matrix;
  const std::optional<pdf::Matrix> inverse = InverseOf(matrix);
  if (!has_places_ || !inverse) {
    placement.is_known = false;
    placement.shown = kUnitSquare;
    return;
  }
  placement.width_points = std::max(placement.width_points, std::hypot(matrix.a, matrix.b));
  placement.height_points = std::max(placement.height_points, std::hypot(matrix.c, matrix.d));
  const pdf::Box clip = image.state.clip.box.Within(page_);
  const pdf::Box shown = clip.IsEmpty() ? pdf::Box{} : clip.Through(*inverse).Within(kUnitSquare);
  if (!shown.IsEmpty()) {
    AddTo(placement.shown, shown);
  }
}

std::optional<pdf::TextAdvance> DocumentSurvey::ShowText(const pdf::StringUse& string) {
  return text_ != nullptr ? text_->ShowText(string) : std::nullopt;
}

}  // namespace TarnixTools::engines::optimizer
