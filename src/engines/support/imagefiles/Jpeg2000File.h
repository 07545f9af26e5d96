// JPEG 2000 files and code streams: their data goes into a document as it is.
#ifndef TARNIX_ENGINES_SUPPORT_IMAGEFILES_JPEG2000FILE_H_
#define TARNIX_ENGINES_SUPPORT_IMAGEFILES_JPEG2000FILE_H_

#include <cstddef>

#include "engines/support/codecs/JpxHeader.h"
#include "engines/support/files/ByteReader.h"
#include "engines/support/imagefiles/ImageFile.h"

namespace TarnixTools::engines {

class Jpeg2000File : public ImageFile {
 public:
  static bool Recognises(ByteReader& reader) { return IsJpx(reader); }

  explicit Jpeg2000File(pdf::ByteSource& source);

  EncodedImage Embed(std::size_t frame) override;

 private:
  bool HasEnd();

  ByteReader reader_;
  JpxHeader header_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_IMAGEFILES_JPEG2000FILE_H_
