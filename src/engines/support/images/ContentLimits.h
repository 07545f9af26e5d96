// Bounds of going through the content of pages.
#ifndef TARNIX_ENGINES_SUPPORT_IMAGES_CONTENTLIMITS_H_
#define TARNIX_ENGINES_SUPPORT_IMAGES_CONTENTLIMITS_H_

#include <cstddef>
#include <cstdint>

namespace TarnixTools::engines::limits {

// Forms and patterns within each other.
inline constexpr std::size_t kMaxContentDepth = 32;

// Streams of content that are gone through for one page, those of forms each time they are drawn.
inline constexpr std::size_t kMaxContentsOfPage = 100'000;

// Bytes of content that are gone through for one page, those of forms each time they are drawn.
inline constexpr std::uint64_t kMaxContentBytesOfPage = std::uint64_t{4} << 30;

// Bytes of one content stream, decoded.
inline constexpr std::size_t kMaxContentBytes = std::size_t{256} << 20;

// Saved graphics states.
inline constexpr std::size_t kMaxSavedStates = 100'000;

// Images drawn on one page.
inline constexpr std::size_t kMaxImagesOfPage = 1'000'000;

}  // namespace TarnixTools::engines::limits

#endif  // TARNIX_ENGINES_SUPPORT_IMAGES_CONTENTLIMITS_H_
