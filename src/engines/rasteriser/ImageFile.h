// One JPEG file on its way to its name.
#ifndef TARNIX_ENGINES_RASTERISER_IMAGEFILE_H_
#define TARNIX_ENGINES_RASTERISER_IMAGEFILE_H_

#include <cstdint>
#include <optional>
#include <string>

#include "engines/rasteriser/ErrorCodes.h"
#include "engines/support/codecs/JpegWriter.h"
#include "engines/support/files/DiskFile.h"
#include "foundation/Platform.h"

namespace TarnixTools::engines::rasteriser {

class ImageFile {
 public:
  // Throws Pdf2ImgFailure(kPdf2ImgCreateError). Nothing has the name until Finish; what
  // was there before stays until then.
  explicit ImageFile(const platform::WidePath& path);

  // Once, before the rows. Throws pdf::Error.
  void Start(const JpegSettings& settings) { writer_.emplace(*sink_, settings); }

  bool is_started() const { return writer_.has_value(); }

  // Throw pdf::Error.
  void WriteRows(const std::uint8_t* pixels, std::size_t stride, std::size_t row_count) {
    writer_->WriteRows(pixels, stride, row_count);
  }

  void Finish();

  // What went wrong first, for whoever writes the image.
  Pdf2ImgError error = kPdf2ImgNoError;

 private:
  platform::OutputFile output_;
  platform::FilePtr stream_;
  std::optional<DiskSink> sink_;
  std::optional<JpegWriter> writer_;
};

}  // namespace TarnixTools::engines::rasteriser

#endif  // TARNIX_ENGINES_RASTERISER_IMAGEFILE_H_
