#include "engines/support/codecs/PngRowWriter.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <string>

#include <zlib.h>

#include "engines/support/codecs/PngChunks.h"
#include "engines/support/files/BigEndian.h"

namespace TarnixTools::engines {

namespace {

constexpr std::size_t kPackedBytes = std::size_t{64} << 10;
constexpr int kLevel = 6;
constexpr double kInchesPerMetre = 1 / 0.0254;

// Types of filters (clause 9).
constexpr std::uint8_t kUp = 2;

}  // namespace

struct PngRowWriter::Deflater {
  Deflater() {
    if (deflateInit(&stream, kLevel) != Z_OK) {
      throw std::bad_alloc();
    }
  }

  Deflater(const Deflater&) = delete;
  Deflater& operator=(const Deflater&) = delete;

  ~Deflater() { deflateEnd(&stream); }

  z_stream stream{};
};

PngRowWriter::PngRowWriter(pdf::ByteSink& sink, const PngSettings& settings)
    : sink_(&sink),
      pixel_bytes_(settings.is_gray ? 1 : 3),
      before_(pixel_bytes_ * settings.width),
      filtered_(before_.size() + 1),
      packed_(kPackedBytes),
      deflater_(std::make_unique<Deflater>()) {
  std::string start(kPngSignature);
  AppendPngHeader(start, {.width = settings.width,
                          .height = settings.height,
                          .color_type = settings.is_gray ? '\x00' : '\x02'});
  sink_->Write(start);
  if (settings.dpi > 0) {
    const auto density = static_cast<std::uint32_t>(std::lround(settings.dpi * kInchesPerMetre));
    std::string size;
    AppendBig32(size, density);
    AppendBig32(size, density);
    WriteChunk("pHYs", size + '\x01');
  }
  deflater_->stream.next_out = reinterpret_cast<Bytef*>(packed_.data());
  deflater_->stream.avail_out = static_cast<uInt>(packed_.size());
}

PngRowWriter::~PngRowWriter() = default;

// Rows of pages are mostly like those above them.
void PngRowWriter::WriteRow(const std::uint8_t* samples) {
  filtered_[0] = kUp;
  for (std::size_t i = 0; i < before_.size(); ++i) {
    filtered_[i + 1] = static_cast<std::uint8_t>(samples[i] - before_[i]);
  }
  std::copy_n(samples, before_.size(), before_.begin());
  deflater_->stream.next_in = filtered_.data();
  deflater_->stream.avail_in = static_cast<uInt>(filtered_.size());
  Deflate(Z_NO_FLUSH);
}

void PngRowWriter::Deflate(int flush) {
  z_stream& stream = deflater_->stream;
  int state = Z_OK;
  do {
    state = deflate(&stream, flush);
    const std::size_t count = packed_.size() - stream.avail_out;
    if (stream.avail_out == 0 || (state == Z_STREAM_END && count > 0)) {
      WriteChunk("IDAT", {packed_.data(), count});
      stream.next_out = reinterpret_cast<Bytef*>(packed_.data());
      stream.avail_out = static_cast<uInt>(packed_.size());
    }
  } while (flush == Z_FINISH ? state == Z_OK : stream.avail_in > 0);
}

void PngRowWriter::Finish() {
  Deflate(Z_FINISH);
  WriteChunk("IEND", {});
}

// type: four letters.
void PngRowWriter::WriteChunk(const char* type, std::string_view data) {
  std::string chunk;
  AppendPngChunk(chunk, type, data);
  sink_->Write(chunk);
}

}  // namespace TarnixTools::engines
