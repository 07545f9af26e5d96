#include "engines/rasteriser/Rasteriser.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <utility>

#include "engines/rasteriser/EncodingQueue.h"
#include "engines/rasteriser/ImageGeometry.h"
#include "engines/rasteriser/Limits.h"
#include "engines/rasteriser/Pdf2ImgFailure.h"
#include "engines/support/contract/Registry.h"
#include "engines/support/drawing/DrawnDocument.h"
#include "engines/support/drawing/PageBitmap.h"
#include "foundation/Utf8.h"

namespace TarnixTools::engines {

using namespace rasteriser;

namespace {

void Require(bool condition) {
  engines::Require<Pdf2ImgErrors>(condition);
}

}  // namespace

struct TPdf2Img {
  void Open(const platform::WidePath& path, const std::wstring& password) {
    document = std::make_unique<DrawnDocument>(path, WideToUtf8(password));
  }

  void CreateImage(const platform::WidePath& path) {
    image.reset();
    Require(document != nullptr && has_valid_dpi);
    image = std::make_shared<ImageFile>(path);
  }

  void RenderPage(std::int32_t page_number) {
    Require(document != nullptr && image != nullptr && !image->is_started());
    try {
      if (page_number < 1) {
        throw Pdf2ImgFailure(kPdf2ImgPageError);
      }
      document->LoadPage(page_number - 1);
      DrawPage();
      document->ReleasePage();
      image_page_number = page_number;
      if (document->is_page_partial()) {
        Report({.page_number = page_number, .error = kPdf2ImgPartialPageError});
      }
    } catch (...) {
      image.reset();
      Report({.page_number = page_number, .error = CodeOfCurrentException<Pdf2ImgErrors>()});
      throw;
    }
  }

  void DrawPage() {
    const ImageGeometry geometry =
        GeometryOf(settings, document->width_points(), document->height_points());
    image->Start({.width = static_cast<std::uint32_t>(geometry.image_width),
                  .height = static_cast<std::uint32_t>(geometry.image_height),
                  .is_png = settings.is_png,
                  .is_gray = settings.is_gray,
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
      throw Pdf2ImgFailure(kPdf2ImgArgumentError);
    }
    queue.Finish(std::exchange(image, nullptr), image_page_number);
  }

  void Close() {
    image.reset();
    document.reset();
    const std::vector<FailedImage> all_failed = queue.Drain();
    for (const FailedImage& failed : all_failed) {
      Report(failed);
    }
    if (!all_failed.empty()) {
      throw Pdf2ImgFailure(all_failed.back().error, all_failed.back().system_error);
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

using Objects = Registry<TPdf2Img>;

}  // namespace

void Pdf2ImgInitialize() {
  Objects::BeginSession();
}

void Pdf2ImgUnInitialize() {
  Objects::EndSession();
}

TPdf2Img* Pdf2ImgCreateObject() {
  return GuardedWithoutObject<Pdf2ImgErrors>(
      [] { return Objects::Add(std::make_unique<TPdf2Img>()); });
}

void Pdf2ImgDestroyObject(TPdf2Img* object) {
  Objects::Destroy(object);
}

std::uint32_t Pdf2ImgGetErrorCode(const TPdf2Img* object) {
  return LastErrorOf<Pdf2ImgErrors>(object);
}

int Pdf2ImgOpenW(TPdf2Img* object, const platform::WidePath& path, const std::wstring& password) {
  return Guarded<Pdf2ImgErrors>(object, [&] {
    object->Close();
    object->Open(path, password);
  });
}

int Pdf2ImgClose(TPdf2Img* object) {
  return Guarded<Pdf2ImgErrors>(object, [&] { object->Close(); });
}

std::int32_t Pdf2ImgGetPageCount(const TPdf2Img* object) {
  return object != nullptr && object->document != nullptr ? object->document->page_count() : -1;
}

int Pdf2ImgSetDPI(TPdf2Img* object, float dpi) {
  return Guarded<Pdf2ImgErrors>(object, [&] {
    object->has_valid_dpi = dpi >= 0.5F && dpi <= rasteriser::limits::kMaxDpi;
    Require(object->has_valid_dpi);
    object->settings.dpi = dpi;
  });
}

int Pdf2ImgSetImageQuality(TPdf2Img* object, std::int32_t quality) {
  return Guarded<Pdf2ImgErrors>(object, [&] {
    Require(quality >= 1 && quality <= 100);
    object->settings.quality = quality;
  });
}

int Pdf2ImgSetCompression(TPdf2Img* object, std::int32_t compression) {
  return Guarded<Pdf2ImgErrors>(object, [&] {
    Require(compression == kPdf2ImgJpeg || compression == kPdf2ImgPng);
    object->settings.is_png = compression == kPdf2ImgPng;
  });
}

int Pdf2ImgSetGray(TPdf2Img* object, int is_gray) {
  return Guarded<Pdf2ImgErrors>(object, [&] { object->settings.is_gray = is_gray != 0; });
}

int Pdf2ImgSetBitmapDimensions(TPdf2Img* object, std::int32_t width, std::int32_t height) {
  return Guarded<Pdf2ImgErrors>(object, [&] {
    Require(width > 0 && height > 0);
    object->settings.size_kind = SizeKind::kPixels;
    object->settings.width = width;
    object->settings.height = height;
  });
}

int Pdf2ImgSetPageSize(TPdf2Img* object, float width_points, float height_points) {
  return Guarded<Pdf2ImgErrors>(object, [&] {
    Require(width_points > 0 && height_points > 0);
    object->settings.size_kind = SizeKind::kPoints;
    object->settings.width = width_points;
    object->settings.height = height_points;
  });
}

int Pdf2ImgSetFitPage(TPdf2Img* object, int fit) {
  return Guarded<Pdf2ImgErrors>(object, [&] { object->settings.fits_page = fit != 0; });
}

int Pdf2ImgSetReport(TPdf2Img* object, TPdf2ImgReport report, void* handle) {
  return Guarded<Pdf2ImgErrors>(object, [&] {
    object->report = report;
    object->report_handle = handle;
  });
}

int Pdf2ImgCreateImageW(TPdf2Img* object, const platform::WidePath& path) {
  return Guarded<Pdf2ImgErrors>(object, [&] { object->CreateImage(path); });
}

int Pdf2ImgRenderPage(TPdf2Img* object, std::int32_t page_number) {
  return Guarded<Pdf2ImgErrors>(object, [&] { object->RenderPage(page_number); });
}

int Pdf2ImgCloseImage(TPdf2Img* object) {
  return Guarded<Pdf2ImgErrors>(object, [&] { object->CloseImage(); });
}

}  // namespace TarnixTools::engines
