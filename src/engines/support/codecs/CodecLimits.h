// Bounds on what encoded samples may make us do.
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_CODECLIMITS_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_CODECLIMITS_H_

#include <cstddef>
#include <cstdint>

namespace TarnixTools::engines::limits {

// Coefficients of a progressive JPEG image, which are held until its last scan.
inline constexpr std::size_t kMaxCoefficientBytes = std::size_t{1} << 30;

// Coefficients of a JPEG image that is coded anew, which may take as much again.
inline constexpr std::size_t kMaxTranscodedBytes = std::size_t{512} << 20;

// What JPEG 2000 data is decoded into, four bytes a sample.
inline constexpr std::size_t kMaxJpxBytes = std::size_t{1} << 30;

// Bytes at the start of a JPEG file in which its frame header is looked for.
inline constexpr std::uint64_t kMaxJpegHeader = std::uint64_t{1} << 20;

// Segments, chunks or boxes of a file that are gone through.
inline constexpr std::size_t kMaxParts = 4'000'000;

}  // namespace TarnixTools::engines::limits

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_CODECLIMITS_H_
