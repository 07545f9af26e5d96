#include "engines/support/fonts/FontProgram.h"

#include <array>
#include <utility>

#include "engines/support/fonts/CffCharset.h"
#include "engines/support/fonts/FontLibraries.h"

namespace TarnixTools::engines::fonts {

namespace {

constexpr std::uint32_t kCffTable = 0x43464620;  // "CFF "
constexpr int kPointKindBits = 3;                // what else is in a point's tag is for hints
constexpr std::size_t kMaxNameLength = 128;
constexpr std::size_t kMaxMaps = 64;
constexpr FT_Int32 kUnscaled = FT_LOAD_NO_SCALE | FT_LOAD_NO_HINTING | FT_LOAD_IGNORE_TRANSFORM;

}  // namespace

std::optional<ProgramKind> ProgramKindOf(std::string_view bytes) {
  using std::string_view_literals::operator""sv;
  const std::string_view start = bytes.substr(0, 4);
  if (start == "\0\1\0\0"sv || start == "true") {
    return ProgramKind::kTrueType;
  }
  if (start == "OTTO") {
    return ProgramKind::kOpenType;
  }
  if (start.starts_with("%!") || start.starts_with("\x80\x01")) {
    return ProgramKind::kType1;
  }
  return start.starts_with("\1\0"sv) ? std::optional(ProgramKind::kCff) : std::nullopt;
}

std::unique_ptr<FontProgram> FontProgram::Open(std::string_view bytes) {
  const std::optional<ProgramKind> kind = ProgramKindOf(bytes);
  if (!kind) {
    return nullptr;
  }
  std::unique_ptr<FontProgram> program(new FontProgram(bytes, *kind));
  return program->ReadFace() ? std::move(program) : nullptr;
}

FontProgram::~FontProgram() {
  if (library_ == nullptr) {
    return;  // the functions may be what is missing
  }
  const FreeType& ft = FreeType::Get();
  if (face_ != nullptr) {
    ft.FT_Done_Face(face_);
  }
  ft.FT_Done_FreeType(library_);
}

// Each program has a library of its own, which makes it independent of what other threads do.
bool FontProgram::ReadFace() {
  const FreeType& ft = FreeType::Get();
  if (ft.FT_Init_FreeType(&library_) != 0) {
    library_ = nullptr;
    return false;
  }
  const auto* start = reinterpret_cast<const FT_Byte*>(bytes_.data());
  if (ft.FT_New_Memory_Face(library_, start, static_cast<FT_Long>(bytes_.size()), 0, &face_) != 0) {
    face_ = nullptr;
    return false;
  }
  if (kind_ == ProgramKind::kTrueType && !Table(kCffTable).empty()) {
    kind_ = ProgramKind::kOpenType;
  }
  glyph_count_ = static_cast<std::uint32_t>(face_->num_glyphs);
  ReadCharset();
  ReadMaps();
  return FT_IS_SCALABLE(face_) && glyph_count_ > 0 && maps_.size() <= kMaxMaps;
}

// Of a bare CID-keyed font FreeType counts identifiers, not glyphs.
void FontProgram::ReadCharset() {
  if (!is_cff()) {
    return;
  }
  const std::string table = kind_ == ProgramKind::kOpenType ? Table(kCffTable) : std::string();
  const std::string_view cff = kind_ == ProgramKind::kOpenType ? table : bytes_;
  glyph_count_ = CffGlyphCount(cff);
  CffCharset charset = ReadCffCharset(cff, glyph_count_);
  is_cid_keyed_ = charset.is_cid_keyed;
  cids_ = std::move(charset.cids);
  for (std::size_t glyph = 0; glyph < cids_.size(); ++glyph) {
    glyphs_of_cids_.emplace(cids_[glyph], static_cast<std::uint32_t>(glyph));
  }
}

void FontProgram::ReadMaps() {
  for (int i = 0; i < face_->num_charmaps; ++i) {
    const FT_CharMap map = face_->charmaps[i];
    // Those that only tell variants of characters cannot be set.
    if (FreeType::Get().FT_Set_Charmap(face_, map) == 0) {
      maps_.push_back({map->platform_id, map->encoding_id});
      map_places_.push_back(i);
    }
  }
}

int FontProgram::units_per_em() const {
  return face_->units_per_EM;
}

bool FontProgram::is_tricky() const {
  return FT_IS_TRICKY(face_);
}

bool FontProgram::is_bold() const {
  return (face_->style_flags & FT_STYLE_FLAG_BOLD) != 0;
}

bool FontProgram::is_italic() const {
  return (face_->style_flags & FT_STYLE_FLAG_ITALIC) != 0;
}

bool FontProgram::has_glyph_names() const {
  return !is_cid_keyed_ && FT_HAS_GLYPH_NAMES(face_);
}

std::string FontProgram::NameOf(std::uint32_t glyph) {
  std::array<char, kMaxNameLength> name{};
  if (!has_glyph_names() ||
      FreeType::Get().FT_Get_Glyph_Name(face_, glyph, name.data(),
                                        static_cast<FT_UInt>(name.size())) != 0) {
    return {};
  }
  return name.data();
}

std::uint32_t FontProgram::GlyphNamed(std::string_view name) {
  if (!glyphs_of_names_) {
    glyphs_of_names_.emplace();
    for (std::uint32_t glyph = 0; has_glyph_names() && glyph < glyph_count_; ++glyph) {
      glyphs_of_names_->emplace(NameOf(glyph), glyph);
    }
    glyphs_of_names_->erase(std::string());
  }
  const auto found = glyphs_of_names_->find(std::string(name));
  return found == glyphs_of_names_->end() ? 0 : found->second;
}

std::uint32_t FontProgram::GlyphOfCid(std::uint32_t cid) const {
  if (cids_.empty()) {
    return cid < glyph_count_ ? cid : 0;
  }
  const auto found = glyphs_of_cids_.find(cid);
  return found == glyphs_of_cids_.end() ? 0 : found->second;
}

bool FontProgram::SetMap(std::size_t map) {
  return map < map_places_.size() &&
         FreeType::Get().FT_Set_Charmap(face_, face_->charmaps[map_places_[map]]) == 0;
}

std::uint32_t FontProgram::GlyphOf(std::size_t map, std::uint32_t code) {
  return SetMap(map) ? FreeType::Get().FT_Get_Char_Index(face_, code) : 0;
}

std::vector<CodeGlyph> FontProgram::Mappings(std::size_t map, std::size_t most) {
  std::vector<CodeGlyph> mappings;
  if (!SetMap(map)) {
    return mappings;
  }
  const FreeType& ft = FreeType::Get();
  FT_UInt glyph = 0;
  for (FT_ULong code = ft.FT_Get_First_Char(face_, &glyph); glyph != 0 && mappings.size() < most;
       code = ft.FT_Get_Next_Char(face_, code, &glyph)) {
    mappings.push_back({static_cast<std::uint32_t>(code), glyph});
  }
  return mappings;
}

// Glyphs of a bare CID-keyed font are loaded by their identifiers.
bool FontProgram::LoadGlyph(std::uint32_t glyph) {
  const bool goes_by_cid = kind_ == ProgramKind::kCff && glyph < cids_.size();
  const FT_UInt index = goes_by_cid ? cids_[glyph] : glyph;
  return glyph < glyph_count_ && FreeType::Get().FT_Load_Glyph(face_, index, kUnscaled) == 0;
}

std::optional<GlyphShape> FontProgram::ShapeOf(std::uint32_t glyph) {
  if (!LoadGlyph(glyph) || face_->glyph->format != FT_GLYPH_FORMAT_OUTLINE) {
    return std::nullopt;
  }
  const FT_Outline& outline = face_->glyph->outline;
  GlyphShape shape;
  for (int i = 0; i < outline.n_points; ++i) {
    shape.points.push_back(
        {outline.points[i].x, outline.points[i].y, outline.tags[i] & kPointKindBits});
  }
  for (int i = 0; i < outline.n_contours; ++i) {
    shape.contour_ends.push_back(outline.contours[i]);
  }
  shape.advance = face_->glyph->metrics.horiAdvance;
  return shape;
}

std::optional<double> FontProgram::AdvanceOf(std::uint32_t glyph) {
  if (units_per_em() <= 0 || !LoadGlyph(glyph)) {
    return std::nullopt;
  }
  return 1000.0 * static_cast<double>(face_->glyph->metrics.horiAdvance) / units_per_em();
}

std::string FontProgram::Table(std::uint32_t tag) {
  const FreeType& ft = FreeType::Get();
  FT_ULong length = 0;
  if (!FT_IS_SFNT(face_) || ft.FT_Load_Sfnt_Table(face_, tag, 0, nullptr, &length) != 0 ||
      length > bytes_.size()) {
    return {};
  }
  std::string table(length, '\0');
  auto* start = reinterpret_cast<FT_Byte*>(table.data());
  return ft.FT_Load_Sfnt_Table(face_, tag, 0, start, &length) == 0 ? table : std::string();
}

}  // namespace TarnixTools::engines::fonts
