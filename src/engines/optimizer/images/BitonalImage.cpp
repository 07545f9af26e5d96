#include "engines/optimizer/images/BitonalImage.h"

#include <bit>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "engines/optimizer/OptimizerSettings.h"
#include "engines/support/codecs/CcittEncoder.h"
#include "engines/support/codecs/Jbig2Encoder.h"

namespace TarnixTools::engines::optimizer {

namespace {

struct Bits {
  std::vector<std::uint8_t> rows;
  std::size_t stride = 0;
  std::uint64_t ones = 0;  // those of padding included
};

std::optional<Bits> ReadBits(SampleRows& samples) {
  const SampleFormat& format = samples.format();
  Bits bits;
  bits.stride = format.row_bytes();
  bits.rows.reserve(bits.stride * format.height);
  for (std::uint32_t y = 0; y < format.height; ++y) {
    const std::span<const std::uint8_t> row = samples.ReadRow();
    if (row.size() != bits.stride) {
      return std::nullopt;
    }
    bits.rows.insert(bits.rows.end(), row.begin(), row.end());
  }
  for (const std::uint8_t byte : bits.rows) {
    bits.ones += static_cast<unsigned>(std::popcount(byte));
  }
  return bits;
}

// Group 4 fax codes take it that most of a picture is white.
CodedPicture CodeAsFax(const Bits& bits, const SampleFormat& format) {
  const bool is_mostly_ones = bits.ones * 2 >= bits.rows.size() * 8;
  CcittEncoder encoder(format.width);
  for (std::uint32_t y = 0; y < format.height; ++y) {
    encoder.AddRow(bits.rows.data() + y * bits.stride, is_mostly_ones ? 0 : 1);
  }
  encoder.Finish();
  CodedPicture coded;
  coded.filter = "CCITTFaxDecode";
  coded.parameters = "/K -1/Columns " + std::to_string(format.width) + "/Rows " +
                     std::to_string(format.height) + (is_mostly_ones ? "" : "/BlackIs1 true");
  coded.data = encoder.data();
  return coded;
}

// Where that is smaller.
void TakeJbig2(const Bits& bits, const SampleFormat& format, CodedPicture& best) {
  std::optional<std::string> data = EncodeJbig2({.rows = bits.rows.data(),
                                                 .stride = bits.stride,
                                                 .width = format.width,
                                                 .height = format.height,
                                                 .black = 0});
  if (data && data->size() < best.data.size()) {
    best = {};
    best.filter = "JBIG2Decode";
    best.data = *std::move(data);
  }
}

}  // namespace

std::variant<LeftAlone, CodedPicture> CodeBitonal(SampleRows& samples, std::uint32_t codecs,
                                                  std::uint64_t bytes_now) {
  const SampleFormat format = samples.format();
  const std::optional<Bits> bits = ReadBits(samples);
  if (!bits) {
    return LeftAlone::kUnreadable;
  }
  CodedPicture best = CodeAsFax(*bits, format);
  if ((codecs & kBitonalJbig2) != 0) {
    TakeJbig2(*bits, format, best);
  }
  if (best.data.size() >= bytes_now) {
    return LeftAlone::kSmallest;
  }
  best.width = format.width;
  best.height = format.height;
  best.bits = 1;
  return best;
}

}  // namespace TarnixTools::engines::optimizer
