// Writes a document without its password.
//
//   PdfDoc report("/data/report.pdf", "secret", true);
//   PdfUnlockTask task(report, "secret");
//   task.SetOutputPath("/data/out");
//   task.Execute();                              // unlocked_report.pdf
#ifndef TARNIX_PDF_UNLOCK_TASK_H_
#define TARNIX_PDF_UNLOCK_TASK_H_

#include <cstdint>
#include <string>

#include "PdfTask.h"
#include "TarnixExport.h"

namespace TarnixTools {

class TARNIX_EXPORT PdfUnlockTask : public PdfTask {
 public:
  explicit PdfUnlockTask(const PdfDoc& document);
  PdfUnlockTask(const PdfDoc& document, const std::string& password);

  PdfUnlockTask(const PdfUnlockTask& other);
  PdfUnlockTask(PdfUnlockTask&& other) noexcept;
  PdfUnlockTask& operator=(const PdfUnlockTask& other);
  PdfUnlockTask& operator=(PdfUnlockTask&& other) noexcept;
  ~PdfUnlockTask();

  // Must not be empty for a document that has a password. It is the document's own password that
  // opens the document: a host sets both. The output password of PdfTask is not used.
  void SetPassword(const std::string& password);

  std::string& GetPassword() { return password_; }

  // The output's file name is prefix + "_" + the document's name + ".pdf", unless it has a name of
  // its own. The prefix is "unlocked" at first and an empty one is ignored; an empty name goes back
  // to the prefix.
  void SetOutPrefix(const std::string& prefix);

  std::string& GetOutPrefix() { return out_prefix_; }

  void SetOutPdfName(const std::string& name);

  std::string& GetOutPdfName() { return out_pdf_name_; }

  // Writes the copy, which is not encrypted, to the output directory, or to the current directory
  // when none was set; a document without a password is simply copied. Throws InvalidParameter
  // unless there is exactly one document, PasswordError without a password where one is needed, and
  // what PdfDoc::UnLock throws.
  void Execute();

 private:
  void SetDefaults();
  std::string OutputFile() const;

  std::string out_prefix_;
  std::string out_pdf_name_;
  std::string password_;
  std::int32_t reserved_ = 0;  // part of the task's state; nothing reads it
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_UNLOCK_TASK_H_
