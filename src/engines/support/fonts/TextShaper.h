// Turns a line of text into glyphs: characters of several scripts and directions, each run in a
// face that has them, shaped, and put into the order in which they are seen from left to right.
//
//   FaceStore faces;
//   ShapedLine line = ShapeLine(faces, *catalog.Find("Arial", ""), U"Page 1");
#ifndef TARNIX_ENGINES_SUPPORT_FONTS_TEXTSHAPER_H_
#define TARNIX_ENGINES_SUPPORT_FONTS_TEXTSHAPER_H_

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "engines/support/fonts/FontCatalog.h"
#include "engines/support/fonts/FontFace.h"

namespace TarnixTools::engines::fonts {

// Faces that were loaded, each once. For one thread at a time.
class FaceStore {
 public:
  // Null for a face that cannot be used. Lives as long as the store.
  FontFace* Load(const InstalledFace& face);

  // As FontCatalog does, remembered.
  const std::vector<const InstalledFace*>& Substitutes(const InstalledFace& face,
                                                       const std::string& language);

 private:
  std::map<const InstalledFace*, std::unique_ptr<FontFace>> faces_;
  std::map<std::pair<const InstalledFace*, std::string>, std::vector<const InstalledFace*>>
      substitutes_;
};

// A glyph and where it goes; lengths are in units of the face's em.
struct ShapedGlyph {
  std::uint32_t glyph = 0;
  int advance = 0;
  int x_offset = 0;
  int y_offset = 0;
};

// Glyphs and the characters that they show, which cannot be told apart further.
struct GlyphCluster {
  std::size_t first_glyph = 0;  // of the run
  std::size_t glyph_count = 0;
  std::size_t first_character = 0;  // of the line's text
  std::size_t character_count = 0;
};

struct GlyphRun {
  FontFace* face = nullptr;
  bool is_right_to_left = false;       // clusters are then in reverse order of their characters
  std::vector<ShapedGlyph> glyphs;     // from left to right
  std::vector<GlyphCluster> clusters;  // from left to right
};

struct ShapedLine {
  std::u32string text;
  std::vector<GlyphRun> runs;  // from left to right
  double width = 0;            // for a font size of 1
  char32_t missing = 0;        // the first character that no usable face has; 0: all is there
};

// Control characters have no glyphs; a tabulator is a space. Characters that are missing have no
// glyphs either. Throws LibraryMissing.
ShapedLine ShapeLine(FaceStore& faces, const InstalledFace& face, std::u32string text);

}  // namespace TarnixTools::engines::fonts

#endif  // TARNIX_ENGINES_SUPPORT_FONTS_TEXTSHAPER_H_
