#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <utility>

#include "pdf/Error.h"
#include "pdf/filters/FilterSteps.h"

namespace TarnixTools::pdf {
namespace {

constexpr std::int64_t kNoPredictor = 1;
constexpr std::int64_t kTiffPredictor = 2;
constexpr std::int64_t kFirstPngPredictor = 10;
constexpr std::int64_t kLastPngPredictor = 15;

// Row tags of the PNG standard (ISO/IEC 15948, 9.2).
enum PngFilter : unsigned char { kNone = 0, kSub = 1, kUp = 2, kAverage = 3, kPaeth = 4 };

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

unsigned char PaethPredictor(int left, int above, int above_left) {
  const int estimate = left + above - above_left;
  const int to_left = std::abs(estimate - left);
  const int to_above = std::abs(estimate - above);
  const int to_above_left = std::abs(estimate - above_left);
  if (to_left <= to_above && to_left <= to_above_left) {
    return static_cast<unsigned char>(left);
  }
  return static_cast<unsigned char>(to_above <= to_above_left ? above : above_left);
}

// Undoes the filter of single PNG rows. The row above the first is all zeros (above == nullptr
// here).
class PngRow {
 public:
  PngRow(const unsigned char* raw, const unsigned char* above, unsigned char* row,
         std::size_t length, std::size_t pixel_bytes)
      : raw_(raw),
        above_(above),
        row_(row),
        length_(length),
        pixel_bytes_(std::min(pixel_bytes, length)) {}

  // False for an unknown filter; the row is then taken as it is.
  bool Undo(unsigned char filter) const {
    switch (filter) {
      case kNone:
        Copy();
        return true;
      case kSub:
        Sub();
        return true;
      case kUp:
        Up();
        return true;
      case kAverage:
        Average();
        return true;
      case kPaeth:
        Paeth();
        return true;
      default:
        Copy();
        return false;
    }
  }

 private:
  void Copy() const { std::memcpy(row_, raw_, length_); }

  void Sub() const {
    std::memcpy(row_, raw_, pixel_bytes_);
    for (std::size_t i = pixel_bytes_; i < length_; ++i) {
      row_[i] = static_cast<unsigned char>(raw_[i] + row_[i - pixel_bytes_]);
    }
  }

  void Up() const {
    if (above_ == nullptr) {
      Copy();
      return;
    }
    for (std::size_t i = 0; i < length_; ++i) {
      row_[i] = static_cast<unsigned char>(raw_[i] + above_[i]);
    }
  }

  void Average() const {
    for (std::size_t i = 0; i < length_; ++i) {
      const int left = i < pixel_bytes_ ? 0 : row_[i - pixel_bytes_];
      row_[i] = static_cast<unsigned char>(raw_[i] + (left + Above(i)) / 2);
    }
  }

  void Paeth() const {
    for (std::size_t i = 0; i < pixel_bytes_; ++i) {
      row_[i] = static_cast<unsigned char>(raw_[i] + Above(i));
    }
    for (std::size_t i = pixel_bytes_; i < length_; ++i) {
      const unsigned char predicted =
          PaethPredictor(row_[i - pixel_bytes_], Above(i), Above(i - pixel_bytes_));
      row_[i] = static_cast<unsigned char>(raw_[i] + predicted);
    }
  }

  int Above(std::size_t i) const { return above_ == nullptr ? 0 : above_[i]; }

  const unsigned char* raw_;
  const unsigned char* above_;
  unsigned char* row_;
  std::size_t length_;
  std::size_t pixel_bytes_;
};

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
  const unsigned char* above = nullptr;
  while (row < row_end) {
    const unsigned char filter = *raw++;
    const std::size_t length = std::min(shape.bytes, static_cast<std::size_t>(row_end - row));
    const std::size_t reach = length + kRowSlack;
    if (filter == kUp && above != nullptr && static_cast<std::size_t>(raw_end - raw) >= reach &&
        static_cast<std::size_t>(row_end - row) >= reach) {
      AddRow(raw, above, row, length);
    } else {
      decoded.complete &= PngRow(raw, above, row, length, shape.pixel_bytes).Undo(filter);
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
