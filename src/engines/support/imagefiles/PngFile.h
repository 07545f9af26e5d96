// PNG files (PNG, third edition). The data of pictures without interlacing and without an alpha
// channel goes into a document as it is: /FlateDecode with predictor 15 is what PNG stores.
#ifndef TARNIX_ENGINES_SUPPORT_IMAGEFILES_PNGFILE_H_
#define TARNIX_ENGINES_SUPPORT_IMAGEFILES_PNGFILE_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "engines/support/files/ByteReader.h"
#include "engines/support/imagefiles/ImageFile.h"
#include "engines/support/pictures/Raster.h"

namespace TarnixTools::engines {

class PngFile : public ImageFile {
 public:
  static bool Recognises(ByteReader& reader);

  explicit PngFile(pdf::ByteSource& source);

  EncodedImage Embed(std::size_t frame) override;

 private:
  void ReadChunks();
  void ReadHeader(std::uint64_t start, std::size_t length);
  void ReadChunk(std::uint32_t type, std::uint64_t start, std::size_t length);
  void ReadProfile(std::uint64_t start, std::size_t length);
  void ReadTransparency();
  void ReadPaletteTransparency();

  bool IsPalette() const { return color_type_ == 3; }

  bool HasAlphaChannel() const { return color_type_ >= 4; }

  int Channels() const;

  int ColorComponents() const { return color_type_ == 0 || color_type_ == 4 ? 1 : 3; }

  std::size_t RowBytes(std::uint32_t width) const;
  std::size_t PixelBytes() const;
  ImageStream PassThrough();
  Plane Decode();
  void Inflate(unsigned char* out, std::size_t size);
  void Deinterlace(Plane& plane);
  Raster MakeRaster(Plane&& samples) const;
  Plane PaletteAlpha(const Plane& indices) const;
  Plane KeyAlpha(const Plane& samples) const;

  ByteReader reader_;
  ImageFrame frame_;
  int bits_ = 0;
  int color_type_ = -1;
  bool is_interlaced_ = false;
  bool is_complete_ = false;
  std::string palette_;
  std::string transparency_;  // tRNS
  std::string color_key_;     // what tRNS says as a /Mask, where it can be one
  bool has_palette_alpha_ = false;
  bool has_deep_key_ = false;  // a transparent colour of 16 bits, which few viewers know as /Mask
  std::string profile_;
  std::vector<DataPiece> data_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_IMAGEFILES_PNGFILE_H_
