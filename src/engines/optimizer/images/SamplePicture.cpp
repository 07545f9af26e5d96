#include "engines/optimizer/images/SamplePicture.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

#include "engines/support/pictures/EnlargedPicture.h"
#include "engines/support/pictures/ReducedPicture.h"

namespace TarnixTools::engines::optimizer {

namespace {

PixelLayout LayoutOf(int components) {
  return components == 1   ? PixelLayout::kGray
         : components == 3 ? PixelLayout::kRgb
                           : PixelLayout::kBgrx;
}

// Samples of any depth, stretched to eight bits.
class OwnRows : public RowSource {
 public:
  explicit OwnRows(SampleRowsPtr samples)
      : RowSource(samples->format().width, samples->format().height,
                  LayoutOf(samples->format().components)),
        samples_(std::move(samples)) {
    const unsigned most = (1U << static_cast<unsigned>(std::min(bits(), 8))) - 1;
    for (unsigned value = 0; value <= most; ++value) {
      stretched_[value] = static_cast<std::uint8_t>(value * 255 / most);
    }
  }

  bool ReadRow(std::uint8_t* row) override {
    const std::span<const std::uint8_t> packed = samples_->ReadRow();
    const std::size_t wanted = samples_->format().samples_in_row();
    const std::size_t there =
        std::min(wanted, packed.size() * 8 / static_cast<std::size_t>(bits()));
    UnpackSamples(packed.data(), bits(), there, row);
    if (bits() < 8) {
      std::transform(row, row + there, row,
                     [this](std::uint8_t value) { return stretched_[value]; });
    }
    std::fill(row + there, row + wanted, std::uint8_t{255});
    return there == wanted;
  }

  std::uint64_t held_bytes() const override { return samples_->held_bytes(); }

 private:
  int bits() const { return samples_->format().bits; }

  SampleRowsPtr samples_;
  std::array<std::uint8_t, 256> stretched_{};
};

class PaletteRows : public RowSource {
 public:
  PaletteRows(SampleRowsPtr samples, std::string table, int components)
      : RowSource(samples->format().width, samples->format().height, LayoutOf(components)),
        samples_(std::move(samples)),
        table_(std::move(table)),
        indices_(width()) {
    table_.resize(256 * static_cast<std::size_t>(components));
  }

  bool ReadRow(std::uint8_t* row) override {
    const SampleFormat& format = samples_->format();
    const std::span<const std::uint8_t> packed = samples_->ReadRow();
    const std::size_t there = std::min<std::size_t>(
        format.width, packed.size() * 8 / static_cast<std::size_t>(format.bits));
    UnpackSamples(packed.data(), format.bits, there, indices_.data());
    std::fill(indices_.begin() + static_cast<std::ptrdiff_t>(there), indices_.end(),
              std::uint8_t{0});
    const std::size_t components = BytesPerPixel(layout());
    for (const std::uint8_t index : indices_) {
      std::copy_n(table_.data() + index * components, components, row);
      row += components;
    }
    return there == format.width;
  }

  std::uint64_t held_bytes() const override { return samples_->held_bytes(); }

 private:
  SampleRowsPtr samples_;
  std::string table_;
  std::vector<std::uint8_t> indices_;
};

class PartRows : public RowSource {
 public:
  PartRows(RowSourcePtr rows, std::uint32_t left, std::uint32_t top, std::uint32_t width,
           std::uint32_t height)
      : RowSource(width, height, rows->layout()),
        rows_(std::move(rows)),
        left_(left),
        rows_above_(top),
        row_(rows_->row_bytes()) {}

  bool ReadRow(std::uint8_t* row) override {
    for (; rows_above_ > 0; --rows_above_) {
      rows_->ReadRow(row_.data());
    }
    const bool is_there = rows_->ReadRow(row_.data());
    std::copy_n(row_.data() + left_ * BytesPerPixel(layout()), row_bytes(), row);
    return is_there;
  }

  std::uint64_t held_bytes() const override { return rows_->held_bytes(); }

 private:
  RowSourcePtr rows_;
  std::size_t left_;
  std::uint32_t rows_above_;  // still to be passed over
  std::vector<std::uint8_t> row_;
};

class PictureRows : public RowSource {
 public:
  explicit PictureRows(const SamplePicture& picture)
      : RowSource(picture.width, picture.height, LayoutOf(picture.components)),
        picture_(&picture) {}

  bool ReadRow(std::uint8_t* row) override {
    std::copy_n(picture_->row(next_++), picture_->row_bytes(), row);
    return true;
  }

  std::uint64_t held_bytes() const override { return 0; }

 private:
  const SamplePicture* picture_;
  std::uint32_t next_ = 0;
};

}  // namespace

RowSourcePtr OwnSamples(SampleRowsPtr samples) {
  return std::make_unique<OwnRows>(std::move(samples));
}

RowSourcePtr PaletteSamples(SampleRowsPtr samples, std::string table, int components) {
  return std::make_unique<PaletteRows>(std::move(samples), std::move(table), components);
}

RowSourcePtr PartOf(RowSourcePtr rows, std::uint32_t left, std::uint32_t top, std::uint32_t width,
                    std::uint32_t height) {
  return std::make_unique<PartRows>(std::move(rows), left, top, width, height);
}

SamplePicture ReadPicture(RowSource& rows) {
  SamplePicture picture;
  picture.width = rows.width();
  picture.height = rows.height();
  picture.components = static_cast<int>(BytesPerPixel(rows.layout()));
  picture.samples.resize(picture.row_bytes() * picture.height);
  for (std::uint32_t y = 0; y < picture.height; ++y) {
    picture.is_whole =
        rows.ReadRow(picture.samples.data() + y * picture.row_bytes()) && picture.is_whole;
  }
  return picture;
}

RowSourcePtr RowsOf(const SamplePicture& picture) {
  return std::make_unique<PictureRows>(picture);
}

std::optional<SamplePicture> BandsOf(const SamplePicture& picture) {
  constexpr std::uint32_t kBands = 8;
  constexpr std::uint32_t kBandRows = 64;
  constexpr std::uint32_t kMostWhole = kBands * kBandRows * 3 / 2;
  if (picture.height <= kMostWhole) {
    return std::nullopt;
  }
  SamplePicture bands;
  bands.width = picture.width;
  bands.height = kBands * kBandRows;
  bands.components = picture.components;
  bands.samples.reserve(bands.row_bytes() * bands.height);
  for (std::uint32_t band = 0; band < kBands; ++band) {
    const std::uint64_t top = std::uint64_t{picture.height - kBandRows} *
                              (std::uint64_t{2} * band + 1) / (std::uint64_t{2} * kBands);
    const std::uint8_t* const first = picture.row(static_cast<std::uint32_t>(top));
    bands.samples.insert(bands.samples.end(), first, first + kBandRows * picture.row_bytes());
  }
  return bands;
}

SamplePicture Scaled(const SamplePicture& picture, std::uint32_t width, std::uint32_t height) {
  RowSourcePtr rows = ReducePicture(RowsOf(picture), std::min(width, picture.width),
                                    std::min(height, picture.height));
  if (width > picture.width || height > picture.height) {
    rows = EnlargePicture(std::move(rows), width, height);
  }
  SamplePicture scaled = ReadPicture(*rows);
  scaled.is_whole = picture.is_whole;
  return scaled;
}

}  // namespace TarnixTools::engines::optimizer
