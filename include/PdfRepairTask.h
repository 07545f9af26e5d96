// Puts a damaged document right, and tells what was wrong with it.
//
//   PdfRepairTask task(PdfDoc("/data/torn.pdf", "", true), "mended.pdf");
//   task.SetOutputPath("/data/out");
//   task.Execute();
//   for (const std::string& problem : task.GetErrorsInfo()) {
//     std::cout << problem << '\n';  // "Object 12: the length of the stream is wrong (...); fixed"
//   }
//
// Whether a document is damaged at all, without writing anything:
//
//   PdfRepairTask::IsDamaged(document);
#ifndef TARNIX_PDF_REPAIR_TASK_H_
#define TARNIX_PDF_REPAIR_TASK_H_

#include <list>
#include <string>

#include "PdfTask.h"
#include "TarnixExport.h"

namespace TarnixTools {

namespace engines {
struct TPdfRepair;
}  // namespace engines

// Damaged is what a strict reader complains about, and what loses something. What no reader minds
// is not among the problems; GetReport() tells of it all the same.
//
// What can be found is in the output, in its old place where that can be told. A page that cannot be
// read stands as an empty one of its size, so that the others keep their numbers. The document is
// always written anew: signatures, which hold for the old file only, are left out, and so is a claim
// of PDF/A that a validation of the new file does not confirm; GetReport() says so.
class TARNIX_EXPORT PdfRepairTask : public PdfTask {
 public:
  // The task owns a copy of the document, which is not opened before Execute, with its own password.
  //   name - as SetOutName.
  explicit PdfRepairTask(const PdfDoc& document);
  PdfRepairTask(const PdfDoc& document, const std::string& name);

  // A copy has problems of its own.
  PdfRepairTask(const PdfRepairTask& other);
  PdfRepairTask(PdfRepairTask&& other) noexcept;
  PdfRepairTask& operator=(const PdfRepairTask& other);
  PdfRepairTask& operator=(PdfRepairTask&& other) noexcept;
  ~PdfRepairTask();

  // The output's file name, put behind the output directory as it stands: no extension is added.
  // "output_repaired_doc.pdf" at first; an empty one is ignored.
  void SetOutName(const std::string& name);

  // The task's own text: what a host puts into it directly is taken as it stands.
  std::string& GetOutName() { return out_name_; }

  // How many problems GetErrorsInfo has.
  int GetErrorsNum() const;

  // The problems that were found, in English, one line each: where, what, and whether it was fixed,
  // worked around or is lost. Every Execute adds its own behind those that are there, a failed one
  // too, as far as it came; only a new task starts again.
  const std::list<std::string>& GetErrorsInfo() const { return errors_; }

  // Whether there is anything that Execute would put right. Writes nothing.
  //   problems - gets a line for each problem behind those that it has: where, what, and whether it
  //              can be fixed or worked around, or is lost.
  // Throws EngineError when the document cannot be opened, with the engine's code: 17 for a missing
  // or wrong password, 13 for a missing file.
  static bool IsDamaged(const PdfDoc& document);
  static bool IsDamaged(const PdfDoc& document, std::list<std::string>& problems);

  // Writes the repaired document to the output directory, or to that of the document when none was
  // set. The output takes the place of a file that has its name. With an output password it is
  // encrypted, and printing is all that its permissions allow; without one it is not encrypted,
  // whatever the document is, and GetReport() tells of protection that is gone.
  //
  // Throws
  //   InvalidParameter  unless there is exactly one document; no file is touched before
  //   EngineError       when the document cannot be opened, with the engine's code: 17 for a missing
  //                     or wrong password; when it has no page that can be found; and when the
  //                     output cannot be written to its end
  void Execute();

 private:
  void Run();
  void SetDefaults();
  void RepairDoc(const PdfDoc& document, const std::string& output_file);
  void GetRepairErrorList(engines::TPdfRepair* repair);

  std::string out_name_;
  std::list<std::string> errors_;
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_REPAIR_TASK_H_
