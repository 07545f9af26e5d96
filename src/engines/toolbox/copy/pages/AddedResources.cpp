#include "engines/toolbox/copy/pages/AddedResources.h"

#include <algorithm>
#include <unordered_set>

#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::toolbox {

std::string FreePrefix(const pdf::ResourceDictionary& resources,
                       const std::vector<AddedResource>& added) {
  std::unordered_set<std::string> taken;
  for (const pdf::NamedResource& resource : resources.entries) {
    if (resource.name.starts_with(kFirstPrefix)) {
      taken.insert(static_cast<char>(resource.category) + std::string(resource.name));
    }
  }
  std::string prefix(kFirstPrefix);
  const auto is_taken = [&](const AddedResource& resource) {
    return taken.contains(static_cast<char>(resource.category) + prefix + resource.name);
  };
  for (int i = 0; std::any_of(added.begin(), added.end(), is_taken); ++i) {
    prefix = std::string(kFirstPrefix) + std::to_string(i) + '.';
  }
  return prefix;
}

void AppendAdded(std::string& out, pdf::ResourceCategory category,
                 const std::vector<AddedResource>& added, const std::string& prefix) {
  for (const AddedResource& resource : added) {
    if (resource.category == category) {
      pdf::AppendName(out, prefix + resource.name);
      pdf::AppendReference(out, resource.number);
    }
  }
}

std::string AddedOnly(const std::vector<AddedResource>& added, const std::string& prefix) {
  std::string text = "<<";
  for (std::size_t i = 0; i < pdf::kResourceCategoryKeys.size(); ++i) {
    std::string names;
    AppendAdded(names, static_cast<pdf::ResourceCategory>(i), added, prefix);
    if (!names.empty()) {
      pdf::AppendName(text, pdf::kResourceCategoryKeys[i]);
      text += "<<" + names + ">>";
    }
  }
  return text + ">>";
}

}  // namespace TarnixTools::engines::toolbox
