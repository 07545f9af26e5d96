// Which structure elements come along with copied pages, and under which keys their content finds
// them.
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_STRUCTURE_STRUCTURECOPIER_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_STRUCTURE_STRUCTURECOPIER_H_

#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "engines/toolbox/copy/structure/ElementWriter.h"
#include "engines/toolbox/copy/structure/SourceStructure.h"
#include "pdf/syntax/Object.h"
#include "pdf/write/TokenCopier.h"

namespace TarnixTools::engines::toolbox {

class CopyContext;
struct PageRequest;
class TargetStructure;

class StructureCopier {
 public:
  explicit StructureCopier(CopyContext& context) : context_(&context) {}

  ~StructureCopier();
  StructureCopier(const StructureCopier&) = delete;
  StructureCopier& operator=(const StructureCopier&) = delete;

  // Before any page is written: settles which elements the pages' content needs and how parent tree
  // keys are renumbered. From here on references to these elements hold.
  void Prepare();
  // Appends the page's /StructParents entry. Content of a page that is copied again has none: an
  // element's content is in one place.
  void CopyPageKey(std::string& page, const pdf::Object& dictionary, const PageRequest& request,
                   bool is_repeated);

  // The content of the page, by its number in the source, is in a form now; the entry is the form's.
  void MoveToForm(std::uint32_t page_number, std::uint32_t form_number) {
    page_forms_.emplace(page_number, form_number);
  }

  // Appends an annotation's /StructParent entry, if there is an element for it. For each annotation
  // that is written.
  void CopyAnnotationKey(std::string& out, const pdf::Object& dictionary,
                         std::uint32_t source_number, std::uint32_t target_number);
  // To be called after the pages have been written.
  void Copy();

 private:
  using Item = SourceStructure::Item;

  // An element that comes along.
  struct Kept {
    std::uint32_t index;
    std::uint32_t target_number;
    std::uint32_t item_count;  // kept of what it and its descendants hold
  };

  void CopyMarkInfo(const MarkInfo& marks);
  std::uint32_t Keep(std::uint32_t index);
  void KeepRange(std::uint32_t first, std::uint32_t end);
  void KeepItem(const Item& item);
  void KeepPage(std::uint32_t page_number);
  std::uint32_t WriteHolders(const std::vector<const Item*>& by_mcid);
  void KeepObjects();
  void KeepObject(std::uint32_t number, const pdf::StructureKey* key);
  void AddKey(const pdf::StructureKey* key, bool is_plural, std::uint32_t number);
  void KeepEmptyElements();
  void CountItems();
  void WriteElements();
  void CopyRoot();
  void CopyNamespaces(bool is_before);
  std::uint32_t NamespaceOf(std::uint32_t index);
  std::int64_t KeyFor(const pdf::Object& own_key);

  CopyContext* context_;
  SourceStructure* source_ = nullptr;  // null: the source is not tagged
  TargetStructure* target_ = nullptr;
  pdf::Arena arena_;
  std::int64_t shift_ = 0;
  std::unordered_set<std::int64_t> used_keys_;                     // of the source
  std::unordered_map<std::uint32_t, std::uint32_t> page_arrays_;   // by page number
  std::unordered_map<std::uint32_t, std::uint32_t> annotations_;   // target numbers
  std::vector<std::pair<std::size_t, std::uint32_t>> page_marks_;  // keyed objects from there on
                                                                   // came with this page
  std::unordered_map<std::uint32_t, std::uint32_t> stream_pages_;
  std::unordered_map<std::uint32_t, std::uint32_t> page_forms_;
  std::vector<Kept> kept_;
  std::vector<ElementWriter::Kid> kids_;
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_STRUCTURE_STRUCTURECOPIER_H_
