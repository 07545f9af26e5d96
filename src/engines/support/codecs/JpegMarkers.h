// What the markers of JPEG data say of its picture (ITU-T T.81, annex B; JFIF 1.02; Exif 2.32,
// 4.5.4; ICC.1:2022, B.4), read up to the header of the first scan. Nothing is decoded.
//
//   const std::optional<JpegHeader> header = ReadJpegHeader(reader);
//   const bool can_be_shown = header && header->coding == JpegCoding::kHuffman;
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_JPEGMARKERS_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_JPEGMARKERS_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "engines/support/codecs/Exif.h"
#include "engines/support/files/ByteReader.h"

namespace TarnixTools::engines {

inline constexpr std::string_view kJpegStart{"\xFF\xD8", 2};  // SOI
inline constexpr std::string_view kJpegEnd{"\xFF\xD9", 2};    // EOI

enum class JpegCoding : std::uint8_t {
  kHuffman,     // baseline, extended or progressive: what every viewer's DCTDecode knows
  kArithmetic,  // extended or progressive
  kOther,       // lossless or of several frames
};

// The step of each coefficient, row by row of equal vertical frequency.
using JpegSteps = std::array<std::uint16_t, 64>;

struct JpegComponent {
  std::uint8_t id = 0;
  std::uint8_t across = 0;  // samples, for the largest number that a component has there
  std::uint8_t down = 0;
  std::uint8_t table = 0;  // of its steps, 0 to 3
};

// A part of an ICC profile, which may be longer than a segment.
struct JpegProfilePart {
  std::uint64_t offset = 0;
  std::size_t length = 0;
  unsigned number = 0;  // its place among the parts
};

struct JpegHeader {
  std::uint32_t width = 0;  // pixels
  std::uint32_t height = 0;
  int components = 0;
  std::array<JpegComponent, 4> component{};  // the first four
  std::array<JpegSteps, 4> steps{};          // by table; zeros for one that is not there
  int bits = 0;                              // of a sample
  JpegCoding coding = JpegCoding::kOther;
  bool is_progressive = false;
  bool has_jfif = false;
  double jfif_dpi_x = 0;  // 0: not said
  double jfif_dpi_y = 0;
  int adobe_transform = -1;  // of the Adobe marker; -1 when there is none
  ExifFacts exif;
  std::vector<JpegProfilePart> profile_parts;  // as they come
  bool has_more_pictures = false;              // behind this one (CIPA DC-007)
  std::uint64_t scan_start = 0;                // of the marker; 0 when the data ends before it

  // Whether the second component has fewer samples than the first.
  bool IsSubsampled() const {
    return component[1].across * component[1].down < component[0].across * component[0].down &&
           components > 1;
  }
};

// Nothing when the data does not start as JPEG data does, or has no sound frame header before the
// first scan. Bytes between segments are passed over, as decoders do. Throws what the reader
// throws.
std::optional<JpegHeader> ReadJpegHeader(ByteReader& reader);
std::optional<JpegHeader> ReadJpegHeader(std::string_view data);

// The place behind the picture whose first scan starts there; 0 when the data ends before.
std::uint64_t FindJpegEnd(ByteReader& reader, std::uint64_t scan_start);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_JPEGMARKERS_H_
