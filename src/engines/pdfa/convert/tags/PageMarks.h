// What of a page's content belongs together, and where in the content it stands.
#ifndef TARNIX_ENGINES_PDFA_CONVERT_TAGS_PAGEMARKS_H_
#define TARNIX_ENGINES_PDFA_CONVERT_TAGS_PAGEMARKS_H_

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "engines/pdfa/convert/contents/ContentEdits.h"
#include "pdf/Box.h"

namespace TarnixTools::engines::pdfa {

// A paragraph, a heading or a picture; it will be an element of the structure.
struct PageBlock {
  enum class Kind : std::uint8_t {
    kText,
    kTextOfForm,  // of a form XObject, whatever it holds
    kFigure,
  };

  Kind kind = Kind::kText;
  pdf::Box box;             // around all of it, on the page
  double size = 0;          // of most of its text
  std::size_t lines = 0;    // of text
  std::uint64_t codes = 0;  // of text that are shown
};

// Operators from a place in the content to another one. The ranges of a page do not overlap.
struct MarkedRange {
  static constexpr std::uint32_t kArtifact = std::numeric_limits<std::uint32_t>::max();

  std::uint32_t begin = 0;
  std::uint32_t end = 0;
  std::uint32_t block = kArtifact;  // index of one; kArtifact for decoration
};

struct PageMarks {
  std::vector<PageBlock> blocks;  // in the order in which they begin; drawings last
  std::vector<MarkedRange> ranges;
  bool is_whole = true;  // false: there is more on the page than is marked
  ContentEdits edits;    // that take out the marks of an older structure

  // What there is to be held of the page.
  std::size_t size() const { return blocks.size() + ranges.size() + edits.count(); }
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_TAGS_PAGEMARKS_H_
