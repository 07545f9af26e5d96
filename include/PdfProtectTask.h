// Writes a document protected by a password.
//
//   PdfProtectTask task(report, "secret");       // of report.pdf
//   task.SetOutputPath("/data/out");
//   task.Execute();                              // locked_report.pdf
//
//   report.SetPassword("old");                   // of one that is protected already:
//   PdfProtectTask change(report, "new");        // the copy has the new password only
//
//   PdfProtectTask open(report, "");             // everybody can open it,
//   open.SetOwnerPassword("secret");             // and who knows this may do everything;
//   open.SetPermissions(4 | 2048);               // the others may print it, and no more
//   open.SetOutPdfName("readable.pdf");
//   open.Execute();
#ifndef TARNIX_PDF_PROTECT_TASK_H_
#define TARNIX_PDF_PROTECT_TASK_H_

#include <cstdint>
#include <string>

#include "PdfTask.h"
#include "TarnixExport.h"

namespace TarnixTools {

// Encryption is that of PDF 2.0 (ISO 32000-2, 7.6: AES with 256 bits). Where only one password
// is set it is both the user's and the owner's: whoever knows it may do everything with the document, and
// whoever does not cannot open it.
class TARNIX_EXPORT PdfProtectTask : public PdfTask {
 public:
  // The task owns a copy of the document, which is not opened before Execute. One that is encrypted
  // already is opened with its own password, PdfDoc::SetPassword.
  //   password - as SetPassword; empty when it is left out.
  explicit PdfProtectTask(const PdfDoc& document);
  PdfProtectTask(const PdfDoc& document, const std::string& password);

  PdfProtectTask(const PdfProtectTask& other);
  PdfProtectTask(PdfProtectTask&& other) noexcept;
  PdfProtectTask& operator=(const PdfProtectTask& other);
  PdfProtectTask& operator=(PdfProtectTask&& other) noexcept;
  ~PdfProtectTask();

  // The password to put on the output, UTF-8; must not be empty when Execute is called. Bytes
  // beyond the 127th, after preparation (ISO 32000-2, 7.6.4), do not count. The output password
  // of PdfTask is not used.
  void SetPassword(const std::string& password);

  // As it was set. Kept in memory as plain text.
  std::string& GetPassword() { return password_; }

  // A password of the owner, for everything; empty, as at first, for the same as the other one. With
  // one of its own that other one may be empty: everybody can open the output then.
  void SetOwnerPassword(const std::string& password);

  // What the output allows without the owner's password: bits of ISO 32000-2, table 22; everything at
  // first. 4 print, 8 modify, 16 copy, 32 annotate, 256 fill forms, 1024 assemble, 2048 print at high
  // quality. Readers keep to them of their own will: nothing but the password hinders a program.
  void SetPermissions(std::uint32_t permissions) { permissions_ = permissions; }

  std::uint32_t GetPermissions() const { return permissions_; }

  // The output's file name is prefix + "_" + the document's name + ".pdf", unless it has a name of
  // its own. The prefix is "locked" at first, and an empty one is ignored.
  void SetOutPrefix(const std::string& prefix);

  std::string& GetOutPrefix() { return out_prefix_; }

  // A file name to be put behind the output directory as it stands: no extension is added. An empty
  // one goes back to the name made of the prefix.
  void SetOutPdfName(const std::string& name);

  std::string& GetOutPdfName() { return out_pdf_name_; }

  // Writes the encrypted copy to the output directory, or to the current directory when none was
  // set. The document itself is not changed; the copy takes the place of a file that has its name.
  //
  // Throws
  //   InvalidParameter  unless there is exactly one document; no file is touched before
  //   PasswordError     without a password to put on the output, before a file is touched; and when
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
  std::string owner_password_;
  std::uint32_t permissions_ = 3900;
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_PROTECT_TASK_H_
