#include "engines/support/fonts/FontFace.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "engines/support/files/BigEndian.h"
#include "engines/support/fonts/CffCharset.h"
#include "engines/support/fonts/HarfBuzzObjects.h"

namespace TarnixTools::engines::fonts {

namespace {

// Bits of fsType in the OS/2 table.
constexpr int kRestricted = 0x0002;
constexpr int kPreviewAndPrint = 0x0004;
constexpr int kEditable = 0x0008;
constexpr int kNoSubsetting = 0x0100;
constexpr int kBitmapOnly = 0x0200;

constexpr std::size_t kMaxNameLength = 63;
constexpr std::size_t kMaxAxes = 64;

int Signed16(std::string_view table, std::size_t offset) {
  return static_cast<std::int16_t>(Big16(table, offset));
}

// Without tables of variations, what is left is one instance: the default one unless another has
// been asked for.
bool IsKept(std::uint32_t tag, OutlineKind kind) {
  constexpr std::array kTrueTypeTables = {TagOf("glyf"), TagOf("head"), TagOf("hhea"),
                                          TagOf("hmtx"), TagOf("loca"), TagOf("maxp")};
  constexpr std::array kCffTables = {TagOf("CFF "), TagOf("head"), TagOf("hhea"), TagOf("hmtx"),
                                     TagOf("maxp")};
  return kind == OutlineKind::kTrueType
             ? std::find(kTrueTypeTables.begin(), kTrueTypeTables.end(), tag) !=
                   kTrueTypeTables.end()
             : std::find(kCffTables.begin(), kCffTables.end(), tag) != kCffTables.end();
}

// Adds the tables that a subset does without to the set.
void DropTables(hb_face_t* face, OutlineKind kind, hb_set_t* dropped) {
  ForEachTable(face, [&](hb_tag_t tag) {
    if (!IsKept(tag, kind)) {
      HarfBuzz::Get().hb_set_add(dropped, tag);
    }
  });
}

}  // namespace

std::unique_ptr<FontFace> FontFace::Load(const std::string& file, int index) {
  const HarfBuzz& hb = HarfBuzz::Get();
  hb_blob_t* blob = hb.hb_blob_create_from_file_or_fail(file.c_str());
  if (blob == nullptr) {
    return nullptr;
  }
  const unsigned place = static_cast<unsigned>(index) & 0xFFFFU;
  const unsigned instance = static_cast<unsigned>(index) >> 16;
  const bool has_face = index >= 0 && place < hb.hb_face_count(blob);
  hb_face_t* face = has_face ? hb.hb_face_create(blob, place) : nullptr;
  hb.hb_blob_destroy(blob);
  if (face == nullptr) {
    return nullptr;
  }
  std::unique_ptr<FontFace> loaded(new FontFace(face, hb.hb_font_create(face)));
  const bool is_set = instance == 0 || loaded->SetInstance(instance - 1);
  if (!is_set || !loaded->ReadTables()) {
    return nullptr;
  }
  if (instance > 0) {
    loaded->ReadInstanceStyle();
    loaded->ReadInstanceName(instance - 1);
  }
  return loaded;
}

FontFace::FontFace(hb_face_t* face, hb_font_t* font) : face_(face), font_(font) {}

FontFace::~FontFace() {
  const HarfBuzz& hb = HarfBuzz::Get();
  hb.hb_font_destroy(font_);
  hb.hb_face_destroy(face_);
}

bool FontFace::ReadTables() {
  const HarfBuzz& hb = HarfBuzz::Get();
  const Blob head_table(face_, "head");
  const Blob os2_table(face_, "OS/2");
  const Blob post_table(face_, "post");
  const Blob cff(face_, "CFF ");
  const std::string_view head = head_table.bytes();
  const std::string_view os2 = os2_table.bytes();
  const std::string_view post = post_table.bytes();
  const bool is_true_type = !Blob(face_, "glyf").bytes().empty();
  if (head.size() < 54 || glyph_count() == 0 || (!is_true_type && cff.bytes().empty())) {
    return false;
  }
  units_per_em_ = static_cast<int>(hb.hb_face_get_upem(face_));
  if (!is_true_type) {
    CffCharset charset = ReadCffCharset(cff.bytes(), glyph_count());
    outline_kind_ = charset.is_cid_keyed ? OutlineKind::kCffByCid : OutlineKind::kCff;
    cids_ = std::move(charset.cids);
  }
  bounds_ = {Signed16(head, 36), Signed16(head, 38), Signed16(head, 40), Signed16(head, 42)};
  hb_font_extents_t extents{};
  if (hb.hb_font_get_h_extents(font_, &extents) != 0) {
    ascent_ = extents.ascender;
    descent_ = extents.descender;
  } else {
    ascent_ = bounds_.top;
    descent_ = bounds_.bottom;
  }
  weight_class_ = os2.size() >= 6 ? static_cast<int>(Big16(os2, 4)) : 400;
  cap_height_ = os2.size() >= 90 && Big16(os2, 0) >= 2 ? Signed16(os2, 88) : ascent_;
  italic_angle_ = Signed16(post, 4) + Big16(post, 6) / 65536.0;
  is_fixed_pitch_ = Big16(post, 12) != 0 || Big16(post, 14) != 0;
  ReadLicence(os2);
  name_ = PlainName(HB_OT_NAME_ID_POSTSCRIPT_NAME);
  name_ = name_.empty() ? "Font" : name_;
  return true;
}

// Where several bits are set, which old versions of the table allow, the one counts that allows
// most.
void FontFace::ReadLicence(std::string_view os2) {
  const std::uint32_t type = Big16(os2, 8);
  const bool is_restricted =
      (type & kRestricted) != 0 && (type & (kPreviewAndPrint | kEditable)) == 0;
  if (is_restricted || (type & kBitmapOnly) != 0) {
    embedding_right_ = EmbeddingRight::kNone;
  } else if ((type & kNoSubsetting) != 0) {
    embedding_right_ = EmbeddingRight::kWholeOnly;
  }
}

// From here on, all measures are those of the instance.
bool FontFace::SetInstance(unsigned index) {
  const HarfBuzz& hb = HarfBuzz::Get();
  std::array<hb_ot_var_axis_info_t, kMaxAxes> axes{};
  std::array<float, kMaxAxes> values{};
  auto axis_count = static_cast<unsigned>(axes.size());
  auto value_count = static_cast<unsigned>(values.size());
  hb.hb_ot_var_get_axis_infos(face_, 0, &axis_count, axes.data());
  const unsigned all =
      hb.hb_ot_var_named_instance_get_design_coords(face_, index, &value_count, values.data());
  if (axis_count == 0 || all != axis_count || value_count != axis_count) {
    return false;
  }
  std::vector<hb_variation_t> settings;
  for (unsigned i = 0; i < axis_count; ++i) {
    variations_.push_back({axes[i].tag, values[i]});
    settings.push_back({axes[i].tag, values[i]});
  }
  hb.hb_font_set_variations(font_, settings.data(), axis_count);
  return true;
}

void FontFace::ReadInstanceStyle() {
  for (const Variation& variation : variations_) {
    if (variation.axis == TagOf("wght")) {
      weight_class_ = static_cast<int>(variation.value);
    } else if (variation.axis == TagOf("slnt")) {
      italic_angle_ = static_cast<double>(variation.value);
    }
  }
}

// Where the font has no name for it, one of the family and the instance's style.
void FontFace::ReadInstanceName(unsigned index) {
  const HarfBuzz& hb = HarfBuzz::Get();
  std::string name = PlainName(hb.hb_ot_var_named_instance_get_postscript_name_id(face_, index));
  if (name.empty()) {
    for (const unsigned id : {25U, 16U, 1U}) {  // of all instances; of the family
      name = name.empty() ? PlainName(id) : name;
    }
    name += '-' + PlainName(hb.hb_ot_var_named_instance_get_subfamily_name_id(face_, index));
  }
  name_ = name.size() > 1 ? name.substr(0, kMaxNameLength) : name_;
}

// A name of the font, of letters, digits and hyphens only; empty when it has none.
std::string FontFace::PlainName(unsigned name_id) const {
  std::array<char, 256> buffer{};
  auto size = static_cast<unsigned>(buffer.size());
  HarfBuzz::Get().hb_ot_name_get_utf8(face_, name_id, HB_LANGUAGE_INVALID, &size, buffer.data());
  std::string name;
  for (unsigned i = 0; i < std::min<unsigned>(size, buffer.size() - 1); ++i) {
    const char c = buffer[i];
    const bool is_plain =
        (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-';
    if (is_plain && name.size() < kMaxNameLength) {
      name += c;
    }
  }
  return name;
}

std::uint32_t FontFace::glyph_count() const {
  return HarfBuzz::Get().hb_face_get_glyph_count(face_);
}

std::uint32_t FontFace::GlyphOf(char32_t character) const {
  hb_codepoint_t glyph = 0;
  return HarfBuzz::Get().hb_font_get_nominal_glyph(font_, character, &glyph) != 0 ? glyph : 0;
}

int FontFace::Advance(std::uint32_t glyph) const {
  return HarfBuzz::Get().hb_font_get_glyph_h_advance(font_, glyph);
}

bool FontFace::IsBlank(std::uint32_t glyph) const {
  hb_glyph_extents_t extents{};
  return Advance(glyph) == 0 &&
         HarfBuzz::Get().hb_font_get_glyph_extents(font_, glyph, &extents) != 0 &&
         extents.width == 0 && extents.height == 0;
}

std::uint32_t FontFace::BlankGlyph() {
  if (blank_glyph_) {
    return *blank_glyph_;
  }
  blank_glyph_ = 0;
  for (const char32_t c : {0x200CU, 0x200DU, 0x200BU, 0x2060U, 0xFEFFU}) {
    if (const std::uint32_t glyph = GlyphOf(c); glyph != 0 && IsBlank(glyph)) {
      blank_glyph_ = glyph;
      return glyph;
    }
  }
  for (std::uint32_t glyph = 1; glyph < glyph_count(); ++glyph) {
    if (IsBlank(glyph)) {
      blank_glyph_ = glyph;
      break;
    }
  }
  return *blank_glyph_;
}

std::uint32_t FontFace::CidOf(std::uint32_t glyph) const {
  return glyph < cids_.size() ? cids_[glyph] : glyph;
}

std::string FontFace::Subset(const std::set<std::uint32_t>& glyphs) const {
  const HarfBuzz& hb = HarfBuzz::Get();
  const HarfBuzzSubset& subset = HarfBuzzSubset::Get();
  const SubsetInputPtr input(subset.hb_subset_input_create_or_fail());
  if (input == nullptr) {
    return {};
  }
  hb_set_t* kept = subset.hb_subset_input_glyph_set(input.get());
  if (embedding_right_ == EmbeddingRight::kWholeOnly) {
    hb.hb_set_add_range(kept, 0, glyph_count() - 1);
  }
  for (const std::uint32_t glyph : glyphs) {
    hb.hb_set_add(kept, glyph);
  }
  DropTables(face_, outline_kind_,
             subset.hb_subset_input_set(input.get(), HB_SUBSET_SETS_DROP_TABLE_TAG));
  for (const Variation& variation : variations_) {
    subset.hb_subset_input_pin_axis_location(input.get(), face_, variation.axis, variation.value);
  }
  // Character identifiers stay what they are when glyphs move; glyph numbers have to be kept.
  const unsigned keeps_numbers =
      outline_kind_ == OutlineKind::kCffByCid ? 0U : unsigned{HB_SUBSET_FLAGS_RETAIN_GIDS};
  subset.hb_subset_input_set_flags(input.get(), HB_SUBSET_FLAGS_NO_HINTING | keeps_numbers);
  const FacePtr made(subset.hb_subset_or_fail(face_, input.get()));
  if (made == nullptr) {
    return {};
  }
  const Blob program(outline_kind_ == OutlineKind::kTrueType
                         ? hb.hb_face_reference_blob(made.get())
                         : hb.hb_face_reference_table(made.get(), TagOf("CFF ")));
  return std::string(program.bytes());
}

}  // namespace TarnixTools::engines::fonts
