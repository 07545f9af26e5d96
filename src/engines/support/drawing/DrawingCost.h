// How much content is read to draw a page. Forms draw forms, as often as they like and in circles
// too, and PDFium follows them until there is no memory left; so pages are looked at before.
#ifndef TARNIX_ENGINES_SUPPORT_DRAWING_DRAWINGCOST_H_
#define TARNIX_ENGINES_SUPPORT_DRAWING_DRAWINGCOST_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "pdf/content/ResourceKind.h"
#include "pdf/file/Document.h"
#include "pdf/syntax/Object.h"
#include "pdf/tree/PageTree.h"

namespace TarnixTools::engines {

// What is found out about a document is kept.
class DrawingCost {
 public:
  // Of what has no end.
  static constexpr std::uint64_t kEndless = std::uint64_t{1} << 40;

  // The document outlives this.
  explicit DrawingCost(pdf::Document& document) : document_(&document) {}

  struct ResourceName {
    std::string_view category;
    std::string name;
  };

  // Bytes of content that are read to draw a page, or more; kEndless at most. Where the page's own
  // are too many, the others are not counted.
  struct PageCost {
    std::uint64_t contents = 0;
    std::vector<std::pair<ResourceName, std::uint64_t>> resources;  // that the contents name
    std::vector<std::uint64_t> annotations;                         // in the order of /Annots
  };

  // What a page must not draw, as that would not come to an end in reasonable memory.
  struct Excess {
    bool contents = false;  // all of them
    std::vector<ResourceName> resources;
    std::vector<std::size_t> annotations;  // places in /Annots, ascending

    bool empty() const { return !contents && resources.empty() && annotations.empty(); }
  };

  // Both throw pdf::Error for a document that cannot be read any more.
  PageCost CostOf(const pdf::PageTree& pages, std::size_t page_index);
  Excess ExcessOf(const pdf::PageTree& pages, std::size_t page_index);

 private:
  // Something with content of its own that content uses by name: a form, a tiling pattern, a
  // graphics state with a soft mask, a Type 3 font.
  struct Child {
    ResourceName name;
    pdf::ContentPlace content;
    pdf::Object entry;  // of the resources
    std::uint64_t uses = 0;
  };

  // Where the names in some content are looked up, and how far within other content it is.
  struct Scope {
    pdf::ResourceScope names;
    int depth = 0;
  };

  std::vector<Child> ChildrenOf(const Scope& scope, pdf::Arena& arena);
  pdf::ContentPlace ContentOf(pdf::ResourceCategory category, const pdf::Object& entry);
  std::optional<std::uint64_t> KnownCost(std::uint64_t key);
  std::uint64_t CostOfChild(const Child& child, const Scope& scope);
  std::uint64_t CostOfStream(std::uint32_t number, const Scope& scope);
  std::uint64_t CostOfFont(const pdf::Object& font, const Scope& scope);
  std::uint64_t CostOfContent(std::uint32_t number, std::vector<Child>& children);
  std::uint64_t CostOfAnnotation(const pdf::Object& annotation, const Scope& scope);

  pdf::Document* document_;
  std::unordered_map<std::uint64_t, std::uint64_t> costs_;  // by number and owner; 0: under way
  // By number of a resource and category.
  std::unordered_map<std::uint64_t, pdf::ContentPlace> contents_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_DRAWING_DRAWINGCOST_H_
