// The right word beside a wrong one.
#ifndef TARNIX_CLI_NEAREST_WORD_H_
#define TARNIX_CLI_NEAREST_WORD_H_

#include <string>
#include <string_view>
#include <vector>

namespace TarnixTools::cli {

// " (did you mean merge?)" for the word that differs least from what was typed: in at most a third of
// its letters, two swapped ones counting as one. Empty when none is near enough.
std::string Suggestion(std::string_view typed, const std::vector<std::string>& words);

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_NEAREST_WORD_H_
