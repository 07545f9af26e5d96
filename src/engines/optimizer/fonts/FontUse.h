// Which character codes a document shows in which font.
//
//   FontUse use(document);
//   use.KeepFormFonts();
//   // in a ContentVisitor, for every text there is, seen or not:
//   std::optional<TextAdvance> ShowText(const StringUse& string) { use.Note(string); ... }
#ifndef TARNIX_ENGINES_OPTIMIZER_FONTS_FONTUSE_H_
#define TARNIX_ENGINES_OPTIMIZER_FONTS_FONTUSE_H_

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <vector>

#include "engines/optimizer/fonts/FontLimits.h"
#include "engines/support/fonts/DocumentFont.h"
#include "pdf/content/ContentVisitor.h"
#include "pdf/file/Document.h"

namespace TarnixTools::engines::optimizer {

// Codes of one font.
class CodeSet {
 public:
  void Add(std::uint32_t code);

  // In ascending order.
  std::vector<std::uint32_t> Codes() const;

  std::size_t LargeCount() const { return large_.size(); }

 private:
  std::vector<bool> small_;  // by code, of one or two bytes
  std::set<std::uint32_t> large_;
};

class FontUse {
 public:
  struct Font {
    std::shared_ptr<const fonts::DocumentFont> font;
    CodeSet codes;
    bool is_whole = false;  // any code may be shown
  };

  // The document outlives this.
  explicit FontUse(pdf::Document& document) : document_(&document) {}

  // Takes down the codes of a string. A font whose strings do not surely fall into codes is kept
  // whole. Throws Error for a document that cannot be read any more.
  void Note(const pdf::StringUse& string);

  // Any code of this font may be shown. number: of its object
  void KeepWhole(std::uint32_t number);

  // Keeps the fonts with which form fields may be filled: those of /AcroForm /DR, and of the fields
  // and their appearances.
  void KeepFormFonts();

  // By object number.
  const std::map<std::uint32_t, Font>& fonts() const { return fonts_; }

  // Whether any glyph of the program may be shown. number: of its stream
  bool IsWholeProgram(std::uint32_t number) const {
    return keeps_all_ || whole_programs_.contains(number);
  }

 private:
  Font& FontOf(std::uint32_t number);
  void KeepInPlace(const pdf::Object& font);
  void KeepEntry(const pdf::Object& font);
  void KeepResources(const pdf::Object& resources);
  void KeepField(const pdf::Object& field);

  pdf::Document* document_;
  std::map<std::uint32_t, Font> fonts_;
  std::set<std::uint32_t> whole_programs_;  // of fonts that are no objects of their own
  std::set<std::uint32_t> seen_in_place_;   // numbers of what such fonts refer to
  std::set<std::uint32_t> kept_resources_;  // numbers of resources, and of what has them
  std::size_t in_place_left_ = limits::kMaxFontsInPlace;
  bool keeps_all_ = false;
  std::vector<std::uint32_t> split_;  // codes of the string that is noted
};

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_FONTS_FONTUSE_H_
