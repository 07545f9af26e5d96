#include "engines/support/codecs/jbig2/Segments.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "engines/support/codecs/jbig2/Jbig2Limits.h"

namespace TarnixTools::engines::jbig2 {
namespace {

constexpr std::size_t kLeastHeaderBytes = 11;

// The count of referred-to segments, with the retention flags behind it (7.2.4).
std::uint32_t TakeReferredToCount(SegmentFields& fields) {
  const std::uint32_t short_form = fields.Take(1);
  std::uint32_t count = short_form >> 5U;
  if (count == 7) {
    count = (short_form & 0x1FU) << 24U | fields.Take(3);
    fields.TakeBytes(std::size_t{count} / 8 + 1);
  }
  if (count > fields.rest().size()) {
    throw Failure();
  }
  return count;
}

std::optional<Segment> TakeSegment(SegmentFields& fields) {
  if (fields.rest().size() < kLeastHeaderBytes) {
    return std::nullopt;
  }
  Segment segment;
  segment.number = fields.Take(4);
  const std::uint32_t flags = fields.Take(1);
  segment.type = static_cast<SegmentType>(flags & 0x3FU);
  const unsigned size = segment.number <= 256 ? 1 : segment.number <= 65536 ? 2 : 4;
  for (std::uint32_t count = TakeReferredToCount(fields); count > 0; --count) {
    segment.referred_to.push_back(fields.Take(size));
  }
  fields.Take((flags & 0x40U) != 0 ? 4 : 1);  // the page association
  const std::uint32_t length = fields.Take(4);
  segment.data = fields.TakeBytes(length);
  return segment;
}

}  // namespace

std::vector<Segment> SegmentsOf(std::string_view data) {
  std::vector<Segment> segments;
  SegmentFields fields(data);
  while (std::optional<Segment> segment = TakeSegment(fields)) {
    segments.push_back(*std::move(segment));
    if (segments.size() > limits::kMaxSegments) {
      throw Failure();
    }
  }
  return segments;
}

std::uint32_t SegmentFields::Take(unsigned bytes) {
  if (data_.size() < bytes) {
    throw Failure();
  }
  std::uint32_t value = 0;
  for (unsigned i = 0; i < bytes; ++i) {
    value = value << 8U | static_cast<unsigned char>(data_[i]);
  }
  data_.remove_prefix(bytes);
  return value;
}

std::int32_t SegmentFields::TakeSigned(unsigned bytes) {
  const std::uint32_t value = Take(bytes);
  return bytes == 1 ? static_cast<std::int8_t>(value) : static_cast<std::int32_t>(value);
}

void SegmentFields::TakePixels(std::span<TemplatePixel> pixels) {
  for (TemplatePixel& pixel : pixels) {
    pixel.x = TakeSigned(1);
    pixel.y = TakeSigned(1);
  }
}

std::string_view SegmentFields::TakeBytes(std::size_t count) {
  const std::string_view bytes = data_.substr(0, count);
  data_.remove_prefix(bytes.size());
  return bytes;
}

RegionInformation TakeRegionInformation(SegmentFields& fields) {
  RegionInformation region;
  region.width = fields.Take(4);
  region.height = fields.Take(4);
  region.x = fields.TakeSigned(4);
  region.y = fields.TakeSigned(4);
  region.combination_operator = CombinationOperatorOf(fields.Take(1) & 7U);
  return region;
}

CombinationOperator CombinationOperatorOf(std::uint32_t value) {
  return static_cast<CombinationOperator>(std::min<std::uint32_t>(value, 4));
}

}  // namespace TarnixTools::engines::jbig2
