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

// Bits that are black are 0 again when they are decoded, or 1.
CodedPicture CodeAsFax(const BitPicture& bits, bool black_is_one) {
  CcittEncoder encoder(bits.width);
  for (std::uint32_t y = 0; y < bits.height; ++y) {
    encoder.AddRow(bits.row(y), bits.black);
  }
  encoder.Finish();
  CodedPicture coded;
  coded.filter = "CCITTFaxDecode";
  coded.parameters = "/K -1/Columns " + std::to_string(bits.width) + "/Rows " +
                     std::to_string(bits.height) + (black_is_one ? "/BlackIs1 true" : "");
  coded.data = encoder.data();
  return coded;
}

// Where that is smaller.
void TakeJbig2(const BitPicture& bits, CodedPicture& best) {
  std::optional<std::string> data = EncodeJbig2(bits);
  if (data && data->size() < best.data.size()) {
    best = {};
    best.filter = "JBIG2Decode";
    best.data = *std::move(data);
  }
}

CodedPicture Sized(CodedPicture coded, std::uint32_t width, std::uint32_t height) {
  coded.width = width;
  coded.height = height;
  coded.bits = 1;
  return coded;
}

}  // namespace

std::variant<LeftAlone, CodedPicture> CodeBitonal(SampleRows& samples, std::uint32_t codecs,
                                                  std::uint64_t bytes_now) {
  const SampleFormat format = samples.format();
  const std::optional<Bits> bits = ReadBits(samples);
  if (!bits) {
    return LeftAlone::kUnreadable;
  }
  BitPicture picture{.rows = bits->rows.data(),
                     .stride = bits->stride,
                     .width = format.width,
                     .height = format.height,
                     .black = 0};
  // Group 4 fax codes take it that most of a picture is white.
  const bool is_mostly_ones = bits->ones * 2 >= bits->rows.size() * 8;
  picture.black = is_mostly_ones ? 0 : 1;
  CodedPicture best = CodeAsFax(picture, !is_mostly_ones);
  if ((codecs & kBitonalJbig2) != 0) {
    picture.black = 0;
    TakeJbig2(picture, best);
  }
  if (best.data.size() >= bytes_now) {
    return LeftAlone::kSmallest;
  }
  return Sized(std::move(best), format.width, format.height);
}

CodedPicture CodeStencil(const BitPicture& bits, std::uint32_t codecs) {
  CodedPicture best = CodeAsFax(bits, false);
  if ((codecs & kBitonalJbig2) != 0) {
    TakeJbig2(bits, best);
  }
  return Sized(std::move(best), bits.width, bits.height);
}

}  // namespace TarnixTools::engines::optimizer
