#include "engines/support/codecs/JpegReader.h"

#include <algorithm>
#include <utility>

#include "engines/support/codecs/CodecLimits.h"
#include "engines/support/codecs/LibjpegCalls.h"

namespace TarnixTools::engines {

class JpegReader::Decompressor : private LibjpegCalls {
 public:
  Decompressor() { Watch(state_); }

  ~Decompressor() { jpeg_destroy_decompress(&state_); }

  bool Start(std::string_view bytes, int color_transform, const PictureSize& least,
             JpegColors colors) {
    return Try([&] {
      jpeg_create_decompress(&state_);
      BoundScans(state_);
      jpeg_mem_src(&state_, reinterpret_cast<const unsigned char*>(bytes.data()),
                   static_cast<unsigned long>(bytes.size()));
      if (jpeg_read_header(&state_, TRUE) != JPEG_HEADER_OK) {
        return false;
      }
      ChooseColors(color_transform, colors);
      ChooseScale(least);
      return HasBoundedCoefficients() &&
             (state_.num_components == 1 || state_.num_components == 3 ||
              state_.num_components == 4) &&
             jpeg_start_decompress(&state_) != FALSE;
    });
  }

  bool ReadRow(JSAMPROW row) {
    if (is_broken_ || state_.output_scanline >= state_.output_height) {
      return false;
    }
    is_broken_ = !Try([&] { return jpeg_read_scanlines(&state_, &row, 1) == 1; });
    return !is_broken_;
  }

  const jpeg_decompress_struct& state() const { return state_; }

  std::uint64_t coefficient_bytes() const { return coefficient_bytes_; }

 private:
  bool HasBoundedCoefficients() {
    if (jpeg_has_multiple_scans(&state_) == FALSE) {
      return true;
    }
    coefficient_bytes_ = CoefficientBytes(state_);
    return coefficient_bytes_ <= limits::kMaxCoefficientBytes;
  }

  // The Adobe marker goes before /ColorTransform (ISO 32000-2, table 13).
  void ChooseColors(int color_transform, JpegColors colors) {
    if (!state_.saw_Adobe_marker && color_transform >= 0) {
      if (state_.num_components == 3) {
        state_.jpeg_color_space = color_transform != 0 ? JCS_YCbCr : JCS_RGB;
      } else if (state_.num_components == 4) {
        state_.jpeg_color_space = color_transform != 0 ? JCS_YCCK : JCS_CMYK;
      }
    }
    if (colors == JpegColors::kLightness && state_.jpeg_color_space == JCS_YCbCr) {
      state_.out_color_space = JCS_GRAYSCALE;
    } else if (state_.num_components == 3) {
      state_.out_color_space = JCS_RGB;
    } else if (state_.num_components == 4) {
      state_.out_color_space = JCS_CMYK;
    }
  }

  // Blocks of eight by eight samples come out with 4, 2 or 1 on a side.
  void ChooseScale(const PictureSize& least) {
    unsigned samples = DCTSIZE;
    while (samples > 1 && IsEnough(state_.image_width, samples / 2, least.width) &&
           IsEnough(state_.image_height, samples / 2, least.height)) {
      samples /= 2;
    }
    state_.scale_num = samples;
    state_.scale_denom = DCTSIZE;
  }

  static bool IsEnough(std::uint64_t whole, unsigned samples, std::uint32_t least) {
    return whole * samples / DCTSIZE >= least;
  }

  jpeg_decompress_struct state_{};
  std::uint64_t coefficient_bytes_ = 0;  // all of them, where they have to be held
  bool is_broken_ = false;
};

JpegReader::JpegReader(std::unique_ptr<Decompressor> decompressor)
    : decompressor_(std::move(decompressor)) {}

JpegReader::~JpegReader() = default;

std::unique_ptr<JpegReader> JpegReader::Open(std::string_view bytes, int color_transform,
                                             PictureSize least, JpegColors colors) {
  auto decompressor = std::make_unique<Decompressor>();
  if (!decompressor->Start(bytes, color_transform, least, colors)) {
    return nullptr;
  }
  return std::unique_ptr<JpegReader>(new JpegReader(std::move(decompressor)));
}

std::uint32_t JpegReader::width() const {
  return decompressor_->state().output_width;
}

std::uint32_t JpegReader::height() const {
  return decompressor_->state().output_height;
}

int JpegReader::components() const {
  return decompressor_->state().output_components;
}

std::uint64_t JpegReader::held_bytes() const {
  return decompressor_->coefficient_bytes();
}

bool JpegReader::ReadRow(std::uint8_t* samples) {
  return decompressor_->ReadRow(samples);
}

}  // namespace TarnixTools::engines
