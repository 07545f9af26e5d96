// Joins two or more documents into one file.
//
//   PdfMergeTask task(documents);
//   task.SetOutDocName("all.pdf");
//   task.Execute();
//   std::cout << task.GetMergedDocPath();
//   for (const PdfReportEntry& entry : task.GetReport().GetEntries()) { ... }   // what came along
#ifndef TARNIX_PDF_MERGE_TASK_H_
#define TARNIX_PDF_MERGE_TASK_H_

#include <cstdint>
#include <list>
#include <string>

#include "PdfTask.h"
#include "TarnixExport.h"

namespace TarnixTools {

// What belongs to the pages comes along: bookmarks, links between them, forms that stay fillable,
// with fields and destinations renamed where two documents use one name. GetReport() tells what was
// kept, renamed and dropped.
class TARNIX_EXPORT PdfMergeTask : public PdfTask {
 public:
  // The task owns copies of the documents; none is opened before Execute, each then with its own
  // password. Of one document alone, a second is to be added by AddPdfDoc.
  PdfMergeTask();
  explicit PdfMergeTask(const PdfDoc& document);
  explicit PdfMergeTask(const std::list<PdfDoc>& documents);

  PdfMergeTask(const PdfMergeTask& other);
  PdfMergeTask(PdfMergeTask&& other) noexcept;
  PdfMergeTask& operator=(const PdfMergeTask& other);
  PdfMergeTask& operator=(PdfMergeTask&& other) noexcept;
  ~PdfMergeTask();

  // The output's file name, "merged_doc.pdf" at first; no extension is added. An empty name is
  // ignored.
  void SetOutDocName(const std::string& name);

  // As it was set. The task's own text: what a host puts into it directly is taken as it stands.
  std::string& GetOutDocName() { return out_doc_name_; }

  // Whether Execute writes the ranges of the documents (PdfDoc::AddRange) instead of all their pages;
  // false at first. Of a document without ranges all pages are written, and one document with ranges
  // is enough.
  void SetUseRanges(bool use_ranges) { use_ranges_ = use_ranges; }

  bool GetUseRanges() const { return use_ranges_; }

  // Whether the output's outline has an item for each document, as PdfMergeOptions tells; false at
  // first.
  void SetAddOutlineItems(bool add) { add_outline_items_ = add; }

  bool GetAddOutlineItems() const { return add_outline_items_; }

  // Where the last Execute wrote to; after a failed one, where it was to write. Empty before the
  // first.
  std::string& GetMergedDocPath() { return merged_doc_path_; }

  // Writes all documents, in their order, to the output name in the output directory, which is the
  // first document's when none was set. A document may be in the task twice; one of them may also
  // be the file that is written, which is replaced when all is done. With an output password the
  // output is encrypted, whatever the documents are.
  //
  // Throws
  //   InvalidParameter  for fewer than two documents, before a file is touched
  //   FileNotFound      for an output directory that does not exist, before a file is touched; when
  //                     a document cannot be opened or the output cannot be created
  //   PasswordError     when a document's own password is missing or wrong
  //   EngineError       when a document cannot be read or the output not be written to its end
  // Nothing is written then, not even the documents before the one that failed.
  void Execute();

 private:
  void Run();
  void SetDefaults();
  void RequireDocuments();
  // Makes sure of an output directory that exists.
  void ResolveOutputPath();

  std::string out_doc_name_;
  std::int32_t reserved_flag_ = 0;  // part of the task's state; nothing reads it
  std::string merged_doc_path_;
  bool use_ranges_ = false;
  bool add_outline_items_ = false;
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_MERGE_TASK_H_
