// Windows and OS/2 bitmaps: 1 to 32 bits per pixel, with palettes, colour masks and run lengths.
#ifndef TARNIX_ENGINES_SUPPORT_IMAGEFILES_BMPFILE_H_
#define TARNIX_ENGINES_SUPPORT_IMAGEFILES_BMPFILE_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "engines/support/files/ByteReader.h"
#include "engines/support/imagefiles/ImageFile.h"
#include "engines/support/pictures/Raster.h"

namespace TarnixTools::engines {

class BmpFile : public ImageFile {
 public:
  static bool Recognises(ByteReader& reader);

  explicit BmpFile(pdf::ByteSource& source);

  EncodedImage Embed(std::size_t frame) override;

 private:
  void ReadHeader();
  bool IsKnownKind() const;
  void ReadMasks();
  void ReadPalette(unsigned entry_size);

  std::uint32_t StoredRow(std::uint32_t y) const {
    return is_top_down_ ? y : frame_.height - 1 - y;
  }

  Plane DecodeIndices();
  Plane DecodeRuns();
  void DecodeColors(Raster& raster);
  void DecodeColorRow(const unsigned char* from, Raster& raster, std::uint32_t y) const;

  ByteReader reader_;
  ImageFrame frame_;
  std::uint32_t header_size_ = 0;
  unsigned bits_ = 0;
  std::uint32_t compression_ = 0;
  bool is_top_down_ = false;
  std::uint64_t pixels_ = 0;              // where they start
  std::array<std::uint32_t, 4> masks_{};  // red, green, blue, alpha
  std::string palette_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_IMAGEFILES_BMPFILE_H_
