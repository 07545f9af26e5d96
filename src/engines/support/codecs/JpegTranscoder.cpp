#include "engines/support/codecs/JpegTranscoder.h"

#include <cstdlib>

#include "engines/support/codecs/CodecLimits.h"
#include "engines/support/codecs/LibjpegCalls.h"

namespace TarnixTools::engines {

namespace {

class Transcoder : private LibjpegCalls {
 public:
  Transcoder() {
    Watch(reader_);
    Watch(writer_);
  }

  ~Transcoder() {
    jpeg_destroy_compress(&writer_);
    jpeg_destroy_decompress(&reader_);
    std::free(out_);  // the library's
  }

  bool Run(std::string_view jpeg) {
    return Try([&] { return Transcode(jpeg); });
  }

  std::string_view result() const {
    return {reinterpret_cast<const char*>(out_), static_cast<std::size_t>(out_size_)};
  }

 private:
  bool Transcode(std::string_view jpeg) {
    jpeg_create_decompress(&reader_);
    jpeg_create_compress(&writer_);
    BoundScans(reader_);
    jpeg_mem_src(&reader_, reinterpret_cast<const unsigned char*>(jpeg.data()),
                 static_cast<unsigned long>(jpeg.size()));
    if (jpeg_read_header(&reader_, TRUE) != JPEG_HEADER_OK ||
        CoefficientBytes(reader_) > limits::kMaxTranscodedBytes) {
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

  jpeg_decompress_struct reader_{};
  jpeg_compress_struct writer_{};
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
