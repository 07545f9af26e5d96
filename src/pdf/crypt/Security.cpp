#include "pdf/crypt/Security.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "pdf/Error.h"
#include "pdf/crypt/Ciphers.h"
#include "pdf/crypt/KeyDerivation.h"
#include "pdf/crypt/Passwords.h"
#include "pdf/crypt/Saslprep.h"

namespace TarnixTools::pdf {

using crypt::OpenedKey;
using crypt::SecretKey;

struct Security::State {
  EncryptionFacts facts;
  SecretKey file_key;
  bool opened_as_owner = false;
};

namespace {

constexpr std::size_t kFewestKeyBytes = 5;
constexpr std::size_t kMostKeyBytes = 16;
constexpr std::uint64_t kAesBlock = 16;

bool IsAes256(const EncryptionFacts& facts) {
  return facts.version == 5;
}

void CheckAlgorithm(const EncryptionFacts& facts) {
  if (facts.filter != "Standard") {
    throw Error(ErrorCode::kUnsupportedSecurity,
                "document is encrypted by another security handler");
  }
  const bool rc4_or_aes128 = (facts.version == 1 || facts.version == 2 || facts.version == 4) &&
                             facts.revision >= 2 && facts.revision <= 4;
  const bool aes256 = IsAes256(facts) && (facts.revision == 5 || facts.revision == 6);
  if (!rc4_or_aes128 && !aes256) {
    throw Error(ErrorCode::kUnsupportedSecurity,
                "document is encrypted by an unknown version of the security handler");
  }
}

void CheckMethods(const EncryptionFacts& facts) {
  const auto fits = [&](CryptMethod method) {
    return method != CryptMethod::kAes256 || IsAes256(facts);
  };
  if (!fits(facts.string_method) || !fits(facts.stream_method) ||
      !fits(facts.embedded_file_method)) {
    throw Error(ErrorCode::kUnsupportedSecurity,
                "document names a cipher that its key does not fit");
  }
}

// Gives /O or /U the length that the algorithms expect. Some writers pad them with zeros; others
// drop bytes at the end, which the password check then proves to have been zeros or not. Where too
// much is gone to prove a password, none fits.
void FitVerifier(std::string& entry, std::size_t size, std::size_t least) {
  if (entry.size() < least) {
    throw Error(ErrorCode::kPasswordRequired, "encryption dictionary: /O or /U is too short");
  }
  entry.resize(size, '\0');
}

EncryptionFacts Checked(EncryptionFacts facts) {
  CheckAlgorithm(facts);
  if (facts.version < 4) {
    facts.string_method = facts.stream_method = facts.embedded_file_method = CryptMethod::kRc4;
  }
  CheckMethods(facts);
  const std::size_t size = IsAes256(facts) ? crypt::kAes256VerifierBytes : crypt::kRc4VerifierBytes;
  const std::size_t least = IsAes256(facts) ? size : size / 2;
  FitVerifier(facts.owner, size, least);
  FitVerifier(facts.user, size, least);
  return facts;
}

// The lengths that the file key may have, likeliest first. Dictionaries give /Length in bytes, or
// leave it out, or contradict their own /V; the password check tells which one is true.
std::vector<std::size_t> KeyLengths(const EncryptionFacts& facts) {
  std::vector<std::size_t> lengths;
  const auto add = [&](std::size_t bytes) {
    if (std::find(lengths.begin(), lengths.end(), bytes) == lengths.end()) {
      lengths.push_back(bytes);
    }
  };
  if (facts.version == 4) {
    add(kMostKeyBytes);
  } else if (facts.version == 1 || facts.revision == 2) {
    add(kFewestKeyBytes);
  }
  if (facts.key_bits >= 40 && facts.key_bits <= 128) {
    add(static_cast<std::size_t>(facts.key_bits) / 8);
  } else if (facts.key_bits >= 5 && facts.key_bits <= 16) {
    add(static_cast<std::size_t>(facts.key_bits));
  }
  add(kMostKeyBytes);
  add(kFewestKeyBytes);
  return lengths;
}

std::optional<OpenedKey> TryPassword(const EncryptionFacts& facts, std::string_view password) {
  if (IsAes256(facts)) {
    return crypt::OpenRevision5Or6(facts, password);
  }
  for (const std::size_t key_bytes : KeyLengths(facts)) {
    if (std::optional<OpenedKey> opened = crypt::OpenRevision2To4(facts, password, key_bytes)) {
      return opened;
    }
  }
  return std::nullopt;
}

OpenedKey OpenKey(const EncryptionFacts& facts, std::string_view password) {
  for (const std::string& candidate : crypt::PasswordCandidates(password, facts.revision)) {
    if (std::optional<OpenedKey> opened = TryPassword(facts, candidate)) {
      return *opened;
    }
  }
  throw Error(ErrorCode::kPasswordRequired,
              password.empty() ? "document needs a password" : "password is wrong");
}

std::string Prepared(std::string_view password) {
  const std::optional<std::string> prepared = crypt::PreparePassword(password);
  if (!prepared) {
    throw Error(ErrorCode::kInternal,
                "passwords beyond ASCII need the library libidn, which is not installed");
  }
  return *prepared;
}

}  // namespace

Security::Security(std::unique_ptr<State> state) : state_(std::move(state)) {}

Security::Security(Security&&) noexcept = default;
Security& Security::operator=(Security&&) noexcept = default;
Security::~Security() = default;

Security Security::Open(const EncryptionFacts& facts, std::string_view password) {
  auto state = std::make_unique<State>();
  state->facts = Checked(facts);
  const OpenedKey opened = OpenKey(state->facts, password);
  state->file_key = opened.file_key;
  state->opened_as_owner = opened.as_owner;
  return Security(std::move(state));
}

Security Security::Create(std::string_view user_password, std::string_view owner_password,
                          std::int32_t permissions) {
  auto state = std::make_unique<State>();
  EncryptionFacts& facts = state->facts;
  facts.version = 5;
  facts.revision = 6;
  facts.key_bits = 256;
  facts.permissions = permissions;
  facts.string_method = facts.stream_method = facts.embedded_file_method = CryptMethod::kAes256;
  const std::string user = Prepared(user_password);
  const std::string owner = owner_password.empty() ? user : Prepared(owner_password);
  state->file_key = crypt::CreateRevision6(facts, user, owner);
  state->opened_as_owner = true;
  return Security(std::move(state));
}

bool Security::Protects(std::string_view password) {
  return !Prepared(password).empty();
}

const EncryptionFacts& Security::facts() const {
  return state_->facts;
}

bool Security::opened_as_owner() const {
  return state_->opened_as_owner;
}

bool Security::PermissionsAreGenuine() const {
  return !IsAes256(state_->facts) || crypt::PermissionsAgree(state_->facts, state_->file_key);
}

CryptMethod Security::MethodFor(CryptTarget target) const {
  switch (target) {
    case CryptTarget::kString:
      return state_->facts.string_method;
    case CryptTarget::kStream:
      return state_->facts.stream_method;
    case CryptTarget::kEmbeddedFile:
      return state_->facts.embedded_file_method;
  }
  throw Error(ErrorCode::kInternal, "unknown target of encryption");
}

std::unique_ptr<Cipher> Security::DecryptorFor(CryptMethod method, std::uint32_t number,
                                               std::uint16_t generation) const {
  switch (method) {
    case CryptMethod::kIdentity:
      return nullptr;
    case CryptMethod::kRc4:
      return crypt::NewRc4(crypt::ObjectKey(state_->file_key, number, generation, false));
    case CryptMethod::kAes128:
      return crypt::NewAesDecryptor(crypt::ObjectKey(state_->file_key, number, generation, true));
    case CryptMethod::kAes256:
      if (!IsAes256(state_->facts)) {
        throw Error(ErrorCode::kUnsupportedSecurity,
                    "stream names a cipher that the document's key does not fit");
      }
      return crypt::NewAesDecryptor(state_->file_key);
  }
  throw Error(ErrorCode::kInternal, "unknown encryption method");
}

std::unique_ptr<Cipher> Security::Encryptor() const {
  return crypt::NewAes256Encryptor(state_->file_key);
}

std::uint64_t Security::EncryptedSize(std::uint64_t plain) {
  return kAesBlock + (plain / kAesBlock + 1) * kAesBlock;
}

}  // namespace TarnixTools::pdf
