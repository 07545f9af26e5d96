#include "engines/support/fonts/FontLibraries.h"

#include <string>

#include "engines/support/files/DynamicLibrary.h"

namespace TarnixTools::engines::fonts {

namespace {

void ThrowMissing(const std::string& text) {
  throw LibraryMissing(text);
}

using Library = RequiredLibrary<ThrowMissing>;

#define TARNIX_RESOLVE(name) library.Resolve(table.name, #name)

Fontconfig LoadFontconfig() {
  const Library library("libfontconfig.so.1");
  Fontconfig table;
  TARNIX_RESOLVE(FcCharSetHasChar);
  TARNIX_RESOLVE(FcConfigGetFonts);
  TARNIX_RESOLVE(FcConfigSubstitute);
  TARNIX_RESOLVE(FcDefaultSubstitute);
  TARNIX_RESOLVE(FcFontSetDestroy);
  TARNIX_RESOLVE(FcFontSort);
  TARNIX_RESOLVE(FcInitLoadConfigAndFonts);
  TARNIX_RESOLVE(FcPatternAddBool);
  TARNIX_RESOLVE(FcPatternAddInteger);
  TARNIX_RESOLVE(FcPatternAddString);
  TARNIX_RESOLVE(FcPatternCreate);
  TARNIX_RESOLVE(FcPatternDestroy);
  TARNIX_RESOLVE(FcPatternGetBool);
  TARNIX_RESOLVE(FcPatternGetCharSet);
  TARNIX_RESOLVE(FcPatternGetDouble);
  TARNIX_RESOLVE(FcPatternGetInteger);
  TARNIX_RESOLVE(FcPatternGetString);
  TARNIX_RESOLVE(FcPatternGetWithBinding);
  TARNIX_RESOLVE(FcStrCmpIgnoreCase);
  return table;
}

HarfBuzz LoadHarfBuzz() {
  const Library library("libharfbuzz.so.0");
  HarfBuzz table;
  TARNIX_RESOLVE(hb_blob_create);
  TARNIX_RESOLVE(hb_blob_create_from_file_or_fail);
  TARNIX_RESOLVE(hb_blob_destroy);
  TARNIX_RESOLVE(hb_blob_get_data);
  TARNIX_RESOLVE(hb_blob_get_length);
  TARNIX_RESOLVE(hb_buffer_add_utf32);
  TARNIX_RESOLVE(hb_buffer_allocation_successful);
  TARNIX_RESOLVE(hb_buffer_create);
  TARNIX_RESOLVE(hb_buffer_destroy);
  TARNIX_RESOLVE(hb_buffer_get_glyph_infos);
  TARNIX_RESOLVE(hb_buffer_get_glyph_positions);
  TARNIX_RESOLVE(hb_buffer_set_direction);
  TARNIX_RESOLVE(hb_buffer_set_flags);
  TARNIX_RESOLVE(hb_buffer_set_script);
  TARNIX_RESOLVE(hb_face_builder_add_table);
  TARNIX_RESOLVE(hb_face_builder_create);
  TARNIX_RESOLVE(hb_face_count);
  TARNIX_RESOLVE(hb_face_create);
  TARNIX_RESOLVE(hb_face_destroy);
  TARNIX_RESOLVE(hb_face_get_glyph_count);
  TARNIX_RESOLVE(hb_face_get_table_tags);
  TARNIX_RESOLVE(hb_face_get_upem);
  TARNIX_RESOLVE(hb_face_reference_blob);
  TARNIX_RESOLVE(hb_face_reference_table);
  TARNIX_RESOLVE(hb_font_create);
  TARNIX_RESOLVE(hb_font_destroy);
  TARNIX_RESOLVE(hb_font_get_glyph_extents);
  TARNIX_RESOLVE(hb_font_get_glyph_h_advance);
  TARNIX_RESOLVE(hb_font_get_h_extents);
  TARNIX_RESOLVE(hb_font_get_nominal_glyph);
  TARNIX_RESOLVE(hb_font_set_variations);
  TARNIX_RESOLVE(hb_ot_name_get_utf8);
  TARNIX_RESOLVE(hb_ot_var_get_axis_infos);
  TARNIX_RESOLVE(hb_ot_var_named_instance_get_design_coords);
  TARNIX_RESOLVE(hb_ot_var_named_instance_get_postscript_name_id);
  TARNIX_RESOLVE(hb_ot_var_named_instance_get_subfamily_name_id);
  TARNIX_RESOLVE(hb_set_add);
  TARNIX_RESOLVE(hb_set_add_range);
  TARNIX_RESOLVE(hb_shape);
  TARNIX_RESOLVE(hb_unicode_compose);
  TARNIX_RESOLVE(hb_unicode_decompose);
  TARNIX_RESOLVE(hb_unicode_funcs_get_default);
  TARNIX_RESOLVE(hb_unicode_general_category);
  TARNIX_RESOLVE(hb_unicode_script);
  return table;
}

HarfBuzzSubset LoadHarfBuzzSubset() {
  const Library library("libharfbuzz-subset.so.0");
  HarfBuzzSubset table;
  TARNIX_RESOLVE(hb_subset_input_create_or_fail);
  TARNIX_RESOLVE(hb_subset_input_destroy);
  TARNIX_RESOLVE(hb_subset_input_glyph_set);
  TARNIX_RESOLVE(hb_subset_input_pin_axis_location);
  TARNIX_RESOLVE(hb_subset_input_set);
  TARNIX_RESOLVE(hb_subset_input_set_flags);
  TARNIX_RESOLVE(hb_subset_or_fail);
  return table;
}

FreeType LoadFreeType() {
  const Library library("libfreetype.so.6");
  FreeType table;
  TARNIX_RESOLVE(FT_Done_Face);
  TARNIX_RESOLVE(FT_Done_FreeType);
  TARNIX_RESOLVE(FT_Get_Char_Index);
  TARNIX_RESOLVE(FT_Get_First_Char);
  TARNIX_RESOLVE(FT_Get_Glyph_Name);
  TARNIX_RESOLVE(FT_Get_Next_Char);
  TARNIX_RESOLVE(FT_Init_FreeType);
  TARNIX_RESOLVE(FT_Load_Glyph);
  TARNIX_RESOLVE(FT_Load_Sfnt_Table);
  TARNIX_RESOLVE(FT_New_Memory_Face);
  TARNIX_RESOLVE(FT_Set_Charmap);
  return table;
}

FriBidi LoadFriBidi() {
  const Library library("libfribidi.so.0");
  FriBidi table;
  TARNIX_RESOLVE(fribidi_get_bidi_types);
  TARNIX_RESOLVE(fribidi_get_bracket_types);
  TARNIX_RESOLVE(fribidi_get_par_embedding_levels_ex);
  return table;
}

#undef TARNIX_RESOLVE

}  // namespace

const Fontconfig& Fontconfig::Get() {
  static const Fontconfig table = LoadFontconfig();
  return table;
}

const HarfBuzz& HarfBuzz::Get() {
  static const HarfBuzz table = LoadHarfBuzz();
  return table;
}

const HarfBuzzSubset& HarfBuzzSubset::Get() {
  static const HarfBuzzSubset table = LoadHarfBuzzSubset();
  return table;
}

const FreeType& FreeType::Get() {
  static const FreeType table = LoadFreeType();
  return table;
}

const FriBidi& FriBidi::Get() {
  static const FriBidi table = LoadFriBidi();
  return table;
}

}  // namespace TarnixTools::engines::fonts
