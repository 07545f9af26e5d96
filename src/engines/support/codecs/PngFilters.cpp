#include "engines/support/codecs/PngFilters.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <vector>

namespace TarnixTools::engines {

namespace {

// The neighbour (left, above, upper left) that is nearest to left + above - upper left; without
// branches, so that compilers make vector code of it.
inline int Paeth(int left, int above, int corner) {
  const int to_left = std::abs(above - corner);
  const int to_above = std::abs(left - corner);
  const int to_corner = std::abs(left + above - 2 * corner);
  const int upper = to_above <= to_corner ? above : corner;
  return to_left <= to_above && to_left <= to_corner ? left : upper;
}

void UnfilterAverage(unsigned char* row, const unsigned char* above, std::size_t size,
                     std::size_t step) {
  for (std::size_t i = 0; i < std::min(step, size); ++i) {
    row[i] = static_cast<unsigned char>(row[i] + above[i] / 2);
  }
  for (std::size_t i = step; i < size; ++i) {
    row[i] = static_cast<unsigned char>(row[i] + (row[i - step] + above[i]) / 2);
  }
}

template <std::size_t step>
void UnfilterPaethBy(unsigned char* row, const unsigned char* above, std::size_t size) {
  int left[step] = {};
  int corner[step] = {};
  for (std::size_t i = 0; i + step <= size; i += step) {
    for (std::size_t k = 0; k < step; ++k) {
      const int up = above[i + k];
      left[k] = static_cast<unsigned char>(row[i + k] + Paeth(left[k], up, corner[k]));
      row[i + k] = static_cast<unsigned char>(left[k]);
      corner[k] = up;
    }
  }
}

void UnfilterPaeth(unsigned char* row, const unsigned char* above, std::size_t size,
                   std::size_t step) {
  switch (step) {
    case 1:
      return UnfilterPaethBy<1>(row, above, size);
    case 2:
      return UnfilterPaethBy<2>(row, above, size);
    case 3:
      return UnfilterPaethBy<3>(row, above, size);
    case 4:
      return UnfilterPaethBy<4>(row, above, size);
    case 6:
      return UnfilterPaethBy<6>(row, above, size);
    default:
      return UnfilterPaethBy<8>(row, above, size);
  }
}

void UnfilterRow(unsigned char* row, const unsigned char* above, std::size_t size, std::size_t step,
                 unsigned type) {
  switch (type) {
    case 1:
      for (std::size_t i = step; i < size; ++i) {
        row[i] = static_cast<unsigned char>(row[i] + row[i - step]);
      }
      break;
    case 2:
      for (std::size_t i = 0; i < size; ++i) {
        row[i] = static_cast<unsigned char>(row[i] + above[i]);
      }
      break;
    case 3:
      UnfilterAverage(row, above, size, step);
      break;
    case 4:
      UnfilterPaeth(row, above, size, step);
      break;
    default:
      break;
  }
}

std::size_t PixelBytes(const Plane& plane) {
  return std::max<std::size_t>(1, static_cast<std::size_t>(plane.channels() * plane.bits()) / 8);
}

// The sum of absolute values of bytes taken as signed.
std::uint32_t Cost(const unsigned char* bytes, std::size_t size) {
  std::uint32_t sum = 0;
  for (std::size_t i = 0; i < size; ++i) {
    const unsigned value = bytes[i];
    sum += value < 128 ? value : 256 - value;
  }
  return sum;
}

void FilterRow(const unsigned char* row, const unsigned char* above, std::size_t row_bytes,
               std::size_t pixel_bytes, RowFilter filter, unsigned char* out) {
  *out++ = static_cast<unsigned char>(filter);
  const std::size_t first = std::min(pixel_bytes, row_bytes);
  switch (filter) {
    case RowFilter::kSub:
      std::memcpy(out, row, first);
      for (std::size_t i = first; i < row_bytes; ++i) {
        out[i] = static_cast<unsigned char>(row[i] - row[i - first]);
      }
      break;
    case RowFilter::kUp:
      for (std::size_t i = 0; i < row_bytes; ++i) {
        out[i] = static_cast<unsigned char>(row[i] - above[i]);
      }
      break;
    case RowFilter::kAverage:
      for (std::size_t i = 0; i < first; ++i) {
        out[i] = static_cast<unsigned char>(row[i] - above[i] / 2);
      }
      for (std::size_t i = first; i < row_bytes; ++i) {
        out[i] = static_cast<unsigned char>(row[i] - (row[i - first] + above[i]) / 2);
      }
      break;
    case RowFilter::kPaeth:
      for (std::size_t i = 0; i < first; ++i) {
        out[i] = static_cast<unsigned char>(row[i] - above[i]);
      }
      for (std::size_t i = first; i < row_bytes; ++i) {
        out[i] =
            static_cast<unsigned char>(row[i] - Paeth(row[i - first], above[i], above[i - first]));
      }
      break;
    default:
      std::memcpy(out, row, row_bytes);
      break;
  }
}

void FilterRowBest(const unsigned char* row, const unsigned char* above, std::size_t row_bytes,
                   std::size_t pixel_bytes, unsigned char* best, unsigned char* trial) {
  std::uint32_t lowest = std::numeric_limits<std::uint32_t>::max();
  unsigned char* const out = best;
  for (const RowFilter filter : {RowFilter::kPaeth, RowFilter::kSub, RowFilter::kUp,
                                 RowFilter::kAverage, RowFilter::kNone}) {
    FilterRow(row, above, row_bytes, pixel_bytes, filter, trial);
    const std::uint32_t cost = Cost(trial + 1, row_bytes);
    if (cost < lowest) {
      lowest = cost;
      std::swap(best, trial);
    }
  }
  if (best != out) {
    std::memcpy(out, best, row_bytes + 1);
  }
}

}  // namespace

void Unfilter(unsigned char* data, std::size_t rows, std::size_t stride, std::size_t pixel_bytes) {
  const std::vector<unsigned char> zeros(stride, 0);
  const unsigned char* above = zeros.data();
  for (std::size_t y = 0; y < rows; ++y) {
    unsigned char* row = data + y * stride;
    UnfilterRow(row + 1, above, stride - 1, pixel_bytes, row[0]);
    above = row + 1;
  }
}

void FilterRows(const Plane& plane, std::uint32_t first, std::uint32_t count, RowFilter filter,
                unsigned char* out) {
  const std::size_t row_bytes = plane.row_bytes();
  const std::size_t pixel_bytes = PixelBytes(plane);
  const std::vector<unsigned char> zeros(row_bytes, 0);
  std::vector<unsigned char> trial(filter == RowFilter::kBest ? plane.stride() : 0);
  for (std::uint32_t y = first; y < first + count; ++y, out += plane.stride()) {
    const unsigned char* above = y == 0 ? zeros.data() : plane.row(y - 1);
    if (filter == RowFilter::kBest) {
      FilterRowBest(plane.row(y), above, row_bytes, pixel_bytes, out, trial.data());
    } else {
      FilterRow(plane.row(y), above, row_bytes, pixel_bytes, filter, out);
    }
  }
}

// The rows are filtered from the last one up, so that the row above is still what it was.
void Filter(Plane& plane, RowFilter filter) {
  std::vector<unsigned char> row(plane.stride());
  for (std::uint32_t y = plane.height(); y-- > 0;) {
    FilterRows(plane, y, 1, filter, row.data());
    std::memcpy(plane.row(y) - 1, row.data(), row.size());
  }
}

}  // namespace TarnixTools::engines
