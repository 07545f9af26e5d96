// Turns all pages of a document.
//
//   PdfRotateTask task(document);
//   task.SetRotationAngle(PdfRotationAngle::Rotate90);
//   task.SetOutputPath("/data/out");
//   task.Execute();                              // rotated_file.pdf
#ifndef TARNIX_PDF_ROTATE_TASK_H_
#define TARNIX_PDF_ROTATE_TASK_H_

#include <string>

#include "PdfRotationAngle.h"
#include "PdfTask.h"
#include "TarnixExport.h"

namespace TarnixTools {

class TARNIX_EXPORT PdfRotateTask : public PdfTask {
 public:
  PdfRotateTask();
  explicit PdfRotateTask(const PdfDoc& document);

  PdfRotateTask(const PdfRotateTask& other);
  PdfRotateTask(PdfRotateTask&& other) noexcept;
  PdfRotateTask& operator=(const PdfRotateTask& other);
  PdfRotateTask& operator=(PdfRotateTask&& other) noexcept;
  ~PdfRotateTask();

  // The task then holds exactly this document.
  void SetInputDoc(const PdfDoc& document);

  // Clockwise, Rotate0 at first. Checked by Execute, not here.
  void SetRotationAngle(PdfRotationAngle angle);

  PdfRotationAngle GetRotationAngle() const { return rotation_angle_; }

  // The output's file name, "rotated_file.pdf" at first. An empty name is ignored.
  void SetOutName(const std::string& name);

  std::string& GetOutName() { return out_name_; }

  // Writes the turned copy to the output name in the output directory, or in the current directory
  // when none was set. Throws InvalidParameter unless there is exactly one document and for an
  // angle that is none of the four, and what PdfDoc::Rotate throws.
  void Execute();

 private:
  void SetDefaults();

  PdfRotationAngle rotation_angle_ = PdfRotationAngle::Rotate0;
  std::string out_name_;
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_ROTATE_TASK_H_
