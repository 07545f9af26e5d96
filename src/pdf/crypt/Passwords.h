// What a password that someone typed may be as the bytes that the key algorithms take.
#ifndef TARNIX_PDF_CRYPT_PASSWORDS_H_
#define TARNIX_PDF_CRYPT_PASSWORDS_H_

#include <string>
#include <string_view>
#include <vector>

namespace TarnixTools::pdf::crypt {

// The bytes to try, best first, without repetitions; never empty. Not cut to the length that a
// revision looks at.
//   revisions 5 and 6 - prepared, as given, and with U+FFFD for what is not UTF-8, as such a
//                       password is written.
//   revisions 2 to 4  - PDFDocEncoding, as given, Latin-1; an encoding that lacks one of the
//                       characters is left out.
std::vector<std::string> PasswordCandidates(std::string_view password, int revision);

}  // namespace TarnixTools::pdf::crypt

#endif  // TARNIX_PDF_CRYPT_PASSWORDS_H_
