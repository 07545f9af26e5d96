// Puts text that a page shows together to lines and paragraphs, by baselines, gaps and type sizes, in
// the order in which it is shown.
//
//   TextBlocks blocks(marks.blocks);
//   const std::uint32_t block = blocks.Add(run);   // index in marks.blocks
#ifndef TARNIX_ENGINES_PDFA_CONVERT_TAGS_TEXTBLOCKS_H_
#define TARNIX_ENGINES_PDFA_CONVERT_TAGS_TEXTBLOCKS_H_

#include <cstddef>
#include <cstdint>
#include <vector>

#include "engines/pdfa/convert/tags/PageMarks.h"
#include "pdf/Matrix.h"

namespace TarnixTools::engines::pdfa {

// A string, on the page.
struct TextRun {
  pdf::Point begin;  // of the baseline
  pdf::Point end;
  pdf::Point along;  // of length 1: where the text goes
  pdf::Point up;     // of length 1
  double size = 0;
  std::size_t codes = 0;
};

class TextBlocks {
 public:
  // The blocks outlive this.
  explicit TextBlocks(std::vector<PageBlock>& blocks) : blocks_(&blocks) {}

  // The block that the run goes on with or begins.
  std::uint32_t Add(const TextRun& run);
  // The block goes on with the run wherever that is.
  void Extend(const TextRun& run);

  // What comes next begins a block.
  void Break() { is_open_ = false; }

 private:
  // A place by how far it is along the line, and above it.
  struct Place {
    double along = 0;
    double up = 0;
  };

  Place PlaceOf(const pdf::Point& point) const;
  void Begin(const TextRun& run);
  void BeginLine(const Place& place);
  bool GoesOnLine(const TextRun& run, const Place& place) const;
  bool IsNextLine(const TextRun& run, const Place& place) const;
  bool EndedEarly() const;

  std::vector<PageBlock>* blocks_;
  bool is_open_ = false;
  pdf::Point along_;  // of the block
  pdf::Point up_;
  double size_ = 0;        // of most of the block's text
  std::size_t codes_ = 0;  // of the longest run
  // Of the line, and of the block.
  Place line_;
  double line_end_ = 0;
  double left_ = 0;
  double right_ = 0;
  double spacing_ = 0;  // of the lines; 0 for a single one
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_TAGS_TEXTBLOCKS_H_
