// Changes to dictionaries that the catalog has, which may be objects of their own or be written in
// place.
#ifndef TARNIX_ENGINES_REPAIR_CHECKS_CATALOGENTRIES_H_
#define TARNIX_ENGINES_REPAIR_CHECKS_CATALOGENTRIES_H_

#include <string_view>

#include "engines/repair/checks/Check.h"

namespace TarnixTools::engines::repair {

// Sets an entry of the dictionary that the catalog has under the name; removes it when there is no
// text. What was said before about others of its entries holds.
void SetCatalogEntry(CheckContext& context, std::string_view name, std::string_view key,
                     std::string_view text);

}  // namespace TarnixTools::engines::repair

#endif  // TARNIX_ENGINES_REPAIR_CHECKS_CATALOGENTRIES_H_
