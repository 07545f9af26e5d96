// Colours as people see them.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_COLORS_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_COLORS_H_

#include <cstdint>

#include "engines/support/pages/PageModel.h"

namespace TarnixTools::engines {

// Whether it is not seen on white paper.
inline bool IsWhite(const Rgb& color) {
  constexpr std::uint8_t kWhite = 250;  // in every channel
  return color.red >= kWhite && color.green >= kWhite && color.blue >= kWhite;
}

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_COLORS_H_
