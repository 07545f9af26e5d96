// Random bytes for keys, salts and initialization vectors.
#ifndef TARNIX_PDF_CRYPT_RANDOM_H_
#define TARNIX_PDF_CRYPT_RANDOM_H_

#include <cstddef>
#include <cstdint>
#include <string>

namespace TarnixTools::pdf::crypt {

// Fills from the system's generator; throws kInternal when that has nothing to give.
void FillRandom(std::uint8_t* bytes, std::size_t count);
std::string RandomBytes(std::size_t count);

}  // namespace TarnixTools::pdf::crypt

#endif  // TARNIX_PDF_CRYPT_RANDOM_H_
