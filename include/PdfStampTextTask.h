// Writes a document with a text on its pages.
//
//   PdfStampTextTask task(report);
//   task.SetInputText("DRAFT");
//   task.SetRotation(45);
//   task.SetTextOpacity(30);
//   task.SetOutputPath("/data/out");
//   task.Execute();                               // document_after_text_stamp.pdf
//
//   PdfStampTextTask footer(report, "stamped.pdf");
//   footer.SetInputText("Example Ltd.\nwww.example.com");
//   footer.SetAbsolutePosition(PdfPagePoint(72, 36));
//   footer.SetMarginX(0);                         // exactly there
//   footer.SetMarginY(0);
//   footer.SetFontSize(8);
//   footer.Execute();                             // stamped.pdf beside the report
#ifndef TARNIX_PDF_STAMP_TEXT_TASK_H_
#define TARNIX_PDF_STAMP_TEXT_TASK_H_

#include <string>

#include "PdfDecorationTask.h"
#include "TarnixExport.h"

namespace TarnixTools {

// The text is in the middle of the page, in black Arial of 24 points, opaque and not turned, unless
// something else is set; what is not described here is described in PdfDecorationTask.
class TARNIX_EXPORT PdfStampTextTask : public PdfDecorationTask {
 public:
  // The task owns a copy of the document and targets all its pages, for which the document is
  // opened once: throws what TargetAllPages throws. An empty output name keeps the default one,
  // "document_after_text_stamp.pdf".
  explicit PdfStampTextTask(const PdfDoc& document);
  PdfStampTextTask(const PdfDoc& document, const std::string& out_name);

  PdfStampTextTask(const PdfStampTextTask& other);
  PdfStampTextTask(PdfStampTextTask&& other) noexcept;
  PdfStampTextTask& operator=(const PdfStampTextTask& other);
  PdfStampTextTask& operator=(PdfStampTextTask&& other) noexcept;
  ~PdfStampTextTask();

  // The text itself, UTF-8, empty at first, which Execute refuses. Line feeds separate lines;
  // nothing in it stands for something else.
  std::string& GetInputText() { return transformation_.GetInputText(); }

  void SetInputText(const std::string& text) { transformation_.SetInputText(text); }

  // How lines of different widths stand against each other within the block that they make; Left at
  // first. Of no effect on a text of one line.
  PdfTransformTextAlignment GetTextAlignment() const { return transformation_.GetTextAlignment(); }

  void SetTextAlignment(PdfTransformTextAlignment alignment) {
    transformation_.SetTextAlignment(alignment);
  }

  // In percent, from 1 (hardly to be seen) to 100 (opaque, as at first). The setter throws
  // InvalidParameter for a value beyond that and leaves the old one.
  int GetTextOpacity() const { return transformation_.GetTextOpacity(); }

  void SetTextOpacity(int percent) { transformation_.SetTextOpacity(percent); }

  // Whether the stamp is drawn nine times on each page: at the top, in the middle and at the
  // bottom, each on the left, centred and on the right. Positions and adjustments that were set do
  // not count then. False at first.
  bool GetMosaic() const { return transformation_.GetMosaic(); }

  void SetMosaic(bool mosaic) { transformation_.SetMosaic(mosaic); }

  // Degrees counter-clockwise about the left end of the first line's baseline, 0 at first; of a
  // mosaic, about that of each text.
  double GetRotation() const { return transformation_.GetRotation(); }

  void SetRotation(double degrees) { transformation_.SetRotation(degrees); }

  // Writes the copy to the output directory, the document's own when none was set. The document
  // itself is not changed. A mosaic leaves its last position, and no adjustments, in the settings.
  //
  // Throws
  //   InvalidParameter  unless there is exactly one document and a text, before a file is touched;
  //                     for a font size that is not above 0
  //   FileNotFound      when the document cannot be opened or the output cannot be created
  //   PasswordError     when the document's own password is missing or wrong
  //   EngineError       when the document cannot be read, neither the font nor Arial can be used,
  //                     no installed font has a character of the text, or the output cannot be
  //                     written to its end
  void Execute();

 private:
  void Run();
  void SetDefaults();
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_STAMP_TEXT_TASK_H_
