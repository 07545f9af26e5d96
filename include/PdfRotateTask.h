// Turns all pages of a document, or some.
//
//   PdfRotateTask task(document);
//   task.SetRotationAngle(PdfRotationAngle::Rotate90);
//   task.SetOutputPath("/data/out");
//   task.Execute();                              // rotated_file.pdf
//
//   task.SetPages({1, 3});                       // only these
//   task.Execute();
#ifndef TARNIX_PDF_ROTATE_TASK_H_
#define TARNIX_PDF_ROTATE_TASK_H_

#include <set>
#include <string>

#include "PdfRotationAngle.h"
#include "PdfTask.h"
#include "TarnixExport.h"

namespace TarnixTools {

// Pages are turned by an entry of theirs that viewers obey; what is drawn on them is not touched.
class TARNIX_EXPORT PdfRotateTask : public PdfTask {
 public:
  // The task owns a copy of the document, which is not opened before Execute.
  PdfRotateTask();
  explicit PdfRotateTask(const PdfDoc& document);

  PdfRotateTask(const PdfRotateTask& other);
  PdfRotateTask(PdfRotateTask&& other) noexcept;
  PdfRotateTask& operator=(const PdfRotateTask& other);
  PdfRotateTask& operator=(PdfRotateTask&& other) noexcept;
  ~PdfRotateTask();

  // The task then holds a copy of exactly this document, whatever it held before.
  void SetInputDoc(const PdfDoc& document);

  // Clockwise, and on top of what a page is turned by already; Rotate0 at first, which leaves the
  // pages as they are seen. Checked by Execute, not here.
  void SetRotationAngle(PdfRotationAngle angle);

  PdfRotationAngle GetRotationAngle() const { return rotation_angle_; }

  // The one-based numbers of the pages to turn; empty, as at first, for all. Whether the document has
  // them is looked at by Execute, which throws InvalidParameter for one that it lacks.
  void SetPages(const std::set<int>& pages);

  const std::set<int>& GetPages() const { return pages_; }

  // The output's file name, "rotated_file.pdf" at first; no extension is added. An empty name is
  // ignored.
  void SetOutName(const std::string& name);

  // As it was set. The task's own text: what a host puts into it directly is taken as it stands.
  std::string& GetOutName() { return out_name_; }

  // Writes the turned copy to the output name in the output directory, or in the current directory
  // when none was set. The document itself is not changed; the copy takes the place of a file that
  // has its name. With an output password it is encrypted.
  //
  // Throws
  //   InvalidParameter  unless there is exactly one document, and for an angle that is none of the
  //                     four; no file is touched before
  //   FileNotFound      when the document cannot be opened or the output cannot be created
  //   PasswordError     when the document's own password is missing or wrong
  //   EngineError       when the document cannot be read or the output not be written to its end
  void Execute();

 private:
  // What the comments above call "at first".
  void Run();
  void SetDefaults();

  PdfRotationAngle rotation_angle_ = PdfRotationAngle::Rotate0;
  std::string out_name_;
  std::set<int> pages_;
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_ROTATE_TASK_H_
