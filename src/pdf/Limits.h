// Bounds on what a document may make the core do. Everything read from a file is hostile; passing a
// bound is a clean Error or a coded finding, never more memory or more time.
#ifndef TARNIX_PDF_LIMITS_H_
#define TARNIX_PDF_LIMITS_H_

#include <cstddef>
#include <cstdint>

namespace TarnixTools::pdf::limits {

// Highest object number (ISO 32000-2 annex C names 8,388,607 as the limit of an implementation).
inline constexpr std::uint32_t kMaxObjectNumber = 8'388'607;
// Nesting of arrays and dictionaries in one object; deeper values are read as null.
inline constexpr int kMaxNesting = 500;
// References that lead from one to the next.
inline constexpr int kMaxReferenceSteps = 32;
// Object streams of which each has to be read to read the one before: that of a stream's length.
inline constexpr std::size_t kMaxOpeningStreams = 8;
// Bytes of one object without its stream data.
inline constexpr std::size_t kMaxObjectBytes = std::size_t{256} << 20;
// Bytes that are read again, in ever larger windows, for objects that are longer than a first look:
// this much, and this many times the size of the file.
inline constexpr std::uint64_t kWindowAllowance = std::uint64_t{16} << 20;
inline constexpr std::uint64_t kWindowRatio = 8;
// Values in one object (elements, keys and values together).
inline constexpr std::size_t kMaxObjectValues = std::size_t{8} << 20;
// Decoded bytes of a stream that the core itself has to hold (object streams, cross-reference
// streams).
inline constexpr std::size_t kMaxHeldStream = std::size_t{512} << 20;
// Ratio of decoded to encoded bytes of such a stream, beyond a first allowance (deflate itself
// cannot pass 1032 per filter).
inline constexpr std::size_t kMaxExpansion = 1100;
inline constexpr std::size_t kExpansionAllowance = std::size_t{1} << 20;
// Bytes of a row of deflated data that is decoded row by row.
inline constexpr std::size_t kMaxStreamedRow = std::size_t{16} << 20;
// Decoded bytes of a stream that is written without the filters that only make it longer.
inline constexpr std::size_t kMaxTakenOff = std::size_t{64} << 20;
// Filters in one chain.
inline constexpr int kMaxFilters = 16;
// Cross-reference sections followed through /Prev.
inline constexpr int kMaxXrefSections = 4096;
// Bytes before the header and after the last end-of-file marker in which they are still looked for.
inline constexpr std::size_t kHeaderSearch = 4096;
inline constexpr std::size_t kTrailerSearch = 32768;
// Pages of one document.
inline constexpr std::size_t kMaxPages = 2'000'000;
// Pages that are lost and stand as empty ones, whatever the tree claims.
inline constexpr std::size_t kMaxBlankPages = 10'000;
// Bytes in which an object that is null says so.
inline constexpr std::size_t kMaxNullBytes = 64;
// How far from the origin a page may reach, or something may be drawn, in units of user space.
inline constexpr double kMaxCoordinate = 2'147'483'647;
// Points in one of a page's own units.
inline constexpr double kMinUserUnit = 0.001;
inline constexpr double kMaxUserUnit = 75'000;
// Forms, patterns and other content within each other.
inline constexpr std::size_t kMaxContentDepth = 32;
// Bytes of one content stream, decoded, or of all that make up the content of a page.
inline constexpr std::size_t kMaxContentBytes = std::size_t{256} << 20;
// Streams that make up the content of a page.
inline constexpr std::size_t kMaxContentStreams = 100'000;
// Streams of content that are gone through for one page, those of forms each time they are drawn,
// and the bytes in them.
inline constexpr std::size_t kMaxContentsOfPage = 100'000;
inline constexpr std::uint64_t kMaxContentBytesOfPage = std::uint64_t{4} << 30;
// Saved graphics states, and open marked content.
inline constexpr std::size_t kMaxSavedStates = 100'000;
// Saved states and open marked content that are counted where none is kept, and surplus Q whose
// places are remembered.
inline constexpr std::size_t kMaxCountedStates = 1'000'000;
inline constexpr std::size_t kMaxSurplusRestores = 10'000;
// Pixels of an inline image in one direction.
inline constexpr std::int64_t kMaxInlineImageSide = std::int64_t{1} << 31;
// Segments of one path that are kept.
inline constexpr std::size_t kMaxPathSegments = 500'000;
// Type 3 fonts whose glyphs are gone into on one page.
inline constexpr std::size_t kMaxType3Fonts = 1'000;
// Decoded bytes of the contents of one page or form that are looked through for names of resources.
inline constexpr std::size_t kMaxScannedContent = std::size_t{64} << 20;
// Of all such contents together: this much, and this many times the size of the file. An item of a
// list counts for some bytes.
inline constexpr std::uint64_t kScannedAllowance = std::uint64_t{64} << 20;
inline constexpr std::uint64_t kScannedRatio = 64;
inline constexpr std::uint64_t kBytesPerScannedItem = 64;
// Names of resources: used by one page or form, bytes of one, told apart, and kept for all contents.
inline constexpr std::size_t kMaxUsedNames = 16'384;
inline constexpr std::size_t kMaxNameBytes = 255;
inline constexpr std::size_t kMaxNameIds = std::size_t{1} << 19;
inline constexpr std::size_t kMaxKeptNames = std::size_t{4} << 20;
// Resources that a page leads to, and how deep in each other they are looked for.
inline constexpr std::size_t kMaxResourcesOfPage = 1'000'000;
inline constexpr int kMaxResourceDepth = 64;
// Nesting of form fields.
inline constexpr std::uint32_t kMaxFieldNesting = 100;
// Nesting of layers in lists and in a visibility expression, and how much of that is looked at.
inline constexpr std::size_t kMaxLayerNesting = 64;
inline constexpr std::size_t kMaxLayerTerms = 10'000;
// Bytes of spacing, and of what follows a file's end, that a syntax observer is shown.
inline constexpr std::size_t kMaxSpacing = 64;
// Bytes in which a file's first two lines are looked for, and those after a value in which the
// keyword is that ends its stream or object.
inline constexpr std::size_t kMaxHeaderLines = 1024;
inline constexpr std::size_t kObjectEndSearch = 1024;
// Findings of one code kept per document; later ones are only counted.
inline constexpr std::size_t kMaxFindings = 200;

}  // namespace TarnixTools::pdf::limits

#endif  // TARNIX_PDF_LIMITS_H_
