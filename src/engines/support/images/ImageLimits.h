// Bounds on what an image of a document may make us do.
#ifndef TARNIX_ENGINES_SUPPORT_IMAGES_IMAGELIMITS_H_
#define TARNIX_ENGINES_SUPPORT_IMAGES_IMAGELIMITS_H_

#include <cstddef>
#include <cstdint>

namespace TarnixTools::engines::limits {

// Bytes of an image's decoded samples, and of its encoded data where they have to be held.
inline constexpr std::size_t kMaxSampleBytes = std::size_t{512} << 20;

// Bytes at the start of an image's encoded data in which its header is looked for.
inline constexpr std::uint64_t kMaxHeaderBytes = std::uint64_t{1} << 20;

// Samples that are decoded at once, where that is faster than row by row. A page scanned in gray has
// twice as many, and takes several times its size when it is decoded at once.
inline constexpr std::size_t kMaxSamplesAtOnce = std::size_t{4} << 20;

// Samples of an image that is decoded row by row: a matter of time.
inline constexpr std::uint64_t kMaxStreamedSamples = std::uint64_t{4} << 30;

// Samples that are decoded at once where only a reduced picture is wanted.
inline constexpr std::size_t kMaxSamplesAtOnceForLess = std::size_t{2} << 20;

// Pixels that an image may have without data for them; of a larger one only the rows that have data
// come out.
inline constexpr std::uint64_t kMaxPixelsWithoutData = std::uint64_t{64} << 20;

// Images drawn on one page.
inline constexpr std::size_t kMaxImagesOfPage = 1'000'000;

// Colour spaces within colour spaces.
inline constexpr int kMaxColorSpaceSteps = 8;

// Inks of a DeviceN colour space (ISO 32000-1, annex C).
inline constexpr std::size_t kMaxInks = 32;

// Bytes of an indexed colour space's table: 256 colours of four components.
inline constexpr std::size_t kMaxPaletteBytes = std::size_t{256} * 4;

}  // namespace TarnixTools::engines::limits

#endif  // TARNIX_ENGINES_SUPPORT_IMAGES_IMAGELIMITS_H_
