// Writes a document with an image on its pages.
//
//   PdfStampImageTask task(report);
//   task.SetInputImage("/data/logo.png");
//   task.SetVerticalPosition(PdfTransformVerticalPos::Top);
//   task.SetHorizontalPosition(PdfTransformHorizontalPos::Right);
//   task.SetOutputPath("/data/out");
//   task.Execute();                               // document_after_image_stamp.pdf
#ifndef TARNIX_PDF_STAMP_IMAGE_TASK_H_
#define TARNIX_PDF_STAMP_IMAGE_TASK_H_

#include <string>

#include "PdfDecorationTask.h"
#include "TarnixExport.h"

namespace TarnixTools {

// The settings of text are kept, and have no effect on an image.
class TARNIX_EXPORT PdfStampImageTask : public PdfDecorationTask {
 public:
  // Targets all pages: throws what TargetAllPages throws. An empty output name keeps the default
  // one.
  explicit PdfStampImageTask(const PdfDoc& document);
  PdfStampImageTask(const PdfDoc& document, const std::string& out_name);

  PdfStampImageTask(const PdfStampImageTask& other);
  PdfStampImageTask(PdfStampImageTask&& other) noexcept;
  PdfStampImageTask& operator=(const PdfStampImageTask& other);
  PdfStampImageTask& operator=(PdfStampImageTask&& other) noexcept;
  ~PdfStampImageTask();

  std::string& GetInputImage() { return transformation_.GetInputImage(); }

  void SetInputImage(const std::string& path) { transformation_.SetInputImage(path); }

  int GetOpacity() const { return transformation_.GetOpacity(); }

  void SetOpacity(int percent) { transformation_.SetOpacity(percent); }

  double GetPixelsPerPoint() const { return transformation_.GetPixelsPerPoint(); }

  void SetPixelsPerPoint(double pixels) { transformation_.SetPixelsPerPoint(pixels); }

  std::string& GetPageNumberTextTemplate() { return transformation_.GetPageNumberTextTemplate(); }

  void SetPageNumberTextTemplate(const std::string& text) {
    transformation_.SetPageNumberTextTemplate(text);
  }

  int GetStartingPageNum() const { return transformation_.GetStartingPageNum(); }

  void SetStartingPageNum(int number) { transformation_.SetStartingPageNum(number); }

  int GetMarginX() const { return transformation_.GetMarginX(); }

  void SetMarginX(int margin) { transformation_.SetMarginX(margin); }

  int GetMarginY() const { return transformation_.GetMarginY(); }

  void SetMarginY(int margin) { transformation_.SetMarginY(margin); }

  bool GetMosaic() const { return transformation_.GetMosaic(); }

  void SetMosaic(bool mosaic) { transformation_.SetMosaic(mosaic); }

  double GetRotation() const { return transformation_.GetRotation(); }

  void SetRotation(double degrees) { transformation_.SetRotation(degrees); }

  // Writes the copy to the output directory, the document's own when none was set. Throws
  // InvalidParameter unless there is exactly one document and an image path, FileNotFound when the
  // image cannot be opened, and what PdfDoc::Transform throws. A mosaic leaves its last position,
  // and no adjustments, in the settings.
  void Execute();

 private:
  void SetDefaults();
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_STAMP_IMAGE_TASK_H_
