// Codes a generic region of JBIG2 arithmetically (ISO/IEC 14492, 6.2), with template 0 and typical
// prediction.
//
//   GenericRegionEncoder encoder(picture, kNominalPixels);
//   encoder.EncodeRows();
//   const std::string data = encoder.Finish();
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_GENERICREGIONENCODER_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_GENERICREGIONENCODER_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "engines/support/codecs/BitRows.h"
#include "engines/support/codecs/jbig2/ArithmeticEncoder.h"
#include "engines/support/codecs/jbig2/Regions.h"

namespace TarnixTools::engines::jbig2 {

// Where the adaptive pixels of template 0 nominally stand (figure 3).
inline constexpr AdaptivePixels kNominalPixels = {{{3, -1}, {-3, -1}, {2, -2}, {-2, -2}}};

// How far from its pixel the first adaptive pixel may stand here, in each direction.
inline constexpr std::int32_t kMaxAdaptiveDistance = 24;

class GenericRegionEncoder {
 public:
  // The picture has pixels, and outlives the encoder.
  //   first_adaptive - where the first adaptive pixel stands; the others are where they nominally are
  GenericRegionEncoder(const BitPicture& picture, TemplatePixel first_adaptive);

  void EncodeRows();

  // Ends the data, and takes it. The encoder is used up.
  std::string Finish();

 private:
  // Pixels of the rows that a context looks at, 64 of each, of which the one at kPlace stands where
  // the first pixel to code does.
  struct Windows {
    std::uint64_t second_above = 0;
    std::uint64_t above = 0;
    std::uint64_t current = 0;
    std::uint64_t adaptive = 0;  // of the adaptive pixel's row, moved by its distance
  };

  std::uint8_t* Row(std::int64_t y);
  void TakeRow(std::uint32_t y);
  void EncodeRow(std::int64_t y);
  void EncodePixels(const Windows& windows, unsigned count);
  void EncodePixel(const Windows& windows, unsigned index);

  BitPicture picture_;
  TemplatePixel first_adaptive_;
  std::size_t row_bytes_;
  std::size_t kept_bytes_;          // of a row with its margins
  std::vector<std::uint8_t> rows_;  // those that contexts look at, black pixels 1
  Contexts contexts_;
  ArithmeticEncoder encoder_;
  std::uint64_t zeros_ = 0;  // pixels of context 0 that are 0, and not coded yet
};

}  // namespace TarnixTools::engines::jbig2

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_JBIG2_GENERICREGIONENCODER_H_
