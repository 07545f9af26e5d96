#include "PdfPageNumberTask.h"

namespace TarnixTools {

PdfPageNumberTask::PdfPageNumberTask(const PdfDoc& document)
    : PdfDecorationTask(document, PdfTransformType::AddPageNumber) {
  SetDefaults();
}

PdfPageNumberTask::PdfPageNumberTask(const PdfDoc& document, const std::string& out_name)
    : PdfPageNumberTask(document) {
  SetOutName(out_name);
}

PdfPageNumberTask::PdfPageNumberTask(const PdfPageNumberTask& other) = default;
PdfPageNumberTask::PdfPageNumberTask(PdfPageNumberTask&& other) noexcept = default;
PdfPageNumberTask& PdfPageNumberTask::operator=(const PdfPageNumberTask& other) = default;
PdfPageNumberTask& PdfPageNumberTask::operator=(PdfPageNumberTask&& other) noexcept = default;
PdfPageNumberTask::~PdfPageNumberTask() = default;

void PdfPageNumberTask::Execute() {
  RunJob("number", [this] { Run(); });
}

void PdfPageNumberTask::Run() {
  RequireSingleDocument();
  Decorate();
}

void PdfPageNumberTask::SetDefaults() {
  SetDecorationDefaults("document_with_page_numbers.pdf");
  SetTextAlignment(PdfTransformTextAlignment::Center);
}

}  // namespace TarnixTools
