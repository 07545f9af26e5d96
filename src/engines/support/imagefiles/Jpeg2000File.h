// JPEG 2000 files and code streams (ITU-T T.800, annexes A and I): their data goes into a document
// as it is.
#ifndef TARNIX_ENGINES_SUPPORT_IMAGEFILES_JPEG2000FILE_H_
#define TARNIX_ENGINES_SUPPORT_IMAGEFILES_JPEG2000FILE_H_

#include <cstddef>
#include <cstdint>

#include "engines/support/files/ByteReader.h"
#include "engines/support/imagefiles/ImageFile.h"

namespace TarnixTools::engines {

class Jpeg2000File : public ImageFile {
 public:
  static bool Recognises(ByteReader& reader);

  explicit Jpeg2000File(pdf::ByteSource& source);

  EncodedImage Embed(std::size_t frame) override;

 private:
  void ReadBoxes(std::uint64_t start, std::uint64_t end);
  void ReadHeader(std::uint64_t start, std::uint64_t end);
  void ReadResolution(std::uint64_t start, std::uint64_t end);
  void ReadCodeStream(std::uint64_t start);

  ByteReader reader_;
  ImageFrame frame_;
  bool is_code_stream_ = false;  // without boxes around it
  int components_ = 0;
  bool has_alpha_ = false;
  bool is_premultiplied_ = false;
  bool has_captured_resolution_ = false;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_IMAGEFILES_JPEG2000FILE_H_
