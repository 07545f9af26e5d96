#include "PdfTransformTask.h"

#include "PdfException.h"

namespace TarnixTools {

PdfTransformTask::PdfTransformTask(const PdfDoc& document) : PdfTask(document) {
  SetDefaults();
}

PdfTransformTask::PdfTransformTask(const PdfDoc& document,
                                   const std::vector<PdfTransformation>& transformations)
    : PdfTask(document) {
  SetDefaults();
  transformations_ = transformations;
}

PdfTransformTask::PdfTransformTask(const PdfTransformTask& other) = default;
PdfTransformTask::PdfTransformTask(PdfTransformTask&& other) noexcept = default;
PdfTransformTask& PdfTransformTask::operator=(const PdfTransformTask& other) = default;
PdfTransformTask& PdfTransformTask::operator=(PdfTransformTask&& other) noexcept = default;
PdfTransformTask::~PdfTransformTask() = default;

void PdfTransformTask::AddTransformation(const PdfTransformation& transformation) {
  transformations_.push_back(transformation);
}

void PdfTransformTask::ResetTransformations() {
  transformations_.clear();
}

int PdfTransformTask::GetTransformationsNum() const {
  return static_cast<int>(transformations_.size());
}

PdfTransformation& PdfTransformTask::GetTransformation(int index) {
  if (index < 0 || index >= GetTransformationsNum()) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "Unexpected transformation ID [%d], only [%d] transformations defined",
                       index, GetTransformationsNum());
  }
  return transformations_[static_cast<std::size_t>(index)];
}

void PdfTransformTask::SetOutName(const std::string& name) {
  if (!name.empty()) {
    out_name_ = name;
  }
}

void PdfTransformTask::Execute() {
  RunJob("transform", [this] { Run(); });
}

void PdfTransformTask::Run() {
  if (GetPdfDocsNum() != 1) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "Unexpected PDF docs number [%d], expected single doc at task",
                       GetPdfDocsNum());
  }
  if (transformations_.empty()) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "Unexpected PDF transformations number [%d], expected at least one",
                       GetTransformationsNum());
  }
  PdfDoc document = InputDocument();
  FillOutputPath();
  document.Transform(transformations_, output_path_ + out_name_, out_password_);
  written_files_ = {output_path_ + out_name_};
  report_ = document.GetReport();
}

void PdfTransformTask::SetDefaults() {
  ResetTransformations();
}

}  // namespace TarnixTools
