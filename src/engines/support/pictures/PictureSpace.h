// The colour spaces that pictures in memory have, and images that are written.
#ifndef TARNIX_ENGINES_SUPPORT_PICTURES_PICTURESPACE_H_
#define TARNIX_ENGINES_SUPPORT_PICTURES_PICTURESPACE_H_

#include <cstdint>

namespace TarnixTools::engines {

enum class PictureSpace : std::uint8_t {
  kNone,  // the data tells (JPEG 2000)
  kGray,
  kRgb,
  kCmyk,
  kLab,      // CIE L*a*b* with a white point of D50
  kIndexed,  // palette of RGB
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PICTURES_PICTURESPACE_H_
