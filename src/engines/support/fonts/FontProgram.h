// A font program as documents embed it: TrueType, OpenType, bare CFF or Type 1 (ISO 32000-2, 9.9).
//
//   const auto program = FontProgram::Open(bytes);
//   const std::uint32_t glyph = program->GlyphNamed("eacute");
//   if (program->ShapeOf(glyph) == other->ShapeOf(glyph)) ...
//
// For one thread at a time; different programs may be used on different threads.
#ifndef TARNIX_ENGINES_SUPPORT_FONTS_FONTPROGRAM_H_
#define TARNIX_ENGINES_SUPPORT_FONTS_FONTPROGRAM_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

struct FT_FaceRec_;
struct FT_LibraryRec_;

namespace TarnixTools::engines::fonts {

enum class ProgramKind : std::uint8_t {
  kTrueType,  // outlines of TrueType, in a file of tables
  kOpenType,  // outlines of CFF, in a file of tables
  kCff,       // bare CFF
  kType1,
};

// What the bytes are, from how they begin; nothing for a collection of fonts and all else.
std::optional<ProgramKind> ProgramKindOf(std::string_view bytes);

// A table that tells the glyphs of codes. That a Type 1 or CFF font tells characters by is made of
// its glyph names; its own encoding has platform 7.
struct CharacterMap {
  std::uint16_t platform = 0;
  std::uint16_t encoding = 0;

  bool is_unicode() const { return platform == 0 || (platform == 3 && encoding != 0); }

  bool is_symbol() const { return platform == 3 && encoding == 0; }

  bool is_macintosh() const { return platform == 1; }

  bool is_built_in() const { return platform == 7; }
};

struct CodeGlyph {
  std::uint32_t code = 0;
  std::uint32_t glyph = 0;

  friend bool operator==(const CodeGlyph&, const CodeGlyph&) = default;
};

// An outline in the font's own units, without what hints make of it.
struct GlyphShape {
  struct Point {
    long x = 0;
    long y = 0;
    int kind = 0;  // on the curve, or what sort of handle

    friend bool operator==(const Point&, const Point&) = default;
  };

  std::vector<Point> points;
  std::vector<int> contour_ends;
  long advance = 0;

  friend bool operator==(const GlyphShape&, const GlyphShape&) = default;
};

class FontProgram {
 public:
  // Null for a program that cannot be read. The bytes outlive this. Throws LibraryMissing.
  static std::unique_ptr<FontProgram> Open(std::string_view bytes);

  ~FontProgram();
  FontProgram(const FontProgram&) = delete;
  FontProgram& operator=(const FontProgram&) = delete;

  ProgramKind kind() const { return kind_; }

  bool is_cff() const { return kind_ == ProgramKind::kCff || kind_ == ProgramKind::kOpenType; }

  std::string_view bytes() const { return bytes_; }

  std::uint32_t glyph_count() const { return glyph_count_; }

  int units_per_em() const;

  // Glyphs of a CID-keyed CFF font are known by character identifiers, and have no names.
  bool is_cid_keyed() const { return is_cid_keyed_; }

  // Its outlines are put together by its instructions.
  bool is_tricky() const;

  // What the program says of its own style.
  bool is_bold() const;
  bool is_italic() const;

  bool has_glyph_names() const;

  // 0 for a name that no glyph has; of those that have it, the first.
  std::uint32_t GlyphNamed(std::string_view name);
  // Empty for a glyph without.
  std::string NameOf(std::uint32_t glyph);

  // Of a CID-keyed font; 0 for an identifier that no glyph has.
  std::uint32_t GlyphOfCid(std::uint32_t cid) const;

  // Those that can be read.
  const std::vector<CharacterMap>& maps() const { return maps_; }

  // 0 for a code that the map does not have. map: its index.
  std::uint32_t GlyphOf(std::size_t map, std::uint32_t code);
  // All that the map has, in the order of codes, or the first `most` of them.
  std::vector<CodeGlyph> Mappings(std::size_t map, std::size_t most);

  // Nothing for a glyph that cannot be read.
  std::optional<GlyphShape> ShapeOf(std::uint32_t glyph);

  // How far the glyph moves on, in thousandths of the font's size; nothing for a glyph that cannot
  // be read.
  std::optional<double> AdvanceOf(std::uint32_t glyph);

  // A table of a TrueType or OpenType file; empty for one that it does not have.
  std::string Table(std::uint32_t tag);

 private:
  FontProgram(std::string_view bytes, ProgramKind kind) : bytes_(bytes), kind_(kind) {}

  bool ReadFace();
  void ReadCharset();
  void ReadMaps();
  bool SetMap(std::size_t map);
  bool LoadGlyph(std::uint32_t glyph);

  std::string_view bytes_;
  ProgramKind kind_;
  FT_LibraryRec_* library_ = nullptr;
  FT_FaceRec_* face_ = nullptr;
  std::uint32_t glyph_count_ = 0;
  bool is_cid_keyed_ = false;
  std::vector<std::uint16_t> cids_;  // by glyph
  std::unordered_map<std::uint32_t, std::uint32_t> glyphs_of_cids_;
  std::vector<CharacterMap> maps_;
  std::vector<int> map_places_;  // among all of the face
  std::optional<std::unordered_map<std::string, std::uint32_t>> glyphs_of_names_;  // when asked for
};

}  // namespace TarnixTools::engines::fonts

#endif  // TARNIX_ENGINES_SUPPORT_FONTS_FONTPROGRAM_H_
