// Writes a document with new document information.
//
//   PdfSetMetaDataTask task(document);
//   task.SetMetaParam(PdfMetadataParam::Author, "Ada Lovelace");
//   task.SetOutputPath("/data/out");
//   task.Execute();                              // document_with_meta_params_set.pdf
//
//   PdfSetMetaDataTask clean(document);
//   clean.SetAllowEmptyMetaValues(true);         // every value is empty
//   clean.SetOutName("clean.pdf");
//   clean.Execute();                             // beside the document
//
//   PdfSetMetaDataTask one(document);
//   one.SetTitle("Sketch of the engine");
//   one.SetKeepUnset(true);                      // everything else stays
//   one.Execute();
#ifndef TARNIX_PDF_SET_META_DATA_TASK_H_
#define TARNIX_PDF_SET_META_DATA_TASK_H_

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "PdfMetadataParam.h"
#include "PdfTask.h"
#include "TarnixExport.h"

namespace TarnixTools {

// The new information takes the place of the old one as a whole: a host that wants to change one
// value reads the others from the document (PdfDoc::GetMetaData) and sets them, too. With
// SetKeepMetadata only the four values are replaced, and what else the document says of itself
// stays. With SetKeepUnset only what the host has given is changed.
class TARNIX_EXPORT PdfSetMetaDataTask : public PdfTask {
 public:
  // The task owns a copy of the document, which is not opened before Execute.
  PdfSetMetaDataTask();
  explicit PdfSetMetaDataTask(const PdfDoc& document);

  PdfSetMetaDataTask(const PdfSetMetaDataTask& other);
  PdfSetMetaDataTask(PdfSetMetaDataTask&& other) noexcept;
  PdfSetMetaDataTask& operator=(const PdfSetMetaDataTask& other);
  PdfSetMetaDataTask& operator=(PdfSetMetaDataTask&& other) noexcept;
  ~PdfSetMetaDataTask();

  // The task then holds a copy of exactly this document, whatever it held before.
  void SetInputDoc(const PdfDoc& document);

  // The values to write in UTF-8, all empty at first; nothing of the document's own is read. The
  // reference is to the task's own text, which a host may change. Both throw InvalidParameter for a
  // value that is no PdfMetadataParam, and for every value of a task that was moved from, which has
  // none until ResetMetaParam.
  void SetMetaParam(PdfMetadataParam param, const std::string& value);
  std::string& GetMetaParam(PdfMetadataParam param);

  // Title and subject to write, UTF-8. One that was not given is empty, and not written.
  void SetTitle(const std::string& title);
  const std::string& GetTitle() const;
  void SetSubject(const std::string& subject);
  const std::string& GetSubject() const;

  // Empties all values, so that they are as in a task that was just made.
  void ResetMetaParam();

  // Whether values that were not given, and all else that the document says of itself, stay as they are;
  // false at first. Given are values that were set, also to an empty text, and those that are not empty.
  // Execute then needs one that was given.
  void SetKeepUnset(bool keep) { keep_unset_ = keep; }

  bool GetKeepUnset() const { return keep_unset_; }

  // Whether Execute may write four empty values, so that a document loses its information; false at
  // first, which makes that an error.
  void SetAllowEmptyMetaValues(bool allow);

  bool GetAllowEmptyMetaValues() const { return allow_empty_meta_values_; }

  // The output's file name, "document_with_meta_params_set.pdf" at first; no extension is added. An
  // empty name is ignored.
  void SetOutName(const std::string& name);

  // As it was set. The task's own text: what a host puts into it directly is taken as it stands.
  std::string& GetOutName() { return out_name_; }

  // Writes the copy, with all four values, to the output name in the output directory, which is the
  // document's own when none was set. The document itself is not changed; the copy takes the place
  // of a file that has its name. With an output password it is encrypted.
  //
  // Throws
  //   InvalidParameter  unless there is exactly one document, and when all values are empty but
  //                     must not be; no file is touched before
  //   FileNotFound      when the document cannot be opened or the output cannot be created
  //   PasswordError     when the document's own password is missing or wrong
  //   EngineError       when the document cannot be read or the output not be written to its end
  void Execute();

 private:
  void Run();
  void SetDefaults();
  // Whether one of the values is not empty or, where others are kept, given.
  bool HasMetaParameters() const;
  PdfMetadataValues Values() const;

  std::string out_name_;
  std::vector<std::string> meta_values_;  // by PdfMetadataParam
  bool allow_empty_meta_values_ = false;
  std::array<bool, 4> given_{};  // by PdfMetadataParam
  std::optional<std::string> title_;
  std::optional<std::string> subject_;
  bool keep_unset_ = false;
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_SET_META_DATA_TASK_H_
