// The parts that a PNG file is made of (PNG, clause 5).
//
//   std::string file(kPngSignature);
//   AppendPngHeader(file, {.width = 5, .height = 3, .color_type = 2});
//   AppendPngChunk(file, "IEND", {});
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_PNGCHUNKS_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_PNGCHUNKS_H_

#include <cstdint>
#include <string>
#include <string_view>

namespace TarnixTools::engines {

// What every file begins with.
inline constexpr std::string_view kPngSignature("\x89PNG\r\n\x1A\n", 8);

// type: four letters.
void AppendPngChunk(std::string& out, std::string_view type, std::string_view data);

// Of a picture whose components have 8 bits, and whose rows stand one behind the other.
struct PngHeader {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  char color_type = 0;  // table 9
};

void AppendPngHeader(std::string& out, const PngHeader& header);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_PNGCHUNKS_H_
