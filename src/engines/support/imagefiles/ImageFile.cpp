#include "engines/support/imagefiles/ImageFile.h"

#include "engines/support/files/ByteReader.h"
#include "engines/support/imagefiles/BmpFile.h"
#include "engines/support/imagefiles/GifFile.h"
#include "engines/support/imagefiles/ImageFileLimits.h"
#include "engines/support/imagefiles/Jpeg2000File.h"
#include "engines/support/imagefiles/JpegFile.h"
#include "engines/support/imagefiles/PngFile.h"
#include "engines/support/imagefiles/PnmFile.h"
#include "engines/support/imagefiles/TiffFile.h"
#include "engines/support/imagefiles/WebpFile.h"
#include "engines/support/pictures/ImageError.h"
#include "engines/support/pictures/PictureLimits.h"

namespace TarnixTools::engines {

namespace {

template <typename File>
std::unique_ptr<ImageFile> OpenAs(pdf::ByteSource& source) {
  return std::make_unique<File>(source);
}

struct Format {
  bool (*recognises)(ByteReader& reader);
  std::unique_ptr<ImageFile> (*open)(pdf::ByteSource& source);
};

constexpr Format kFormats[] = {
    {&JpegFile::Recognises, &OpenAs<JpegFile>}, {&PngFile::Recognises, &OpenAs<PngFile>},
    {&TiffFile::Recognises, &OpenAs<TiffFile>}, {&Jpeg2000File::Recognises, &OpenAs<Jpeg2000File>},
    {&GifFile::Recognises, &OpenAs<GifFile>},   {&WebpFile::Recognises, &OpenAs<WebpFile>},
    {&BmpFile::Recognises, &OpenAs<BmpFile>},   {&PnmFile::Recognises, &OpenAs<PnmFile>},
};

bool IsBelievable(double dpi) {
  return dpi >= limits::kMinDpi && dpi <= limits::kMaxDpi;
}

}  // namespace

std::unique_ptr<ImageFile> ImageFile::Open(pdf::ByteSource& source) {
  ByteReader reader(source);
  for (const Format& format : kFormats) {
    if (format.recognises(reader)) {
      return format.open(source);
    }
  }
  throw ImageError(ImageErrorCode::kUnknownFormat, "the file is no image of a known kind");
}

void ImageFile::AddFrame(ImageFrame frame) {
  if (frame.width == 0 || frame.height == 0) {
    throw ImageError(ImageErrorCode::kDamaged, "the picture has no pixels");
  }
  if (frame.width > limits::kMaxSide || frame.height > limits::kMaxSide ||
      frames_.size() >= limits::kMaxFrames) {
    throw ImageError(ImageErrorCode::kLimit, "the picture is too large");
  }
  if (!IsBelievable(frame.dpi_x) || !IsBelievable(frame.dpi_y)) {
    frame.dpi_x = frame.dpi_y = 0;
  }
  frames_.push_back(frame);
}

}  // namespace TarnixTools::engines
