// The structure tree of a source (ISO 32000-2, 14.7.2): which elements there are and what they
// hold, by page and by object. Read once, so that a copy's work is in proportion to what it copies.
//
// What the tree says is taken as the truth: the parent tree, which says it the other way round, is
// made anew for each target. So content keeps its tags where the source's parent tree is missing,
// wrong or incomplete.
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_STRUCTURE_SOURCESTRUCTURE_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_STRUCTURE_SOURCESTRUCTURE_H_

#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "engines/toolbox/copy/structure/StructureNames.h"
#include "pdf/syntax/Arena.h"
#include "pdf/syntax/Object.h"
#include "pdf/write/ObjectCopier.h"

namespace TarnixTools::pdf {
class Document;
}  // namespace TarnixTools::pdf

namespace TarnixTools::engines::toolbox {

class SourceDocument;

// What the catalog's /MarkInfo says.
struct MarkInfo {
  bool is_there = false;
  bool is_marked = false;
  bool has_user_properties = false;
  bool has_suspects = false;
};

class SourceStructure {
 public:
  // Elements stand in document order, so that descendants follow. The first stands for the root of
  // the tree.
  struct Element {
    std::uint32_t number = 0;      // 0: no object of its own
    std::uint32_t parent = 0;      // as an index
    std::uint32_t position = 0;    // among its parent's kids
    std::uint32_t end = 0;         // the index after its last descendant
    std::uint32_t item_count = 0;  // of what it and its descendants hold
    bool is_row = false;           // of a table
  };

  // A piece of content that an element holds.
  struct Item {
    std::uint32_t page = 0;  // object number; 0 when it is not known
    std::uint32_t element = 0;
    std::uint32_t position = 0;  // among the element's kids
    std::uint32_t object = 0;  // the object it is, or the stream that its marked content is in; 0:
                               // it is in the page's content
    std::int32_t mcid = 0;     // kWholeObject: the object as a whole

    bool IsWholeObject() const { return mcid == kWholeObject; }
  };

  // A dictionary with its kids, in whatever form they were given.
  struct Loaded {
    pdf::Object dictionary;
    std::span<const pdf::Object> kids;
  };

  static constexpr std::int32_t kWholeObject = -1;

  explicit SourceStructure(SourceDocument& source);

  // Whether there is a structure tree.
  bool is_tagged() const { return !elements_.empty(); }

  const MarkInfo& mark_info() const { return mark_info_; }

  const std::vector<Element>& elements() const { return elements_; }

  const std::vector<Item>& items() const { return items_; }

  // The items of a page by its object number, in document order.
  std::span<const Item> ItemsOfPage(std::uint32_t page_number) const;
  // The items that are in this stream, or that are the object itself, as indexes of items().
  std::span<const std::uint32_t> ItemsOfObject(std::uint32_t number) const;

  // An element by its index; the first gives the root's dictionary. The result lives as long as the
  // arena and this.
  Loaded Load(std::uint32_t index, pdf::Arena& arena) const;

  // The page that an element's content takes from an ancestor, as an object number; 0 when it names
  // one itself, or has no such content. (The standard has no such inheritance, but documents do.)
  std::uint32_t InheritedPage(std::uint32_t index) const;

  // One more than the highest key of the parent tree.
  std::int64_t key_count() const { return key_count_; }

  // Elements that have an id, as indexes, with it.
  const std::vector<std::pair<std::uint32_t, std::string>>& ids() const { return ids_; }

  // The role map and the class map.
  const NamedValues& roles() const { return roles_; }

  const NamedValues& classes() const { return classes_; }

  // For one copy at a time, whose user clears it: a number for each element, by index.
  pdf::NumberMap& slots() { return slots_; }

 private:
  friend class StructureReader;

  // Kept in memory: elements with so many kids that reading them for every copy would be slow, and
  // those that are no objects of their own.
  struct Held {
    std::uint32_t index;
    Loaded loaded;
  };

  const Held* FindHeld(std::uint32_t index) const;

  pdf::Document* document_;
  MarkInfo mark_info_;
  std::vector<Element> elements_;
  std::vector<Item> items_;               // by page, then in document order
  std::vector<std::uint32_t> by_object_;  // indexes of items that have an object, by its number
  std::vector<Held> held_;                // by index
  pdf::Arena held_arena_;
  std::vector<std::pair<std::uint32_t, std::uint32_t>> inherited_pages_;  // by index
  std::int64_t key_count_ = 0;
  std::vector<std::pair<std::uint32_t, std::string>> ids_;
  NamedValues roles_;
  NamedValues classes_;
  pdf::NumberMap slots_;
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_STRUCTURE_SOURCESTRUCTURE_H_
