// Pictures by how their data is coded: what OpenPicture puts together.
#ifndef TARNIX_ENGINES_SUPPORT_IMAGES_DECODEDROWS_H_
#define TARNIX_ENGINES_SUPPORT_IMAGES_DECODEDROWS_H_

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "engines/support/codecs/CcittDecoder.h"
#include "engines/support/codecs/JpegReader.h"
#include "engines/support/codecs/JpxDecoder.h"
#include "engines/support/images/RowConverter.h"
#include "engines/support/pictures/RowSource.h"
#include "pdf/filters/FlateReader.h"

namespace TarnixTools::engines {

// Samples that no image filter is left on.
class SampleRows : public RowSource {
 public:
  SampleRows(RowConverter converter, std::uint32_t width, std::uint32_t height, std::string samples)
      : RowSource(width, height, converter.layout()),
        converter_(std::move(converter)),
        samples_(std::move(samples)) {}

  bool ReadRow(std::uint8_t* row) override {
    const std::size_t size = converter_.packed_bytes();
    const std::size_t left = samples_.size() - std::min(samples_.size(), next_);
    if (left < size) {
      return ReadRest(row, left);
    }
    converter_.Convert(Bytes(next_), row);
    next_ += size;
    return true;
  }

  bool is_bilevel() const override { return converter_.is_bilevel(); }

  bool ReadBits(std::uint8_t* bits) override {
    const std::size_t size = converter_.packed_bytes();
    const std::size_t left = samples_.size() - std::min(samples_.size(), next_);
    if (left < size) {
      std::memset(bits, 0xFF, size);
      return false;
    }
    converter_.ConvertToBits(Bytes(next_), bits);
    next_ += size;
    return true;
  }

  std::uint64_t held_bytes() const override { return samples_.size(); }

 private:
  const std::uint8_t* Bytes(std::size_t at) const {
    return reinterpret_cast<const std::uint8_t*>(samples_.data()) + at;
  }

  // A row of which only the start is there.
  bool ReadRest(std::uint8_t* row, std::size_t left) {
    std::memset(row, 0xFF, row_bytes());
    if (left == 0) {
      return false;
    }
    std::vector<std::uint8_t> packed(converter_.packed_bytes());
    std::copy_n(Bytes(next_), left, packed.begin());
    std::vector<std::uint8_t> pixels(row_bytes());
    converter_.Convert(packed.data(), pixels.data());
    const std::size_t there =
        row_bytes() * left / packed.size() / BytesPerPixel(layout()) * BytesPerPixel(layout());
    std::copy_n(pixels.begin(), there, row);
    next_ = samples_.size();
    return false;
  }

  RowConverter converter_;
  std::string samples_;
  std::size_t next_ = 0;
};

// Deflated samples, decoded row by row.
class FlateRows : public RowSource {
 public:
  FlateRows(RowConverter converter, std::uint32_t width, std::uint32_t height,
            std::unique_ptr<const std::string> encoded, std::unique_ptr<pdf::FlateReader> reader)
      : RowSource(width, height, converter.layout()),
        converter_(std::move(converter)),
        encoded_(std::move(encoded)),
        reader_(std::move(reader)),
        packed_(converter_.packed_bytes()) {}

  bool ReadRow(std::uint8_t* row) override {
    if (!ReadPacked()) {
      std::memset(row, 0xFF, row_bytes());
      return false;
    }
    converter_.Convert(packed_.data(), row);
    return true;
  }

  bool is_bilevel() const override { return converter_.is_bilevel(); }

  bool ReadBits(std::uint8_t* bits) override {
    if (!ReadPacked()) {
      std::memset(bits, 0xFF, packed_.size());
      return false;
    }
    converter_.ConvertToBits(packed_.data(), bits);
    return true;
  }

  std::uint64_t held_bytes() const override { return encoded_->size(); }

 private:
  bool ReadPacked() {
    return reader_->Read(reinterpret_cast<char*>(packed_.data()), packed_.size()) == packed_.size();
  }

  RowConverter converter_;
  std::unique_ptr<const std::string> encoded_;  // outlives the reader
  std::unique_ptr<pdf::FlateReader> reader_;
  std::vector<std::uint8_t> packed_;
};

// Fax data, decoded row by row.
class CcittRows : public RowSource {
 public:
  // converter: for rows of the decoder.
  CcittRows(RowConverter converter, const CcittParameters& parameters, std::uint32_t width,
            std::uint32_t height, std::unique_ptr<const std::string> encoded)
      : RowSource(width, height, converter.layout()),
        converter_(std::move(converter)),
        encoded_(std::move(encoded)),
        decoder_(*encoded_, parameters),
        packed_(std::max(decoder_.row_bytes(), converter_.packed_bytes())) {}

  bool ReadRow(std::uint8_t* row) override {
    if (!decoder_.ReadRow(packed_.data())) {
      std::memset(row, 0xFF, row_bytes());
      return false;
    }
    converter_.Convert(packed_.data(), row);
    return true;
  }

  bool is_bilevel() const override { return converter_.is_bilevel(); }

  bool ReadBits(std::uint8_t* bits) override {
    if (!decoder_.ReadRow(packed_.data())) {
      std::memset(bits, 0xFF, converter_.packed_bytes());
      return false;
    }
    converter_.ConvertToBits(packed_.data(), bits);
    return true;
  }

  std::uint64_t held_bytes() const override { return encoded_->size(); }

 private:
  RowConverter converter_;
  std::unique_ptr<const std::string> encoded_;  // outlives the decoder
  CcittDecoder decoder_;
  std::vector<std::uint8_t> packed_;
};

// JPEG 2000 data, decoded at once.
class JpxRows : public RowSource {
 public:
  // alpha: whether its own is used.
  JpxRows(RowConverter converter, JpxSamples samples, bool alpha)
      : RowSource(samples.width, samples.height, converter.layout()),
        converter_(std::move(converter)),
        samples_(std::move(samples)) {
    if (!alpha) {
      samples_.alpha.clear();
    }
  }

  bool ReadRow(std::uint8_t* row) override {
    converter_.Convert(samples_.samples.data() + std::size_t{next_} * converter_.packed_bytes(),
                       row);
    if (!samples_.alpha.empty()) {
      PutOnWhite(row);
    }
    ++next_;
    return true;
  }

  std::uint64_t held_bytes() const override {
    return samples_.samples.size() + samples_.alpha.size();
  }

 private:
  void PutOnWhite(std::uint8_t* row) const {
    const std::size_t bytes = BytesPerPixel(layout());
    const std::uint8_t* alphas = samples_.alpha.data() + std::size_t{next_} * width();
    for (std::size_t x = 0; x < width(); ++x) {
      const unsigned alpha = alphas[x];
      for (std::size_t c = 0; c < bytes; ++c) {
        std::uint8_t& value = row[bytes * x + c];
        const unsigned color = samples_.is_alpha_mixed_in ? value : (value * alpha + 127) / 255;
        value = static_cast<std::uint8_t>(std::min(255U, color + 255 - alpha));
      }
    }
  }

  RowConverter converter_;
  JpxSamples samples_;
  std::uint32_t next_ = 0;
};

class JpegRows : public RowSource {
 public:
  JpegRows(RowConverter converter, std::unique_ptr<JpegReader> reader,
           std::unique_ptr<const std::string> encoded)
      : RowSource(reader->width(), reader->height(), converter.layout()),
        converter_(std::move(converter)),
        encoded_(std::move(encoded)),
        reader_(std::move(reader)),
        samples_(converter_.packed_bytes()) {}

  bool ReadRow(std::uint8_t* row) override {
    if (!reader_->ReadRow(samples_.data())) {
      std::memset(row, 0xFF, row_bytes());
      return false;
    }
    converter_.Convert(samples_.data(), row);
    return true;
  }

  std::uint64_t held_bytes() const override { return encoded_->size() + reader_->held_bytes(); }

 private:
  RowConverter converter_;
  std::unique_ptr<const std::string> encoded_;  // outlives the reader
  std::unique_ptr<JpegReader> reader_;
  std::vector<std::uint8_t> samples_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_IMAGES_DECODEDROWS_H_
