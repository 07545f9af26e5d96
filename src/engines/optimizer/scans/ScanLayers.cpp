#include "engines/optimizer/scans/ScanLayers.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include "engines/optimizer/images/Similarity.h"
#include "engines/optimizer/scans/PaperFill.h"

namespace TarnixTools::engines::optimizer {

namespace {

// Fewer shapes are no text worth taking apart.
constexpr std::size_t kLeastShapes = 16;
// Of all that is dark: less of it in print, and it is the dark of a photograph.
constexpr double kLeastPrinted = 0.3;
// Of a page: more ink than this is no text.
constexpr double kMostInk = 0.35;
constexpr std::size_t kMostInks = 6;
// Between components of colours that count as one ink.
constexpr double kSameInk = 40;
// Around ink the paper is dark, too, over so much of an inch.
constexpr double kHaloInches = 1 / 120.0;

double Distance(const InkColor& first, const InkColor& second) {
  double most = 0;
  for (std::size_t i = 0; i < first.size(); ++i) {
    most = std::max(most, std::abs(first[i] - second[i]));
  }
  return most;
}

// Sorts shapes by the colours that they are printed in.
class InkSorter {
 public:
  // The ink of each shape; nothing for one that is no print.
  std::vector<std::optional<std::size_t>> Sort(const std::vector<InkShape>& shapes, double dpi) {
    std::vector<std::size_t> order(shapes.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
      return shapes[a].pixels > shapes[b].pixels;
    });
    std::vector<std::optional<std::size_t>> inks(shapes.size());
    for (const std::size_t i : order) {
      if (shapes[i].IsPrinted(dpi)) {
        inks[i] = InkFor(shapes[i]);
      }
    }
    return inks;
  }

  std::size_t count() const { return inks_.size(); }

 private:
  struct Ink {
    InkColor color{};
    double pixels = 0;
  };

  std::size_t InkFor(const InkShape& shape) {
    std::size_t best = 0;
    double least = 1e9;
    for (std::size_t i = 0; i < inks_.size(); ++i) {
      const double distance = Distance(inks_[i].color, shape.color);
      if (distance < least) {
        least = distance;
        best = i;
      }
    }
    if (least > kSameInk && inks_.size() < kMostInks) {
      best = inks_.size();
      inks_.emplace_back();
    }
    Add(inks_[best], shape);
    return best;
  }

  static void Add(Ink& ink, const InkShape& shape) {
    const auto pixels = static_cast<double>(shape.pixels);
    ink.pixels += pixels;
    for (std::size_t i = 0; i < ink.color.size(); ++i) {
      ink.color[i] += (shape.color[i] - ink.color[i]) * pixels / ink.pixels;
    }
  }

  std::vector<Ink> inks_;
};

// Gives specks that touch what is printed the same ink, such as where one ink runs into another.
void TakeSpecks(const InkShapes& found, double dpi, std::vector<std::optional<std::size_t>>& inks) {
  const std::vector<InkRun>& runs = found.runs;
  for (std::size_t i = 1; i < runs.size(); ++i) {
    const InkRun& left = runs[i - 1];
    const InkRun& right = runs[i];
    if (left.y != right.y || left.right != right.left) {
      continue;
    }
    std::optional<std::size_t>& first = inks[left.shape];
    std::optional<std::size_t>& second = inks[right.shape];
    if (!first && second && found.shapes[left.shape].IsSpeck(dpi)) {
      first = second;
    } else if (first && !second && found.shapes[right.shape].IsSpeck(dpi)) {
      second = first;
    }
  }
}

// How much of what is dark belongs to shapes that have an ink.
double PrintedPart(const InkShapes& found, const std::vector<std::optional<std::size_t>>& inks) {
  std::uint64_t all = 0;
  std::uint64_t printed = 0;
  for (std::size_t i = 0; i < inks.size(); ++i) {
    all += found.shapes[i].pixels;
    printed += inks[i] ? found.shapes[i].pixels : 0U;
  }
  return static_cast<double>(printed) / static_cast<double>(std::max<std::uint64_t>(all, 1));
}

void SetBits(std::vector<std::uint8_t>& bits, std::size_t row_start, std::uint32_t left,
             std::uint32_t right) {
  for (std::uint32_t x = left; x < right; ++x) {
    bits[row_start + x / 8] |= static_cast<std::uint8_t>(0x80U >> (x % 8));
  }
}

}  // namespace

std::optional<ScanLayers> TakeApart(const SamplePicture& picture, double dpi,
                                    PictureSize background) {
  const InkShapes found = FindInk(picture, LightnessOf(picture, false), dpi);
  InkSorter sorter;
  std::vector<std::optional<std::size_t>> inks = sorter.Sort(found.shapes, dpi);
  const auto shapes = static_cast<std::size_t>(
      std::count_if(inks.begin(), inks.end(), [](const auto& ink) { return ink.has_value(); }));
  if (shapes < kLeastShapes) {
    return std::nullopt;
  }
  if (PrintedPart(found, inks) < kLeastPrinted) {
    return std::nullopt;
  }
  TakeSpecks(found, dpi, inks);
  ScanLayers layers{.width = picture.width,
                    .height = picture.height,
                    .stride = (std::size_t{picture.width} + 7) / 8,
                    .inks = std::vector<InkLayer>(sorter.count()),
                    .background = {}};
  for (InkLayer& ink : layers.inks) {
    ink.bits.resize(layers.stride * layers.height);
  }
  const auto halo = static_cast<std::uint32_t>(std::max(1.0, std::round(dpi * kHaloInches)));
  PaperFill paper(picture, halo);
  std::uint64_t pixels = 0;
  for (const InkRun& run : found.runs) {
    if (const std::optional<std::size_t> ink = inks[run.shape]) {
      SetBits(layers.inks[*ink].bits, run.y * layers.stride, run.left, run.right);
      paper.Cover(run.y, run.left, run.right);
      pixels += run.right - run.left;
    }
  }
  if (static_cast<double>(pixels) > kMostInk * static_cast<double>(picture.pixels())) {
    return std::nullopt;
  }
  layers.background = paper.Fill(background);
  return layers;
}

}  // namespace TarnixTools::engines::optimizer
