// What JPEG 2000 data says of its picture (ISO/IEC 15444-1, annexes A and I): the boxes of a JP2 file
// and the header of the code stream. Nothing is decoded.
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_JPXHEADER_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_JPXHEADER_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "engines/support/files/ByteReader.h"

namespace TarnixTools::engines {

// A component of the code stream (A.5.1).
struct JpxComponent {
  int bits = 8;
  bool is_signed = false;
};

// A box that tells the colour space (I.5.3.3).
struct JpxColor {
  int method = 0;           // 1 a number, 2 a restricted ICC profile, 3 any; others are extensions
  int approximation = 0;    // how near it comes to what is meant
  std::uint32_t space = 0;  // of method 1
};

enum class JpxChannelKind : std::uint16_t { kColor = 0, kAlpha = 1, kPremultipliedAlpha = 2 };

struct JpxHeader {
  bool has_boxes = false;   // a code stream may come without
  std::uint64_t end = 0;    // of the code stream, or of the data where that is cut before; bytes
  std::uint32_t width = 0;  // pixels; 0 for a picture without any
  std::uint32_t height = 0;
  std::vector<JpxComponent> components;  // of the code stream
  std::vector<JpxColor> colors;          // in the order of the file
  std::vector<JpxChannelKind> channels;  // in the order of the file; empty where it does not say
  std::size_t palette_columns = 0;       // what the palette makes of one component; 0: none
  double dpi_x = 0;                      // pixels per inch; 0: not said
  double dpi_y = 0;

  bool HasAlpha() const;
  bool HasPremultipliedAlpha() const;

  // Colours of a pixel in the first colour space that readers have to know: 1, 3, 4; 0 where its
  // box does not tell.
  std::size_t CountColors() const;

  // Whether that colour space is sYCC.
  bool IsYcc() const;
};

// Nothing where the header of the code stream is not in the data. Throws what the reader throws.
std::optional<JpxHeader> ReadJpxHeader(ByteReader& reader);
std::optional<JpxHeader> ReadJpxHeader(std::string_view data);

// Whether data starts as a JP2 file or a code stream does.
bool IsJpx(ByteReader& reader);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_JPXHEADER_H_
