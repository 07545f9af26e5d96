// Writes pictures as image XObjects, colour profiles once each.
#ifndef TARNIX_ENGINES_SUPPORT_IMAGES_IMAGEWRITER_H_
#define TARNIX_ENGINES_SUPPORT_IMAGES_IMAGEWRITER_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>

#include "engines/support/images/EncodedImage.h"
#include "pdf/file/ByteSource.h"
#include "pdf/write/FileWriter.h"

namespace TarnixTools::engines {

class ImageWriter {
 public:
  // The writer outlives this.
  explicit ImageWriter(pdf::FileWriter& writer) : writer_(&writer) {}

  // Writes the image and all it refers to, and returns its object number. source: the image file
  // that the picture's data may lie in. Throws pdf::Error, kSourceChanged when the file has become
  // shorter.
  std::uint32_t Write(const EncodedImage& image, pdf::ByteSource& source);

 private:
  std::uint32_t WriteStream(const ImageStream& stream, std::uint32_t soft_mask,
                            pdf::ByteSource& source);
  std::string DictionaryText(const ImageStream& stream, std::uint32_t soft_mask);
  std::string ColorSpaceText(const ImageStream& stream);
  std::uint32_t WriteProfile(const std::string& profile, int components);
  void CopyPiece(const DataPiece& piece, pdf::ByteSource& source);
  void CopyLarge(const DataPiece& piece, pdf::ByteSource& source);
  void CopySmall(const DataPiece& piece, pdf::ByteSource& source);

  pdf::FileWriter* writer_;
  std::unordered_map<std::string, std::uint32_t> profiles_;  // by content
  // What was read last of the source.
  std::unique_ptr<char[]> block_;
  std::uint64_t block_start_ = 0;
  std::size_t block_size_ = 0;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_IMAGES_IMAGEWRITER_H_
