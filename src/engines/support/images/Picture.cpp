#include "engines/support/images/Picture.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "engines/support/images/ColorRows.h"
#include "engines/support/images/ColorSpace.h"
#include "engines/support/images/ImageAlpha.h"
#include "engines/support/images/ImageColors.h"
#include "engines/support/pictures/PictureOnWhite.h"

namespace TarnixTools::engines {
namespace {

// A picture without what its colour key leaves out, on white. The key looks at the samples that the
// colours are made of, so that they are decoded once.
class KeyedRows : public RowSource {
 public:
  KeyedRows(std::unique_ptr<ColorRows> colors, ColorKey key)
      : RowSource(colors->width(), colors->height(), colors->layout()),
        colors_(std::move(colors)),
        key_(std::move(key)),
        alpha_(width()) {}

  bool ReadRow(std::uint8_t* row) override {
    const bool is_there = colors_->ReadRow(row);
    key_.AlphaOf(colors_->last_samples(), alpha_.data());
    PutOnWhite(row, layout(), alpha_.data(), width());
    return is_there;
  }

  std::uint64_t held_bytes() const override { return colors_->held_bytes(); }

 private:
  std::unique_ptr<ColorRows> colors_;
  ColorKey key_;
  std::vector<std::uint8_t> alpha_;
};

// The colour that a matte is in the colour space of its picture; nothing for colour spaces in which
// mixing is not what it is in sRGB.
std::optional<Rgb> ColorOfMatte(const DocumentImage& image, const ImageFacts& facts,
                                const std::vector<double>& matte) {
  if (matte.empty()) {
    return std::nullopt;
  }
  pdf::Arena arena;
  const auto space = ColorSpaceOf(*image.document, facts.color_space, arena);
  if (!space || matte.size() != static_cast<std::size_t>(space->components) ||
      !space->is_computed() || space->kind == ColorKind::kLab ||
      space->kind == ColorKind::kIndexed) {
    return std::nullopt;
  }
  std::vector<std::uint8_t> components;
  components.reserve(matte.size());
  for (const double value : matte) {
    components.push_back(static_cast<std::uint8_t>(std::lround(std::clamp(value, 0.0, 1.0) * 255)));
  }
  Rgb color{};
  ToRgb(*space, components.data(), color.data(), 1);
  return color;
}

RowSourcePtr WithoutKeyed(std::unique_ptr<ColorRows> colors, const ImageFacts& facts) {
  std::optional<ColorKey> key = ColorKey::Make(facts.color_key, colors->format());
  if (!key) {
    return colors;
  }
  return std::make_unique<KeyedRows>(std::move(colors), *std::move(key));
}

}  // namespace

RowSourcePtr OpenPicture(const DocumentImage& image, const ImageFacts& facts, PictureSize least) {
  ImageColors opened = OpenColors(image, facts, least);
  if (opened.colors == nullptr) {
    return std::move(opened.drawn);
  }
  RowSourcePtr picture = WithoutKeyed(std::move(opened.colors), facts);
  if (opened.alpha) {
    ImageAlpha alpha =
        AlphaOfChannel(*std::move(opened.alpha), picture->width(), picture->height());
    const std::optional<Rgb> black = alpha.is_premultiplied ? std::optional(Rgb{}) : std::nullopt;
    picture = PictureOnWhite(std::move(picture), std::move(alpha.rows), black);
  }
  if (std::optional<ImageAlpha> mask = OpenMask(image, facts)) {
    const std::optional<Rgb> matte = ColorOfMatte(image, facts, mask->matte);
    picture = PictureOnWhite(std::move(picture), std::move(mask->rows), matte);
  }
  return picture;
}

}  // namespace TarnixTools::engines
