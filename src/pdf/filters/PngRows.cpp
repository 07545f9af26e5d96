#include "pdf/filters/PngRows.h"

#include <algorithm>
#include <array>

namespace TarnixTools::pdf {
namespace {

// What a byte is predicted from: its neighbours to the left, above and at the upper left.

struct FromLeft {
  int operator()(int left, int /*above*/, int /*corner*/) const { return left; }
};

struct FromMean {
  int operator()(int left, int above, int /*corner*/) const { return (left + above) / 2; }
};

struct FromNearest {
  int operator()(int left, int above, int corner) const {
    return NearestNeighbour(left, above, corner);
  }
};

// A row of pixels of kBytes: what is to the left of one stays in registers.
template <std::size_t kBytes, typename Predictor>
void UnfilterBy(unsigned char* row, const unsigned char* above, std::size_t size,
                const Predictor& predict) {
  std::array<int, kBytes> left{};
  std::array<int, kBytes> corner{};
  const auto unfilter = [&](std::size_t i, std::size_t k) {
    const int up = above[i + k];
    left[k] = static_cast<unsigned char>(row[i + k] + predict(left[k], up, corner[k]));
    row[i + k] = static_cast<unsigned char>(left[k]);
    corner[k] = up;
  };
  std::size_t i = 0;
  for (; i + kBytes <= size; i += kBytes) {
    for (std::size_t k = 0; k < kBytes; ++k) {
      unfilter(i, k);
    }
  }
  for (std::size_t k = 0; i + k < size; ++k) {
    unfilter(i, k);  // a row that was cut
  }
}

template <typename Predictor>
void UnfilterAny(unsigned char* row, const unsigned char* above, std::size_t size,
                 std::size_t pixel_bytes, const Predictor& predict) {
  const std::size_t first = std::min(pixel_bytes, size);
  for (std::size_t i = 0; i < first; ++i) {
    row[i] = static_cast<unsigned char>(row[i] + predict(0, above[i], 0));
  }
  for (std::size_t i = first; i < size; ++i) {
    row[i] = static_cast<unsigned char>(
        row[i] + predict(row[i - pixel_bytes], above[i], above[i - pixel_bytes]));
  }
}

// Of more bytes the plain loop is as fast, since those to the left are long done.
template <typename Predictor>
void Unfilter(unsigned char* row, const unsigned char* above, std::size_t size,
              std::size_t pixel_bytes, const Predictor& predict) {
  if (pixel_bytes == 1) {
    UnfilterBy<1>(row, above, size, predict);
  } else {
    UnfilterAny(row, above, size, pixel_bytes, predict);
  }
}

void UnfilterPaeth(unsigned char* row, const unsigned char* above, std::size_t size,
                   std::size_t pixel_bytes) {
  const FromNearest predict;
  switch (pixel_bytes) {
    case 1:
      return UnfilterBy<1>(row, above, size, predict);
    case 2:
      return UnfilterBy<2>(row, above, size, predict);
    case 3:
      return UnfilterBy<3>(row, above, size, predict);
    case 4:
      return UnfilterBy<4>(row, above, size, predict);
    case 6:
      return UnfilterBy<6>(row, above, size, predict);
    case 8:
      return UnfilterBy<8>(row, above, size, predict);
    default:
      return UnfilterAny(row, above, size, pixel_bytes, predict);
  }
}

}  // namespace

bool UnfilterPngRow(unsigned char type, unsigned char* row, const unsigned char* above,
                    std::size_t size, std::size_t pixel_bytes) {
  switch (type) {
    case kNone:
      return true;
    case kSub:
      Unfilter(row, above, size, pixel_bytes, FromLeft());
      return true;
    case kUp:
      for (std::size_t i = 0; i < size; ++i) {
        row[i] = static_cast<unsigned char>(row[i] + above[i]);
      }
      return true;
    case kAverage:
      Unfilter(row, above, size, pixel_bytes, FromMean());
      return true;
    case kPaeth:
      UnfilterPaeth(row, above, size, pixel_bytes);
      return true;
    default:
      return false;
  }
}

}  // namespace TarnixTools::pdf
