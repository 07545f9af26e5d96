// A font of a document as the conversion needs it: how strings fall into codes, and of each code
// its text and its advance.
#ifndef TARNIX_ENGINES_SUPPORT_PAGES_PAGEFONT_H_
#define TARNIX_ENGINES_SUPPORT_PAGES_PAGEFONT_H_

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engines/support/fonts/DocumentFont.h"
#include "engines/support/fonts/FontProgram.h"
#include "engines/support/fonts/FontText.h"
#include "engines/support/fonts/GlyphFinder.h"
#include "engines/support/pages/PageModel.h"
#include "pdf/content/ContentVisitor.h"
#include "pdf/file/Document.h"

namespace TarnixTools::engines {

class PageFont {
 public:
  // Throws pdf::Error for a document that cannot be read any more.
  PageFont(pdf::Document& document, const pdf::Object& reference);

  // Adds the codes of a string; where they are not sure, as many bytes for each as the font has for
  // most.
  void Split(std::string_view bytes, std::vector<std::uint32_t>& codes) const;

  const std::u32string& TextOf(std::uint32_t code) { return text_->TextOf(code); }

  // In units of the font's size, along the line.
  double AdvanceOf(std::uint32_t code);

  // The em in units of the font's size: 1, but for Type 3 fonts that are as large as their matrix
  // makes them.
  double em() const { return em_; }

  bool is_vertical() const { return font_.is_vertical(); }

  // What is put behind a glyph. Word spacing goes to single bytes of 32.
  double SpacingOf(std::uint32_t code, const pdf::TextState& text) const {
    const bool is_word_space = code == ' ' && !font_.is_composite();
    return text.char_spacing + (is_word_space ? text.word_spacing : 0);
  }

  // How far showing a string moves on, in units of text space: downwards where the font is vertical.
  pdf::TextAdvance AdvanceOf(std::string_view bytes, const pdf::TextState& text);

  const std::shared_ptr<const Typeface>& face() const { return face_; }

  // Bytes that are kept of its program.
  std::size_t program_size() const { return program_bytes_.size(); }

 private:
  double AdvanceOfSimple(std::uint8_t code);
  double AdvanceOfComposite(std::uint32_t code);

  fonts::DocumentFont font_;
  std::string program_bytes_;
  std::unique_ptr<fonts::FontProgram> program_;
  std::optional<fonts::FontText> text_;
  std::shared_ptr<const Typeface> face_;
  std::optional<fonts::GlyphFinder> glyphs_;
  double em_ = 1;
  double glyph_scale_ = 0.001;        // from widths to ems; a Type 3 font has its own
  std::vector<std::uint32_t> codes_;  // of the string that is measured
};

// The fonts of a document, each read once.
class PageFonts {
 public:
  explicit PageFonts(pdf::Document& document) : document_(&document) {}

  // Null for what is no font.
  PageFont* Find(const pdf::Object& reference);

  // The content that has them in place is left.
  void ForgetInPlace() { in_place_.clear(); }

 private:
  pdf::Document* document_;
  std::map<std::uint32_t, std::unique_ptr<PageFont>> fonts_;
  std::size_t program_bytes_ = 0;  // of those
  // Those that are no objects of their own, by where their entries are.
  std::map<const void*, std::unique_ptr<PageFont>> in_place_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PAGES_PAGEFONT_H_
