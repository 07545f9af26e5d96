// How much content is read to draw a page. Forms draw forms, as often as they like and in circles
// too, and PDFium follows them until there is no memory left; so pages are looked at before.
#ifndef TARNIX_ENGINES_SUPPORT_DRAWING_DRAWINGCOST_H_
#define TARNIX_ENGINES_SUPPORT_DRAWING_DRAWINGCOST_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "pdf/file/Document.h"
#include "pdf/syntax/Object.h"

namespace TarnixTools::engines {

// What is found out about a document is kept.
class DrawingCost {
 public:
  // The document outlives this.
  explicit DrawingCost(pdf::Document& document) : document_(&document) {}

  struct Page {
    std::uint32_t number = 0;  // any that is the page's own
    pdf::Object contents;
    pdf::Object resources;  // resolved
    pdf::Object annotations;
  };

  struct ResourceName {
    std::string_view category;
    std::string name;
  };

  // What a page must not draw, as that would not come to an end in reasonable memory.
  struct Excess {
    bool contents = false;  // all of them
    std::vector<ResourceName> resources;
    std::vector<std::size_t> annotations;  // places in /Annots, ascending

    bool empty() const { return !contents && resources.empty() && annotations.empty(); }
  };

  // Throws pdf::Error for a document that cannot be read any more.
  Excess ExcessOf(const Page& page);

 private:
  // Something with content of its own that content uses by name: a form, a tiling pattern, a
  // graphics state with a soft mask, a Type 3 font.
  struct Child {
    ResourceName name;
    std::uint32_t number = 0;  // of the form, the pattern, the mask's group or the font
    std::uint64_t uses = 0;
  };

  // Content and where its names are looked up.
  struct Scope {
    const pdf::Object* resources;
    std::uint32_t owner;  // number of the object that has the resources
    int depth;
  };

  std::vector<Child> ChildrenOf(const pdf::Object& resources);
  std::uint32_t ContentOf(std::string_view category, const pdf::Object& entry);
  std::uint32_t FindContent(std::string_view category, const pdf::Object& entry);
  std::uint64_t CostOfChild(const Child& child, const Scope& scope);
  std::uint64_t CostOfStream(std::uint32_t number, const Scope& scope);
  std::uint64_t CostOfFont(std::uint32_t number, const Scope& scope);
  std::uint64_t CostOfContent(std::uint32_t number, std::vector<Child>& children);
  std::uint64_t CostOfAnnotation(const pdf::Object& annotation, const Scope& scope);
  std::vector<std::uint32_t> StreamsOf(const pdf::Object& contents);

  pdf::Document* document_;
  std::unordered_map<std::uint64_t, std::uint64_t> costs_;  // by number and owner; 0: under way
  // The number of the object with a resource's content, 0 for none, by the resource's own.
  std::unordered_map<std::uint32_t, std::uint32_t> contents_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_DRAWING_DRAWINGCOST_H_
