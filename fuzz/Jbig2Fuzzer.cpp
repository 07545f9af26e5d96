// JBIG2 data: the first byte tells how much of the rest stands for global segments, the next two
// the picture's size. Whatever comes, there are rows of that size or none.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "engines/support/codecs/Jbig2Decoder.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::size_t kHeader = 3;
  if (size < kHeader) {
    return 0;
  }
  const std::uint32_t width = 1U + data[1];
  const std::uint32_t height = 1U + data[2];
  const std::string_view segments(reinterpret_cast<const char*>(data) + kHeader, size - kHeader);
  const std::size_t split = segments.size() * data[0] / 256;
  const auto decoded = TarnixTools::engines::DecodeJbig2(segments.substr(0, split),
                                                         segments.substr(split), width, height);
  if (decoded && decoded->rows.size() != std::size_t{(width + 7) / 8} * height) {
    std::abort();
  }
  TarnixTools::engines::NeedsOwnJbig2(segments.substr(0, split), segments.substr(split));
  return 0;
}
