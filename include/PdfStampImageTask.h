// Writes a document with an image on its pages.
//
//   PdfStampImageTask task(report);
//   task.SetInputImage("/data/logo.png");
//   task.SetVerticalPosition(PdfTransformVerticalPos::Top);
//   task.SetHorizontalPosition(PdfTransformHorizontalPos::Right);
//   task.SetOutputPath("/data/out");
//   task.Execute();                               // document_after_image_stamp.pdf
//
//   PdfStampImageTask paper(report, "on_paper.pdf");
//   paper.SetInputImage("/data/letterhead.png");
//   paper.SetPixelsPerPoint(300.0 / 72);          // of 300 pixels per inch
//   paper.SetLayerPosition(PdfTransformLayerPos::Under);
//   paper.Execute();                              // on_paper.pdf beside the report
#ifndef TARNIX_PDF_STAMP_IMAGE_TASK_H_
#define TARNIX_PDF_STAMP_IMAGE_TASK_H_

#include <string>

#include "PdfDecorationTask.h"
#include "TarnixExport.h"

namespace TarnixTools {

// The image is in the middle of the page, not turned, 1.33 pixels to a point, unless something else
// is set; what is not described here is described in PdfDecorationTask. The settings of text are
// kept, and have no effect on an image.
class TARNIX_EXPORT PdfStampImageTask : public PdfDecorationTask {
 public:
  // The task owns a copy of the document and targets all its pages, for which the document is
  // opened once: throws what TargetAllPages throws. An empty output name keeps the default one,
  // "document_after_image_stamp.pdf".
  explicit PdfStampImageTask(const PdfDoc& document);
  PdfStampImageTask(const PdfDoc& document, const std::string& out_name);

  PdfStampImageTask(const PdfStampImageTask& other);
  PdfStampImageTask(PdfStampImageTask&& other) noexcept;
  PdfStampImageTask& operator=(const PdfStampImageTask& other);
  PdfStampImageTask& operator=(PdfStampImageTask&& other) noexcept;
  ~PdfStampImageTask();

  // Path of the image file, UTF-8; empty at first, which Execute refuses. JPEG, JPEG 2000, PNG,
  // TIFF, GIF, BMP, PNM or WebP, told by its content; of several pictures it is the first. It is
  // read by Execute, and stored once in the output however many pages show it.
  std::string& GetInputImage() { return transformation_.GetInputImage(); }

  void SetInputImage(const std::string& path) { transformation_.SetInputImage(path); }

  // In percent, from 1 to 100, as at first; beyond that the setter throws InvalidParameter. Kept,
  // and not applied unless SetApplyOpacity says so: the image is painted opaque, but for what the file
  // itself says is transparent.
  int GetOpacity() const { return transformation_.GetOpacity(); }

  void SetOpacity(int percent) { transformation_.SetOpacity(percent); }

  // Whether the opacity is applied; false at first, so that hosts which set one and never saw it get
  // what they got. It multiplies what the file itself says is transparent.
  bool GetApplyOpacity() const { return transformation_.GetApplyOpacity(); }

  void SetApplyOpacity(bool apply) { transformation_.SetApplyOpacity(apply); }

  // How wide the image is, its proportions kept, in points or percent of the page's width; 0, as at
  // first, leaves that to the pixels per point. Throws InvalidParameter for less. Percents are of the
  // page as a viewer shows it, so that a stamp is as wide on a turned page as on an upright one.
  double GetImageWidth() const { return transformation_.GetImageWidth(); }

  PdfTransformWidthUnit GetImageWidthUnit() const { return transformation_.GetImageWidthUnit(); }

  void SetImageWidth(double width, PdfTransformWidthUnit unit = PdfTransformWidthUnit::Points) {
    transformation_.SetImageWidth(width, unit);
  }

  // How large the image is: its width and height in pixels, seen upright, are divided by this. 1.33
  // at first; 1 makes each pixel a point, 300.0 / 72 gives an image of 300 pixels per inch its own
  // size.
  double GetPixelsPerPoint() const { return transformation_.GetPixelsPerPoint(); }

  void SetPixelsPerPoint(double pixels) { transformation_.SetPixelsPerPoint(pixels); }

  // The template and the first number of page numbers, as PdfPageNumberTask has them; of no effect
  // on an image.
  std::string& GetPageNumberTextTemplate() { return transformation_.GetPageNumberTextTemplate(); }

  void SetPageNumberTextTemplate(const std::string& text) {
    transformation_.SetPageNumberTextTemplate(text);
  }

  int GetStartingPageNum() const { return transformation_.GetStartingPageNum(); }

  void SetStartingPageNum(int number) { transformation_.SetStartingPageNum(number); }

  // Whether the stamp is drawn nine times on each page: at the top, in the middle and at the
  // bottom, each on the left, centred and on the right. Positions and adjustments that were set do
  // not count then. False at first.
  bool GetMosaic() const { return transformation_.GetMosaic(); }

  void SetMosaic(bool mosaic) { transformation_.SetMosaic(mosaic); }

  // Degrees counter-clockwise about the centre of the image, 0 at first.
  double GetRotation() const { return transformation_.GetRotation(); }

  void SetRotation(double degrees) { transformation_.SetRotation(degrees); }

  // Writes the copy to the output directory, the document's own when none was set. The document
  // itself is not changed. A mosaic leaves its last position, and no adjustments, in the settings.
  //
  // Throws
  //   InvalidParameter  unless there is exactly one document and an image path, before a file is
  //                     touched
  //   FileNotFound      when the image or the document cannot be opened, or the output cannot be
  //                     created
  //   PasswordError     when the document's own password is missing or wrong
  //   EngineError       when the file is no image, the document cannot be read, or the output
  //                     cannot be written to its end
  void Execute();

 private:
  void Run();
  void SetDefaults();
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_STAMP_IMAGE_TASK_H_
