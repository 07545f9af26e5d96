// One face of a font file, with what a PDF file needs to know of it.
//
//   auto face = FontFace::Load("/usr/share/fonts/.../DejaVuSans.ttf", 0);
//   double points = face->Advance(face->GlyphOf(U'A')) * size / face->units_per_em();
//
// Of a variable font it is one instance. For one thread at a time.
#ifndef TARNIX_ENGINES_SUPPORT_FONTS_FONTFACE_H_
#define TARNIX_ENGINES_SUPPORT_FONTS_FONTFACE_H_

#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

struct hb_face_t;
struct hb_font_t;

namespace TarnixTools::engines::fonts {

enum class OutlineKind : std::uint8_t {
  kTrueType,
  kCff,       // glyphs are known by their place in the font
  kCffByCid,  // glyphs have character identifiers (CID-keyed)
};

// What the licence bits of the face allow (OS/2 fsType).
enum class EmbeddingRight : std::uint8_t { kSubset, kWholeOnly, kNone };

class FontFace {
 public:
  // index: as InstalledFace has it. Null for a file that cannot be read, has no such instance, or
  // whose outlines a PDF file cannot hold.
  static std::unique_ptr<FontFace> Load(const std::string& file, int index);

  ~FontFace();
  FontFace(const FontFace&) = delete;
  FontFace& operator=(const FontFace&) = delete;

  OutlineKind outline_kind() const { return outline_kind_; }

  EmbeddingRight embedding_right() const { return embedding_right_; }

  int units_per_em() const { return units_per_em_; }

  std::uint32_t glyph_count() const;

  // Ascent and descent in units of the em, as all measures here; the descent is negative.
  int ascent() const { return ascent_; }

  int descent() const { return descent_; }

  int cap_height() const { return cap_height_; }

  int weight_class() const { return weight_class_; }  // 400 regular, 700 bold

  double italic_angle() const { return italic_angle_; }  // degrees, counter-clockwise

  bool is_fixed_pitch() const { return is_fixed_pitch_; }

  struct Box {
    int left = 0, bottom = 0, right = 0, top = 0;
  };

  // Around all glyphs.
  Box bounds() const { return bounds_; }

  // PostScript name, of letters, digits and hyphens only.
  const std::string& name() const { return name_; }

  // 0 for a character that the face lacks.
  std::uint32_t GlyphOf(char32_t character) const;

  int Advance(std::uint32_t glyph) const;

  // A glyph that takes no room and shows nothing; 0 when there is none. Looked for once.
  std::uint32_t BlankGlyph();

  // The number under which the glyph is found in an embedded font program (ISO 32000-2, 9.7.4.2).
  std::uint32_t CidOf(std::uint32_t glyph) const;

  // A font program with these glyphs only: TrueType (for /FontFile2) or bare CFF (for /FontFile3),
  // without hints. Empty when it cannot be made. Throws LibraryMissing.
  std::string Subset(const std::set<std::uint32_t>& glyphs) const;

  hb_font_t* font() const { return font_; }

 private:
  FontFace(hb_face_t* face, hb_font_t* font);

  // A place on an axis along which a variable font varies.
  struct Variation {
    std::uint32_t axis = 0;  // its tag
    float value = 0;
  };

  bool ReadTables();
  bool SetInstance(unsigned index);
  void ReadInstanceStyle();
  void ReadInstanceName(unsigned index);
  std::string PlainName(unsigned name_id) const;
  void ReadLicence(std::string_view os2);
  bool IsBlank(std::uint32_t glyph) const;

  hb_face_t* face_;
  hb_font_t* font_;
  OutlineKind outline_kind_ = OutlineKind::kTrueType;
  EmbeddingRight embedding_right_ = EmbeddingRight::kSubset;
  int units_per_em_ = 1000;
  int ascent_ = 0;
  int descent_ = 0;
  int cap_height_ = 0;
  int weight_class_ = 400;
  double italic_angle_ = 0;
  bool is_fixed_pitch_ = false;
  Box bounds_;
  std::string name_;
  std::vector<Variation> variations_;  // of an instance that has a name
  std::vector<std::uint16_t> cids_;    // by glyph, of a CID-keyed font
  std::optional<std::uint32_t> blank_glyph_;
};

}  // namespace TarnixTools::engines::fonts

#endif  // TARNIX_ENGINES_SUPPORT_FONTS_FONTFACE_H_
