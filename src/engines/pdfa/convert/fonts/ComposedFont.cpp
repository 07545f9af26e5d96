#include "engines/pdfa/convert/fonts/ComposedFont.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

#include "engines/pdfa/convert/fonts/CMapText.h"
#include "engines/pdfa/convert/fonts/SfntFile.h"
#include "engines/support/fonts/CidSet.h"
#include "engines/support/fonts/FontProgram.h"
#include "engines/support/fonts/SubsetTag.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::pdfa {

using fonts::FontFace;
using fonts::OutlineKind;
using pdf::ObjectChange;

namespace {

// Bits of a descriptor's /Flags (ISO 32000-2, table 121).
constexpr std::int64_t kFixedPitch = 1 << 0;
constexpr std::int64_t kSymbolic = 1 << 2;
constexpr std::int64_t kItalic = 1 << 6;

constexpr int kWidthDecimals = 3;

}  // namespace

bool ComposedFont::IsTrueType() const {
  return face_->outline_kind() == OutlineKind::kTrueType;
}

void ComposedFont::Add(std::uint32_t code, std::uint32_t glyph, double width,
                       const std::u32string& text) {
  const double own = face_->Advance(glyph) * 1000.0 / face_->units_per_em();
  if (width < 0 || !IsTrueType()) {
    width = own;
  } else if (const auto known = advances_.find(glyph); known != advances_.end()) {
    width = known->second;
  }
  advances_.emplace(glyph, width);
  glyphs_.insert(glyph);
  codes_[code] = {glyph, width};
  unicode_[code] = text.empty() || text.find(U'\0') != std::u32string::npos ? U" " : text;
}

void ComposedFont::SetAdvances(std::string& program) const {
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
std::uint32_t ComposedFont::CidOf(std::uint32_t code) const {
  return IsTrueType() ? code : face_->CidOf(codes_.at(code).glyph);
}

std::string ComposedFont::ReferenceTo(ObjectChange object) {
  std::string text;
  pdf::AppendReference(text, conversion_->rewriter.Add(std::move(object)));
  return text;
}

// The tag differs for other sets of codes (9.9.2).
std::string ComposedFont::SubsetName() const {
  fonts::SubsetTag tag;
  for (const auto& [code, use] : codes_) {
    tag.Add(code ^ use.glyph << 16U);
  }
  return tag.Before(face_->name());
}

std::string ComposedFont::Descriptor(const std::string& name, std::string program) {
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
std::string ComposedFont::CidSet(const std::string& program) const {
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

std::string ComposedFont::Widths() const {
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

std::string ComposedFont::GlyphMap() const {
  std::string map;
  for (const auto& [code, use] : codes_) {
    map.resize(2 * std::size_t{code});
    map += static_cast<char>(use.glyph >> 8);
    map += static_cast<char>(use.glyph);
  }
  return map;
}

std::string ComposedFont::Encoding() {
  if (IsTrueType() && kind_.code_bytes == 2) {
    return kind_.is_vertical ? "/Identity-V" : "/Identity-H";
  }
  std::map<std::uint32_t, std::uint32_t> cids;
  for (const auto& [code, use] : codes_) {
    cids[code] = CidOf(code);
  }
  return " " + ReferenceTo(MakeCodeMap(cids, kind_.code_bytes, kind_.is_vertical));
}

std::string ComposedFont::Descendant(const std::string& name, std::string program) {
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

bool ComposedFont::Write(std::uint32_t number) {
  std::string program = face_->Subset(glyphs_);
  if (program.empty()) {
    return false;
  }
  SetAdvances(program);
  const std::string name = SubsetName();
  std::string text = "<</Type/Font/Subtype/Type0/BaseFont";
  pdf::AppendName(text, name);
  text += "/Encoding" + Encoding() + "/DescendantFonts[" +
          ReferenceTo(ObjectChange::Value(Descendant(name, std::move(program)))) + "]/ToUnicode " +
          ReferenceTo(MakeToUnicode(unicode_, kind_.code_bytes)) + ">>";
  conversion_->rewriter.Change(number, ObjectChange::Value(text));
  return true;
}

}  // namespace TarnixTools::engines::pdfa
