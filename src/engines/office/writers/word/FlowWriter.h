// Blocks below each other, each where it stands on the page: the space before a paragraph is what
// lies between it and where the one before it ends.
//
//   FlowWriter flow(story, page, {left, right, top});
//   flow.Begin({.begins_page = true});
//   flow.Write(column.blocks);
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_WORD_FLOWWRITER_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_WORD_FLOWWRITER_H_

#include <functional>
#include <set>
#include <utility>
#include <vector>

#include "engines/office/writers/word/ParagraphWriter.h"
#include "engines/office/writers/word/WordContext.h"

namespace TarnixTools::engines::office {

// Where text goes, on the page.
struct FlowRoom {
  double left = 0;
  double right = 0;
  double top = 0;
  int depth = 0;           // of tables and boxes around it
  double bottom = 0;       // of a cell, which grows with what does not fit; 0 for none
  bool is_column = false;  // of several beside each other
  double page_bottom = 0;  // below which a page has no room; 0 where that does not matter
};

// What comes with the first paragraph.
struct FlowStart {
  bool begins_page = false;
  bool begins_column = false;
  // The space before the first paragraph is a paragraph of its own: that of a section with columns
  // would move all of them.
  bool has_spacer = false;
  std::function<void()> write_anchored;
};

class FlowWriter {
 public:
  FlowWriter(Story& story, const OfficePage& page, const FlowRoom& room)
      : story_(story), page_(page), room_(room), cursor_(room.top) {}

  void Begin(FlowStart start) {
    start_ = std::move(start);
    has_start_ = true;
  }

  // What does not flow and is written at its place on the page.
  void SetApart(std::set<const Block*> apart) { apart_ = std::move(apart); }

  // What floats beside the flow, from the top. Each is anchored at the paragraph that it stands
  // beside, and taken out of floats, which outlives this.
  //   last - whose last block takes all that is left of them; null where more follows on the page
  void SetFloats(std::vector<const Floating*>& floats, const std::vector<Block>* last) {
    floats_ = &floats;
    last_of_page_ = last;
  }

  // Anchors all that is left of them at the paragraph that comes next.
  void TakeAllFloats();

  // write_section: the section that ends with the last paragraph; may be empty.
  void Write(const std::vector<Block>& blocks, const std::function<void()>& write_section = {});

  // Goes down to a place on the page by an empty paragraph, which may end a section.
  void SkipTo(double y, const std::function<void()>& write_section = {});

  // Where the next paragraph would begin, on the page.
  double cursor() const { return cursor_; }

  // Whether nothing has been written since Begin.
  bool has_start() const { return has_start_; }

  // Whether the last that was written is a paragraph, which what holds the flow may have to end with.
  bool ends_with_paragraph() const { return ends_with_paragraph_; }

 private:
  void WriteBlock(const std::vector<Block>& blocks, std::size_t index,
                  const std::function<void()>& section);
  // Anchors what begins above y; of a column, its own.
  void TakeFloats(double y);
  bool StandsApart(const Block& block) const;

  bool HasToStart() const { return has_start_ || !waiting_.empty(); }

  void WriteText(const Paragraph& paragraph, double after, const std::function<void()>& section);
  void WriteTableAt(const Table& table);
  // False where it is not written in the flow.
  bool WriteImage(const Block& block, const std::function<void()>& section);
  ParagraphPlace PlaceFor(double top);
  void KeepInCell(ParagraphPlace& place, std::size_t lines) const;
  double PitchFor(const Paragraph& paragraph) const;

  Story& story_;
  const OfficePage& page_;
  FlowRoom room_;
  FlowStart start_;
  bool has_start_ = false;
  double cursor_;
  bool ends_with_paragraph_ = false;
  bool is_after_table_ = false;
  std::set<const Block*> apart_;
  std::vector<const Floating*>* floats_ = nullptr;
  const std::vector<Block>* last_of_page_ = nullptr;
  std::vector<Floating> waiting_;  // for a paragraph that they can be anchored at
};

// Where a block begins on the page as the flow has it.
double TopOf(const Block& block, const PageLayout& page);

// Whether a picture or a drawing is written between the paragraphs, and not at its place on the
// page.
bool StandsInFlow(const std::vector<Block>& blocks, std::size_t index);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_WORD_FLOWWRITER_H_
