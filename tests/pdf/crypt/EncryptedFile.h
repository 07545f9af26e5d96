// Reads an encrypted file just well enough to test the security handler alone: no cross-reference
// table, objects found by their text.
#ifndef TARNIX_TESTS_PDF_CRYPT_ENCRYPTED_FILE_H_
#define TARNIX_TESTS_PDF_CRYPT_ENCRYPTED_FILE_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "pdf/crypt/Security.h"

namespace TarnixTools::testing {

class EncryptedFile {
 public:
  struct Stream {
    std::uint32_t number = 0;
    std::uint16_t generation = 0;
    std::string dictionary;  // its text
    std::string data;        // still encrypted
  };

  explicit EncryptedFile(std::string bytes) : bytes_(std::move(bytes)) {}

  // What /Encrypt and /ID say; the first /CFM stands for all three methods.
  pdf::EncryptionFacts Facts() const;

  // All but those without data and cross-reference streams, which are not encrypted.
  std::vector<Stream> Streams() const;

 private:
  std::string FileId() const;
  std::size_t LengthOf(std::string_view stream_dictionary) const;

  std::string bytes_;
};

// The first token of a key's value, as text; `dictionary` begins with "<<".
std::string ValueOf(std::string_view dictionary, std::string_view key);

// The bytes of a string written as (...) or <...>; empty for anything else.
std::string StringBytes(std::string_view text);

std::string Decrypt(const pdf::Security& security, const EncryptedFile::Stream& stream);

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_PDF_CRYPT_ENCRYPTED_FILE_H_
