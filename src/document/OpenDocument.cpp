#include "document/OpenDocument.h"

#include <cerrno>
#include <utility>

#include "document/ReportCollector.h"
#include "engines/pdfa/PdfA.h"

namespace TarnixTools {

using engines::PdfClose;
using engines::PdfDocumentCreateW;
using engines::PdfDocumentDiscard;
using engines::PdfDocumentOpenA;
using engines::PdfGetLastError;

std::shared_ptr<OpenDocument> OpenDocument::Read(platform::FilePtr file,
                                                 const std::string& password, std::int32_t& error) {
  const std::shared_ptr<OpenDocument> opened(new OpenDocument(std::move(file)));
  const engines::TPdfStream stream = opened->stream_.Descriptor();
  opened->document_ = PdfDocumentOpenA(&stream, password.c_str());
  if (opened->document_ == nullptr) {
    error = PdfGetLastError();
    return nullptr;
  }
  return opened;
}

std::shared_ptr<OpenDocument> OpenDocument::Create(platform::OutputFile output,
                                                   const engines::TPdfEncryption* encryption,
                                                   std::int32_t& error) {
  const std::shared_ptr<OpenDocument> created(new OpenDocument(output.TakeStream()));
  created->output_ = std::move(output);
  const engines::TPdfStream stream = created->stream_.Descriptor();
  created->document_ = PdfDocumentCreateW(&stream, 0, encryption);
  if (created->document_ == nullptr) {
    error = PdfGetLastError();
    return nullptr;
  }
  CollectReport(created->document_, created->report_);
  std::FILE* file = created->stream_.File();
  if (platform::Tell(file) >= 0) {  // what goes into a pipe cannot be looked at again
    engines::PdfDocumentSetClaimProof(created->document_, &engines::PdfValidatorProveClaim, file);
  }
  return created;
}

OpenDocument::~OpenDocument() {
  Discard();
}

std::optional<OpenDocument::Failure> OpenDocument::Close() {
  engines::TPdfDocument* document = std::exchange(document_, nullptr);
  if (document == nullptr) {
    return std::nullopt;
  }
  const bool complete = PdfClose(document) != 0;
  if (!output_) {
    return std::nullopt;  // nothing depends on how the reading of a file ended
  }
  Failure failure;
  if (!complete) {
    failure.engine_error = PdfGetLastError();
  } else if (stream_.CloseError() != 0) {
    failure.system_error = stream_.CloseError();
  } else if (output_->Commit()) {
    return std::nullopt;
  } else {
    failure.system_error = errno;
  }
  output_->Discard();
  return failure;
}

void OpenDocument::Discard() noexcept {
  engines::TPdfDocument* document = std::exchange(document_, nullptr);
  if (document != nullptr && output_) {
    PdfDocumentDiscard(document);
  } else if (document != nullptr) {
    PdfClose(document);
  }
  if (output_) {
    output_->Discard();
  }
}

}  // namespace TarnixTools
