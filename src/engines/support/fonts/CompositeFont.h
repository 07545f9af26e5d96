// A composite font made of glyphs of an installed face, as a document embeds it (ISO 32000-2, 9.7):
// the one writer of such fonts.
//
//   CompositeFont font(face, {.code_bytes = 2});
//   font.Add(code, glyph, width, U"A");            // for each code
//   std::string program = font.Program();          // empty: the face cannot be cut
//   std::string dictionary = font.Write(std::move(program), objects);
#ifndef TARNIX_ENGINES_SUPPORT_FONTS_COMPOSITEFONT_H_
#define TARNIX_ENGINES_SUPPORT_FONTS_COMPOSITEFONT_H_

#include <cstdint>
#include <map>
#include <string>

#include "engines/support/fonts/FontFace.h"

namespace TarnixTools::engines::fonts {

// Where the objects of a font go.
class FontObjects {
 public:
  virtual ~FontObjects() = default;

  // Each gives the number of the new object. entries: of the stream's dictionary, without its length.
  virtual std::uint32_t AddValue(const std::string& text) = 0;
  virtual std::uint32_t AddStream(const std::string& entries, std::string bytes) = 0;
};

struct CompositeCodes {
  int code_bytes = 2;  // or 1
  bool is_vertical = false;
  bool lists_glyphs = false;  // has a /CIDSet, which PDF/A-1 wants
};

class CompositeFont {
 public:
  // The face outlives this.
  CompositeFont(const FontFace& face, CompositeCodes kind) : face_(&face), kind_(kind) {}

  // What a code shows, how far it moves on, in thousandths of the font's size, and what it stands
  // for, which is not empty.
  void Add(std::uint32_t code, std::uint32_t glyph, double width, std::u32string text);

  // The subset of the face with these glyphs.
  std::string Program() const;

  // The text of the font's dictionary; all else is added to the objects. program: as Program gives it,
  // or with other advances.
  std::string Write(std::string program, FontObjects& objects) const;

 private:
  struct Code {
    std::uint32_t glyph = 0;
    double width = 0;
    std::u32string text;
  };

  bool IsTrueType() const;
  std::uint32_t CidOf(std::uint32_t code) const;
  bool AreCodesCids() const;
  std::string EncodingName() const;
  std::string Name() const;
  std::string Encoding(FontObjects& objects) const;
  std::string Widths() const;
  std::string GlyphMap(FontObjects& objects) const;
  std::string CidSetOf(const std::string& program) const;
  std::string Descriptor(const std::string& name, std::string program, FontObjects& objects) const;
  std::string Descendant(const std::string& name, std::string program, FontObjects& objects) const;

  const FontFace* face_;
  CompositeCodes kind_;
  std::map<std::uint32_t, Code> codes_;
};

}  // namespace TarnixTools::engines::fonts

#endif  // TARNIX_ENGINES_SUPPORT_FONTS_COMPOSITEFONT_H_
