// A TrueType or OpenType file as its tables (ISO/IEC 14496-22, 4.5), to change some of them.
//
//   if (std::optional<SfntFile> file = SfntFile::Read(program)) {
//     file->SetAdvances({{36, 1024}});
//     const std::string changed = file->Bytes();
#ifndef TARNIX_ENGINES_PDFA_CONVERT_FONTS_SFNTFILE_H_
#define TARNIX_ENGINES_PDFA_CONVERT_FONTS_SFNTFILE_H_

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace TarnixTools::engines::pdfa {

class SfntFile {
 public:
  // Nothing for what is no such file, or has a table outside of it.
  static std::optional<SfntFile> Read(std::string_view bytes);

  // Empty for a table that is not there.
  std::string_view Table(const std::string& tag) const;

  void SetTable(const std::string& tag, std::string bytes) { tables_[tag] = std::move(bytes); }

  int units_per_em() const;
  std::uint32_t glyph_count() const;

  // The advances of glyphs, in units of the em. False for a file whose metrics cannot be read.
  bool SetAdvances(const std::map<std::uint32_t, std::uint16_t>& advances);

  // The glyphs of codes in a symbolic font, as its only character map: codes of one byte in the
  // plane of symbols.
  void SetSymbolMap(const std::map<std::uint8_t, std::uint16_t>& glyphs);

  // Adds a glyph of TrueType that looks like .notdef, and returns its number; 0 for outlines that
  // cannot be read.
  std::uint32_t AddGlyphLikeNotdef();

  std::string Bytes() const;

 private:
  std::uint32_t Number(const std::string& tag, std::size_t at) const;

  std::string version_;
  std::map<std::string, std::string> tables_;
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_FONTS_SFNTFILE_H_
