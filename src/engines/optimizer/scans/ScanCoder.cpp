#include "engines/optimizer/scans/ScanCoder.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string>
#include <utility>

#include "engines/optimizer/images/BitonalImage.h"
#include "engines/optimizer/images/PictureFeatures.h"

namespace TarnixTools::engines::optimizer {

namespace {

// What a form and an image beside it take in a document, more or less.
constexpr std::uint64_t kFormBytes = 300;
constexpr std::uint64_t kStencilBytes = 130;

// How much of each pixel is ink when a layer is seen in some size: a byte a pixel, 255 for all.
SamplePicture CoverageOf(const ScanLayers& layers, const InkLayer& ink, std::uint32_t width,
                         std::uint32_t height) {
  SamplePicture coverage;
  coverage.width = layers.width;
  coverage.height = layers.height;
  coverage.samples.resize(coverage.pixels());
  for (std::uint32_t y = 0; y < layers.height; ++y) {
    const std::uint8_t* const bits = ink.bits.data() + y * layers.stride;
    std::uint8_t* const row = coverage.samples.data() + y * coverage.row_bytes();
    for (std::uint32_t x = 0; x < layers.width; ++x) {
      row[x] = (bits[x / 8] >> (7 - x % 8) & 1U) != 0 ? 255 : 0;
    }
  }
  return SeenIn(std::move(coverage), width, height);
}

class Coder {
 public:
  Coder(const ScanLayers& layers, const SamplePicture& page, const Look& look,
        const ImageGoals& goals)
      : layers_(&layers), page_(&page), look_(&look), goals_(&goals) {
    for (const InkLayer& ink : layers.inks) {
      coverages_.push_back(CoverageOf(layers, ink, page.width, page.height));
    }
  }

  CodedScan Run(const std::vector<PictureSize>& sizes) {
    CodeInks();
    double least = std::numeric_limits<double>::infinity();
    CodedScan best;
    for (const PictureSize& size : sizes) {
      CodedScan scan = CodeWith(size);
      const double cost = CostOf(scan.bytes(), scan.similarity, *goals_);
      if (cost >= least) {
        break;
      }
      least = cost;
      best = std::move(scan);
    }
    best.inks = std::move(inks_);
    return best;
  }

 private:
  void CodeInks() {
    const SamplePicture paper = Scaled(layers_->background, page_->width, page_->height);
    for (std::size_t i = 0; i < layers_->inks.size(); ++i) {
      const BitPicture bits{.rows = layers_->inks[i].bits.data(),
                            .stride = layers_->stride,
                            .width = layers_->width,
                            .height = layers_->height,
                            .black = 1};
      inks_.push_back({.stencil = CodeStencil(bits, goals_->settings.bitonal_codecs),
                       .components = static_cast<std::size_t>(page_->components),
                       .color = ColorOf(i, paper)});
    }
  }

  // The colour with which the page is met best, where ink and paper share pixels.
  std::array<double, 3> ColorOf(std::size_t ink, const SamplePicture& paper) const {
    const auto components = static_cast<std::size_t>(page_->components);
    std::array<double, 3> color{};
    double squares = 0;
    for (std::size_t i = 0; i < page_->pixels(); ++i) {
      const double part = coverages_[ink].samples[i] / 255.0;
      if (part == 0) {
        continue;
      }
      squares += part * part;
      for (std::size_t c = 0; c < components; ++c) {
        color[c] += part * (page_->samples[i * components + c] -
                            (1 - part) * paper.samples[i * components + c]);
      }
    }
    for (double& component : color) {
      component = std::round(squares > 0 ? std::clamp(component / squares, 0.0, 255.0) : 0) / 255;
    }
    return color;
  }

  CodedScan CodeWith(PictureSize size) const {
    const SamplePicture& most = layers_->background;
    if (size.width == most.width && size.height == most.height) {
      return CodeWith(most);
    }
    return CodeWith(Scaled(most, size.width, size.height));
  }

  CodedScan CodeWith(const SamplePicture& background) const {
    CodedScan scan;
    scan.background = CodeAsJpeg(
        background,
        {.quality = goals_->settings.image_quality, .is_subsampled = true, .is_final = true});
    scan.inks = inks_;
    if (const auto decoded = DecodedForLook(scan.background.data)) {
      scan.similarity = SimilarityOf(*decoded);
    }
    if (FeaturesOf(background).is_flat()) {
      TakeLossless(background, scan);
    }
    return scan;
  }

  // Paper without noise takes fewer bytes as it is than as JPEG.
  void TakeLossless(const SamplePicture& background, CodedScan& scan) const {
    CodedPicture coded = CodeWithoutLoss(background, true, Packing::kDense);
    if (coded.data.size() < scan.background.data.size()) {
      scan.background = std::move(coded);
      scan.similarity = SimilarityOf(background);
    }
  }

  double SimilarityOf(const SamplePicture& background) const {
    SamplePicture seen = SeenIn(LightnessOf(background, false), page_->width, page_->height);
    for (std::size_t ink = 0; ink < inks_.size(); ++ink) {
      const int lightness = InkLightness(inks_[ink].color);
      for (std::size_t i = 0; i < seen.samples.size(); ++i) {
        const int part = coverages_[ink].samples[i];
        seen.samples[i] = static_cast<std::uint8_t>(
            (seen.samples[i] * (255 - part) + lightness * part + 127) / 255);
      }
    }
    return StructuralSimilarity(look_->lightness(), seen);
  }

  int InkLightness(const std::array<double, 3>& color) const {
    SamplePicture pixel;
    pixel.width = 1;
    pixel.height = 1;
    pixel.components = page_->components;
    for (std::size_t i = 0; i < static_cast<std::size_t>(pixel.components); ++i) {
      pixel.samples.push_back(static_cast<std::uint8_t>(std::lround(color[i] * 255)));
    }
    return LightnessOf(pixel, false).samples[0];
  }

  const ScanLayers* layers_;
  const SamplePicture* page_;
  const Look* look_;
  const ImageGoals* goals_;
  std::vector<SamplePicture> coverages_;  // of the inks, as the page is seen
  std::vector<CodedInk> inks_;
};

}  // namespace

std::uint64_t CodedScan::bytes() const {
  std::uint64_t sum = kFormBytes + background.data.size();
  for (const CodedInk& ink : inks) {
    sum += kStencilBytes + ink.stencil.data.size();
  }
  return sum;
}

CodedScan CodeScan(const ScanLayers& layers, const SamplePicture& page, const Look& look,
                   const std::vector<PictureSize>& sizes, const ImageGoals& goals) {
  return Coder(layers, page, look, goals).Run(sizes);
}

}  // namespace TarnixTools::engines::optimizer
