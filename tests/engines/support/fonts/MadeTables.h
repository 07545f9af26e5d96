// Font files taken apart into their tables, and put together of tables.
//
//   FontTables tables = TablesOf(TestFont().Bytes());
//   tables["OS/2"].replace(8, 2, BigEndian(0x100, 2));
//   WriteBytes(path, FontOf(tables));
#ifndef TARNIX_TESTS_ENGINES_SUPPORT_FONTS_MADETABLES_H_
#define TARNIX_TESTS_ENGINES_SUPPORT_FONTS_MADETABLES_H_

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

namespace TarnixTools::testing {

using FontTables = std::map<std::string, std::string>;

inline std::uint32_t Big(const std::string& bytes, std::size_t at, std::size_t count) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < count; ++i) {
    value = value << 8U | static_cast<unsigned char>(bytes.at(at + i));
  }
  return value;
}

inline std::string BigEndian(std::uint32_t value, unsigned bytes) {
  std::string text;
  for (unsigned i = bytes; i-- > 0;) {
    text += static_cast<char>(value >> (8 * i));
  }
  return text;
}

inline FontTables TablesOf(const std::string& font) {
  FontTables tables;
  for (std::size_t i = 0; i < Big(font, 4, 2); ++i) {
    const std::size_t entry = 12 + 16 * i;
    tables[font.substr(entry, 4)] = font.substr(Big(font, entry + 8, 4), Big(font, entry + 12, 4));
  }
  return tables;
}

inline std::string FontOf(const FontTables& tables,
                          const std::string& kind = std::string("\0\1\0\0", 4)) {
  const auto count = static_cast<std::uint32_t>(tables.size());
  std::string directory = kind + BigEndian(count, 2) + BigEndian(128, 2) + BigEndian(3, 2) +
                          BigEndian(16 * count - 128, 2);
  std::string data;
  for (const auto& [tag, bytes] : tables) {
    directory += tag + BigEndian(0, 4) +
                 BigEndian(static_cast<std::uint32_t>(12 + 16 * count + data.size()), 4) +
                 BigEndian(static_cast<std::uint32_t>(bytes.size()), 4);
    data += bytes + std::string((4 - bytes.size() % 4) % 4, '\0');
  }
  return directory + data;
}

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_ENGINES_SUPPORT_FONTS_MADETABLES_H_
