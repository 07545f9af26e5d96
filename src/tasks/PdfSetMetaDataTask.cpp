#include "PdfSetMetaDataTask.h"

#include <algorithm>

#include "PdfException.h"

namespace TarnixTools {
namespace {

constexpr std::size_t kMetaValues = 4;

// Of `count` values.
std::size_t IndexOf(PdfMetadataParam param, std::size_t count) {
  const auto index = static_cast<std::size_t>(param);  // what is below 0 becomes huge
  if (index >= count) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0, "Invalid PDF META param [%d]",
                       static_cast<int>(param));
  }
  return index;
}

}  // namespace

PdfSetMetaDataTask::PdfSetMetaDataTask() {
  SetDefaults();
}

PdfSetMetaDataTask::PdfSetMetaDataTask(const PdfDoc& document) : PdfTask(document) {
  SetDefaults();
}

PdfSetMetaDataTask::PdfSetMetaDataTask(const PdfSetMetaDataTask& other) = default;
PdfSetMetaDataTask::PdfSetMetaDataTask(PdfSetMetaDataTask&& other) noexcept = default;
PdfSetMetaDataTask& PdfSetMetaDataTask::operator=(const PdfSetMetaDataTask& other) = default;
PdfSetMetaDataTask& PdfSetMetaDataTask::operator=(PdfSetMetaDataTask&& other) noexcept = default;
PdfSetMetaDataTask::~PdfSetMetaDataTask() = default;

void PdfSetMetaDataTask::SetInputDoc(const PdfDoc& document) {
  SetPdfDocs({document});
}

void PdfSetMetaDataTask::SetMetaParam(PdfMetadataParam param, const std::string& value) {
  GetMetaParam(param) = value;
}

std::string& PdfSetMetaDataTask::GetMetaParam(PdfMetadataParam param) {
  return meta_values_[IndexOf(param, meta_values_.size())];
}

void PdfSetMetaDataTask::ResetMetaParam() {
  meta_values_.assign(kMetaValues, "");
}

void PdfSetMetaDataTask::SetAllowEmptyMetaValues(bool allow) {
  allow_empty_meta_values_ = allow;
}

void PdfSetMetaDataTask::SetOutName(const std::string& name) {
  if (!name.empty()) {
    out_name_ = name;
  }
}

void PdfSetMetaDataTask::Execute() {
  RunJob("metadata", [this] { Run(); });
}

void PdfSetMetaDataTask::Run() {
  if (GetPdfDocsNum() != 1) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "Unexpected PDF docs number [%d], expected single doc at task",
                       GetPdfDocsNum());
  }
  if (!allow_empty_meta_values_ && !HasMetaParameters()) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "None META parameter defined at task, empty values setting disabled");
  }
  PdfDoc document = InputDocument();
  FillOutputPath();
  document.SetMetaData(meta_values_, output_path_ + out_name_, out_password_);
  written_files_ = {output_path_ + out_name_};
  report_ = document.GetReport();
}

void PdfSetMetaDataTask::SetDefaults() {
  out_name_ = "document_with_meta_params_set.pdf";
  allow_empty_meta_values_ = false;
  ResetMetaParam();
}

bool PdfSetMetaDataTask::HasMetaParameters() const {
  return std::any_of(meta_values_.begin(), meta_values_.end(),
                     [](const std::string& value) { return !value.empty(); });
}

}  // namespace TarnixTools
