// What is painted onto one copied page, as it waits for the page to be written.
#ifndef TARNIX_ENGINES_TOOLBOX_CONTENT_PAGECONTENT_H_
#define TARNIX_ENGINES_TOOLBOX_CONTENT_PAGECONTENT_H_

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "pdf/content/ResourceNames.h"

namespace TarnixTools::engines::toolbox {

struct AddedResource {
  pdf::ResourceCategory category = pdf::ResourceCategory::kFont;
  std::string name;          // behind the prefix: "F1"
  std::uint32_t number = 0;  // of its object in the target

  friend bool operator==(const AddedResource&, const AddedResource&) = default;
};

// Content streams in which kNamePrefix stands before each name of a resource.
struct PageContent {
  std::string under;
  std::string over;
  std::vector<AddedResource> resources;  // by category, then in the order of their use

  bool is_packed = false;

  bool is_empty() const { return under.empty() && over.empty(); }

  // Deflates what is long, as nothing is added any more while the page waits to be written.
  void Pack();
  // `under` or `over` as it was before.
  std::string Plain(const std::string& part) const;

  void Add(const AddedResource& resource) {
    if (std::find(resources.begin(), resources.end(), resource) == resources.end()) {
      const auto place = std::upper_bound(
          resources.begin(), resources.end(), resource,
          [](const AddedResource& a, const AddedResource& b) { return a.category < b.category; });
      resources.insert(place, resource);
    }
  }
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_CONTENT_PAGECONTENT_H_
