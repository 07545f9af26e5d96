// A face as a document embeds it: a subset with the glyphs that were painted, in a composite font
// (ISO 32000-2, 9.7) whose codes are the glyphs' identifiers.
#ifndef TARNIX_ENGINES_TOOLBOX_CONTENT_EMBEDDEDFONT_H_
#define TARNIX_ENGINES_TOOLBOX_CONTENT_EMBEDDEDFONT_H_

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "engines/support/fonts/TextShaper.h"
#include "engines/toolbox/content/PageContent.h"
#include "pdf/write/FileWriter.h"

namespace TarnixTools::engines::toolbox {

class EmbeddedFont {
 public:
  // The face outlives the font.
  EmbeddedFont(fonts::FontFace& face, AddedResource resource)
      : face_(&face), resource_(std::move(resource)) {}

  const AddedResource& resource() const { return resource_; }

  // The code by which a glyph is painted that stands for this text; none where the glyph has
  // another text already and cannot have a second code.
  std::optional<unsigned> CodeFor(std::uint32_t glyph, std::u32string_view text);

  // The code of a glyph whose text is said beside it. characters: of its cluster, one of which it
  // may stand for.
  unsigned CodeAmong(std::uint32_t glyph, std::u32string_view characters);

  // A code that shows nothing, takes no room, and stands for the text; none where the face has no
  // glyph for that.
  std::optional<unsigned> BlankFor(std::u32string_view text);

  // Whether the glyph is plainly that character's.
  bool IsGlyphOf(std::uint32_t glyph, char32_t character) const {
    return face_->GlyphOf(character) == glyph;
  }

  // Advance width as the font states it, in thousandths of the font size.
  double WidthOf(std::uint32_t glyph) const;

  // Writes the font, all glyphs now known. Throws ToolboxFailure when it cannot be embedded.
  void Write(pdf::FileWriter& writer) const;

 private:
  fonts::FontFace* face_;
  AddedResource resource_;
  std::map<std::uint32_t, std::u32string> texts_;  // of every glyph used; empty: not known
  // Further codes of glyphs that stand for several texts.
  std::map<std::pair<std::uint32_t, std::u32string>, unsigned> more_codes_;
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_CONTENT_EMBEDDEDFONT_H_
