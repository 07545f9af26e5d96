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

class TARNIX_EXPORT PdfRemovePagesTask : public PdfTask {
 public:
  explicit PdfRemovePagesTask(const PdfDoc& document);

  PdfRemovePagesTask(const PdfRemovePagesTask& other);
  PdfRemovePagesTask(PdfRemovePagesTask&& other) noexcept;
  PdfRemovePagesTask& operator=(const PdfRemovePagesTask& other);
  PdfRemovePagesTask& operator=(PdfRemovePagesTask&& other) noexcept;
  ~PdfRemovePagesTask();

  // The pages to remove; ranges may overlap. Each is checked against the first document, which is
  // opened for that: InvalidParameter for a range that it lacks, or when the task has no document.
  void AddRemovedPage(int page_number);
  void AddRemovedRange(const PdfPageRange& range);

  // Pages and ranges separated by commas, without blanks: "1,3-5,10". A comma at the end and an
  // empty pattern are fine. Throws InvalidParameter for what is no such list; the items before the
  // bad one stay added.
  void AddRemovedPattern(const std::string& pattern);

  // Forgets the pages to remove, and those that earlier runs have kept.
  void ClearPages();

  // The output's file name is prefix + ".pdf", "truncated.pdf" at first, unless it has a name of
  // its own. An empty prefix is ignored; an empty name goes back to the prefix.
  void SetOutPrefix(const std::string& prefix);

  std::string& GetOutPrefix() { return out_prefix_; }

  void SetOutPdfName(const std::string& name);

  std::string& GetOutPdfName() { return out_pdf_name_; }

  // Writes the remaining pages to the output directory, or to the current directory when none was
  // set. Throws InvalidParameter when no page is to be removed, NoPages when none would be left,
  // and what PdfDoc::Split throws.
  // The pages to keep are added to those of earlier runs: without ClearPages in between, a second
  // run writes them twice.
  void Execute();

 private:
  void SetDefaults();
  PdfDoc FirstDocument() const;
  void AddRange(const PdfPageRange& range, std::optional<int>& pages_num);
  void PatternToRange(const std::string& item, std::optional<int>& pages_num);
  void AddKeptRanges(int pages_num);

  std::string out_prefix_;
  std::string out_pdf_name_;
  std::int32_t reserved_ = 0;  // part of the task's state; nothing reads it
  std::vector<PdfPageRange> removed_ranges_;
  std::vector<PdfPageRange> kept_ranges_;
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_REMOVE_PAGES_TASK_H_
