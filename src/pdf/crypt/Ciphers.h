// The ciphers behind Security: RC4 and AES in CBC mode with PKCS #7 padding, the initialization
// vector in front.
#ifndef TARNIX_PDF_CRYPT_CIPHERS_H_
#define TARNIX_PDF_CRYPT_CIPHERS_H_

#include <memory>

#include "pdf/crypt/SecretKey.h"
#include "pdf/crypt/Security.h"

namespace TarnixTools::pdf::crypt {

// Encrypts and decrypts alike.
std::unique_ptr<Cipher> NewRc4(const SecretKey& key);
// AES-128 for keys of 16 bytes, AES-256 for keys of 32 bytes; no others.
std::unique_ptr<Cipher> NewAesDecryptor(const SecretKey& key);
// AES-256 with a random initialization vector.
std::unique_ptr<Cipher> NewAes256Encryptor(const SecretKey& key);

}  // namespace TarnixTools::pdf::crypt

#endif  // TARNIX_PDF_CRYPT_CIPHERS_H_
