// From a password to the file key: algorithms 2 to 13 of ISO 32000-2, 7.6.4. The strings of the
// facts have the lengths of their revision here (/O and /U 32 bytes for revisions 2 to 4, 48 bytes
// for 5 and 6).
#ifndef TARNIX_PDF_CRYPT_KEY_DERIVATION_H_
#define TARNIX_PDF_CRYPT_KEY_DERIVATION_H_

#include <cstddef>
#include <optional>
#include <string_view>

#include "pdf/crypt/SecretKey.h"
#include "pdf/crypt/Security.h"

namespace TarnixTools::pdf::crypt {

inline constexpr std::size_t kRc4VerifierBytes = 32;     // of /O and /U, revisions 2 to 4
inline constexpr std::size_t kAes256VerifierBytes = 48;  // of /O and /U, revisions 5 and 6
inline constexpr std::size_t kAes256KeyBytes = 32;

struct OpenedKey {
  SecretKey file_key;
  bool as_owner = false;  // see Security::opened_as_owner
};

// Revisions 2 to 4 with a file key of `key_bytes` (5 to 16). Nothing when the password is neither
// the user's nor the owner's.
std::optional<OpenedKey> OpenRevision2To4(const EncryptionFacts& facts, std::string_view password,
                                          std::size_t key_bytes);

// Revisions 5 and 6. Nothing when the password does not fit; kDamagedSecurity when it fits but the
// key it opens is missing.
std::optional<OpenedKey> OpenRevision5Or6(const EncryptionFacts& facts, std::string_view password);

// Makes a file key and what the facts need to give it back (/O, /U, /OE, /UE, /Perms); the facts'
// permissions and encrypt_metadata go into /Perms. The passwords are prepared ones.
SecretKey CreateRevision6(EncryptionFacts& facts, std::string_view user_password,
                          std::string_view owner_password);

// Whether /Perms of revision 5 or 6 says the same as /P and /EncryptMetadata.
bool PermissionsAgree(const EncryptionFacts& facts, const SecretKey& file_key);

// Algorithm 1: the key of one object for RC4, or for AES-128 with `aes`: 16 bytes then, those beyond
// the length of the file key and five zero.
SecretKey ObjectKey(const SecretKey& file_key, std::uint32_t number, std::uint16_t generation,
                    bool aes);

}  // namespace TarnixTools::pdf::crypt

#endif  // TARNIX_PDF_CRYPT_KEY_DERIVATION_H_
