// The set by which the descriptor of a composite font's subset tells which glyphs are in it (/CIDSet;
// ISO 32000-1, table 124): a bit for each identifier. PDF/A-1 wants it (ISO 19005-1, 6.3.5).
//
//   CidSet set;
//   set.Add(36);
//   ... set.bits() ...
#ifndef TARNIX_ENGINES_SUPPORT_FONTS_CIDSET_H_
#define TARNIX_ENGINES_SUPPORT_FONTS_CIDSET_H_

#include <cstdint>
#include <string>

namespace TarnixTools::engines::fonts {

class FontProgram;

class CidSet {
 public:
  // Identifiers have two bytes; others are passed over.
  void Add(std::uint32_t cid);

  // All that a program with outlines of CFF has a glyph for.
  void AddAllOf(const FontProgram& program);

  const std::string& bits() const { return bits_; }

 private:
  std::string bits_ = "\x80";  // .notdef is always there
};

}  // namespace TarnixTools::engines::fonts

#endif  // TARNIX_ENGINES_SUPPORT_FONTS_CIDSET_H_
