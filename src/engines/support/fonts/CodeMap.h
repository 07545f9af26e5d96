// How the bytes of a shown string fall into codes, and which character identifiers codes of a
// composite font select (ISO 32000-2, 9.7.5 and 9.7.6.3).
//
//   const auto map = CodeMap::Read(stream_bytes);
//   std::uint32_t cid = map->CidOf(code);
#ifndef TARNIX_ENGINES_SUPPORT_FONTS_CODEMAP_H_
#define TARNIX_ENGINES_SUPPORT_FONTS_CODEMAP_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace TarnixTools::engines::fonts {

class CodeMap {
 public:
  // Codes of one byte, as simple fonts have them.
  static CodeMap OneByte() { return CodeMap(1); }

  // Codes of two bytes that are the identifiers: Identity-H and Identity-V.
  static CodeMap Identity() { return CodeMap(2); }

  // The map that a CMap file defines. Nothing where it is not sure what readers take it for: it
  // builds on another one, its codes are of several lengths or its ranges overlap.
  static std::optional<CodeMap> Read(std::string_view cmap);

  // Gives the map of a name; null where there is none.
  using MapFinder = std::function<std::shared_ptr<const CodeMap>(std::string_view name)>;

  // A map that may build on another one, and whose codes may be of several lengths, as those of the
  // maps for Chinese, Japanese and Korean are. Nothing where ranges overlap, or the other map cannot
  // be found.
  static std::optional<CodeMap> ReadAny(std::string_view cmap, const MapFinder& find);

  // The same map, shared. Not null.
  static CodeMap SameAs(std::shared_ptr<const CodeMap> map);

  // Of the longest codes.
  int code_bytes() const { return code_bytes_; }

  // How many ranges it keeps.
  std::size_t range_count() const { return spaces_.size() + ranges_.size(); }

  // Adds the codes of a string. False where they are not sure: bytes are left over, or are outside
  // of what the map has codes for.
  bool Split(std::string_view bytes, std::vector<std::uint32_t>& codes) const;

  // 0 for a code that the map has no identifier for.
  std::uint32_t CidOf(std::uint32_t code) const;

 private:
  struct Range {
    std::uint32_t first = 0;
    std::uint32_t last = 0;
    std::uint32_t cid = 0;
    int bytes = 0;  // of codes in a space for them
  };

  class Reader;

  explicit CodeMap(int code_bytes) : code_bytes_(code_bytes) {}

  bool HasCode(std::uint32_t code, int bytes) const;
  int CodeSizeAt(std::string_view bytes) const;
  const std::vector<Range>& spaces() const;
  bool SortRanges();

  int code_bytes_ = 1;
  bool is_identity_ = true;
  std::vector<Range> spaces_;            // none where all codes are there
  std::vector<Range> ranges_;            // in order
  std::shared_ptr<const CodeMap> base_;  // has the codes that are in no range; may be null
};

}  // namespace TarnixTools::engines::fonts

#endif  // TARNIX_ENGINES_SUPPORT_FONTS_CODEMAP_H_
