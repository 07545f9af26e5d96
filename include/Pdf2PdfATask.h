// Writes a document as PDF/A.
//
//   Pdf2PdfATask task(report);
//   task.SetCompliance(PdfCompliance::PdfA2B);
//   task.SetOutputPath("/data/archive");
//   task.Execute();                               // output_pdfa_doc.pdf
//
// What was changed or left out for it:
//
//   for (const PdfReportEntry& entry : task.GetReport().GetEntries()) {
//     std::cerr << PdfReport::GetText(entry) << '\n';
//   }
#ifndef TARNIX_PDF_2_PDFA_TASK_H_
#define TARNIX_PDF_2_PDFA_TASK_H_

#include <string>

#include "PdfCompliance.h"
#include "PdfTask.h"
#include "PdfTransformation.h"
#include "TarnixExport.h"

namespace TarnixTools {

// Pages are not drawn anew: they look the same, text stays text, and links, forms and tags stay.
// What PDF/A does not allow (scripts, passwords, signatures, which hold for one file only) is left
// out, and the report tells. What the document says of itself is kept whether or not
// PdfTask::SetKeepMetadata asks for it.
class TARNIX_EXPORT Pdf2PdfATask : public PdfTask {
 public:
  // The task owns a copy of the document, which is not opened before Execute.
  //   out_name - as SetOutName
  explicit Pdf2PdfATask(const PdfDoc& document);
  Pdf2PdfATask(const PdfDoc& document, const std::string& out_name);

  Pdf2PdfATask(const Pdf2PdfATask& other);
  Pdf2PdfATask(Pdf2PdfATask&& other) noexcept;
  Pdf2PdfATask& operator=(const Pdf2PdfATask& other);
  Pdf2PdfATask& operator=(Pdf2PdfATask&& other) noexcept;
  ~Pdf2PdfATask();

  // The level that the output is to have. None, as at first: the most useful one that the document
  // can reach, 2b or better.
  void SetCompliance(PdfCompliance compliance) { transformation_.SetCompliance(compliance); }

  PdfCompliance GetCompliance() const { return transformation_.GetCompliance(); }

  // Whether a lower level will do where the document cannot have the one asked for; false at first.
  void SetDowngrade(bool downgrade) { transformation_.SetPdfaDowngrade(downgrade); }

  bool GetDowngrade() const { return transformation_.GetPdfaDowngrade(); }

  // The output's file name, put behind the output directory as it stands: "output_pdfa_doc.pdf" at
  // first. An empty one is ignored.
  void SetOutName(const std::string& name);

  std::string& GetOutName() { return out_name_; }

  // Writes the copy to the output directory, the document's own when none was set; it takes the
  // place of a file that has its name, be it the document itself, once it is complete. PDF/A cannot
  // be encrypted: with an output password the copy claims no level, and the report says so; without
  // one it tells of protection that is gone.
  //
  // Throws
  //   InvalidParameter  unless there is exactly one document; no file is touched before
  //   EngineError       when the document cannot be converted, with the engine's code: 17 for a
  //                     missing or wrong password, 0x83410540 when the level that was asked for
  //                     cannot be reached and no lower one was allowed. GetReport() then tells what
  //                     stands in the way, and nothing is written
  //   FileNotFound      when the output cannot be created
  void Execute();

 private:
  void Run();
  void SetDefaults();

  std::string out_name_;
  PdfTransformation transformation_;
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_2_PDFA_TASK_H_
