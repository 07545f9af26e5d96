// Portable bitmaps, graymaps, pixmaps and arbitrary maps (Netpbm P1 to P7).
#ifndef TARNIX_ENGINES_SUPPORT_IMAGEFILES_PNMFILE_H_
#define TARNIX_ENGINES_SUPPORT_IMAGEFILES_PNMFILE_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "engines/support/files/ByteReader.h"
#include "engines/support/imagefiles/ImageFile.h"
#include "engines/support/pictures/Raster.h"

namespace TarnixTools::engines {

class PnmFile : public ImageFile {
 public:
  static bool Recognises(ByteReader& reader);

  explicit PnmFile(pdf::ByteSource& source);

  EncodedImage Embed(std::size_t frame) override;

 private:
  void ReadHeader();
  void ReadMapHeader();
  std::optional<std::uint32_t> NextNumber();
  std::string NextWord();
  void DecodePlain(Plane& plane);
  Plane DecodeBits();
  void DecodeRaw(Plane& plane);
  void PutSample(Plane& plane, std::uint32_t y, std::size_t index, std::uint32_t value) const;

  bool IsBitmap() const { return kind_ == 1 || kind_ == 4; }

  ByteReader reader_;
  ImageFrame frame_;
  int kind_ = 0;  // the digit after the P
  int channels_ = 1;
  std::uint32_t highest_ = 1;  // value of a sample
  std::uint64_t place_ = 2;    // where reading goes on
  std::uint64_t data_ = 0;     // where the samples start
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_IMAGEFILES_PNMFILE_H_
