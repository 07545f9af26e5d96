#include "engines/support/images/ReadyJpeg.h"

#include <optional>

#include "engines/support/images/ColorSpace.h"
#include "engines/support/images/ImageHeaders.h"

namespace TarnixTools::engines {

bool IsReadyJpeg(const DocumentImage& image, const ImageFacts& facts, int orientation) {
  if (facts.filter != ImageFilter::kDct || !facts.steps.empty() || orientation != 1 ||
      facts.is_mask || facts.soft_mask != 0 || facts.stencil_mask != 0 ||
      !facts.color_key.empty() || !facts.decode.empty()) {
    return false;
  }
  const std::optional<JpegHeader> header = JpegHeaderOf(image);
  if (!header || header->coding != JpegCoding::kHuffman || header->bits != 8 ||
      header->exif.orientation != 1 || header->width == 0 || header->height == 0 ||
      (header->components != 1 && header->components != 3)) {
    return false;
  }
  pdf::Arena arena;
  const std::int64_t transform =
      image.document->Resolve(facts.filter_parameters.Get("ColorTransform"), arena).IntegerOr(-1);
  if (header->components == 3 && header->adobe_transform < 0 && transform == 0) {
    return false;
  }
  if (facts.color_space.IsNull()) {
    return true;
  }
  const std::optional<ColorSpace> space = ColorSpaceOf(*image.document, facts.color_space, arena);
  return space && space->components == header->components &&
         (space->kind == ColorKind::kGray || space->kind == ColorKind::kRgb ||
          space->kind == ColorKind::kIcc);
}

}  // namespace TarnixTools::engines
