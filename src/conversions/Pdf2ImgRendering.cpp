// Pdf2ImgTask: images of pages.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "Pdf2ImgTask.h"
#include "PdfException.h"
#include "PdfReport.h"
#include "conversions/RasteriserHandles.h"
#include "engines/rasteriser/ErrorCodes.h"
#include "engines/rasteriser/Rasteriser.h"
#include "foundation/JobWatch.h"
#include "foundation/Platform.h"
#include "foundation/Utf8.h"

namespace TarnixTools {
namespace {

constexpr double kMinDpi = 0.5;
constexpr double kMaxDpi = 65535;  // of the header of JPEG files
constexpr std::size_t kPageNumberDigits = 4;

// Images that could not be written are a failure of the job; pages that could not be drawn are
// told.
struct PageTroubles {
  static void Note(void* handle, std::int32_t page_number, std::uint32_t error) {
    auto& troubles = *static_cast<PageTroubles*>(handle);
    if (error == engines::kPdf2ImgWriteError) {
      troubles.unwritten_pages.push_back(page_number);
    }
    const char* const what = error == engines::kPdf2ImgPartialPageError
                                 ? "a part of a page cannot be drawn"
                                 : "a page cannot be drawn";
    char reason[64];
    std::snprintf(reason, sizeof reason, "%s (error 0x%08X)", what, static_cast<unsigned>(error));
    troubles.report.Add({.kind = PdfReportKind::Damage,
                         .outcome = PdfReportOutcome::Dropped,
                         .count = 1,
                         .page = page_number,
                         .reason = reason,
                         .source = troubles.path});
  }

  std::string path;  // of the document
  PdfReport report;
  std::vector<int> unwritten_pages;
};

}  // namespace

// The pages of one document.
class Pdf2ImgTask::Rendering {
 public:
  Rendering(Pdf2ImgTask& task, const PdfDoc& document)
      : task_(&task),
        document_(&document),
        troubles_{.path = document.GetPath(), .report = {}, .unwritten_pages = {}},
        object_(engines::Pdf2ImgCreateObject()) {}

  void Run() {
    Open();
    const int page_count = engines::Pdf2ImgGetPageCount(object_.get());
    if (page_count <= 0) {
      throw PdfException(PdfExceptionCode::NoPages, 0, "None page found at PDF");
    }
    SetOptions();
    if (task_->output_path_.empty()) {
      task_->output_path_ = document_->GetDocDirectory();
    }
    try {
      ConvertPages(page_count);
    } catch (...) {
      Close();
      throw;
    }
    Close();
    task_->report_.Add(troubles_.report);
    RequireWritten();
  }

 private:
  void Open() const {
    if (object_ == nullptr) {
      const std::uint32_t code = engines::Pdf2ImgGetErrorCode(nullptr);
      throw PdfException(PdfExceptionCode::EngineError, static_cast<std::int32_t>(code),
                         "Unable to initialize image object. Error: [0x%08X]", code);
    }
    const std::string& path = document_->GetPath();
    const std::string& password = document_->GetPassword();
    if (engines::Pdf2ImgOpenW(object_.get(), platform::WidePath(path), Utf8ToWide(password)) != 0) {
      return;
    }
    const std::uint32_t code = engines::Pdf2ImgGetErrorCode(object_.get());
    if (code == engines::kPdf2ImgPasswordError) {
      throw PdfException(PdfExceptionCode::PasswordError, 0,
                         "Invalid password [%s] for PDF file [%s]", password.c_str(), path.c_str());
    }
    throw PdfException(PdfExceptionCode::EngineError, static_cast<std::int32_t>(code),
                       "Unable to open PDF file [%s] (error [0x%08X])", path.c_str(), code);
  }

  void SetOptions() {
    SetResolution();
    engines::Pdf2ImgSetImageQuality(object_.get(), task_->quality_);
    engines::Pdf2ImgSetCompression(object_.get(), task_->img_format_ == Pdf2ImgPng
                                                      ? engines::kPdf2ImgPng
                                                      : engines::kPdf2ImgJpeg);
    engines::Pdf2ImgSetGray(object_.get(), task_->gray_ ? 1 : 0);
    SetImageSize();
    engines::Pdf2ImgSetReport(object_.get(), &PageTroubles::Note, &troubles_);
  }

  // The engine would say so of the first image only, as if that could not be made.
  void SetResolution() const {
    if (engines::Pdf2ImgSetDPI(object_.get(), task_->dpi_) == 0) {
      throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                         "Invalid img resolution [%g] (expected [%g-%g] value)",
                         static_cast<double>(task_->dpi_), kMinDpi, kMaxDpi);
    }
  }

  void SetImageSize() const {
    if (!task_->out_img_size_set_) {
      return;
    }
    const int width = task_->out_img_width_;
    const int height = task_->out_img_height_;
    if (width <= 0 || height <= 0) {
      throw PdfException(PdfExceptionCode::InvalidParameter, 0, "Invalid img dimensions [%d x %d]",
                         width, height);
    }
    switch (task_->img_size_units_) {
      case Pdf2ImgPixels:
        engines::Pdf2ImgSetBitmapDimensions(object_.get(), width, height);
        break;
      case Pdf2ImgPageUnits:
        engines::Pdf2ImgSetPageSize(object_.get(), static_cast<float>(width),
                                    static_cast<float>(height));
        break;
      default:
        throw PdfException(PdfExceptionCode::InternalError, 0, "Invalid img size units [%d]",
                           static_cast<int>(task_->img_size_units_));
    }
    engines::Pdf2ImgSetFitPage(object_.get(), 1);
  }

  void ConvertPages(int page_count) {
    JobSteps steps(page_count);
    for (int page_number = 1; page_number <= page_count; ++page_number) {
      if (task_->IsPageExported(page_number)) {
        ConvertPage(page_number);
      }
      steps.Done();
    }
  }

  // Only now it is known which images have been written.
  void Close() {
    engines::Pdf2ImgClose(object_.get());
    const std::vector<int>& unwritten = troubles_.unwritten_pages;
    for (const auto& [page_number, path] : images_) {
      if (std::find(unwritten.begin(), unwritten.end(), page_number) == unwritten.end()) {
        task_->written_files_.push_back(path);
      }
    }
  }

  void ConvertPage(int page_number) {
    const std::string name = task_->GetNextImgName(document_->GetDocName(false), page_number);
    if (engines::Pdf2ImgCreateImageW(object_.get(), platform::WidePath(name)) == 0) {
      const std::uint32_t code = engines::Pdf2ImgGetErrorCode(object_.get());
      throw PdfException(PdfExceptionCode::EngineError, static_cast<std::int32_t>(code),
                         "Unable to create image at path [%s] object. Error: [0x%08X]",
                         name.c_str(), code);
    }
    engines::Pdf2ImgRenderPage(object_.get(), page_number);
    if (engines::Pdf2ImgCloseImage(object_.get()) != 0) {
      task_->images_.push_back(name);
      images_.emplace_back(page_number, name);
    }
  }

  void RequireWritten() const {
    if (troubles_.unwritten_pages.empty()) {
      return;
    }
    const std::string name =
        task_->GetNextImgName(document_->GetDocName(false), troubles_.unwritten_pages.front());
    throw PdfException(PdfExceptionCode::EngineError,
                       static_cast<std::int32_t>(engines::kPdf2ImgWriteError),
                       "Unable to write image at path [%s]. Error: [0x%08X]", name.c_str(),
                       static_cast<unsigned>(engines::kPdf2ImgWriteError));
  }

  Pdf2ImgTask* task_;
  const PdfDoc* document_;
  PageTroubles troubles_;  // outlives the object, which tells it what failed
  Pdf2ImgPtr object_;
  std::vector<std::pair<int, std::string>> images_;  // of pages by number
};

void Pdf2ImgTask::ConvertPages2Img() {
  const RasteriserSession session;
  JobSteps steps(GetPdfDocsNum());
  for (const PdfDoc& document : documents_) {
    const PdfDoc copy(document);
    Rendering(*this, copy).Run();
    steps.Done();
  }
}

std::string Pdf2ImgTask::GetNextImgName(const std::string& doc_name, int page_number) const {
  if (!name_pattern_.empty()) {
    return PatternName(doc_name, page_number);
  }
  // A document named without a directory is in the current one, not in the root.
  std::string name = output_path_.empty() ? std::string() : output_path_ + '\\';
  if (!img_prefix_.empty()) {
    name += img_prefix_ + '-';
  }
  if (doc_name_in_img_) {
    name += doc_name + '-';
  }
  const std::string digits = std::to_string(page_number);
  // Names have no room for page 10,000: the length wraps around, and the string refuses it.
  return name + "page-" + std::string(kPageNumberDigits - digits.size(), '0') + digits +
         (img_format_ == Pdf2ImgPng ? ".png" : ".jpg");
}

}  // namespace TarnixTools
