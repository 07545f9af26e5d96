// How the pixels of a row lie in memory.
#ifndef TARNIX_ENGINES_SUPPORT_PICTURES_PIXELLAYOUT_H_
#define TARNIX_ENGINES_SUPPORT_PICTURES_PIXELLAYOUT_H_

#include <cstddef>
#include <cstdint>

namespace TarnixTools::engines {

// Eight bits a component. kBgrx has a fourth byte that does not matter.
enum class PixelLayout : std::uint8_t { kGray, kRgb, kBgrx };

constexpr std::size_t BytesPerPixel(PixelLayout layout) {
  return layout == PixelLayout::kGray ? 1 : layout == PixelLayout::kRgb ? 3 : 4;
}

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PICTURES_PIXELLAYOUT_H_
