// The libraries that deal with fonts, each loaded on first use and kept: linked, they would cost
// every start of every program, also of those that never touch a font.
//
//   const Fontconfig& fc = Fontconfig::Get();
//   FcPattern* pattern = fc.FcPatternCreate();
//
// Get() throws LibraryMissing. The functions may be called from any thread, as far as the library
// allows.
#ifndef TARNIX_ENGINES_SUPPORT_FONTS_FONTLIBRARIES_H_
#define TARNIX_ENGINES_SUPPORT_FONTS_FONTLIBRARIES_H_

#include <fontconfig/fontconfig.h>
#include <freetype/freetype.h>
#include <freetype/tttables.h>
#include <fribidi.h>
#include <hb-ot.h>
#include <hb-subset.h>
#include <hb.h>

#include "engines/support/fonts/LibraryMissing.h"

namespace TarnixTools::engines::fonts {

// A function of a library: the same name, called through a pointer.
// NOLINTNEXTLINE(bugprone-macro-parentheses): it declares the name
#define TARNIX_FUNCTION(name) decltype(&::name) name = nullptr

struct Fontconfig {
  static const Fontconfig& Get();

  TARNIX_FUNCTION(FcCharSetHasChar);
  TARNIX_FUNCTION(FcConfigGetFonts);
  TARNIX_FUNCTION(FcConfigSubstitute);
  TARNIX_FUNCTION(FcDefaultSubstitute);
  TARNIX_FUNCTION(FcFontSetDestroy);
  TARNIX_FUNCTION(FcFontSort);
  TARNIX_FUNCTION(FcInitLoadConfigAndFonts);
  TARNIX_FUNCTION(FcPatternAddBool);
  TARNIX_FUNCTION(FcPatternAddInteger);
  TARNIX_FUNCTION(FcPatternAddString);
  TARNIX_FUNCTION(FcPatternCreate);
  TARNIX_FUNCTION(FcPatternDestroy);
  TARNIX_FUNCTION(FcPatternGetBool);
  TARNIX_FUNCTION(FcPatternGetCharSet);
  TARNIX_FUNCTION(FcPatternGetDouble);
  TARNIX_FUNCTION(FcPatternGetInteger);
  TARNIX_FUNCTION(FcPatternGetString);
  TARNIX_FUNCTION(FcPatternGetWithBinding);
  TARNIX_FUNCTION(FcStrCmpIgnoreCase);
};

struct HarfBuzz {
  static const HarfBuzz& Get();

  TARNIX_FUNCTION(hb_blob_create);
  TARNIX_FUNCTION(hb_blob_create_from_file_or_fail);
  TARNIX_FUNCTION(hb_blob_destroy);
  TARNIX_FUNCTION(hb_blob_get_data);
  TARNIX_FUNCTION(hb_blob_get_length);
  TARNIX_FUNCTION(hb_buffer_add_utf32);
  TARNIX_FUNCTION(hb_buffer_allocation_successful);
  TARNIX_FUNCTION(hb_buffer_create);
  TARNIX_FUNCTION(hb_buffer_destroy);
  TARNIX_FUNCTION(hb_buffer_get_glyph_infos);
  TARNIX_FUNCTION(hb_buffer_get_glyph_positions);
  TARNIX_FUNCTION(hb_buffer_set_direction);
  TARNIX_FUNCTION(hb_buffer_set_flags);
  TARNIX_FUNCTION(hb_buffer_set_script);
  TARNIX_FUNCTION(hb_face_builder_add_table);
  TARNIX_FUNCTION(hb_face_builder_create);
  TARNIX_FUNCTION(hb_face_count);
  TARNIX_FUNCTION(hb_face_create);
  TARNIX_FUNCTION(hb_face_destroy);
  TARNIX_FUNCTION(hb_face_get_glyph_count);
  TARNIX_FUNCTION(hb_face_get_table_tags);
  TARNIX_FUNCTION(hb_face_get_upem);
  TARNIX_FUNCTION(hb_face_reference_blob);
  TARNIX_FUNCTION(hb_face_reference_table);
  TARNIX_FUNCTION(hb_font_create);
  TARNIX_FUNCTION(hb_font_destroy);
  TARNIX_FUNCTION(hb_font_get_glyph_extents);
  TARNIX_FUNCTION(hb_font_get_glyph_h_advance);
  TARNIX_FUNCTION(hb_font_get_h_extents);
  TARNIX_FUNCTION(hb_font_get_nominal_glyph);
  TARNIX_FUNCTION(hb_font_set_variations);
  TARNIX_FUNCTION(hb_ot_name_get_utf8);
  TARNIX_FUNCTION(hb_ot_var_get_axis_infos);
  TARNIX_FUNCTION(hb_ot_var_named_instance_get_design_coords);
  TARNIX_FUNCTION(hb_ot_var_named_instance_get_postscript_name_id);
  TARNIX_FUNCTION(hb_ot_var_named_instance_get_subfamily_name_id);
  TARNIX_FUNCTION(hb_set_add);
  TARNIX_FUNCTION(hb_set_add_range);
  TARNIX_FUNCTION(hb_shape);
  TARNIX_FUNCTION(hb_unicode_compose);
  TARNIX_FUNCTION(hb_unicode_decompose);
  TARNIX_FUNCTION(hb_unicode_funcs_get_default);
  TARNIX_FUNCTION(hb_unicode_general_category);
  TARNIX_FUNCTION(hb_unicode_script);
};

struct HarfBuzzSubset {
  static const HarfBuzzSubset& Get();

  TARNIX_FUNCTION(hb_subset_input_create_or_fail);
  TARNIX_FUNCTION(hb_subset_input_destroy);
  TARNIX_FUNCTION(hb_subset_input_glyph_set);
  TARNIX_FUNCTION(hb_subset_input_pin_axis_location);
  TARNIX_FUNCTION(hb_subset_input_set);
  TARNIX_FUNCTION(hb_subset_input_set_flags);
  TARNIX_FUNCTION(hb_subset_or_fail);
};

struct FreeType {
  static const FreeType& Get();

  TARNIX_FUNCTION(FT_Done_Face);
  TARNIX_FUNCTION(FT_Done_FreeType);
  TARNIX_FUNCTION(FT_Get_Char_Index);
  TARNIX_FUNCTION(FT_Get_First_Char);
  TARNIX_FUNCTION(FT_Get_Glyph_Name);
  TARNIX_FUNCTION(FT_Get_Next_Char);
  TARNIX_FUNCTION(FT_Init_FreeType);
  TARNIX_FUNCTION(FT_Load_Glyph);
  TARNIX_FUNCTION(FT_Load_Sfnt_Table);
  TARNIX_FUNCTION(FT_New_Memory_Face);
  TARNIX_FUNCTION(FT_Set_Charmap);
};

struct FriBidi {
  static const FriBidi& Get();

  TARNIX_FUNCTION(fribidi_get_bidi_types);
  TARNIX_FUNCTION(fribidi_get_bracket_types);
  TARNIX_FUNCTION(fribidi_get_par_embedding_levels_ex);
};

#undef TARNIX_FUNCTION

}  // namespace TarnixTools::engines::fonts

#endif  // TARNIX_ENGINES_SUPPORT_FONTS_FONTLIBRARIES_H_
