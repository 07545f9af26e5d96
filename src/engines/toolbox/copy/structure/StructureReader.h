// Reads a source's structure tree: once, element by element, whatever is wrong with it.
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_STRUCTURE_STRUCTUREREADER_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_STRUCTURE_STRUCTUREREADER_H_

#include <cstdint>
#include <span>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "engines/toolbox/copy/structure/SourceStructure.h"

namespace TarnixTools::engines::toolbox {

// The kids that stand in an element's dictionary: one, or those of an array in it.
std::span<const pdf::Object> KidsOf(const pdf::Object& dictionary, pdf::Arena& arena);

// Marked content that is described by a dictionary, and an object that is content as a whole.
bool IsMarkedContent(const pdf::Object& kid);
bool IsObjectReference(const pdf::Object& kid);

class StructureReader {
 public:
  StructureReader(SourceDocument& source, SourceStructure& structure)
      : source_(&source), document_(structure.document_), structure_(&structure) {}

  void Read(const pdf::Object& root);

 private:
  using Element = SourceStructure::Element;
  using Item = SourceStructure::Item;

  // A kid to be looked at: a reference, or an element that is no object of its own.
  struct Kid {
    std::uint32_t parent;
    std::uint32_t position;
    pdf::Object value;
    bool is_all;  // the /K itself, which may lead to an array of kids
  };

  // The page that an element gives to what it holds.
  struct Page {
    std::uint32_t number = 0;  // of the page's object; 0 for none
    bool is_own = false;       // rather than an ancestor's
  };

  void ReadNames(const pdf::Object& root);
  void ReadParentTreeKeys(const pdf::Object& root);
  void ReadKid(const Kid& kid);
  void AddElement(const Kid& kid, pdf::Object dictionary);
  void AddKids(std::uint32_t index, std::span<const pdf::Object> kids, bool is_all);
  void AddKidsApart(std::uint32_t index, std::uint32_t array_number);
  void AddItem(std::uint32_t index, std::uint32_t position, const pdf::Object& kid);
  bool IsPage(const pdf::Object& value) const;
  void Sum();
  void Sort();

  SourceDocument* source_;
  pdf::Document* document_;
  SourceStructure* structure_;
  pdf::Arena arena_;  // for one kid
  std::vector<Kid> waiting_;
  std::vector<Page> pages_;                    // by element
  std::vector<bool> seen_;                     // by object number
  std::unordered_set<std::string_view> rows_;  // names of element types that are table rows
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_STRUCTURE_STRUCTUREREADER_H_
