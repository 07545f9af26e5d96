#include "engines/support/codecs/jbig2/ArithmeticEncoder.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace TarnixTools::engines::jbig2 {
namespace {

// From here on, finding out how many decisions fit takes less than coding them one by one.
constexpr std::uint64_t kManyZeros = 6;

constexpr std::uint32_t kLeastInterval = 0x8000;

}  // namespace

void ArithmeticEncoder::EncodeZeros(Context& context, std::uint64_t count) {
  while (count > 0) {
    if (context.mps == 0 && count >= kManyZeros) {
      // As long as the interval does not become too small, more of them are one sum.
      const std::uint32_t qe = kQeTable[context.index].qe;
      const auto fitting = static_cast<std::uint32_t>(
          std::min<std::uint64_t>(count, (interval_ - kLeastInterval) / qe));
      interval_ -= fitting * qe;
      code_ += fitting * qe;
      count -= fitting;
      if (count == 0) {
        return;
      }
    }
    Encode(context, 0);
    --count;
  }
}

void ArithmeticEncoder::EncodeAndLearn(Context& context, int decision) {
  const QeRow& row = kQeTable[context.index];
  const bool is_mps = decision == context.mps;
  // The larger part of the interval stands for the more probable symbol.
  if (is_mps == (interval_ >= row.qe)) {
    code_ += row.qe;
  } else {
    interval_ = row.qe;
  }
  if (!is_mps && row.switches) {
    context.mps = static_cast<std::uint8_t>(1 - context.mps);
  }
  context.index = is_mps ? row.nmps : row.nlps;
  Renormalize();
}

void ArithmeticEncoder::Renormalize() {
  auto shifts = static_cast<unsigned>(std::countl_zero(static_cast<std::uint16_t>(interval_)));
  interval_ <<= shifts;
  while (shifts >= shifts_left_) {
    code_ <<= shifts_left_;
    shifts -= shifts_left_;
    PutByte();
  }
  code_ <<= shifts;
  shifts_left_ -= shifts;
}

void ArithmeticEncoder::PutByte() {
  constexpr std::uint32_t kCarry = 0x8000000;
  const auto last = [&] { return static_cast<unsigned char>(bytes_.back()); };
  if (last() != 0xFF && code_ >= kCarry) {
    bytes_.back() = static_cast<char>(last() + 1);
    if (last() == 0xFF) {
      code_ &= kCarry - 1;
    }
  }
  // Behind 0xFF a byte has seven bits, with a place for the carry.
  const bool is_short = last() == 0xFF;
  bytes_ += static_cast<char>(code_ >> (is_short ? 20U : 19U));
  code_ &= is_short ? 0xFFFFFU : 0x7FFFFU;
  shifts_left_ = is_short ? 7 : 8;
}

std::string ArithmeticEncoder::Finish() {
  const std::uint32_t end = code_ + interval_;
  code_ |= 0xFFFF;
  if (code_ >= end) {
    code_ -= 0x8000;
  }
  for (int i = 0; i < 2; ++i) {
    code_ <<= shifts_left_;
    PutByte();
  }
  if (bytes_.back() != '\xFF') {
    bytes_ += '\xFF';
  }
  bytes_ += '\xAC';
  bytes_.erase(0, 1);
  return std::move(bytes_);
}

}  // namespace TarnixTools::engines::jbig2
