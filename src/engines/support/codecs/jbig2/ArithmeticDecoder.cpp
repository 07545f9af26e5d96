#include "engines/support/codecs/jbig2/ArithmeticDecoder.h"

#include "engines/support/codecs/jbig2/QeTable.h"

namespace TarnixTools::engines::jbig2 {
namespace {

// Coders leave trailing bytes out; much more than that is missing data.
constexpr int kMaxBytesBehindEnd = 1024;

}  // namespace

ArithmeticDecoder::ArithmeticDecoder(std::string_view data, Budget& budget)
    : data_(data), budget_(&budget) {
  code_ = ByteAt(0) << 16U;
  TakeByte();
  code_ <<= 7U;
  bits_left_ -= 7;
}

unsigned ArithmeticDecoder::ByteAt(std::size_t at) const {
  return at < data_.size() ? static_cast<unsigned char>(data_[at]) : 0xFFU;
}

void ArithmeticDecoder::TakeByte() {
  const unsigned byte = ByteAt(at_);
  const unsigned next = ByteAt(at_ + 1);
  if (byte == 0xFF && next > 0x8F) {  // a marker, or the end
    if (++bytes_behind_end_ > kMaxBytesBehindEnd) {
      throw Failure();
    }
    code_ += 0xFF00;
    bits_left_ = 8;
    return;
  }
  ++at_;
  code_ += byte == 0xFF ? next << 9U : next << 8U;
  bits_left_ = byte == 0xFF ? 7 : 8;
}

void ArithmeticDecoder::Renormalize() {
  do {
    if (bits_left_ == 0) {
      TakeByte();
    }
    interval_ <<= 1U;
    code_ <<= 1U;
    --bits_left_;
  } while ((interval_ & 0x8000U) == 0);
}

int ArithmeticDecoder::Decode(Context& context) {
  const Estimate& estimate = kEstimates[context.state];
  const std::uint32_t probability = estimate.probability;
  interval_ -= probability;
  bool is_likely = true;
  if (code_ >> 16U < probability) {
    is_likely = interval_ < probability;
    interval_ = probability;
  } else {
    code_ -= probability << 16U;
    if ((interval_ & 0x8000U) != 0) {
      return context.likely;
    }
    is_likely = interval_ >= probability;
  }
  const int value = is_likely ? context.likely : 1 - context.likely;
  if (!is_likely && estimate.switches) {
    context.likely = static_cast<std::uint8_t>(1 - context.likely);
  }
  context.state = is_likely ? estimate.after_likely : estimate.after_unlikely;
  Renormalize();
  return value;
}

std::optional<std::int32_t> IntegerContexts::Decode(ArithmeticDecoder& decoder) {
  struct Range {
    unsigned bits;
    std::int64_t first;
  };

  constexpr std::array<Range, 6> kRanges = {
      {{2, 0}, {4, 4}, {6, 20}, {8, 84}, {12, 340}, {32, 4436}}};
  std::uint32_t before = 1;
  const auto bit = [&] {
    const auto value = static_cast<std::uint32_t>(decoder.Decode(contexts_[before]));
    before = before < 256 ? before << 1U | value : ((before << 1U | value) & 511U) | 256U;
    return value;
  };
  const bool is_negative = bit() == 1;
  std::size_t range = 0;
  while (range + 1 < kRanges.size() && bit() == 1) {
    ++range;
  }
  std::int64_t value = 0;
  for (unsigned i = 0; i < kRanges[range].bits; ++i) {
    value = value << 1U | bit();
  }
  value += kRanges[range].first;
  if (is_negative && value == 0) {
    return std::nullopt;
  }
  constexpr std::int64_t kMost = 0x7FFFFFFF;
  if (value > kMost) {
    throw Failure();
  }
  return static_cast<std::int32_t>(is_negative ? -value : value);
}

std::int32_t IntegerContexts::Need(ArithmeticDecoder& decoder) {
  const std::optional<std::int32_t> value = Decode(decoder);
  if (!value) {
    throw Failure();
  }
  return *value;
}

std::uint32_t IdContexts::Decode(ArithmeticDecoder& decoder) {
  std::uint32_t before = 1;
  for (unsigned i = 0; i < bits_; ++i) {
    before = before << 1U | static_cast<std::uint32_t>(decoder.Decode(contexts_[before]));
  }
  return before - (std::uint32_t{1} << bits_);
}

}  // namespace TarnixTools::engines::jbig2
