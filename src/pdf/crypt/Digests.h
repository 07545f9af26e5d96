// Digests of several pieces of data one after the other.
#ifndef TARNIX_PDF_CRYPT_DIGESTS_H_
#define TARNIX_PDF_CRYPT_DIGESTS_H_

#include <initializer_list>
#include <memory>
#include <string_view>

#include "pdf/crypt/Bytes.h"

namespace TarnixTools::pdf::crypt {

Block<16> Md5(std::initializer_list<std::string_view> pieces);
Block<32> Sha256(std::initializer_list<std::string_view> pieces);
Block<48> Sha384(std::string_view data);
Block<64> Sha512(std::string_view data);

// SHA-256 of data that comes in pieces.
class Sha256Sum {
 public:
  Sha256Sum();
  ~Sha256Sum();
  Sha256Sum(const Sha256Sum&) = delete;
  Sha256Sum& operator=(const Sha256Sum&) = delete;

  void Add(std::string_view piece);
  // Of all pieces; what is added afterwards begins anew.
  Block<32> Take();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace TarnixTools::pdf::crypt

#endif  // TARNIX_PDF_CRYPT_DIGESTS_H_
