// Decodes JPEG data row by row.
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_JPEGREADER_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_JPEGREADER_H_

#include <cstdint>
#include <memory>
#include <string_view>

namespace TarnixTools::engines {

struct PictureSize {
  std::uint32_t width = 0;  // pixels
  std::uint32_t height = 0;
};

// What is wanted of a picture.
enum class JpegColors : std::uint8_t {
  kAll,
  kLightness,  // alone, of pictures that are stored as lightness and colour differences
};

inline constexpr PictureSize kWholePicture{~std::uint32_t{0}, ~std::uint32_t{0}};

// What the PDF standard calls the samples of DCT data: gray, RGB, or CMYK as it is stored.
class JpegReader {
 public:
  // color_transform: the value of /ColorTransform, -1 for none. Null for data that cannot be read.
  // The bytes outlive the reader.
  //   least - the picture may come out smaller, at a half, a quarter or an eighth of its size, as
  //           long as it has that many pixels on both sides
  static std::unique_ptr<JpegReader> Open(std::string_view bytes, int color_transform,
                                          PictureSize least = kWholePicture,
                                          JpegColors colors = JpegColors::kAll);

  ~JpegReader();
  JpegReader(const JpegReader&) = delete;
  JpegReader& operator=(const JpegReader&) = delete;

  std::uint32_t width() const;
  std::uint32_t height() const;
  int components() const;  // 1, 3 or 4

  // Memory for what is decoded of a file of several scans, all of which come before the first row.
  std::uint64_t held_bytes() const;

  // Reads the next row: width() * components() bytes. False at the end, and where the data cannot
  // be read any further.
  bool ReadRow(std::uint8_t* samples);

 private:
  class Decompressor;

  explicit JpegReader(std::unique_ptr<Decompressor> decompressor);

  std::unique_ptr<Decompressor> decompressor_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_JPEGREADER_H_
