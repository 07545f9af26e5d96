// How coarsely JPEG data is quantised, told by its tables.
//
//   const std::optional<JpegQuality> quality = EstimateQuality(header);
//   const bool stays = AreStepsAsCoarse(header, 75);   // coding it anew would gain little
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_JPEGTABLES_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_JPEGTABLES_H_

#include <cstdint>
#include <optional>

#include "engines/support/codecs/JpegMarkers.h"

namespace TarnixTools::engines {

enum class JpegPlane : std::uint8_t { kLuminance, kChrominance };

// The steps that libjpeg makes of the standard's examples (ITU-T T.81, tables K.1 and K.2).
//   quality - 1 to 100
JpegSteps LibjpegSteps(JpegPlane plane, int quality);

// The steps of this library's JpegEncoder.
//   quality - 1 to 100
JpegSteps EncoderSteps(JpegPlane plane, int quality);

struct JpegQuality {
  int luminance = 0;    // 1 to 100: of the first component
  int chrominance = 0;  // of the second; 0 where there is none
};

// The qualities that the data's steps stand for: those of JpegEncoder where the steps are its own, else
// those whose steps of libjpeg are most like them on the whole. Nothing where the tables of the components
// do not stand before the first scan.
std::optional<JpegQuality> EstimateQuality(const JpegHeader& header);

// Whether the first component, which has most of the data, is quantised at this quality or a lower one:
// JpegEncoder would keep all that is left of it. False where its steps are not known.
bool AreStepsAsCoarse(const JpegHeader& header, int quality);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_JPEGTABLES_H_
