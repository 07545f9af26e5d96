// JPEG 2000 data of images (ISO 32000-2, 7.4.9; ISO/IEC 15444-1): JP2 files and bare code streams.
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_JPXDECODER_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_JPXDECODER_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace TarnixTools::engines {

struct JpxSamples {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  std::size_t components = 0;         // without alpha
  std::size_t colors = 0;             // of these, as the file says: 1, 3 or 4; 0 where it does not
  std::vector<std::uint8_t> samples;  // row by row, the components of a pixel together
  std::vector<std::uint8_t> alpha;    // a byte for each pixel; empty for none
  bool is_alpha_mixed_in = false;     // the colours have been multiplied with alpha
  std::string profile;                // an ICC profile; empty for none
};

// What samples become.
enum class JpxDepth : std::uint8_t {
  kScaled,  // 0 to 255
  kIndex,   // as they are; a palette of the file is not used
};

// Nothing for data that cannot be read, that would need more memory than is allowed, and where the
// library is not installed. What is cut may come out as far as it goes.
std::optional<JpxSamples> DecodeJpx(std::string_view bytes, JpxDepth depth);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_JPXDECODER_H_
