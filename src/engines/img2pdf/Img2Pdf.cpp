#include "engines/img2pdf/Img2Pdf.h"

#include <cmath>
#include <memory>
#include <new>
#include <optional>
#include <utility>

#include "engines/img2pdf/ErrorCodes.h"
#include "engines/img2pdf/ImageDocument.h"
#include "engines/support/pictures/ImageError.h"
#include "foundation/Utf8.h"
#include "pdf/Error.h"

namespace TarnixTools::engines {

struct TImg2Pdf {
  PageSettings settings;
  std::unique_ptr<ImageDocument> document;
  Img2PdfError error = kImg2PdfNoError;
};

namespace {

constexpr float kMaxBorder = 1e6F;  // points

thread_local Img2PdfError creation_error = kImg2PdfNoError;

Img2PdfError CodeOf(pdf::ErrorCode code) {
  switch (code) {
    case pdf::ErrorCode::kReadFailed:
      return kImg2PdfReadError;
    case pdf::ErrorCode::kWriteFailed:
      return kImg2PdfWriteError;
    case pdf::ErrorCode::kLimitExceeded:
      return kImg2PdfLimitError;
    case pdf::ErrorCode::kSourceChanged:
      return kImg2PdfSourceChangedError;
    default:
      return kImg2PdfInternalError;
  }
}

Img2PdfError CodeOf(ImageErrorCode code) {
  switch (code) {
    case ImageErrorCode::kUnknownFormat:
      return kImg2PdfUnknownFormatError;
    case ImageErrorCode::kUnsupported:
      return kImg2PdfUnsupportedError;
    case ImageErrorCode::kDamaged:
      return kImg2PdfDamagedError;
    case ImageErrorCode::kLimit:
      return kImg2PdfLimitError;
  }
  return kImg2PdfInternalError;
}

// Runs one operation on an object: what it throws becomes the object's error code and a zero
// result.
template <typename Operation>
int Guarded(TImg2Pdf* object, Operation&& operation) noexcept {
  if (object == nullptr) {
    return 0;
  }
  try {
    object->error = operation();
  } catch (const pdf::Error& error) {
    object->error = CodeOf(error.code());
  } catch (const ImageError& error) {
    object->error = CodeOf(error.code());
  } catch (const std::bad_alloc&) {
    object->error = kImg2PdfMemoryError;
  } catch (...) {
    object->error = kImg2PdfInternalError;
  }
  return object->error == kImg2PdfNoError ? 1 : 0;
}

std::optional<pdf::Security> MakeSecurity(const std::wstring& user_password,
                                          const std::wstring& owner_password,
                                          std::uint32_t permissions) {
  if (user_password.empty() && owner_password.empty()) {
    return std::nullopt;
  }
  return pdf::Security::Create(WideToUtf8(user_password), WideToUtf8(owner_password),
                               static_cast<std::int32_t>(permissions));
}

Img2PdfError Create(TImg2Pdf& object, const platform::WidePath& path,
                    const std::wstring& user_password, const std::wstring& owner_password,
                    std::uint32_t permissions) {
  if (object.document != nullptr) {
    return kImg2PdfArgumentError;
  }
  std::optional<platform::OutputFile> output = platform::OutputFile::Create(path);
  if (!output) {
    return kImg2PdfCreateError;
  }
  object.document = std::make_unique<ImageDocument>(
      std::move(*output), MakeSecurity(user_password, owner_password, permissions));
  return kImg2PdfNoError;
}

Img2PdfError AddPages(TImg2Pdf& object, const platform::WidePath& path) {
  if (object.document == nullptr) {
    return kImg2PdfArgumentError;
  }
  platform::FilePtr file = platform::OpenForReading(path);
  if (file == nullptr) {
    return kImg2PdfOpenError;
  }
  FileSource source(std::move(file));
  const std::unique_ptr<ImageFile> image = ImageFile::Open(source);
  return object.document->AddPages(*image, source, object.settings) ? kImg2PdfNoError
                                                                    : kImg2PdfArgumentError;
}

}  // namespace

void Img2PdfInitialize() {}

void Img2PdfUnInitialize() {}

TImg2Pdf* Img2PdfCreateObject() {
  creation_error = kImg2PdfNoError;
  auto* object = new (std::nothrow) TImg2Pdf;
  if (object == nullptr) {
    creation_error = kImg2PdfMemoryError;
  }
  return object;
}

int Img2PdfDestroyObject(TImg2Pdf* object) {
  delete object;
  return object != nullptr ? 1 : 0;
}

std::int32_t Img2PdfGetErrorCode(TImg2Pdf* object) {
  return object != nullptr ? object->error : creation_error;
}

int Img2PdfCreateW(TImg2Pdf* object, const platform::WidePath& path,
                   const std::wstring& user_password, const std::wstring& owner_password,
                   std::uint32_t permissions) {
  return Guarded(object,
                 [&] { return Create(*object, path, user_password, owner_password, permissions); });
}

int Img2PdfSetAdjustPage(TImg2Pdf* object, int adjust) {
  return Guarded(object, [&] {
    object->settings.is_adjusted = adjust != 0;
    return kImg2PdfNoError;
  });
}

int Img2PdfSetPageSize(TImg2Pdf* object, double width, double height) {
  return Guarded(object, [&] {
    if (!(width > 0 && height > 0 && std::isfinite(width) && std::isfinite(height))) {
      return kImg2PdfArgumentError;
    }
    object->settings.is_adjusted = false;
    object->settings.width = width;
    object->settings.height = height;
    return kImg2PdfNoError;
  });
}

int Img2PdfSetCenterImage(TImg2Pdf* object, int center) {
  return Guarded(object, [&] {
    object->settings.is_centered = center != 0;
    return kImg2PdfNoError;
  });
}

int Img2PdfSetFitImage(TImg2Pdf* object, int fit) {
  return Guarded(object, [&] {
    object->settings.is_fitted = fit != 0;
    return kImg2PdfNoError;
  });
}

int Img2PdfSetOrientation(TImg2Pdf* object, std::int32_t orientation) {
  return Guarded(object, [&] {
    if (ValidOrientation(orientation) != orientation) {
      return kImg2PdfArgumentError;
    }
    object->settings.orientation = orientation;
    return kImg2PdfNoError;
  });
}

int Img2PdfSetUpright(TImg2Pdf* object, int upright) {
  return Guarded(object, [&] {
    object->settings.makes_upright = upright != 0;
    return kImg2PdfNoError;
  });
}

int Img2PdfSetBorderSize(TImg2Pdf* object, float border) {
  return Guarded(object, [&] {
    if (!(std::abs(border) <= kMaxBorder)) {
      return kImg2PdfArgumentError;
    }
    object->settings.border = border;
    return kImg2PdfNoError;
  });
}

int Img2PdfCreatePageFromImageW(TImg2Pdf* object, const platform::WidePath& path) {
  return Guarded(object, [&] { return AddPages(*object, path); });
}

int Img2PdfClose(TImg2Pdf* object) {
  return Guarded(object, [&] {
    if (object->document == nullptr) {
      return kImg2PdfArgumentError;
    }
    const std::unique_ptr<ImageDocument> document = std::move(object->document);
    document->Close();
    return kImg2PdfNoError;
  });
}

}  // namespace TarnixTools::engines
