// The regions of JBIG2 (ITU-T T.88, clause 6): how pixels, symbols and halftones are coded, all of
// them arithmetically.
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_REGIONS_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_REGIONS_H_

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "engines/support/codecs/jbig2/ArithmeticDecoder.h"
#include "engines/support/codecs/jbig2/Bitmap.h"

namespace TarnixTools::engines::jbig2 {

// A pixel by its distance from the one that is decoded.
struct Offset {
  std::int32_t x = 0;
  std::int32_t y = 0;
};

// 6.2.
struct GenericRegion {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  int pattern = 0;                  // 0 to 3: which pixels around tell what to expect
  std::array<Offset, 4> adaptive;   // of the pattern; one but for pattern 0
  bool predicts_rows = false;       // rows like the one above are told by one decision
  const Bitmap* skipped = nullptr;  // pixels that are not coded; null for none
};

// As many as a region of any pattern needs.
Contexts GenericContexts();

Bitmap DecodeGeneric(const GenericRegion& region, ArithmeticDecoder& decoder, Contexts& contexts);

// 6.3: a picture coded by what it is like.
struct RefinementRegion {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  int pattern = 0;                 // 0 or 1
  std::array<Offset, 2> adaptive;  // of pattern 0
  bool predicts_pixels = false;
  const Bitmap* reference = nullptr;
  std::int64_t dx = 0;  // of the reference
  std::int64_t dy = 0;
};

Contexts RefinementContexts();

Bitmap DecodeRefinement(const RefinementRegion& region, ArithmeticDecoder& decoder,
                        Contexts& contexts);

using Symbols = std::vector<std::shared_ptr<const Bitmap>>;

// Bits of a number below `count`.
unsigned BitsFor(std::uint64_t count);

enum class Corner : std::uint8_t { kBottomLeft, kTopLeft, kBottomRight, kTopRight };

// 6.4.
struct TextRegion {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  std::uint32_t instances = 0;
  std::int32_t strip_size = 1;
  Corner corner = Corner::kTopLeft;
  bool is_transposed = false;
  Combination combination = Combination::kOr;
  std::uint8_t default_pixel = 0;
  std::int32_t offset = 0;
  bool refines = false;
  int refinement_pattern = 0;
  std::array<Offset, 2> refinement_adaptive;
};

struct TextContexts {
  explicit TextContexts(unsigned id_bits) : id(id_bits) {}

  IntegerDecoder dt, fs, ds, it, ri, rdw, rdh, rdx, rdy;
  SymbolIdDecoder id;
};

// refinement: contexts for refined symbols
Bitmap DecodeText(const TextRegion& region, const Symbols& symbols, ArithmeticDecoder& decoder,
                  TextContexts& contexts, Contexts& refinement);

// 6.6.
struct HalftoneRegion {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  int pattern = 0;
  bool skips = false;
  Combination combination = Combination::kOr;
  std::uint8_t default_pixel = 0;
  std::uint32_t grid_width = 0;
  std::uint32_t grid_height = 0;
  std::int32_t grid_x = 0;  // in 1/256 pixels
  std::int32_t grid_y = 0;
  std::uint32_t step_x = 0;
  std::uint32_t step_y = 0;
};

Bitmap DecodeHalftone(const HalftoneRegion& region, const Symbols& patterns,
                      ArithmeticDecoder& decoder);

}  // namespace TarnixTools::engines::jbig2

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_REGIONS_H_
