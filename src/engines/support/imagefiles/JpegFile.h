// JPEG files (ITU-T T.81, JFIF 1.02, Exif 2.32): their data goes into a document as it is, but for
// arithmetic codes, which become Huffman codes of the same coefficients.
#ifndef TARNIX_ENGINES_SUPPORT_IMAGEFILES_JPEGFILE_H_
#define TARNIX_ENGINES_SUPPORT_IMAGEFILES_JPEGFILE_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "engines/support/files/ByteReader.h"
#include "engines/support/codecs/Exif.h"
#include "engines/support/imagefiles/ImageFile.h"

namespace TarnixTools::engines {

class JpegFile : public ImageFile {
 public:
  static bool Recognises(ByteReader& reader);

  explicit JpegFile(pdf::ByteSource& source);

  EncodedImage Embed(std::size_t frame) override;

 private:
  void ReadSegments();
  void ReadSegment(std::uint8_t marker, std::uint64_t start, std::size_t length);
  void ReadFrameHeader(std::uint8_t marker, std::uint64_t start, std::size_t length);
  void ReadApplicationData(std::uint8_t marker, std::uint64_t start, std::size_t length);
  std::string Profile();
  std::vector<DataPiece> Data();
  std::vector<DataPiece> RecodedData();
  std::uint64_t FindEnd();

  struct ProfilePart {
    std::uint64_t offset;
    std::size_t length;
    unsigned number;
  };

  ByteReader reader_;
  ImageFrame frame_;
  int frame_marker_ = 0;  // SOFn
  int components_ = 0;
  std::array<std::uint8_t, 4> component_ids_{};
  bool has_jfif_ = false;
  bool has_adobe_ = false;
  bool has_more_pictures_ = false;  // after the end of this one
  double jfif_dpi_x_ = 0;
  double jfif_dpi_y_ = 0;
  ExifFacts exif_;
  std::vector<ProfilePart> profile_parts_;
  std::uint64_t scan_start_ = 0;  // of the first scan's header
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_IMAGEFILES_JPEGFILE_H_
