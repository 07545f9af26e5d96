// WebP files (RFC 9649), decoded by libwebp: the first picture, on the whole of its canvas.
#ifndef TARNIX_ENGINES_SUPPORT_IMAGEFILES_WEBPFILE_H_
#define TARNIX_ENGINES_SUPPORT_IMAGEFILES_WEBPFILE_H_

#include <cstddef>
#include <cstdint>
#include <string>

#include "engines/support/files/ByteReader.h"
#include "engines/support/imagefiles/ImageFile.h"
#include "engines/support/pictures/Plane.h"

namespace TarnixTools::engines {

class WebpFile : public ImageFile {
 public:
  static bool Recognises(ByteReader& reader);

  explicit WebpFile(pdf::ByteSource& source);

  EncodedImage Embed(std::size_t frame) override;

 private:
  void ReadChunks(std::uint64_t start, std::uint64_t end, bool is_animation_frame);
  void ReadChunk(std::uint32_t type, std::uint64_t start, std::uint64_t length);
  void ReadSize(std::uint32_t type, std::uint64_t start);
  std::string PictureFile();
  Plane OnCanvas(const Plane& picture) const;

  ByteReader reader_;
  ImageFrame frame_;  // the canvas
  std::uint32_t left_ = 0;
  std::uint32_t top_ = 0;
  std::uint32_t width_ = 0;  // of the picture
  std::uint32_t height_ = 0;
  bool has_alpha_ = false;
  std::uint64_t parts_ = 0;  // where the chunks of an animation's first picture start; 0: none
  std::uint64_t parts_end_ = 0;
  std::string profile_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_IMAGEFILES_WEBPFILE_H_
