#include "engines/support/metadata/XmpEncoding.h"

#include <array>
#include <cstddef>

#include "foundation/Utf8.h"

namespace TarnixTools::engines {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

// How a packet in anything but UTF-8 can start: with a mark, or with the "<" of its first tag.
struct Start {
  std::string_view bytes;
  XmpEncoding encoding;
  bool is_big_endian;
};

// Those of UTF-32 come first, for one of UTF-16 is the beginning of one of them.
constexpr std::array<Start, 8> kStarts = {{
    {"\0\0\xFE\xFF"sv, XmpEncoding::kUtf32, true},
    {"\0\0\0<"sv, XmpEncoding::kUtf32, true},
    {"\xFF\xFE\0\0"sv, XmpEncoding::kUtf32, false},
    {"<\0\0\0"sv, XmpEncoding::kUtf32, false},
    {"\xFE\xFF"sv, XmpEncoding::kUtf16, true},
    {"\0<"sv, XmpEncoding::kUtf16, true},
    {"\xFF\xFE"sv, XmpEncoding::kUtf16, false},
    {"<\0"sv, XmpEncoding::kUtf16, false},
}};

const Start* StartOf(std::string_view packet) {
  for (const Start& start : kStarts) {
    if (packet.starts_with(start.bytes)) {
      return &start;
    }
  }
  return nullptr;
}

char32_t UnitAt(std::string_view bytes, bool is_big_endian) {
  char32_t unit = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    unit = unit << 8U | static_cast<unsigned char>(bytes[is_big_endian ? i : bytes.size() - 1 - i]);
  }
  return unit;
}

std::string WithoutStart(std::string text) {
  if (text.starts_with(kUtf8Mark)) {
    text.erase(0, kUtf8Mark.size());
  }
  const std::size_t declared = text.starts_with("<?xml ") ? text.find("?>") : std::string::npos;
  return declared == std::string::npos ? text : text.substr(declared + 2);
}

}  // namespace

XmpEncoding XmpEncodingOf(std::string_view packet) {
  const Start* start = StartOf(packet);
  return start == nullptr ? XmpEncoding::kUtf8 : start->encoding;
}

std::optional<std::string> XmpToUtf8(std::string_view packet) {
  const Start* start = StartOf(packet);
  if (start == nullptr) {
    return std::string(packet);
  }
  const std::size_t size = start->encoding == XmpEncoding::kUtf16 ? 2 : 4;
  if (packet.size() % size != 0) {
    return std::nullopt;
  }
  std::wstring units;
  std::string text;
  for (std::size_t i = 0; i < packet.size(); i += size) {
    const char32_t unit = UnitAt(packet.substr(i, size), start->is_big_endian);
    if (size == 2) {
      units += static_cast<wchar_t>(unit);
    } else {
      AppendUtf8(text, unit);
    }
  }
  return WithoutStart(size == 2 ? WideToUtf8(units) : text);
}

}  // namespace TarnixTools::engines
