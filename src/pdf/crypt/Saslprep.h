// SASLprep (RFC 4013): the one form of a password that is typed in different ways.
#ifndef TARNIX_PDF_CRYPT_SASLPREP_H_
#define TARNIX_PDF_CRYPT_SASLPREP_H_

#include <optional>
#include <string>
#include <string_view>

namespace TarnixTools::pdf::crypt {

// A password that the profile refuses (control characters, mixed directions, not UTF-8) stays as it
// is. ASCII is its own prepared form; anything else needs GNU libidn, which is loaded when first
// needed so that no other job pays for it. Nothing when it is not installed.
std::optional<std::string> PreparePassword(std::string_view password);

}  // namespace TarnixTools::pdf::crypt

#endif  // TARNIX_PDF_CRYPT_SASLPREP_H_
