// Writes a document without some of its pages.
//
//   PdfRemovePagesTask task(document);
//   task.AddRemovedPattern("1,3-5,10");
//   task.SetOutputPath("/data/out");
//   task.Execute();                              // truncated.pdf
#ifndef TARNIX_PDF_REMOVE_PAGES_TASK_H_
#define TARNIX_PDF_REMOVE_PAGES_TASK_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "PdfPageRange.h"
#include "PdfTask.h"
#include "TarnixExport.h"

namespace TarnixTools {

// Bookmarks and links that lead to a removed page are left out of the copy with it, and so is what
// only removed pages used; GetReport() tells.
class TARNIX_EXPORT PdfRemovePagesTask : public PdfTask {
 public:
  // The task owns a copy of the document. What is removed is looked at in the first document only;
  // a task with more of them is not refused.
  explicit PdfRemovePagesTask(const PdfDoc& document);

  PdfRemovePagesTask(const PdfRemovePagesTask& other);
  PdfRemovePagesTask(PdfRemovePagesTask&& other) noexcept;
  PdfRemovePagesTask& operator=(const PdfRemovePagesTask& other);
  PdfRemovePagesTask& operator=(PdfRemovePagesTask&& other) noexcept;
  ~PdfRemovePagesTask();

  // The pages to remove, one-based; ranges may overlap. Each is checked against the first document,
  // which is opened for that: InvalidParameter for a range that it lacks or a number below 1, or
  // when the task has no document, and what PdfDoc::GetPagesNum throws. Pages that were added
  // before stay added.
  void AddRemovedPage(int page_number);
  void AddRemovedRange(const PdfPageRange& range);

  // Pages and ranges separated by commas, without blanks: "1,3-5,10". A comma at the end and an
  // empty pattern are fine. The document is opened once for the whole list. Throws InvalidParameter
  // for what is no such list and for pages that the document lacks; the items before the bad one
  // stay added.
  void AddRemovedPattern(const std::string& pattern);

  // Forgets the pages to remove, and those that earlier runs have kept.
  void ClearPages();

  // The output's file name is prefix + ".pdf", "truncated.pdf" at first, unless it has a name of
  // its own. An empty prefix is ignored.
  void SetOutPrefix(const std::string& prefix);

  std::string& GetOutPrefix() { return out_prefix_; }

  // A file name to be put behind the output directory as it stands: no extension is added. An empty
  // one goes back to the name made of the prefix.
  void SetOutPdfName(const std::string& name);

  std::string& GetOutPdfName() { return out_pdf_name_; }

  // Writes the remaining pages, in their order, to the output directory, or to the current
  // directory when none was set. The document itself is not changed. With an output password the
  // copy is encrypted.
  //
  // Throws
  //   InvalidParameter  when no page is to be removed or the task has no document
  //   NoPages           when no page would be left
  //   FileNotFound      when the document cannot be opened or the output cannot be created
  //   PasswordError     when the document's own password is missing or wrong
  //   EngineError       when the document cannot be read or the output not be written to its end
  // The first two come before a file is written.
  //
  // The pages to keep are added to those of earlier runs: without ClearPages in between, a second
  // run writes them twice.
  void Execute();

 private:
  void Run();
  void SetDefaults();
  PdfDoc FirstDocument() const;
  void AddRange(const PdfPageRange& range, std::optional<int>& pages_num);
  void PatternToRange(const std::string& item, std::optional<int>& pages_num);
  // The runs of pages that are in no removed range.
  void AddKeptRanges(int pages_num);

  std::string out_prefix_;
  std::string out_pdf_name_;
  std::int32_t reserved_ = 0;  // part of the task's state; nothing reads it
  // What was asked for, and what is left of the document without it.
  std::vector<PdfPageRange> removed_ranges_;
  std::vector<PdfPageRange> kept_ranges_;
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_REMOVE_PAGES_TASK_H_
