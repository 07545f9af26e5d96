#include "PdfUnlockTask.h"

#include "PdfException.h"

namespace TarnixTools {

PdfUnlockTask::PdfUnlockTask(const PdfDoc& document) : PdfTask(document) {
  SetDefaults();
}

PdfUnlockTask::PdfUnlockTask(const PdfDoc& document, const std::string& password)
    : PdfTask(document) {
  SetDefaults();
  password_ = password;
}

PdfUnlockTask::PdfUnlockTask(const PdfUnlockTask& other) = default;
PdfUnlockTask::PdfUnlockTask(PdfUnlockTask&& other) noexcept = default;
PdfUnlockTask& PdfUnlockTask::operator=(const PdfUnlockTask& other) = default;
PdfUnlockTask& PdfUnlockTask::operator=(PdfUnlockTask&& other) noexcept = default;
PdfUnlockTask::~PdfUnlockTask() = default;

void PdfUnlockTask::SetPassword(const std::string& password) {
  password_ = password;
}

void PdfUnlockTask::SetOutPrefix(const std::string& prefix) {
  if (!prefix.empty()) {
    out_prefix_ = prefix;
  }
}

void PdfUnlockTask::SetOutPdfName(const std::string& name) {
  out_pdf_name_ = name;
}

void PdfUnlockTask::Execute() {
  RunJob("unlock", [this] { Run(); });
}

void PdfUnlockTask::Run() {
  if (GetPdfDocsNum() != 1) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "Invalid number of PDF docs [%d] (1 expected)", GetPdfDocsNum());
  }
  if (PdfDoc::HasPassword(documents_.front().GetPath()) && password_.empty()) {
    throw PdfException(PdfExceptionCode::PasswordError, 0,
                       "PDF password required to unlock PDF doc");
  }
  PdfDoc document = InputDocument();
  document.UnLock(password_, OutputFile());
  written_files_ = {OutputFile()};
  report_ = document.GetReport();
}

void PdfUnlockTask::SetDefaults() {
  out_prefix_ = "unlocked";
  password_.clear();
  reserved_ = 0;
}

std::string PdfUnlockTask::OutputFile() const {
  if (!out_pdf_name_.empty()) {
    return output_path_ + out_pdf_name_;
  }
  return output_path_ + out_prefix_ + "_" + documents_.front().GetDocName(false) + ".pdf";
}

}  // namespace TarnixTools
