#include "engines/rasteriser/Rasteriser.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <new>
#include <optional>
#include <utility>

#include "engines/rasteriser/EncodingQueue.h"
#include "engines/rasteriser/ImageGeometry.h"
#include "engines/rasteriser/RasterError.h"
#include "engines/support/drawing/DrawnDocument.h"
#include "engines/support/drawing/PageBitmap.h"
#include "foundation/Utf8.h"

namespace TarnixTools::engines {
namespace {

constexpr double kMaxDpi = 65535;  // of the header of JPEG files

thread_local Pdf2ImgError last_error_without_object = kPdf2ImgNoError;

}  // namespace

struct TPdf2Img {
  void Open(const platform::WidePath& path, const std::wstring& password) {
    document = std::make_unique<DrawnDocument>(path, WideToUtf8(password));
  }

  void CreateImage(const platform::WidePath& path) {
    image.reset();
    if (document == nullptr || !has_valid_dpi) {
      throw RasterError(kPdf2ImgArgumentError);
    }
    image = std::make_shared<ImageFile>(path);
  }

  void RenderPage(std::int32_t page_number) {
    if (document == nullptr || image == nullptr || image->is_started()) {
      throw RasterError(kPdf2ImgArgumentError);
    }
    try {
      if (page_number < 1) {
        throw RasterError(kPdf2ImgPageError);
      }
      document->LoadPage(page_number - 1);
      DrawPage();
      document->ReleasePage();
      image_page_number = page_number;
      if (document->is_page_partial()) {
        Report({page_number, kPdf2ImgPartialPageError});
      }
    } catch (...) {
      image.reset();
      const Pdf2ImgError error = CodeOfCurrentException();
      Report({page_number, error});
      throw RasterError(error);
    }
  }

  void DrawPage() {
    const ImageGeometry geometry =
        GeometryOf(settings, document->width_points(), document->height_points());
    image->Start({.width = static_cast<std::uint32_t>(geometry.image_width),
                  .height = static_cast<std::uint32_t>(geometry.image_height),
                  .layout = PixelLayout::kBgrx,
                  .quality = settings.quality,
                  .dpi = static_cast<int>(std::lround(settings.dpi))});
    document->Place(geometry.page);
    const std::size_t stride = static_cast<std::size_t>(geometry.image_width) * 4;
    const int band_height = BandHeightOf(geometry.image_width, geometry.image_height);
    for (int top = 0; top < geometry.image_height; top += band_height) {
      DrawBand(geometry, top, std::min(band_height, geometry.image_height - top), stride);
    }
  }

  void DrawBand(const ImageGeometry& geometry, int top, int height, std::size_t stride) {
    PixelBuffer& buffer = queue.TakeBuffer(stride * static_cast<std::size_t>(height));
    try {
      document->Draw(buffer.data(), geometry.image_width, top, height);
    } catch (...) {
      queue.ReturnBuffer(buffer);
      throw;
    }
    queue.Encode(image, buffer, stride, static_cast<std::size_t>(height));
  }

  void CloseImage() {
    if (image == nullptr || !image->is_started()) {
      image.reset();
      throw RasterError(kPdf2ImgArgumentError);
    }
    queue.Finish(std::exchange(image, nullptr), image_page_number);
  }

  void Close() {
    image.reset();
    document.reset();
    Pdf2ImgError error = kPdf2ImgNoError;
    for (const FailedImage& failed : queue.Drain()) {
      error = failed.error;
      Report(failed);
    }
    if (error != kPdf2ImgNoError) {
      throw RasterError(error);
    }
  }

  void Report(const FailedImage& failed) const {
    if (report != nullptr) {
      report(report_handle, failed.page_number, failed.error);
    }
  }

  Pdf2ImgError last_error = kPdf2ImgNoError;
  ImageSettings settings;
  bool has_valid_dpi = true;
  TPdf2ImgReport report = nullptr;
  void* report_handle = nullptr;
  std::unique_ptr<DrawnDocument> document;
  EncodingQueue queue;
  std::shared_ptr<ImageFile> image;
  std::int32_t image_page_number = 0;
};

namespace {

// Runs one operation; 0 and an error code when it throws, or when there is no object.
template <typename Operation>
int Guarded(TPdf2Img* object, Operation&& operation) noexcept {
  if (object == nullptr) {
    last_error_without_object = kPdf2ImgArgumentError;
    return 0;
  }
  try {
    operation();
    return 1;
  } catch (...) {
    object->last_error = CodeOfCurrentException();
    return 0;
  }
}

void Require(bool condition) {
  if (!condition) {
    throw RasterError(kPdf2ImgArgumentError);
  }
}

}  // namespace

void Pdf2ImgInitialize() {}

void Pdf2ImgUnInitialize() {}

TPdf2Img* Pdf2ImgCreateObject() {
  try {
    return new TPdf2Img;
  } catch (...) {
    last_error_without_object = CodeOfCurrentException();
    return nullptr;
  }
}

void Pdf2ImgDestroyObject(TPdf2Img* object) {
  delete object;
}

std::uint32_t Pdf2ImgGetErrorCode(const TPdf2Img* object) {
  return object != nullptr ? object->last_error : last_error_without_object;
}

int Pdf2ImgOpenW(TPdf2Img* object, const platform::WidePath& path, const std::wstring& password) {
  return Guarded(object, [&] {
    object->Close();
    object->Open(path, password);
  });
}

int Pdf2ImgClose(TPdf2Img* object) {
  return Guarded(object, [&] { object->Close(); });
}

std::int32_t Pdf2ImgGetPageCount(const TPdf2Img* object) {
  return object != nullptr && object->document != nullptr ? object->document->page_count() : -1;
}

int Pdf2ImgSetDPI(TPdf2Img* object, float dpi) {
  return Guarded(object, [&] {
    object->has_valid_dpi = dpi >= 0.5F && dpi <= kMaxDpi;
    Require(object->has_valid_dpi);
    object->settings.dpi = dpi;
  });
}

int Pdf2ImgSetImageQuality(TPdf2Img* object, std::int32_t quality) {
  return Guarded(object, [&] {
    Require(quality >= 1 && quality <= 100);
    object->settings.quality = quality;
  });
}

int Pdf2ImgSetCompression(TPdf2Img* object, std::int32_t compression) {
  return Guarded(object, [&] { Require(compression == kPdf2ImgJpeg); });
}

int Pdf2ImgSetBitmapDimensions(TPdf2Img* object, std::int32_t width, std::int32_t height) {
  return Guarded(object, [&] {
    Require(width > 0 && height > 0);
    object->settings.size_kind = SizeKind::kPixels;
    object->settings.width = width;
    object->settings.height = height;
  });
}

int Pdf2ImgSetPageSize(TPdf2Img* object, float width_points, float height_points) {
  return Guarded(object, [&] {
    Require(width_points > 0 && height_points > 0);
    object->settings.size_kind = SizeKind::kPoints;
    object->settings.width = width_points;
    object->settings.height = height_points;
  });
}

int Pdf2ImgSetFitPage(TPdf2Img* object, int fit) {
  return Guarded(object, [&] { object->settings.fits_page = fit != 0; });
}

int Pdf2ImgSetReport(TPdf2Img* object, TPdf2ImgReport report, void* handle) {
  return Guarded(object, [&] {
    object->report = report;
    object->report_handle = handle;
  });
}

int Pdf2ImgCreateImageW(TPdf2Img* object, const platform::WidePath& path) {
  return Guarded(object, [&] { object->CreateImage(path); });
}

int Pdf2ImgRenderPage(TPdf2Img* object, std::int32_t page_number) {
  return Guarded(object, [&] { object->RenderPage(page_number); });
}

int Pdf2ImgCloseImage(TPdf2Img* object) {
  return Guarded(object, [&] { object->CloseImage(); });
}

}  // namespace TarnixTools::engines
