// Joins two or more documents into one file.
//
//   PdfMergeTask task(documents);
//   task.SetOutDocName("all.pdf");
//   task.Execute();
//   std::cout << task.GetMergedDocPath();
#ifndef TARNIX_PDF_MERGE_TASK_H_
#define TARNIX_PDF_MERGE_TASK_H_

#include <cstdint>
#include <list>
#include <string>

#include "PdfTask.h"
#include "TarnixExport.h"

namespace TarnixTools {

class TARNIX_EXPORT PdfMergeTask : public PdfTask {
 public:
  PdfMergeTask();
  explicit PdfMergeTask(const PdfDoc& document);
  explicit PdfMergeTask(const std::list<PdfDoc>& documents);

  PdfMergeTask(const PdfMergeTask& other);
  PdfMergeTask(PdfMergeTask&& other) noexcept;
  PdfMergeTask& operator=(const PdfMergeTask& other);
  PdfMergeTask& operator=(PdfMergeTask&& other) noexcept;
  ~PdfMergeTask();

  // The output's file name, "merged_doc.pdf" at first. An empty name is ignored.
  void SetOutDocName(const std::string& name);

  std::string& GetOutDocName() { return out_doc_name_; }

  // Where the last Execute wrote to; after a failed one, where it was to write. Empty before the
  // first.
  std::string& GetMergedDocPath() { return merged_doc_path_; }

  // Writes all documents, in their order, to the output name in the output directory, which is the
  // first document's when none was set. Throws InvalidParameter for fewer than two documents,
  // FileNotFound for an output directory that does not exist (both before a file is touched), and
  // what PdfDoc::Merge throws.
  void Execute();

 private:
  void SetDefaults();
  void RequireDocuments();
  void ResolveOutputPath();

  std::string out_doc_name_;
  std::int32_t reserved_flag_ = 0;  // part of the task's state; nothing reads it
  std::string merged_doc_path_;
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_MERGE_TASK_H_
