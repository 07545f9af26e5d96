#include "engines/img2pdf/Img2Pdf.h"

#include <cerrno>
#include <cmath>
#include <memory>
#include <optional>
#include <utility>

#include "engines/img2pdf/ImageDocument.h"
#include "engines/img2pdf/Img2PdfFailure.h"
#include "engines/img2pdf/Limits.h"
#include "engines/support/contract/Encryption.h"
#include "engines/support/contract/Registry.h"

namespace TarnixTools::engines {

using namespace img2pdf;

struct TImg2Pdf {
  PageSettings settings;
  std::unique_ptr<ImageDocument> document;
  TImg2PdfReport report = nullptr;
  void* report_handle = nullptr;
  Img2PdfError last_error = kImg2PdfNoError;
};

namespace {

using Objects = Registry<TImg2Pdf>;

void Require(bool condition) {
  engines::Require<Img2PdfErrors>(condition);
}

void Create(TImg2Pdf& object, const platform::WidePath& path, const std::wstring& user_password,
            const std::wstring& owner_password, std::uint32_t permissions) {
  Require(object.document == nullptr);
  std::optional<platform::OutputFile> output = platform::OutputFile::Create(path);
  if (!output) {
    throw Img2PdfFailure(kImg2PdfCreateError, errno);
  }
  object.document = std::make_unique<ImageDocument>(
      std::move(*output), EncryptionWith(user_password, owner_password, permissions));
}

void AddPages(TImg2Pdf& object, const platform::WidePath& path) {
  Require(object.document != nullptr);
  platform::FilePtr file = platform::OpenForReading(path);
  if (file == nullptr) {
    throw Img2PdfFailure(kImg2PdfOpenError);
  }
  FileSource source(std::move(file));
  const std::unique_ptr<ImageFile> image = ImageFile::Open(source);
  Require(object.document->AddPages(*image, source, object.settings));
  if (image->is_cut() && object.report != nullptr) {
    object.report(object.report_handle, path);
  }
}

}  // namespace

void Img2PdfInitialize() {
  Objects::BeginSession();
}

void Img2PdfUnInitialize() {
  Objects::EndSession();
}

TImg2Pdf* Img2PdfCreateObject() {
  return GuardedWithoutObject<Img2PdfErrors>(
      [] { return Objects::Add(std::make_unique<TImg2Pdf>()); });
}

int Img2PdfDestroyObject(TImg2Pdf* object) {
  return Objects::Destroy(object) ? 1 : 0;
}

std::int32_t Img2PdfGetErrorCode(TImg2Pdf* object) {
  return LastErrorOf<Img2PdfErrors>(object);
}

int Img2PdfCreateW(TImg2Pdf* object, const platform::WidePath& path,
                   const std::wstring& user_password, const std::wstring& owner_password,
                   std::uint32_t permissions) {
  return Guarded<Img2PdfErrors>(
      object, [&] { return Create(*object, path, user_password, owner_password, permissions); });
}

int Img2PdfSetAdjustPage(TImg2Pdf* object, int adjust) {
  return Guarded<Img2PdfErrors>(object, [&] { object->settings.is_adjusted = adjust != 0; });
}

int Img2PdfSetPageSize(TImg2Pdf* object, double width, double height) {
  return Guarded<Img2PdfErrors>(object, [&] {
    Require(width > 0 && height > 0 && std::isfinite(width) && std::isfinite(height));
    object->settings.is_adjusted = false;
    object->settings.width = width;
    object->settings.height = height;
  });
}

int Img2PdfSetCenterImage(TImg2Pdf* object, int center) {
  return Guarded<Img2PdfErrors>(object, [&] { object->settings.is_centered = center != 0; });
}

int Img2PdfSetFitImage(TImg2Pdf* object, int fit) {
  return Guarded<Img2PdfErrors>(object, [&] { object->settings.is_fitted = fit != 0; });
}

int Img2PdfSetOrientation(TImg2Pdf* object, std::int32_t orientation) {
  return Guarded<Img2PdfErrors>(object, [&] {
    Require(ValidOrientation(orientation) == orientation);
    object->settings.orientation = orientation;
  });
}

int Img2PdfSetUpright(TImg2Pdf* object, int upright) {
  return Guarded<Img2PdfErrors>(object, [&] { object->settings.makes_upright = upright != 0; });
}

int Img2PdfSetBorderSize(TImg2Pdf* object, float border) {
  return Guarded<Img2PdfErrors>(object, [&] {
    Require(std::abs(border) <= img2pdf::limits::kMaxBorder);
    object->settings.border = border;
  });
}

int Img2PdfCreatePageFromImageW(TImg2Pdf* object, const platform::WidePath& path) {
  return Guarded<Img2PdfErrors>(object, [&] { return AddPages(*object, path); });
}

int Img2PdfSetReport(TImg2Pdf* object, TImg2PdfReport report, void* handle) {
  return Guarded<Img2PdfErrors>(object, [&] {
    object->report = report;
    object->report_handle = handle;
  });
}

int Img2PdfClose(TImg2Pdf* object) {
  return Guarded<Img2PdfErrors>(object, [&] {
    Require(object->document != nullptr);
    const std::unique_ptr<ImageDocument> document = std::move(object->document);
    document->Close();
  });
}

}  // namespace TarnixTools::engines
