// Writes a document without its password.
//
//   PdfDoc report("/data/report.pdf", "secret", true);
//   PdfUnlockTask task(report, "secret");
//   task.SetOutputPath("/data/out");
//   task.Execute();                              // unlocked_report.pdf
//
// Whether a file needs a password at all, and whether one fits:
//
//   PdfDoc::HasPassword("/data/report.pdf");
//   PdfDoc::IsValidPassword("/data/report.pdf", "secret");
#ifndef TARNIX_PDF_UNLOCK_TASK_H_
#define TARNIX_PDF_UNLOCK_TASK_H_

#include <cstdint>
#include <string>

#include "PdfTask.h"
#include "TarnixExport.h"

namespace TarnixTools {

// Nothing is broken open: the document has to have a password that fits, its user's or its owner's.
// What its permissions forbid does not hold for the copy.
class TARNIX_EXPORT PdfUnlockTask : public PdfTask {
 public:
  // The task owns a copy of the document, which is not opened before Execute.
  //   password - as SetPassword; empty when it is left out.
  explicit PdfUnlockTask(const PdfDoc& document);
  PdfUnlockTask(const PdfDoc& document, const std::string& password);

  PdfUnlockTask(const PdfUnlockTask& other);
  PdfUnlockTask(PdfUnlockTask&& other) noexcept;
  PdfUnlockTask& operator=(const PdfUnlockTask& other);
  PdfUnlockTask& operator=(PdfUnlockTask&& other) noexcept;
  ~PdfUnlockTask();

  // Must not be empty for a document that has a password, and is not looked at otherwise. It is the
  // document's own password, PdfDoc::SetPassword, that opens the document: a host sets both. The
  // output password of PdfTask is not used.
  void SetPassword(const std::string& password);

  // As it was set. Kept in memory as plain text.
  std::string& GetPassword() { return password_; }

  // The output's file name is prefix + "_" + the document's name + ".pdf", unless it has a name of
  // its own. The prefix is "unlocked" at first, and an empty one is ignored.
  void SetOutPrefix(const std::string& prefix);

  std::string& GetOutPrefix() { return out_prefix_; }

  // A file name to be put behind the output directory as it stands: no extension is added. An empty
  // one goes back to the name made of the prefix.
  void SetOutPdfName(const std::string& name);

  std::string& GetOutPdfName() { return out_pdf_name_; }

  // Writes the copy, which is not encrypted, to the output directory, or to the current directory
  // when none was set; a document without a password is simply copied. The document itself is not
  // changed; the copy takes the place of a file that has its name.
  //
  // Throws
  //   InvalidParameter  unless there is exactly one document; no file is touched before
  //   PasswordError     without a password where one is needed, before a file is written; and when
  //                     the document's own password is missing or wrong
  //   FileNotFound      when the document cannot be opened or the output cannot be created
  //   EngineError       when the document cannot be read or the output not be written to its end
  void Execute();

 private:
  void Run();
  void SetDefaults();
  // The full path of the output.
  std::string OutputFile() const;

  std::string out_prefix_;
  std::string out_pdf_name_;
  std::string password_;
  std::int32_t reserved_ = 0;  // part of the task's state; nothing reads it
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_UNLOCK_TASK_H_
