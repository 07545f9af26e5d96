// Bounds on what a document may make a conversion do.
#ifndef TARNIX_ENGINES_OFFICE_LIMITS_H_
#define TARNIX_ENGINES_OFFICE_LIMITS_H_

#include <cstddef>
#include <cstdint>

#include "engines/support/pages/PageLimits.h"

namespace TarnixTools::engines::office::limits {

using engines::limits::kMaxEntryText;
// Bytes that the pages of a document may take while its layout is made.
inline constexpr std::size_t kMaxBytesOfPages = std::size_t{2} << 30;
// Of one page, and of a document; what is beyond them is left out.
inline constexpr std::size_t kMaxLinksOfPage = 20'000;
inline constexpr std::size_t kMaxMarksOfPage = 100'000;
inline constexpr std::size_t kMaxOutlineItems = 100'000;
// Elements and marked content of a structure tree that are looked at.
inline constexpr std::size_t kMaxStructureItems = 2'000'000;
// How deep in each other elements of a structure tree may be.
inline constexpr std::size_t kMaxStructureDepth = 100;
// Pairs of characters of a face whose distance is kept.
inline constexpr std::size_t kMaxKernPairs = 200'000;
// Points of a side of a page of a DOCX file, which word processors allow (22 inches).
inline constexpr double kMaxWordSide = 1584;
// Points of a side of a slide (ECMA-376, part 1, 19.7.10).
inline constexpr double kMaxSlideSide = 4032;
// Pixels of a picture's longer side.
inline constexpr std::uint32_t kMaxPictureSide = 4000;
// Bytes of an image that goes into the output as it is.
inline constexpr std::size_t kMaxPictureBytes = std::size_t{64} << 20;
// Rows of a sheet, which programs for workbooks allow (ECMA-376, part 1, 18.3.1.73).
inline constexpr std::size_t kMaxSheetRows = 1'048'576;
// Sheets of a workbook; further tables stand below each other on the last one.
inline constexpr std::size_t kMaxSheets = 2'000;

}  // namespace TarnixTools::engines::office::limits

#endif  // TARNIX_ENGINES_OFFICE_LIMITS_H_
