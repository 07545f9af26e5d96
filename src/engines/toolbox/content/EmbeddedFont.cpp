#include "engines/toolbox/content/EmbeddedFont.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <vector>

#include "engines/support/fonts/CidSet.h"
#include "engines/support/fonts/FontProgram.h"
#include "engines/support/fonts/SubsetTag.h"
#include "engines/toolbox/ToolboxFailure.h"
#include "engines/toolbox/content/ContentText.h"
#include "engines/toolbox/content/StreamText.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::toolbox {

using fonts::OutlineKind;

namespace {

constexpr int kWidthDecimals = 2;
constexpr std::size_t kMaxBfChars = 100;  // in one block (9.7.5.3 and Adobe Technical Note 5014)
// What a glyph stands for that only makes sense together with others: nothing that is seen.
constexpr char32_t kWordJoiner = 0x2060;

constexpr std::size_t kMaxCode = 0xFFFF;
constexpr int kPdf14 = 14;  // the version of PDF/A-1, the last that wants lists of glyphs

constexpr int kFixedPitchFlag = 1 << 0;
constexpr int kSymbolicFlag = 1 << 2;
constexpr int kItalicFlag = 1 << 6;

// The width of stems, from the face's weight, as no table says it: 80 for regular, 165 for bold
// faces or so.
int StemWidthOf(int weight_class) {
  const double weight = weight_class / 65.0;
  return static_cast<int>(50 + weight * weight);
}

constexpr std::string_view kCMapStart =
    "/CIDInit/ProcSet findresource begin\n12 dict begin\nbegincmap\n"
    "/CIDSystemInfo<</Registry(Adobe)/Ordering(UCS)/Supplement 0>>def\n"
    "/CMapName/Adobe-Identity-UCS def\n/CMapType 2 def\n"
    "1 begincodespacerange\n<0000><FFFF>\nendcodespacerange\n";
constexpr std::string_view kCMapEnd =
    "endcmap\nCMapName currentdict/CMap defineresource pop\nend\nend\n";

}  // namespace

std::optional<unsigned> EmbeddedFont::CodeFor(std::uint32_t glyph, std::u32string_view text) {
  std::u32string& known = texts_[glyph];
  if (known.empty() || known == text) {
    known = text;
    return face_->CidOf(glyph);
  }
  const auto more = more_codes_.find({glyph, std::u32string(text)});
  if (more != more_codes_.end()) {
    return more->second;
  }
  // Only TrueType fonts can say which glyph a code has.
  const std::size_t code = face_->glyph_count() + more_codes_.size();
  if (face_->outline_kind() != OutlineKind::kTrueType || code > kMaxCode) {
    return std::nullopt;
  }
  more_codes_.emplace(std::pair(glyph, std::u32string(text)), static_cast<unsigned>(code));
  return static_cast<unsigned>(code);
}

unsigned EmbeddedFont::CodeAmong(std::uint32_t glyph, std::u32string_view characters) {
  std::u32string& known = texts_[glyph];
  const auto plain = std::find_if(characters.begin(), characters.end(),
                                  [&](char32_t c) { return IsGlyphOf(glyph, c); });
  if (known.empty() && plain != characters.end()) {
    known = *plain;
  }
  return face_->CidOf(glyph);
}

std::optional<unsigned> EmbeddedFont::BlankFor(std::u32string_view text) {
  const std::uint32_t blank =
      face_->outline_kind() == OutlineKind::kTrueType ? face_->BlankGlyph() : 0;
  return blank == 0 ? std::nullopt : CodeFor(blank, text);
}

std::map<unsigned, EmbeddedFont::Code> EmbeddedFont::Codes() const {
  std::map<unsigned, Code> codes;
  for (const auto& [glyph, text] : texts_) {
    codes[face_->CidOf(glyph)] = {glyph, text};
  }
  for (const auto& [use, code] : more_codes_) {
    codes[code] = {use.first, use.second};
  }
  return codes;
}

double EmbeddedFont::WidthOf(std::uint32_t glyph) const {
  const double width = face_->Advance(glyph) * 1000.0 / face_->units_per_em();
  return std::round(width * 100) / 100;
}

// The tag differs for other sets of glyphs (9.9.2).
std::string EmbeddedFont::SubsetName() const {
  fonts::SubsetTag tag;
  for (const auto& [glyph, text] : texts_) {
    tag.Add(glyph);
  }
  return tag.Before(face_->name());
}

// The subset.
std::string EmbeddedFont::Program() const {
  std::set<std::uint32_t> glyphs;
  for (const auto& [glyph, text] : texts_) {
    glyphs.insert(glyph);
  }
  std::string program = face_->Subset(glyphs);
  if (program.empty()) {
    throw ToolboxFailure(kToolboxFontEmbeddingError);
  }
  return program;
}

std::uint32_t EmbeddedFont::WriteProgram(pdf::FileWriter& writer,
                                         const std::string& program) const {
  std::string entries;
  if (face_->outline_kind() == OutlineKind::kTrueType) {
    entries = "/Length1";
    pdf::AppendInteger(entries, static_cast<std::int64_t>(program.size()));
  } else {
    entries = "/Subtype/CIDFontType0C";
  }
  return WriteStreamText(writer, entries, program);
}

std::uint32_t EmbeddedFont::WriteDescriptor(pdf::FileWriter& writer,
                                            const std::string& name) const {
  const bool is_true_type = face_->outline_kind() == OutlineKind::kTrueType;
  const std::string program = Program();
  const std::uint32_t program_number = WriteProgram(writer, program);
  const auto scaled = [this](int units) {
    return static_cast<std::int64_t>(std::lround(units * 1000.0 / face_->units_per_em()));
  };
  const int flags = kSymbolicFlag | (face_->is_fixed_pitch() ? kFixedPitchFlag : 0) |
                    (face_->italic_angle() != 0 ? kItalicFlag : 0);
  std::string text = "<</Type/FontDescriptor/FontName";
  pdf::AppendName(text, name);
  text += "/Flags";
  pdf::AppendInteger(text, flags);
  text += "/FontBBox[";
  const fonts::FontFace::Box box = face_->bounds();
  for (const int side : {box.left, box.bottom, box.right, box.top}) {
    pdf::AppendInteger(text, scaled(side));
  }
  text += "]/ItalicAngle";
  pdf::AppendNumber(text, face_->italic_angle(), kWidthDecimals);
  text += "/Ascent";
  pdf::AppendInteger(text, scaled(face_->ascent()));
  text += "/Descent";
  pdf::AppendInteger(text, scaled(face_->descent()));
  text += "/CapHeight";
  pdf::AppendInteger(text, scaled(face_->cap_height()));
  text += "/StemV";
  pdf::AppendInteger(text, StemWidthOf(face_->weight_class()));
  text += is_true_type ? "/FontFile2" : "/FontFile3";
  pdf::AppendReference(text, program_number);
  if (writer.version() <= kPdf14) {
    text += "/CIDSet";
    pdf::AppendReference(text, WriteStreamText(writer, "", CidSetOf(program)));
  }
  const std::uint32_t number = writer.Reserve();
  writer.WriteObject(number, text + ">>");
  return number;
}

// A face with outlines of CFF may have been cut to more than was asked for.
std::string EmbeddedFont::CidSetOf(const std::string& program) const {
  fonts::CidSet set;
  for (const auto& [code, use] : Codes()) {
    set.Add(code);
  }
  const auto made =
      face_->outline_kind() == OutlineKind::kTrueType ? nullptr : fonts::FontProgram::Open(program);
  if (made != nullptr) {
    set.AddAllOf(*made);
  }
  return set.bits();
}

// Which glyph each code has (table 115), two bytes each.
std::uint32_t EmbeddedFont::WriteGlyphMap(pdf::FileWriter& writer) const {
  std::string map;
  for (const auto& [code, use] : Codes()) {
    map.resize(2 * std::size_t{code});
    map += static_cast<char>(use.glyph >> 8);
    map += static_cast<char>(use.glyph);
  }
  return WriteStreamText(writer, "", map);
}

std::uint32_t EmbeddedFont::WriteToUnicode(pdf::FileWriter& writer) const {
  const std::map<unsigned, Code> codes = Codes();
  std::string map(kCMapStart);
  std::size_t left = codes.size();
  std::size_t left_in_block = 0;
  for (const auto& [code, use] : codes) {
    if (left_in_block == 0) {
      left_in_block = std::min(kMaxBfChars, left);
      map += std::to_string(left_in_block) + " beginbfchar\n";
    }
    map += '<';
    AppendCode(map, code);
    map += "><";
    AppendUtf16Hex(map, use.text.empty() ? std::u32string(1, kWordJoiner) : use.text);
    map += ">\n";
    --left;
    if (--left_in_block == 0) {
      map += "endbfchar\n";
    }
  }
  map += kCMapEnd;
  return WriteStreamText(writer, "", map);
}

// "first[width width ...]" for each stretch of codes in a row.
std::string EmbeddedFont::WidthsText() const {
  std::string text;
  unsigned next = 0;
  for (const auto& [code, use] : Codes()) {
    if (text.empty() || code != next) {
      text += text.empty() ? "" : "]";
      pdf::AppendInteger(text, code);
      text += '[';
    }
    pdf::AppendNumber(text, WidthOf(use.glyph), kWidthDecimals);
    next = code + 1;
  }
  return text.empty() ? text : text + "]";
}

void EmbeddedFont::Write(pdf::FileWriter& writer) const {
  const std::string name = SubsetName();
  const bool is_true_type = face_->outline_kind() == OutlineKind::kTrueType;
  const std::uint32_t descriptor = WriteDescriptor(writer, name);
  const std::uint32_t to_unicode = WriteToUnicode(writer);
  const std::uint32_t glyph_map = more_codes_.empty() ? 0 : WriteGlyphMap(writer);
  const std::uint32_t descendant = writer.Reserve();
  std::string text = "<</Type/Font/Subtype";
  text += is_true_type ? "/CIDFontType2" : "/CIDFontType0";
  text += "/BaseFont";
  pdf::AppendName(text, name);
  text += "/CIDSystemInfo<</Registry(Adobe)/Ordering(Identity)/Supplement 0>>";
  if (glyph_map != 0) {
    text += "/CIDToGIDMap";
    pdf::AppendReference(text, glyph_map);
  } else if (is_true_type) {
    text += "/CIDToGIDMap/Identity";
  }
  text += "/W[" + WidthsText() + "]/FontDescriptor";
  pdf::AppendReference(text, descriptor);
  writer.WriteObject(descendant, text + ">>");
  text = "<</Type/Font/Subtype/Type0/BaseFont";
  pdf::AppendName(text, is_true_type ? name : name + "-Identity-H");
  text += "/Encoding/Identity-H/DescendantFonts[";
  pdf::AppendReference(text, descendant);
  text += "]/ToUnicode";
  pdf::AppendReference(text, to_unicode);
  writer.WriteObject(resource_.number, text + ">>");
}

}  // namespace TarnixTools::engines::toolbox
