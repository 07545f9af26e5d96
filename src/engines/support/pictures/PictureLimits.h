// Bounds on pictures in memory.
#ifndef TARNIX_ENGINES_SUPPORT_PICTURES_PICTURELIMITS_H_
#define TARNIX_ENGINES_SUPPORT_PICTURES_PICTURELIMITS_H_

#include <cstddef>
#include <cstdint>

namespace TarnixTools::engines::limits {

// Pixels of a picture in one direction, be it in a file, in a document or drawn: PDFium computes
// with 32 bits.
inline constexpr std::uint32_t kMaxSide = 1'000'000;

// Bytes of a picture that has to be decoded.
inline constexpr std::uint64_t kMaxDecodedBytes = std::uint64_t{1} << 30;

// Bytes of a picture that is turned, as pixels.
inline constexpr std::size_t kMaxTurnedBytes = std::size_t{512} << 20;

// Bytes of a colour profile; larger ones are left out.
inline constexpr std::size_t kMaxProfileBytes = std::size_t{16} << 20;

// Tags of a colour profile.
inline constexpr std::uint32_t kMaxProfileTags = 1000;

}  // namespace TarnixTools::engines::limits

#endif  // TARNIX_ENGINES_SUPPORT_PICTURES_PICTURELIMITS_H_
