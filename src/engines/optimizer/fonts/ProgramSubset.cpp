#include "engines/optimizer/fonts/ProgramSubset.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <utility>

#include "engines/support/fonts/HarfBuzzObjects.h"

namespace TarnixTools::engines::optimizer {

using fonts::Blob;
using fonts::FacePtr;
using fonts::FontProgram;
using fonts::HarfBuzz;
using fonts::HarfBuzzSubset;
using fonts::ProgramKind;
using fonts::TagOf;

namespace {

// What a document needs of a program: neither names of the font nor what shapes text.
constexpr std::array kKeptTables = {TagOf("CFF "), TagOf("cvt "), TagOf("fpgm"), TagOf("glyf"),
                                    TagOf("head"), TagOf("hhea"), TagOf("hmtx"), TagOf("loca"),
                                    TagOf("maxp"), TagOf("post"), TagOf("prep")};

bool AddTable(hb_face_t* face, hb_tag_t tag, std::string_view bytes) {
  const Blob table(bytes);
  return HarfBuzz::Get().hb_face_builder_add_table(face, tag, table.get()) != 0;
}

// The tables around a bare CFF program without which it is not read as a font. What they say of
// measures does not get into the program.
struct CffSurroundings {
  explicit CffSurroundings(std::uint32_t glyph_count)
      : metrics(2 * (std::size_t{glyph_count} + 1), '\0') {
    constexpr std::size_t kUnitsPerEm = 18;
    header[0] = static_cast<char>(0);
    header[1] = static_cast<char>(1);
    header.replace(12, 4, "\x5F\x0F\x3C\xF5");
    header[kUnitsPerEm] = static_cast<char>(1000 >> 8);
    header[kUnitsPerEm + 1] = static_cast<char>(1000 & 0xFF);
    horizontal[1] = 1;
    horizontal[35] = 1;  // one advance for all glyphs
    maximum[2] = 0x50;
    maximum[4] = static_cast<char>(glyph_count >> 8);
    maximum[5] = static_cast<char>(glyph_count);
  }

  std::string header = std::string(54, '\0');
  std::string horizontal = std::string(36, '\0');
  std::string maximum = std::string(6, '\0');
  std::string metrics;
};

FacePtr FaceOf(const FontProgram& program, const CffSurroundings& surroundings) {
  const HarfBuzz& hb = HarfBuzz::Get();
  if (program.kind() != ProgramKind::kCff) {
    return FacePtr(hb.hb_face_create(Blob(program.bytes()).get(), 0));
  }
  FacePtr face(hb.hb_face_builder_create());
  const bool is_made = AddTable(face.get(), TagOf("CFF "), program.bytes()) &&
                       AddTable(face.get(), TagOf("head"), surroundings.header) &&
                       AddTable(face.get(), TagOf("hhea"), surroundings.horizontal) &&
                       AddTable(face.get(), TagOf("maxp"), surroundings.maximum) &&
                       AddTable(face.get(), TagOf("hmtx"), surroundings.metrics);
  return is_made ? std::move(face) : nullptr;
}

// Adds the tables that the subset does without to the set.
void DropTables(hb_face_t* face, bool keeps_names, hb_set_t* dropped) {
  fonts::ForEachTable(face, [&](hb_tag_t tag) {
    const bool is_kept =
        std::find(kKeptTables.begin(), kKeptTables.end(), tag) != kKeptTables.end() &&
        (tag != TagOf("post") || keeps_names);
    if (!is_kept) {
      HarfBuzz::Get().hb_set_add(dropped, tag);
    }
  });
}

FacePtr Subset(hb_face_t* face, const SubsetWishes& wishes) {
  const HarfBuzzSubset& subset = HarfBuzzSubset::Get();
  const fonts::SubsetInputPtr input(subset.hb_subset_input_create_or_fail());
  if (input == nullptr) {
    return nullptr;
  }
  hb_set_t* glyphs = subset.hb_subset_input_glyph_set(input.get());
  for (const std::uint32_t glyph : wishes.glyphs) {
    HarfBuzz::Get().hb_set_add(glyphs, glyph);
  }
  DropTables(face, wishes.keeps_names,
             subset.hb_subset_input_set(input.get(), HB_SUBSET_SETS_DROP_TABLE_TAG));
  unsigned flags = HB_SUBSET_FLAGS_RETAIN_GIDS | HB_SUBSET_FLAGS_NOTDEF_OUTLINE;
  flags |= wishes.keeps_names ? unsigned{HB_SUBSET_FLAGS_GLYPH_NAMES} : 0U;
  flags |= wishes.drops_hints ? unsigned{HB_SUBSET_FLAGS_NO_HINTING} : 0U;
  subset.hb_subset_input_set_flags(input.get(), flags);
  return FacePtr(subset.hb_subset_or_fail(face, input.get()));
}

}  // namespace

std::string SubsetOf(const FontProgram& program, const SubsetWishes& wishes) {
  const HarfBuzz& hb = HarfBuzz::Get();
  const CffSurroundings surroundings(program.glyph_count());
  const FacePtr face = FaceOf(program, surroundings);
  const FacePtr made = face == nullptr ? nullptr : Subset(face.get(), wishes);
  if (made == nullptr ||
      (!wishes.maps.empty() && !AddTable(made.get(), TagOf("cmap"), wishes.maps))) {
    return {};
  }
  const Blob bytes(program.kind() == ProgramKind::kCff
                       ? hb.hb_face_reference_table(made.get(), TagOf("CFF "))
                       : hb.hb_face_reference_blob(made.get()));
  return std::string(bytes.bytes());
}

}  // namespace TarnixTools::engines::optimizer
