// The security handler: an encryption dictionary out of the input's bytes is opened or refused by
// our exception; data decrypts to the same bytes in one piece and in two, and what is encrypted
// comes back as it was.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "pdf/Error.h"
#include "pdf/crypt/Ciphers.h"
#include "pdf/crypt/Security.h"

namespace {

using TarnixTools::pdf::Cipher;
using TarnixTools::pdf::CryptMethod;
using TarnixTools::pdf::EncryptionFacts;
using TarnixTools::pdf::Security;
using TarnixTools::pdf::crypt::SecretKey;

void Require(bool holds) {
  if (!holds) {
    std::abort();
  }
}

// Gives the input away byte by byte; zeros when it is used up.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size)
      : rest_(reinterpret_cast<const char*>(data), size) {}

  int Byte() {
    const std::string_view byte = Bytes(1);
    return byte.empty() ? 0 : static_cast<unsigned char>(byte.front());
  }

  std::string_view Bytes(std::size_t count) {
    const std::string_view taken = rest_.substr(0, count);
    rest_.remove_prefix(taken.size());
    return taken;
  }

 private:
  std::string_view rest_;
};

EncryptionFacts TakeFacts(Input& input) {
  EncryptionFacts facts;
  facts.version = input.Byte() % 7;
  facts.revision = input.Byte() % 8;
  facts.key_bits = input.Byte() * 2 - 8;
  facts.permissions = input.Byte() - 128;
  facts.encrypt_metadata = input.Byte() % 2 == 0;
  facts.string_method = static_cast<CryptMethod>(input.Byte() % 4);
  facts.stream_method = static_cast<CryptMethod>(input.Byte() % 4);
  for (std::string* entry : {&facts.owner, &facts.user, &facts.owner_key, &facts.user_key,
                             &facts.perms, &facts.file_id}) {
    *entry = input.Bytes(static_cast<std::size_t>(input.Byte()) % 56);
  }
  return facts;
}

struct Result {
  std::string bytes;
  bool well_formed = false;

  bool operator==(const Result&) const = default;
};

Result Pass(std::unique_ptr<Cipher> cipher, std::string_view first, std::string_view second) {
  Result result;
  cipher->Update(first, result.bytes);
  cipher->Update(second, result.bytes);
  result.well_formed = cipher->Finish(result.bytes);
  return result;
}

void CheckCiphers(const SecretKey& key, std::string_view data, std::size_t cut) {
  using namespace TarnixTools::pdf::crypt;
  const std::string_view first = data.substr(0, cut);
  const std::string_view second = data.substr(first.size());
  Require(Pass(NewAesDecryptor(key), first, second) == Pass(NewAesDecryptor(key), data, {}));
  const Result encrypted = Pass(NewAes256Encryptor(key), first, second);
  Require(encrypted.bytes.size() == Security::EncryptedSize(data.size()));
  Require(Pass(NewAesDecryptor(key), encrypted.bytes, {}) == Result{std::string(data), true});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  const EncryptionFacts facts = TakeFacts(input);
  const auto password = input.Bytes(static_cast<std::size_t>(input.Byte()));
  const auto cut = static_cast<std::size_t>(input.Byte());
  const std::string_view rest = input.Bytes(size);
  CheckCiphers(SecretKey(std::size_t{32}), rest, cut);
  try {
    const Security security = Security::Open(facts, password);
    security.PermissionsAreGenuine();
    if (auto cipher = security.DecryptorFor(facts.stream_method, 1, 0)) {
      Pass(std::move(cipher), rest, {});
    }
  } catch (const TarnixTools::pdf::Error&) {
  }
  return 0;
}
