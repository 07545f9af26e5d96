// Writes a document with new document information.
//
//   PdfSetMetaDataTask task(document);
//   task.SetMetaParam(PdfMetadataParam::Author, "Ada Lovelace");
//   task.SetOutputPath("/data/out");
//   task.Execute();                              // document_with_meta_params_set.pdf
#ifndef TARNIX_PDF_SET_META_DATA_TASK_H_
#define TARNIX_PDF_SET_META_DATA_TASK_H_

#include <string>
#include <vector>

#include "PdfMetadataParam.h"
#include "PdfTask.h"
#include "TarnixExport.h"

namespace TarnixTools {

class TARNIX_EXPORT PdfSetMetaDataTask : public PdfTask {
 public:
  PdfSetMetaDataTask();
  explicit PdfSetMetaDataTask(const PdfDoc& document);

  PdfSetMetaDataTask(const PdfSetMetaDataTask& other);
  PdfSetMetaDataTask(PdfSetMetaDataTask&& other) noexcept;
  PdfSetMetaDataTask& operator=(const PdfSetMetaDataTask& other);
  PdfSetMetaDataTask& operator=(PdfSetMetaDataTask&& other) noexcept;
  ~PdfSetMetaDataTask();

  // The task then holds exactly this document.
  void SetInputDoc(const PdfDoc& document);

  // The values to write in UTF-8, all empty at first. Both throw InvalidParameter for a value that
  // is no PdfMetadataParam.
  void SetMetaParam(PdfMetadataParam param, const std::string& value);
  std::string& GetMetaParam(PdfMetadataParam param);

  // Empties all values.
  void ResetMetaParam();

  // Whether Execute may write four empty values; false at first.
  void SetAllowEmptyMetaValues(bool allow);

  bool GetAllowEmptyMetaValues() const { return allow_empty_meta_values_; }

  // The output's file name, "document_with_meta_params_set.pdf" at first. An empty name is ignored.
  void SetOutName(const std::string& name);

  std::string& GetOutName() { return out_name_; }

  // Writes the copy, with all four values, to the output name in the output directory, which is the
  // document's own when none was set. Throws InvalidParameter unless there is exactly one document
  // and when all values are empty but must not be, and what PdfDoc::SetMetaData throws.
  void Execute();

 private:
  void SetDefaults();
  bool HasMetaParameters() const;

  std::string out_name_;
  std::vector<std::string> meta_values_;  // by PdfMetadataParam
  bool allow_empty_meta_values_ = false;
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_SET_META_DATA_TASK_H_
