// The plain values in which the document engine measures, as they appear in the interface of
// PdfTransformation and PdfText.
#ifndef TARNIX_PDF_ENGINE_TYPES_H_
#define TARNIX_PDF_ENGINE_TYPES_H_

namespace TarnixTools::engines {

// A font of the document engine; PdfFont gives one.
struct TPdfFont;

// The size of a page or of a block of text in points (1/72 inch).
struct TPdfSize {
  double width = 0;
  double height = 0;
};

// A place in points, from the lower-left corner of the page as it is seen, y upwards.
struct TPdfPoint {
  double x = 0;
  double y = 0;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_PDF_ENGINE_TYPES_H_
