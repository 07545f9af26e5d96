// The glyphs of a Type 3 font (ISO 32000-2, 9.6.4): which content each code shows, how wide it is,
// and where the names in there are looked up.
#ifndef TARNIX_PDF_CONTENT_TYPE3FONT_H_
#define TARNIX_PDF_CONTENT_TYPE3FONT_H_

#include <array>
#include <cstdint>

#include "pdf/Matrix.h"
#include "pdf/content/ResourceKind.h"
#include "pdf/file/Document.h"

namespace TarnixTools::pdf {

class Type3Font {
 public:
  // Codes that the font does not name itself in the /Differences of its encoding show nothing.
  //   font - a reference, or a dictionary, which outlives this
  Type3Font(Document& document, const Object& font);

  // Of its object; 0 for a font that is none.
  std::uint32_t number() const { return number_; }

  // From glyph space to text space.
  const Matrix& matrix() const { return matrix_; }

  // Number of the stream; 0 for none.
  std::uint32_t GlyphOf(std::uint8_t code) const { return glyphs_[code]; }

  // In units of text space.
  double WidthOf(std::uint8_t code) const { return widths_[code] * matrix_.a; }

  // Where the glyphs look up names: in the font's resources, or else in those of what shows them.
  ResourceScope ScopeFor(const ResourceScope& user) const;

 private:
  void ReadGlyphs(Document& document, const Object& font);
  void ReadWidths(Document& document, const Object& font);

  Arena arena_;
  std::uint32_t number_ = 0;
  Matrix matrix_;
  ResourceScope scope_;
  std::array<std::uint32_t, 256> glyphs_{};
  std::array<double, 256> widths_{};
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_CONTENT_TYPE3FONT_H_
