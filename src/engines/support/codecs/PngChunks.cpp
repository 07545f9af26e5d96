#include "engines/support/codecs/PngChunks.h"

#include <libdeflate.h>

#include "engines/support/files/BigEndian.h"

namespace TarnixTools::engines {

void AppendPngChunk(std::string& out, std::string_view type, std::string_view data) {
  AppendBig32(out, static_cast<std::uint32_t>(data.size()));
  const std::size_t start = out.size();
  out += type;
  out += data;
  AppendBig32(out, libdeflate_crc32(0, out.data() + start, out.size() - start));
}

void AppendPngHeader(std::string& out, const PngHeader& header) {
  std::string data;
  AppendBig32(data, header.width);
  AppendBig32(data, header.height);
  data += '\x08';
  data += header.color_type;
  data.append(3, '\0');
  AppendPngChunk(out, "IHDR", data);
}

}  // namespace TarnixTools::engines
