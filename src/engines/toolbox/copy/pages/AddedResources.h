// Resources added to a page's own for what is painted onto it, as text.
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_PAGES_ADDEDRESOURCES_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_PAGES_ADDEDRESOURCES_H_

#include <string>
#include <string_view>
#include <vector>

#include "engines/toolbox/content/PageContent.h"
#include "pdf/content/ResourceUse.h"

namespace TarnixTools::engines::toolbox {

// What names of added resources begin with where nothing of the page's own is in their way.
inline constexpr std::string_view kFirstPrefix = "Tx";

// A beginning of names that makes all that are added differ from those that are there.
std::string FreePrefix(const pdf::ResourceDictionary& resources,
                       const std::vector<AddedResource>& added);

// Appends the names and references of those that are in a category.
void AppendAdded(std::string& out, pdf::ResourceCategory category,
                 const std::vector<AddedResource>& added, const std::string& prefix);

// A resource dictionary with nothing else.
std::string AddedOnly(const std::vector<AddedResource>& added, const std::string& prefix);

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_PAGES_ADDEDRESOURCES_H_
