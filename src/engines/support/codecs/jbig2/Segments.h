// The segments that JBIG2 data is made of (ISO/IEC 14492, 7.2), in the order that a PDF document has
// them in: each header followed by its data, without a file header (ISO 32000-2, 7.4.7).
//
//   for (const Segment& segment : SegmentsOf(data)) {
//     SegmentFields fields(segment.data);
//     const std::uint32_t flags = fields.Take(2);
//     ...
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_SEGMENTS_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_SEGMENTS_H_

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "engines/support/codecs/jbig2/Regions.h"

namespace TarnixTools::engines::jbig2 {

// Segment types (7.3) that say something of the picture.
enum class SegmentType : unsigned {
  kSymbolDictionary = 0,
  kIntermediateTextRegion = 4,
  kImmediateTextRegion = 6,
  kImmediateLosslessTextRegion = 7,
  kPatternDictionary = 16,
  kIntermediateHalftoneRegion = 20,
  kImmediateHalftoneRegion = 22,
  kImmediateLosslessHalftoneRegion = 23,
  kIntermediateGenericRegion = 36,
  kImmediateGenericRegion = 38,
  kImmediateLosslessGenericRegion = 39,
  kIntermediateRefinementRegion = 40,
  kImmediateRefinementRegion = 42,
  kImmediateLosslessRefinementRegion = 43,
  kPageInformation = 48,
};

struct Segment {
  std::uint32_t number = 0;
  SegmentType type{};  // may be one that is not listed
  std::vector<std::uint32_t> referred_to;
  std::string_view data;
};

// The segments of the data, which outlives them. The data of the last one may be cut. Throws Failure
// for headers that make no sense and for very many segments.
std::vector<Segment> SegmentsOf(std::string_view data);

// Takes the fields of a segment, which are big-endian, one after the other. All throw Failure behind
// the end of the data.
class SegmentFields {
 public:
  explicit SegmentFields(std::string_view data) : data_(data) {}

  //   bytes - 1 to 4
  std::uint32_t Take(unsigned bytes);

  // A number in two's complement.
  //   bytes - 1 or 4
  std::int32_t TakeSigned(unsigned bytes);

  // The places of adaptive template pixels, as many as there are in the span.
  void TakePixels(std::span<TemplatePixel> pixels);

  // Bytes as they are; fewer when there are no more.
  std::string_view TakeBytes(std::size_t count);

  // What has not been taken: the entropy-coded data behind the fields.
  std::string_view rest() const { return data_; }

 private:
  std::string_view data_;
};

// The region segment information field (7.4.1).
struct RegionInformation {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  std::int64_t x = 0;  // of the upper left corner on the page
  std::int64_t y = 0;
  CombinationOperator combination_operator = CombinationOperator::kOr;
};

RegionInformation TakeRegionInformation(SegmentFields& fields);

// The operator with this number; numbers beyond the last one stand for it.
CombinationOperator CombinationOperatorOf(std::uint32_t value);

}  // namespace TarnixTools::engines::jbig2

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_SEGMENTS_H_
