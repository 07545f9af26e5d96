#include "PdfRotateTask.h"

#include "PdfException.h"

namespace TarnixTools {
namespace {

void RequireAngle(PdfRotationAngle angle) {
  switch (angle) {
    case PdfRotationAngle::Rotate0:
    case PdfRotationAngle::Rotate90:
    case PdfRotationAngle::Rotate180:
    case PdfRotationAngle::Rotate270:
      return;
  }
  throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                     "Invalid rotation angle value configured [%d]", static_cast<int>(angle));
}

}  // namespace

PdfRotateTask::PdfRotateTask() {
  SetDefaults();
}

PdfRotateTask::PdfRotateTask(const PdfDoc& document) : PdfTask(document) {
  SetDefaults();
}

PdfRotateTask::PdfRotateTask(const PdfRotateTask& other) = default;
PdfRotateTask::PdfRotateTask(PdfRotateTask&& other) noexcept = default;
PdfRotateTask& PdfRotateTask::operator=(const PdfRotateTask& other) = default;
PdfRotateTask& PdfRotateTask::operator=(PdfRotateTask&& other) noexcept = default;
PdfRotateTask::~PdfRotateTask() = default;

void PdfRotateTask::SetInputDoc(const PdfDoc& document) {
  SetPdfDocs({document});
}

void PdfRotateTask::SetRotationAngle(PdfRotationAngle angle) {
  rotation_angle_ = angle;
}

void PdfRotateTask::SetPages(const std::set<int>& pages) {
  pages_ = pages;
}

void PdfRotateTask::SetOutName(const std::string& name) {
  if (!name.empty()) {
    out_name_ = name;
  }
}

void PdfRotateTask::Execute() {
  RunJob("rotate", [this] { Run(); });
}

void PdfRotateTask::Run() {
  if (GetPdfDocsNum() != 1) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "Unexpected PDF docs number [%d], expected single doc at task",
                       GetPdfDocsNum());
  }
  RequireAngle(rotation_angle_);
  PdfDoc document = InputDocument();
  const std::string path = output_path_ + out_name_;
  if (pages_.empty()) {
    document.Rotate(rotation_angle_, path, out_password_);
  } else {
    document.Rotate(rotation_angle_, pages_, path, out_password_);
  }
  written_files_ = {path};
  report_ = document.GetReport();
}

void PdfRotateTask::SetDefaults() {
  rotation_angle_ = PdfRotationAngle::Rotate0;
  out_name_ = "rotated_file.pdf";
}

}  // namespace TarnixTools
