#include "engines/support/codecs/JpegMarkers.h"

#include <algorithm>
#include <cstring>

#include "engines/support/codecs/CodecLimits.h"
#include "engines/support/codecs/JpegCodes.h"
#include "engines/support/pictures/Units.h"

namespace TarnixTools::engines {
namespace {

// T.81, table B.1.
constexpr std::uint8_t kTem = 0x01;
constexpr std::uint8_t kFirstFrame = 0xC0;
constexpr std::uint8_t kLastFrame = 0xCF;
constexpr std::uint8_t kFirstRestart = 0xD0;
constexpr std::uint8_t kSoi = 0xD8;
constexpr std::uint8_t kEoi = 0xD9;
constexpr std::uint8_t kSos = 0xDA;
constexpr std::uint8_t kDqt = 0xDB;
constexpr std::uint8_t kApp0 = 0xE0;
constexpr std::uint8_t kApp1 = 0xE1;
constexpr std::uint8_t kApp2 = 0xE2;
constexpr std::uint8_t kApp14 = 0xEE;

constexpr std::string_view kJfif{"JFIF\0", 5};
constexpr std::string_view kExif{"Exif\0\0", 6};
constexpr std::string_view kProfile{"ICC_PROFILE\0", 12};
constexpr std::string_view kMorePictures{"MPF\0", 4};
constexpr std::string_view kAdobe = "Adobe";

// SOF0 to SOF15 without DHT, JPG and DAC, which lie between them.
constexpr bool IsFrameHeader(std::uint8_t code) {
  return code >= kFirstFrame && code <= kLastFrame && code != 0xC4 && code != 0xC8 && code != 0xCC;
}

// No segment follows TEM, RSTn, SOI, and 0, which makes data of the 0xFF before it.
constexpr bool StandsAlone(std::uint8_t code) {
  return code == 0 || code == kTem || (code >= kFirstRestart && code <= kSoi);
}

constexpr JpegCoding CodingOf(std::uint8_t frame_code) {
  return frame_code <= 0xC2                         ? JpegCoding::kHuffman
         : frame_code == 0xC9 || frame_code == 0xCA ? JpegCoding::kArithmetic
                                                    : JpegCoding::kOther;
}

// Of the codes in use: the second of each kind (SOF2, SOF6, SOF10, SOF14).
constexpr bool IsProgressive(std::uint8_t frame_code) {
  return (frame_code & 3U) == 2;
}

struct Marker {
  std::uint8_t code = 0;
  std::uint64_t place = 0;  // of its 0xFF
};

// The next marker that starts before `end` and has a segment or ends the picture.
std::optional<Marker> NextMarker(ByteReader& reader, std::uint64_t place, std::uint64_t end) {
  while (place < end && reader.Has(place, 2)) {
    const std::string_view view = reader.Available(place);
    if (view.empty()) {
      break;  // the source became shorter
    }
    const void* found = std::memchr(view.data(), 0xFF, view.size());
    if (found == nullptr) {
      place += view.size();
      continue;
    }
    place += static_cast<std::uint64_t>(static_cast<const char*>(found) - view.data());
    const std::uint8_t code = reader.Byte(place + 1);
    if (code == 0xFF) {
      place += 1;
    } else if (StandsAlone(code)) {
      place += 2;
    } else {
      return Marker{code, place};
    }
  }
  return std::nullopt;
}

class HeaderReader {
 public:
  explicit HeaderReader(ByteReader& reader) : reader_(&reader) {}

  std::optional<JpegHeader> Read() {
    if (reader_->View(0, kJpegStart.size()) != kJpegStart) {
      return std::nullopt;
    }
    std::uint64_t place = kJpegStart.size();
    for (std::size_t parts = 0; parts < limits::kMaxParts; ++parts) {
      const auto marker = NextMarker(*reader_, place, place + limits::kMaxBetweenSegments);
      if (!marker || marker->code == kEoi) {
        break;
      }
      if (marker->code == kSos) {
        header_.scan_start = marker->place;
        break;
      }
      const std::size_t length = reader_->Number16(marker->place + 2);
      if (length < 2 || !reader_->Has(marker->place + 2, length)) {
        break;
      }
      ReadSegment(marker->code, marker->place + 4, length - 2);
      place = marker->place + 2 + length;
    }
    return has_frame_ ? std::optional(std::move(header_)) : std::nullopt;
  }

 private:
  void ReadSegment(std::uint8_t code, std::uint64_t start, std::size_t length) {
    if (IsFrameHeader(code) && !has_frame_) {
      ReadFrameHeader(code, start, length);
      return;
    }
    if (code == kDqt) {
      ReadSteps(start, length);
      return;
    }
    const std::string_view head = reader_->View(start, std::min<std::size_t>(length, 16));
    if (code == kApp0 && head.starts_with(kJfif) && length >= 12) {
      ReadJfif(start);
    } else if (code == kApp1 && head.starts_with(kExif)) {
      header_.exif = ReadExif(reader_->Read(start, length));
    } else if (code == kApp2 && head.starts_with(kProfile) && length > 14) {
      header_.profile_parts.push_back({start + 14, length - 14, reader_->Byte(start + 12)});
    } else if (code == kApp2 && head.starts_with(kMorePictures)) {
      header_.has_more_pictures = true;
    } else if (code == kApp14 && head.starts_with(kAdobe) && length >= 12) {
      header_.adobe_transform = reader_->Byte(start + 11);
    }
  }

  void ReadFrameHeader(std::uint8_t code, std::uint64_t start, std::size_t length) {
    const std::size_t components = reader_->Byte(start + 5);
    if (length < 6 + 3 * components) {
      return;
    }
    has_frame_ = true;
    header_.coding = CodingOf(code);
    header_.is_progressive = IsProgressive(code);
    header_.bits = reader_->Byte(start);
    header_.height = reader_->Number16(start + 1);
    header_.width = reader_->Number16(start + 3);
    header_.components = static_cast<int>(components);
    for (std::size_t i = 0; i < std::min(components, header_.component.size()); ++i) {
      const std::uint64_t place = start + 6 + 3 * i;
      const unsigned factors = reader_->Byte(place + 1);
      header_.component[i] = {.id = reader_->Byte(place),
                              .across = static_cast<std::uint8_t>(factors >> 4U),
                              .down = static_cast<std::uint8_t>(factors & 15U),
                              .table = reader_->Byte(place + 2)};
    }
  }

  // Tables of 64 numbers of one or two bytes, each behind its own number (B.2.4.1).
  void ReadSteps(std::uint64_t start, std::size_t length) {
    const std::uint64_t end = start + length;
    while (start < end) {
      const unsigned kind = reader_->Byte(start++);
      const std::size_t table = kind & 15U;
      const std::size_t size = kind >> 4U == 0 ? 1 : 2;
      if (table >= header_.steps.size() || end - start < 64 * size) {
        return;
      }
      for (const std::size_t place : kZigzag) {
        header_.steps[table][place] = size == 1 ? reader_->Byte(start) : reader_->Number16(start);
        start += size;
      }
    }
  }

  void ReadJfif(std::uint64_t start) {
    const int unit = reader_->Byte(start + 7);
    const double factor = unit == 1 ? 1 : unit == 2 ? kCentimetresPerInch : 0;
    header_.has_jfif = true;
    header_.jfif_dpi_x = factor * reader_->Number16(start + 8);
    header_.jfif_dpi_y = factor * reader_->Number16(start + 10);
  }

  ByteReader* reader_;
  JpegHeader header_;
  bool has_frame_ = false;
};

}  // namespace

std::optional<JpegHeader> ReadJpegHeader(ByteReader& reader) {
  return HeaderReader(reader).Read();
}

std::optional<JpegHeader> ReadJpegHeader(std::string_view data) {
  pdf::MemorySource source(data);
  ByteReader reader(source);
  return ReadJpegHeader(reader);
}

std::uint64_t FindJpegEnd(ByteReader& reader, std::uint64_t scan_start) {
  std::uint64_t place = scan_start;
  while (const auto marker = NextMarker(reader, place, reader.size())) {
    if (marker->code == kEoi) {
      return marker->place + 2;
    }
    place = marker->place + 2 + std::max<std::uint64_t>(reader.Number16(marker->place + 2), 2);
  }
  return 0;
}

}  // namespace TarnixTools::engines
