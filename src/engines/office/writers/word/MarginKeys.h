// What headers and footers of pages have in common.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_WORD_MARGINKEYS_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_WORD_MARGINKEYS_H_

#include <optional>
#include <string>

#include "engines/office/writers/word/SectionPlan.h"

namespace TarnixTools::engines::office {

// Equal for pages that show the same header and footer, but for the number of the page.
std::string MarginKey(const PageLayout& page);

// The number that the page shows of itself.
std::optional<PageNumber> ShownNumber(const PageLayout& page);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_WORD_MARGINKEYS_H_
