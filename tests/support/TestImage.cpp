#include "support/TestImage.h"

#include <zlib.h>

namespace TarnixTools::testing {
namespace {

std::string BigEndian(std::uint32_t value) {
  std::string bytes;
  for (int shift = 24; shift >= 0; shift -= 8) {
    bytes += static_cast<char>(value >> static_cast<unsigned>(shift) & 0xFFU);
  }
  return bytes;
}

const Bytef* BytesOf(const std::string& text) {
  return reinterpret_cast<const Bytef*>(text.data());
}

std::string Chunk(const std::string& type, const std::string& data) {
  const std::string body = type + data;
  const uLong sum = crc32(0, BytesOf(body), static_cast<uInt>(body.size()));
  return BigEndian(static_cast<std::uint32_t>(data.size())) + body +
         BigEndian(static_cast<std::uint32_t>(sum));
}

}  // namespace

std::string Deflated(const std::string& data) {
  std::string out(compressBound(static_cast<uLong>(data.size())), '\0');
  uLongf size = out.size();
  compress(reinterpret_cast<Bytef*>(out.data()), &size, BytesOf(data),
           static_cast<uLong>(data.size()));
  out.resize(size);
  return out;
}

std::string PngOf(int width, int height, const std::array<std::uint8_t, 3>& color) {
  std::string row(1, '\0');  // no filter
  for (int x = 0; x < width; ++x) {
    row.append(color.begin(), color.end());
  }
  std::string rows;
  for (int y = 0; y < height; ++y) {
    rows += row;
  }
  const std::string header = BigEndian(static_cast<std::uint32_t>(width)) +
                             BigEndian(static_cast<std::uint32_t>(height)) +
                             std::string("\x08\x02\0\0\0", 5);  // 8 bits, colour
  return "\x89PNG\r\n\x1A\n" + Chunk("IHDR", header) + Chunk("IDAT", Deflated(rows)) +
         Chunk("IEND", "");
}

}  // namespace TarnixTools::testing
