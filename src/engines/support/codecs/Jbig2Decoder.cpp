#include "engines/support/codecs/Jbig2Decoder.h"

#include <algorithm>
#include <vector>

#include "engines/support/codecs/jbig2/PageDecoder.h"

namespace TarnixTools::engines {
namespace {

using jbig2::Segment;
using jbig2::SegmentType;

// Whether the flags of the segment, which stand at this place of its data, say that symbols are
// refined (7.4.2.1.1 and 7.4.3.1.1).
bool RefinesSymbols(const Segment& segment, std::size_t flags_at) {
  return segment.data.size() > flags_at + 1 &&
         (static_cast<unsigned char>(segment.data[flags_at + 1]) & 2U) != 0;
}

constexpr std::size_t kRegionInformationBytes = 17;

// Whether a generic region is coded as fax (7.4.6.2).
bool IsMmr(const Segment& segment) {
  return segment.data.size() > kRegionInformationBytes &&
         (static_cast<unsigned char>(segment.data[kRegionInformationBytes]) & 1U) != 0;
}

bool NeedsOwn(const Segment& segment) {
  switch (segment.type) {
    case SegmentType::kSymbolDictionary:
      return RefinesSymbols(segment, 0);
    case SegmentType::kIntermediateTextRegion:
    case SegmentType::kImmediateTextRegion:
    case SegmentType::kImmediateLosslessTextRegion:
      return RefinesSymbols(segment, kRegionInformationBytes);
    case SegmentType::kIntermediateGenericRegion:
    case SegmentType::kImmediateGenericRegion:
    case SegmentType::kImmediateLosslessGenericRegion:
      return IsMmr(segment);
    case SegmentType::kImmediateHalftoneRegion:
    case SegmentType::kImmediateLosslessHalftoneRegion:
    case SegmentType::kIntermediateRefinementRegion:
    case SegmentType::kImmediateRefinementRegion:
    case SegmentType::kImmediateLosslessRefinementRegion:
      return true;
    default:
      return false;
  }
}

}  // namespace

bool NeedsOwnJbig2(std::string_view globals, std::string_view data) {
  try {
    const std::vector<Segment> first = jbig2::SegmentsOf(globals);
    const std::vector<Segment> second = jbig2::SegmentsOf(data);
    return std::any_of(first.begin(), first.end(), NeedsOwn) ||
           std::any_of(second.begin(), second.end(), NeedsOwn);
  } catch (const jbig2::Failure&) {
    return false;
  }
}

std::optional<Jbig2Rows> DecodeJbig2(std::string_view globals, std::string_view data,
                                     std::uint32_t width, std::uint32_t height) {
  try {
    bool is_complete = true;
    jbig2::PageDecoder page(width, height);
    try {
      for (const std::string_view part : {globals, data}) {
        for (const Segment& segment : jbig2::SegmentsOf(part)) {
          page.Decode(segment);
        }
      }
    } catch (const jbig2::Failure&) {
      if (!page.has_regions()) {
        return std::nullopt;
      }
      is_complete = false;
    }
    return Jbig2Rows{.rows = page.Packed(), .is_complete = is_complete};
  } catch (const jbig2::Failure&) {
    return std::nullopt;
  }
}

}  // namespace TarnixTools::engines
