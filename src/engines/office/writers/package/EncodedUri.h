// Addresses that links of a document lead to, as packages may have them.
#ifndef TARNIX_ENGINES_OFFICE_WRITERS_PACKAGE_ENCODEDURI_H_
#define TARNIX_ENGINES_OFFICE_WRITERS_PACKAGE_ENCODEDURI_H_

#include <string>
#include <string_view>

namespace TarnixTools::engines::office {

// The address with what no URI may have percent-encoded (RFC 3986, 2): programs refuse a whole file
// for one relationship that is none.
std::string EncodedUri(std::string_view uri);

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_WRITERS_PACKAGE_ENCODEDURI_H_
