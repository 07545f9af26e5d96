#include "engines/support/codecs/Exif.h"

#include <cstdint>

#include "engines/support/files/ByteReader.h"
#include "engines/support/pictures/Units.h"

namespace TarnixTools::engines {

namespace {

constexpr std::string_view kPrefix{"Exif\0\0", 6};
constexpr std::uint16_t kOrientationTag = 0x112;
constexpr std::uint16_t kXResolutionTag = 0x11A;
constexpr std::uint16_t kYResolutionTag = 0x11B;
constexpr std::uint16_t kResolutionUnitTag = 0x128;
constexpr std::uint16_t kShortType = 3;
constexpr int kCentimetres = 3;

double Ratio(ByteReader& reader, std::uint32_t offset, ByteOrder order) {
  const std::uint32_t denominator = reader.Number32(std::uint64_t{offset} + 4, order);
  return denominator == 0 ? 0 : double{1} * reader.Number32(offset, order) / denominator;
}

}  // namespace

ExifFacts ReadExif(std::string_view block) {
  ExifFacts facts;
  if (!block.starts_with("MM") && !block.starts_with("II")) {
    return facts;
  }
  const ByteOrder order = block[0] == 'M' ? ByteOrder::kBig : ByteOrder::kLittle;
  pdf::MemorySource source(block);
  ByteReader reader(source);
  const std::uint64_t directory = reader.Number32(4, order);
  const unsigned count = reader.Number16(directory, order);
  int unit = 2;
  for (unsigned i = 0; i < count; ++i) {
    const std::uint64_t entry = directory + 2 + std::uint64_t{12} * i;
    if (!reader.Has(entry, 12)) {
      break;
    }
    const std::uint16_t type = reader.Number16(entry + 2, order);
    const std::uint16_t number = reader.Number16(entry + 8, order);
    const std::uint32_t value = reader.Number32(entry + 8, order);
    switch (reader.Number16(entry, order)) {
      case kOrientationTag:
        facts.orientation = type == kShortType ? ValidOrientation(number) : kUpright;
        break;
      case kXResolutionTag:
        facts.dpi_x = Ratio(reader, value, order);
        break;
      case kYResolutionTag:
        facts.dpi_y = Ratio(reader, value, order);
        break;
      case kResolutionUnitTag:
        unit = number;
        break;
      default:
        break;
    }
  }
  if (unit == kCentimetres) {
    facts.dpi_x *= kCentimetresPerInch;
    facts.dpi_y *= kCentimetresPerInch;
  } else if (unit != 2) {
    facts.dpi_x = facts.dpi_y = 0;
  }
  return facts;
}

ExifFacts ReadExifSegment(std::string_view segment) {
  return ReadExif(segment.starts_with(kPrefix) ? segment.substr(kPrefix.size()) : segment);
}

}  // namespace TarnixTools::engines
