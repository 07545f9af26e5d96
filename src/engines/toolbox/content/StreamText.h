// Writes streams whose data is at hand.
#ifndef TARNIX_ENGINES_TOOLBOX_CONTENT_STREAMTEXT_H_
#define TARNIX_ENGINES_TOOLBOX_CONTENT_STREAMTEXT_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "pdf/write/FileWriter.h"

namespace TarnixTools::engines::toolbox {

// Writes a new stream, deflated where that makes it smaller, and returns its number. entries: of
// its dictionary, without strings.
std::uint32_t WriteStreamText(pdf::FileWriter& writer, const std::string& entries,
                              std::string_view data);

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_CONTENT_STREAMTEXT_H_
