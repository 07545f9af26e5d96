// Codes JPEG data anew without touching the picture.
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_JPEGTRANSCODER_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_JPEGTRANSCODER_H_

#include <optional>
#include <string>
#include <string_view>

namespace TarnixTools::engines {

// The picture's coefficients as they are, in Huffman codes and one scan: for arithmetic codes,
// which DCTDecode does not have (ISO 32000-2, 7.4.8). Of the markers only those of JFIF and Adobe
// are kept. Data that was cut gives what is there of it. Nothing for data that cannot be read, and
// for pictures whose coefficients take more than limits::kMaxTranscodedBytes.
std::optional<std::string> CodeByHuffman(std::string_view jpeg);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_JPEGTRANSCODER_H_
