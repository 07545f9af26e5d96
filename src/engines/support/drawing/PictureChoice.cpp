#include "engines/support/drawing/PictureChoice.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

#include "engines/support/drawing/DrawingLimits.h"
#include "engines/support/images/DocumentImage.h"
#include "engines/support/images/ImageHeaders.h"
#include "engines/support/images/Picture.h"
#include "engines/support/pictures/EnlargedPicture.h"
#include "engines/support/pictures/ReducedPicture.h"
#include "pdf/Error.h"

namespace TarnixTools::engines {
namespace {

using pdf::Object;

// What is this near to a whole pixel does not reach into the next.
constexpr double kTolerance = 0.02;

// A matrix is along the pixels when nothing is moved by more than this, in pixels.
constexpr double kMostSkew = 0.5;

PixelBox BoxOf(const pdf::Matrix& matrix) {
  const auto [left, right] = std::minmax({0.0, matrix.a, matrix.c, matrix.a + matrix.c});
  const auto [top, bottom] = std::minmax({0.0, matrix.b, matrix.d, matrix.b + matrix.d});
  return {static_cast<int>(std::floor(matrix.e + left + kTolerance)),
          static_cast<int>(std::floor(matrix.f + top + kTolerance)),
          static_cast<int>(std::ceil(matrix.e + right - kTolerance)),
          static_cast<int>(std::ceil(matrix.f + bottom - kTolerance))};
}

bool IsModerate(const pdf::Matrix& matrix) {
  constexpr double kMost = 1'000'000;
  const auto fits = [](double value) { return std::abs(value) < kMost; };
  return fits(matrix.a) && fits(matrix.b) && fits(matrix.c) && fits(matrix.d) && fits(matrix.e) &&
         fits(matrix.f);
}

// Whether an image becomes smaller, or a little larger, and has neither too few pixels for that nor
// too many.
bool IsWorthFitting(const ImageObject& image, const PictureFit& fit) {
  const auto width = static_cast<std::uint64_t>(fit.width());
  const auto height = static_cast<std::uint64_t>(fit.height());
  const std::uint64_t pixels = std::uint64_t{image.width} * image.height;
  const bool is_reduced = image.width >= width && image.height >= height;
  const bool is_enlarged = image.width <= width && image.height <= height &&
                           width * height <= limits::kMaxEnlargement * pixels;
  return (is_reduced || is_enlarged) && pixels >= limits::kMinFittedPixels &&
         pixels <= limits::kMaxFittedPixels;
}

// What a colour space is made of, as far as both compute the same: the components, 0 for others.
class PlainSpace {
 public:
  PlainSpace(pdf::Document& document, pdf::Arena& arena) : document_(&document), arena_(&arena) {}

  // 1 for gray and for palettes of plain colours.
  int ComponentsOf(const Object& value) {
    const std::string_view family = FamilyOf(value);
    if (family == "Indexed" || family == "I") {
      return BaseComponentsOf(Item(value, 1)) != 0 ? 1 : 0;
    }
    return BaseComponentsOf(value);
  }

 private:
  int BaseComponentsOf(const Object& value) {
    const std::string_view family = FamilyOf(value);
    if (family == "DeviceGray" || family == "CalGray" || family == "G") {
      return 1;
    }
    if (family == "DeviceRGB" || family == "CalRGB" || family == "RGB") {
      return 3;
    }
    if (family == "ICCBased") {
      const std::int64_t components = Resolve(Item(value, 1).Get("N")).IntegerOr(0);
      return components == 3 ? 3 : 0;
    }
    return 0;
  }

  Object Resolve(const Object& value) { return document_->Resolve(value, *arena_); }

  Object Item(const Object& array, std::size_t index) {
    return index < array.Items().size() ? Resolve(array.Items()[index]) : Object();
  }

  std::string_view FamilyOf(const Object& value) {
    return value.IsName() ? value.Text() : Item(value, 0).Text();
  }

  pdf::Document* document_;
  pdf::Arena* arena_;
};

// Whether the JPEG data is what the dictionary says.
bool IsConsistent(const DocumentImage& image, const ImageFacts& facts, int components) {
  if (!facts.steps.empty()) {
    return false;
  }
  const std::optional<JpegHeader> header = JpegHeaderOf(image);
  return header && header->coding == JpegCoding::kHuffman && header->bits == 8 &&
         header->components == components && header->width == facts.width &&
         header->height == facts.height;
}

bool IsPlain(const DocumentImage& image, const ImageFacts& facts, pdf::Arena& arena) {
  const bool is_opaque = !facts.is_mask && facts.soft_mask == 0 && facts.stencil_mask == 0 &&
                         facts.color_key.empty() && image.dictionary.Get("OC").IsNull() &&
                         image.dictionary.Get("SMaskInData").IsNull();
  const int components = PlainSpace(*image.document, arena).ComponentsOf(facts.color_space);
  if (!is_opaque || components == 0) {
    return false;
  }
  switch (facts.filter) {
    case ImageFilter::kNone:
      return true;
    case ImageFilter::kCcitt:
      return components == 1 && facts.bits == 1;
    case ImageFilter::kDct:
      return facts.bits == 8 && IsConsistent(image, facts, components);
    default:
      return false;
  }
}

}  // namespace

std::pair<int, int> PictureFit::SourceOf(int x, int y) const {
  const int along = is_across ? y : x;
  const int down = is_across ? x : y;
  return {goes_left ? width() - 1 - along : along, goes_up ? height() - 1 - down : down};
}

std::optional<PictureFit> FitOf(const ImageObject& image) {
  const pdf::Matrix& matrix = image.matrix;
  if (!image.is_opaque || !IsModerate(matrix)) {
    return std::nullopt;
  }
  PictureFit fit;
  fit.box = BoxOf(matrix);
  fit.is_across = std::abs(matrix.a) < kMostSkew && std::abs(matrix.d) < kMostSkew;
  const bool is_along = std::abs(matrix.b) < kMostSkew && std::abs(matrix.c) < kMostSkew;
  if (is_along == fit.is_across || fit.box.IsEmpty() || fit.box.With(image.clip).IsEmpty()) {
    return std::nullopt;
  }
  // The image's upper edge is where the unit square's is, and rows of the bitmap go downwards.
  fit.goes_left = (fit.is_across ? matrix.b : matrix.a) < 0;
  fit.goes_up = (fit.is_across ? matrix.c : matrix.d) > 0;
  fit.comes_in_order = is_along && !fit.goes_left && !fit.goes_up;
  const std::uint64_t held = std::uint64_t{3} * static_cast<std::uint64_t>(fit.box.width()) *
                             static_cast<std::uint64_t>(fit.box.height());
  if (!IsWorthFitting(image, fit) || (!fit.comes_in_order && held > limits::kMaxHeldImageBytes)) {
    return std::nullopt;
  }
  return fit;
}

bool IsSamePlace(const pdf::Matrix& first, const pdf::Matrix& second) {
  constexpr double kMost = 0.5;  // points
  const std::array<double, 6> differences = {first.a - second.a, first.b - second.b,
                                             first.c - second.c, first.d - second.d,
                                             first.e - second.e, first.f - second.f};
  return std::all_of(differences.begin(), differences.end(),
                     [](double difference) { return std::abs(difference) < kMost; });
}

bool ChangesColors(pdf::Document& document, const Object& resources) {
  pdf::Arena arena;
  const Object spaces = document.Resolve(resources.Get("ColorSpace"), arena);
  if (spaces.Has("DefaultGray") || spaces.Has("DefaultRGB")) {
    return true;
  }
  const auto states = document.Resolve(resources.Get("ExtGState"), arena).Entries();
  return states.size() > limits::kMaxStatesLookedAt ||
         std::any_of(states.begin(), states.end(), [&](const pdf::DictionaryEntry& entry) {
           const Object state = document.Resolve(entry.value, arena);
           return state.Has("TR") || state.Has("TR2");
         });
}

RowSourcePtr OpenFitted(pdf::Document& document, std::uint32_t number, const ImageObject& object,
                        const PictureFit& fit) {
  pdf::Arena arena;
  const DocumentImage image = ImageObjectOf(document, number, arena);
  const ImageFacts facts = FactsOf(image, arena);
  if (facts.width != object.width || facts.height != object.height ||
      !IsPlain(image, facts, arena)) {
    return nullptr;
  }
  const auto width = static_cast<std::uint32_t>(fit.width());
  const auto height = static_cast<std::uint32_t>(fit.height());
  // PDFium may make more of a damaged one.
  return pdf::UnlessDamaged(RowSourcePtr(), [&]() -> RowSourcePtr {
    RowSourcePtr picture = OpenPicture(image, facts, {width, height});
    if (picture == nullptr ||
        (facts.filter != ImageFilter::kDct && picture->height() != facts.height)) {
      return nullptr;
    }
    if (picture->width() <= width && picture->height() <= height) {
      return EnlargePicture(std::move(picture), width, height);
    }
    return picture->width() < width || picture->height() < height
               ? nullptr
               : ReducePicture(std::move(picture), width, height);
  });
}

}  // namespace TarnixTools::engines
