// Encodes pictures as the JPEG data of images (DCTDecode, ISO 32000-2, 7.4.8), in as few bytes as it can:
// a picture's own Huffman codes, several scans, no marker that a document's image does without, and no
// coefficient that takes more than it is worth.
//
//   JpegEncoder encoder({.width = 850, .height = 1100, .components = 3, .quality = 60});
//   for (...) encoder.AddRow(samples);
//   const std::string data = encoder.Finish();
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_JPEGENCODER_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_JPEGENCODER_H_

#include <cstdint>
#include <memory>
#include <string>

namespace TarnixTools::engines {

struct JpegEncoding {
  std::uint32_t width = 0;   // pixels, 1 to kMaxJpegSide
  std::uint32_t height = 0;  // pixels, 1 to kMaxJpegSide
  int components = 3;        // samples of a pixel, as AddRow tells
  int quality = 75;          // 1 to 100, about what libjpeg makes of it
  bool is_subsampled =
      true;  // the colour differences have half the samples, across and down (4:2:0)
  bool is_progressive = true;  // several scans, but for little pictures; else one
};

class JpegEncoder {
 public:
  // Throws pdf::Error: kLimitExceeded for dimensions out of range and for more coefficients than
  // limits::kMaxCoefficientBytes, which are held until the end.
  explicit JpegEncoder(const JpegEncoding& encoding);
  ~JpegEncoder();
  JpegEncoder(const JpegEncoder&) = delete;
  JpegEncoder& operator=(const JpegEncoder&) = delete;

  // Adds the next row, top to bottom; rows beyond the height are left out. A pixel has
  //   1 sample  - gray, 255 is white
  //   3 samples - red, green, blue, which are coded as YCbCr. There is no marker that says so: that is
  //               what decoders take it for, and the image needs no /ColorTransform
  //   4 samples - cyan, magenta, yellow, black as DeviceCMYK has them, 255 is all ink. They are coded
  //               as YCCK with Adobe's marker, and decoded they are what they were: the image needs no
  //               /Decode. (Programs that write image files with this marker store the complement.)
  void AddRow(const std::uint8_t* samples);

  // The data, once all rows are added. The encoder is used up.
  std::string Finish();

 private:
  class Planes;

  std::unique_ptr<Planes> planes_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_JPEGENCODER_H_
