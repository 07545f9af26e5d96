#include "engines/support/codecs/JpegWriter.h"

#include <algorithm>
#include <array>
#include <exception>
#include <string_view>
#include <utility>

#include "engines/support/codecs/LibjpegCalls.h"
#include "pdf/Error.h"

namespace TarnixTools::engines {

// Exceptions of the sink wait in failure_ until the library has been left.
class JpegWriter::Compressor : private LibjpegCalls {
 public:
  Compressor(pdf::ByteSink& sink, const JpegSettings& settings) : sink_(&sink) {
    Watch(state_);
    destination_.init_destination = &Compressor::Empty;
    destination_.empty_output_buffer = &Compressor::Flush;
    destination_.term_destination = &Compressor::FlushRest;
    const bool is_started = Try([&] {
      jpeg_create_compress(&state_);
      state_.dest = &destination_;
      Start(settings);
      return true;
    });
    if (!is_started) {
      jpeg_destroy_compress(&state_);
      Throw();
    }
  }

  ~Compressor() { jpeg_destroy_compress(&state_); }

  void WriteRows(const std::uint8_t* pixels, std::size_t stride, std::size_t row_count) {
    constexpr std::size_t kRowsAtOnce = 16;
    std::array<JSAMPROW, kRowsAtOnce> rows{};
    while (row_count > 0) {
      const std::size_t count = std::min(row_count, kRowsAtOnce);
      for (std::size_t i = 0; i < count; ++i) {
        rows[i] = const_cast<JSAMPROW>(pixels + i * stride);  // the library only reads them
      }
      if (!Try([&] { return WriteAll(rows.data(), count); })) {
        Throw();
      }
      pixels += count * stride;
      row_count -= count;
    }
  }

  void Finish() {
    const bool is_finished = Try([&] {
      jpeg_finish_compress(&state_);
      return true;
    });
    if (!is_finished) {
      Throw();
    }
  }

 private:
  void Start(const JpegSettings& settings) {
    state_.image_width = settings.width;
    state_.image_height = settings.height;
    state_.input_components = static_cast<int>(BytesPerPixel(settings.layout));
    state_.in_color_space = settings.layout == PixelLayout::kGray   ? JCS_GRAYSCALE
                            : settings.layout == PixelLayout::kBgrx ? JCS_EXT_BGRX
                                                                    : JCS_RGB;
    jpeg_set_defaults(&state_);
    jpeg_set_quality(&state_, settings.quality, TRUE);
    if (settings.quality >= 90) {
      state_.comp_info[0].h_samp_factor = 1;
      state_.comp_info[0].v_samp_factor = 1;
    }
    if (settings.dpi > 0) {
      state_.density_unit = 1;
      state_.X_density = static_cast<UINT16>(settings.dpi);
      state_.Y_density = static_cast<UINT16>(settings.dpi);
    }
    jpeg_start_compress(&state_, TRUE);
  }

  bool WriteAll(JSAMPROW* rows, std::size_t count) {
    std::size_t done = 0;
    while (done < count && state_.next_scanline < state_.image_height) {
      done += jpeg_write_scanlines(&state_, rows + done, static_cast<JDIMENSION>(count - done));
    }
    return true;
  }

  [[noreturn]] void Throw() {
    if (failure_ != nullptr) {
      std::rethrow_exception(std::exchange(failure_, nullptr));
    }
    throw pdf::Error(pdf::ErrorCode::kLimitExceeded, "the picture cannot be stored as JPEG");
  }

  // Whether the sink took it.
  bool Put(std::size_t size) noexcept {
    try {
      sink_->Write({reinterpret_cast<const char*>(buffer_.data()), size});
      return true;
    } catch (...) {
      failure_ = std::current_exception();
      return false;
    }
  }

  void EmptyBuffer() {
    destination_.next_output_byte = buffer_.data();
    destination_.free_in_buffer = buffer_.size();
  }

  static Compressor& Self(j_compress_ptr state) {
    return *static_cast<Compressor*>(Of(reinterpret_cast<j_common_ptr>(state)));
  }

  static void Empty(j_compress_ptr state) { Self(state).EmptyBuffer(); }

  static boolean Flush(j_compress_ptr state) {
    Compressor& self = Self(state);
    if (!self.Put(self.buffer_.size())) {
      GiveUp(reinterpret_cast<j_common_ptr>(state));
    }
    self.EmptyBuffer();
    return TRUE;
  }

  static void FlushRest(j_compress_ptr state) {
    Compressor& self = Self(state);
    if (!self.Put(self.buffer_.size() - self.destination_.free_in_buffer)) {
      GiveUp(reinterpret_cast<j_common_ptr>(state));
    }
  }

  pdf::ByteSink* sink_;
  jpeg_compress_struct state_{};
  jpeg_destination_mgr destination_{};
  std::exception_ptr failure_;
  std::array<JOCTET, std::size_t{64} << 10> buffer_;
};

JpegWriter::JpegWriter(pdf::ByteSink& sink, const JpegSettings& settings) {
  if (settings.width < 1 || settings.width > kMaxJpegSide || settings.height < 1 ||
      settings.height > kMaxJpegSide) {
    throw pdf::Error(pdf::ErrorCode::kLimitExceeded, "the picture is too large for JPEG");
  }
  compressor_ = std::make_unique<Compressor>(sink, settings);
}

JpegWriter::~JpegWriter() = default;

void JpegWriter::WriteRows(const std::uint8_t* pixels, std::size_t stride, std::size_t row_count) {
  compressor_->WriteRows(pixels, stride, row_count);
}

void JpegWriter::Finish() {
  compressor_->Finish();
}

}  // namespace TarnixTools::engines
