// A page as people read it: paragraphs, tables, pictures and drawings, in bands of columns, and what
// stands apart from them. Made of a page model by the analysis, written by the writers.
//
// Every part keeps its place. Lengths are points on the page as it is seen, from its upper-left
// corner, y downwards.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_PAGELAYOUT_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_PAGELAYOUT_H_

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "engines/support/pages/PageModel.h"
#include "pdf/Box.h"

namespace TarnixTools::engines {

enum class Raise : std::uint8_t { kNone, kSuperscript, kSubscript };

// How text looks. Equal looks of a page are one (PageLayout::looks).
struct TextLook {
  std::shared_ptr<const Typeface> face;
  double size = 0;  // points of the em; of raised text, as if it were not raised
  Rgb color;
  std::optional<Rgb> highlight;
  bool is_underlined = false;
  bool is_struck = false;
  bool is_hidden = false;
  Raise raise = Raise::kNone;
};

enum class PieceKind : std::uint8_t {
  kText,
  kTab,         // a gap that leads to a place: in a list, a table of contents, columns of a line
  kPageNumber,  // the number of the page; text: as the page shows it
  kNoteMark,    // the mark of a footnote; number: in PageLayout::notes
};

// A part of a line with one look.
struct TextPiece {
  PieceKind kind = PieceKind::kText;
  std::string text;          // UTF-8, in the order in which it is read
  std::uint32_t look = 0;    // in PageLayout::looks
  std::int32_t link = -1;    // in PageLayout::links; -1 for none
  std::uint32_t number = 0;  // as the kind says
  double x = 0;              // where it begins, from the left
  double width = 0;          // on the page, spacing included
  // Glyph::place of what shows it, where those are known.
  std::vector<std::uint32_t> places;
};

// What stands between a line and the next one of its paragraph.
enum class LineJoint : std::uint8_t {
  kSpace,
  kNothing,  // a word goes on, or the script has no spaces; a hyphen of the line's end is left out
  kBreak,    // the line ends here for a reason: of a poem, of an address
};

struct TextLine {
  pdf::Box box;  // from the ascenders to the descenders of its largest text
  double baseline = 0;
  std::vector<TextPiece> pieces;
  LineJoint joint = LineJoint::kSpace;
  double inset = 0;  // points from where its paragraph begins, beside a large initial
};

enum class ParagraphRole : std::uint8_t {
  kBody,
  kTitle,
  kHeading,
  kListItem,
  kCaption,
  kContents,  // an entry of a table of contents
  kQuote,
  kCode,
};

enum class Alignment : std::uint8_t { kLeft, kRight, kCenter, kJustified };

enum class ListKind : std::uint8_t {
  kBullet,
  kDecimal,
  kLowerLetter,
  kUpperLetter,
  kLowerRoman,
  kUpperRoman,
};

// The label of a list item, which the lines of the paragraph do not have any more.
struct ListLabel {
  ListKind kind = ListKind::kBullet;
  std::string text;        // as it is shown: "•", "(a)", "2.1."
  std::int32_t value = 0;  // of a number: 1 for "a", "i" and "1"
  std::uint32_t look = 0;  // in PageLayout::looks
  double x = 0;            // where the label begins
  std::uint32_t list = 0;  // items of one list have one number, over pages too
  // As those of a piece.
  std::vector<std::uint32_t> places;
};

// The large letter that the first word of a paragraph begins with, which the lines of the paragraph
// do not have any more.
struct Initial {
  TextLine line;
  std::uint32_t lines_beside = 0;  // the first ones of the paragraph, two at least
};

struct Paragraph {
  ParagraphRole role = ParagraphRole::kBody;
  std::uint8_t level = 0;  // of a heading 1 to 6, of a list item and of an entry of contents from 0
  bool is_tagged = false;  // the structure tree says what it is
  Alignment alignment = Alignment::kLeft;
  bool is_right_to_left = false;
  bool goes_on = false;     // it continues the last paragraph of the column or page before
  pdf::Box box;             // around its lines
  double first_indent = 0;  // of the first line against the others; negative: it hangs
  double line_pitch = 0;    // from baseline to baseline; 0 for a single line
  std::optional<ListLabel> label;
  std::optional<Initial> initial;
  std::vector<TextLine> lines;
  std::string bookmark;  // that links of the document lead to; empty: none
};

// A border or a rule. A width of 0 is none.
struct Border {
  double width = 0;
  Rgb color;

  friend bool operator==(const Border&, const Border&) = default;
};

enum class VerticalAlignment : std::uint8_t { kTop, kMiddle, kBottom };

struct Block;

struct TableCell {
  std::uint32_t row = 0;
  std::uint32_t column = 0;
  std::uint32_t row_span = 1;
  std::uint32_t column_span = 1;
  pdf::Box box;
  std::array<Border, 4> borders;  // top, right, bottom, left
  std::optional<Rgb> fill;
  VerticalAlignment alignment = VerticalAlignment::kTop;
  // Degrees clockwise, of the text within: 0, 90 or 270. The blocks lie as if the cell were turned
  // upright about its middle.
  double angle = 0;
  std::vector<Block> blocks;

  // The room for the blocks.
  pdf::Box TextBox() const;
};

// A box turned by a quarter about its middle.
inline pdf::Box QuarterTurned(const pdf::Box& box) {
  const double x = (box.left + box.right) / 2;
  const double y = (box.bottom + box.top) / 2;
  const double width = box.top - box.bottom;
  const double height = box.right - box.left;
  return {x - width / 2, y - height / 2, x + width / 2, y + height / 2};
}

inline pdf::Box TableCell::TextBox() const {
  return angle == 0 ? box : QuarterTurned(box);
}

struct Table {
  pdf::Box box;
  std::vector<double> columns;   // the edges, from the left: one more than there are columns
  std::vector<double> rows;      // the edges, from the top
  std::vector<TableCell> cells;  // by row, then by column; every place is in one of them
  std::uint32_t header_rows = 0;
  bool is_ruled = false;
  bool goes_on = false;  // it continues the last table of the page before
};

// An image, or several that make one picture.
struct Picture {
  pdf::Box box;
  std::vector<std::uint32_t> images;  // in PageModel::images, as they are painted
  std::string description;            // the alternate text that the document gives
};

// Paths that belong together: a chart, a figure, a frame, a rule.
struct Drawing {
  pdf::Box box;
  std::vector<std::uint32_t> paths;  // in PageModel::paths, as they are painted
  bool is_simple = false;            // rectangles and lines only
  std::string description;
};

// A part of the flow.
struct Block {
  std::variant<Paragraph, Table, Picture, Drawing> content;
};

inline const pdf::Box& BoxOf(const Block& block) {
  return std::visit([](const auto& content) -> const pdf::Box& { return content.box; },
                    block.content);
}

struct Column {
  pdf::Box box;
  std::vector<Block> blocks;  // from top to bottom
};

// A strip of the page over its whole width, with columns side by side.
struct Band {
  pdf::Box box;
  std::vector<Column> columns;  // in the order in which they are read
};

// What does not belong to the flow: text over a picture, a side note, turned text.
struct Floating {
  pdf::Box box;
  double angle = 0;        // degrees clockwise, of the text within; the blocks lie as if it were 0
  bool is_behind = false;  // the text of the page runs over it
  // Text whose letters stand upright below each other, in lines from right to left, where the angle
  // is 90 degrees. Those of a page are in the order in which they are read.
  bool is_vertical = false;
  std::vector<Block> blocks;
};

struct Note {
  std::string label;
  std::vector<Block> blocks;
};

// Where text leads when it is clicked on: out of the document, or to a paragraph of it.
struct LinkTarget {
  std::string uri;         // UTF-8; empty for a link into the document
  std::string bookmark;    // Paragraph::bookmark; empty until the whole document is analysed
  std::int32_t page = -1;  // zero-based; -1 for a link out of the document
  double y = 0;            // on that page
};

struct PageLayout {
  std::uint32_t number = 0;  // zero-based, in the document
  double width = 0;
  double height = 0;
  std::vector<TextLook> looks;
  std::vector<LinkTarget> links;  // as PageModel::links
  std::vector<Band> bands;        // from top to bottom
  std::vector<Floating> floats;   // as they are painted
  std::vector<Block> header;      // what is repeated over pages, above and below the flow
  std::vector<Block> footer;
  std::vector<Note> notes;        // footnotes
  std::optional<Rgb> background;  // of the whole page
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_PAGELAYOUT_H_
