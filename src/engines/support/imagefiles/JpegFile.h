// JPEG files: their data goes into a document as it is, but for arithmetic codes, which become
// Huffman codes of the same coefficients.
#ifndef TARNIX_ENGINES_SUPPORT_IMAGEFILES_JPEGFILE_H_
#define TARNIX_ENGINES_SUPPORT_IMAGEFILES_JPEGFILE_H_

#include <cstddef>
#include <string>
#include <vector>

#include "engines/support/codecs/JpegMarkers.h"
#include "engines/support/files/ByteReader.h"
#include "engines/support/imagefiles/ImageFile.h"

namespace TarnixTools::engines {

class JpegFile : public ImageFile {
 public:
  static bool Recognises(ByteReader& reader);

  explicit JpegFile(pdf::ByteSource& source);

  EncodedImage Embed(std::size_t frame) override;

 private:
  std::string Profile();
  std::vector<DataPiece> Data();
  void NoteWhatIsMissing();
  std::vector<DataPiece> RecodedData();

  ByteReader reader_;
  JpegHeader header_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_IMAGEFILES_JPEGFILE_H_
