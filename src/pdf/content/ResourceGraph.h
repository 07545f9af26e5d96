// What a page leads to by way of its resources and annotations: everything with content (forms,
// tiling patterns, soft-mask groups, glyphs of Type 3 fonts, appearances in all their states) and
// everything that such content can use (images with their masks and alternates, fonts, shadings,
// graphics states, colour spaces and those within them), whether it is used or not.
//
//   ResourceGraph graph(document);
//   for (std::size_t i = 0; i < pages.pages().size(); ++i) {
//     graph.AddPage(pages, i);
//     while (const ResourceNode* node = graph.Next()) {
//       if (node->kind == ResourceKind::kImage) ...
//
// Every object is told once, however many pages lead to it; content without resources of its own
// once for each resources in which its names are looked up instead. No recursion; bounded.
#ifndef TARNIX_PDF_CONTENT_RESOURCEGRAPH_H_
#define TARNIX_PDF_CONTENT_RESOURCEGRAPH_H_

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "pdf/content/ResourceKind.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"

namespace TarnixTools::pdf {

struct ResourceNode {
  ResourceKind kind = ResourceKind::kUnknown;
  std::uint32_t number = 0;  // of the object; 0 for one written in place
  std::uint32_t user = 0;    // number of the object that leads here
  std::string_view name;     // that its user has for it; empty where there is none
  Object value;              // resolved; the dictionary of a stream
  ResourceScope scope;       // where names in there are looked up, or else those of its user
};

class ResourceGraph {
 public:
  // The document outlives this.
  explicit ResourceGraph(Document& document) : document_(&document) {}

  // What Next tells of from now on: the page, then what it leads to and was not told yet. What was
  // added before and not asked for is forgotten. The page tree outlives the asking.
  void AddPage(const PageTree& pages, std::size_t page_index);

  // What Next tells of from now on: an entry of resources, or content that is no page's, then what
  // it leads to and was not told yet. What is written in place outlives the asking.
  //   user - where names are looked up by what has no resources of its own
  void AddResource(ResourceCategory category, const Object& entry, const ResourceScope& user);
  void AddContent(const ContentPlace& content, const ResourceScope& user);

  // The next one, valid until the next call; null at the end. Throws Error for a document that
  // cannot be read any more.
  const ResourceNode* Next();

  // Not to go on to what the node that was told last leads to.
  void SkipBelow() { is_expanded_ = true; }

  // False: something was left out, being too much or too deep.
  bool is_complete() const { return is_complete_; }

 private:
  using SharedArena = std::shared_ptr<Arena>;

  // As what an object is looked at: its kind, or the category of an entry of resources, by which
  // its kind is found.
  struct Role {
    ResourceKind kind = ResourceKind::kUnknown;
    std::optional<ResourceCategory> category;
  };

  // What is still to be looked at.
  struct Item {
    Object value;  // a reference, or what is written in place
    Role role;
    int depth = 0;
    std::uint32_t user = 0;
    std::string_view name;
    ResourceScope scope;      // of the user
    SharedArena arena;        // of the value and the name
    SharedArena scope_arena;  // of the scope
  };

  void Begin(const Object& value, const Role& role, const ResourceScope& user);
  static std::uint64_t KeyOf(const Role& role, std::uint32_t number);

  void TakePage();
  bool Take();
  void FindScope();
  ResourceKind KindOfValue(const Object& value) const;
  bool IsKnown(const Role& role, std::uint32_t number, std::uint32_t owner) const;
  void Note(std::uint32_t number);
  void Expand();
  void ExpandContent();
  void ExpandResources();
  void ExpandAnnotations();
  void ExpandGlyphs();
  void ExpandImage();
  void ExpandGraphicsState();
  void ExpandColorSpace();
  void ExpandColorants(const Object& attributes);
  void Add(const Object& value, ResourceKind kind, std::string_view name = {});
  void AddEntry(const Object& value, ResourceCategory category, std::string_view name = {});
  void AddItem(const Object& value, const Role& role, std::string_view name);

  Object Resolve(const Object& value) { return document_->Resolve(value, *arena_); }

  Object Get(std::string_view key) { return Resolve(node_.value.Get(key)); }

  Document* document_;
  const PageTree* pages_ = nullptr;
  std::size_t page_index_ = 0;
  std::vector<Item> waiting_;  // the next one last
  // By number and role: whether names in there are looked up in the resources of the user.
  std::unordered_map<std::uint64_t, bool> seen_;
  std::unordered_set<std::uint64_t> seen_in_scope_;   // those of which it is so, by owner too
  std::unordered_set<std::uint32_t> seen_resources_;  // by owner
  Item item_;                                         // taken last
  ResourceNode node_;                                 // what it is
  SharedArena arena_;                                 // of its value
  SharedArena scope_arena_;                           // of its scope
  bool has_resources_ = false;                        // of its own
  bool is_expanded_ = true;
  bool is_complete_ = true;
  std::size_t added_ = 0;  // for the page
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_CONTENT_RESOURCEGRAPH_H_
