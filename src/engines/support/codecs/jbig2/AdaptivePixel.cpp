#include "engines/support/codecs/jbig2/AdaptivePixel.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "engines/support/codecs/jbig2/GenericRegionEncoder.h"

namespace TarnixTools::engines::jbig2 {
namespace {

// The sample: bands of rows, evenly over the picture.
constexpr std::uint64_t kBands = 4;
constexpr std::uint32_t kBandRows = 64;

// Pixels compared at once, and those at the ends of a row that are not: what is loaded for the others,
// 64 pixels at any distance, lies within the row.
constexpr std::uint32_t kPixelsAtOnce = 32;
constexpr std::uint32_t kLeftMargin = 32;
constexpr std::uint32_t kRightMargin = 64;
static_assert(kMaxAdaptiveDistance <= 24);

// In a screen of dots one pixel of so many, at least, differs from the one before it.
constexpr std::uint64_t kMostPixelsForChange = 40;

constexpr TemplatePixel kBefore = {-1, 0};

std::vector<BitPicture> BandsOf(const BitPicture& picture) {
  std::vector<BitPicture> bands;
  for (std::uint64_t i = 0; i < kBands; ++i) {
    const std::uint64_t middle = (2 * i + 1) * picture.height / (2 * kBands);
    const std::uint64_t first = middle - std::min<std::uint64_t>(middle, kBandRows / 2);
    BitPicture band = picture;
    band.rows = picture.row(static_cast<std::uint32_t>(first));
    band.height = std::min(kBandRows, picture.height - static_cast<std::uint32_t>(first));
    bands.push_back(band);
  }
  return bands;
}

// How many pixels of a band, those near its edges aside, differ from the pixel at that distance.
std::uint64_t CountChanges(const BitPicture& band, TemplatePixel distance) {
  std::uint64_t count = 0;
  for (std::uint32_t y = kMaxAdaptiveDistance; y < band.height; ++y) {
    const std::uint8_t* row = band.row(y);
    const std::uint8_t* other = band.row(y - static_cast<std::uint32_t>(-distance.y));
    for (std::int64_t x = kLeftMargin; x + kPixelsAtOnce + kRightMargin <= band.width;
         x += kPixelsAtOnce) {
      const std::int64_t place = x + distance.x;
      const std::uint64_t changes = LoadBig(row + x / 8) ^ LoadBig(other + (place >> 3))
                                                               << (place & 7);
      count += static_cast<unsigned>(std::popcount(changes >> (64 - kPixelsAtOnce)));
    }
  }
  return count;
}

// The band in which most pixels differ from those before them.
const BitPicture& BusiestOf(const std::vector<BitPicture>& bands) {
  return *std::max_element(bands.begin(), bands.end(),
                           [](const BitPicture& a, const BitPicture& b) {
                             return CountChanges(a, kBefore) < CountChanges(b, kBefore);
                           });
}

// The distance at which fewest pixels differ, of all that are beyond the template. The nominal place when
// a neighbour tells more than any of them, as in text.
TemplatePixel MostAlike(const BitPicture& band) {
  constexpr std::int32_t kTemplateSide = 4;
  TemplatePixel best = kNominalPixels[0];
  std::uint64_t least = CountChanges(band, kBefore);
  for (std::int32_t y = 0; y >= -kMaxAdaptiveDistance; --y) {
    const std::int32_t last = y == 0 ? -1 : kMaxAdaptiveDistance;
    for (std::int32_t x = -kMaxAdaptiveDistance; x <= last; ++x) {
      if (y > -3 && x >= -kTemplateSide && x <= kTemplateSide) {
        continue;
      }
      const std::uint64_t changes = CountChanges(band, {x, y});
      if (changes < least) {
        least = changes;
        best = {x, y};
      }
    }
  }
  return best;
}

std::size_t EncodedSize(const std::vector<BitPicture>& bands, TemplatePixel adaptive) {
  std::size_t size = 0;
  for (const BitPicture& band : bands) {
    GenericRegionEncoder encoder(band, adaptive);
    encoder.EncodeRows();
    size += encoder.Finish().size();
  }
  return size;
}

}  // namespace

TemplatePixel ChooseAdaptivePixel(const BitPicture& picture) {
  const TemplatePixel nominal = kNominalPixels[0];
  const std::vector<BitPicture> bands = BandsOf(picture);
  const BitPicture& busiest = BusiestOf(bands);
  const std::uint64_t pixels = std::uint64_t{busiest.width} * busiest.height;
  if (CountChanges(busiest, kBefore) * kMostPixelsForChange < pixels) {
    return nominal;
  }
  const TemplatePixel likely = MostAlike(busiest);
  const bool is_nominal = likely.x == nominal.x && likely.y == nominal.y;
  return !is_nominal && EncodedSize(bands, likely) < EncodedSize(bands, nominal) ? likely : nominal;
}

}  // namespace TarnixTools::engines::jbig2
