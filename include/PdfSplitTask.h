// Cuts one document into several files, by page ranges or into pieces of equal size.
//
//   PdfSplitTask task(document);
//   task.SetSplitMode(PdfSplitMode::Ranges);
//   task.AddSplitRange(PdfPageRange(1, 3));
//   task.AddSplitRange(PdfPageRange(5, 5));
//   task.Execute();                              // NAME-1-3.pdf and NAME-5.pdf
//
//   PdfSplitTask pieces(document);
//   pieces.SetFixedSplitInterval(10);
//   pieces.SetOutputPath("/data/parts");
//   pieces.Execute();                            // NAME-001.pdf, NAME-002.pdf, ... of ten pages
#ifndef TARNIX_PDF_SPLIT_TASK_H_
#define TARNIX_PDF_SPLIT_TASK_H_

#include <cstdint>
#include <string>
#include <vector>

#include "PdfPageRange.h"
#include "PdfTask.h"
#include "TarnixExport.h"

namespace TarnixTools {

// How the pieces are chosen.
enum class PdfSplitMode : std::int32_t {
  Ranges = 0,         // the ranges added to the task
  FixedInterval = 1,  // pieces of a fixed number of pages
};

// Every piece is a complete document with what belongs to its pages: bookmarks, links, form fields
// that lead to other pieces are left out, which GetReport() tells.
class TARNIX_EXPORT PdfSplitTask : public PdfTask {
 public:
  // The task owns a copy of the document, which is not opened before Execute.
  PdfSplitTask();
  explicit PdfSplitTask(const PdfDoc& document);

  PdfSplitTask(const PdfSplitTask& other);
  PdfSplitTask(PdfSplitTask&& other) noexcept;
  PdfSplitTask& operator=(const PdfSplitTask& other);
  PdfSplitTask& operator=(PdfSplitTask&& other) noexcept;
  ~PdfSplitTask();

  // FixedInterval at first. Options are checked by Execute, not here: a value that is no mode is
  // taken, and refused there.
  void SetSplitMode(PdfSplitMode mode);

  PdfSplitMode GetSplitMode() const { return split_mode_; }

  // Pages per piece of FixedInterval, 1 at first; the last piece may have fewer. Execute refuses
  // what is below 1 or above the page count. Not looked at for Ranges.
  void SetFixedSplitInterval(int interval);

  int GetFixedSplitInterval() const { return fixed_split_interval_; }

  // Whether Ranges writes one file of all ranges, one after the other, instead of one file each; it
  // is called after the document, NAME_split-merge_.pdf. False at first; not looked at for
  // FixedInterval.
  void SetMergeAfter(bool merge_after);

  bool GetMergeAfter() const { return merge_after_; }

  // "p" at first; an empty prefix is ignored. It has no effect: pieces are named after the
  // document.
  void SetOutPrefix(const std::string& prefix);

  std::string& GetOutPrefix() { return out_prefix_; }

  // How pieces are called, as PdfDoc::SetPieceNames tells; empty at first.
  void SetNamePattern(const std::string& pattern);

  const std::string& GetNamePattern() const { return name_pattern_; }

  // The name of the one file of all ranges, used as it stands; empty, as at first, for
  // NAME_split-merge_.pdf.
  void SetMergedName(const std::string& name);

  const std::string& GetMergedName() const { return merged_name_; }

  // GetWrittenFiles, by the name that they have here.
  const std::vector<std::string>& GetPieces() const { return written_files_; }

  // The ranges of Ranges, in the order added; they may overlap. Whether the document has them is
  // looked at by Execute.
  void AddSplitRange(const PdfPageRange& range);

  // Forgets all ranges that were added.
  void ClearSplitRanges();

  // Writes the pieces to the output directory, which is the document's own when none was set; the
  // names are those of PdfDoc::Split. The document itself is not changed; pieces take the place of
  // files that have their names. With an output password all of them are encrypted.
  //
  // Throws
  //   InvalidParameter  unless there is exactly one document, for an unknown mode and for Ranges
  //                     without a range, before a file is touched; for a range that the document
  //                     lacks and for an interval that is below 1 or above the page count
  //   FileNotFound      when the document cannot be opened or a piece cannot be created
  //   PasswordError     when the document's own password is missing or wrong
  //   EngineError       when the document cannot be read or a piece not be written to its end
  // Pieces that were written before stay.
  void Execute();

 private:
  void Run();
  void SetDefaults();

  // What it throws is what Execute throws.
  void Split(PdfDoc& document);

  PdfSplitMode split_mode_ = PdfSplitMode::FixedInterval;
  bool merge_after_ = false;
  std::int32_t fixed_split_interval_ = 1;
  std::string out_prefix_;
  std::string name_pattern_;
  std::string merged_name_;
  std::vector<PdfPageRange> split_ranges_;
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_SPLIT_TASK_H_
