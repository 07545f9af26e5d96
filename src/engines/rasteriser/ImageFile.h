// One image file on its way to its name.
#ifndef TARNIX_ENGINES_RASTERISER_IMAGEFILE_H_
#define TARNIX_ENGINES_RASTERISER_IMAGEFILE_H_

#include <cstdint>
#include <optional>
#include <vector>

#include "engines/rasteriser/ErrorCodes.h"
#include "engines/support/codecs/JpegWriter.h"
#include "engines/support/codecs/PngRowWriter.h"
#include "engines/support/files/DiskFile.h"
#include "foundation/Platform.h"

namespace TarnixTools::engines::rasteriser {

// Of an image whose rows come as PixelLayout::kBgrx.
struct ImageFileSettings {
  std::uint32_t width = 0;  // pixels
  std::uint32_t height = 0;
  bool is_png = false;  // else JPEG
  bool is_gray = false;
  int quality = 100;  // of JPEG
  int dpi = 0;        // for the header
};

class ImageFile {
 public:
  // Throws Pdf2ImgFailure(kPdf2ImgCreateError). Nothing has the name until Finish; what
  // was there before stays until then.
  explicit ImageFile(const platform::WidePath& path);

  // Once, before the rows. Throws pdf::Error.
  void Start(const ImageFileSettings& settings);

  bool is_started() const { return jpeg_.has_value() || png_.has_value(); }

  // Throw pdf::Error.
  void WriteRows(const std::uint8_t* pixels, std::size_t stride, std::size_t row_count);

  void Finish();

  // What went wrong first, for whoever writes the image.
  Pdf2ImgError error = kPdf2ImgNoError;
  int system_error = 0;

 private:
  platform::OutputFile output_;
  platform::FilePtr stream_;
  std::optional<DiskSink> sink_;
  std::optional<JpegWriter> jpeg_;
  std::optional<PngRowWriter> png_;
  bool is_gray_ = false;
  std::vector<std::uint8_t> row_;  // as it is stored, where that is another way than it comes
};

}  // namespace TarnixTools::engines::rasteriser

#endif  // TARNIX_ENGINES_RASTERISER_IMAGEFILE_H_
