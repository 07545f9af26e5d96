#include "PdfSplitTask.h"

#include "PdfException.h"

namespace TarnixTools {

PdfSplitTask::PdfSplitTask() {
  SetDefaults();
}

PdfSplitTask::PdfSplitTask(const PdfDoc& document) : PdfTask(document) {
  SetDefaults();
}

PdfSplitTask::PdfSplitTask(const PdfSplitTask& other) = default;
PdfSplitTask::PdfSplitTask(PdfSplitTask&& other) noexcept = default;
PdfSplitTask& PdfSplitTask::operator=(const PdfSplitTask& other) = default;
PdfSplitTask& PdfSplitTask::operator=(PdfSplitTask&& other) noexcept = default;
PdfSplitTask::~PdfSplitTask() = default;

void PdfSplitTask::SetSplitMode(PdfSplitMode mode) {
  split_mode_ = mode;
}

void PdfSplitTask::SetFixedSplitInterval(int interval) {
  fixed_split_interval_ = interval;
}

void PdfSplitTask::SetMergeAfter(bool merge_after) {
  merge_after_ = merge_after;
}

void PdfSplitTask::SetOutPrefix(const std::string& prefix) {
  if (!prefix.empty()) {
    out_prefix_ = prefix;
  }
}

void PdfSplitTask::AddSplitRange(const PdfPageRange& range) {
  split_ranges_.push_back(range);
}

void PdfSplitTask::ClearSplitRanges() {
  split_ranges_.clear();
}

void PdfSplitTask::Execute() {
  report_.Clear();
  if (GetPdfDocsNum() != 1) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "Unexpected PDF docs number [%d], expected single doc", GetPdfDocsNum());
  }
  switch (split_mode_) {
    case PdfSplitMode::Ranges:
      SplitRanges();
      return;
    case PdfSplitMode::FixedInterval:
      SplitFixedRange();
      return;
  }
  throw PdfException(PdfExceptionCode::InvalidParameter, 0, "Invalid PDF split mode [%d]",
                     static_cast<int>(split_mode_));
}

void PdfSplitTask::SetDefaults() {
  split_mode_ = PdfSplitMode::FixedInterval;
  merge_after_ = false;
  fixed_split_interval_ = 1;
  out_prefix_ = "p";
}

void PdfSplitTask::SplitRanges() {
  if (split_ranges_.empty()) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "None range defined to split the document");
  }
  PdfDoc document = InputDocument();
  FillOutputPath();
  document.Split(split_ranges_, output_path_, out_prefix_, merge_after_, "", out_password_);
  report_ = document.GetReport();
}

void PdfSplitTask::SplitFixedRange() {
  PdfDoc document = InputDocument();
  FillOutputPath();
  document.Split(fixed_split_interval_, output_path_, out_prefix_, out_password_);
  report_ = document.GetReport();
}

}  // namespace TarnixTools
