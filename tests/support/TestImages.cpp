#include "support/TestImages.h"

#include <cmath>
#include <utility>
#include <vector>

#include <zlib.h>

namespace TarnixTools::testing {

namespace {

std::string Bytes(std::uint32_t value, int count, bool is_big) {
  std::string bytes;
  for (int i = 0; i < count; ++i) {
    bytes += static_cast<char>(value >> 8 * (is_big ? count - 1 - i : i));
  }
  return bytes;
}

}  // namespace

std::string Big16(std::uint32_t value) {
  return Bytes(value, 2, true);
}

std::string Big32(std::uint32_t value) {
  return Bytes(value, 4, true);
}

std::string Little16(std::uint32_t value) {
  return Bytes(value, 2, false);
}

std::string Little32(std::uint32_t value) {
  return Bytes(value, 4, false);
}

std::string JpegSegment(std::uint8_t marker, std::string_view data) {
  std::string segment = "\xFF";
  segment += static_cast<char>(marker);
  return segment + Big16(static_cast<std::uint32_t>(data.size() + 2)) + std::string(data);
}

// Every block is coded as "no difference, no coefficients": one bit for DC and one for AC.
std::string TestJpeg(int components, std::string_view segments) {
  std::string quantization(65, '\x01');
  quantization[0] = '\0';
  std::string frame = "\x08" + Big16(8) + Big16(16);
  std::string scan;
  frame += static_cast<char>(components);
  scan += static_cast<char>(components);
  for (int i = 1; i <= components; ++i) {
    frame += static_cast<char>(i);
    frame += std::string("\x11\x00", 2);
    scan += static_cast<char>(i);
    scan += '\0';
  }
  scan += std::string("\x00\x3F\x00", 3);
  const std::string one_code = std::string("\x01", 1) + std::string(15, '\0') + '\0';
  const int bits = 2 * 2 * components;  // two blocks of each component
  std::string data(static_cast<std::size_t>(bits / 8), '\0');
  if (bits % 8 != 0) {
    data += static_cast<char>(0xFF >> bits % 8);
  }
  return "\xFF\xD8" + std::string(segments) + JpegSegment(0xDB, quantization) +
         JpegSegment(0xC0, frame) + JpegSegment(0xC4, std::string(1, '\0') + one_code) +
         JpegSegment(0xC4, "\x10" + one_code) + JpegSegment(0xDA, scan) + data + "\xFF\xD9";
}

std::string TestExif(int orientation, int dpi) {
  const std::string entry_value =
      Big16(static_cast<std::uint32_t>(orientation)) + std::string(2, '\0');
  const int count = dpi > 0 ? 4 : 1;
  std::string block = std::string("MM\0*", 4) + Big32(8) + Big16(static_cast<std::uint32_t>(count));
  const std::uint32_t ratio = 8 + 2 + 12 * static_cast<std::uint32_t>(count) + 4;
  block += Big16(0x112) + Big16(3) + Big32(1) + entry_value;
  if (dpi > 0) {
    block += Big16(0x11A) + Big16(5) + Big32(1) + Big32(ratio);
    block += Big16(0x11B) + Big16(5) + Big32(1) + Big32(ratio);
    block += Big16(0x128) + Big16(3) + Big32(1) + Big16(2) + std::string(2, '\0');
  }
  block += Big32(0);
  if (dpi > 0) {
    block += Big32(static_cast<std::uint32_t>(dpi)) + Big32(1);
  }
  return block;
}

std::string ExifJpegSegment(int orientation, int dpi) {
  return JpegSegment(0xE1, std::string("Exif\0\0", 6) + TestExif(orientation, dpi));
}

std::string PngChunk(std::string_view type, std::string_view data) {
  std::string body(type);
  body += data;
  const auto crc =
      crc32(0, reinterpret_cast<const Bytef*>(body.data()), static_cast<uInt>(body.size()));
  return Big32(static_cast<std::uint32_t>(data.size())) + body +
         Big32(static_cast<std::uint32_t>(crc));
}

std::string TestPng::Bytes() const {
  std::string header = Big32(width) + Big32(height);
  header += static_cast<char>(bits);
  header += static_cast<char>(color_type);
  header += std::string(2, '\0');
  header += static_cast<char>(interlaced ? 1 : 0);
  uLongf size = compressBound(static_cast<uLong>(rows.size()));
  std::string packed(size, '\0');
  compress(reinterpret_cast<Bytef*>(packed.data()), &size,
           reinterpret_cast<const Bytef*>(rows.data()), static_cast<uLong>(rows.size()));
  packed.resize(size);
  std::string png = "\x89PNG\r\n\x1A\n" + PngChunk("IHDR", header) + chunks;
  for (std::size_t place = 0; place < packed.size(); place += data_chunk) {
    png += PngChunk("IDAT", std::string_view(packed).substr(place, data_chunk));
  }
  return png + PngChunk("IEND", "");
}

std::string TestProfile(std::string_view space) {
  std::string profile = Big32(144) + std::string(8, '\0') + "mntr" + std::string(space) + "XYZ ";
  profile.resize(36, '\0');
  profile += "acsp";
  profile.resize(128, '\0');
  return profile + Big32(1) + "desc" + Big32(144) + Big32(0);
}

std::string TestRgbProfile(double gamma, bool is_swapped) {
  const auto fixed = [](double value) {
    return Big32(static_cast<std::uint32_t>(std::lround(value * 65536)));
  };
  const auto colorant = [&](double x, double y, double z) {
    return "XYZ " + std::string(4, '\0') + fixed(x) + fixed(y) + fixed(z);
  };
  const auto gamma_8_8 = static_cast<std::uint32_t>(std::lround(gamma * 256));
  const std::string curve = "curv" + std::string(4, '\0') + Big32(1) + Big32(gamma_8_8 << 16);
  const std::string red = colorant(0.4361, 0.2225, 0.0139);
  const std::string blue = colorant(0.1431, 0.0606, 0.7141);
  const std::vector<std::pair<std::string, std::string>> tags = {
      {"wtpt", colorant(0.9642, 1, 0.8249)},
      {"rXYZ", is_swapped ? blue : red},
      {"gXYZ", colorant(0.3851, 0.7169, 0.0971)},
      {"bXYZ", is_swapped ? red : blue},
      {"rTRC", curve},
      {"gTRC", curve},
      {"bTRC", curve}};
  std::string table = Big32(static_cast<std::uint32_t>(tags.size()));
  std::string data;
  const std::size_t data_start = 128 + 4 + 12 * tags.size();
  for (const auto& [name, value] : tags) {
    table += name + Big32(static_cast<std::uint32_t>(data_start + data.size())) +
             Big32(static_cast<std::uint32_t>(value.size()));
    data += value;
  }
  std::string header = Big32(static_cast<std::uint32_t>(data_start + data.size())) +
                       std::string(4, '\0') + Big32(0x02100000) + "mntrRGB XYZ ";
  header.resize(36, '\0');
  header += "acsp";
  header.resize(68, '\0');
  header += fixed(0.9642) + fixed(1) + fixed(0.8249);
  header.resize(128, '\0');
  return header + table + data;
}

}  // namespace TarnixTools::testing
