// libtiff, loaded on first use: decodes what a document cannot take as it is.
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_TIFFCODEC_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_TIFFCODEC_H_

#include <cstdint>
#include <memory>

#include "engines/support/pictures/Plane.h"
#include "pdf/file/ByteSource.h"

namespace TarnixTools::engines {

class TiffDecoder {
 public:
  // The picture of the directory at that offset. Throws ImageError.
  TiffDecoder(pdf::ByteSource& source, std::uint64_t directory);
  ~TiffDecoder();
  TiffDecoder(const TiffDecoder&) = delete;
  TiffDecoder& operator=(const TiffDecoder&) = delete;

  // Whether data of that compression can be decoded.
  static bool Knows(std::uint64_t compression);

  // Has JPEG data given as RGB.
  void DecodeJpegToRgb();

  // The samples as they are stored, planes put together, 16-bit ones with the high byte first. What
  // cannot be decoded of it is zero. `plane` has the picture's size, samples per pixel and bits.
  // False when nothing could be decoded.
  bool ReadSamples(Plane& plane, bool is_separate);

  // What libtiff makes of any picture: RGB and alpha of 8 bits. False when it can make nothing of
  // it.
  bool ReadRgba(Plane& plane);

  // Whether a part of the samples read so far was missing or damaged.
  bool has_met_damage() const;

 private:
  struct State;
  bool ReadStrips(Plane& plane, int channel);
  bool ReadTiles(Plane& plane, int channel);

  std::unique_ptr<State> state_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_TIFFCODEC_H_
