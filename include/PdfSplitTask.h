// Cuts one document into several files, by page ranges or into pieces of equal size.
//
//   PdfSplitTask task(document);
//   task.SetSplitMode(PdfSplitMode::Ranges);
//   task.AddSplitRange(PdfPageRange(1, 3));
//   task.AddSplitRange(PdfPageRange(5, 5));
//   task.Execute();                              // NAME-1-3.pdf and NAME-5.pdf
#ifndef TARNIX_PDF_SPLIT_TASK_H_
#define TARNIX_PDF_SPLIT_TASK_H_

#include <cstdint>
#include <string>
#include <vector>

#include "PdfPageRange.h"
#include "PdfTask.h"
#include "TarnixExport.h"

namespace TarnixTools {

enum class PdfSplitMode : std::int32_t {
  Ranges = 0,         // the ranges added to the task
  FixedInterval = 1,  // pieces of a fixed number of pages
};

class TARNIX_EXPORT PdfSplitTask : public PdfTask {
 public:
  PdfSplitTask();
  explicit PdfSplitTask(const PdfDoc& document);

  PdfSplitTask(const PdfSplitTask& other);
  PdfSplitTask(PdfSplitTask&& other) noexcept;
  PdfSplitTask& operator=(const PdfSplitTask& other);
  PdfSplitTask& operator=(PdfSplitTask&& other) noexcept;
  ~PdfSplitTask();

  // FixedInterval at first. Options are checked by Execute, not here.
  void SetSplitMode(PdfSplitMode mode);

  PdfSplitMode GetSplitMode() const { return split_mode_; }

  // Pages per piece of FixedInterval, 1 at first.
  void SetFixedSplitInterval(int interval);

  int GetFixedSplitInterval() const { return fixed_split_interval_; }

  // Whether Ranges writes one file of all ranges instead of one each; false at first.
  void SetMergeAfter(bool merge_after);

  bool GetMergeAfter() const { return merge_after_; }

  // "p" at first; an empty prefix is ignored. It has no effect: pieces are named after the
  // document.
  void SetOutPrefix(const std::string& prefix);

  std::string& GetOutPrefix() { return out_prefix_; }

  // The ranges of Ranges, in the order added; they may overlap.
  void AddSplitRange(const PdfPageRange& range);
  void ClearSplitRanges();

  // Writes the pieces to the output directory, which is the document's own when none was set; the
  // names are those of PdfDoc::Split. Throws InvalidParameter unless there is exactly one document,
  // for an unknown mode and for Ranges without a range, and what PdfDoc::Split throws.
  void Execute();

 private:
  void SetDefaults();
  void SplitRanges();
  void SplitFixedRange();

  PdfSplitMode split_mode_ = PdfSplitMode::FixedInterval;
  bool merge_after_ = false;
  std::int32_t fixed_split_interval_ = 1;
  std::string out_prefix_;
  std::vector<PdfPageRange> split_ranges_;
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_SPLIT_TASK_H_
