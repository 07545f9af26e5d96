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

// What is smaller, in steps, is rounded to 0.
constexpr float kLeastKept = 0.5F;

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
constexpr float kCostsOfZeros = kCosts[15][0];  // sixteen of them
constexpr float kCostsOfEnd = kCosts[0][0];

std::size_t BitsOf(int size) {
  return static_cast<std::size_t>(std::bit_width(static_cast<unsigned>(size)));
}

float CostsOfError(float difference) {
  return kErrorCosts * difference * difference;
}

// A coefficient that rounding does not make 0. The first stands for the beginning, where none has been
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
  std::size_t previous;
  int kept;
};

// The coefficients of a block that may be kept, and which of them are.
class Choice {
 public:
  Choice() { candidates_[0] = {}; }

  void Add(int place, float exact) {
    const float before = candidates_[count_].after;
    Candidate& added = candidates_[++count_];
    added.place = place;
    added.size = std::min(static_cast<int>(exact + kLeastKept), kFarthest);
    added.exact = exact;
    added.before = before;
    added.after = before + CostsOfError(exact);
  }

  // The last candidate of the best way; each tells which is the one before.
  std::size_t Find() {
    for (std::size_t i = 1; i <= count_; ++i) {
      FindWayTo(i);
    }
    const float all = candidates_[count_].after;
    std::size_t last = 0;
    float least = std::numeric_limits<float>::max();
    for (std::size_t i = 0; i <= count_; ++i) {
      const Candidate& candidate = candidates_[i];
      const float costs = candidate.costs + all - candidate.after +
                          (candidate.place == kLastPlace ? 0 : kCostsOfEnd);
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
  void FindWayTo(std::size_t index) {
    Candidate& to = candidates_[index];
    const int less = std::max(1, to.size - 1);
    const std::size_t bits = BitsOf(to.size);
    const std::size_t bits_of_less = BitsOf(less);
    const float error = CostsOfError(to.exact - static_cast<float>(to.size));
    const float error_of_less = CostsOfError(to.exact - static_cast<float>(less));
    float least = std::numeric_limits<float>::max();
    for (std::size_t i = index; i-- > 0;) {
      const Candidate& from = candidates_[i];
      const float left_out = to.before - from.after;
      if (left_out >= least) {
        break;  // and going back further leaves out more
      }
      const auto zeros = static_cast<std::size_t>(to.place - from.place - 1);
      const std::size_t runs = zeros / 16;
      const float before = from.costs + left_out + static_cast<float>(runs) * kCostsOfZeros;
      const auto& costs = kCosts[zeros % 16];
      const float all = before + costs[bits] + error;
      const float all_of_less = before + costs[bits_of_less] + error_of_less;
      if (std::min(all, all_of_less) < least) {
        least = std::min(all, all_of_less);
        to.previous = i;
        to.kept = all_of_less < all ? less : to.size;
      }
    }
    to.costs = least;
  }

  // Set as far as they are counted.
  std::array<Candidate, 64> candidates_;
  std::size_t count_ = 0;
};

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
  for (int place = 1; place <= kLastPlace; ++place) {
    const float value = exact[kZigzag[static_cast<std::size_t>(place)]];
    if (value >= kLeastKept) {
      choice.Add(place, value);
    }
  }
  for (std::size_t i = choice.Find(); i > 0; i = choice[i].previous) {
    const std::size_t at = kZigzag[static_cast<std::size_t>(choice[i].place)];
    quantized[at] = static_cast<std::int16_t>(block[at] < 0 ? -choice[i].kept : choice[i].kept);
  }
}

}  // namespace TarnixTools::engines::jpeg
