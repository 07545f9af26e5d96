#include "Pdf2PdfATask.h"

#include "PdfException.h"

namespace TarnixTools {

Pdf2PdfATask::Pdf2PdfATask(const PdfDoc& document)
    : PdfTask(document), transformation_(PdfTransformType::PdfA) {
  SetDefaults();
}

Pdf2PdfATask::Pdf2PdfATask(const PdfDoc& document, const std::string& out_name)
    : PdfTask(document), transformation_(PdfTransformType::PdfA) {
  SetDefaults();
  SetOutName(out_name);
}

Pdf2PdfATask::Pdf2PdfATask(const Pdf2PdfATask& other) = default;
Pdf2PdfATask::Pdf2PdfATask(Pdf2PdfATask&& other) noexcept = default;
Pdf2PdfATask& Pdf2PdfATask::operator=(const Pdf2PdfATask& other) = default;
Pdf2PdfATask& Pdf2PdfATask::operator=(Pdf2PdfATask&& other) noexcept = default;
Pdf2PdfATask::~Pdf2PdfATask() = default;

void Pdf2PdfATask::SetOutName(const std::string& name) {
  if (!name.empty()) {
    out_name_ = name;
  }
}

void Pdf2PdfATask::Execute() {
  RunJob("PDF/A", [this] { Run(); });
}

void Pdf2PdfATask::Run() {
  if (GetPdfDocsNum() != 1) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "Unexpected PDF docs number [%d], expected single doc at task",
                       GetPdfDocsNum());
  }
  PdfDoc document = InputDocument();
  FillOutputPath();
  try {
    document.Transform(transformation_, output_path_ + out_name_, out_password_);
  } catch (...) {
    report_ = document.GetReport();  // what stands in the way
    throw;
  }
  written_files_ = {output_path_ + out_name_};
  report_ = document.GetReport();
}

void Pdf2PdfATask::SetDefaults() {
  out_name_ = "output_pdfa_doc.pdf";
  transformation_.SetCompliance(PdfCompliance::None);
}

}  // namespace TarnixTools
