#include "engines/support/codecs/JpegTranscoder.h"

#include <csetjmp>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include <jpeglib.h>

#include "engines/support/codecs/CodecLimits.h"

namespace TarnixTools::engines {

namespace {

// The library leaves by longjmp when it cannot go on: what is called between setjmp and there has
// nothing to destroy.
class Transcoder {
 public:
  Transcoder() {
    reader_.err = writer_.err = jpeg_std_error(&errors_);
    reader_.client_data = writer_.client_data = this;
    errors_.error_exit = [](j_common_ptr state) {
      std::longjmp(static_cast<Transcoder*>(state->client_data)->return_point_, 1);
    };
    errors_.output_message = [](j_common_ptr) {};
    errors_.emit_message = [](j_common_ptr, int) {};
    progress_.progress_monitor = [](j_common_ptr state) {
      if (reinterpret_cast<j_decompress_ptr>(state)->input_scan_number > limits::kMaxJpegScans) {
        state->err->error_exit(state);
      }
    };
  }

  ~Transcoder() {
    jpeg_destroy_compress(&writer_);
    jpeg_destroy_decompress(&reader_);
    std::free(out_);  // the library's
  }

  Transcoder(const Transcoder&) = delete;
  Transcoder& operator=(const Transcoder&) = delete;

  bool Run(std::string_view jpeg) {
    if (setjmp(return_point_) != 0) {
      return false;
    }
    jpeg_create_decompress(&reader_);
    jpeg_create_compress(&writer_);
    reader_.progress = &progress_;
    jpeg_mem_src(&reader_, reinterpret_cast<const unsigned char*>(jpeg.data()),
                 static_cast<unsigned long>(jpeg.size()));
    if (jpeg_read_header(&reader_, TRUE) != JPEG_HEADER_OK || !IsBounded()) {
      return false;
    }
    jvirt_barray_ptr* coefficients = jpeg_read_coefficients(&reader_);
    if (coefficients == nullptr) {
      return false;
    }
    jpeg_copy_critical_parameters(&reader_, &writer_);
    writer_.arith_code = FALSE;
    writer_.optimize_coding = TRUE;
    writer_.write_Adobe_marker = reader_.saw_Adobe_marker;
    jpeg_mem_dest(&writer_, &out_, &out_size_);
    jpeg_write_coefficients(&writer_, coefficients);
    jpeg_finish_compress(&writer_);
    return true;
  }

  std::string_view result() const {
    return {reinterpret_cast<const char*>(out_), static_cast<std::size_t>(out_size_)};
  }

 private:
  bool IsBounded() const {
    std::uint64_t bytes = 0;
    for (int i = 0; i < reader_.num_components; ++i) {
      const jpeg_component_info& component = reader_.comp_info[i];
      bytes +=
          std::uint64_t{component.width_in_blocks} * component.height_in_blocks * sizeof(JBLOCK);
    }
    return bytes <= limits::kMaxTranscodedBytes;
  }

  jpeg_decompress_struct reader_{};
  jpeg_compress_struct writer_{};
  jpeg_error_mgr errors_{};
  jpeg_progress_mgr progress_{};
  std::jmp_buf return_point_{};
  unsigned char* out_ = nullptr;
  unsigned long out_size_ = 0;
};

}  // namespace

std::optional<std::string> CodeByHuffman(std::string_view jpeg) {
  Transcoder transcoder;
  if (!transcoder.Run(jpeg)) {
    return std::nullopt;
  }
  return std::string(transcoder.result());
}

}  // namespace TarnixTools::engines
