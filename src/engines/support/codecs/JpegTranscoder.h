// Codes JPEG data anew without touching the picture.
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_JPEGTRANSCODER_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_JPEGTRANSCODER_H_

#include <optional>
#include <string>
#include <string_view>

namespace TarnixTools::engines {

struct RecodedJpeg {
  std::string data;
  bool is_whole = true;  // nothing of the picture was missing or damaged
};

// The picture's coefficients as they are, in Huffman codes and one scan: for arithmetic codes,
// which DCTDecode does not have (ISO 32000-2, 7.4.8). Of the markers only those of JFIF and Adobe
// are kept. Data that was cut gives what is there of it. Nothing for data that cannot be read, and
// for pictures whose coefficients take more than limits::kMaxTranscodedBytes.
std::optional<RecodedJpeg> CodeByHuffman(std::string_view jpeg);

// Whether all of the picture can be read without a sign of damage. Also false for pictures whose coefficients
// take more than limits::kMaxTranscodedBytes.
bool IsWholeJpeg(std::string_view jpeg);

// The picture's coefficients as they are, in as few bytes as they take with Huffman codes made for them,
// progressive as a rule. Of the markers only those are kept that tell a decoder the colours: Adobe's as it
// is, and that of JFIF where the components' names would tell other colours. What a document's
// /ColorTransform means for the data stays. An ICC profile goes, which has no effect on an image of a
// document. Nothing for data that is damaged or was cut, for what cannot be read or has markers that disagree, and
// for pictures whose coefficients take more than limits::kMaxTranscodedBytes.
std::optional<std::string> OptimizeJpeg(std::string_view jpeg);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_JPEGTRANSCODER_H_
