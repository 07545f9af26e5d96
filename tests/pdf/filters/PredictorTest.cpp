#include <cstdint>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "pdf/Error.h"
#include "pdf/filters/Filters.h"

namespace TarnixTools::pdf {
namespace {

using std::string_literals::operator""s;

constexpr std::size_t kAmple = std::size_t{1} << 28;

// Through Flate, as predictors come; level 1 for speed.
Decoded Undo(std::string_view predicted, const FilterParameters& parameters) {
  std::string deflated;
  DeflateTo(deflated, predicted, 1);
  return Decode({{FilterKind::kFlate, parameters}}, deflated, kAmple);
}

std::string SomeBytes(std::size_t size) {
  std::mt19937 random(5);
  std::string bytes;
  for (std::size_t i = 0; i < size; ++i) {
    bytes.push_back(static_cast<char>(random()));
  }
  return bytes;
}

int Byte(const std::string& data, std::size_t row_start, std::size_t row_bytes,
         std::ptrdiff_t column, int rows_up) {
  if (column < 0 || (rows_up == 1 && row_start == 0)) {
    return 0;
  }
  const std::size_t start = rows_up == 1 ? row_start - row_bytes : row_start;
  return static_cast<unsigned char>(data[start + static_cast<std::size_t>(column)]);
}

int Paeth(int a, int b, int c) {
  const int p = a + b - c;
  const int pa = std::abs(p - a);
  const int pb = std::abs(p - b);
  const int pc = std::abs(p - c);
  if (pa <= pb && pa <= pc) {
    return a;
  }
  return pb <= pc ? b : c;
}

// Rows of a PNG image, row i filtered by tags[i % size]; straight from the formulas of ISO/IEC
// 15948, 9.
std::string PngRows(const std::string& data, std::size_t row_bytes, std::size_t pixel_bytes,
                    const std::vector<int>& tags) {
  std::string rows;
  for (std::size_t start = 0; start < data.size(); start += row_bytes) {
    const int tag = tags[start / row_bytes % tags.size()];
    rows.push_back(static_cast<char>(tag));
    const std::size_t length = std::min(row_bytes, data.size() - start);
    for (std::size_t i = 0; i < length; ++i) {
      const auto left = static_cast<std::ptrdiff_t>(i) - static_cast<std::ptrdiff_t>(pixel_bytes);
      const int a = Byte(data, start, row_bytes, left, 0);
      const int b = Byte(data, start, row_bytes, static_cast<std::ptrdiff_t>(i), 1);
      const int c = Byte(data, start, row_bytes, left, 1);
      const int predictions[] = {0, a, b, (a + b) / 2, Paeth(a, b, c)};
      rows.push_back(
          static_cast<char>(static_cast<unsigned char>(data[start + i]) - predictions[tag]));
    }
  }
  return rows;
}

TEST(PngPredictor, UndoesEveryFilterForEveryRowLength) {
  for (std::int64_t columns = 1; columns <= 40; ++columns) {
    const auto row = static_cast<std::size_t>(columns);
    const std::string data = SomeBytes(row * 23);
    for (const std::vector<int>& tags :
         {std::vector{2}, std::vector{0}, std::vector{1}, std::vector{3}, std::vector{4},
          std::vector{2, 2, 1, 4, 3, 0}}) {
      const Decoded decoded =
          Undo(PngRows(data, row, 1, tags), {.predictor = 12, .columns = columns});
      EXPECT_TRUE(decoded.complete);
      EXPECT_TRUE(decoded.data == data) << columns << " columns, tag " << tags[0];
    }
  }
}

TEST(PngPredictor, UndoesPixelsOfSeveralBytes) {
  const std::string data = SomeBytes(3 * 2 * 17 * 9);
  const Decoded decoded =
      Undo(PngRows(data, 102, 6, {4, 1, 3, 2}),
           {.predictor = 15, .colors = 3, .bits_per_component = 16, .columns = 17});
  EXPECT_TRUE(decoded.complete);
  EXPECT_TRUE(decoded.data == data);
}

TEST(PngPredictor, UndoesPixelsOfLessThanAByte) {
  // 3 samples of 1 bit in 5 columns: 15 bits, rows of 2 bytes, predicted from the byte before.
  const std::string data = SomeBytes(2 * 9);
  const Decoded decoded =
      Undo(PngRows(data, 2, 1, {1, 4}),
           {.predictor = 11, .colors = 3, .bits_per_component = 1, .columns = 5});
  EXPECT_TRUE(decoded.complete);
  EXPECT_TRUE(decoded.data == data);
}

TEST(PngPredictor, GoesByTheTagWhateverThePredictorSays) {
  for (std::int64_t predictor = 10; predictor <= 15; ++predictor) {
    EXPECT_EQ(Undo("\2abc\2\1\1\1"s, {.predictor = predictor, .columns = 3}).data, "abcbcd");
  }
}

TEST(PngPredictor, KeepsARowThatIsCut) {
  const std::string data = SomeBytes(100 * 30 + 41);
  for (const int tag : {1, 2, 3, 4}) {
    const Decoded decoded = Undo(PngRows(data, 100, 1, {tag}), {.predictor = 12, .columns = 100});
    EXPECT_FALSE(decoded.complete);
    EXPECT_TRUE(decoded.data == data) << tag;
  }
}

TEST(PngPredictor, IgnoresALoneByteAfterTheLastRow) {
  const Decoded decoded = Undo("\0abc\n"s, {.predictor = 12, .columns = 3});
  EXPECT_TRUE(decoded.complete);
  EXPECT_EQ(decoded.data, "abc");
}

TEST(PngPredictor, TakesRowsOfUnknownTagsAsTheyAre) {
  const Decoded decoded = Undo("\7abc\2\1\1\1"s, {.predictor = 12, .columns = 3});
  EXPECT_FALSE(decoded.complete);
  EXPECT_EQ(decoded.data, "abcbcd");
}

TEST(PngPredictor, WorksOnLzwDataToo) {
  // Codes of 9 bits: clear, 2, 'a', 'b', end.
  const std::string codes = "\x80\x00\x8C\x26\x28\x08"s;
  EXPECT_EQ(Decode({{FilterKind::kLzw, {.predictor = 12, .columns = 2}}}, codes, kAmple).data,
            "ab");
}

TEST(PngPredictor, AllocatesNothingForAClaimedWidth) {
  const Decoded decoded =
      Undo("\2abc"s, {.predictor = 12, .colors = 4, .columns = std::int64_t{1} << 50});
  EXPECT_FALSE(decoded.complete);
  EXPECT_EQ(decoded.data, "abc");
}

TEST(TiffPredictor, UndoesBytes) {
  EXPECT_EQ(Undo("\1\2\3\10\1\1\1\1"s, {.predictor = 2, .colors = 2, .columns = 2}).data,
            "\1\2\4\12\1\1\2\2");
}

TEST(TiffPredictor, UndoesWords) {
  const Decoded decoded =
      Undo("\x00\xFF\x00\x01\xFF\xFF"s, {.predictor = 2, .bits_per_component = 16, .columns = 3});
  EXPECT_EQ(decoded.data, "\x00\xFF\x01\x00\x00\xFF"s);
}

TEST(TiffPredictor, UndoesSmallSamplesRowByRow) {
  // 4 bits: 1, +2, +15 gives 1, 3, 2; the last half byte of a row is filling and stays.
  EXPECT_EQ(Undo("\x12\xF7\x10\x00"s, {.predictor = 2, .bits_per_component = 4, .columns = 3}).data,
            "\x13\x27\x11\x10"s);
  // 2 bits, 2 colours: (1,2) then (+3,+1) gives (0,3).
  EXPECT_EQ(
      Undo("\x6D"s, {.predictor = 2, .colors = 2, .bits_per_component = 2, .columns = 2}).data,
      "\x63");
  // 1 bit: every 1 turns the rest over.
  EXPECT_EQ(Undo("\x88"s, {.predictor = 2, .bits_per_component = 1, .columns = 8}).data, "\xF0");
}

TEST(TiffPredictor, KeepsARowThatIsCut) {
  for (const std::int64_t bits : {1, 2, 4, 8, 16}) {
    const FilterParameters wide{
        .predictor = 2, .colors = 3, .bits_per_component = bits, .columns = 1 << 20};
    const Decoded decoded = Undo(SomeBytes(7), wide);
    EXPECT_FALSE(decoded.complete);
    EXPECT_EQ(decoded.data.size(), 7U);
  }
}

TEST(TiffPredictor, SurvivesMoreColoursThanData) {
  const std::string bytes = SomeBytes(7);
  for (const std::int64_t bits : {1, 2, 4, 8, 16}) {
    const Decoded decoded =
        Undo(bytes, {.predictor = 2, .colors = 1 << 30, .bits_per_component = bits});
    EXPECT_EQ(decoded.data, bytes);
  }
}

TEST(Predictor, RefusesParametersThatNoDataFits) {
  constexpr std::int64_t kHuge = std::numeric_limits<std::int64_t>::max();
  const std::vector<FilterParameters> unusable = {
      {.predictor = 0},
      {.predictor = 3},
      {.predictor = 16},
      {.predictor = -1},
      {.predictor = kHuge},
      {.predictor = 12, .colors = 0},
      {.predictor = 12, .columns = 0},
      {.predictor = 12, .columns = -5},
      {.predictor = 12, .bits_per_component = 0},
      {.predictor = 2, .bits_per_component = 3},
      {.predictor = 2, .bits_per_component = 32},
      {.predictor = 12, .columns = kHuge},
      {.predictor = 12, .colors = kHuge, .columns = kHuge},
      {.predictor = 2, .colors = std::int64_t{1} << 31, .columns = std::int64_t{1} << 31},
  };
  for (const FilterParameters& parameters : unusable) {
    try {
      Undo("abcdef", parameters);
      ADD_FAILURE() << "accepted predictor " << parameters.predictor;
    } catch (const Error& error) {
      EXPECT_EQ(error.code(), ErrorCode::kFilterFailed);
    }
  }
}

TEST(Predictor, LeavesOtherParametersAloneWithoutAPredictor) {
  EXPECT_EQ(Undo("abc", {.predictor = 1, .colors = -1, .columns = -1}).data, "abc");
}

}  // namespace
}  // namespace TarnixTools::pdf
