// Writes a document with page numbers.
//
//   PdfPageNumberTask task(report);
//   task.SetPageNumberTextTemplate("Page {n} of {p}");
//   task.SetVerticalPosition(PdfTransformVerticalPos::Top);
//   task.AddTargetPattern("2-10");                // without this, all pages
//   task.SetOutputPath("/data/out");
//   task.Execute();                               // document_with_page_numbers.pdf
#ifndef TARNIX_PDF_PAGE_NUMBER_TASK_H_
#define TARNIX_PDF_PAGE_NUMBER_TASK_H_

#include <string>

#include "PdfDecorationTask.h"
#include "PdfPagePoint.h"
#include "TarnixExport.h"

namespace TarnixTools {

class TARNIX_EXPORT PdfPageNumberTask : public PdfDecorationTask {
 public:
  // Targets all pages: throws what TargetAllPages throws. An empty output name keeps the default
  // one.
  explicit PdfPageNumberTask(const PdfDoc& document);
  PdfPageNumberTask(const PdfDoc& document, const std::string& out_name);

  PdfPageNumberTask(const PdfPageNumberTask& other);
  PdfPageNumberTask(PdfPageNumberTask&& other) noexcept;
  PdfPageNumberTask& operator=(const PdfPageNumberTask& other);
  PdfPageNumberTask& operator=(PdfPageNumberTask&& other) noexcept;
  ~PdfPageNumberTask();

  std::string& GetPageNumberTextTemplate() { return transformation_.GetPageNumberTextTemplate(); }

  void SetPageNumberTextTemplate(const std::string& text) {
    transformation_.SetPageNumberTextTemplate(text);
  }

  int GetStartingPageNum() const { return transformation_.GetStartingPageNum(); }

  void SetStartingPageNum(int number) { transformation_.SetStartingPageNum(number); }

  PdfPagePoint& GetAbsolutePosition() { return transformation_.GetAbsolutePosition(); }

  void SetAbsolutePosition(const PdfPagePoint& point) {
    transformation_.SetAbsolutePosition(point);
  }

  double GetAbsolutePositionX() const { return transformation_.GetAbsolutePositionX(); }

  void SetAbsolutePositionX(double x) { transformation_.SetAbsolutePositionX(x); }

  double GetAbsolutePositionY() const { return transformation_.GetAbsolutePositionY(); }

  void SetAbsolutePositionY(double y) { transformation_.SetAbsolutePositionY(y); }

  PdfTransformTextAlignment GetTextAlignment() const { return transformation_.GetTextAlignment(); }

  void SetTextAlignment(PdfTransformTextAlignment alignment) {
    transformation_.SetTextAlignment(alignment);
  }

  int GetTextOpacity() const { return transformation_.GetTextOpacity(); }

  void SetTextOpacity(int percent) { transformation_.SetTextOpacity(percent); }

  bool GetDoFacingPages() const { return transformation_.GetDoFacingPages(); }

  void SetDoFacingPages(bool do_facing_pages) { transformation_.SetDoFacingPages(do_facing_pages); }

  bool GetFirstCoverPage() const { return transformation_.GetFirstCoverPage(); }

  void SetFirstCoverPage(bool first_cover_page) {
    transformation_.SetFirstCoverPage(first_cover_page);
  }

  // Writes the copy to the output directory, the document's own when none was set. Throws
  // InvalidParameter unless there is exactly one document, and what PdfDoc::Transform throws.
  void Execute();

 private:
  void SetDefaults();
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_PAGE_NUMBER_TASK_H_
