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

void PdfSplitTask::SetNamePattern(const std::string& pattern) {
  name_pattern_ = pattern;
}

void PdfSplitTask::SetMergedName(const std::string& name) {
  merged_name_ = name;
}

void PdfSplitTask::Execute() {
  RunJob("split", [this] { Run(); });
}

void PdfSplitTask::Run() {
  if (GetPdfDocsNum() != 1) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "Unexpected PDF docs number [%d], expected single doc", GetPdfDocsNum());
  }
  if (split_mode_ != PdfSplitMode::Ranges && split_mode_ != PdfSplitMode::FixedInterval) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0, "Invalid PDF split mode [%d]",
                       static_cast<int>(split_mode_));
  }
  if (split_mode_ == PdfSplitMode::Ranges && split_ranges_.empty()) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "None range defined to split the document");
  }
  PdfDoc document = InputDocument();
  document.SetPieceNames(name_pattern_);
  FillOutputPath();
  try {
    Split(document);
  } catch (...) {
    written_files_ = document.GetPieces();
    throw;
  }
  written_files_ = document.GetPieces();
  report_ = document.GetReport();
}

void PdfSplitTask::SetDefaults() {
  split_mode_ = PdfSplitMode::FixedInterval;
  merge_after_ = false;
  fixed_split_interval_ = 1;
  out_prefix_ = "p";
}

void PdfSplitTask::Split(PdfDoc& document) {
  if (split_mode_ == PdfSplitMode::Ranges) {
    document.Split(split_ranges_, output_path_, out_prefix_, merge_after_, merged_name_,
                   out_password_);
  } else {
    document.Split(fixed_split_interval_, output_path_, out_prefix_, out_password_);
  }
}

}  // namespace TarnixTools
