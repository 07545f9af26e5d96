#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <utility>
#include <vector>

#include "pdf/Error.h"
#include "pdf/filters/FilterSteps.h"
#include "pdf/filters/PngRows.h"

namespace TarnixTools::pdf {
namespace {

constexpr std::int64_t kNoPredictor = 1;
constexpr std::int64_t kTiffPredictor = 2;
constexpr std::int64_t kFirstPngPredictor = 10;
constexpr std::int64_t kLastPngPredictor = 15;

struct RowShape {
  std::size_t samples = 0;      // in one row
  std::size_t bytes = 0;        // of one row, without a PNG row's tag
  std::size_t pixel_bytes = 0;  // from a byte to the one it is predicted from; at least 1
};

[[noreturn]] void ThrowUnusable() {
  throw Error(ErrorCode::kFilterFailed, "stream filter has unusable predictor parameters");
}

std::size_t CheckedProduct(std::size_t a, std::size_t b) {
  // The margin keeps roundings up and a row's tag within range.
  constexpr std::size_t kMost = std::numeric_limits<std::size_t>::max() / 16;
  if (b != 0 && a > kMost / b) {
    ThrowUnusable();
  }
  return a * b;
}

RowShape ShapeOf(const FilterParameters& parameters) {
  const std::int64_t bits = parameters.bits_per_component;
  const bool known_bits = bits == 1 || bits == 2 || bits == 4 || bits == 8 || bits == 16;
  if (!known_bits || parameters.colors < 1 || parameters.columns < 1) {
    ThrowUnusable();
  }
  const auto colors = static_cast<std::size_t>(parameters.colors);
  RowShape shape;
  shape.samples = CheckedProduct(colors, static_cast<std::size_t>(parameters.columns));
  shape.bytes = (CheckedProduct(shape.samples, static_cast<std::size_t>(bits)) + 7) / 8;
  shape.pixel_bytes = (CheckedProduct(colors, static_cast<std::size_t>(bits)) + 7) / 8;
  return shape;
}

// Adds eight bytes to eight others, each without a carry into the next.
std::uint64_t AddBytes(std::uint64_t a, std::uint64_t b) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080;
  return ((a & ~kHighBits) + (b & ~kHighBits)) ^ ((a ^ b) & kHighBits);
}

// How far AddRow may read and write beyond a row.
constexpr std::size_t kRowSlack = 8;

// row[i] = raw[i] + above[i]. Works on eight bytes at a time and so needs kRowSlack bytes after
// each of the three; those after `row` are spoilt. Rows of cross-reference streams are shorter than
// that: one step each.
void AddRow(const unsigned char* raw, const unsigned char* above, unsigned char* row,
            std::size_t length) {
  for (std::size_t i = 0; i < length; i += sizeof(std::uint64_t)) {
    std::uint64_t a;
    std::uint64_t b;
    std::memcpy(&a, raw + i, sizeof a);
    std::memcpy(&b, above + i, sizeof b);
    a = AddBytes(a, b);
    std::memcpy(row + i, &a, sizeof a);
  }
}

Decoded UndoPng(const std::string& data, const RowShape& shape) {
  const std::size_t tagged_bytes = shape.bytes + 1;
  const std::size_t whole_rows = data.size() / tagged_bytes;
  const std::size_t cut_row = data.size() % tagged_bytes;  // with its tag
  Decoded decoded;
  decoded.data.resize(whole_rows * shape.bytes + (cut_row > 0 ? cut_row - 1 : 0));
  decoded.complete = cut_row <= 1;  // a lone byte after the last row is a line end that got in

  const auto* raw = reinterpret_cast<const unsigned char*>(data.data());
  const unsigned char* const raw_end = raw + data.size();
  auto* row = reinterpret_cast<unsigned char*>(decoded.data.data());
  unsigned char* const row_end = row + decoded.data.size();
  const std::vector<unsigned char> zeros(std::min(shape.bytes, decoded.data.size()) + kRowSlack, 0);
  const unsigned char* above = zeros.data();
  while (row < row_end) {
    const unsigned char filter = *raw++;
    const std::size_t length = std::min(shape.bytes, static_cast<std::size_t>(row_end - row));
    const std::size_t reach = length + kRowSlack;
    if (filter == kUp && static_cast<std::size_t>(raw_end - raw) >= reach &&
        static_cast<std::size_t>(row_end - row) >= reach) {
      AddRow(raw, above, row, length);
    } else {
      std::memcpy(row, raw, length);
      decoded.complete &= UnfilterPngRow(filter, row, above, length, shape.pixel_bytes);
    }
    above = row;
    raw += length;
    row += length;
  }
  return decoded;
}

// Samples of one byte: each is predicted from the one `colors` bytes before.
void UndoTiffBytes(unsigned char* row, std::size_t length, std::size_t pixel_bytes) {
  for (std::size_t i = pixel_bytes; i < length; ++i) {
    row[i] = static_cast<unsigned char>(row[i] + row[i - pixel_bytes]);
  }
}

// Samples of two bytes, the more significant first.
void UndoTiffWords(unsigned char* row, std::size_t length, std::size_t pixel_bytes) {
  for (std::size_t i = pixel_bytes; i + 1 < length; i += 2) {
    const unsigned before = row[i - pixel_bytes] * 256U + row[i - pixel_bytes + 1];
    const unsigned sum = row[i] * 256U + row[i + 1] + before;
    row[i] = static_cast<unsigned char>(sum >> 8);
    row[i + 1] = static_cast<unsigned char>(sum);
  }
}

// Samples of 1, 2 or 4 bits, the more significant first.
void UndoTiffBits(unsigned char* row, std::size_t length, const RowShape& shape, std::size_t colors,
                  unsigned bits) {
  const unsigned mask = (1U << bits) - 1;
  const std::size_t per_byte = 8 / bits;
  const std::size_t samples = length >= shape.bytes ? shape.samples : length * per_byte;
  const auto shift = [&](std::size_t i) {
    return static_cast<unsigned>(8 - bits * (i % per_byte + 1));
  };
  for (std::size_t i = colors; i < samples; ++i) {
    const std::size_t before = i - colors;
    unsigned char& byte = row[i / per_byte];
    const unsigned sum = (byte >> shift(i)) + (row[before / per_byte] >> shift(before));
    byte = static_cast<unsigned char>((byte & ~(mask << shift(i))) | ((sum & mask) << shift(i)));
  }
}

Decoded UndoTiff(std::string data, const RowShape& shape, const FilterParameters& parameters) {
  auto* row = reinterpret_cast<unsigned char*>(data.data());
  std::size_t left = data.size();
  while (left > 0) {
    const std::size_t length = std::min(shape.bytes, left);
    if (parameters.bits_per_component == 8) {
      UndoTiffBytes(row, length, shape.pixel_bytes);
    } else if (parameters.bits_per_component == 16) {
      UndoTiffWords(row, length, shape.pixel_bytes);
    } else {
      UndoTiffBits(row, length, shape, static_cast<std::size_t>(parameters.colors),
                   static_cast<unsigned>(parameters.bits_per_component));
    }
    row += length;
    left -= length;
  }
  const bool whole_rows = data.size() % shape.bytes == 0;
  return {std::move(data), whole_rows};
}

}  // namespace

void filters::CheckPredictor(const FilterParameters& parameters) {
  const std::int64_t predictor = parameters.predictor;
  if (predictor == kNoPredictor) {
    return;
  }
  if (predictor != kTiffPredictor &&
      (predictor < kFirstPngPredictor || predictor > kLastPngPredictor)) {
    ThrowUnusable();
  }
  ShapeOf(parameters);
}

std::size_t filters::RowBytes(const FilterParameters& parameters) {
  if (parameters.predictor == kNoPredictor) {
    return 1;
  }
  return ShapeOf(parameters).bytes + (parameters.predictor == kTiffPredictor ? 0 : 1);
}

Decoded filters::UndoPredictor(std::string data, const FilterParameters& parameters) {
  if (parameters.predictor == kNoPredictor) {
    return {std::move(data), true};
  }
  const RowShape shape = ShapeOf(parameters);
  return parameters.predictor == kTiffPredictor ? UndoTiff(std::move(data), shape, parameters)
                                                : UndoPng(data, shape);
}

}  // namespace TarnixTools::pdf
