// Names of languages as PDF/A wants them (ISO 19005-1, 6.8.4; -2 and -3, 6.7.4).
#ifndef TARNIX_ENGINES_PDFA_VOCABULARY_LANGUAGETAG_H_
#define TARNIX_ENGINES_PDFA_VOCABULARY_LANGUAGETAG_H_

#include <string_view>

namespace TarnixTools::engines::pdfa {

// What the parts of a name after the first one are made of: letters in part 1 (RFC 1766), letters and
// digits in the others (RFC 3066).
enum class Subtags : bool { kLetters, kLettersAndDigits };

// One to eight letters, then any number of parts of one to eight characters, a hyphen before each. An
// empty text says that the language is not known.
bool IsLanguageTag(std::string_view tag, Subtags subtags);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_VOCABULARY_LANGUAGETAG_H_
