// Where an image of a document is transparent, apart from its colours: soft mask, stencil mask,
// colour key and the alpha channel of JPEG 2000 data (ISO 32000-2, 8.9.6 and 11.6.5), all as alpha.
//
//   if (std::optional<ImageAlpha> alpha = OpenAlpha(image, facts)) {
//     alpha->rows->ReadRow(row);  // 255 where the image is opaque
#ifndef TARNIX_ENGINES_SUPPORT_IMAGES_IMAGEALPHA_H_
#define TARNIX_ENGINES_SUPPORT_IMAGES_IMAGEALPHA_H_

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "engines/support/images/DocumentImage.h"
#include "engines/support/images/ImageSamples.h"
#include "engines/support/images/SampleRows.h"
#include "engines/support/pictures/RowSource.h"

namespace TarnixTools::engines {

enum class AlphaKind : std::uint8_t { kNone, kSoftMask, kStencilMask, kColorKey, kChannel };

// What counts when the dictionary has several. kChannel: of JPEG 2000 data, if that has one.
AlphaKind AlphaKindOf(const ImageFacts& facts);

struct ImageAlpha {
  // Gray: 255 where the image is opaque, 0 where it is not seen. A mask may have a size of its own:
  // it covers the image all the same. Rows without data are opaque for a soft mask and not seen
  // for a stencil mask.
  RowSourcePtr rows;

  // What the colours have been mixed with where they are transparent, in the colour space of the
  // image, each component from 0 to 1 or as /Decode has it. Empty for nothing.
  std::vector<double> matte;

  // The colours have been multiplied by the alpha, which is being mixed with 0.
  bool is_premultiplied = false;
};

// Nothing for an image that is opaque, and for a mask of which nothing can be read. Colour keys and
// alpha channels lie in the image's own data, which is decoded for them alone here. The image is
// used until the rows are read. Throws pdf::Error.
std::optional<ImageAlpha> OpenAlpha(const DocumentImage& image, const ImageFacts& facts);

// The alpha that lies in a stream of its own: soft and stencil masks only.
std::optional<ImageAlpha> OpenMask(const DocumentImage& image, const ImageFacts& facts);

// The channel as rows; the size is that of its image.
ImageAlpha AlphaOfChannel(AlphaChannel channel, std::uint32_t width, std::uint32_t height);

// Which pixels a colour key leaves out (8.9.6.4), by their samples.
class ColorKey {
 public:
  // ranges: pairs of least and most for each component. Nothing for a key that is too short.
  static std::optional<ColorKey> Make(const std::vector<std::int64_t>& ranges,
                                      const SampleFormat& format);

  // samples: a row, as SampleRows::ReadRow gives it. Sets a byte for each pixel: 0 for one that is
  // left out, 255 for others and where there is no data.
  void AlphaOf(std::span<const std::uint8_t> samples, std::uint8_t* alpha);

 private:
  ColorKey(const std::vector<std::int64_t>& ranges, const SampleFormat& format);

  struct Range {
    std::int64_t least = 0;
    std::int64_t most = 0;
  };

  SampleFormat format_;
  std::vector<Range> ranges_;  // of the upper eight bits
  std::vector<std::uint8_t> samples_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_IMAGES_IMAGEALPHA_H_
