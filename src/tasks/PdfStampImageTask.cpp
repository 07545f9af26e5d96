#include "PdfStampImageTask.h"

#include "PdfException.h"
#include "foundation/Platform.h"

namespace TarnixTools {

PdfStampImageTask::PdfStampImageTask(const PdfDoc& document)
    : PdfDecorationTask(document, PdfTransformType::StampImage) {
  SetDefaults();
}

PdfStampImageTask::PdfStampImageTask(const PdfDoc& document, const std::string& out_name)
    : PdfStampImageTask(document) {
  SetOutName(out_name);
}

PdfStampImageTask::PdfStampImageTask(const PdfStampImageTask& other) = default;
PdfStampImageTask::PdfStampImageTask(PdfStampImageTask&& other) noexcept = default;
PdfStampImageTask& PdfStampImageTask::operator=(const PdfStampImageTask& other) = default;
PdfStampImageTask& PdfStampImageTask::operator=(PdfStampImageTask&& other) noexcept = default;
PdfStampImageTask::~PdfStampImageTask() = default;

void PdfStampImageTask::Execute() {
  RunJob("stamp image", [this] { Run(); });
}

void PdfStampImageTask::Run() {
  RequireSingleDocument();
  const std::string& path = GetInputImage();
  if (path.empty()) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0, "Missing input image path at task");
  }
  if (platform::OpenForReading(path) == nullptr) {
    throw PdfException(PdfExceptionCode::FileNotFound, 0, "Image file not found: %s", path.c_str());
  }
  Decorate();
}

void PdfStampImageTask::SetDefaults() {
  SetDecorationDefaults("document_after_image_stamp.pdf");
}

}  // namespace TarnixTools
