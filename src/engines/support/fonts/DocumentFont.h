// A font of a document, embedded or not (ISO 32000-2, 9.5 to 9.9): how the strings that it shows
// fall into codes, what it says of each code, and where its program is. Which glyphs of the program
// codes have, GlyphFinder tells.
//
//   const DocumentFont font(document, text.font);
//   std::vector<std::uint32_t> codes;
//   if (font.codes() && font.codes()->Split(string.bytes, codes)) ...
//
// Once made, it needs the document no more and may be used by several threads at once.
#ifndef TARNIX_ENGINES_SUPPORT_FONTS_DOCUMENTFONT_H_
#define TARNIX_ENGINES_SUPPORT_FONTS_DOCUMENTFONT_H_

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "engines/support/fonts/BaseEncodings.h"
#include "engines/support/fonts/CidWidths.h"
#include "engines/support/fonts/CodeMap.h"
#include "pdf/file/Document.h"

namespace TarnixTools::engines::fonts {

enum class FontKind : std::uint8_t {
  kUnknown,
  kType1,  // MMType1, too
  kTrueType,
  kType3,
  kCidType0,  // composite, its descendant a CIDFontType0
  kCidType2,
};

enum class ProgramEntry : std::uint8_t { kNone, kFontFile, kFontFile2, kFontFile3 };

// What a font's descriptor says of the program.
struct FontDescriptor {
  std::uint32_t number = 0;  // 0 for none, and for one written in place
  ProgramEntry entry = ProgramEntry::kNone;
  std::uint32_t program = 0;  // number of the stream
  std::string program_subtype;
  bool is_symbolic = false;
  bool is_fixed_pitch = false;
  bool is_serif = false;
  bool is_italic = false;
  bool is_bold = false;       // to be shown so, whatever its program looks like
  bool lists_glyphs = false;  // it has a /CIDSet or a /CharSet
  std::optional<double> missing_width;
};

// The maps that documents name and do not have.
enum class MapsByName : std::uint8_t {
  kIdentity,   // what comes of it does not depend on what is installed
  kInstalled,  // those for Chinese, Japanese and Korean, too
};

class DocumentFont {
 public:
  // font: a reference or a dictionary. Of what is damaged there is what can be read. Throws Error
  // for a document that cannot be read any more.
  DocumentFont(pdf::Document& document, const pdf::Object& font,
               MapsByName maps = MapsByName::kIdentity);

  // 0 for one written in place.
  std::uint32_t number() const { return number_; }

  FontKind kind() const { return kind_; }

  bool is_composite() const { return kind_ >= FontKind::kCidType0; }

  // As /BaseFont has it, with the tag of a subset.
  const std::string& name() const { return name_; }

  const FontDescriptor& descriptor() const { return descriptor_; }

  bool has_to_unicode() const { return has_to_unicode_; }

  // How strings fall into codes; null where that is not sure.
  const CodeMap* codes() const { return codes_ ? &*codes_ : nullptr; }

  // Whether its codes are characters in UTF-16 by a map that readers know without a file, as
  // UniGB-UCS2-H.
  bool has_unicode_codes() const { return has_unicode_codes_; }

  // Of a composite font: whether its glyphs go downwards.
  bool is_vertical() const { return is_vertical_; }

  // Of a simple font: whether it has an /Encoding, and one that is known here.
  bool has_encoding() const { return has_encoding_; }

  bool is_encoding_known() const { return is_encoding_known_; }

  // Whether it says an encoding that /Differences are to.
  bool has_base_encoding() const { return base_.has_value(); }

  // Of a simple font: the name that the encoding gives to the code; empty for none. Where the base
  // encoding is not said, only /Differences count.
  std::string_view GlyphNameOf(std::uint8_t code) const;

  // The name that the standard says where the encoding does not: that of StandardEncoding in a
  // TrueType font that is not symbolic (9.6.5.4).
  std::string_view StandardNameOf(std::uint8_t code) const;

  // Of a simple font: the advance of a code in thousandths of the font's size; nothing where
  // /Widths does not tell.
  std::optional<double> WidthOf(std::uint8_t code) const;

  bool has_widths() const { return !widths_.empty(); }

  // Of a composite font: which of Adobe's character collections its identifiers are of, as "Japan1";
  // empty for others.
  const std::string& ordering() const { return ordering_; }

  // Of a composite font.
  std::uint32_t CidOf(std::uint32_t code) const { return codes_ ? codes_->CidOf(code) : 0; }

  // Of a composite font: the advance of an identifier in thousandths of the font's size.
  double WidthOfCid(std::uint32_t cid) const { return cid_widths_.WidthOf(cid); }

  // Which glyph an identifier has by /CIDToGIDMap; itself where there is none.
  std::uint32_t MappedGlyphOf(std::uint32_t cid) const;

 private:
  void ReadSimple(pdf::Document& document, const pdf::Object& font);
  void ReadEncoding(pdf::Document& document, const pdf::Object& font);
  void ReadWidths(pdf::Document& document, const pdf::Object& font);
  void ReadComposite(pdf::Document& document, const pdf::Object& font, MapsByName maps);
  void ReadCodes(pdf::Document& document, const pdf::Object& encoding, MapsByName maps);
  void ReadGlyphMap(pdf::Document& document, const pdf::Object& value);
  void ReadDescriptor(pdf::Document& document, const pdf::Object& value);

  std::uint32_t number_ = 0;
  FontKind kind_ = FontKind::kUnknown;
  std::string name_;
  FontDescriptor descriptor_;
  bool has_to_unicode_ = false;
  std::optional<CodeMap> codes_;
  bool has_unicode_codes_ = false;
  bool is_vertical_ = false;
  std::string ordering_;
  bool has_encoding_ = false;
  bool is_encoding_known_ = true;
  std::optional<BaseEncoding> base_;
  std::map<std::uint8_t, std::string> differences_;
  std::map<std::uint8_t, double> widths_;
  CidWidths cid_widths_;
  std::optional<std::string> glyph_map_;  // two bytes for each identifier
};

}  // namespace TarnixTools::engines::fonts

#endif  // TARNIX_ENGINES_SUPPORT_FONTS_DOCUMENTFONT_H_
