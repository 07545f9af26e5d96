// Codes rows of black and white for fax, group 4 (ITU-T T.6; CCITTFaxDecode with a /K below 0).
//
//   CcittEncoder encoder(columns);
//   for (...) encoder.AddRow(changes);
//   encoder.Finish();
//   Use(encoder.data());
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_CCITTENCODER_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_CCITTENCODER_H_

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace TarnixTools::engines {

class CcittEncoder {
 public:
  // columns: 1 to 1,000,000.
  explicit CcittEncoder(std::uint32_t columns);

  // Adds a row by the columns where its colour changes, the first time from white to black:
  // ascending, none twice, all below the number of columns.
  void AddRow(std::span<const std::uint32_t> changes);

  // Adds a row of which a bit for each column is given, the first in the highest bit of a byte.
  // black: the value of the bits that are black, 0 or 1.
  void AddRow(const std::uint8_t* bits, int black);

  // Adds the end of the block.
  void Finish();

  // The data: but for up to four bytes at its end, before Finish(). Valid until the next row.
  std::string_view data() const {
    return {reinterpret_cast<const char*>(data_.data()), static_cast<std::size_t>(size_)};
  }

 private:
  void Reserve();
  void CodeCurrent();
  void Put(std::uint32_t code, unsigned count);
  void PutRun(bool is_black, std::uint32_t run);

  std::uint32_t columns_;
  // Where the colour of the row above and of this one changes; then the number of columns, often
  // enough to look ahead.
  std::vector<std::uint32_t> reference_;
  std::vector<std::uint32_t> current_;
  std::vector<std::uint8_t> data_;  // of which `size_` bytes are used
  std::size_t size_ = 0;
  std::uint64_t pending_ = 0;  // bits that are no whole word yet, the last one lowest
  unsigned pending_count_ = 0;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_CCITTENCODER_H_
