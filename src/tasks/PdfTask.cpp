#include "PdfTask.h"

#include <algorithm>
#include <utility>

#include "PdfException.h"
#include "foundation/JobWatch.h"

namespace TarnixTools {

PdfTask::PdfTask() = default;

PdfTask::PdfTask(const PdfDoc& document) : documents_{document} {}

PdfTask::PdfTask(const PdfDoc& document, const std::string& output_path) : documents_{document} {
  SetOutputPath(output_path);
}

PdfTask::PdfTask(const std::list<PdfDoc>& documents) : documents_(documents) {}

PdfTask::PdfTask(const std::list<PdfDoc>& documents, const std::string& output_path)
    : documents_(documents) {
  SetOutputPath(output_path);
}

PdfTask::PdfTask(const PdfTask& other) = default;
PdfTask::PdfTask(PdfTask&& other) noexcept = default;
PdfTask& PdfTask::operator=(const PdfTask& other) = default;
PdfTask& PdfTask::operator=(PdfTask&& other) noexcept = default;
PdfTask::~PdfTask() = default;

void PdfTask::AddPdfDoc(const PdfDoc& document) {
  documents_.push_back(document);
}

void PdfTask::ClearPdfDocs() {
  documents_.clear();
}

void PdfTask::SetPdfDocs(const std::list<PdfDoc>& documents) {
  if (&documents != &documents_) {
    documents_ = documents;
  }
}

int PdfTask::GetPdfDocsNum() const {
  return static_cast<int>(documents_.size());
}

void PdfTask::SetOutputPath(const std::string& path) {
  output_path_ = path;
  std::replace(output_path_.begin(), output_path_.end(), '/', '\\');
  if (!output_path_.ends_with('\\')) {
    output_path_ += '\\';
  }
}

void PdfTask::SetOutPassword(const std::string& password) {
  out_password_ = password;
}

void PdfTask::SetKeepMetadata(bool keep) {
  keep_metadata_ = keep;
}

void PdfTask::SetProgress(PdfProgress progress) {
  progress_ = std::move(progress);
}

void PdfTask::Execute() {}

// What has failed because the host had the job stop is told as just that.
void PdfTask::RunJob(const char* name, const std::function<void()>& work) {
  if (JobWatch::IsBusy(this)) {
    throw PdfException(PdfExceptionCode::InternalError, 0,
                       "Unable to execute a task that is being executed");
  }
  report_.Clear();
  written_files_.clear();
  const JobWatch watch(progress_, name, this);
  try {
    work();
  } catch (...) {
    watch.ThrowIfCancelled();
    throw;
  }
  watch.ThrowWhatHostThrew();
}

void PdfTask::FillOutputPath() {
  if (output_path_.empty()) {
    output_path_ = documents_.front().GetDocDirectory();
  }
}

PdfDoc PdfTask::InputDocument() const {
  PdfDoc document = documents_.front();
  document.SetKeepMetadata(keep_metadata_ || document.GetKeepMetadata());
  return document;
}

}  // namespace TarnixTools
