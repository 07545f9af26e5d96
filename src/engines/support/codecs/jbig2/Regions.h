// The region decoding procedures of JBIG2 (ISO/IEC 14492, clause 6), as far as regions are coded
// arithmetically. Names in capitals in comments are the standard's.
//
//   ArithmeticDecoder decoder(data, budget);
//   Contexts contexts = GenericContexts();
//   Bitmap bitmap = DecodeGenericRegion({.width = 64, .height = 56}, decoder, contexts);
//
// All throw Failure for parameters and data that make no sense, and when the budget is used up.
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_REGIONS_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_REGIONS_H_

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "engines/support/codecs/jbig2/ArithmeticDecoder.h"
#include "engines/support/codecs/jbig2/Bitmap.h"

namespace TarnixTools::engines::jbig2 {

// A pixel of a template, by its distance from the pixel that is decoded.
struct TemplatePixel {
  std::int32_t x = 0;
  std::int32_t y = 0;
};

// Where the adaptive template pixels (AT) of a generic region and of a refinement stand.
using AdaptivePixels = std::array<TemplatePixel, 4>;
using RefinementAdaptivePixels = std::array<TemplatePixel, 2>;

// The parameters of the generic region decoding procedure (6.2).
struct GenericRegion {
  std::uint32_t width = 0;          // GBW
  std::uint32_t height = 0;         // GBH
  int template_number = 0;          // GBTEMPLATE: 0 to 3
  AdaptivePixels adaptive;          // GBAT: four for template 0, one for the others
  bool typical_prediction = false;  // TPGDON: a row like the one above is told by one decision
  const Bitmap* skip = nullptr;     // SKIP: pixels that are not coded, and are 0; null for none
};

// The contexts of the decision SLTP, by the number of the template: whether LTP changes, which says
// that a row is like the one above (figures 8 to 11).
inline constexpr std::array<std::uint32_t, 4> kTypicalContexts = {0x9B25, 0x0795, 0x00E5, 0x0195};

// Contexts for generic regions of any template: by the values of its pixels, from the highest bit on
// row by row.
Contexts GenericContexts();

Bitmap DecodeGenericRegion(const GenericRegion& region, ArithmeticDecoder& decoder,
                           Contexts& contexts);

// The parameters of the generic refinement region decoding procedure (6.3): a bitmap coded by how it
// differs from another.
struct RefinementRegion {
  std::uint32_t width = 0;            // GRW
  std::uint32_t height = 0;           // GRH
  int template_number = 0;            // GRTEMPLATE: 0 or 1
  RefinementAdaptivePixels adaptive;  // GRAT, of template 0
  bool typical_prediction = false;    // TPGRON: pixels amid others of one colour are not coded
  const Bitmap* reference = nullptr;  // GRREFERENCE
  std::int64_t reference_dx = 0;      // GRREFERENCEDX
  std::int64_t reference_dy = 0;      // GRREFERENCEDY
};

// Contexts for generic refinement regions of both templates.
Contexts RefinementContexts();

Bitmap DecodeRefinementRegion(const RefinementRegion& region, ArithmeticDecoder& decoder,
                              Contexts& contexts);

// Bitmaps of symbols, by ID, or of the patterns of a halftone, by gray value.
using Symbols = std::vector<std::shared_ptr<const Bitmap>>;

// The bits of a number below `count`: the length of a symbol ID, and of a gray value.
unsigned CodeLength(std::uint64_t count);

// The corner of a symbol instance that its coordinates are those of. The values are those of
// REFCORNER.
enum class ReferenceCorner : std::uint8_t { kBottomLeft, kTopLeft, kBottomRight, kTopRight };

// The parameters of the text region decoding procedure (6.4): instances of symbols in strips, each
// by S, its place along the strip, and T, that across it.
struct TextRegion {
  std::uint32_t width = 0;      // SBW
  std::uint32_t height = 0;     // SBH
  std::uint32_t instances = 0;  // SBNUMINSTANCES
  std::int32_t strip_size = 1;  // SBSTRIPS: how many values of T a strip has
  ReferenceCorner reference_corner = ReferenceCorner::kTopLeft;
  bool is_transposed = false;                                           // S runs downwards
  CombinationOperator combination_operator = CombinationOperator::kOr;  // SBCOMBOP
  std::uint8_t default_pixel = 0;                                       // SBDEFPIXEL
  std::int32_t s_offset = 0;                                            // SBDSOFFSET
  bool uses_refinement = false;                                         // SBREFINE
  int refinement_template = 0;                                          // SBRTEMPLATE
  RefinementAdaptivePixels refinement_adaptive;                         // SBRAT
};

// The integer decoding procedures of text regions.
struct TextDecoders {
  explicit TextDecoders(unsigned code_length) : iaid(code_length) {}

  IntegerDecoder iadt, iafs, iads, iait, iari, iardw, iardh, iardx, iardy;
  SymbolIdDecoder iaid;
};

//   refinement_contexts - for instances that refine their symbol
Bitmap DecodeTextRegion(const TextRegion& region, const Symbols& symbols,
                        ArithmeticDecoder& decoder, TextDecoders& decoders,
                        Contexts& refinement_contexts);

// The parameters of the halftone region decoding procedure (6.6): a grid of gray values, each of
// which paints its pattern.
struct HalftoneRegion {
  std::uint32_t width = 0;                                              // HBW
  std::uint32_t height = 0;                                             // HBH
  int template_number = 0;                                              // HTEMPLATE
  bool enables_skip = false;                                            // HENABLESKIP
  CombinationOperator combination_operator = CombinationOperator::kOr;  // HCOMBOP
  std::uint8_t default_pixel = 0;                                       // HDEFPIXEL
  std::uint32_t grid_width = 0;                                         // HGW
  std::uint32_t grid_height = 0;                                        // HGH
  std::int32_t grid_x = 0;                                              // HGX, in 1/256 pixels
  std::int32_t grid_y = 0;                                              // HGY, in 1/256 pixels
  std::uint32_t grid_vector_x = 0;                                      // HRX, in 1/256 pixels
  std::uint32_t grid_vector_y = 0;                                      // HRY, in 1/256 pixels
};

Bitmap DecodeHalftoneRegion(const HalftoneRegion& region, const Symbols& patterns,
                            ArithmeticDecoder& decoder);

}  // namespace TarnixTools::engines::jbig2

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_REGIONS_H_
