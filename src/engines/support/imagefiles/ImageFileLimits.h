// Bounds on what an image file may make us do.
#ifndef TARNIX_ENGINES_SUPPORT_IMAGEFILES_IMAGEFILELIMITS_H_
#define TARNIX_ENGINES_SUPPORT_IMAGEFILES_IMAGEFILELIMITS_H_

#include <cstddef>
#include <cstdint>

namespace TarnixTools::engines::limits {

// Bytes of an image file, or of the part of it that has to be held in memory to be decoded.
inline constexpr std::uint64_t kMaxHeldFileBytes = std::uint64_t{1} << 30;
// Pictures in one file.
inline constexpr std::size_t kMaxFrames = 100'000;
// Resolutions, in pixels per inch, that are taken for what they say.
inline constexpr double kMinDpi = 1;
inline constexpr double kMaxDpi = 100'000;

}  // namespace TarnixTools::engines::limits

#endif  // TARNIX_ENGINES_SUPPORT_IMAGEFILES_IMAGEFILELIMITS_H_
