// GIF files (87a, 89a): the first picture, on the whole of its screen.
#ifndef TARNIX_ENGINES_SUPPORT_IMAGEFILES_GIFFILE_H_
#define TARNIX_ENGINES_SUPPORT_IMAGEFILES_GIFFILE_H_

#include <cstddef>
#include <cstdint>
#include <string>

#include "engines/support/files/ByteReader.h"
#include "engines/support/imagefiles/ImageFile.h"
#include "engines/support/pictures/Plane.h"

namespace TarnixTools::engines {

class GifFile : public ImageFile {
 public:
  static bool Recognises(ByteReader& reader);

  explicit GifFile(pdf::ByteSource& source);

  EncodedImage Embed(std::size_t frame) override;

 private:
  void ReadBlocks(std::uint64_t place);
  std::uint64_t ReadExtension(std::uint64_t place);
  void ReadPicture(std::uint64_t place);
  std::string ReadSubBlocks(std::uint64_t place);
  std::string ReadPalette(std::uint64_t place, unsigned flags);
  bool CoversScreen() const;
  Plane Decode();

  ByteReader reader_;
  ImageFrame frame_;      // the screen
  std::string palette_;   // of the screen, then of the picture
  int transparent_ = -1;  // index
  std::uint32_t left_ = 0;
  std::uint32_t top_ = 0;
  std::uint32_t width_ = 0;
  std::uint32_t height_ = 0;
  bool is_interlaced_ = false;
  std::uint64_t data_ = 0;  // where it starts; 0: no picture
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_IMAGEFILES_GIFFILE_H_
