// Looks up names in one resource dictionary: each category is read once, however often names of it
// are asked for.
#ifndef TARNIX_PDF_CONTENT_RESOURCELOOKUP_H_
#define TARNIX_PDF_CONTENT_RESOURCELOOKUP_H_

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <unordered_map>

#include "pdf/content/ResourceNames.h"
#include "pdf/file/Document.h"

namespace TarnixTools::pdf {

class ResourceLookup {
 public:
  // All outlive this; what is found lives in the arena or with the resources.
  ResourceLookup(Document& document, const Object& resources, Arena& arena)
      : document_(&document), resources_(resources), arena_(&arena) {}

  // The entry as it stands, the last one where the name stands twice; null for none.
  Object Find(ResourceCategory category, std::string_view name);
  // What a value of the dictionary leads to, loaded once.
  const Followed& Follow(const Object& value);
  // All entries of a category.
  const Object& Category(ResourceCategory category);

 private:
  using Index = std::unordered_map<std::string_view, Object>;

  Document* document_;
  Object resources_;
  Arena* arena_;
  std::array<std::optional<Object>, kResourceCategoryKeys.size()> categories_;
  std::array<Index, kResourceCategoryKeys.size()> indexes_;  // of those with many entries
  std::unordered_map<std::uint32_t, Followed> followed_;     // by number
  Followed in_place_;
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_CONTENT_RESOURCELOOKUP_H_
