// What CMap files say (ISO 32000-2, 9.7.5.4 and 9.10.3) besides the identifiers of codes, which
// CodeMap has: what the map is about, and the text of codes in a /ToUnicode.
//
//   const CMapFile cmap = CMapFile::Read(stream_bytes);
//   if (cmap.write_mode() != 0) ...
#ifndef TARNIX_ENGINES_SUPPORT_FONTS_CMAPFILE_H_
#define TARNIX_ENGINES_SUPPORT_FONTS_CMAPFILE_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace TarnixTools::engines::fonts {

// Which glyphs the identifiers stand for: /CIDSystemInfo (9.7.3).
struct CharacterCollection {
  std::optional<std::string> registry;
  std::optional<std::string> ordering;
  std::optional<std::int64_t> supplement;
};

class CMapFile {
 public:
  // Of what is damaged there is what can be read.
  static CMapFile Read(std::string_view cmap);

  // 0 horizontal, 1 vertical; 0 where it does not say.
  std::int64_t write_mode() const { return write_mode_; }

  // The name of the map that this one builds on; empty for none.
  const std::string& used_map() const { return used_map_; }

  const CharacterCollection& collection() const { return collection_; }

  // The highest identifier that a code has.
  std::uint64_t highest_cid() const { return highest_cid_; }

  // Whether each block of texts that says a number of entries has as many: some readers take a map with a wrong
  // count for none.
  bool has_right_counts() const { return has_right_counts_; }

  // The text of a code, in UTF-16; nothing for a code that the map does not have.
  std::optional<std::u16string> TextOf(std::uint32_t code) const;

 private:
  class Reader;

  // Codes that follow each other, and the text of the first; that of the others counts up at its
  // last unit.
  struct TextRange {
    std::uint32_t first = 0;
    std::uint32_t last = 0;
    std::u16string text;
  };

  std::int64_t write_mode_ = 0;
  std::string used_map_;
  CharacterCollection collection_;
  std::uint64_t highest_cid_ = 0;
  bool has_right_counts_ = true;
  std::vector<TextRange> texts_;  // in order
};

}  // namespace TarnixTools::engines::fonts

#endif  // TARNIX_ENGINES_SUPPORT_FONTS_CMAPFILE_H_
