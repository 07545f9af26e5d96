// The standard security handler (ISO 32000-2, 7.6): RC4 with 40 to 128 bits, AES-128 and AES-256 of
// revisions 5 and 6 for reading, AES-256 revision 6 for writing.
//
//   EncryptionFacts facts = ...;                        // what /Encrypt and /ID say
//   auto security = Security::Open(facts, "secret");    // kPasswordRequired: it does not fit
//   auto cipher = security.DecryptorFor(CryptTarget::kStream, number, generation);
//   cipher->Update(bytes, out);
//   cipher->Finish(out);
#ifndef TARNIX_PDF_CRYPT_SECURITY_H_
#define TARNIX_PDF_CRYPT_SECURITY_H_

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace TarnixTools::pdf {

enum class CryptMethod : std::uint8_t { kIdentity, kRc4, kAes128, kAes256 };
enum class CryptTarget : std::uint8_t { kString, kStream, kEmbeddedFile };

// The encryption dictionary as plain values. Strings are raw bytes, not decrypted.
struct EncryptionFacts {
  std::string filter = "Standard";
  int version = 0;        // /V
  int revision = 0;       // /R
  int key_bits = 40;      // /Length, in bits; values that are clearly bytes (16) are accepted
  std::string owner;      // /O
  std::string user;       // /U
  std::string owner_key;  // /OE
  std::string user_key;   // /UE
  std::string perms;      // /Perms
  std::int32_t permissions = 0;  // /P
  bool encrypt_metadata = true;
  std::string file_id;  // first element of /ID; may be empty
  // Resolved from /CF, /StrF, /StmF and /EFF for versions 4 and 5; not looked at for the others.
  CryptMethod string_method = CryptMethod::kRc4;
  CryptMethod stream_method = CryptMethod::kRc4;
  CryptMethod embedded_file_method = CryptMethod::kRc4;
};

// One value's or one stream's cipher; used once, forward only.
class Cipher {
 public:
  virtual ~Cipher() = default;
  // Appends what the input makes available to `out`; may hold back fewer than two blocks.
  virtual void Update(std::string_view input, std::string& out) = 0;
  // Appends the rest. A decryptor tolerates data that is not whole blocks and padding that is not
  // well formed: it gives what can be had (a last block whose padding is not well formed stays
  // whole). False when it had to. No input at all is taken as an empty value.
  virtual bool Finish(std::string& out) = 0;
};

class Security {
 public:
  // Checks the password (UTF-8) as user and as owner password, with the usual fallbacks: prepared
  // by SASLprep for revisions 5 and 6, then as given; PDFDocEncoding, then the UTF-8 bytes, then
  // Latin-1 for revisions 2 to 4. Throws Error: kPasswordRequired, kUnsupportedSecurity (another
  // handler, version or method), kDamagedSecurity. A key length that contradicts the rest of the
  // dictionary is put right; /O and /U are cut or filled to the length of their revision.
  static Security Open(const EncryptionFacts& facts, std::string_view password);

  // Fresh AES-256 revision 6 encryption; facts() then holds what the encryption dictionary must
  // say. permissions is /P. Random bytes come from the system's generator. An empty owner password
  // means the user's: it would otherwise open the document to everyone. Throws kInternal for a
  // password beyond ASCII on a system without libidn.
  static Security Create(std::string_view user_password, std::string_view owner_password,
                         std::int32_t permissions);

  // Whether something is left of a password (UTF-8) once it is prepared as Create does: characters
  // such as the soft hyphen are dropped, and an empty password opens the document to everyone.
  // Throws like Create.
  static bool Protects(std::string_view password);

  Security(Security&&) noexcept;
  Security& operator=(Security&&) noexcept;
  ~Security();

  const EncryptionFacts& facts() const;
  // True when the password was the owner's, whether or not it is the user's as well; an empty
  // password that is the user's is not tried as the owner's.
  bool opened_as_owner() const;
  // Whether /P and /EncryptMetadata are what the writer put there: revisions 5 and 6 say it a
  // second time in /Perms. Always true for the other revisions, where they are part of the key.
  bool PermissionsAreGenuine() const;
  CryptMethod MethodFor(CryptTarget target) const;

  // Null for the identity method. `method` overrides what facts() says (a stream's own /Crypt
  // filter).
  std::unique_ptr<Cipher> DecryptorFor(CryptMethod method, std::uint32_t number,
                                       std::uint16_t generation) const;

  std::unique_ptr<Cipher> DecryptorFor(CryptTarget target, std::uint32_t number,
                                       std::uint16_t generation) const {
    return DecryptorFor(MethodFor(target), number, generation);
  }

  // For a Security made by Create: the initialization vector is written first.
  std::unique_ptr<Cipher> Encryptor() const;
  // Bytes that Encryptor() makes of `plain` bytes.
  static std::uint64_t EncryptedSize(std::uint64_t plain);

 private:
  struct State;
  explicit Security(std::unique_ptr<State> state);
  std::unique_ptr<State> state_;
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_CRYPT_SECURITY_H_
