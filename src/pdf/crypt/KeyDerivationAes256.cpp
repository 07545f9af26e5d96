#include <algorithm>
#include <array>
#include <cstdint>
#include <numeric>
#include <string>

#include <nettle/aes.h>
#include <nettle/cbc.h>

#include "pdf/Error.h"
#include "pdf/crypt/Digests.h"
#include "pdf/crypt/KeyDerivation.h"
#include "pdf/crypt/Random.h"

namespace TarnixTools::pdf::crypt {
namespace {

constexpr std::size_t kMostPasswordBytes = 127;
constexpr std::size_t kHashBytes = 32;
constexpr std::size_t kSaltBytes = 8;
constexpr int kLeastRounds = 64;
constexpr std::size_t kRepetitions = 64;

// /O or /U: a hash, the salt it was made with, and the salt of the key that wraps the file key.
struct Verifier {
  explicit Verifier(std::string_view entry)
      : hash(entry.substr(0, kHashBytes)),
        validation_salt(entry.substr(kHashBytes, kSaltBytes)),
        key_salt(entry.substr(kHashBytes + kSaltBytes, kSaltBytes)) {}

  std::string_view hash;
  std::string_view validation_salt;
  std::string_view key_salt;
};

// The digest that a round of algorithm 2.B ends with; it chooses one of three by `data` itself.
std::string RoundDigest(std::string_view data) {
  const std::string_view first_block = data.substr(0, AES_BLOCK_SIZE);
  // The 16 bytes as one big number, modulo 3: as 256 leaves 1, so does the sum of the digits.
  const unsigned sum =
      std::accumulate(first_block.begin(), first_block.end(), 0U,
                      [](unsigned total, char c) { return total + static_cast<unsigned char>(c); });
  switch (sum % 3) {
    case 0:
      return std::string(View(Sha256({data})));
    case 1:
      return std::string(View(Sha384(data)));
    default:
      return std::string(View(Sha512(data)));
  }
}

// One round: AES-128 over 64 repetitions of password, hash and user entry, keyed by the hash.
// Leaves the result in `data`.
void EncryptRepetitions(std::string_view password, std::string_view hash,
                        std::string_view user_entry, std::string& data) {
  data.clear();
  for (std::size_t i = 0; i < kRepetitions; ++i) {
    data.append(password).append(hash).append(user_entry);
  }
  aes128_ctx context;
  aes128_set_encrypt_key(&context, Octets(hash));
  Block<AES_BLOCK_SIZE> iv;
  std::copy_n(Octets(hash) + AES128_KEY_SIZE, iv.size(), iv.begin());
  cbc_aes128_encrypt(&context, iv.data(), data.size(), Octets(data), Octets(data));
}

// Algorithm 2.B; revision 5 has the first digest only. `user_entry` is /U for the owner's hashes,
// else empty.
SecretKey Hash(int revision, std::string_view password, std::string_view salt,
               std::string_view user_entry) {
  std::string hash(View(Sha256({password, salt, user_entry})));
  if (revision >= 6) {
    std::string data;
    data.reserve(kRepetitions * (password.size() + 64 + user_entry.size()));
    for (int round = 1;; ++round) {
      EncryptRepetitions(password, hash, user_entry, data);
      hash = RoundDigest(data);
      if (round >= kLeastRounds && static_cast<unsigned char>(data.back()) <= round - 32) {
        break;
      }
    }
  }
  return SecretKey(std::string_view(hash).substr(0, kHashBytes));
}

// AES-256 in CBC mode over the 32 bytes of a file key, no padding, an initialization vector of
// zeros.
SecretKey Unwrap(const SecretKey& key, std::string_view wrapped) {
  if (wrapped.size() < kAes256KeyBytes) {
    throw Error(ErrorCode::kDamagedSecurity, "encryption dictionary: /OE or /UE is too short");
  }
  aes256_ctx context;
  aes256_set_decrypt_key(&context, key.data());
  Block<AES_BLOCK_SIZE> iv{};
  SecretKey file_key(kAes256KeyBytes);
  cbc_decrypt(&context, reinterpret_cast<nettle_cipher_func*>(aes256_decrypt), AES_BLOCK_SIZE,
              iv.data(), kAes256KeyBytes, file_key.data(), Octets(wrapped));
  return file_key;
}

std::string Wrap(const SecretKey& key, const SecretKey& file_key) {
  aes256_ctx context;
  aes256_set_encrypt_key(&context, key.data());
  Block<AES_BLOCK_SIZE> iv{};
  std::string wrapped(kAes256KeyBytes, '\0');
  cbc_aes256_encrypt(&context, iv.data(), wrapped.size(), Octets(wrapped), file_key.data());
  return wrapped;
}

// A fresh /O or /U with its /OE or /UE (algorithms 8 and 9).
struct NewEntry {
  NewEntry(std::string_view password, std::string_view user_entry, const SecretKey& file_key)
      : entry(kHashBytes, '\0') {
    entry += RandomBytes(2 * kSaltBytes);
    const Verifier salts(entry);
    const SecretKey hash = Hash(6, password, salts.validation_salt, user_entry);
    wrapped_key = Wrap(Hash(6, password, salts.key_salt, user_entry), file_key);
    entry.replace(0, kHashBytes, hash.view());
  }

  std::string entry;
  std::string wrapped_key;
};

// The first 12 bytes of /Perms before encryption (algorithm 10, steps a to d); 4 arbitrary bytes
// follow.
Block<12> PlainPermissions(const EncryptionFacts& facts) {
  const auto bits = static_cast<std::uint32_t>(facts.permissions);
  Block<12> plain = {0, 0, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF, 'F', 'a', 'd', 'b'};
  for (std::size_t i = 0; i < 4; ++i) {
    plain[i] = static_cast<std::uint8_t>(bits >> (8 * i));
  }
  if (facts.encrypt_metadata) {
    plain[8] = 'T';
  }
  return plain;
}

std::string WrappedPermissions(const EncryptionFacts& facts, const SecretKey& file_key) {
  std::string block(View(PlainPermissions(facts)));
  block += RandomBytes(AES_BLOCK_SIZE - block.size());
  aes256_ctx context;
  aes256_set_encrypt_key(&context, file_key.data());
  aes256_encrypt(&context, block.size(), Octets(block), Octets(block));
  return block;
}

std::string_view Cut(std::string_view password) {
  return password.substr(0, kMostPasswordBytes);
}

// Algorithm 2.A.
std::optional<OpenedKey> OpenWith(const EncryptionFacts& facts, std::string_view password) {
  const auto hash = [&](std::string_view salt, std::string_view user_entry) {
    return Hash(facts.revision, password, salt, user_entry);
  };
  const Verifier user(facts.user);
  const Verifier owner(facts.owner);
  const bool is_user = hash(user.validation_salt, {}).view() == user.hash;
  const bool may_be_owner = !is_user || !password.empty();
  if (may_be_owner && hash(owner.validation_salt, facts.user).view() == owner.hash) {
    return OpenedKey{Unwrap(hash(owner.key_salt, facts.user), facts.owner_key), true};
  }
  if (is_user) {
    return OpenedKey{Unwrap(hash(user.key_salt, {}), facts.user_key), false};
  }
  return std::nullopt;
}

}  // namespace

std::optional<OpenedKey> OpenRevision5Or6(const EncryptionFacts& facts, std::string_view password) {
  std::optional<OpenedKey> opened = OpenWith(facts, Cut(password));
  if (!opened && password.size() > kMostPasswordBytes) {
    // Some writers forget to cut what they hash: qpdf 11 is one.
    opened = OpenWith(facts, password);
  }
  return opened;
}

SecretKey CreateRevision6(EncryptionFacts& facts, std::string_view user_password,
                          std::string_view owner_password) {
  SecretKey file_key(kAes256KeyBytes);
  FillRandom(file_key.data(), file_key.size());
  NewEntry user(Cut(user_password), {}, file_key);
  NewEntry owner(Cut(owner_password), user.entry, file_key);
  facts.user = std::move(user.entry);
  facts.user_key = std::move(user.wrapped_key);
  facts.owner = std::move(owner.entry);
  facts.owner_key = std::move(owner.wrapped_key);
  facts.perms = WrappedPermissions(facts, file_key);
  return file_key;
}

bool PermissionsAgree(const EncryptionFacts& facts, const SecretKey& file_key) {
  if (facts.perms.size() < AES_BLOCK_SIZE || file_key.size() != kAes256KeyBytes) {
    return false;
  }
  aes256_ctx context;
  aes256_set_decrypt_key(&context, file_key.data());
  Block<AES_BLOCK_SIZE> plain;
  aes256_decrypt(&context, plain.size(), plain.data(), Octets(facts.perms));
  const Block<12> expected = PlainPermissions(facts);
  // Bytes 4 to 7 are said to be set; writers differ, and nothing depends on them.
  return std::equal(expected.begin(), expected.begin() + 4, plain.begin()) &&
         std::equal(expected.begin() + 8, expected.end(), plain.begin() + 8);
}

}  // namespace TarnixTools::pdf::crypt
