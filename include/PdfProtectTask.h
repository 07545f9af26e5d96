// Writes a document protected by a password.
//
//   PdfProtectTask task(report, "secret");       // of report.pdf
//   task.SetOutputPath("/data/out");
//   task.Execute();                              // locked_report.pdf
#ifndef TARNIX_PDF_PROTECT_TASK_H_
#define TARNIX_PDF_PROTECT_TASK_H_

#include <cstdint>
#include <string>

#include "PdfTask.h"
#include "TarnixExport.h"

namespace TarnixTools {

class TARNIX_EXPORT PdfProtectTask : public PdfTask {
 public:
  explicit PdfProtectTask(const PdfDoc& document);
  PdfProtectTask(const PdfDoc& document, const std::string& password);

  PdfProtectTask(const PdfProtectTask& other);
  PdfProtectTask(PdfProtectTask&& other) noexcept;
  PdfProtectTask& operator=(const PdfProtectTask& other);
  PdfProtectTask& operator=(PdfProtectTask&& other) noexcept;
  ~PdfProtectTask();

  // The password to put on the output, UTF-8. The output password of PdfTask is not used.
  void SetPassword(const std::string& password);

  std::string& GetPassword() { return password_; }

  // The output's file name is prefix + "_" + the document's name + ".pdf", unless it has a name of
  // its own. The prefix is "locked" at first and an empty one is ignored; an empty name goes back
  // to the prefix.
  void SetOutPrefix(const std::string& prefix);

  std::string& GetOutPrefix() { return out_prefix_; }

  void SetOutPdfName(const std::string& name);

  std::string& GetOutPdfName() { return out_pdf_name_; }

  // Writes the encrypted copy to the output directory, or to the current directory when none was
  // set. Throws InvalidParameter unless there is exactly one document, PasswordError without a
  // password, and what PdfDoc::Lock throws.
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

#endif  // TARNIX_PDF_PROTECT_TASK_H_
