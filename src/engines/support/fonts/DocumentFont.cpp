#include "engines/support/fonts/DocumentFont.h"

#include <array>
#include <cstddef>
#include <utility>

#include "engines/support/fonts/CMapFile.h"
#include "engines/support/fonts/InstalledMaps.h"
#include "pdf/content/Differences.h"

namespace TarnixTools::engines::fonts {

using pdf::Arena;
using pdf::Document;
using pdf::Object;

namespace {

constexpr std::int64_t kFixedPitchFlag = 1 << 0;
constexpr std::int64_t kSerifFlag = 1 << 1;
constexpr std::int64_t kSymbolicFlag = 1 << 2;
constexpr std::int64_t kNonsymbolicFlag = 1 << 5;
constexpr std::int64_t kItalicFlag = 1 << 6;
constexpr std::int64_t kForceBoldFlag = 1 << 18;
constexpr std::int64_t kCodes = 256;
constexpr std::size_t kMaxGlyphMapBytes = std::size_t{2} * 65536;
constexpr std::size_t kMaxCMapBytes = std::size_t{16} << 20;

FontKind SimpleKindOf(const Object& subtype) {
  if (subtype.IsName("Type1") || subtype.IsName("MMType1")) {
    return FontKind::kType1;
  }
  if (subtype.IsName("TrueType")) {
    return FontKind::kTrueType;
  }
  return subtype.IsName("Type3") ? FontKind::kType3 : FontKind::kUnknown;
}

}  // namespace

DocumentFont::DocumentFont(Document& document, const Object& font, MapsByName maps) {
  Arena arena;
  const pdf::Followed found = document.Follow(font, arena);
  const Object& dictionary = found.value;
  number_ = found.number;
  name_ = document.Resolve(dictionary.Get("BaseFont"), arena).Text();
  has_to_unicode_ = dictionary.Has("ToUnicode");
  const Object subtype = document.Resolve(dictionary.Get("Subtype"), arena);
  if (subtype.IsName("Type0")) {
    ReadComposite(document, dictionary, maps);
    return;
  }
  kind_ = SimpleKindOf(subtype);
  if (kind_ != FontKind::kUnknown) {
    ReadSimple(document, dictionary);
  }
}

void DocumentFont::ReadSimple(Document& document, const Object& font) {
  codes_ = CodeMap::OneByte();
  ReadDescriptor(document, font.Get("FontDescriptor"));
  ReadEncoding(document, font);
  ReadWidths(document, font);
}

void DocumentFont::ReadEncoding(Document& document, const Object& font) {
  Arena arena;
  const Object encoding = document.Resolve(font.Get("Encoding"), arena);
  const Object name =
      encoding.IsName() ? encoding : document.Resolve(encoding.Get("BaseEncoding"), arena);
  has_encoding_ = !encoding.IsNull();
  base_ = BaseEncodingOf(name.Text());
  is_encoding_known_ = !name.IsName("MacExpertEncoding");
  const auto names = pdf::ReadDifferences(document, encoding, arena);
  for (std::size_t code = 0; code < names.size(); ++code) {
    if (!names[code].empty()) {
      differences_.emplace(static_cast<std::uint8_t>(code), names[code]);
    }
  }
}

void DocumentFont::ReadWidths(Document& document, const Object& font) {
  Arena arena;
  const std::int64_t first = document.Resolve(font.Get("FirstChar"), arena).IntegerOr(0);
  std::int64_t code = first < 0 || first >= kCodes ? kCodes : first;
  for (const Object& item : document.Resolve(font.Get("Widths"), arena).Items()) {
    const Object width = document.Resolve(item, arena);
    if (code < kCodes && width.IsNumber()) {
      widths_.emplace(static_cast<std::uint8_t>(code), width.NumberOr(0));
    }
    ++code;
  }
}

void DocumentFont::ReadComposite(Document& document, const Object& font, MapsByName maps) {
  Arena arena;
  const auto descendants = document.Resolve(font.Get("DescendantFonts"), arena).Items();
  const Object descendant =
      descendants.empty() ? Object() : document.Resolve(descendants[0], arena);
  const Object subtype = document.Resolve(descendant.Get("Subtype"), arena);
  if (subtype.IsName("CIDFontType0")) {
    kind_ = FontKind::kCidType0;
  } else if (subtype.IsName("CIDFontType2")) {
    kind_ = FontKind::kCidType2;
  } else {
    return;
  }
  const Object collection = document.Resolve(descendant.Get("CIDSystemInfo"), arena);
  if (document.Resolve(collection.Get("Registry"), arena).Text() == "Adobe") {
    ordering_ = document.Resolve(collection.Get("Ordering"), arena).Text();
  }
  ReadCodes(document, font.Get("Encoding"), maps);
  ReadDescriptor(document, descendant.Get("FontDescriptor"));
  ReadGlyphMap(document, descendant.Get("CIDToGIDMap"));
  cid_widths_ = CidWidths(document, descendant);
}

// What the other predefined maps have for codes is not known here.
void DocumentFont::ReadCodes(Document& document, const Object& encoding, MapsByName maps) {
  Arena arena;
  const pdf::Followed found = document.Follow(encoding, arena);
  is_vertical_ = found.value.Text().ends_with("-V");
  if (found.value.IsName("Identity-H") || found.value.IsName("Identity-V")) {
    codes_ = CodeMap::Identity();
    return;
  }
  has_unicode_codes_ = found.value.Text().starts_with("Uni");
  const bool takes_any = maps == MapsByName::kInstalled;
  if (found.value.IsName() && takes_any) {
    if (auto map = InstalledMap(found.value.Text())) {
      codes_ = CodeMap::SameAs(std::move(map));
    }
    return;
  }
  if (!found.value.IsDictionary() || found.number == 0 ||
      (found.value.Has("UseCMap") && !takes_any)) {
    return;
  }
  const auto stream = document.TryDecodeStream(found.number, kMaxCMapBytes);
  if (stream && stream->complete) {
    codes_ =
        takes_any ? CodeMap::ReadAny(stream->data, &InstalledMap) : CodeMap::Read(stream->data);
    is_vertical_ = CMapFile::Read(stream->data).write_mode() == 1;
  }
}

void DocumentFont::ReadGlyphMap(Document& document, const Object& value) {
  Arena arena;
  const pdf::Followed found = document.Follow(value, arena);
  if (found.value.IsNull() || found.value.IsName()) {
    return;
  }
  const auto stream = document.TryDecodeStream(found.number, kMaxGlyphMapBytes);
  if (stream && stream->complete) {
    glyph_map_ = stream->data;
  } else {
    codes_.reset();
  }
}

void DocumentFont::ReadDescriptor(Document& document, const Object& value) {
  Arena arena;
  const pdf::Followed found = document.Follow(value, arena);
  const Object& dictionary = found.value;
  descriptor_.number = found.number;
  const std::int64_t flags = document.Resolve(dictionary.Get("Flags"), arena).IntegerOr(0);
  descriptor_.is_symbolic = (flags & kSymbolicFlag) != 0 || (flags & kNonsymbolicFlag) == 0;
  descriptor_.is_fixed_pitch = (flags & kFixedPitchFlag) != 0;
  descriptor_.is_serif = (flags & kSerifFlag) != 0;
  descriptor_.is_italic = (flags & kItalicFlag) != 0;
  descriptor_.is_bold = (flags & kForceBoldFlag) != 0;
  descriptor_.lists_glyphs = dictionary.Has("CIDSet") || dictionary.Has("CharSet");
  const Object missing_width = document.Resolve(dictionary.Get("MissingWidth"), arena);
  if (missing_width.IsNumber()) {
    descriptor_.missing_width = missing_width.NumberOr(0);
  }
  constexpr std::array<std::pair<std::string_view, ProgramEntry>, 3> kEntries = {
      {{"FontFile", ProgramEntry::kFontFile},
       {"FontFile2", ProgramEntry::kFontFile2},
       {"FontFile3", ProgramEntry::kFontFile3}}};
  for (const auto& [key, entry] : kEntries) {
    const pdf::Followed program = document.Follow(dictionary.Get(key), arena);
    if (program.number != 0 && program.value.IsDictionary()) {
      descriptor_.entry = entry;
      descriptor_.program = program.number;
      descriptor_.program_subtype = document.Resolve(program.value.Get("Subtype"), arena).Text();
    }
  }
}

std::string_view DocumentFont::GlyphNameOf(std::uint8_t code) const {
  const auto found = differences_.find(code);
  if (found != differences_.end()) {
    return found->second;
  }
  return base_ ? GlyphNameIn(*base_, code) : std::string_view();
}

std::string_view DocumentFont::StandardNameOf(std::uint8_t code) const {
  const std::string_view name = GlyphNameOf(code);
  const bool has_standard_name = kind_ == FontKind::kTrueType && !descriptor_.is_symbolic && !base_;
  return name.empty() && has_standard_name ? GlyphNameIn(BaseEncoding::kStandard, code) : name;
}

std::optional<double> DocumentFont::WidthOf(std::uint8_t code) const {
  const auto found = widths_.find(code);
  return found == widths_.end() ? std::nullopt : std::optional(found->second);
}

std::uint32_t DocumentFont::MappedGlyphOf(std::uint32_t cid) const {
  if (!glyph_map_) {
    return cid;
  }
  const std::size_t place = 2 * std::size_t{cid};
  if (place + 2 > glyph_map_->size()) {
    return 0;
  }
  return static_cast<std::uint32_t>(static_cast<unsigned char>((*glyph_map_)[place])) << 8 |
         static_cast<unsigned char>((*glyph_map_)[place + 1]);
}

}  // namespace TarnixTools::engines::fonts
