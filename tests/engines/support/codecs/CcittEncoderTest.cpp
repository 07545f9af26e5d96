#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/support/codecs/CcittDecoder.h"
#include "engines/support/codecs/CcittEncoder.h"

namespace TarnixTools::engines {

namespace {

using Changes = std::vector<std::uint32_t>;

std::string Code(std::uint32_t columns, const std::vector<Changes>& rows) {
  CcittEncoder encoder(columns);
  for (const Changes& row : rows) {
    encoder.AddRow(row);
  }
  encoder.Finish();
  return std::string(encoder.data());
}

std::vector<Changes> Decode(std::uint32_t columns, const std::string& data, std::size_t rows) {
  CcittParameters parameters;
  parameters.k = -1;
  parameters.columns = columns;
  CcittDecoder decoder(data, parameters);
  std::vector<Changes> result;
  Changes changes;
  while (result.size() < rows && decoder.ReadChanges(changes)) {
    result.push_back(changes);
  }
  EXPECT_FALSE(decoder.ReadChanges(changes));  // the end of the block
  return result;
}

// Rows of every kind: like the one above, moved by a little, and of their own.
std::vector<Changes> ManyRows(std::uint32_t columns, std::uint32_t longest_run) {
  std::vector<Changes> rows;
  std::uint32_t random = columns;
  const auto next = [&](std::uint32_t bound) {
    random = random * 1664525U + 1013904223U;
    return (random >> 8U) % bound;
  };
  for (int y = 0; y < 200; ++y) {
    Changes row;
    if (y % 3 == 0 || rows.back().empty()) {
      for (std::uint32_t x = next(2) * next(longest_run); x < columns; x += 1 + next(longest_run)) {
        row.push_back(x);
      }
    } else {
      for (const std::uint32_t x : rows.back()) {
        const std::uint32_t moved = x + next(5);
        if (next(9) > 0 && moved < columns && (row.empty() || moved > row.back())) {
          row.push_back(moved);
        }
      }
    }
    rows.push_back(row);
  }
  return rows;
}

TEST(CcittEncoder, CodesWhatTheStandardSays) {
  // Put together by hand of the tables of T.4 and T.6, the end of the block behind them.
  EXPECT_EQ(Code(8, {{}}), std::string("\x80\x08\x00\x80", 4));  // V0
  // Horizontal, white 0, black 8.
  EXPECT_EQ(Code(8, {{0}}), std::string("\x26\xA2\x80\x08\x00\x80", 6));
  // Horizontal, white 2, black 3, V0; VR1, V0, V0; pass, V0.
  EXPECT_EQ(Code(8, {{2, 5}, {3, 5}, {}}), std::string("\x2F\x5E\x30\x01\x00\x10", 6));
  // Horizontal, white 2560 and 128 and 12, black 256 and 44.
  EXPECT_EQ(Code(3000, {{2700}}), std::string("\x20\x3F\x22\x01\x6C\x15\x00\x04\x00\x40", 10));
}

TEST(CcittEncoder, CodesBitsAsItCodesChanges) {
  const std::vector<std::uint8_t> bits = {0x0F, 0xFF, 0xFF, 0xFF, 0xFF,
                                          0xFF, 0xFF, 0xFF, 0xFF, 0x87};
  const Changes changes = {4, 73};
  const std::string expected = Code(76, {changes, changes});
  for (const int black : {0, 1}) {
    std::vector<std::uint8_t> row = bits;
    for (std::uint8_t& byte : row) {
      byte = black == 1 ? byte : static_cast<std::uint8_t>(~byte);
    }
    CcittEncoder encoder(76);
    encoder.AddRow(row.data(), black);
    encoder.AddRow(row.data(), black);
    encoder.Finish();
    EXPECT_EQ(encoder.data(), expected) << black;
  }
}

TEST(CcittEncoder, WhatItCodesIsDecoded) {
  for (const std::uint32_t columns : {1U, 2U, 7U, 64U, 1728U, 9999U}) {
    for (const std::uint32_t longest_run : {2U, 70U, 5400U}) {
      const std::vector<Changes> rows = ManyRows(columns, longest_run);
      EXPECT_EQ(Decode(columns, Code(columns, rows), rows.size()), rows)
          << columns << ' ' << longest_run;
    }
  }
}

TEST(CcittEncoder, HasRoomForTheWorstRows) {
  constexpr std::uint32_t kColumns = 1001;
  Changes every;
  for (std::uint32_t x = 0; x < kColumns; ++x) {
    every.push_back(x);
  }
  Changes other;  // each change three columns from the one above: the longest code for one change
  for (std::uint32_t x = 3; x < kColumns; x += 4) {
    other.push_back(x);
  }
  std::vector<Changes> rows;
  for (int y = 0; y < 50; ++y) {
    rows.push_back(every);
    rows.push_back(other);
    rows.push_back({});
  }
  EXPECT_EQ(Decode(kColumns, Code(kColumns, rows), rows.size()), rows);
}

}  // namespace

}  // namespace TarnixTools::engines
