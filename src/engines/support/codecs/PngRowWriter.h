// Writes PNG files (PNG, third edition) row by row.
//
//   PngRowWriter writer(sink, {.width = 850, .height = 1100, .is_gray = false, .dpi = 100});
//   writer.WriteRow(row);  // 1100 times
//   writer.Finish();
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_PNGROWWRITER_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_PNGROWWRITER_H_

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "pdf/file/ByteSink.h"

namespace TarnixTools::engines {

struct PngSettings {
  std::uint32_t width = 0;  // pixels, at least 1
  std::uint32_t height = 0;
  bool is_gray = false;  // else red, green and blue; eight bits a component
  int dpi = 0;           // pixels per inch for the header; 0: none
};

class PngRowWriter {
 public:
  // The sink outlives the writer. Throws what the sink throws, and std::bad_alloc.
  PngRowWriter(pdf::ByteSink& sink, const PngSettings& settings);
  ~PngRowWriter();
  PngRowWriter(const PngRowWriter&) = delete;
  PngRowWriter& operator=(const PngRowWriter&) = delete;

  // The next row, top to bottom. Throws what the sink throws.
  void WriteRow(const std::uint8_t* samples);

  // Completes the file once all rows are written. Throws what the sink throws.
  void Finish();

 private:
  struct Deflater;

  void Deflate(int flush);
  void WriteChunk(const char* type, std::string_view data);

  pdf::ByteSink* sink_;
  std::size_t pixel_bytes_;
  std::vector<std::uint8_t> before_;    // the row before
  std::vector<std::uint8_t> filtered_;  // with the filter's number in front
  std::vector<char> packed_;
  std::unique_ptr<Deflater> deflater_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_PNGROWWRITER_H_
