// JBIG2 data of images (JBIG2Decode, ISO 32000-2, 7.4.7; ISO/IEC 14492, which is ITU-T T.88), as far
// as it is coded arithmetically. PDFium decodes the rest, and much of this; of many pictures with
// refined symbols it draws nothing.
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_JBIG2DECODER_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_JBIG2DECODER_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace TarnixTools::engines {

// Whether the data holds what PDFium draws wrongly or not at all: symbols or regions that are
// refined, halftones, and regions that are coded as fax (MMR). False for data whose segments cannot
// be told apart.
bool NeedsOwnJbig2(std::string_view globals, std::string_view data);

struct Jbig2Rows {
  std::string rows;         // a bit for each pixel, 0 for black; rows are padded to whole bytes
  bool is_complete = true;  // false where a segment could not be decoded, and what follows it
};

// Nothing for data that cannot be decoded here, and where nothing of it can be.
//   globals - /JBIG2Globals: segments that stand before the data; may be empty
std::optional<Jbig2Rows> DecodeJbig2(std::string_view globals, std::string_view data,
                                     std::uint32_t width, std::uint32_t height);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_JBIG2DECODER_H_
