#include "engines/office/pages/ScanCheck.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "engines/support/pages/PageReader.h"
#include "pdf/content/ContentWalker.h"
#include "pdf/tree/PageGeometry.h"

namespace TarnixTools::engines::office {

namespace {

// A stamp, a page number or the name of a scanner is no text of the page.
constexpr std::size_t kMostBytesOfStamp = 60;
constexpr std::size_t kLeastHiddenBytes = 24;
constexpr double kLeastCover = 0.6;
constexpr std::size_t kCells = 32;  // along each side of the page

// Counts text, and marks what images cover on a grid.
class ScanVisitor : public pdf::ContentVisitor {
 public:
  explicit ScanVisitor(const pdf::PageGeometry& geometry)
      : width_(geometry.SeenWidth()), height_(geometry.SeenHeight()) {}

  bool HasText() const { return seen_ > kMostBytesOfStamp || hidden_ >= kLeastHiddenBytes; }

  bool IsCovered() const {
    const auto count = std::count(cells_.begin(), cells_.end(), true);
    return static_cast<double>(count) >= kLeastCover * static_cast<double>(kCells * kCells);
  }

 private:
  std::optional<pdf::TextAdvance> ShowText(const pdf::StringUse& string) override {
    if (!string.is_hidden) {
      const pdf::TextMode mode = string.state.text.mode;
      (pdf::Fills(mode) || pdf::Strokes(mode) ? seen_ : hidden_) += string.bytes.size();
    }
    return std::nullopt;
  }

  void DrawImage(const pdf::ImageUse& image) override {
    const pdf::Box box = pdf::Box{0, 0, 1, 1}
                             .Through(image.state.matrix)
                             .Within(image.state.clip.box)
                             .Within({0, 0, width_, height_});
    if (box.IsEmpty()) {
      return;
    }
    const auto cell = [](double place, double side) {
      return static_cast<std::size_t>(
          std::lround(std::clamp(place / side, 0.0, 1.0) * static_cast<double>(kCells)));
    };
    for (std::size_t y = cell(box.bottom, height_); y < cell(box.top, height_); ++y) {
      for (std::size_t x = cell(box.left, width_); x < cell(box.right, width_); ++x) {
        cells_[y * kCells + x] = true;
      }
    }
  }

  double width_;
  double height_;
  std::size_t seen_ = 0;  // bytes of strings
  std::size_t hidden_ = 0;
  std::array<bool, kCells * kCells> cells_{};
};

}  // namespace

bool IsScannedPage(pdf::Document& document, const pdf::PageTree& pages,
                   const pdf::VisibleLayers& layers, std::size_t page_index) {
  const pdf::PageGeometry geometry =
      pdf::ReadPageGeometry(document, pages, pages.pages()[page_index]);
  ScanVisitor visitor(geometry);
  pdf::ContentWalker walker(document, visitor,
                            {.images = true,
                             .text = true,
                             .clips = true,
                             .marks = true,
                             .forms = true,
                             .layers = &layers});
  walker.BeginPage(pages, page_index, geometry.ToSeenPoints());
  while (!visitor.HasText() && walker.Step()) {
  }
  return !visitor.HasText() && visitor.IsCovered();
}

}  // namespace TarnixTools::engines::office
