// The elements of a page's structure: what its blocks become (ISO 32000-2, 14.8.4).
//
//   PageElements elements(marks);
//   elements.Use(elements.OfBlock(range.block));   // for all that has content
//   for (const PageElements::Element& element : elements.all()) ...
//
// Items that follow each other are in lists, those further in within the item before them.
#ifndef TARNIX_ENGINES_PDFA_CONVERT_TAGS_PAGEELEMENTS_H_
#define TARNIX_ENGINES_PDFA_CONVERT_TAGS_PAGEELEMENTS_H_

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "engines/pdfa/convert/tags/PageMarks.h"

namespace TarnixTools::engines::pdfa {

class PageElements {
 public:
  static constexpr std::uint32_t kNoParent = std::numeric_limits<std::uint32_t>::max();

  struct Element {
    std::string_view type;
    std::uint32_t parent = kNoParent;  // index of the element that it lies in
    std::uint32_t number = 0;          // of its object, once it has one
    bool is_used = false;              // it has content, or one within it has
    std::string attributes;            // entries of its dictionary
    std::string kids;                  // that it consists of, as text
  };

  // The levels of headings are those that the blocks have.
  explicit PageElements(const std::vector<PageBlock>& blocks);

  // The element that the content of the block belongs to, by index.
  std::uint32_t OfBlock(std::uint32_t block) const { return of_block_[block]; }

  // Says that the element is needed, and with it those around it; of a table all are.
  void Use(std::uint32_t element);
  void UseWholeTables();

  // Each behind its parent, otherwise in the order in which they are read.
  std::vector<Element>& all() { return elements_; }

 private:
  // A list that may go on.
  struct List {
    std::uint32_t list = 0;
    std::uint8_t level = 0;
    std::uint32_t element = 0;
    std::uint32_t last_body = 0;  // of its last item
  };

  void AddBlock(const PageBlock& block);
  std::uint32_t AddItem(const PageBlock& block);
  std::uint32_t ListFor(const PageBlock& block);
  std::uint32_t AddLabel(const PageBlock& block);
  std::uint32_t Add(std::string_view type, std::uint32_t parent, std::string attributes = {});

  const std::vector<PageBlock>* blocks_;
  std::vector<Element> elements_;
  std::vector<std::uint32_t> of_block_;
  std::vector<List> lists_;  // that are open, each in the one before
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_TAGS_PAGEELEMENTS_H_
