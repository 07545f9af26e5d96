// The measures of a block of text: its lines, and how high they are in one font at one size.
#ifndef TARNIX_PDF_TEXT_H_
#define TARNIX_PDF_TEXT_H_

#include <string>
#include <vector>

#include "TarnixExport.h"

namespace TarnixTools {

namespace engines {
struct TPdfFont;
}  // namespace engines

// Lengths are points. Nothing is drawn, and nothing changes after the construction.
class TARNIX_EXPORT PdfText {
 public:
  //   text - UTF-8. Line feeds separate the lines: one at the end starts no further line, and two
  //          in a row have an empty line between them. Carriage returns stay in the lines. An empty
  //          text is one empty line.
  //   font - of the document engine; stays the caller's.
  //   size - in points.
  // Throws InvalidParameter for a null font, and for a size that is not above 0.
  PdfText(const std::string& text, engines::TPdfFont* font, double size);

  PdfText(const PdfText& other);
  PdfText(PdfText&& other) noexcept;
  PdfText& operator=(const PdfText& other);
  PdfText& operator=(PdfText&& other) noexcept;
  ~PdfText();

  std::vector<std::string>& GetTextLines() { return lines_; }

  int GetLinesNum() const { return static_cast<int>(lines_.size()); }

  // The first line of the greatest length in bytes. How wide it is depends on its characters, too:
  // another line may take more room on the page.
  std::string& GetLongestLine() { return longest_line_; }

  // From the top of the first line's ascent to the bottom of the last line's descent.
  double GetTextHeight() const { return text_height_; }

  double GetAscent() const { return ascent_; }

  // Negative: below the baseline.
  double GetDescent() const { return descent_; }

  // From one baseline to the next.
  double GetLeading() const { return leading_; }

  double GetFontSize() const { return font_size_; }

 private:
  void SetDefaults();
  void SplitLines();
  void AddLine(const std::string& line);

  std::string text_;
  std::vector<std::string> lines_;
  engines::TPdfFont* font_ = nullptr;  // not owned
  double font_size_ = 0;
  std::string longest_line_;
  double text_height_ = 0;
  double ascent_ = 0;
  double descent_ = 0;
  double leading_ = 0;
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_TEXT_H_
