// Stream decoding: the first bytes choose the filters and their parameters, the rest is the encoded
// data. Whatever comes, Decode gives bytes within the limits or throws our exception; what is
// deflated comes back as it was.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "pdf/Error.h"
#include "pdf/Limits.h"
#include "pdf/filters/Filters.h"

namespace {

using TarnixTools::pdf::Decode;
using TarnixTools::pdf::Decoded;
using TarnixTools::pdf::DeflateTo;
using TarnixTools::pdf::FilterKind;
using TarnixTools::pdf::FilterParameters;
using TarnixTools::pdf::FilterStep;

constexpr std::size_t kMaxBytes = std::size_t{4} << 20;
constexpr std::size_t kStepBytes = 4;
constexpr std::array<std::int64_t, 8> kPredictors = {1, 2, 10, 12, 15, 12, 2, 11};
constexpr std::array<std::int64_t, 8> kBits = {8, 1, 2, 4, 8, 16, 8, 3};
constexpr std::array<std::int64_t, 8> kOddSizes = {0,         -1,  1 << 20, std::int64_t{1} << 33,
                                                   INT64_MAX, 255, 4096,    65535};

void Require(bool holds) {
  if (!holds) {
    std::abort();
  }
}

// Small sizes mostly, odd ones at times.
std::int64_t SizeOf(std::uint8_t byte) {
  return byte < 0xF8 ? 1 + byte % 40 : kOddSizes[byte & 7];
}

FilterStep TakeStep(const std::uint8_t* bytes) {
  FilterStep step;
  step.kind = static_cast<FilterKind>(bytes[0] % 5);
  step.parameters.predictor = kPredictors[bytes[1] & 7];
  step.parameters.bits_per_component = kBits[(bytes[1] >> 3) & 7];
  step.parameters.early_change = bytes[1] >> 7;
  step.parameters.colors = SizeOf(bytes[2]);
  step.parameters.columns = SizeOf(bytes[3]);
  return step;
}

void CheckDecoding(const std::vector<FilterStep>& steps, std::string_view encoded) {
  try {
    const Decoded decoded = Decode(steps, encoded, kMaxBytes);
    Require(decoded.data.size() <= kMaxBytes);
  } catch (const TarnixTools::pdf::Error&) {
  }
}

void CheckRoundTrip(std::string_view data, int level) {
  std::string deflated;
  DeflateTo(deflated, data, level);
  const Decoded decoded =
      Decode({{FilterKind::kFlate, {}}}, deflated, std::max<std::size_t>(data.size(), 1));
  Require(decoded.complete && decoded.data == data);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) {
    return 0;
  }
  const std::size_t count = data[0] % 4;
  const int level = 1 + data[0] % 12;
  ++data;
  --size;
  std::vector<FilterStep> steps;
  while (steps.size() < count && size >= kStepBytes) {
    steps.push_back(TakeStep(data));
    data += kStepBytes;
    size -= kStepBytes;
  }
  const std::string_view encoded(reinterpret_cast<const char*>(data), size);
  CheckDecoding(steps, encoded);
  CheckRoundTrip(encoded, level);
  return 0;
}
