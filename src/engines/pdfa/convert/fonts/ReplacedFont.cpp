#include "engines/pdfa/convert/fonts/ReplacedFont.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "engines/pdfa/convert/fonts/CMapText.h"
#include "engines/pdfa/convert/fonts/FontTexts.h"
#include "engines/pdfa/convert/fonts/SfntFile.h"
#include "engines/pdfa/convert/fonts/SubstituteFace.h"
#include "engines/support/fonts/CidSet.h"
#include "engines/support/fonts/FontProgram.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::pdfa {

using fonts::FontFace;
using fonts::OutlineKind;
using pdf::Arena;
using pdf::Object;
using pdf::ObjectChange;

namespace {

// Bits of a descriptor's /Flags (ISO 32000-2, table 121).
constexpr std::int64_t kFixedPitch = 1 << 0;
constexpr std::int64_t kSerif = 1 << 1;
constexpr std::int64_t kSymbolic = 1 << 2;
constexpr std::int64_t kItalic = 1 << 6;
constexpr std::int64_t kForceBold = 1 << 18;

constexpr double kAnyWidth = -1;
constexpr int kWidthDecimals = 3;
constexpr std::uint32_t kMaxCode = 0xFFFF;

// Identifiers of the characters that all collections of Adobe begin with: those of ASCII.
std::uint32_t CollectionCidOf(std::uint32_t character) {
  return character >= 0x20 && character <= 0x7E ? character - 0x1F : kMaxCode;
}

const char* LanguageOf(const Object& ordering) {
  if (ordering.Text() == "GB1") {
    return "zh-cn";
  }
  if (ordering.Text() == "CNS1") {
    return "zh-tw";
  }
  if (ordering.Text() == "Japan1") {
    return "ja";
  }
  return ordering.Text() == "Korea1" || ordering.Text() == "KR" ? "ko" : "";
}

class Replacement {
 public:
  Replacement(Conversion& conversion, const FontUse& use)
      : conversion_(&conversion),
        use_(&use),
        font_(use.font.get()),
        texts_(conversion.document, *font_) {}

  bool Make() {
    ReadFont();
    face_ = FindSubstitute(Wish());
    if (face_ == nullptr) {
      return false;
    }
    for (const std::uint32_t code : use_->codes) {
      AddCode(code);
    }
    std::string program = face_->Subset(glyphs_);
    if (program.empty()) {
      return false;
    }
    SetAdvances(program);
    Write(std::move(program));
    return true;
  }

 private:
  // A code of the new font.
  struct Code {
    std::uint32_t glyph = 0;
    double width = 0;
  };

  pdf::Document& document() { return conversion_->document; }

  pdf::DocumentRewriter& rewriter() { return conversion_->rewriter; }

  Object Get(const Object& dictionary, std::string_view key) {
    return document().Resolve(dictionary.Get(key), arena_);
  }

  void ReadFont() {
    dictionary_ = document().Load({font_->number(), 0}, arena_);
    descendant_ = dictionary_;
    if (font_->is_composite()) {
      const auto descendants = Get(dictionary_, "DescendantFonts").Items();
      descendant_ = descendants.empty() ? Object() : document().Resolve(descendants[0], arena_);
      const std::string_view encoding = Get(dictionary_, "Encoding").Text();
      is_vertical_ = encoding.ends_with("-V");
      code_bytes_ = 2;
    }
  }

  FaceWish Wish() {
    const Object descriptor = Get(descendant_, "FontDescriptor");
    const std::int64_t flags = Get(descriptor, "Flags").IntegerOr(0);
    FaceWish wish{.name = font_->name(),
                  .is_fixed_pitch = (flags & kFixedPitch) != 0,
                  .is_serif = (flags & kSerif) != 0,
                  .is_bold = (flags & kForceBold) != 0,
                  .is_italic = (flags & kItalic) != 0,
                  .language = LanguageOf(Get(Get(descendant_, "CIDSystemInfo"), "Ordering")),
                  .characters = {}};
    for (const std::uint32_t code : use_->codes) {
      if (const std::u32string text = texts_.TextOf(code); !text.empty()) {
        wish.characters.emplace_back(text.front(), WidthOf(code));
      }
    }
    return wish;
  }

  // As the font says; below 0 where it says nothing.
  double WidthOf(std::uint32_t code) const {
    if (!font_->is_composite()) {
      return font_->WidthOf(static_cast<std::uint8_t>(code))
          .value_or(font_->descriptor().missing_width.value_or(kAnyWidth));
    }
    return font_->WidthOfCid(font_->has_unicode_codes() ? CollectionCidOf(code)
                                                        : font_->CidOf(code));
  }

  // Codes of a font that goes by the numbers of its glyphs mean, where nothing else is said, those
  // of a face that is laid out alike.
  std::uint32_t GlyphOf(std::uint32_t code, const std::u32string& text) const {
    if (!text.empty()) {
      return face_->GlyphOf(text.front());
    }
    return font_->is_composite() && !font_->has_unicode_codes() && code < face_->glyph_count()
               ? code
               : 0;
  }

  void AddCode(std::uint32_t code) {
    const std::u32string text = texts_.TextOf(code);
    std::uint32_t glyph = GlyphOf(code, text);
    if (glyph == 0) {
      glyph = face_->GlyphOf(U' ');
      conversion_->report.Changed("characters that no installed font has into blanks");
    }
    double width = WidthOf(code);
    const double own = face_->Advance(glyph) * 1000.0 / face_->units_per_em();
    if (width < 0 || face_->outline_kind() != OutlineKind::kTrueType) {
      width = own;
    } else if (const auto known = advances_.find(glyph); known != advances_.end()) {
      width = known->second;
    }
    advances_.emplace(glyph, width);
    glyphs_.insert(glyph);
    codes_[code] = {glyph, width};
    unicode_[code] = text.empty() || text.find(U'\0') != std::u32string::npos ? U" " : text;
  }

  void SetAdvances(std::string& program) {
    std::optional<SfntFile> file =
        face_->outline_kind() == OutlineKind::kTrueType ? SfntFile::Read(program) : std::nullopt;
    std::map<std::uint32_t, std::uint16_t> units;
    for (const auto& [glyph, width] : advances_) {
      units[glyph] = static_cast<std::uint16_t>(std::lround(width * face_->units_per_em() / 1000));
    }
    if (file && file->SetAdvances(units)) {
      program = file->Bytes();
    }
  }

  // What a code selects: of TrueType outlines itself, which a map leads to the glyph.
  std::uint32_t CidOf(std::uint32_t code) const {
    return IsTrueType() ? code : face_->CidOf(codes_.at(code).glyph);
  }

  bool IsTrueType() const { return face_->outline_kind() == OutlineKind::kTrueType; }

  std::string ReferenceTo(ObjectChange object) {
    std::string text;
    pdf::AppendReference(text, rewriter().Add(std::move(object)));
    return text;
  }

  // A tag of six letters that differs for other sets of codes (9.9.2).
  std::string SubsetName() const {
    std::uint64_t hash = 14695981039346656037U;
    for (const auto& [code, use] : codes_) {
      hash = (hash ^ code ^ use.glyph << 16U) * 1099511628211U;
    }
    hash ^= hash >> 32;
    std::string name;
    for (int i = 0; i < 6; ++i) {
      name += static_cast<char>('A' + hash % 26);
      hash /= 26;
    }
    return name + '+' + face_->name();
  }

  std::string Descriptor(const std::string& name, std::string program) {
    const auto scaled = [this](int units) {
      return static_cast<std::int64_t>(std::lround(units * 1000.0 / face_->units_per_em()));
    };
    std::string text = "<</Type/FontDescriptor/FontName";
    pdf::AppendName(text, name);
    text += "/Flags ";
    text += std::to_string(kSymbolic | (face_->is_fixed_pitch() ? kFixedPitch : 0) |
                           (face_->italic_angle() != 0 ? kItalic : 0));
    text += "/FontBBox[";
    const FontFace::Box box = face_->bounds();
    for (const int side : {box.left, box.bottom, box.right, box.top}) {
      pdf::AppendInteger(text, scaled(side));
    }
    text += "]/ItalicAngle";
    pdf::AppendNumber(text, face_->italic_angle());
    text += "/Ascent " + std::to_string(scaled(face_->ascent()));
    text += "/Descent " + std::to_string(scaled(face_->descent()));
    text += "/CapHeight " + std::to_string(scaled(face_->cap_height()));
    text += "/StemV 80";
    const std::string size = std::to_string(program.size());
    const std::string cid_set = conversion_->is_part1() ? CidSet(program) : std::string();
    text += IsTrueType() ? "/FontFile2 " : "/FontFile3 ";
    text += ReferenceTo(ObjectChange::Stream(
        IsTrueType() ? "<</Length1 " + size + ">>" : "<</Subtype/CIDFontType0C>>",
        std::move(program)));
    if (conversion_->is_part1()) {
      text += "/CIDSet " + ReferenceTo(ObjectChange::Stream("<<>>", cid_set));
    }
    return text + ">>";
  }

  // A bit for each identifier that has a glyph, the first one for that of .notdef. A face with
  // outlines of CFF may have been cut to more than was asked for.
  std::string CidSet(const std::string& program) const {
    fonts::CidSet set;
    for (const auto& [code, use] : codes_) {
      set.Add(CidOf(code));
    }
    const auto made = IsTrueType() ? nullptr : fonts::FontProgram::Open(program);
    if (made != nullptr) {
      set.AddAllOf(*made);
    }
    return set.bits();
  }

  std::string Widths() const {
    std::map<std::uint32_t, double> widths;
    for (const auto& [code, use] : codes_) {
      widths.emplace(CidOf(code), use.width);
    }
    std::string text;
    for (const auto& [cid, width] : widths) {
      pdf::AppendInteger(text, cid);
      text += '[';
      pdf::AppendNumber(text, width, kWidthDecimals);
      text += ']';
    }
    return text;
  }

  std::string GlyphMap() const {
    std::string map;
    for (const auto& [code, use] : codes_) {
      map.resize(2 * std::size_t{code});
      map += static_cast<char>(use.glyph >> 8);
      map += static_cast<char>(use.glyph);
    }
    return map;
  }

  std::string Encoding() {
    if (IsTrueType() && code_bytes_ == 2) {
      return is_vertical_ ? "/Identity-V" : "/Identity-H";
    }
    std::map<std::uint32_t, std::uint32_t> cids;
    for (const auto& [code, use] : codes_) {
      cids[code] = CidOf(code);
    }
    return " " + ReferenceTo(MakeCodeMap(cids, code_bytes_, is_vertical_));
  }

  std::string Descendant(const std::string& name, std::string program) {
    std::string text = "<</Type/Font/Subtype";
    text += IsTrueType() ? "/CIDFontType2/BaseFont" : "/CIDFontType0/BaseFont";
    pdf::AppendName(text, name);
    text += "/CIDSystemInfo<</Registry(Adobe)/Ordering(Identity)/Supplement 0>>/W[" + Widths() +
            "]/FontDescriptor " +
            ReferenceTo(ObjectChange::Value(Descriptor(name, std::move(program))));
    if (IsTrueType()) {
      text += "/CIDToGIDMap " + ReferenceTo(ObjectChange::Stream("<<>>", GlyphMap()));
    }
    return text + ">>";
  }

  void Write(std::string program) {
    const std::string name = SubsetName();
    std::string text = "<</Type/Font/Subtype/Type0/BaseFont";
    pdf::AppendName(text, name);
    text += "/Encoding" + Encoding() + "/DescendantFonts[" +
            ReferenceTo(ObjectChange::Value(Descendant(name, std::move(program)))) +
            "]/ToUnicode " + ReferenceTo(MakeToUnicode(unicode_, code_bytes_)) + ">>";
    rewriter().Change(font_->number(), ObjectChange::Value(text));
  }

  Conversion* conversion_;
  const FontUse* use_;
  const fonts::DocumentFont* font_;
  FontTexts texts_;
  Arena arena_;
  Object dictionary_;
  Object descendant_;  // the font itself where it is no composite one
  bool is_vertical_ = false;
  int code_bytes_ = 1;
  std::unique_ptr<FontFace> face_;
  std::set<std::uint32_t> glyphs_;
  std::map<std::uint32_t, double> advances_;  // by glyph, in thousandths
  std::map<std::uint32_t, Code> codes_;
  std::map<std::uint32_t, std::u32string> unicode_;
};

}  // namespace

bool ReplaceFont(Conversion& conversion, const FontUse& use) {
  return Replacement(conversion, use).Make();
}

}  // namespace TarnixTools::engines::pdfa
