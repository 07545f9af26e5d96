// The pages of a document in order, with what they inherit (ISO 32000-2, 7.7.3).
#ifndef TARNIX_PDF_TREE_PAGETREE_H_
#define TARNIX_PDF_TREE_PAGETREE_H_

#include <array>
#include <cstdint>
#include <span>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "pdf/file/Document.h"

namespace TarnixTools::pdf {

// Attributes that a page takes from its ancestors when it lacks them itself (table 31).
inline constexpr std::array<std::string_view, 4> kInheritablePageKeys = {"Resources", "MediaBox",
                                                                         "CropBox", "Rotate"};
enum class InheritableKey : std::uint8_t { kResources, kMediaBox, kCropBox, kRotate };

class PageTree {
 public:
  struct Page {
    std::uint32_t number = 0;     // 0: the page is no object of its own
    std::uint32_t node = 0;       // its parent, which gives what it lacks
    bool has_annotations = true;  // its dictionary has /Annots, or was not looked at yet
    Object direct;                // the dictionary of a page that is no object of its own
  };

  // An attribute as it is written, which may be a reference, and what gives it.
  struct Given {
    Object value;            // null: nothing does
    std::uint32_t node = 0;  // 0: the page itself
  };

  // Walks the tree, tolerantly: nodes that cannot be used are passed over, with findings. A tree
  // that leads to no page, or that has lost some, is looked for again by reading the whole file.
  // Where its /Count says that pages are still missing, pages whose parent belongs to the tree take
  // their places. A kid that the cross-reference calls in use and that cannot be read stands as an
  // empty page, so that the others keep their numbers; a kid that is null or free is none. Throws Error(kNoPages) for a damaged document in which no page can be found,
  // kLimitExceeded for more than limits::kMaxPages.
  explicit PageTree(Document& document);

  const std::vector<Page>& pages() const { return pages_; }

  // Loads the dictionary of a page.
  Object Load(const Page& page, Arena& arena) const;
  // The attribute that holds for the page: its own, or else that of its nearest ancestor that has
  // one (7.7.3.4); null for none. A value that leads to null counts as none, one of the wrong kind
  // hides what the ancestors have.
  Object Attribute(const Page& page, InheritableKey key, Arena& arena) const;
  // For a page whose dictionary is loaded already.
  Object Attribute(const Page& page, const Object& dictionary, InheritableKey key,
                   Arena& arena) const;
  // The attribute for those who copy it or ask where it stands. It lives as long as the dictionary
  // and the tree.
  Given FindAttribute(const Page& page, const Object& dictionary, InheritableKey key) const;

  // Number of the node that gives an attribute; 0 for one that is no object of its own.
  std::uint32_t NumberOf(const Given& given) const { return nodes_[given.node].number; }

  // Whether the object is a page or a node of the tree, which a copied page must not drag along.
  bool IsPage(std::uint32_t number) const { return page_numbers_.contains(number); }

  bool IsNode(std::uint32_t number) const { return node_numbers_.contains(number); }

 private:
  struct Node {
    std::uint32_t number = 0;         // 0: no object of its own
    std::array<Given, 4> attributes;  // that hold for its kids
  };

  // Whether a kid that cannot be used was a page. kPossible: no cross-reference is left to tell.
  enum class Loss : std::uint8_t { kNone, kPossible, kCertain };

  // A kid that cannot be used.
  struct Hole {
    std::size_t position = 0;  // in pages_, of the page that follows
    std::uint32_t node = 0;
    Loss loss = Loss::kNone;
    bool is_node = false;  // all kids of a node
  };

  // What holes are filled with.
  struct Filling {
    std::span<const Page> adopted;
    std::size_t possible = 0;  // empty pages that the tree claims beside those certainly lost
    std::size_t blanks = 0;    // empty pages that may still be made
  };

  // A node that is being walked: its kids, some of them still to come.
  struct Level {
    std::vector<Object> kids;
    std::size_t next = 0;
    std::uint32_t node = 0;
  };

  void Walk();
  bool IsAbsent(const Object& value) const;
  void WalkBelow(const Object& root, std::uint32_t root_number);
  Level OpenNode(const Object& dictionary, std::uint32_t parent, std::uint32_t number);
  void AddPage(const Object& dictionary, std::uint32_t parent, std::uint32_t number);
  Loss LossOf(const Object& kid);
  void AddHole(const Hole& hole, std::uint32_t number);
  bool IsWorthRebuilding() const;
  std::size_t LostCount() const;
  void FillHoles();
  void FillHole(const Hole& hole, Filling& filling);
  std::vector<Page> FindLostPages();
  std::vector<Page> AdoptLostPages(std::size_t missing);
  void Salvage();

  Document* document_;
  Arena arena_;  // attributes of nodes and direct pages
  std::vector<Node> nodes_;
  std::vector<Page> pages_;
  std::unordered_set<std::uint32_t> page_numbers_;
  std::unordered_set<std::uint32_t> node_numbers_;
  // Arrays of kids that are objects of their own. Each is one node's: nodes written in place have no
  // number by which a loop would show.
  std::unordered_set<std::uint32_t> kid_lists_;
  std::vector<Hole> holes_;
  std::size_t claimed_count_ = 0;  // the root's /Count
  bool is_xref_known_;             // as the file has it
  bool has_root_ = false;
  bool has_holes_ = false;  // kids that are no pages and lead to none
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_TREE_PAGETREE_H_
