#include "PdfProtectTask.h"

#include "PdfException.h"
#include "engines/toolbox/Toolbox.h"

namespace TarnixTools {

PdfProtectTask::PdfProtectTask(const PdfDoc& document) : PdfTask(document) {
  SetDefaults();
}

PdfProtectTask::PdfProtectTask(const PdfDoc& document, const std::string& password)
    : PdfTask(document) {
  SetDefaults();
  password_ = password;
}

PdfProtectTask::PdfProtectTask(const PdfProtectTask& other) = default;
PdfProtectTask::PdfProtectTask(PdfProtectTask&& other) noexcept = default;
PdfProtectTask& PdfProtectTask::operator=(const PdfProtectTask& other) = default;
PdfProtectTask& PdfProtectTask::operator=(PdfProtectTask&& other) noexcept = default;
PdfProtectTask::~PdfProtectTask() = default;

void PdfProtectTask::SetPassword(const std::string& password) {
  password_ = password;
}

void PdfProtectTask::SetOwnerPassword(const std::string& password) {
  owner_password_ = password;
}

void PdfProtectTask::SetOutPrefix(const std::string& prefix) {
  if (!prefix.empty()) {
    out_prefix_ = prefix;
  }
}

void PdfProtectTask::SetOutPdfName(const std::string& name) {
  out_pdf_name_ = name;
}

void PdfProtectTask::Execute() {
  RunJob("protect", [this] { Run(); });
}

void PdfProtectTask::Run() {
  if (GetPdfDocsNum() != 1) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "Invalid number of PDF docs [%d] (1 expected)", GetPdfDocsNum());
  }
  // A password of characters that its preparation drops would protect nothing.
  const std::string& needed = owner_password_.empty() ? password_ : owner_password_;
  if (engines::PdfIsPasswordEmptyW(PdfDoc::Utf8ToWs(needed)) != 0) {
    throw PdfException(PdfExceptionCode::PasswordError, 0,
                       "No password provided to protect PDF doc");
  }
  PdfDoc document = InputDocument();
  document.Lock(password_, owner_password_, permissions_, OutputFile());
  written_files_ = {OutputFile()};
  report_ = document.GetReport();
}

void PdfProtectTask::SetDefaults() {
  out_prefix_ = "locked";
  password_.clear();
  reserved_ = 0;
}

std::string PdfProtectTask::OutputFile() const {
  if (!out_pdf_name_.empty()) {
    return output_path_ + out_pdf_name_;
  }
  return output_path_ + out_prefix_ + "_" + documents_.front().GetDocName(false) + ".pdf";
}

}  // namespace TarnixTools
