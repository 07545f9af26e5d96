#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

#include <nettle/arcfour.h>

#include "pdf/crypt/Digests.h"
#include "pdf/crypt/KeyDerivation.h"

namespace TarnixTools::pdf::crypt {
namespace {

using PaddedPassword = Block<kRc4VerifierBytes>;

// What fills a password up to 32 bytes (ISO 32000-2, 7.6.4.3.2).
constexpr PaddedPassword kPadding = {
    0x28, 0xBF, 0x4E, 0x5E, 0x4E, 0x75, 0x8A, 0x41, 0x64, 0x00, 0x4E, 0x56, 0xFF, 0xFA, 0x01, 0x08,
    0x2E, 0x2E, 0x00, 0xB6, 0xD0, 0x68, 0x3E, 0x80, 0x2F, 0x0C, 0xA9, 0xFE, 0x64, 0x53, 0x69, 0x7A};
constexpr int kExtraDigests = 50;
constexpr std::uint8_t kExtraRounds = 19;
constexpr std::size_t kComparedBytes = 16;  // of /U from revision 3 on; the rest is arbitrary

PaddedPassword Padded(std::string_view password) {
  PaddedPassword padded;
  const std::size_t taken = std::min(password.size(), padded.size());
  const auto rest = std::copy_n(password.begin(), taken, padded.begin());
  std::copy(kPadding.begin(), kPadding.end() - static_cast<std::ptrdiff_t>(taken), rest);
  return padded;
}

Block<4> LittleEndian(std::uint32_t value) {
  return {static_cast<std::uint8_t>(value), static_cast<std::uint8_t>(value >> 8),
          static_cast<std::uint8_t>(value >> 16), static_cast<std::uint8_t>(value >> 24)};
}

// RC4 over `bytes` in place, every byte of the key changed by `mask`.
template <std::size_t kSize>
void Rc4InPlace(std::string_view key, std::uint8_t mask, Block<kSize>& bytes) {
  SecretKey masked(key);
  std::for_each(masked.data(), masked.data() + masked.size(),
                [&](std::uint8_t& octet) { octet ^= mask; });
  arcfour_ctx context;
  arcfour_set_key(&context, masked.size(), masked.data());
  arcfour_crypt(&context, bytes.size(), bytes.data(), bytes.data());
}

// Algorithm 2.
SecretKey FileKey(const EncryptionFacts& facts, const PaddedPassword& password,
                  std::size_t key_bytes) {
  const Block<4> permissions = LittleEndian(static_cast<std::uint32_t>(facts.permissions));
  const bool plain_metadata = facts.revision >= 4 && !facts.encrypt_metadata;
  Block<16> digest =
      Md5({View(password), facts.owner, View(permissions), facts.file_id,
           plain_metadata ? std::string_view("\xFF\xFF\xFF\xFF") : std::string_view()});
  if (facts.revision >= 3) {
    for (int i = 0; i < kExtraDigests; ++i) {
      digest = Md5({View(digest).substr(0, key_bytes)});
    }
  }
  return SecretKey(View(digest).substr(0, key_bytes));
}

// Algorithms 4 to 6: whether the key makes /U.
bool MakesUserEntry(const EncryptionFacts& facts, const SecretKey& file_key) {
  if (facts.revision == 2) {
    PaddedPassword entry = kPadding;
    Rc4InPlace(file_key.view(), 0, entry);
    return View(entry) == facts.user;
  }
  Block<16> entry = Md5({View(kPadding), facts.file_id});
  for (std::uint8_t i = 0; i <= kExtraRounds; ++i) {
    Rc4InPlace(file_key.view(), i, entry);
  }
  return View(entry) == std::string_view(facts.user).substr(0, kComparedBytes);
}

// Steps a) to d) of algorithm 3.
SecretKey OwnerKey(int revision, std::string_view owner_password, std::size_t key_bytes) {
  Block<16> digest = Md5({View(Padded(owner_password))});
  if (revision >= 3) {
    for (int i = 0; i < kExtraDigests; ++i) {
      digest = Md5({View(digest)});
    }
  }
  return SecretKey(View(digest).substr(0, key_bytes));
}

// Algorithm 7: the padded user password that /O holds for the owner.
PaddedPassword UserPasswordFromOwner(const EncryptionFacts& facts, std::string_view owner_password,
                                     std::size_t key_bytes) {
  const SecretKey key = OwnerKey(facts.revision, owner_password, key_bytes);
  PaddedPassword user_password;
  std::copy_n(facts.owner.begin(), user_password.size(), user_password.begin());
  for (int round = facts.revision == 2 ? 0 : kExtraRounds; round >= 0; --round) {
    Rc4InPlace(key.view(), static_cast<std::uint8_t>(round), user_password);
  }
  return user_password;
}

}  // namespace

std::optional<OpenedKey> OpenRevision2To4(const EncryptionFacts& facts, std::string_view password,
                                          std::size_t key_bytes) {
  const SecretKey user_key = FileKey(facts, Padded(password), key_bytes);
  const bool is_user = MakesUserEntry(facts, user_key);
  if (is_user && password.empty()) {
    return OpenedKey{user_key, false};
  }
  const PaddedPassword from_owner = UserPasswordFromOwner(facts, password, key_bytes);
  const SecretKey owner_key = FileKey(facts, from_owner, key_bytes);
  const bool is_owner = MakesUserEntry(facts, owner_key);
  if (!is_user && !is_owner) {
    return std::nullopt;
  }
  return OpenedKey{is_owner ? owner_key : user_key, is_owner};
}

SecretKey ObjectKey(const SecretKey& file_key, std::uint32_t number, std::uint16_t generation,
                    bool aes) {
  const Block<4> number_bytes = LittleEndian(number);
  const Block<4> generation_bytes = LittleEndian(generation);
  Block<16> digest = Md5({file_key.view(), View(number_bytes).substr(0, 3),
                          View(generation_bytes).substr(0, 2), aes ? "sAlT" : ""});
  const std::size_t key_bytes = std::min(file_key.size() + 5, digest.size());
  if (!aes) {
    return SecretKey(View(digest).substr(0, key_bytes));
  }
  // AES-128 takes 16 bytes. Writers that use it with a shorter file key fill up with zeros.
  std::fill(digest.begin() + static_cast<std::ptrdiff_t>(key_bytes), digest.end(), std::uint8_t{0});
  return SecretKey(View(digest));
}

}  // namespace TarnixTools::pdf::crypt
