// The entry of the conversion library, and what it gives.
#include <memory>
#include <stdexcept>

#include "engines/office/Office.h"
#include "engines/office/loading/HostServices.h"
#include "engines/office/pages/DocumentReader.h"
#include "engines/office/sdk/Conversion.h"
#include "engines/office/sdk/ConversionLog.h"
#include "engines/office/sdk/PageRangeText.h"
#include "foundation/Platform.h"
#include "foundation/Utf8.h"

namespace TarnixTools::engines::office {

namespace {

class OpenedFile : public ConversionSdk::OpenedDocument {
 public:
  explicit OpenedFile(std::unique_ptr<DocumentReader> reader) : reader_(std::move(reader)) {}

  std::int32_t GetPageCount() override { return static_cast<std::int32_t>(reader_->page_count()); }

  bool IsScanned(std::int32_t page_index) override {
    return reader_->IsScanned(static_cast<std::size_t>(page_index));
  }

 private:
  std::unique_ptr<DocumentReader> reader_;
};

class Services : public ConversionSdk::ConversionServices {
 public:
  std::unique_ptr<ConversionSdk::OpenedDocument> OpenDocument(
      const std::wstring& path, const std::wstring& password) override {
    return std::make_unique<OpenedFile>(
        DocumentReader::Open(platform::WidePath(WideToUtf8(path)), WideToUtf8(password)));
  }

  bool IsPageRange(const std::wstring& text) override { return ReadPageRange(text).has_value(); }

  std::int32_t Convert(const ConversionSdk::ConversionRequest& request,
                       ConversionSdk::ConversionState& state,
                       ConversionSdk::ConversionEvents& events) noexcept override {
    return office::Convert(request, state, events, log_);
  }

  void SetLogFilename(const std::wstring& path) override { log_.SetFile(WideToUtf8(path)); }

 private:
  ConversionLog log_;
};

}  // namespace

}  // namespace TarnixTools::engines::office

// Never destroyed: threads may still use it while the process ends.
extern "C" __attribute__((visibility("default"))) ConversionSdk::ConversionServices*
TarnixOfficeServices(std::int32_t version, const TarnixTools::engines::office::HostServices& host) {
  namespace office = TarnixTools::engines::office;
  if (version != office::kConversionLibraryVersion) {
    return nullptr;
  }
  TarnixTools::engines::PdfiumLock::Use(host.pdfium);
  static auto* const services = new office::Services();
  return services;
}
