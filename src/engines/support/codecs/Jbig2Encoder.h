// Encodes pictures in black and white as JBIG2 data of images (JBIG2Decode, ISO 32000-2, 7.4.7; ISO/IEC
// 14492, which is ITU-T T.88), without loss: every pixel by itself, never a symbol for a similar one.
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_JBIG2ENCODER_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_JBIG2ENCODER_H_

#include <optional>
#include <string>

#include "engines/support/codecs/BitRows.h"

namespace TarnixTools::engines {

// One generic region that covers the page, coded arithmetically. The data needs no /JBIG2Globals, and
// its black pixels are 0 when they are decoded. Nothing for pictures that common decoders refuse: with
// no pixels, more than 65,535 on a side, or more than DecodeJbig2 takes.
std::optional<std::string> EncodeJbig2(const BitPicture& picture);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_JBIG2ENCODER_H_
