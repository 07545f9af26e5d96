// Makes one image smaller: the work that needs no document, and is done on any thread.
#ifndef TARNIX_ENGINES_OPTIMIZER_IMAGES_IMAGEOPTIMIZER_H_
#define TARNIX_ENGINES_OPTIMIZER_IMAGES_IMAGEOPTIMIZER_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "engines/optimizer/OptimizerReport.h"
#include "engines/optimizer/images/CodedPicture.h"
#include "engines/optimizer/images/ImageGoals.h"
#include "engines/optimizer/scans/ScanCoder.h"
#include "engines/support/codecs/JpegReader.h"
#include "engines/support/pictures/RowSource.h"

namespace TarnixTools::engines::optimizer {

// A part of an image, in its pixels from the upper left.
struct ImagePart {
  std::uint32_t left = 0;
  std::uint32_t top = 0;
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  PictureSize whole;  // of the image
};

// An image that is not in black and white.
struct ImageTask {
  std::uint64_t encoded_bytes = 0;  // as it is now
  std::uint32_t width = 0;          // pixels of the image
  std::uint32_t height = 0;
  RowSourcePtr rows;         // eight bits a component; may be fewer pixels, as many as WantedSize
  std::string color_space;   // that the rows are in, as text; empty: the image's, with its /Decode
  bool is_inverted = false;  // CMYK of which 255 is no ink
  bool is_soft_mask = false;
  bool may_lose_color = false;  // gray may be stored as such, few colours as a palette
  bool keeps_samples = false;   // nothing may change any of them, nor how many there are
  bool has_one_size = false;    // it is either WantedSize or what it has been
  bool may_be_scan = false;     // it may become several images, one over the other
  bool is_placed = false;       // otherwise nobody knows how large it is seen
  double width_points = 0;      // of its largest use
  double height_points = 0;
  std::string jpeg;  // its data, where that is JPEG
};

struct ImageOutcome {
  ImageClass kind = ImageClass::kPhotograph;
  std::optional<LeftAlone> left_alone;
  std::optional<CodedPicture> coded;  // unless it is left alone
  std::vector<CodedInk> inks;         // what is painted over it, without overlaps
};

// The pixels that are needed of an image, at most: what its size and place in the task say.
PictureSize WantedSize(const ImageTask& task, const ImageGoals& goals);

// Those that the rows should have.
PictureSize ReadSize(const ImageTask& task, const ImageGoals& goals);

// Uses up the rows.
ImageOutcome OptimizeImage(ImageTask& task, const ImageGoals& goals);

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_IMAGES_IMAGEOPTIMIZER_H_
