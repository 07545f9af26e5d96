// Writes black and white pictures as gray JPEG files at the best quality, many times faster than an
// encoder for any picture: most of their blocks are of one colour, and the others have a transform
// that adds up from a table of 256 rows.
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_BILEVELJPEGWRITER_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_BILEVELJPEGWRITER_H_

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
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
  // What has been coded and not been written: whole bytes up to `end`, and bits that wait for more.
  struct Output {
    char* end = nullptr;
    std::uint64_t bits = 0;  // the last `bit_count`
    unsigned bit_count = 0;  // less than 32 between calls

    // Appends bits, at most 32 at a time.
    void PutBits(std::uint32_t added, unsigned count) {
      bits = bits << count | added;
      bit_count += count;
      if (bit_count < 32) {
        return;
      }
      const auto word = static_cast<std::uint32_t>(bits >> (bit_count - 32));
      // Adding one to each byte takes the highest bit from one of ones.
      if ((word & 0x80808080U & ~(word + 0x01010101U)) != 0) {
        PutCodedBytes(4);
        return;
      }
      bit_count -= 32;
      end[0] = static_cast<char>(word >> 24U);
      end[1] = static_cast<char>(word >> 16U);
      end[2] = static_cast<char>(word >> 8U);
      end[3] = static_cast<char>(word);
      end += 4;
    }

    // Entropy-coded bytes, so that one of ones is followed by a zero.
    void PutCodedBytes(unsigned count);
    void PutBytes(std::initializer_list<unsigned> bytes);
  };

  void WriteHeader(std::uint32_t height);
  void WriteBlocks();
  void WriteBlock(std::uint64_t block);
  void PutDifference(Output& output, int direct);
  void PutCoefficients(std::uint64_t block);
  void Flush();

  pdf::ByteSink* sink_;
  std::uint32_t width_;
  std::size_t blocks_in_row_;
  std::vector<std::uint8_t> rows_;  // eight of them, to whole blocks
  std::size_t row_count_ = 0;
  int last_direct_ = 0;
  std::unique_ptr<char[]> buffer_;
  Output output_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_BILEVELJPEGWRITER_H_
