#include "engines/support/codecs/JpegEncoder.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <vector>

#include "engines/support/codecs/CodecLimits.h"
#include "engines/support/codecs/JpegTables.h"
#include "engines/support/codecs/JpegWriter.h"
#include "engines/support/codecs/jpeg/BlockTransform.h"
#include "engines/support/codecs/jpeg/CoefficientArrays.h"
#include "engines/support/codecs/jpeg/CoefficientWriter.h"
#include "engines/support/codecs/jpeg/Quantizer.h"
#include "pdf/Error.h"

namespace TarnixTools::engines {
namespace {

constexpr std::uint32_t kBlockSide = 8;

std::uint32_t BlocksFor(std::uint32_t samples) {
  return (samples + kBlockSide - 1) / kBlockSide;
}

[[noreturn]] void ThrowTooLarge() {
  throw pdf::Error(pdf::ErrorCode::kLimitExceeded, "the picture is too large for JPEG");
}

// Samples of a component around 0, for one row of units.
struct SamplePlane {
  bool is_difference = false;  // of colours
  std::uint32_t scale = 1;     // pixels a sample stands for, on a side
  std::size_t stride = 0;      // samples of a row, whole units
  std::vector<float> samples;
};

// One sample of each pixel.
template <std::size_t kComponents>
void TakeSamples(const std::uint8_t* __restrict samples, std::size_t width, float* __restrict out) {
  for (std::size_t x = 0; x < width; ++x) {
    out[x] = static_cast<float>(samples[kComponents * x]) - 128;
  }
}

// Pixels of which the samples are laid side by side before they are worked on.
constexpr std::size_t kTogether = 64;

using SideBySide = std::array<std::uint8_t, kTogether>;

// T.871, clause 7. The yellow, magenta and cyan of paper are the blue, green and red that it takes away.
template <bool kIsInk>
void ConvertColors(const std::array<SideBySide, 3>& samples, std::size_t count,
                   float* __restrict lightness, float* __restrict blueness,
                   float* __restrict redness) {
  constexpr float kSign = kIsInk ? -1.0F : 1.0F;
  constexpr float kWhite = kIsInk ? 255.0F : 0.0F;
  for (std::size_t x = 0; x < count; ++x) {
    const float red = kWhite + kSign * static_cast<float>(samples[0][x]);
    const float green = kWhite + kSign * static_cast<float>(samples[1][x]);
    const float blue = kWhite + kSign * static_cast<float>(samples[2][x]);
    lightness[x] = 0.299F * red + 0.587F * green + 0.114F * blue - 128;
    blueness[x] = -0.168735892F * red - 0.331264108F * green + 0.5F * blue;
    redness[x] = 0.5F * red - 0.418687589F * green - 0.081312411F * blue;
  }
}

// The first three samples of each pixel.
template <std::size_t kComponents>
void ConvertRow(const std::uint8_t* samples, std::size_t width, float* lightness, float* blueness,
                float* redness) {
  std::array<SideBySide, 3> side_by_side;
  for (std::size_t start = 0; start < width; start += kTogether) {
    const std::size_t count = std::min(kTogether, width - start);
    for (std::size_t x = 0; x < count; ++x, samples += kComponents) {
      side_by_side[0][x] = samples[0];
      side_by_side[1][x] = samples[1];
      side_by_side[2][x] = samples[2];
    }
    ConvertColors<kComponents == 4>(side_by_side, count, lightness + start, blueness + start,
                                    redness + start);
  }
}

}  // namespace

// A unit is what is coded together: sixteen pixels a side where colours are subsampled, else eight.
class JpegEncoder::Planes {
 public:
  explicit Planes(const JpegEncoding& encoding);

  void AddRow(const std::uint8_t* samples);
  std::string Finish();

 private:
  void Convert(const std::uint8_t* samples, std::size_t row);
  void EncodeUnits();
  void Reduce(SamplePlane& plane) const;
  void EncodeBlocks(std::size_t component, std::uint32_t block_row, const float* samples);
  void Prepare(jpeg_compress_struct& state) const;

  JpegEncoding encoding_;
  std::uint32_t unit_side_;
  std::uint32_t units_across_;
  std::uint32_t units_down_;
  std::vector<SamplePlane> planes_;
  jpeg::CoefficientArrays arrays_;
  std::array<JpegSteps, 2> steps_;
  std::array<jpeg::Quantizer, 2> quantizers_;
  std::uint32_t row_count_ = 0;
};

JpegEncoder::Planes::Planes(const JpegEncoding& encoding)
    : encoding_(encoding),
      unit_side_(encoding.components > 1 && encoding.is_subsampled ? 16 : 8),
      units_across_((encoding.width + unit_side_ - 1) / unit_side_),
      units_down_((encoding.height + unit_side_ - 1) / unit_side_),
      planes_(static_cast<std::size_t>(encoding.components)),
      steps_{EncoderSteps(JpegPlane::kLuminance, encoding.quality),
             EncoderSteps(JpegPlane::kChrominance, encoding.quality)},
      quantizers_{jpeg::Quantizer(steps_[0]), jpeg::Quantizer(steps_[1])} {
  std::vector<jpeg::ArraySize> sizes;
  std::uint64_t bytes = 0;
  for (std::size_t i = 0; i < planes_.size(); ++i) {
    SamplePlane& plane = planes_[i];
    plane.is_difference = i == 1 || i == 2;
    plane.scale = plane.is_difference ? unit_side_ / kBlockSide : 1;
    plane.stride = std::size_t{units_across_} * unit_side_;
    plane.samples.resize(plane.stride * unit_side_);
    const std::uint32_t in_unit = unit_side_ / kBlockSide / plane.scale;
    sizes.push_back({units_across_ * in_unit, units_down_ * in_unit, in_unit});
    bytes += std::uint64_t{sizes.back().across} * sizes.back().down * sizeof(JBLOCK);
  }
  if (bytes > limits::kMaxCoefficientBytes || !arrays_.Allocate(sizes)) {
    ThrowTooLarge();
  }
}

void JpegEncoder::Planes::AddRow(const std::uint8_t* samples) {
  if (row_count_ == encoding_.height) {
    return;
  }
  Convert(samples, row_count_ % unit_side_);
  ++row_count_;
  if (row_count_ % unit_side_ == 0 || row_count_ == encoding_.height) {
    EncodeUnits();
  }
}

// The last pixel goes on to the edge of its unit.
void JpegEncoder::Planes::Convert(const std::uint8_t* samples, std::size_t row) {
  std::array<float*, 4> out{};
  for (std::size_t i = 0; i < planes_.size(); ++i) {
    out[i] = planes_[i].samples.data() + row * planes_[i].stride;
  }
  if (planes_.size() == 1) {
    TakeSamples<1>(samples, encoding_.width, out[0]);
  } else if (planes_.size() == 3) {
    ConvertRow<3>(samples, encoding_.width, out[0], out[1], out[2]);
  } else {
    ConvertRow<4>(samples, encoding_.width, out[0], out[1], out[2]);
    TakeSamples<4>(samples + 3, encoding_.width, out[3]);
  }
  for (std::size_t i = 0; i < planes_.size(); ++i) {
    std::fill(out[i] + encoding_.width, out[i] + planes_[i].stride, out[i][encoding_.width - 1]);
  }
}

void JpegEncoder::Planes::EncodeUnits() {
  const std::uint32_t unit = (row_count_ - 1) / unit_side_;
  const std::size_t rows = row_count_ - std::size_t{unit} * unit_side_;
  for (std::size_t i = 0; i < planes_.size(); ++i) {
    SamplePlane& plane = planes_[i];
    // The last row goes on to the edge of its unit.
    const float* last = plane.samples.data() + (rows - 1) * plane.stride;
    for (std::size_t row = rows; row < unit_side_; ++row) {
      std::copy_n(last, plane.stride, plane.samples.data() + row * plane.stride);
    }
    if (plane.scale > 1) {
      Reduce(plane);
    }
    const std::uint32_t in_unit = unit_side_ / kBlockSide / plane.scale;
    for (std::uint32_t block_row = 0; block_row < in_unit; ++block_row) {
      EncodeBlocks(i, unit * in_unit + block_row,
                   plane.samples.data() + std::size_t{block_row} * kBlockSide * plane.stride);
    }
  }
}

// Four pixels become one, in place.
void JpegEncoder::Planes::Reduce(SamplePlane& plane) const {
  for (std::size_t y = 0; y < unit_side_ / 2; ++y) {
    const float* upper = plane.samples.data() + 2 * y * plane.stride;
    const float* lower = upper + plane.stride;
    float* out = plane.samples.data() + y * plane.stride;
    for (std::size_t x = 0; x < plane.stride / 2; ++x) {
      out[x] = (upper[2 * x] + upper[2 * x + 1] + lower[2 * x] + lower[2 * x + 1]) / 4;
    }
  }
}

void JpegEncoder::Planes::EncodeBlocks(std::size_t component, std::uint32_t block_row,
                                       const float* samples) {
  const SamplePlane& plane = planes_[component];
  JBLOCKROW blocks = arrays_.Row(component, block_row);
  if (blocks == nullptr) {
    ThrowTooLarge();
  }
  const jpeg::Quantizer& quantizer = quantizers_[plane.is_difference ? 1 : 0];
  const std::uint32_t count = BlocksFor((encoding_.width + plane.scale - 1) / plane.scale);
  jpeg::Block block;
  for (std::uint32_t x = 0; x < count; ++x) {
    jpeg::Transform(samples + std::size_t{x} * kBlockSide, plane.stride, block);
    quantizer.Quantize(block, blocks[x]);
  }
}

void JpegEncoder::Planes::Prepare(jpeg_compress_struct& state) const {
  state.image_width = encoding_.width;
  state.image_height = encoding_.height;
  state.input_components = encoding_.components;
  state.in_color_space = encoding_.components == 1   ? JCS_GRAYSCALE
                         : encoding_.components == 3 ? JCS_RGB
                                                     : JCS_CMYK;
  jpeg_set_defaults(&state);
  jpeg_set_colorspace(&state, encoding_.components == 1   ? JCS_GRAYSCALE
                              : encoding_.components == 3 ? JCS_YCbCr
                                                          : JCS_YCCK);
  state.write_JFIF_header = FALSE;
  for (std::size_t i = 0; i < planes_.size(); ++i) {
    const int factor = static_cast<int>(unit_side_ / kBlockSide / planes_[i].scale);
    state.comp_info[i].h_samp_factor = factor;
    state.comp_info[i].v_samp_factor = factor;
  }
  for (std::size_t table = 0; table < (planes_.size() > 1 ? 2U : 1U); ++table) {
    std::array<unsigned, 64> steps{};
    std::copy(steps_[table].begin(), steps_[table].end(), steps.begin());
    jpeg_add_quant_table(&state, static_cast<int>(table), steps.data(), 100, TRUE);
  }
}

std::string JpegEncoder::Planes::Finish() {
  const auto prepare = [&](jpeg_compress_struct& state) { Prepare(state); };
  std::optional<std::string> data =
      encoding_.is_progressive ? jpeg::WriteSmallest(arrays_.get(), prepare)
                               : jpeg::WriteCoefficients(arrays_.get(), jpeg::Scans::kOne, prepare);
  if (!data) {
    ThrowTooLarge();
  }
  return *std::move(data);
}

JpegEncoder::JpegEncoder(const JpegEncoding& encoding) {
  if (encoding.width < 1 || encoding.width > kMaxJpegSide || encoding.height < 1 ||
      encoding.height > kMaxJpegSide) {
    ThrowTooLarge();
  }
  planes_ = std::make_unique<Planes>(encoding);
}

JpegEncoder::~JpegEncoder() = default;

void JpegEncoder::AddRow(const std::uint8_t* samples) {
  planes_->AddRow(samples);
}

std::string JpegEncoder::Finish() {
  return planes_->Finish();
}

}  // namespace TarnixTools::engines
