#include "PdfMergeTask.h"

#include "PdfCommonUtils.h"
#include "PdfException.h"

namespace TarnixTools {

PdfMergeTask::PdfMergeTask() {
  SetDefaults();
}

PdfMergeTask::PdfMergeTask(const PdfDoc& document) : PdfTask(document) {
  SetDefaults();
}

PdfMergeTask::PdfMergeTask(const std::list<PdfDoc>& documents) : PdfTask(documents) {
  SetDefaults();
}

PdfMergeTask::PdfMergeTask(const PdfMergeTask& other) = default;
PdfMergeTask::PdfMergeTask(PdfMergeTask&& other) noexcept = default;
PdfMergeTask& PdfMergeTask::operator=(const PdfMergeTask& other) = default;
PdfMergeTask& PdfMergeTask::operator=(PdfMergeTask&& other) noexcept = default;
PdfMergeTask::~PdfMergeTask() = default;

void PdfMergeTask::SetOutDocName(const std::string& name) {
  if (!name.empty()) {
    out_doc_name_ = name;
  }
}

void PdfMergeTask::Execute() {
  RunJob("merge", [this] { Run(); });
}

void PdfMergeTask::Run() {
  RequireDocuments();
  ResolveOutputPath();
  merged_doc_path_ = output_path_ + out_doc_name_;
  PdfDoc::Merge(documents_, merged_doc_path_, out_password_,
                {.ranges_only = use_ranges_, .outline_items = add_outline_items_}, &report_);
  written_files_ = {merged_doc_path_};
}

void PdfMergeTask::SetDefaults() {
  out_doc_name_ = "merged_doc.pdf";
  reserved_flag_ = 0;
}

void PdfMergeTask::RequireDocuments() {
  const int least = use_ranges_ ? 1 : 2;
  if (GetPdfDocsNum() < least) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "At least 2 PDF docs required to execute merge (defined only [%d])",
                       GetPdfDocsNum());
  }
}

void PdfMergeTask::ResolveOutputPath() {
  if (output_path_.empty()) {
    FillOutputPath();
  } else if (!PdfCommonUtils::IsDirectory(output_path_)) {
    throw PdfException(PdfExceptionCode::FileNotFound, 0,
                       "Output directory path [%s] does not exist", output_path_.c_str());
  }
}

}  // namespace TarnixTools
