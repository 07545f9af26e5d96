#include "pdf/crypt/Digests.h"

#include <nettle/md5.h>
#include <nettle/sha2.h>

namespace TarnixTools::pdf::crypt {

namespace {

// By the functions that nettle has for a digest.
template <std::size_t Size, typename Context>
Block<Size> DigestOf(std::initializer_list<std::string_view> pieces, void (*init)(Context*),
                     void (*update)(Context*, std::size_t, const std::uint8_t*),
                     void (*finish)(Context*, std::size_t, std::uint8_t*)) {
  Context context;
  init(&context);
  for (const std::string_view piece : pieces) {
    update(&context, piece.size(), Octets(piece));
  }
  Block<Size> digest;
  finish(&context, digest.size(), digest.data());
  return digest;
}

}  // namespace

Block<16> Md5(std::initializer_list<std::string_view> pieces) {
  return DigestOf<16>(pieces, md5_init, md5_update, md5_digest);
}

Block<32> Sha256(std::initializer_list<std::string_view> pieces) {
  return DigestOf<32>(pieces, sha256_init, sha256_update, sha256_digest);
}

Block<48> Sha384(std::string_view data) {
  return DigestOf<48>({data}, sha384_init, sha384_update, sha384_digest);
}

Block<64> Sha512(std::string_view data) {
  return DigestOf<64>({data}, sha512_init, sha512_update, sha512_digest);
}

struct Sha256Sum::State {
  sha256_ctx context;
};

Sha256Sum::Sha256Sum() : state_(std::make_unique<State>()) {
  sha256_init(&state_->context);
}

Sha256Sum::~Sha256Sum() = default;

void Sha256Sum::Add(std::string_view piece) {
  sha256_update(&state_->context, piece.size(), Octets(piece));
}

Block<32> Sha256Sum::Take() {
  Block<32> digest;
  sha256_digest(&state_->context, digest.size(), digest.data());
  return digest;
}

}  // namespace TarnixTools::pdf::crypt
