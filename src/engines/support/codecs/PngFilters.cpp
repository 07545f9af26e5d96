#include "engines/support/codecs/PngFilters.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <vector>

#include "pdf/filters/PngRows.h"

namespace TarnixTools::engines {

namespace {

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
        out[i] = static_cast<unsigned char>(
            row[i] - pdf::NearestNeighbour(row[i - first], above[i], above[i - first]));
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
    pdf::UnfilterPngRow(row[0], row + 1, above, stride - 1, pixel_bytes);
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
