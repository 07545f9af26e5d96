// Samples by how their data is coded: what OpenSamples chooses from.
#ifndef TARNIX_ENGINES_SUPPORT_IMAGES_DECODEDSAMPLES_H_
#define TARNIX_ENGINES_SUPPORT_IMAGES_DECODEDSAMPLES_H_

#include <algorithm>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "engines/support/codecs/CcittDecoder.h"
#include "engines/support/codecs/JpegReader.h"
#include "engines/support/images/SampleRows.h"
#include "pdf/filters/FlateReader.h"

namespace TarnixTools::engines {

// All of them in memory.
//   Bytes - a container of bytes
template <typename Bytes>
class HeldSamples : public SampleRows {
 public:
  HeldSamples(const SampleFormat& format, Bytes samples)
      : SampleRows(format), samples_(std::move(samples)) {}

  std::span<const std::uint8_t> ReadRow() override {
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(samples_.data());
    const std::size_t size = std::min(format().row_bytes(), samples_.size() - next_);
    const std::span<const std::uint8_t> row(bytes + next_, size);
    next_ += size;
    return row;
  }

  std::uint64_t held_bytes() const override { return samples_.size(); }

 private:
  Bytes samples_;
  std::size_t next_ = 0;
};

// Deflated samples, decoded row by row.
class FlateSamples : public SampleRows {
 public:
  FlateSamples(const SampleFormat& format, std::unique_ptr<const std::string> encoded,
               std::unique_ptr<pdf::FlateReader> reader)
      : SampleRows(format),
        encoded_(std::move(encoded)),
        reader_(std::move(reader)),
        row_(format.row_bytes()) {}

  std::span<const std::uint8_t> ReadRow() override {
    return {row_.data(), reader_->Read(reinterpret_cast<char*>(row_.data()), row_.size())};
  }

  std::uint64_t held_bytes() const override { return encoded_->size(); }

 private:
  std::unique_ptr<const std::string> encoded_;  // outlives the reader
  std::unique_ptr<pdf::FlateReader> reader_;
  std::vector<std::uint8_t> row_;
};

// Fax data, decoded row by row.
class CcittSamples : public SampleRows {
 public:
  // The rows of the decoder may be longer than those of the image, or shorter: what is missing is 0.
  CcittSamples(const SampleFormat& format, const CcittParameters& parameters,
               std::unique_ptr<const std::string> encoded)
      : SampleRows(format),
        encoded_(std::move(encoded)),
        decoder_(*encoded_, parameters),
        row_(std::max(decoder_.row_bytes(), format.row_bytes())) {}

  std::span<const std::uint8_t> ReadRow() override {
    if (!decoder_.ReadRow(row_.data())) {
      return {};
    }
    return {row_.data(), format().row_bytes()};
  }

  std::uint64_t held_bytes() const override { return encoded_->size(); }

 private:
  std::unique_ptr<const std::string> encoded_;  // outlives the decoder
  CcittDecoder decoder_;
  std::vector<std::uint8_t> row_;
};

// JPEG data, decoded row by row.
class JpegSamples : public SampleRows {
 public:
  JpegSamples(std::unique_ptr<JpegReader> reader, std::unique_ptr<const std::string> encoded)
      : SampleRows({.width = reader->width(),
                    .height = reader->height(),
                    .components = reader->components(),
                    .bits = 8}),
        encoded_(std::move(encoded)),
        reader_(std::move(reader)),
        row_(format().row_bytes()) {}

  std::span<const std::uint8_t> ReadRow() override {
    if (!reader_->ReadRow(row_.data())) {
      return {};
    }
    return row_;
  }

  std::uint64_t held_bytes() const override { return encoded_->size() + reader_->held_bytes(); }

 private:
  std::unique_ptr<const std::string> encoded_;  // outlives the reader
  std::unique_ptr<JpegReader> reader_;
  std::vector<std::uint8_t> row_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_IMAGES_DECODEDSAMPLES_H_
