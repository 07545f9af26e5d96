// Writes JPEG files (JFIF, baseline) row by row.
//
//   JpegWriter writer(sink, {.width = 850, .height = 1100, .layout = PixelLayout::kBgrx});
//   writer.WriteRows(pixels, stride, 1100);
//   writer.Finish();
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_JPEGWRITER_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_JPEGWRITER_H_

#include <cstddef>
#include <cstdint>
#include <memory>

#include "engines/support/pictures/PixelLayout.h"
#include "pdf/file/ByteSink.h"

namespace TarnixTools::engines {

// Pixels or more a side are beyond what the format's common implementations read and write.
inline constexpr std::uint32_t kMaxJpegSide = 65500;

struct JpegSettings {
  std::uint32_t width = 0;   // pixels, 1 to kMaxJpegSide
  std::uint32_t height = 0;  // pixels, 1 to kMaxJpegSide
  PixelLayout layout = PixelLayout::kRgb;
  int quality = 100;  // 1 to 100; from 90 on colour is not subsampled
  int dpi = 0;        // pixels per inch for the header, 1 to 65535; 0: none
};

class JpegWriter {
 public:
  // The sink outlives the writer. Throws pdf::Error: kLimitExceeded for dimensions out of range.
  JpegWriter(pdf::ByteSink& sink, const JpegSettings& settings);
  ~JpegWriter();
  JpegWriter(const JpegWriter&) = delete;
  JpegWriter& operator=(const JpegWriter&) = delete;

  // The next rows, top to bottom; rows beyond the height are left out. Throws what the sink throws.
  //   stride - bytes from one row to the next
  void WriteRows(const std::uint8_t* pixels, std::size_t stride, std::size_t row_count);

  // Completes the file once all rows are written. Throws what the sink throws.
  void Finish();

 private:
  class Compressor;

  std::unique_ptr<Compressor> compressor_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_JPEGWRITER_H_
