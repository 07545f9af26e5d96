#include "engines/rasteriser/ImageFile.h"

#include <cerrno>
#include <utility>

#include "engines/rasteriser/Pdf2ImgFailure.h"
#include "engines/support/files/SavedFile.h"

namespace TarnixTools::engines::rasteriser {
namespace {

platform::OutputFile Create(const platform::WidePath& path) {
  std::optional<platform::OutputFile> output = platform::OutputFile::Create(path);
  if (!output) {
    throw Pdf2ImgFailure(kPdf2ImgCreateError, errno);
  }
  return *std::move(output);
}

// The brightness that JPEG gives colours, in thousandths.
constexpr unsigned kRedShare = 299;
constexpr unsigned kGreenShare = 587;
constexpr unsigned kBlueShare = 114;

void ToGray(const std::uint8_t* bgrx, std::vector<std::uint8_t>& out) {
  for (std::uint8_t& gray : out) {
    gray = static_cast<std::uint8_t>(
        (bgrx[2] * kRedShare + bgrx[1] * kGreenShare + bgrx[0] * kBlueShare + 500) / 1000);
    bgrx += 4;
  }
}

void ToRgb(const std::uint8_t* bgrx, std::vector<std::uint8_t>& out) {
  for (std::size_t i = 0; i < out.size(); i += 3) {
    out[i] = bgrx[2];
    out[i + 1] = bgrx[1];
    out[i + 2] = bgrx[0];
    bgrx += 4;
  }
}

}  // namespace

ImageFile::ImageFile(const platform::WidePath& path)
    : output_(Create(path)), stream_(output_.TakeStream()), sink_(DiskSink(stream_.get())) {}

void ImageFile::Start(const ImageFileSettings& settings) {
  is_gray_ = settings.is_gray;
  if (settings.is_png || is_gray_) {
    row_.resize(std::size_t{settings.width} * (is_gray_ ? 1 : 3));
  }
  if (settings.is_png) {
    png_.emplace(*sink_, PngSettings{.width = settings.width,
                                     .height = settings.height,
                                     .is_gray = is_gray_,
                                     .dpi = settings.dpi});
    return;
  }
  jpeg_.emplace(*sink_, JpegSettings{.width = settings.width,
                                     .height = settings.height,
                                     .layout = is_gray_ ? PixelLayout::kGray : PixelLayout::kBgrx,
                                     .quality = settings.quality,
                                     .dpi = settings.dpi});
}

void ImageFile::WriteRows(const std::uint8_t* pixels, std::size_t stride, std::size_t row_count) {
  if (row_.empty()) {
    jpeg_->WriteRows(pixels, stride, row_count);
    return;
  }
  for (std::size_t y = 0; y < row_count; ++y) {
    const std::uint8_t* row = pixels + y * stride;
    is_gray_ ? ToGray(row, row_) : ToRgb(row, row_);
    png_ ? png_->WriteRow(row_.data()) : jpeg_->WriteRows(row_.data(), row_.size(), 1);
  }
}

void ImageFile::Finish() {
  if (png_) {
    png_->Finish();
  } else {
    jpeg_->Finish();
  }
  png_.reset();
  jpeg_.reset();
  sink_.reset();
  CompleteFile(std::move(stream_), output_);
}

}  // namespace TarnixTools::engines::rasteriser
