#include "engines/support/codecs/JpxDecoder.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <utility>

#include <openjpeg.h>

#include "engines/support/codecs/CodecLimits.h"
#include "engines/support/codecs/JpxHeader.h"
#include "engines/support/files/DynamicLibrary.h"

namespace TarnixTools::engines {
namespace {

constexpr std::string_view kCodeStreamStart = "\xFF\x4F";  // SOC

// OpenJPEG, loaded when the first image of its kind is met.
struct OpenJpeg {
  OpenJpeg() {
    const DynamicLibrary library({"libopenjp2.so.7"});
    is_complete = library.Resolve("opj_create_decompress", create_decompress) &&
                  library.Resolve("opj_destroy_codec", destroy_codec) &&
                  library.Resolve("opj_set_default_decoder_parameters", set_defaults) &&
                  library.Resolve("opj_setup_decoder", setup) &&
                  library.Resolve("opj_decoder_set_strict_mode", set_strict) &&
                  library.Resolve("opj_read_header", read_header) &&
                  library.Resolve("opj_decode", decode) &&
                  library.Resolve("opj_image_destroy", destroy_image) &&
                  library.Resolve("opj_stream_create", create_stream) &&
                  library.Resolve("opj_stream_destroy", destroy_stream) &&
                  library.Resolve("opj_stream_set_read_function", set_read) &&
                  library.Resolve("opj_stream_set_skip_function", set_skip) &&
                  library.Resolve("opj_stream_set_seek_function", set_seek) &&
                  library.Resolve("opj_stream_set_user_data", set_data) &&
                  library.Resolve("opj_stream_set_user_data_length", set_data_length);
  }

  static const OpenJpeg& Get() {
    static const OpenJpeg library;
    return library;
  }

  decltype(&opj_create_decompress) create_decompress = nullptr;
  decltype(&opj_destroy_codec) destroy_codec = nullptr;
  decltype(&opj_set_default_decoder_parameters) set_defaults = nullptr;
  decltype(&opj_setup_decoder) setup = nullptr;
  decltype(&opj_decoder_set_strict_mode) set_strict = nullptr;
  decltype(&opj_read_header) read_header = nullptr;
  decltype(&opj_decode) decode = nullptr;
  decltype(&opj_image_destroy) destroy_image = nullptr;
  decltype(&opj_stream_create) create_stream = nullptr;
  decltype(&opj_stream_destroy) destroy_stream = nullptr;
  decltype(&opj_stream_set_read_function) set_read = nullptr;
  decltype(&opj_stream_set_skip_function) set_skip = nullptr;
  decltype(&opj_stream_set_seek_function) set_seek = nullptr;
  decltype(&opj_stream_set_user_data) set_data = nullptr;
  decltype(&opj_stream_set_user_data_length) set_data_length = nullptr;
  bool is_complete = false;
};

struct CodecFreer {
  void operator()(opj_codec_t* codec) const { OpenJpeg::Get().destroy_codec(codec); }
};

struct StreamFreer {
  void operator()(opj_stream_t* stream) const { OpenJpeg::Get().destroy_stream(stream); }
};

struct ImageFreer {
  void operator()(opj_image_t* image) const { OpenJpeg::Get().destroy_image(image); }
};

using CodecPtr = std::unique_ptr<opj_codec_t, CodecFreer>;
using StreamPtr = std::unique_ptr<opj_stream_t, StreamFreer>;
using ImagePtr = std::unique_ptr<opj_image_t, ImageFreer>;

struct Cursor {
  std::string_view bytes;
  std::size_t at = 0;
};

constexpr auto kEnd = static_cast<OPJ_SIZE_T>(-1);

OPJ_SIZE_T ReadBytes(void* buffer, OPJ_SIZE_T size, void* data) {
  auto& cursor = *static_cast<Cursor*>(data);
  const std::size_t count = std::min<std::size_t>(size, cursor.bytes.size() - cursor.at);
  if (count == 0) {
    return kEnd;
  }
  std::memcpy(buffer, cursor.bytes.data() + cursor.at, count);
  cursor.at += count;
  return count;
}

OPJ_OFF_T SkipBytes(OPJ_OFF_T count, void* data) {
  auto& cursor = *static_cast<Cursor*>(data);
  if (count < 0) {
    return -1;
  }
  const std::size_t step =
      std::min(static_cast<std::size_t>(count), cursor.bytes.size() - cursor.at);
  cursor.at += step;
  return step == 0 && count > 0 ? -1 : static_cast<OPJ_OFF_T>(step);
}

OPJ_BOOL SeekTo(OPJ_OFF_T position, void* data) {
  auto& cursor = *static_cast<Cursor*>(data);
  if (position < 0 || static_cast<std::size_t>(position) > cursor.bytes.size()) {
    return OPJ_FALSE;
  }
  cursor.at = static_cast<std::size_t>(position);
  return OPJ_TRUE;
}

StreamPtr StreamOver(Cursor& cursor) {
  const OpenJpeg& library = OpenJpeg::Get();
  constexpr OPJ_SIZE_T kBufferBytes = OPJ_SIZE_T{64} << 10;
  StreamPtr stream(library.create_stream(kBufferBytes, OPJ_TRUE));
  if (stream != nullptr) {
    library.set_data(stream.get(), &cursor, nullptr);
    library.set_data_length(stream.get(), cursor.bytes.size());
    library.set_read(stream.get(), &ReadBytes);
    library.set_skip(stream.get(), &SkipBytes);
    library.set_seek(stream.get(), &SeekTo);
  }
  return stream;
}

bool IsBounded(const opj_image_t& image) {
  if (image.numcomps < 1 || image.numcomps > limits::kMaxJpxComponents || image.x1 <= image.x0 ||
      image.y1 <= image.y0) {
    return false;
  }
  const std::uint64_t pixels =
      std::uint64_t{image.x1 - image.x0} * std::uint64_t{image.y1 - image.y0};
  return pixels <= limits::kMaxJpxBytes / sizeof(OPJ_INT32) / image.numcomps;
}

// Null when it cannot be read.
ImagePtr Decode(std::string_view bytes, JpxDepth depth) {
  const OpenJpeg& library = OpenJpeg::Get();
  const bool is_bare = bytes.starts_with(kCodeStreamStart);
  const CodecPtr codec(library.create_decompress(is_bare ? OPJ_CODEC_J2K : OPJ_CODEC_JP2));
  Cursor cursor{.bytes = bytes};
  const StreamPtr stream = StreamOver(cursor);
  opj_dparameters_t parameters{};
  library.set_defaults(&parameters);
  if (depth == JpxDepth::kIndex) {
    parameters.flags |= OPJ_DPARAMETERS_IGNORE_PCLR_CMAP_CDEF_FLAG;
  }
  if (codec == nullptr || stream == nullptr ||
      library.setup(codec.get(), &parameters) == OPJ_FALSE) {
    return nullptr;
  }
  library.set_strict(codec.get(), OPJ_FALSE);
  opj_image_t* header = nullptr;
  const bool has_header = library.read_header(stream.get(), codec.get(), &header) != OPJ_FALSE;
  ImagePtr image(header);
  if (!has_header || image == nullptr || !IsBounded(*image) ||
      library.decode(codec.get(), stream.get(), image.get()) == OPJ_FALSE) {
    return nullptr;
  }
  return image;
}

// One component, its samples as bytes.
class DecodedPlane {
 public:
  DecodedPlane(const opj_image_t& image, const opj_image_comp_t& component, JpxDepth depth)
      : component_(&component),
        width_(image.x1 - image.x0),
        height_(image.y1 - image.y0),
        offset_(component.sgnd != 0 ? std::int64_t{1} << (component.prec - 1) : 0),
        most_((std::int64_t{1} << component.prec) - 1),
        scales_(depth == JpxDepth::kScaled && component.prec != 8) {}

  static bool IsUsable(const opj_image_comp_t& component) {
    return component.data != nullptr && component.w > 0 && component.h > 0 && component.prec >= 1 &&
           component.prec <= 31;
  }

  // Components may have fewer samples than the image has pixels.
  void CopyTo(std::uint8_t* out, std::size_t step) const {
    for (std::uint64_t y = 0; y < height_; ++y) {
      const OPJ_INT32* row = component_->data + y * component_->h / height_ * component_->w;
      for (std::uint64_t x = 0; x < width_; ++x, out += step) {
        *out = ToByte(row[component_->w == width_ ? x : x * component_->w / width_]);
      }
    }
  }

 private:
  std::uint8_t ToByte(OPJ_INT32 sample) const {
    const std::int64_t value = std::clamp<std::int64_t>(sample + offset_, 0, most_);
    return static_cast<std::uint8_t>(scales_ ? (value * 255 + most_ / 2) / most_
                                             : std::min<std::int64_t>(value, 255));
  }

  const opj_image_comp_t* component_;
  std::uint64_t width_;
  std::uint64_t height_;
  std::int64_t offset_;
  std::int64_t most_;
  bool scales_;
};

std::uint8_t Rounded(double value) {
  return static_cast<std::uint8_t>(std::lround(std::clamp(value, 0.0, 255.0)));
}

// The colours of sYCC (IEC 61966-2-1, annex F) as those of sRGB.
void FromYcc(std::vector<std::uint8_t>& samples) {
  for (std::size_t i = 0; i + 2 < samples.size(); i += 3) {
    const double y = samples[i];
    const double cb = samples[i + 1] - 128.0;
    const double cr = samples[i + 2] - 128.0;
    samples[i] = Rounded(y + 1.402 * cr);
    samples[i + 1] = Rounded(y - 0.344136 * cb - 0.714136 * cr);
    samples[i + 2] = Rounded(y + 1.772 * cb);
  }
}

struct Channels {
  std::vector<const opj_image_comp_t*> colors;
  const opj_image_comp_t* alpha = nullptr;  // null for none
};

// Without colours where a component cannot be used.
Channels ChannelsOf(const opj_image_t& image) {
  Channels channels;
  for (std::size_t i = 0; i < image.numcomps; ++i) {
    const opj_image_comp_t& component = image.comps[i];
    if (!DecodedPlane::IsUsable(component)) {
      return {};
    }
    if (component.alpha == 0) {
      channels.colors.push_back(&component);
    } else {
      channels.alpha = &component;
    }
  }
  return channels;
}

std::optional<JpxSamples> SamplesOf(const opj_image_t& image, const JpxHeader& header,
                                    JpxDepth depth) {
  const auto [colors, alpha] = ChannelsOf(image);
  if (colors.empty()) {
    return std::nullopt;
  }
  JpxSamples result;
  result.width = image.x1 - image.x0;
  result.height = image.y1 - image.y0;
  const std::size_t pixels = std::size_t{result.width} * result.height;
  result.components = colors.size();
  result.colors = header.CountColors();
  result.samples.resize(pixels * colors.size());
  for (std::size_t i = 0; i < colors.size(); ++i) {
    DecodedPlane(image, *colors[i], depth).CopyTo(result.samples.data() + i, colors.size());
  }
  if (alpha != nullptr) {
    result.alpha.resize(pixels);
    DecodedPlane(image, *alpha, JpxDepth::kScaled).CopyTo(result.alpha.data(), 1);
    result.is_alpha_mixed_in = alpha->alpha == 2;
  }
  if (header.IsYcc() && result.components == 3) {
    FromYcc(result.samples);
  }
  if (image.icc_profile_buf != nullptr) {
    result.profile.assign(reinterpret_cast<const char*>(image.icc_profile_buf),
                          image.icc_profile_len);
  }
  return result;
}

}  // namespace

std::optional<JpxSamples> DecodeJpx(std::string_view bytes, JpxDepth depth) {
  if (!OpenJpeg::Get().is_complete) {
    return std::nullopt;
  }
  const std::optional<JpxHeader> header = ReadJpxHeader(bytes);
  const ImagePtr image = Decode(bytes, depth);
  return image != nullptr ? SamplesOf(*image, header.value_or(JpxHeader()), depth) : std::nullopt;
}

}  // namespace TarnixTools::engines
