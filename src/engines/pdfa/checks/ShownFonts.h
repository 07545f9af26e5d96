// Which codes a document shows in which font: taken down while content is walked through, so that
// each code of each font is judged once.
//
//   ShownFonts shown(document);
//   shown.Note(string, {.page_number = 1});  // in a ContentVisitor, for every string
//   for (const ShownFonts::Font& font : shown.fonts()) ...
#ifndef TARNIX_ENGINES_PDFA_CHECKS_SHOWNFONTS_H_
#define TARNIX_ENGINES_PDFA_CHECKS_SHOWNFONTS_H_

#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "engines/support/fonts/CodeMap.h"
#include "pdf/content/ContentVisitor.h"
#include "pdf/file/Document.h"

namespace TarnixTools::engines::pdfa {

// How a code is shown, over all the places where it is.
struct CodeUse {
  bool is_rendered = false;        // somewhere otherwise than invisibly
  bool lacks_actual_text = false;  // somewhere in no span with an /ActualText
  std::uint32_t page_number = 0;   // where it is shown first
};

class ShownFonts {
 public:
  struct Font {
    pdf::Object object;  // a reference, or a dictionary that lives as long as this
    bool is_rendered = false;
    std::uint32_t page_number = 0;      // where it is shown first
    std::optional<fonts::CodeMap> map;  // nothing: its strings do not surely fall into codes
    std::map<std::uint32_t, CodeUse> codes;
    bool has_broken_strings = false;  // with bytes that are no code
    bool broken_are_rendered = false;
  };

  // The document outlives this.
  explicit ShownFonts(pdf::Document& document) : document_(&document) {}

  // Throws pdf::Error for a document that cannot be read any more.
  void Note(const pdf::StringUse& string, std::uint32_t page_number, bool has_actual_text);

  // In the order in which they are shown.
  const std::deque<Font>& fonts() const { return fonts_; }

 private:
  Font* FontOf(const pdf::Object& object);
  Font& Add(const pdf::Object& object);
  void NoteCode(Font& font, std::uint32_t code, const CodeUse& use);

  pdf::Document* document_;
  pdf::Arena arena_;  // of fonts written in place
  std::deque<Font> fonts_;
  std::unordered_map<std::uint32_t, Font*> by_number_;
  std::unordered_map<std::string, Font*> in_place_;  // by their text
  std::vector<std::uint32_t> split_;
  std::size_t kept_ranges_ = 0;  // of the maps of all fonts
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CHECKS_SHOWNFONTS_H_
