// Bounds on the drawing of pages.
#ifndef TARNIX_ENGINES_SUPPORT_DRAWING_DRAWINGLIMITS_H_
#define TARNIX_ENGINES_SUPPORT_DRAWING_DRAWINGLIMITS_H_

#include <chrono>
#include <cstddef>
#include <cstdint>

namespace TarnixTools::engines::limits {

// Time of the processor that a page may take to be drawn. A page of text takes some milliseconds, a
// path of 200,000 dashed lines ten seconds; a page that takes twice that may as well take hours.
inline constexpr std::chrono::seconds kMaxPageTime{20};

// Bytes of the pixels that are drawn at once. A bitmap is drawn in up to 16 bands of that size, and
// in more when it is larger still.
inline constexpr std::size_t kMinBandBytes = std::size_t{1} << 20;
inline constexpr std::size_t kMaxBandBytes = std::size_t{48} << 20;
inline constexpr std::size_t kBands = 16;

// Bytes of a bitmap that is held whole.
inline constexpr std::size_t kMaxBitmapBytes = std::size_t{1} << 30;

// Bytes of a document that PDFium may hold in memory before the document is opened anew.
inline constexpr std::uint64_t kMaxPdfiumBytes = std::uint64_t{4} << 20;

// Pixels of images on a page up to which the page is kept for the fonts it shares with the next.
inline constexpr std::int64_t kMaxKeptImagePixels = 1'000'000;

// Images of a page that are looked at to find that out.
inline constexpr std::size_t kMaxImagesLookedAt = 100;

// Objects of a page up to which it is asked for images that can be fitted before it is drawn.
inline constexpr int kMaxObjectsLookedAt = 20'000;

// Objects of a page's forms, all together, among which text is looked for that is not to be drawn.
inline constexpr int kMaxObjectsOfForms = 500'000;

// Images of a page that are fitted, and bytes that more than one of them may take together; the
// others PDFium draws.
inline constexpr std::size_t kMaxFittedImages = 64;
inline constexpr std::uint64_t kMaxFittedImageBytes = std::uint64_t{64} << 20;

// How often a page may draw an image for that it is decoded each time.
inline constexpr std::ptrdiff_t kMaxTimesFitted = 4;

// Pixels that an image may become for each that it has. PDFium mixes the nearest pixels, too, up to
// twice that.
inline constexpr std::uint64_t kMaxEnlargement = 4;

// Pixels of an image that is worth the trouble, and of the largest that is fitted.
inline constexpr std::uint64_t kMinFittedPixels = 20'000;
inline constexpr std::uint64_t kMaxFittedPixels = std::uint64_t{1} << 29;

// Bytes of a fitted image that has to be held, since its rows do not come from top to bottom.
inline constexpr std::size_t kMaxHeldImageBytes = std::size_t{32} << 20;

// Bytes of decoded content that a page may draw, and that one stream of it may have: PDFium holds
// several times as much for what it finds in there.
inline constexpr std::uint64_t kMaxDrawnBytes = std::uint64_t{256} << 20;
inline constexpr std::size_t kMaxDrawnStreamBytes = std::size_t{128} << 20;

// Graphics states of a page that are looked at for what changes colours.
inline constexpr std::size_t kMaxStatesLookedAt = 200;

// How deep in each other form fields or functions are looked for; each of them lies in an array,
// and all may be objects of their own.
inline constexpr std::uint32_t kMaxUnfoldingDepth = 400;

// Form fields and lists of them that may be met again, beside those that are met once.
inline constexpr std::uint64_t kMaxRepeatedFields = 100'000;

// Functions of a shading, a colour space or a graphics state, each counted wherever it is met, and
// lists of them; a gradient of many colours has some hundreds.
inline constexpr std::uint64_t kMaxUnfoldedFunctions = 10'000;

}  // namespace TarnixTools::engines::limits

#endif  // TARNIX_ENGINES_SUPPORT_DRAWING_DRAWINGLIMITS_H_
