#include "PdfStampTextTask.h"

#include "PdfException.h"

namespace TarnixTools {

PdfStampTextTask::PdfStampTextTask(const PdfDoc& document)
    : PdfDecorationTask(document, PdfTransformType::StampText) {
  SetDefaults();
}

PdfStampTextTask::PdfStampTextTask(const PdfDoc& document, const std::string& out_name)
    : PdfStampTextTask(document) {
  SetOutName(out_name);
}

PdfStampTextTask::PdfStampTextTask(const PdfStampTextTask& other) = default;
PdfStampTextTask::PdfStampTextTask(PdfStampTextTask&& other) noexcept = default;
PdfStampTextTask& PdfStampTextTask::operator=(const PdfStampTextTask& other) = default;
PdfStampTextTask& PdfStampTextTask::operator=(PdfStampTextTask&& other) noexcept = default;
PdfStampTextTask::~PdfStampTextTask() = default;

void PdfStampTextTask::Execute() {
  RunJob("stamp text", [this] { Run(); });
}

void PdfStampTextTask::Run() {
  RequireSingleDocument();
  if (GetInputText().empty()) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0, "Missing input text at task");
  }
  Decorate();
}

void PdfStampTextTask::SetDefaults() {
  SetDecorationDefaults("document_after_text_stamp.pdf");
  SetTextAlignment(PdfTransformTextAlignment::Left);
}

}  // namespace TarnixTools
