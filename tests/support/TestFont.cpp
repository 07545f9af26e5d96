#include "support/TestFont.h"

#include <cstdint>
#include <map>
#include <utility>
#include <vector>

namespace TarnixTools::testing {
namespace {

constexpr int kUnitsPerEm = 1000;
constexpr std::uint32_t kBoldName = 256;
constexpr std::uint32_t kAxisName = 257;

// Numbers with their first byte first, as all tables have them.
struct Table {
  Table& U8(std::uint32_t value) {
    bytes += static_cast<char>(value);
    return *this;
  }

  Table& U16(std::uint32_t value) { return U8(value >> 8).U8(value); }

  Table& U32(std::uint32_t value) { return U16(value >> 16).U16(value); }

  Table& Zeros(std::size_t count) {
    bytes.append(count, '\0');
    return *this;
  }

  Table& Text(const std::string& text) {
    bytes += text;
    return *this;
  }

  std::string bytes;
};

std::string Head(int width) {
  return Table()
      .U32(0x10000)
      .U32(0x10000)
      .U32(0)
      .U32(0x5F0F3CF5)
      .U16(0)
      .U16(kUnitsPerEm)
      .Zeros(16)
      .U16(0)
      .U16(0)
      .U16(static_cast<std::uint32_t>(width))
      .U16(kUnitsPerEm)
      .U16(0)
      .U16(8)
      .U16(2)
      .U16(1)  // long offsets of glyphs
      .U16(0)
      .bytes;
}

std::string HorizontalHeader() {
  return Table().U32(0x10000).U16(kUnitsPerEm).Zeros(28).U16(3).bytes;
}

std::string Maximum() {
  return Table().U32(0x10000).U16(3).U16(4).U16(1).Zeros(22).bytes;
}

std::string Os2() {
  return Table()
      .U16(4)
      .U16(400)
      .U16(400)
      .U16(5)
      .Zeros(54)
      .U16(0x40)
      .U16(0x20)
      .U16(0x41)
      .U16(kUnitsPerEm)
      .Zeros(4)
      .U16(kUnitsPerEm)
      .Zeros(18)
      .bytes;
}

std::string Advances(int width) {
  const auto box = static_cast<std::uint32_t>(width + 100);
  return Table().U16(500).U16(0).U16(box).U16(0).U16(300).U16(0).bytes;
}

// The space is glyph 2, the "A" is glyph 1.
std::string CharacterMap() {
  Table table;
  table.U16(0).U16(1).U16(3).U16(1).U32(12);
  table.U16(4).U16(40).U16(0).U16(6).U16(4).U16(1).U16(2);
  table.U16(0x20).U16(0x41).U16(0xFFFF).U16(0).U16(0x20).U16(0x41).U16(0xFFFF);
  return table.U16(2 - 0x20).U16(1 - 0x41).U16(1).Zeros(6).bytes;
}

std::string Box(int width) {
  const auto right = static_cast<std::uint32_t>(width);
  Table table;
  table.U16(1).U16(0).U16(0).U16(right).U16(kUnitsPerEm).U16(3).U16(0);
  table.U8(1).U8(1).U8(1).U8(1);  // four corners, each from the one before
  table.U16(0).U16(right).U16(0).U16(static_cast<std::uint32_t>(-width));
  table.U16(0).U16(0).U16(kUnitsPerEm).U16(0);
  return table.Zeros(2).bytes;
}

std::string Names(const TestFont& font) {
  const std::vector<std::pair<std::uint32_t, std::string>> names = {
      {1, font.family},
      {2, font.style},
      {4, font.family + " " + font.style},
      {6, font.family + "-" + font.style},
      {16, font.family},
      {17, font.style},
      {kBoldName, "Bold"},
      {kAxisName, "Weight"}};
  Table records;
  Table texts;
  for (const auto& [id, text] : names) {
    records.U16(3).U16(1).U16(0x409).U16(id);
    records.U16(static_cast<std::uint32_t>(2 * text.size()));
    records.U16(static_cast<std::uint32_t>(texts.bytes.size()));
    for (const char c : text) {
      texts.U16(static_cast<unsigned char>(c));
    }
  }
  const auto count = static_cast<std::uint32_t>(names.size());
  return Table().U16(0).U16(count).U16(6 + 12 * count).Text(records.bytes).Text(texts.bytes).bytes;
}

std::string Axes() {
  Table table;
  table.U32(0x10000).U16(16).U16(2).U16(1).U16(20).U16(1).U16(8);
  table.Text("wght").U32(400U << 16).U32(400U << 16).U32(900U << 16).U16(0).U16(kAxisName);
  return table.U16(kBoldName).U16(0).U32(700U << 16).bytes;
}

// At the end of the axis the right corners of the box, and its advance, are 500 further right.
std::string Variations() {
  Table data;
  data.U16(1).U16(10).U16(13).U16(0xA000).U16(0x4000);
  data.U8(0);  // all four points, and four for the advances
  data.U8(0x80).U8(0x41).U16(500).U16(500).U8(0x81).U8(0x40).U16(500).U8(0x81);
  data.U8(0x87).Zeros(1);
  const auto size = static_cast<std::uint32_t>(data.bytes.size());
  Table table;
  table.U32(0x10000).U16(1).U16(0).U32(36).U16(3).U16(1).U32(36);
  return table.U32(0).U32(0).U32(size).U32(size).Text(data.bytes).bytes;
}

std::string Assembled(const std::map<std::string, std::string>& tables) {
  Table directory;
  Table data;
  const auto count = static_cast<std::uint32_t>(tables.size());
  directory.U32(0x10000).U16(count).U16(128).U16(3).U16(16 * count - 128);
  for (const auto& [tag, bytes] : tables) {
    directory.Text(tag).U32(0);
    directory.U32(static_cast<std::uint32_t>(12 + 16 * count + data.bytes.size()));
    directory.U32(static_cast<std::uint32_t>(bytes.size()));
    data.Text(bytes).Zeros((4 - bytes.size() % 4) % 4);
  }
  return directory.Text(data.bytes).bytes;
}

}  // namespace

std::string TestFont::Bytes() const {
  const std::string box = Box(width);
  const auto box_size = static_cast<std::uint32_t>(box.size());
  std::map<std::string, std::string> tables = {
      {"head", Head(width)},
      {"hhea", HorizontalHeader()},
      {"maxp", Maximum()},
      {"OS/2", Os2()},
      {"hmtx", Advances(width)},
      {"cmap", CharacterMap()},
      {"glyf", box},
      {"loca", Table().U32(0).U32(0).U32(box_size).U32(box_size).bytes},
      {"name", Names(*this)},
      {"post", Table().U32(0x30000).Zeros(28).bytes}};
  if (is_variable) {
    tables["fvar"] = Axes();
    tables["gvar"] = Variations();
  }
  return Assembled(tables);
}

std::string FontConfiguration(const TempDir& fonts) {
  return WriteBytes(
      fonts.Path("fonts.conf"),
      "<?xml version=\"1.0\"?><!DOCTYPE fontconfig SYSTEM \"fonts.dtd\"><fontconfig><dir>" +
          fonts.Path() + "</dir><cachedir>" + fonts.Path() + "/cache</cachedir></fontconfig>");
}

}  // namespace TarnixTools::testing
