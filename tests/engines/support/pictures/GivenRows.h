// A picture of rows that a test gives.
#ifndef TARNIX_TESTS_ENGINES_SUPPORT_PICTURES_GIVENROWS_H_
#define TARNIX_TESTS_ENGINES_SUPPORT_PICTURES_GIVENROWS_H_

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/pictures/RowSource.h"

namespace TarnixTools::testing {

using Bytes = std::vector<std::uint8_t>;

// Rows that are given; there are none beyond them.
class GivenRows : public engines::RowSource {
 public:
  GivenRows(std::uint32_t width, std::uint32_t height, engines::PixelLayout layout,
            std::vector<Bytes> rows)
      : RowSource(width, height, layout), rows_(std::move(rows)) {}

  bool ReadRow(std::uint8_t* row) override {
    EXPECT_LE(next_, rows_.size()) << "asked again after the end";
    const bool is_there = next_ < rows_.size();
    const Bytes white(row_bytes(), 255);
    const Bytes& given = is_there ? rows_[next_] : white;
    std::copy(given.begin(), given.end(), row);
    ++next_;
    return is_there;
  }

  std::uint64_t held_bytes() const override { return 0; }

 private:
  std::vector<Bytes> rows_;
  std::size_t next_ = 0;
};

// A gray picture; its height is the number of rows unless one is given.
inline engines::RowSourcePtr Gray(const std::vector<Bytes>& rows, std::uint32_t height = 0) {
  return std::make_unique<GivenRows>(static_cast<std::uint32_t>(rows[0].size()),
                                     height != 0 ? height : static_cast<std::uint32_t>(rows.size()),
                                     engines::PixelLayout::kGray, rows);
}

inline std::vector<Bytes> RowsOf(engines::RowSourcePtr picture) {
  std::vector<Bytes> rows(picture->height(), Bytes(picture->row_bytes()));
  for (Bytes& row : rows) {
    picture->ReadRow(row.data());
  }
  return rows;
}

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_ENGINES_SUPPORT_PICTURES_GIVENROWS_H_
