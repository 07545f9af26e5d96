// The plain values in which the document engine measures, as they appear in the interface of
// PdfTransformation and PdfText.
#ifndef TARNIX_PDF_ENGINE_TYPES_H_
#define TARNIX_PDF_ENGINE_TYPES_H_

namespace TarnixTools::engines {

// A font of the document engine; PdfFont gives one.
struct TPdfFont;

// The size of a page or of a block of text in points (1/72 inch). Of a page it is that of the crop box,
// as a viewer shows it: width and height change places where the page is turned by a quarter.
struct TPdfSize {
  double width = 0;
  double height = 0;
};

// A place in points, from the lower-left corner of the page as it is seen, y upwards. Negative values,
// and those beyond the size of the page, are places outside of it.
struct TPdfPoint {
  double x = 0;
  double y = 0;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_PDF_ENGINE_TYPES_H_
