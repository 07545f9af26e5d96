#include "engines/pdfa/convert/fonts/SfntFile.h"

#include <algorithm>
#include <utility>

#include "engines/support/files/BigEndian.h"

namespace TarnixTools::engines::pdfa {

namespace {

constexpr std::size_t kHeaderBytes = 12;
constexpr std::size_t kEntryBytes = 16;
constexpr std::size_t kMetricBytes = 4;
constexpr std::size_t kMaxTables = 256;
constexpr std::uint32_t kFileSum = 0xB1B0AFBA;  // that all bytes of a file add up to
constexpr std::uint16_t kSymbolPlane = 0xF000;

std::string Padded(std::string bytes) {
  bytes.resize((bytes.size() + 3) / 4 * 4);
  return bytes;
}

std::uint32_t SumOf(std::string_view padded) {
  std::uint32_t sum = 0;
  for (std::size_t at = 0; at + 4 <= padded.size(); at += 4) {
    sum += Big32(padded, at);
  }
  return sum;
}

}  // namespace

std::optional<SfntFile> SfntFile::Read(std::string_view bytes) {
  SfntFile file;
  file.version_ = bytes.substr(0, 4);
  const std::size_t count = Big16(bytes, 4);
  if (count == 0 || count > kMaxTables || bytes.size() < kHeaderBytes + count * kEntryBytes) {
    return std::nullopt;
  }
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t entry = kHeaderBytes + i * kEntryBytes;
    const std::size_t offset = Big32(bytes, entry + 8);
    const std::size_t length = Big32(bytes, entry + 12);
    if (offset > bytes.size() || length > bytes.size() - offset) {
      return std::nullopt;
    }
    file.tables_[std::string(bytes.substr(entry, 4))] = bytes.substr(offset, length);
  }
  return file;
}

std::string_view SfntFile::Table(const std::string& tag) const {
  const auto found = tables_.find(tag);
  return found == tables_.end() ? std::string_view() : found->second;
}

std::uint32_t SfntFile::Number(const std::string& tag, std::size_t at) const {
  return Big16(Table(tag), at);
}

int SfntFile::units_per_em() const {
  return static_cast<int>(Number("head", 18));
}

std::uint32_t SfntFile::glyph_count() const {
  return Number("maxp", 4);
}

// The last advance stands for all glyphs that follow, so all get one of their own.
bool SfntFile::SetAdvances(const std::map<std::uint32_t, std::uint16_t>& advances) {
  const std::string_view metrics = Table("hmtx");
  std::string header(Table("hhea"));
  const std::size_t long_count = Number("hhea", 34);
  const std::size_t glyphs = glyph_count();
  if (header.size() < 36 || long_count == 0 || metrics.size() < long_count * kMetricBytes) {
    return false;
  }
  std::string made;
  for (std::size_t glyph = 0; glyph < glyphs; ++glyph) {
    const std::size_t place = std::min(glyph, long_count - 1) * kMetricBytes;
    const std::size_t bearing =
        glyph < long_count ? place + 2 : long_count * kMetricBytes + (glyph - long_count) * 2;
    const auto wanted = advances.find(static_cast<std::uint32_t>(glyph));
    AppendBig16(made, wanted != advances.end() ? wanted->second : Big16(metrics, place));
    AppendBig16(made, Big16(metrics, bearing));
  }
  std::string count;
  AppendBig16(count, static_cast<std::uint32_t>(glyphs));
  SetTable("hhea", header.replace(34, 2, count));
  SetTable("hmtx", std::move(made));
  return true;
}

// Format 4 (5.2.1.3.2), one segment for each code.
void SfntFile::SetSymbolMap(const std::map<std::uint8_t, std::uint16_t>& glyphs) {
  const std::uint64_t segments = glyphs.size() + 1;
  std::uint64_t power = 1;
  std::uint64_t exponent = 0;
  for (; power * 2 <= segments; power *= 2) {
    ++exponent;
  }
  std::string ends;
  std::string deltas;
  for (const auto& [code, glyph] : glyphs) {
    AppendBig16(ends, kSymbolPlane + code);
    AppendBig16(deltas, (glyph - (kSymbolPlane + code)) & 0xFFFFU);
  }
  std::string map;
  AppendBig16(map, 4);
  AppendBig16(map, 16 + 8 * segments);
  AppendBig16(map, 0);
  AppendBig16(map, 2 * segments);
  AppendBig16(map, 2 * power);
  AppendBig16(map, exponent);
  AppendBig16(map, 2 * (segments - power));
  map += ends;
  AppendBig16(map, 0xFFFF);
  AppendBig16(map, 0);
  map += ends;
  AppendBig16(map, 0xFFFF);
  map += deltas;
  AppendBig16(map, 1);
  map.append(2 * segments, '\0');
  std::string table;
  for (const std::uint32_t value : {0, 1, 3, 0}) {
    AppendBig16(table, value);
  }
  AppendBig32(table, kHeaderBytes);
  SetTable("cmap", table + map);
}

std::uint32_t SfntFile::AddGlyphLikeNotdef() {
  const std::uint32_t count = glyph_count();
  const bool is_long = Number("head", 50) != 0;
  const std::size_t entry = is_long ? 4 : 2;
  std::string places(Table("loca"));
  std::string outlines(Table("glyf"));
  if (count >= 0xFFFF || places.size() < (std::size_t{count} + 1) * entry) {
    return 0;
  }
  const auto place_of = [&](std::size_t glyph) {
    return is_long ? Big32(places, glyph * 4) : 2 * Big16(places, glyph * 2);
  };
  const std::size_t begin = place_of(0);
  const std::size_t end = place_of(1);
  if (begin > end || end > outlines.size()) {
    return 0;
  }
  const std::size_t at = outlines.size() + (4 - outlines.size() % 4) % 4;
  outlines.resize(at);
  outlines = Padded(outlines + outlines.substr(begin, end - begin));
  places.resize(std::size_t{count} * entry);
  for (const std::size_t place : {at, outlines.size()}) {
    if (is_long) {
      AppendBig32(places, static_cast<std::uint32_t>(place));
    } else if (place / 2 <= 0xFFFF) {
      AppendBig16(places, static_cast<std::uint32_t>(place / 2));
    } else {
      return 0;
    }
  }
  // The last of the old glyphs ends where the new one begins: padding after an outline is none of it.
  std::string header(Table("maxp"));
  std::string number;
  AppendBig16(number, count + 1);
  SetTable("maxp", header.replace(4, 2, number));
  SetTable("loca", std::move(places));
  SetTable("glyf", std::move(outlines));
  return SetAdvances({}) ? count : 0;
}

std::string SfntFile::Bytes() const {
  std::uint32_t power = 1;
  std::uint32_t exponent = 0;
  const auto count = static_cast<std::uint32_t>(tables_.size());
  for (; power * 2 <= count; power *= 2) {
    ++exponent;
  }
  std::string bytes = version_;
  for (const std::uint32_t value : {count, 16 * power, exponent, 16 * (count - power)}) {
    AppendBig16(bytes, value);
  }
  std::string data;
  std::size_t head = 0;
  const std::size_t start = kHeaderBytes + count * kEntryBytes;
  for (const auto& [tag, table] : tables_) {
    std::string padded = Padded(table);
    if (tag == "head" && padded.size() >= 12) {
      head = start + data.size();
      padded.replace(8, 4, 4, '\0');
    }
    bytes += tag;
    AppendBig32(bytes, SumOf(padded));
    AppendBig32(bytes, static_cast<std::uint32_t>(start + data.size()));
    AppendBig32(bytes, static_cast<std::uint32_t>(table.size()));
    data += padded;
  }
  bytes += data;
  if (head != 0) {
    std::string adjustment;
    AppendBig32(adjustment, kFileSum - SumOf(bytes));
    bytes.replace(head + 8, 4, adjustment);
  }
  return bytes;
}

}  // namespace TarnixTools::engines::pdfa
