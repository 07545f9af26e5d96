// What a document allows those who lack its owner's password, in words.
#ifndef TARNIX_CLI_RIGHTS_H_
#define TARNIX_CLI_RIGHTS_H_

#include <cstdint>
#include <string>
#include <vector>

namespace TarnixTools::cli {

// Bits of ISO 32000-2, table 22, without those of the words in a list such as "print,copy". Throws
// UsageError for another word.
std::uint32_t RightsWithout(const std::string& denied);

// The words whose bits are all there, and the others.
std::vector<std::string> PermittedWords(std::uint32_t rights);
std::vector<std::string> DeniedWords(std::uint32_t rights);

}  // namespace TarnixTools::cli

#endif  // TARNIX_CLI_RIGHTS_H_
