#include "engines/support/codecs/PngChunks.h"

#include <libdeflate.h>

namespace TarnixTools::engines {

void AppendPngNumber(std::string& out, std::uint32_t value) {
  for (int shift = 24; shift >= 0; shift -= 8) {
    out += static_cast<char>(value >> shift & 0xFF);
  }
}

void AppendPngChunk(std::string& out, std::string_view type, std::string_view data) {
  AppendPngNumber(out, static_cast<std::uint32_t>(data.size()));
  const std::size_t start = out.size();
  out += type;
  out += data;
  AppendPngNumber(out, libdeflate_crc32(0, out.data() + start, out.size() - start));
}

void AppendPngHeader(std::string& out, const PngHeader& header) {
  std::string data;
  AppendPngNumber(data, header.width);
  AppendPngNumber(data, header.height);
  data += '\x08';
  data += header.color_type;
  data.append(3, '\0');
  AppendPngChunk(out, "IHDR", data);
}

}  // namespace TarnixTools::engines
