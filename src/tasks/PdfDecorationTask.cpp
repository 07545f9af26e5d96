#include "PdfDecorationTask.h"

#include "PdfException.h"

namespace TarnixTools {

PdfDecorationTask::PdfDecorationTask(const PdfDoc& document, PdfTransformType type)
    : PdfTask(document), transformation_(type) {
  TargetAllPages();
}

PdfDecorationTask::PdfDecorationTask(const PdfDecorationTask& other) = default;
PdfDecorationTask::PdfDecorationTask(PdfDecorationTask&& other) noexcept = default;
PdfDecorationTask& PdfDecorationTask::operator=(const PdfDecorationTask& other) = default;
PdfDecorationTask& PdfDecorationTask::operator=(PdfDecorationTask&& other) noexcept = default;
PdfDecorationTask::~PdfDecorationTask() = default;

void PdfDecorationTask::TargetAllPages() {
  RequireSingleDocument();
  ChooseTargets();
  PdfDoc document = documents_.front();
  transformation_.AddTargetRange(PdfPageRange(1, document.GetPagesNum()));
}

void PdfDecorationTask::AddTargetPage(int page_number) {
  ChooseTargets();
  transformation_.AddTargetPage(page_number);
}

void PdfDecorationTask::AddTargetRange(const PdfPageRange& range) {
  ChooseTargets();
  transformation_.AddTargetRange(range);
}

void PdfDecorationTask::AddTargetPattern(const std::string& pattern) {
  ChooseTargets();
  transformation_.AddTargetPattern(pattern);
}

void PdfDecorationTask::ClearTargetPages() {
  transformation_.ClearTargetPages();
}

int PdfDecorationTask::GetTargetPagesNum() const {
  return transformation_.GetTargetPagesNum();
}

void PdfDecorationTask::SetOutName(const std::string& name) {
  if (!name.empty()) {
    out_name_ = name;
  }
}

void PdfDecorationTask::SetDecorationDefaults(const std::string& out_name) {
  out_name_ = out_name;
  targets_chosen_ = false;
}

void PdfDecorationTask::RequireSingleDocument() const {
  if (GetPdfDocsNum() != 1) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "Unexpected PDF docs number [%d], expected single doc at task",
                       GetPdfDocsNum());
  }
}

void PdfDecorationTask::Decorate() {
  PdfDoc document = InputDocument();
  FillOutputPath();
  document.Transform(transformation_, output_path_ + out_name_, out_password_);
  written_files_ = {output_path_ + out_name_};
  report_ = document.GetReport();
}

// The pages chosen first replace those that a new task targets.
void PdfDecorationTask::ChooseTargets() {
  if (!targets_chosen_) {
    transformation_.ClearTargetPages();
    targets_chosen_ = true;
  }
}

}  // namespace TarnixTools
