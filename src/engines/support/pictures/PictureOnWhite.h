// Pictures as they are seen on white paper: what is transparent in them shows the paper.
#ifndef TARNIX_ENGINES_SUPPORT_PICTURES_PICTUREONWHITE_H_
#define TARNIX_ENGINES_SUPPORT_PICTURES_PICTUREONWHITE_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "engines/support/pictures/PixelLayout.h"
#include "engines/support/pictures/RowSource.h"

namespace TarnixTools::engines {

using Rgb = std::array<std::uint8_t, 3>;

// Changes `count` pixels to what is seen of them.
//   layout - kGray or kRgb
//   alpha  - a byte for each pixel: 255 for one that is opaque, 0 for one that is not seen
//   matte  - what the pixels are mixed with already, as far as they are transparent (ISO 32000-2,
//            11.6.5.2); in their colours
void PutOnWhite(std::uint8_t* pixels, PixelLayout layout, const std::uint8_t* alpha,
                std::size_t count, const std::optional<Rgb>& matte = std::nullopt);

// A picture through its alpha, on white. Where the two have different sizes, each pixel takes the
// nearest sample of the alpha.
//   alpha - gray: 255 where the picture is opaque
RowSourcePtr PictureOnWhite(RowSourcePtr picture, RowSourcePtr alpha,
                            const std::optional<Rgb>& matte = std::nullopt);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PICTURES_PICTUREONWHITE_H_
