#include "engines/support/codecs/jpeg/Quantizer.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <limits>

#include "engines/support/codecs/JpegCodes.h"

namespace TarnixTools::engines::jpeg {
namespace {

// What bits of data an error of one step is worth, squared. Photographs and scans of equal similarity
// (SSIM) were smallest from 10 to 15.
constexpr float kErrorCosts = 12;

// The means of blocks that are all white and all black.
constexpr float kWhite = 1016;
constexpr float kBlack = -1024;

// How far coefficients go, the mean of a block aside (T.81, F.1.2): eight bits a sample.
constexpr int kFarthest = 1023;
constexpr int kFarthestMean = 1024;

constexpr int kLastPlace = 63;

// What is smaller, in steps, is not worth its bits: to keep so much makes a squared error of 0.36 one of
// 0.16, which is worth two and a half bits, and no coefficient takes fewer than three.
constexpr float kLeastKept = 0.6F;

// Bits that a coefficient takes, by the zeros before it and by the bits of its value. They are those of
// the codes that the standard suggests: a picture's own are not known before it is quantised.
using Costs = std::array<std::array<float, 11>, 16>;

constexpr Costs MakeCosts() {
  Costs costs{};
  std::size_t next = 0;
  for (std::size_t length = 1; length <= kOtherCodeCounts.size(); ++length) {
    for (int i = 0; i < kOtherCodeCounts[length - 1]; ++i) {
      const std::size_t value = kOtherCodeValues[next++];
      costs[value >> 4U][value & 15U] = static_cast<float>(length + (value & 15U));
    }
  }
  return costs;
}

constexpr Costs kCosts = MakeCosts();
constexpr float kHalf = 0.5F;                   // rounds what is positive
constexpr float kCostsOfZeros = kCosts[15][0];  // sixteen of them
constexpr float kCostsOfEnd = kCosts[0][0];

std::size_t BitsOf(int size) {
  return static_cast<std::size_t>(std::bit_width(static_cast<unsigned>(size)));
}

float CostsOfError(float difference) {
  return kErrorCosts * difference * difference;
}

// A coefficient that may be kept. The first stands for the beginning, where none has been
// kept.
struct Candidate {
  int place;     // in the zigzag order
  int size;      // its absolute value in steps, rounded
  float exact;   // and as it is
  float before;  // costs of leaving all candidates before this one out
  float after;   // and of leaving this one out, too
  // The best of the ways on which this one is kept: what it costs up to here, the candidate that is kept
  // before this one, and what is kept of it.
  float costs;
  float lead;  // these costs, less those of having left out all
  std::size_t previous;
  int kept;
};

// The coefficients of a block that may be kept, and which of them are.
class Choice {
 public:
  Choice() {
    candidates_[0] = {};
    starts_[0] = 0;
  }

  void Add(int place, float exact) {
    const float before = candidates_[count_].after;
    Candidate& added = candidates_[++count_];
    added.place = place;
    added.size = std::min(static_cast<int>(exact + kHalf), kFarthest);
    added.exact = exact;
    added.before = before;
    added.after = before + CostsOfError(exact);
  }

  // The last candidate of the best way; each tells which is the one before.
  std::size_t Find() {
    for (std::size_t i = 1; i <= count_; ++i) {
      FindWayTo(candidates_[i]);
      AddStart(i);
    }
    const float all = candidates_[count_].after;
    std::size_t last = 0;
    float least = std::numeric_limits<float>::max();
    for (std::size_t i = 0; i <= count_; ++i) {
      const Candidate& candidate = candidates_[i];
      const float costs = candidate.lead + all + (candidate.place == kLastPlace ? 0 : kCostsOfEnd);
      if (costs < least) {
        least = costs;
        last = i;
      }
    }
    return last;
  }

  const Candidate& operator[](std::size_t index) const { return candidates_[index]; }

 private:
  // Either what rounding gives is kept, or one less.
  void FindWayTo(Candidate& to) {
    to.costs = std::numeric_limits<float>::max();
    FindWayTo(to, to.size);
    if (to.size > 1) {
      FindWayTo(to, to.size - 1);
    }
    to.lead = to.costs - to.after;
  }

  void FindWayTo(Candidate& to, int kept) {
    const std::size_t bits = BitsOf(kept);
    const float error = CostsOfError(to.exact - static_cast<float>(kept));
    const float before = to.before + error;
    for (std::size_t i = start_count_; i-- > 0;) {
      const Candidate& from = candidates_[starts_[i]];
      const auto zeros = static_cast<std::size_t>(to.place - from.place - 1);
      const std::size_t runs = zeros / 16;
      const float costs =
          from.lead + before + static_cast<float>(runs) * kCostsOfZeros + kCosts[zeros % 16][bits];
      if (costs < to.costs) {
        to.costs = costs;
        to.previous = starts_[i];
        to.kept = kept;
      }
    }
  }

  // A way that goes on from a candidate behind has fewer zeros to code: those from before that lead by
  // no more are out of it.
  void AddStart(std::size_t index) {
    const float lead = candidates_[index].lead;
    while (start_count_ > 0 && candidates_[starts_[start_count_ - 1]].lead >= lead) {
      --start_count_;
    }
    starts_[start_count_++] = index;
  }

  // Set as far as they are counted.
  std::array<Candidate, 64> candidates_;
  std::size_t count_ = 0;
  // The candidates that a way may go on from, as they come: each leads by less than the next.
  std::array<std::size_t, 64> starts_;
  std::size_t start_count_ = 1;
};

// For each row of a block and each set of its coefficients, as bits: where they stand in the zigzag
// order, as bits again.
using PlacesOfRows = std::array<std::array<std::uint64_t, 256>, 8>;

constexpr PlacesOfRows MakePlaces() {
  PlacesOfRows places{};
  for (std::size_t place = 0; place < kZigzag.size(); ++place) {
    const std::size_t bit = std::size_t{1} << (kZigzag[place] % 8U);
    for (std::size_t set = 0; set < 256; ++set) {
      if ((set & bit) != 0) {
        places[kZigzag[place] / 8U][set] |= std::uint64_t{1} << place;
      }
    }
  }
  return places;
}

constexpr PlacesOfRows kPlaces = MakePlaces();

// The places in the zigzag order, as bits, of what may be kept.
std::uint64_t PlacesToKeep(const Block& exact) {
  std::uint64_t places = 0;
  for (std::size_t row = 0; row < 8; ++row) {
    unsigned set = 0;
    for (unsigned x = 0; x < 8; ++x) {
      set |= static_cast<unsigned>(exact[8 * row + x] >= kLeastKept) << x;
    }
    places |= kPlaces[row][set];
  }
  return places;
}

// What stands for the mean of a block, in steps. White and black become no gray: what is beyond them is
// cut off when it is decoded, and close to black little differences count.
int Mean(float mean, float factor) {
  const float exact = mean * factor;
  const float steps = mean >= kWhite - 0.5F   ? std::ceil(exact)
                      : mean <= kBlack + 0.5F ? std::floor(exact)
                                              : std::round(exact);
  return std::clamp(static_cast<int>(steps), -kFarthestMean, kFarthest);
}

}  // namespace

Quantizer::Quantizer(const JpegSteps& steps) {
  for (std::size_t i = 0; i < factors_.size(); ++i) {
    factors_[i] = 1.0F / static_cast<float>(steps[i]);
  }
}

void Quantizer::Quantize(const Block& block, std::int16_t* quantized) const {
  std::fill_n(quantized, block.size(), std::int16_t{0});
  quantized[0] = static_cast<std::int16_t>(Mean(block[0], factors_[0]));
  Block exact;
  for (std::size_t i = 0; i < block.size(); ++i) {
    exact[i] = std::abs(block[i] * factors_[i]);
  }
  Choice choice;
  constexpr std::uint64_t kMean = 1;
  for (std::uint64_t left = PlacesToKeep(exact) & ~kMean; left != 0; left &= left - 1) {
    const int place = std::countr_zero(left);
    choice.Add(place, exact[kZigzag[static_cast<std::size_t>(place)]]);
  }
  for (std::size_t i = choice.Find(); i > 0; i = choice[i].previous) {
    const std::size_t at = kZigzag[static_cast<std::size_t>(choice[i].place)];
    quantized[at] = static_cast<std::int16_t>(block[at] < 0 ? -choice[i].kept : choice[i].kept);
  }
}

}  // namespace TarnixTools::engines::jpeg
