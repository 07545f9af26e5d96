// Decodes fax data (CCITTFaxDecode, ISO 32000-2, 7.4.6; ITU-T T.4 and T.6) row by row.
#ifndef TARNIX_ENGINES_SUPPORT_CODECS_CCITTDECODER_H_
#define TARNIX_ENGINES_SUPPORT_CODECS_CCITTDECODER_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace TarnixTools::engines {

// The filter's parameters, with their defaults.
struct CcittParameters {
  std::int64_t k = 0;  // below 0 two-dimensional (group 4), 0 one-dimensional, above 0 mixed
  bool is_byte_aligned = false;
  bool has_ends_of_line = false;  // they are recognised without this too
  std::uint32_t columns = 1728;
  bool black_is_1 = false;
};

class CcittDecoder {
 public:
  // The data outlives the decoder. columns: 1 to 1,000,000.
  CcittDecoder(std::string_view data, const CcittParameters& parameters);

  // Bytes of a row: a bit for each column.
  std::size_t row_bytes() const { return (parameters_.columns + 7) / 8; }

  // The next row. False at the end of the data, and where it cannot be read any further; the row is
  // not written then. A row that is damaged keeps what was read of it.
  bool ReadRow(std::uint8_t* row);

  // The next row as the columns where its colour changes, the first time from white to black:
  // ascending, none twice, all below the number of columns. False also from the first row on that
  // is not exactly as the standard has it.
  bool ReadChanges(std::vector<std::uint32_t>& changes);

 private:
  std::uint32_t Peek(unsigned count) const;

  void Skip(unsigned count) { bit_ += count; }

  bool IsAtEnd() const { return bit_ >= data_.size() * 8; }

  bool PassRow();
  bool SkipEndOfLine();
  bool IsBeforeEndOfLine();
  bool ReadTagOfRow();
  bool ReadOneDimensional();
  bool ReadTwoDimensional();
  bool ReadHorizontal(std::int64_t& position);
  bool AddRun(std::int64_t& position);
  bool ReadVertical(std::uint32_t bits, std::int64_t reference, std::int64_t& position);
  std::size_t ChangeAbove(std::size_t above, std::int64_t position, bool is_at_start) const;

  // Where the row above changes; its end beyond its last change.
  std::int64_t ReferenceAt(std::size_t index) const {
    return index < reference_.size() ? reference_[index]
                                     : static_cast<std::int64_t>(parameters_.columns);
  }

  std::int64_t ReadRun(bool is_black);

  void Add(std::int64_t position) {
    is_exact_ &= position <= parameters_.columns;
    current_.push_back(std::min<std::int64_t>(position, parameters_.columns));
  }

  void Paint(std::uint8_t* row) const;

  std::string_view data_;
  CcittParameters parameters_;
  std::size_t bit_ = 0;
  bool is_two_dimensional_ = false;  // the next row
  bool is_broken_ = false;
  bool is_exact_ = true;  // no row so far was cut, damaged or too long
  // Changes of the last row and of the one being read.
  std::vector<std::int64_t> reference_;
  std::vector<std::int64_t> current_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_CODECS_CCITTDECODER_H_
