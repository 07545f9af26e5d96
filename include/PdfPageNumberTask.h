// Writes a document with page numbers.
//
//   PdfPageNumberTask task(report);
//   task.SetPageNumberTextTemplate("Page {n} of {p}");
//   task.SetVerticalPosition(PdfTransformVerticalPos::Top);
//   task.AddTargetPattern("2-10");                // without this, all pages
//   task.SetOutputPath("/data/out");
//   task.Execute();                               // document_with_page_numbers.pdf
//
//   PdfPageNumberTask book(report, "book.pdf");
//   book.SetStartingPageNum(15);                  // a later volume
//   book.SetHorizontalPosition(PdfTransformHorizontalPos::Left);
//   book.SetHorizontalAdjustment(30);             // inwards on both sides
//   book.SetDoFacingPages(true);                  // left on even pages, right on odd ones
//   book.Execute();
//
//   PdfPageNumberTask inset(report, "inset.pdf");
//   inset.SetHorizontalPosition(PdfTransformHorizontalPos::Right);
//   inset.SetMarginX(20);                         // points from the edges that the numbers are at
//   inset.SetMarginY(20);
//   inset.Execute();
#ifndef TARNIX_PDF_PAGE_NUMBER_TASK_H_
#define TARNIX_PDF_PAGE_NUMBER_TASK_H_

#include <string>

#include "PdfDecorationTask.h"
#include "TarnixExport.h"

namespace TarnixTools {

// The numbers are at the bottom of the page, centred, without a margin, in black Arial of 24
// points, unless something else is set; what is not described here is described in
// PdfDecorationTask.
class TARNIX_EXPORT PdfPageNumberTask : public PdfDecorationTask {
 public:
  // The task owns a copy of the document and targets all its pages, for which the document is
  // opened once: throws what TargetAllPages throws. An empty output name keeps the default one,
  // "document_with_page_numbers.pdf".
  explicit PdfPageNumberTask(const PdfDoc& document);
  PdfPageNumberTask(const PdfDoc& document, const std::string& out_name);

  PdfPageNumberTask(const PdfPageNumberTask& other);
  PdfPageNumberTask(PdfPageNumberTask&& other) noexcept;
  PdfPageNumberTask& operator=(const PdfPageNumberTask& other);
  PdfPageNumberTask& operator=(PdfPageNumberTask&& other) noexcept;
  ~PdfPageNumberTask();

  // What is written, "{n}" at first: UTF-8, in which "{n}" stands for the page's number and "{p}"
  // for the number of pages of the document, as often as they come. Line feeds separate lines.
  std::string& GetPageNumberTextTemplate() { return transformation_.GetPageNumberTextTemplate(); }

  void SetPageNumberTextTemplate(const std::string& text) {
    transformation_.SetPageNumberTextTemplate(text);
  }

  // The number of the document's first page, 1 at first; any whole number will do, 0 and negative
  // ones too. Pages count on from it whether they are decorated or not, and "{p}" stays the number
  // of pages.
  int GetStartingPageNum() const { return transformation_.GetStartingPageNum(); }

  void SetStartingPageNum(int number) { transformation_.SetStartingPageNum(number); }

  // How lines of different widths stand against each other within the block that they make; Center
  // at first. Of no effect on a text of one line.
  PdfTransformTextAlignment GetTextAlignment() const { return transformation_.GetTextAlignment(); }

  void SetTextAlignment(PdfTransformTextAlignment alignment) {
    transformation_.SetTextAlignment(alignment);
  }

  // In percent, from 1 (hardly to be seen) to 100 (opaque, as at first). The setter throws
  // InvalidParameter for a value beyond that and leaves the old one.
  int GetTextOpacity() const { return transformation_.GetTextOpacity(); }

  void SetTextOpacity(int percent) { transformation_.SetTextOpacity(percent); }

  // Whether numbers change sides from page to page, as in a book: what was set is for even pages,
  // and odd ones have left for right and the other sign of the horizontal adjustment. False at
  // first; of no effect on numbers that are centred.
  bool GetDoFacingPages() const { return transformation_.GetDoFacingPages(); }

  void SetDoFacingPages(bool do_facing_pages) { transformation_.SetDoFacingPages(do_facing_pages); }

  // Whether the first page is a cover, so that what was set is for odd pages, and even ones have
  // left for right. False at first; looked at for facing pages only.
  bool GetFirstCoverPage() const { return transformation_.GetFirstCoverPage(); }

  void SetFirstCoverPage(bool first_cover_page) {
    transformation_.SetFirstCoverPage(first_cover_page);
  }

  // Writes the copy to the output directory, the document's own when none was set. The document
  // itself is not changed. GetReport() then tells how many pages were numbered; a number that
  // cannot be painted is no failure of the job, but a line there.
  //
  // Throws
  //   InvalidParameter  unless there is exactly one document, and for a font size that is not above
  //                     0
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

#endif  // TARNIX_PDF_PAGE_NUMBER_TASK_H_
