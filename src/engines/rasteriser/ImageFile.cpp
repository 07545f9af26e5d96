#include "engines/rasteriser/ImageFile.h"

#include <utility>

#include "engines/rasteriser/Pdf2ImgFailure.h"

namespace TarnixTools::engines::rasteriser {
namespace {

platform::OutputFile Create(const platform::WidePath& path) {
  std::optional<platform::OutputFile> output = platform::OutputFile::Create(path);
  if (!output) {
    throw Pdf2ImgFailure(kPdf2ImgCreateError);
  }
  return *std::move(output);
}

}  // namespace

ImageFile::ImageFile(const platform::WidePath& path)
    : output_(Create(path)), stream_(output_.TakeStream()), sink_(DiskSink(stream_.get())) {}

void ImageFile::Finish() {
  writer_->Finish();
  writer_.reset();
  sink_.reset();
  if (std::fclose(stream_.release()) != 0 || !output_.Commit()) {
    throw Pdf2ImgFailure(kPdf2ImgWriteError);
  }
}

}  // namespace TarnixTools::engines::rasteriser
