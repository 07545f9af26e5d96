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

// Bytes of a picture that is filled up when its data is cut, whatever is there of it; larger ones
// are only when the data can hold a good part of them.
inline constexpr std::size_t kAlwaysInflated = std::size_t{64} << 20;
// Bytes of a PNG file's chunk that is not the picture.
inline constexpr std::size_t kMaxSmallChunk = std::size_t{1} << 16;
// Bytes of the Exif data of a WebP file.
inline constexpr std::uint64_t kMaxExifBytes = std::uint64_t{1} << 20;
// Bytes of the JPEG tables in a TIFF file, and samples of a pixel.
inline constexpr std::size_t kMaxTiffTables = std::size_t{64} << 10;
inline constexpr int kMaxTiffSamples = 64;

}  // namespace TarnixTools::engines::limits

#endif  // TARNIX_ENGINES_SUPPORT_IMAGEFILES_IMAGEFILELIMITS_H_
