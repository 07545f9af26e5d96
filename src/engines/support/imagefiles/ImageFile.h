// An image file, found out by its content: how large its pictures are, which way up, and what of
// them goes into a PDF document. Nothing is decoded unless it has to be.
//
//   const std::unique_ptr<ImageFile> file = ImageFile::Open(source);
//   const ImageFrame& frame = file->frame(0);
//   ImageWriter images(writer);
//   const std::uint32_t number = images.Write(file->Embed(0), source);
#ifndef TARNIX_ENGINES_SUPPORT_IMAGEFILES_IMAGEFILE_H_
#define TARNIX_ENGINES_SUPPORT_IMAGEFILES_IMAGEFILE_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "engines/support/imagefiles/ImageFileLimits.h"
#include "engines/support/images/EncodedImage.h"
#include "engines/support/pictures/Orientation.h"
#include "pdf/file/ByteSource.h"

namespace TarnixTools::engines {

// One picture as it is stored.
struct ImageFrame {
  std::uint32_t width = 0;   // pixels, 1 to limits::kMaxSide
  std::uint32_t height = 0;  // pixels
  double dpi_x = 0;          // pixels per inch along the width; 0: the file does not say
  double dpi_y = 0;
  int orientation = kUpright;  // what has to be done to it to see it upright; 1 to 8
};

class ImageFile {
 public:
  // The source outlives the file. JPEG, JPEG 2000, PNG, TIFF, GIF, BMP, PNM, WebP. Throws
  // ImageError when the content is none of these or nothing of it can be used, pdf::Error when the
  // source cannot be read.
  static std::unique_ptr<ImageFile> Open(pdf::ByteSource& source);

  virtual ~ImageFile() = default;
  ImageFile(const ImageFile&) = delete;
  ImageFile& operator=(const ImageFile&) = delete;

  // At least 1. Only a TIFF has more: of an animation and of a file of several views, it is the
  // first picture.
  std::size_t frame_count() const { return frames_.size(); }

  const ImageFrame& frame(std::size_t index) const { return frames_[index]; }

  // The picture for a PDF document, pixel by pixel what the file has, in the orientation in which
  // it is stored. Its data may lie in the source. Throws as Open does.
  virtual EncodedImage Embed(std::size_t frame) = 0;

  // Whether a picture of those embedded so far was cut or damaged, so that a part of it is empty. Data that
  // is taken over as it is counts as cut when its end is missing.
  bool is_cut() const { return is_cut_; }

 protected:
  ImageFile() = default;

  // Checks the size, and drops a resolution that cannot be meant.
  void AddFrame(ImageFrame frame);

  void NoteCut() { is_cut_ = true; }

 private:
  std::vector<ImageFrame> frames_;
  bool is_cut_ = false;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_IMAGEFILES_IMAGEFILE_H_
