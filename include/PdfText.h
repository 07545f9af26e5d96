// The measures of a block of text: its lines, and how high they are in one font at one size. This
// is what positions of stamps and page numbers are computed from; a host that only decorates
// documents has no use for it.
//
//   const PdfFont font("Arial", "");
//   PdfText block("First line\nSecond line", font.Get(), 24);
//   block.GetLinesNum();                                  // 2
//   block.GetTextHeight();                                // 28.8 more than that of one line
#ifndef TARNIX_PDF_TEXT_H_
#define TARNIX_PDF_TEXT_H_

#include <string>
#include <vector>

#include "PdfEngineTypes.h"
#include "TarnixExport.h"

namespace TarnixTools {

// A block looks like this:
//
//   +-----------------+  top: the ascent above the first baseline
//   | First line      |
//   | Second line     |  one leading below the first
//   +-----------------+  bottom: the descent below the last baseline
//
// Lengths are points (1/72 inch). Nothing is drawn, and nothing changes after the construction.
// Copies are plain values; the font is asked for its measures by the constructor only, and need not
// live longer than that.
class TARNIX_EXPORT PdfText {
 public:
  //   text - UTF-8. Line feeds separate the lines: one at the end starts no further line, and two
  //          in a row have an empty line between them. Carriage returns stay in the lines. An empty
  //          text is one empty line.
  //   font - as PdfFont gives it; stays the caller's.
  //   size - in points.
  // Throws InvalidParameter for a null font, and for a size that is not above 0.
  PdfText(const std::string& text, engines::TPdfFont* font, double size);

  PdfText(const PdfText& other);
  PdfText(PdfText&& other) noexcept;
  PdfText& operator=(const PdfText& other);
  PdfText& operator=(PdfText&& other) noexcept;
  ~PdfText();

  // At least one, without their line feeds, top to bottom; each may be empty. The object's own
  // list, which a host may change: none of the measures follow.
  std::vector<std::string>& GetTextLines() { return lines_; }

  // At least 1.
  int GetLinesNum() const { return static_cast<int>(lines_.size()); }

  // The first line of the greatest length in bytes. How wide it is depends on its characters, too:
  // another line may take more room on the page.
  // The object's own text: changing it changes none of the measures. Empty for an empty text.
  std::string& GetLongestLine() { return longest_line_; }

  // From the top of the first line's ascent to the bottom of the last line's descent: one leading
  // for each further line, and the height of the font.
  double GetTextHeight() const { return text_height_; }

  // From the baseline up to the top of the font's letters, at this size.
  double GetAscent() const { return ascent_; }

  // From the baseline down to the bottom of the font's letters, at this size; negative, for it is
  // below.
  double GetDescent() const { return descent_; }

  // From one baseline to the next: 1.2 times the size.
  double GetLeading() const { return leading_; }

  // As given.
  double GetFontSize() const { return font_size_; }

 private:
  // Empties everything, as before a construction.
  void SetDefaults();

  // Fills lines_ and longest_line_ from text_.
  void SplitLines();
  void AddLine(const std::string& line);

  std::string text_;  // as given
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
