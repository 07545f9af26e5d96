// Pdf2ImgTask: images that pages hold.
#include <cstdint>
#include <iostream>
#include <string>

#include "Pdf2ImgTask.h"
#include "PdfException.h"
#include "PdfReport.h"
#include "document/ParserHandles.h"
#include "engines/parser/Parser.h"
#include "foundation/JobWatch.h"
#include "foundation/PageNumber.h"
#include "foundation/Platform.h"
#include "foundation/Utf8.h"

namespace TarnixTools {
namespace {

constexpr std::size_t kImageNumberDigits = 4;

const char* ExtensionOf(std::int32_t original) {
  switch (original) {
    case engines::kExpaOriginalJpx:
      return ".jp2";
    case engines::kExpaOriginalTiff:
      return ".tif";
    case engines::kExpaOriginalPng:
      return ".png";
    default:
      return ".jpg";
  }
}

// The name with another extension; one that has none gets it.
std::string WithExtension(const std::string& path, const char* extension) {
  const std::size_t dot = path.rfind('.');
  const std::size_t separator = path.rfind('\\');
  const bool has_one =
      dot != std::string::npos && (separator == std::string::npos || dot > separator);
  return (has_one ? path.substr(0, dot) : path) + extension;
}

std::string ImageName(int number) {
  return "img" + PaddedNumber(number, kImageNumberDigits) + ".jpg";
}

// Where the troubles of a document go.
struct Listener {
  PdfReport* report;
  const std::string* path;
};

void NoteTrouble(void* handle, std::int32_t page_number, engines::TExpaTrouble trouble) {
  const bool is_lost = trouble == engines::kExpaImageLost;
  const auto* listener = static_cast<const Listener*>(handle);
  listener->report->Add({.kind = PdfReportKind::Damage,
                         .outcome = is_lost ? PdfReportOutcome::Dropped : PdfReportOutcome::Kept,
                         .count = 1,
                         .page = page_number,
                         .reason = is_lost ? "nothing of an image can be read"
                                           : "part of an image cannot be read and is white",
                         .source = *listener->path});
}

}  // namespace

// The images of one document.
class Pdf2ImgTask::Extraction {
 public:
  Extraction(Pdf2ImgTask& task, const PdfDoc& document)
      : task_(&task),
        document_(&document),
        listener_{&task.report_, &document.GetPath()},
        handle_(engines::ExpaDocCreateObject()) {}

  void Run() {
    Open();
    engines::ExpaDocSetReport(handle_.get(), &NoteTrouble, &listener_);
    const int page_count = engines::ExpaDocGetPageCount(handle_.get());
    JobSteps steps(page_count);
    for (int page_number = 1; page_number <= page_count; ++page_number) {
      if (task_->IsPageExported(page_number)) {
        ExtractFromPage(page_number);
      }
      steps.Done();
    }
    handle_.reset();
    if (image_count_ == 0) {
      throw PdfException(PdfExceptionCode::NoImagesFound, 0, "No images found at PDF file [%s]",
                         document_->GetPath().c_str());
    }
  }

 private:
  void Open() const {
    if (handle_ == nullptr) {
      throw PdfException(PdfExceptionCode::EngineError, engines::ExpaDocGetLastError(nullptr),
                         "Unable to create PDF expa handler");
    }
    if (engines::ExpaDocOpenW(handle_.get(), platform::WidePath(document_->GetPath()),
                              Utf8ToWide(document_->GetPassword())) == 0) {
      throw PdfException(PdfExceptionCode::EngineError, engines::ExpaDocGetLastError(handle_.get()),
                         "Unable to open PDF file for images extraction");
    }
  }

  void ExtractFromPage(int page_number) {
    engines::ExpaDocSetPageNo(handle_.get(), page_number);
    engines::TExpaPage* page = engines::ExpaDocGetPage(handle_.get());
    engines::TExpaContent* content = engines::ExpaPageGetContent(page);
    engines::ExpaContentResetContent(content, 1);
    while (engines::ExpaContentGetNextImage(content) != 0) {
      engines::TExpaImage* image = engines::ExpaContentGetImage(content);
      const engines::TExpaMatrix* matrix =
          engines::ExpaGSGetCTM(engines::ExpaContentGetGraphicsState(content));
      engines::ExpaImageChangeOrientation(image, matrix->orientation);
      Save(image);
      JobWatch::StopIfCancelled();
    }
  }

  void Save(engines::TExpaImage* image) {
    if (task_->output_path_.empty()) {
      task_->output_path_ = document_->GetDocDirectory();
    }
    ++image_count_;
    const bool has_pattern = !task_->name_pattern_.empty();
    const std::string plain = has_pattern
                                  ? task_->PatternName(document_->GetDocName(false), image_count_)
                                  : task_->output_path_ + ImageName(image_count_);
    const std::string name =
        task_->store_original_
            ? WithExtension(plain, ExtensionOf(engines::ExpaImageGetOriginal(image)))
            : plain;
    std::cout << "Generating image: " << name;
    const bool is_stored =
        task_->store_original_
            ? engines::ExpaImageStoreOriginalW(image, platform::WidePath(name)) != 0
            : engines::ExpaImageStoreW(image, platform::WidePath(name), engines::kExpaJpeg) != 0;
    if (!is_stored) {
      throw PdfException(PdfExceptionCode::EngineError, engines::ExpaDocGetLastError(handle_.get()),
                         "Unable to save img from PDF [%s] into [%s]", document_->GetPath().c_str(),
                         name.c_str());
    }
    task_->images_.push_back(name);
    task_->written_files_.push_back(name);
  }

  Pdf2ImgTask* task_;
  const PdfDoc* document_;
  Listener listener_;  // outlives the handle, which tells it
  ExpaDocPtr handle_;
  int image_count_ = 0;
};

void Pdf2ImgTask::ExtractImages() {
  const ParserSession session;
  JobSteps steps(GetPdfDocsNum());
  for (const PdfDoc& document : documents_) {
    const PdfDoc copy(document);
    Extraction(*this, copy).Run();
    steps.Done();
  }
}

}  // namespace TarnixTools
