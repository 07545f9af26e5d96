// What of a page's content belongs together, and where in the content it stands.
#ifndef TARNIX_ENGINES_PDFA_CONVERT_TAGS_PAGEMARKS_H_
#define TARNIX_ENGINES_PDFA_CONVERT_TAGS_PAGEMARKS_H_

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "engines/pdfa/convert/contents/ContentEdits.h"
#include "engines/support/layout/PageLayout.h"
#include "engines/support/layout/paragraphs/HeadingLooks.h"
#include "pdf/Box.h"

namespace TarnixTools::engines::pdfa {

// A paragraph, a picture, a table or a part of one; it will be an element of the structure.
struct PageBlock {
  static constexpr std::uint32_t kNoParent = std::numeric_limits<std::uint32_t>::max();

  enum class Kind : std::uint8_t {
    kText,
    kLabel,  // of the list item that it lies in
    kForm,   // a form XObject with much text, whatever that is
    kFigure,
    kTable,
    kRow,
    kHeaderCell,
    kCell,
  };

  Kind kind = Kind::kText;
  std::uint8_t list_level = 0;             // from 0
  std::uint8_t heading_level = 0;          // 0 for none
  ListKind numbering = ListKind::kBullet;  // of the list
  std::uint32_t list = 0;                  // that it is an item of; 0 for none
  std::uint32_t parent = kNoParent;        // index of the block that it lies in
  std::uint32_t row_span = 1;              // of a cell
  std::uint32_t column_span = 1;           // of a cell
  HeadingLook look;                        // of text of the flow; others have no lines
  pdf::Box box;                            // around all of it, on the page
};

// Operators from a place in the content to another one. The ranges of a page do not overlap.
struct MarkedRange {
  static constexpr std::uint32_t kArtifact = std::numeric_limits<std::uint32_t>::max();

  std::uint32_t begin = 0;
  std::uint32_t end = 0;
  std::uint32_t block = kArtifact;  // index of one; kArtifact for decoration
  bool is_array_rest = false;       // it begins within the array of an operator, which is cut there
};

struct PageMarks {
  std::vector<PageBlock> blocks;    // in the order in which they are read, each behind its parent
  std::vector<MarkedRange> ranges;  // in the order of the content
  bool is_whole = true;             // false: there is more on the page than is marked
  ContentEdits edits;               // that take out the marks of an older structure

  // What there is to be held of the page.
  std::size_t size() const { return blocks.size() + ranges.size() + edits.count(); }
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_TAGS_PAGEMARKS_H_
