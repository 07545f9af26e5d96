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

class TARNIX_EXPORT PdfTransformTask : public PdfTask {
 public:
  // The task owns copies of the transformations, in their order.
  explicit PdfTransformTask(const PdfDoc& document);
  PdfTransformTask(const PdfDoc& document, const std::vector<PdfTransformation>& transformations);

  PdfTransformTask(const PdfTransformTask& other);
  PdfTransformTask(PdfTransformTask&& other) noexcept;
  PdfTransformTask& operator=(const PdfTransformTask& other);
  PdfTransformTask& operator=(PdfTransformTask&& other) noexcept;
  ~PdfTransformTask();

  // Each page gets the decorations that target it in the order in which they were added.
  void AddTransformation(const PdfTransformation& transformation);
  void ResetTransformations();
  int GetTransformationsNum() const;

  // The task's own; the index is zero-based. Throws InvalidParameter when there is none.
  PdfTransformation& GetTransformation(int index);

  // The output's file name, put behind the output directory as it stands. An empty one is ignored.
  std::string& GetOutName() { return out_name_; }

  void SetOutName(const std::string& name);

  // Writes the copy to the output directory, the document's own when none was set. Throws
  // InvalidParameter unless there is exactly one document and at least one transformation, and what
  // PdfDoc::Transform throws.
  void Execute();

 private:
  void SetDefaults();

  std::vector<PdfTransformation> transformations_;
  std::string out_name_ = "document_after_transformations.pdf";
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_TRANSFORM_TASK_H_
