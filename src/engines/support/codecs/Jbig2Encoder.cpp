#include "engines/support/codecs/Jbig2Encoder.h"

#include <algorithm>
#include <cstdint>

#include "engines/support/codecs/jbig2/AdaptivePixel.h"
#include "engines/support/codecs/jbig2/GenericRegionEncoder.h"
#include "engines/support/codecs/jbig2/Jbig2Limits.h"
#include "engines/support/codecs/jbig2/Segments.h"

namespace TarnixTools::engines {
namespace {

using jbig2::SegmentType;

constexpr std::uint32_t kPageNumber = 1;

// Template 0, typical prediction (7.4.6.2).
constexpr std::uint32_t kGenericFlags = 0x08;

// Whether no pixel is left to be refined, in black on white (7.4.8.5).
constexpr std::uint32_t kPageFlags = 0x01;

// Puts numbers together, high byte first.
class Fields {
 public:
  Fields& Put(std::uint32_t value, unsigned bytes) {
    for (unsigned i = bytes; i-- > 0;) {
      bytes_ += static_cast<char>(value >> (8 * i));
    }
    return *this;
  }

  Fields& Put(const std::string& bytes) {
    bytes_ += bytes;
    return *this;
  }

  const std::string& bytes() const { return bytes_; }

 private:
  std::string bytes_;
};

bool CanBeDecoded(const BitPicture& picture) {
  const std::uint32_t longer_side = std::max(picture.width, picture.height);
  return picture.width > 0 && picture.height > 0 && longer_side <= jbig2::limits::kMaxEncodedSide &&
         std::uint64_t{picture.width} * picture.height <= jbig2::limits::kMaxPixels;
}

// A segment that refers to none (7.2).
void PutSegment(Fields& stream, std::uint32_t number, SegmentType type, const Fields& data) {
  stream.Put(number, 4)
      .Put(static_cast<std::uint32_t>(type), 1)
      .Put(0, 1)
      .Put(kPageNumber, 1)
      .Put(static_cast<std::uint32_t>(data.bytes().size()), 4)
      .Put(data.bytes());
}

Fields PageInformation(const BitPicture& picture) {
  Fields fields;
  fields.Put(picture.width, 4).Put(picture.height, 4);
  fields.Put(0, 4).Put(0, 4);  // the resolution is not told
  fields.Put(kPageFlags, 1).Put(0, 2);
  return fields;
}

Fields Region(const BitPicture& picture, const jbig2::AdaptivePixels& adaptive) {
  Fields fields;
  fields.Put(picture.width, 4).Put(picture.height, 4).Put(0, 4).Put(0, 4);
  fields.Put(static_cast<std::uint32_t>(jbig2::CombinationOperator::kOr), 1);
  fields.Put(kGenericFlags, 1);
  for (const jbig2::TemplatePixel& pixel : adaptive) {
    fields.Put(static_cast<std::uint32_t>(pixel.x), 1).Put(static_cast<std::uint32_t>(pixel.y), 1);
  }
  jbig2::GenericRegionEncoder encoder(picture, adaptive[0]);
  encoder.EncodeRows();
  fields.Put(encoder.Finish());
  return fields;
}

}  // namespace

std::optional<std::string> EncodeJbig2(const BitPicture& picture) {
  if (!CanBeDecoded(picture)) {
    return std::nullopt;
  }
  Fields stream;
  PutSegment(stream, 0, SegmentType::kPageInformation, PageInformation(picture));
  jbig2::AdaptivePixels adaptive = jbig2::kNominalPixels;
  adaptive[0] = jbig2::ChooseAdaptivePixel(picture);
  PutSegment(stream, 1, SegmentType::kImmediateLosslessGenericRegion, Region(picture, adaptive));
  return stream.bytes();
}

}  // namespace TarnixTools::engines
