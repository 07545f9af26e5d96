// Digests of several pieces of data one after the other.
#ifndef TARNIX_PDF_CRYPT_DIGESTS_H_
#define TARNIX_PDF_CRYPT_DIGESTS_H_

#include <initializer_list>
#include <string_view>

#include "pdf/crypt/Bytes.h"

namespace TarnixTools::pdf::crypt {

Block<16> Md5(std::initializer_list<std::string_view> pieces);
Block<32> Sha256(std::initializer_list<std::string_view> pieces);
Block<48> Sha384(std::string_view data);
Block<64> Sha512(std::string_view data);

}  // namespace TarnixTools::pdf::crypt

#endif  // TARNIX_PDF_CRYPT_DIGESTS_H_
