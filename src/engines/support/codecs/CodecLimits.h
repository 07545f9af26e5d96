// Bounds on what encoded samples may make us do.
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_CODECLIMITS_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_CODECLIMITS_H_

#include <cstddef>
#include <cstdint>

namespace TarnixTools::engines::limits {

// Coefficients of a progressive JPEG image, which are held until its last scan.
inline constexpr std::size_t kMaxCoefficientBytes = std::size_t{1} << 30;

// Scans of a progressive JPEG image that are read; hostile ones have thousands.
inline constexpr int kMaxJpegScans = 500;

// Coefficients of a JPEG image that is coded anew, which may take as much again.
inline constexpr std::size_t kMaxTranscodedBytes = std::size_t{512} << 20;

// Boxes of JPEG 2000 data that tell its colour space, and channels that are told of.
inline constexpr std::size_t kMaxJpxColors = 100;
inline constexpr std::size_t kMaxJpxChannels = std::size_t{64} << 10;

// Components of JPEG 2000 data that is decoded: CMYK and alpha.
inline constexpr std::size_t kMaxJpxComponents = 5;

// What JPEG 2000 data is decoded into, four bytes a sample.
inline constexpr std::size_t kMaxJpxBytes = std::size_t{1} << 30;

// Segments, chunks or boxes of a file that are gone through.
inline constexpr std::size_t kMaxParts = 4'000'000;

// Bytes that are passed over between two segments of a JPEG file.
inline constexpr std::uint64_t kMaxBetweenSegments = std::uint64_t{4} << 20;

// Entries of a TIFF directory.
inline constexpr std::uint64_t kMaxTiffFields = 4096;

}  // namespace TarnixTools::engines::limits

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_CODECLIMITS_H_
