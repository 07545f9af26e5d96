// The entries of a stream's dictionary that stay true when its data becomes other data.
#ifndef TARNIX_ENGINES_REPAIR_CHECKS_STREAMENTRIES_H_
#define TARNIX_ENGINES_REPAIR_CHECKS_STREAMENTRIES_H_

#include <string>

#include "pdf/syntax/Object.h"

namespace TarnixTools::engines::repair {

// Appends all but those that say how the data is coded and how long it is (ISO 32000-2, 7.3.8.2),
// the abbreviations that readers take included.
void AppendEntriesWithoutData(std::string& text, const pdf::Object& dictionary);

}  // namespace TarnixTools::engines::repair

#endif  // TARNIX_ENGINES_REPAIR_CHECKS_STREAMENTRIES_H_
