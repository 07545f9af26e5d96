#include "engines/support/codecs/Exif.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "engines/support/files/ByteReader.h"
#include "engines/support/pictures/Units.h"

namespace TarnixTools::engines {

namespace {

constexpr std::string_view kPrefix{"Exif\0\0", 6};

enum ResolutionUnit : std::uint64_t { kInches = 2, kCentimetres = 3 };

// Pixels per inch; 0 where the numbers are a ratio of the sides only.
double InchesOf(std::uint64_t unit) {
  return unit == kInches ? 1 : unit == kCentimetres ? kCentimetresPerInch : 0;
}

}  // namespace

ExifFacts ExifFactsOf(const TiffDirectory& directory, ByteReader& reader) {
  ExifFacts facts;
  const std::uint64_t orientation = directory.Number(reader, TiffTag::kOrientation, kUpright);
  facts.orientation = ValidOrientation(static_cast<long>(std::min<std::uint64_t>(orientation, 9)));
  const double factor = InchesOf(directory.Number(reader, TiffTag::kResolutionUnit, kInches));
  facts.dpi_x = factor * directory.Ratio(reader, TiffTag::kXResolution);
  facts.dpi_y = factor * directory.Ratio(reader, TiffTag::kYResolution);
  return facts;
}

ExifFacts ReadExif(std::string_view block) {
  if (block.starts_with(kPrefix)) {
    block.remove_prefix(kPrefix.size());
  }
  pdf::MemorySource source(block);
  ByteReader reader(source);
  if (!TiffStructure::Recognises(reader)) {
    return {};
  }
  const std::vector<TiffDirectory> directories = TiffStructure::Read(reader, 1);
  return directories.empty() ? ExifFacts() : ExifFactsOf(directories.front(), reader);
}

}  // namespace TarnixTools::engines
