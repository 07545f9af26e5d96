#include "engines/toolbox/Toolbox.h"

#include <utility>

#include "engines/toolbox/Guard.h"
#include "engines/toolbox/Handles.h"
#include "foundation/Utf8.h"

namespace TarnixTools::engines {

using namespace toolbox;

namespace {

thread_local ToolboxError last_error = kToolboxNoError;
thread_local std::uint32_t last_error_character = 0;

}  // namespace

void toolbox::SetLastError(ToolboxError code) noexcept {
  last_error = code;
}

void toolbox::SetLastErrorCharacter(std::uint32_t code_point) noexcept {
  last_error_character = code_point;
}

void PdfInitialize() {}

std::int32_t PdfGetLastError() {
  return last_error;
}

std::uint32_t PdfGetLastErrorCharacter() {
  return last_error_character;
}

TPdfDocument* PdfDocumentOpenA(const TPdfStream* stream, const char* password) {
  return Guarded([&] {
    Require(stream != nullptr);
    auto document = std::make_unique<TPdfDocument>();
    document->source =
        std::make_unique<SourceDocument>(*stream, password == nullptr ? "" : password);
    document->stream = *stream;
    return document.release();
  });
}

int PdfIsPasswordEmptyW(const std::wstring& password) {
  return Guarded([&] { return pdf::Security::Protects(WideToUtf8(password)) ? 0 : 1; });
}

TPdfDocument* PdfDocumentCreateW(const TPdfStream* stream, std::int32_t,
                                 const TPdfEncryption* encryption) {
  return Guarded([&] {
    Require(stream != nullptr);
    auto document = std::make_unique<TPdfDocument>();
    document->target = std::make_unique<TargetDocument>(*stream, encryption);
    document->stream = *stream;
    return document.release();
  });
}

int PdfClose(TPdfDocument* document) {
  if (document == nullptr) {
    return 0;
  }
  const std::unique_ptr<TPdfDocument> owned(document);
  const int result = Guarded([&] {
    if (owned->source != nullptr) {
      owned->source->ServeWaiting();
    }
    if (owned->target != nullptr) {
      owned->target->Finish();
      owned->target->TellReport();
    }
  });
  owned->source.reset();
  owned->target.reset();
  owned->stream.release(owned->stream.handle);
  return result;
}

int PdfDocumentDiscard(TPdfDocument* document) {
  if (document == nullptr) {
    return 0;
  }
  const std::unique_ptr<TPdfDocument> owned(document);
  owned->target.reset();
  owned->source.reset();
  owned->stream.release(owned->stream.handle);
  return 1;
}

int PdfClose(TPdfPageList* page_list) {
  return Release(page_list);
}

int PdfClose(TPdfPage* page) {
  return Release(page);
}

int PdfClose(TPdfMetadata* metadata) {
  return Release(metadata);
}

int PdfDocumentSetReport(TPdfDocument* target, TPdfReportCallback callback, void* context) {
  return Guarded({target}, [&] {
    Require(target->target != nullptr);
    target->target->SetReportCallback(callback, context);
  });
}

int PdfDocumentSetOutlineHeading(TPdfDocument* target, TPdfDocument* source, const char* title) {
  return Guarded({target, source, title}, [&] {
    Require(target->target != nullptr && source->source != nullptr);
    target->target->SetOutlineHeading(*source->source, title);
  });
}

int PdfDocumentIsEncrypted(TPdfDocument* document) {
  return document != nullptr && document->source != nullptr &&
                 document->source->document().is_encrypted()
             ? 1
             : 0;
}

TPdfPageList* PdfDocumentGetPages(TPdfDocument* document) {
  return Guarded({document}, [&] {
    if (document->source != nullptr) {
      document->source->pages();
    }
    return std::make_unique<TPdfPageList>(TPdfPageList{document}).release();
  });
}

std::int32_t PdfPageListGetCount(TPdfPageList* page_list) {
  return Guarded({page_list}, [&] {
    const TPdfDocument& document = *page_list->document;
    return document.target != nullptr
               ? document.target->page_count()
               : static_cast<std::int32_t>(document.source->pages().pages().size());
  });
}

TPdfPage* PdfPageListGet(TPdfPageList* page_list, std::int32_t index) {
  return Guarded({page_list}, [&] {
    SourceDocument* source = page_list->document->source.get();
    Require(source != nullptr && index >= 0 &&
            static_cast<std::size_t>(index) < source->pages().pages().size());
    return std::make_unique<TPdfPage>(
               TPdfPage{source, static_cast<std::uint32_t>(index), nullptr, 0, 0})
        .release();
  });
}

int PdfPageListAppend(TPdfPageList* page_list, TPdfPage* page) {
  return Guarded({page_list, page}, [&] {
    TargetDocument* target = page_list->document->target.get();
    Require(target != nullptr && page->target == target);
    target->AppendPage(*page->source, page->index, page->rotation, page->options,
                       page->content.get());
  });
}

TPdfPage* PdfDocumentCopyPage(TPdfDocument* target, TPdfPage* page, std::int32_t options) {
  return Guarded({target, page}, [&] {
    Require(target->target != nullptr);
    return std::make_unique<TPdfPage>(
               TPdfPage{page->source, page->index, target->target.get(), page->rotation, options})
        .release();
  });
}

int PdfPageRotate(TPdfPage* page, std::int32_t angle) {
  return Guarded({page}, [&] {
    Require(page->target != nullptr && angle % 90 == 0);
    page->rotation = (page->rotation + angle % 360) % 360;
  });
}

}  // namespace TarnixTools::engines
