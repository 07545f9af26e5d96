#include "engines/support/images/ImageColors.h"

#include <utility>

#include "engines/support/images/Jbig2Image.h"
#include "engines/support/images/PdfiumPicture.h"

namespace TarnixTools::engines {
namespace {

bool IsGray(const ImageFacts& facts, const std::optional<ColorSpace>& space) {
  if (facts.is_mask) {
    return true;
  }
  const bool is_space_in_data = facts.filter == ImageFilter::kJpx && facts.color_space.IsNull();
  return !is_space_in_data && space && space->kind == ColorKind::kGray;
}

// Whether samples in this colour space are worth being opened. JPEG data always is: PDFium is not
// asked for what cannot be decoded of it.
bool IsDecodedHere(const DocumentImage& image, const ImageFacts& facts,
                   const std::optional<ColorSpace>& space) {
  if (facts.filter == ImageFilter::kDct) {
    return true;
  }
  return space && space->is_computed() &&
         (facts.filter != ImageFilter::kJbig2 || IsOwnJbig2(image, facts));
}

}  // namespace

ImageColors OpenColors(const DocumentImage& image, const ImageFacts& facts, PictureSize least) {
  ImageColors result;
  if (facts.width == 0 || facts.height == 0 || facts.filter == ImageFilter::kUnknown) {
    return result;
  }
  const std::optional<ColorSpace> space = SpaceOf(image, facts);
  if (IsDecodedHere(image, facts, space)) {
    std::optional<ImageSamples> samples = OpenSamples(image, facts, space, least);
    if (samples && samples->space.is_computed()) {
      result.alpha = std::exchange(samples->alpha, std::nullopt);
      result.colors = std::make_unique<ColorRows>(*std::move(samples));
      return result;
    }
    if (!samples && facts.filter == ImageFilter::kDct) {
      return result;
    }
  }
  result.drawn = OpenWithPdfium(image, facts, IsGray(facts, space));
  return result;
}

}  // namespace TarnixTools::engines
