// Writes black and white pictures as gray JPEG files at the best quality, many times faster than an
// encoder for any picture: most of their blocks are of one colour, and the others have a transform
// that adds up from a table of 256 rows.
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_BILEVELJPEGWRITER_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_BILEVELJPEGWRITER_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "pdf/file/ByteSink.h"

namespace TarnixTools::engines {

class BilevelJpegWriter {
 public:
  // The sink outlives the writer. width, height: pixels, 1 to 65500.
  BilevelJpegWriter(pdf::ByteSink& sink, std::uint32_t width, std::uint32_t height);

  // The next row, height times: a bit for each pixel, 1 for white. Throws what the sink throws.
  void WriteRow(const std::uint8_t* bits);

  // Completes the file once all rows are written.
  void Finish();

 private:
  void WriteHeader(std::uint32_t height);
  void WriteBlocks();
  void WriteBlock(std::uint64_t block);
  void PutDifference(int direct);
  void PutCoefficients(std::uint64_t block);
  void PutBits(std::uint32_t bits, unsigned count);
  void PutByte(unsigned byte);
  void Flush();

  pdf::ByteSink* sink_;
  std::uint32_t width_;
  std::size_t blocks_in_row_;
  std::vector<std::uint8_t> rows_;  // eight of them, to whole blocks
  std::size_t row_count_ = 0;
  int last_direct_ = 0;
  std::uint64_t bits_ = 0;  // not yet written, the last `bit_count_`
  unsigned bit_count_ = 0;
  std::string buffer_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_BILEVELJPEGWRITER_H_
