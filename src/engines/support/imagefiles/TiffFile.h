// TIFF files: a page for each directory. Group 4 fax data of one strip and JPEG data of one strip
// go into a document as they are; other fax data is coded anew, row by row; everything else is
// decoded by libtiff and stored losslessly.
#ifndef TARNIX_ENGINES_SUPPORT_IMAGEFILES_TIFFFILE_H_
#define TARNIX_ENGINES_SUPPORT_IMAGEFILES_TIFFFILE_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "engines/support/codecs/CcittDecoder.h"
#include "engines/support/codecs/TiffDirectory.h"
#include "engines/support/files/ByteReader.h"
#include "engines/support/imagefiles/ImageFile.h"
#include "engines/support/pictures/Raster.h"

namespace TarnixTools::engines {

class TiffFile : public ImageFile {
 public:
  static bool Recognises(ByteReader& reader) { return TiffStructure::Recognises(reader); }

  explicit TiffFile(pdf::ByteSource& source);

  EncodedImage Embed(std::size_t frame) override;

 private:
  // What the fields say of a picture.
  struct Picture {
    const TiffDirectory* directory = nullptr;
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    int bits = 1;
    int samples = 1;
    int colors = 1;
    std::uint64_t compression = 1;
    std::uint64_t photometric = 0;
    std::uint64_t extra_sample = 0;  // kind of the first sample that is no colour
    bool has_alpha = false;
    bool is_separate = false;
    bool is_plain = false;   // whole numbers, all of the same size
    bool is_signed = false;  // which may be below zero
    std::string profile;
  };

  struct Strip {
    std::uint64_t offset;
    std::uint64_t length;
  };

  Picture Describe(std::size_t frame);
  static bool IsFax(const Picture& picture);
  static bool IsPacked(const Picture& picture);
  static bool IsJpegInColor(const Picture& picture);
  static bool HasOddDepth(const Picture& picture);
  static bool CanBeHeld(const Picture& picture);
  static ImageStream DescribeFax(const Picture& picture);
  std::optional<Strip> OnlyStrip(const Picture& picture);
  void NoteMissingEnd(const Picture& picture, Strip strip);
  std::vector<Strip> Strips(const Picture& picture, std::uint32_t count);
  std::string ReadFax(const Picture& picture, Strip strip);
  std::optional<EncodedImage> PassFax(const Picture& picture);
  std::optional<CcittParameters> FaxCoding(const Picture& picture);
  std::optional<EncodedImage> JoinFax(const Picture& picture);
  std::optional<Strip> JpegStrip(const Picture& picture);
  std::optional<EncodedImage> PassJpeg(const Picture& picture);
  std::optional<Raster> DecodeSamples(const Picture& picture);
  Raster RasterOf(const Picture& picture, Plane&& plane);
  Raster DecodeAny(const Picture& picture);
  std::string Palette(const Picture& picture);

  ByteReader reader_;
  std::vector<TiffDirectory> directories_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_IMAGEFILES_TIFFFILE_H_
