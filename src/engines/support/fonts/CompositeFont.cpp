#include "engines/support/fonts/CompositeFont.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

#include "engines/support/fonts/CMapText.h"
#include "engines/support/fonts/CidSet.h"
#include "engines/support/fonts/FontProgram.h"
#include "engines/support/fonts/SubsetTag.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::fonts {

namespace {

// Bits of a descriptor's /Flags (ISO 32000-2, table 121).
constexpr int kFixedPitch = 1 << 0;
constexpr int kSymbolic = 1 << 2;
constexpr int kItalic = 1 << 6;

constexpr int kAngleDecimals = 2;

// The width of stems, from the face's weight, as no table says it: 80 for regular, 165 for bold
// faces or so.
int StemWidthOf(int weight_class) {
  const double weight = weight_class / 65.0;
  return static_cast<int>(50 + weight * weight);
}

std::string ReferenceTo(std::uint32_t number) {
  std::string text;
  pdf::AppendReference(text, number);
  return text;
}

}  // namespace

void CompositeFont::Add(std::uint32_t code, std::uint32_t glyph, double width,
                        std::u32string text) {
  codes_[code] = {glyph, width, std::move(text)};
}

std::string CompositeFont::Program() const {
  std::set<std::uint32_t> glyphs;
  for (const auto& [code, use] : codes_) {
    glyphs.insert(use.glyph);
  }
  return face_->Subset(glyphs);
}

bool CompositeFont::IsTrueType() const {
  return face_->outline_kind() == OutlineKind::kTrueType;
}

// What a code selects: of TrueType outlines itself, which a map leads to the glyph.
std::uint32_t CompositeFont::CidOf(std::uint32_t code) const {
  return IsTrueType() ? code : face_->CidOf(codes_.at(code).glyph);
}

bool CompositeFont::AreCodesCids() const {
  return kind_.code_bytes == 2 &&
         std::all_of(codes_.begin(), codes_.end(),
                     [this](const auto& entry) { return CidOf(entry.first) == entry.first; });
}

std::string CompositeFont::EncodingName() const {
  return !AreCodesCids() ? kCodeMapName : kind_.is_vertical ? "Identity-V" : "Identity-H";
}

// The tag differs for other sets of codes (9.9.2).
std::string CompositeFont::Name() const {
  SubsetTag tag;
  for (const auto& [code, use] : codes_) {
    tag.Add(code ^ std::uint64_t{use.glyph} << 16U);
  }
  return tag.Before(face_->name());
}

std::string CompositeFont::Encoding(FontObjects& objects) const {
  if (AreCodesCids()) {
    return "/" + EncodingName();
  }
  std::map<std::uint32_t, std::uint32_t> cids;
  for (const auto& [code, use] : codes_) {
    cids[code] = CidOf(code);
  }
  return ReferenceTo(objects.AddStream(CodeMapEntries(kind_.is_vertical),
                                       CodeMapText(cids, kind_.code_bytes, kind_.is_vertical)));
}

// "first[width width ...]" for each stretch of identifiers in a row.
std::string CompositeFont::Widths() const {
  std::map<std::uint32_t, double> widths;
  for (const auto& [code, use] : codes_) {
    widths.emplace(CidOf(code), use.width);
  }
  std::string text;
  std::uint32_t next = 0;
  for (const auto& [cid, width] : widths) {
    if (text.empty() || cid != next) {
      text += text.empty() ? "" : "]";
      pdf::AppendInteger(text, cid);
      text += '[';
    }
    pdf::AppendNumber(text, width);
    next = cid + 1;
  }
  return text.empty() ? text : text + "]";
}

// Which glyph each identifier has (table 115), two bytes each.
std::string CompositeFont::GlyphMap(FontObjects& objects) const {
  const bool is_identity = std::all_of(codes_.begin(), codes_.end(), [](const auto& entry) {
    return entry.second.glyph == entry.first;
  });
  if (is_identity) {
    return "/Identity";
  }
  std::string map;
  for (const auto& [code, use] : codes_) {
    map.resize(2 * std::size_t{code});
    map += static_cast<char>(use.glyph >> 8);
    map += static_cast<char>(use.glyph);
  }
  return ReferenceTo(objects.AddStream("", std::move(map)));
}

// A face with outlines of CFF may have been cut to more than was asked for.
std::string CompositeFont::CidSetOf(const std::string& program) const {
  CidSet set;
  for (const auto& [code, use] : codes_) {
    set.Add(CidOf(code));
  }
  const auto made = IsTrueType() ? nullptr : FontProgram::Open(program);
  if (made != nullptr) {
    set.AddAllOf(*made);
  }
  return set.bits();
}

std::string CompositeFont::Descriptor(const std::string& name, std::string program,
                                      FontObjects& objects) const {
  const auto scaled = [this](int units) {
    return static_cast<std::int64_t>(std::lround(units * 1000.0 / face_->units_per_em()));
  };
  std::string text = "<</Type/FontDescriptor/FontName";
  pdf::AppendName(text, name);
  text += "/Flags";
  pdf::AppendInteger(text, kSymbolic | (face_->is_fixed_pitch() ? kFixedPitch : 0) |
                               (face_->italic_angle() != 0 ? kItalic : 0));
  text += "/FontBBox[";
  const FontFace::Box box = face_->bounds();
  for (const int side : {box.left, box.bottom, box.right, box.top}) {
    pdf::AppendInteger(text, scaled(side));
  }
  text += "]/ItalicAngle";
  pdf::AppendNumber(text, face_->italic_angle(), kAngleDecimals);
  text += "/Ascent";
  pdf::AppendInteger(text, scaled(face_->ascent()));
  text += "/Descent";
  pdf::AppendInteger(text, scaled(face_->descent()));
  text += "/CapHeight";
  pdf::AppendInteger(text, scaled(face_->cap_height()));
  text += "/StemV";
  pdf::AppendInteger(text, StemWidthOf(face_->weight_class()));
  if (kind_.lists_glyphs) {
    text += "/CIDSet";
    pdf::AppendReference(text, objects.AddStream("", CidSetOf(program)));
  }
  const std::string entries = IsTrueType() ? "/Length1 " + std::to_string(program.size())
                                           : std::string("/Subtype/CIDFontType0C");
  text += IsTrueType() ? "/FontFile2" : "/FontFile3";
  pdf::AppendReference(text, objects.AddStream(entries, std::move(program)));
  return text + ">>";
}

std::string CompositeFont::Descendant(const std::string& name, std::string program,
                                      FontObjects& objects) const {
  std::string text = "<</Type/Font/Subtype";
  text += IsTrueType() ? "/CIDFontType2/BaseFont" : "/CIDFontType0/BaseFont";
  pdf::AppendName(text, name);
  text += "/CIDSystemInfo<</Registry(Adobe)/Ordering(Identity)/Supplement 0>>";
  if (IsTrueType()) {
    pdf::AppendToken(text += "/CIDToGIDMap", GlyphMap(objects));
  }
  text += "/W[" + Widths() + "]/FontDescriptor";
  pdf::AppendReference(text, objects.AddValue(Descriptor(name, std::move(program), objects)));
  return text + ">>";
}

std::string CompositeFont::Write(std::string program, FontObjects& objects) const {
  const std::string name = Name();
  std::map<std::uint32_t, std::u32string> texts;
  for (const auto& [code, use] : codes_) {
    texts[code] = use.text;
  }
  std::string text = "<</Type/Font/Subtype/Type0/BaseFont";
  pdf::AppendName(text, IsTrueType() ? name : name + "-" + EncodingName());
  pdf::AppendToken(text += "/Encoding", Encoding(objects));
  text += "/DescendantFonts[";
  pdf::AppendReference(text, objects.AddValue(Descendant(name, std::move(program), objects)));
  text += "]/ToUnicode";
  pdf::AppendReference(text, objects.AddStream("", ToUnicodeText(texts, kind_.code_bytes)));
  return text + ">>";
}

}  // namespace TarnixTools::engines::fonts
