// A font of this system, to measure text with as decorations are measured: a host that wants to know
// beforehand where a text will stand asks PdfText and PdfTransformation with it.
//
//   PdfTransformation stamp(PdfTransformType::StampText);
//   stamp.SetInputText("DRAFT\nnot for print");
//
//   const PdfFont font(stamp.GetFontName(), stamp.GetFontStyle());
//   PdfText block(stamp.GetInputText(), font.Get(), stamp.GetFontSize());
//   const double width = font.GetTextWidth(block.GetLongestLine(), block.GetFontSize());
//   const engines::TPdfPoint start =
//       stamp.GetTextPosition(1, {612, 792}, {width, block.GetTextHeight()}, block);
#ifndef TARNIX_PDF_FONT_H_
#define TARNIX_PDF_FONT_H_

#include <memory>
#include <string>

#include "PdfEngineTypes.h"
#include "TarnixExport.h"

namespace TarnixTools {

// A plain value: copies stand for the same font, which lives as long as one of them. A font and its
// copies are used by one thread at a time.
class TARNIX_EXPORT PdfFont {
 public:
  //   name  - of a family that is installed; Arial takes the place of one that cannot be used, as
  //           in decorations.
  //   style - words such as "Bold Italic"; empty for the regular style.
  // Throws EngineError when there is no Arial either.
  PdfFont(const std::string& name, const std::string& style);

  PdfFont(const PdfFont& other);
  PdfFont(PdfFont&& other) noexcept;
  PdfFont& operator=(const PdfFont& other);
  PdfFont& operator=(PdfFont&& other) noexcept;
  ~PdfFont();

  // For PdfText; valid as long as the object or a copy of it is. Null once it was moved from.
  engines::TPdfFont* Get() const;

  // How wide a line is, in points, as it would be shown: shaped, with characters that the font
  // lacks in another one. What cannot be shown counts as nothing.
  //   line - UTF-8.
  //   size - of the font, in points; 0 is the result for one that is not above 0.
  double GetTextWidth(const std::string& line, double size) const;

 private:
  struct Inside;
  std::shared_ptr<Inside> inside_;
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_FONT_H_
