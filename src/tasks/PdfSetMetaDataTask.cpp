#include "PdfSetMetaDataTask.h"

#include <algorithm>

#include "PdfException.h"

namespace TarnixTools {
namespace {

constexpr std::size_t kMetaValues = 4;

const std::string kNoText;

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
  given_[static_cast<std::size_t>(param)] = true;
}

std::string& PdfSetMetaDataTask::GetMetaParam(PdfMetadataParam param) {
  return meta_values_[IndexOf(param, meta_values_.size())];
}

void PdfSetMetaDataTask::SetTitle(const std::string& title) {
  title_ = title;
}

const std::string& PdfSetMetaDataTask::GetTitle() const {
  return title_ ? *title_ : kNoText;
}

void PdfSetMetaDataTask::SetSubject(const std::string& subject) {
  subject_ = subject;
}

const std::string& PdfSetMetaDataTask::GetSubject() const {
  return subject_ ? *subject_ : kNoText;
}

void PdfSetMetaDataTask::ResetMetaParam() {
  meta_values_.assign(kMetaValues, "");
  given_.fill(false);
  title_.reset();
  subject_.reset();
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
  document.SetKeepMetadata(keep_unset_ || document.GetKeepMetadata());
  document.SetMetaValues(Values(), output_path_ + out_name_, out_password_);
  written_files_ = {output_path_ + out_name_};
  report_ = document.GetReport();
}

void PdfSetMetaDataTask::SetDefaults() {
  out_name_ = "document_with_meta_params_set.pdf";
  allow_empty_meta_values_ = false;
  ResetMetaParam();
}

bool PdfSetMetaDataTask::HasMetaParameters() const {
  const bool has_given = title_ || subject_ || given_[0] || given_[1] || given_[2] || given_[3];
  const bool has_title = !GetTitle().empty() || !GetSubject().empty();
  return (keep_unset_ && has_given) || has_title ||
         std::any_of(meta_values_.begin(), meta_values_.end(),
                     [](const std::string& value) { return !value.empty(); });
}

// Without values of others to keep, all four are written.
PdfMetadataValues PdfSetMetaDataTask::Values() const {
  PdfMetadataValues values;
  for (std::size_t i = 0; i < std::min(kMetaValues, meta_values_.size()); ++i) {
    if (!keep_unset_ || given_[i] || !meta_values_[i].empty()) {
      values.params[i] = meta_values_[i];
    }
  }
  values.title = title_;
  values.subject = subject_;
  return values;
}

}  // namespace TarnixTools
