#include "pdf/crypt/Digests.h"

#include <nettle/md5.h>
#include <nettle/sha2.h>

namespace TarnixTools::pdf::crypt {

Block<16> Md5(std::initializer_list<std::string_view> pieces) {
  md5_ctx context;
  md5_init(&context);
  for (const std::string_view piece : pieces) {
    md5_update(&context, piece.size(), Octets(piece));
  }
  Block<16> digest;
  md5_digest(&context, digest.size(), digest.data());
  return digest;
}

Block<32> Sha256(std::initializer_list<std::string_view> pieces) {
  sha256_ctx context;
  sha256_init(&context);
  for (const std::string_view piece : pieces) {
    sha256_update(&context, piece.size(), Octets(piece));
  }
  Block<32> digest;
  sha256_digest(&context, digest.size(), digest.data());
  return digest;
}

Block<48> Sha384(std::string_view data) {
  sha384_ctx context;
  sha384_init(&context);
  sha384_update(&context, data.size(), Octets(data));
  Block<48> digest;
  sha384_digest(&context, digest.size(), digest.data());
  return digest;
}

Block<64> Sha512(std::string_view data) {
  sha512_ctx context;
  sha512_init(&context);
  sha512_update(&context, data.size(), Octets(data));
  Block<64> digest;
  sha512_digest(&context, digest.size(), digest.data());
  return digest;
}

}  // namespace TarnixTools::pdf::crypt
