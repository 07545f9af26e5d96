#include "engines/support/pdfium/PdfiumFile.h"

#include <algorithm>
#include <cstring>

namespace TarnixTools::engines {
namespace {

// PDFium reads a document in pieces of half a kilobyte, most of them near the one before: what is
// smaller than a quarter of this is taken from a window of this size.
constexpr std::size_t kWindowSize = std::size_t{32} << 10;

}  // namespace

PdfiumFile::PdfiumFile(const pdfium::Api& api, std::unique_ptr<pdf::ByteSource> source)
    : api_(&api), source_(std::move(source)), window_(new char[kWindowSize]) {
  access_ = {static_cast<unsigned long>(source_->Size()), &PdfiumFile::GetBlock, this};
}

std::unique_ptr<PdfiumFile> PdfiumFile::Open(PdfiumLock& pdfium,
                                             std::unique_ptr<pdf::ByteSource> source,
                                             const std::string& password, bool& needs_password) {
  needs_password = false;
  const pdfium::Api& api = *pdfium.operator->();
  std::unique_ptr<PdfiumFile> file(new PdfiumFile(api, std::move(source)));
  file->document_ = api.FPDF_LoadCustomDocument(&file->access_, password.c_str());
  if (file->document_ == nullptr) {
    needs_password = api.FPDF_GetLastError() == pdfium::kPasswordError;
    return nullptr;
  }
  file->page_count_ = api.FPDF_GetPageCount(file->document_);
  file->bytes_of_opening_ = file->bytes_read_;
  return file;
}

PdfiumFile::~PdfiumFile() {
  if (form_ != nullptr) {
    api_->FPDFDOC_ExitFormFillEnvironment(form_);
  }
  if (document_ != nullptr) {
    api_->FPDF_CloseDocument(document_);
  }
}

void PdfiumFile::OpenForm() {
  form_host_.version = 1;
  form_ = api_->FPDFDOC_InitFormFillEnvironment(document_, &form_host_);
  if (form_ != nullptr) {
    api_->FPDF_SetFormFieldHighlightAlpha(form_, 0);  // highlights are for those who fill it in
  }
}

pdfium::Page* PdfiumFile::LoadPage(int page_index) {
  pdfium::Page* page = api_->FPDF_LoadPage(document_, page_index);
  if (page != nullptr && form_ != nullptr) {
    api_->FORM_OnAfterLoadPage(page, form_);
  }
  return page;
}

void PdfiumFile::ClosePage(pdfium::Page* page) {
  if (form_ != nullptr) {
    api_->FORM_OnBeforeClosePage(page, form_);
  }
  api_->FPDF_ClosePage(page);
}

bool PdfiumFile::Draw(pdfium::Bitmap* bitmap, pdfium::Page* page, int left, int top, int width,
                      int height, int flags, const std::function<bool()>& stops) {
  // Called from C code, which nothing may be thrown through; what is asked throws nothing.
  const auto ask = [](pdfium::Pause* pause) noexcept {
    return (*static_cast<const std::function<bool()>*>(pause->handle))() ? 1 : 0;
  };
  pdfium::Pause pause{1, ask, const_cast<std::function<bool()>*>(&stops)};
  const int status =
      api_->FPDF_RenderPageBitmap_Start(bitmap, page, left, top, width, height, 0, flags, &pause);
  api_->FPDF_RenderPage_Close(page);
  if (status == pdfium::kRenderToBeContinued) {
    return false;
  }
  if (form_ != nullptr) {
    api_->FPDF_FFLDraw(form_, bitmap, page, left, top, width, height, 0, flags);
  }
  return true;
}

int PdfiumFile::GetBlock(void* handle, unsigned long position, unsigned char* buffer,
                         unsigned long size) {
  auto& file = *static_cast<PdfiumFile*>(handle);
  try {
    file.bytes_read_ += size;
    return file.Read(position, reinterpret_cast<char*>(buffer), size) ? 1 : 0;
  } catch (...) {
    return 0;
  }
}

bool PdfiumFile::Read(std::uint64_t position, char* buffer, std::size_t size) {
  if (size > kWindowSize / 4) {
    return source_->ReadAt(position, buffer, size) == size;
  }
  if (position < window_start_ || position + size > window_start_ + window_size_) {
    // Some of it lies before: tables and objects are also read backwards.
    window_start_ = position - std::min<std::uint64_t>(position, kWindowSize / 4);
    window_size_ = 0;
    window_size_ = source_->ReadAt(window_start_, window_.get(), kWindowSize);
  }
  if (position + size > window_start_ + window_size_) {
    return false;
  }
  std::memcpy(buffer, window_.get() + (position - window_start_), size);
  return true;
}

}  // namespace TarnixTools::engines
