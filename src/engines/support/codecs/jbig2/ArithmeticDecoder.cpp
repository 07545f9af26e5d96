#include "engines/support/codecs/jbig2/ArithmeticDecoder.h"

#include <limits>

#include "engines/support/codecs/jbig2/Jbig2Limits.h"

namespace TarnixTools::engines::jbig2 {
namespace {

// Integers from `first` on, of so many bits (table A.1).
struct Range {
  unsigned bits;
  std::int64_t first;
};

constexpr std::array<Range, 6> kRanges = {
    {{2, 0}, {4, 4}, {6, 20}, {8, 84}, {12, 340}, {32, 4436}}};

}  // namespace

ArithmeticDecoder::ArithmeticDecoder(std::string_view data, Budget& budget)
    : data_(data), budget_(&budget) {
  code_ = ByteAt(0) << 16U;
  ByteIn();
  code_ <<= 7U;
  shifts_left_ -= 7;
}

unsigned ArithmeticDecoder::ByteAt(std::size_t at) const {
  return at < data_.size() ? static_cast<unsigned char>(data_[at]) : 0xFFU;
}

void ArithmeticDecoder::ByteIn() {
  const unsigned byte = ByteAt(at_);
  const unsigned next = ByteAt(at_ + 1);
  if (byte == 0xFF && next > 0x8F) {  // a marker, or the end
    if (++bytes_behind_end_ > limits::kMaxBytesBehindEnd) {
      throw Failure();
    }
    code_ += 0xFF00;
    shifts_left_ = 8;
    return;
  }
  ++at_;
  code_ += byte == 0xFF ? next << 9U : next << 8U;
  shifts_left_ = byte == 0xFF ? 7 : 8;
}

void ArithmeticDecoder::Renormalize() {
  do {
    if (shifts_left_ == 0) {
      ByteIn();
    }
    interval_ <<= 1U;
    code_ <<= 1U;
    --shifts_left_;
  } while ((interval_ & 0x8000U) == 0);
}

int ArithmeticDecoder::Decode(Context& context) {
  const QeRow& row = kQeTable[context.index];
  const std::uint32_t qe = row.qe;
  interval_ -= qe;
  bool is_mps = true;
  if (code_ >> 16U < qe) {
    is_mps = interval_ < qe;
    interval_ = qe;
  } else {
    code_ -= qe << 16U;
    if ((interval_ & 0x8000U) != 0) {
      return context.mps;
    }
    is_mps = interval_ >= qe;
  }
  const int decision = is_mps ? context.mps : 1 - context.mps;
  if (!is_mps && row.switches) {
    context.mps = static_cast<std::uint8_t>(1 - context.mps);
  }
  context.index = is_mps ? row.nmps : row.nlps;
  Renormalize();
  return decision;
}

std::optional<std::int32_t> IntegerDecoder::Decode(ArithmeticDecoder& decoder) {
  std::uint32_t prev = 1;  // the decisions so far, behind a leading 1
  const auto bit = [&] {
    const auto value = static_cast<std::uint32_t>(decoder.Decode(contexts_[prev]));
    prev = prev < 256 ? prev << 1U | value : ((prev << 1U | value) & 511U) | 256U;
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
  if (value > std::numeric_limits<std::int32_t>::max()) {
    throw Failure();
  }
  return static_cast<std::int32_t>(is_negative ? -value : value);
}

std::int32_t IntegerDecoder::Need(ArithmeticDecoder& decoder) {
  const std::optional<std::int32_t> value = Decode(decoder);
  if (!value) {
    throw Failure();
  }
  return *value;
}

std::uint32_t SymbolIdDecoder::Decode(ArithmeticDecoder& decoder) {
  std::uint32_t prev = 1;
  for (unsigned i = 0; i < code_length_; ++i) {
    prev = prev << 1U | static_cast<std::uint32_t>(decoder.Decode(contexts_[prev]));
  }
  return prev - (std::uint32_t{1} << code_length_);
}

}  // namespace TarnixTools::engines::jbig2
