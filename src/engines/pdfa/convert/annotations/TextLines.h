// Text in lines that are no longer than there is room for.
#ifndef TARNIX_ENGINES_PDFA_CONVERT_ANNOTATIONS_TEXTLINES_H_
#define TARNIX_ENGINES_PDFA_CONVERT_ANNOTATIONS_TEXTLINES_H_

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace TarnixTools::engines::pdfa {

using TextWidth = std::function<double(std::u32string_view text)>;

// At the ends of lines that the text has.
std::vector<std::u32string> LinesOf(std::u32string_view text);

// At spaces, too; within a word where it alone is too long. Spaces at the ends of lines go.
std::vector<std::u32string> WrappedLines(std::u32string_view text, double room,
                                         const TextWidth& width_of);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_ANNOTATIONS_TEXTLINES_H_
