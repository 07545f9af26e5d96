// Writes a document with a text on its pages.
//
//   PdfStampTextTask task(report);
//   task.SetInputText("DRAFT");
//   task.SetRotation(45);
//   task.SetTextOpacity(30);
//   task.SetOutputPath("/data/out");
//   task.Execute();                               // document_after_text_stamp.pdf
#ifndef TARNIX_PDF_STAMP_TEXT_TASK_H_
#define TARNIX_PDF_STAMP_TEXT_TASK_H_

#include <string>

#include "PdfDecorationTask.h"
#include "PdfPagePoint.h"
#include "TarnixExport.h"

namespace TarnixTools {

class TARNIX_EXPORT PdfStampTextTask : public PdfDecorationTask {
 public:
  // Targets all pages: throws what TargetAllPages throws. An empty output name keeps the default
  // one.
  explicit PdfStampTextTask(const PdfDoc& document);
  PdfStampTextTask(const PdfDoc& document, const std::string& out_name);

  PdfStampTextTask(const PdfStampTextTask& other);
  PdfStampTextTask(PdfStampTextTask&& other) noexcept;
  PdfStampTextTask& operator=(const PdfStampTextTask& other);
  PdfStampTextTask& operator=(PdfStampTextTask&& other) noexcept;
  ~PdfStampTextTask();

  std::string& GetInputText() { return transformation_.GetInputText(); }

  void SetInputText(const std::string& text) { transformation_.SetInputText(text); }

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

  int GetMarginX() const { return transformation_.GetMarginX(); }

  void SetMarginX(int margin) { transformation_.SetMarginX(margin); }

  int GetMarginY() const { return transformation_.GetMarginY(); }

  void SetMarginY(int margin) { transformation_.SetMarginY(margin); }

  bool GetMosaic() const { return transformation_.GetMosaic(); }

  void SetMosaic(bool mosaic) { transformation_.SetMosaic(mosaic); }

  double GetRotation() const { return transformation_.GetRotation(); }

  void SetRotation(double degrees) { transformation_.SetRotation(degrees); }

  // Writes the copy to the output directory, the document's own when none was set. Throws
  // InvalidParameter unless there is exactly one document and a text, and what PdfDoc::Transform
  // throws. A mosaic leaves its last position, and no adjustments, in the settings.
  void Execute();

 private:
  void SetDefaults();
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_STAMP_TEXT_TASK_H_
