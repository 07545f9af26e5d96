// Writes a document with several decorations, in one pass over its pages.
//
//   PdfTransformTask task(report);
//   task.AddTransformation(number);               // PdfTransformation objects
//   task.AddTransformation(stamp);
//   task.SetOutputPath("/data/out");
//   task.Execute();                               // document_after_transformations.pdf
#ifndef TARNIX_PDF_TRANSFORM_TASK_H_
#define TARNIX_PDF_TRANSFORM_TASK_H_

#include <string>
#include <vector>

#include "PdfTask.h"
#include "PdfTransformation.h"
#include "TarnixExport.h"

namespace TarnixTools {

// This is quicker than a task for each decoration, for the pages are written only once; and fonts
// and images that several decorations use are in the output only once.
class TARNIX_EXPORT PdfTransformTask : public PdfTask {
 public:
  // The task owns copies of the document, which is not opened before Execute, and of the
  // transformations, in their order.
  explicit PdfTransformTask(const PdfDoc& document);
  PdfTransformTask(const PdfDoc& document, const std::vector<PdfTransformation>& transformations);

  PdfTransformTask(const PdfTransformTask& other);
  PdfTransformTask(PdfTransformTask&& other) noexcept;
  PdfTransformTask& operator=(const PdfTransformTask& other);
  PdfTransformTask& operator=(PdfTransformTask&& other) noexcept;
  ~PdfTransformTask();

  // Appends a copy. Each page gets the decorations that target it in the order in which they were
  // added, so that a later one covers an earlier one where both are over the page. A conversion to
  // PDF/A is none of them: Execute refuses it with InternalError.
  void AddTransformation(const PdfTransformation& transformation);
  void ResetTransformations();
  int GetTransformationsNum() const;

  // The task's own, which a host may change; it is valid until one is added or all are removed.
  //   index - zero-based, in the order of addition. Throws InvalidParameter when there is none.
  PdfTransformation& GetTransformation(int index);

  // The output's file name, put behind the output directory as it stands:
  // "document_after_transformations.pdf" at first. An empty one is ignored.
  std::string& GetOutName() { return out_name_; }

  void SetOutName(const std::string& name);

  // Writes the copy to the output directory, the document's own when none was set. The document
  // itself is not changed. What drawing rewrites in a transformation stays rewritten in the task's
  // copy of it.
  //
  // Throws
  //   InvalidParameter  unless there is exactly one document and at least one transformation,
  //                     before a file is touched; for settings of a text that cannot be drawn
  //   InternalError     for a conversion to PDF/A among the transformations
  //   FileNotFound      when the document or an image file cannot be opened, or the output cannot
  //                     be created
  //   PasswordError     when the document's own password is missing or wrong
  //   EngineError       when the document, an image or a font cannot be used, or the output not be
  //                     written to its end
  void Execute();

 private:
  void Run();
  void SetDefaults();

  std::vector<PdfTransformation> transformations_;
  std::string out_name_ = "document_after_transformations.pdf";
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_TRANSFORM_TASK_H_
