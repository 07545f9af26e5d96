// Finds where in the content of pages their blocks stand, and what is decoration.
//
//   PageScan scan(document, pages, HiddenContent::kIsMarked);
//   const PageMarks marks = scan.Scan(page_index);
//
// Text that the layout does not have, as that of a font of which nothing tells the characters, goes
// with what is shown before it.
// Forms are gone into to see what they are, and stand as one whole. What is marked as an artifact stays
// one; marks of layers and of replacement texts stay, too; those of another structure go.
#ifndef TARNIX_ENGINES_PDFA_CONVERT_TAGS_PAGESCAN_H_
#define TARNIX_ENGINES_PDFA_CONVERT_TAGS_PAGESCAN_H_

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "engines/pdfa/convert/tags/BlockFinder.h"
#include "engines/pdfa/convert/tags/PageMarks.h"
#include "pdf/content/ContentVisitor.h"
#include "pdf/content/ContentWalker.h"
#include "pdf/tree/PageTree.h"

namespace TarnixTools::engines::pdfa {

// What lies on layers that are not seen.
enum class HiddenContent : std::uint8_t { kIsMarked, kIsLeftOut };

class PageScan : private pdf::ContentVisitor {
 public:
  // Both outlive this. Throws pdf::Error for a document that cannot be read any more.
  PageScan(pdf::Document& document, const pdf::PageTree& pages, HiddenContent hidden);

  // Throws pdf::Error for a document that cannot be read any more.
  PageMarks Scan(std::size_t page_index);

 private:
  // What a form paints.
  struct FormLook {
    std::uint32_t number = 0;
    std::uint64_t codes = 0;  // of text
    bool paints = false;
  };

  // Operators that paint, one after the other.
  struct Unit {
    std::size_t begin = 0;
    std::size_t end = 0;
    std::optional<std::uint32_t> block;  // nothing for what is no block, or not yet
    bool paints = false;
    bool is_form = false;
    bool is_array_rest = false;   // it begins within the array of a TJ
    std::uint64_t codes = 0;      // of text that it shows
    std::size_t text_object = 0;  // that it stands in; 0 for none
    bool is_apart = false;        // a mark stands between it and the one before
    pdf::Box box;
  };

  // Marked content that the page has already.
  struct OldMark {
    bool is_artifact = false;
    bool is_removed = false;
  };

  bool EnterContent(const pdf::ContentEntry& entry) override;
  void LeaveContent(const pdf::ContentEntry& entry) override;
  void Operator(const pdf::Operation& operation, std::size_t offset) override;
  void DrawImage(const pdf::ImageUse& image) override;
  std::optional<pdf::TextAdvance> ShowText(const pdf::StringUse& string) override;
  void PaintPath(const pdf::PathUse& path) override;
  void PaintShading(const pdf::ShadingUse& shading) override;
  void BeginMarked(const pdf::MarkedContent& mark) override;

  bool IsOnPage() const { return forms_.empty(); }

  void Await(std::size_t begin);
  void NoteStrings(const pdf::Operation& operation);
  void TakeAwaited();
  void AddStrings(const Unit& unit);
  void Add(const Unit& unit);
  void MergeLast();
  void NotePath(const pdf::Operation& operation);
  void NoteTextObject(const pdf::Operation& operation);
  void EndTextObject();
  void NoteMark(const pdf::Operation& operation);
  void NoteForm(const FormLook& look);
  void ReplaceOperator(std::string text);
  std::optional<std::uint32_t> BlockOf(const Unit& unit);
  std::uint32_t BlockOfText(const Unit& unit);
  std::uint32_t BlockOfForm(std::uint32_t block);
  bool IsPassedOver();
  void TakeAllForAFigure();
  void FinishPage();

  pdf::Document* document_;
  const pdf::PageTree* pages_;
  BlockFinder finder_;
  pdf::ContentWalker walker_;
  std::map<std::uint32_t, FormLook> looks_;  // by number of the form
  std::vector<FormLook> forms_;              // that run

  // Of the page.
  PageMarks marks_;
  PlacedBlocks placed_;
  std::optional<std::uint32_t> last_text_;  // the block that text was shown of last
  std::vector<Unit> units_;
  std::optional<Unit> awaited_;  // of the operator that runs
  std::vector<OldMark> old_marks_;
  std::size_t open_artifacts_ = 0;  // among them
  pdf::Box form_box_;
  std::vector<std::size_t> strings_;  // of the operator that is awaited: where they begin
  std::size_t operator_begin_ = 0;    // with its operands
  std::size_t operator_end_ = 0;
  std::optional<std::size_t> path_begin_;
  std::size_t text_object_ = 0;  // that runs; 0 for none
  std::size_t text_objects_ = 0;
  std::size_t text_begin_ = 0;
  std::size_t units_before_text_ = 0;
  bool is_apart_ = false;          // a mark has come since the last unit
  bool has_mark_in_text_ = false;  // one has come in the text object
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_TAGS_PAGESCAN_H_
