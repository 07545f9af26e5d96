#include "pdf/crypt/Ciphers.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include <nettle/aes.h>
#include <nettle/arcfour.h>
#include <nettle/cbc.h>

#include "pdf/Error.h"
#include "pdf/crypt/Random.h"

namespace TarnixTools::pdf::crypt {
namespace {

constexpr std::size_t kBlock = AES_BLOCK_SIZE;

class Rc4 final : public Cipher {
 public:
  explicit Rc4(const SecretKey& key) { arcfour_set_key(&context_, key.size(), key.data()); }

  Rc4(const Rc4&) = delete;
  Rc4& operator=(const Rc4&) = delete;

  ~Rc4() override { explicit_bzero(&context_, sizeof context_); }

  void Update(std::string_view input, std::string& out) override {
    const std::size_t start = out.size();
    out.resize(start + input.size());
    arcfour_crypt(&context_, input.size(), Octets(out) + start, Octets(input));
  }

  bool Finish(std::string&) override { return true; }

 private:
  arcfour_ctx context_;
};

struct Aes128 {
  using Context = aes128_ctx;

  static void SetDecryptKey(Context* context, const std::uint8_t* key) {
    aes128_set_decrypt_key(context, key);
  }

  static constexpr auto kDecrypt = aes128_decrypt;
};

struct Aes256 {
  using Context = aes256_ctx;

  static void SetDecryptKey(Context* context, const std::uint8_t* key) {
    aes256_set_decrypt_key(context, key);
  }

  static constexpr auto kDecrypt = aes256_decrypt;
};

// Up to a fixed number of bytes that wait for more.
template <std::size_t kMost>
class Waiting {
 public:
  // Moves bytes from the front of `input` until `size` bytes wait or the input is used up. True
  // when `size` wait.
  bool FillTo(std::size_t size, std::string_view& input) {
    const std::size_t taken = std::min(size - std::min(size, size_), input.size());
    std::copy_n(Octets(input), taken, bytes_.begin() + static_cast<std::ptrdiff_t>(size_));
    size_ += taken;
    input.remove_prefix(taken);
    return size_ >= size;
  }

  void Drop(std::size_t count) {
    std::copy(bytes_.begin() + static_cast<std::ptrdiff_t>(count),
              bytes_.begin() + static_cast<std::ptrdiff_t>(size_), bytes_.begin());
    size_ -= count;
  }

  std::size_t size() const { return size_; }

  const std::uint8_t* data() const { return bytes_.data(); }

  std::uint8_t* data() { return bytes_.data(); }

 private:
  std::array<std::uint8_t, kMost> bytes_{};
  std::size_t size_ = 0;
};

// Bytes of padding at the end of a decrypted block; 0 when it is not well formed.
std::size_t PaddingOf(std::string_view block) {
  const auto count = static_cast<std::size_t>(static_cast<unsigned char>(block.back()));
  if (count == 0 || count > block.size()) {
    return 0;
  }
  const std::string_view padding = block.substr(block.size() - count);
  return padding.find_first_not_of(block.back()) == std::string_view::npos ? count : 0;
}

// Keeps the last whole block back until more than another block of input follows it: a stream with
// a stray line end after its last block still loses its padding.
template <typename Aes>
class AesDecryptor final : public Cipher {
 public:
  explicit AesDecryptor(const SecretKey& key) { Aes::SetDecryptKey(&context_, key.data()); }

  AesDecryptor(const AesDecryptor&) = delete;
  AesDecryptor& operator=(const AesDecryptor&) = delete;

  ~AesDecryptor() override { explicit_bzero(&context_, sizeof context_); }

  void Update(std::string_view input, std::string& out) override {
    any_input_ = any_input_ || !input.empty();
    if (!has_iv_ && !TakeIv(input)) {
      return;
    }
    while (waiting_.size() != 0 && waiting_.size() + input.size() >= 2 * kBlock) {
      waiting_.FillTo(kBlock, input);
      Decrypt(waiting_.data(), kBlock, out);
      waiting_.Drop(kBlock);
    }
    if (input.size() >= 2 * kBlock) {
      const std::size_t whole = (input.size() / kBlock - 1) * kBlock;
      Decrypt(Octets(input), whole, out);
      input.remove_prefix(whole);
    }
    waiting_.FillTo(waiting_.size() + input.size(), input);
  }

  bool Finish(std::string& out) override {
    if (!any_input_) {
      return true;
    }
    if (!has_iv_ || waiting_.size() < kBlock) {
      return false;
    }
    Decrypt(waiting_.data(), kBlock, out);
    const std::size_t padding = PaddingOf(std::string_view(out).substr(out.size() - kBlock));
    out.resize(out.size() - padding);
    return padding != 0 && waiting_.size() == kBlock;
  }

 private:
  bool TakeIv(std::string_view& input) {
    has_iv_ = waiting_.FillTo(kBlock, input);
    if (has_iv_) {
      std::copy_n(waiting_.data(), kBlock, iv_.begin());
      waiting_.Drop(kBlock);
    }
    return has_iv_;
  }

  void Decrypt(const std::uint8_t* blocks, std::size_t bytes, std::string& out) {
    const std::size_t start = out.size();
    out.resize(start + bytes);
    cbc_decrypt(&context_, reinterpret_cast<nettle_cipher_func*>(Aes::kDecrypt), kBlock, iv_.data(),
                bytes, Octets(out) + start, blocks);
  }

  typename Aes::Context context_;
  Block<kBlock> iv_{};
  bool has_iv_ = false;
  bool any_input_ = false;
  Waiting<2 * kBlock> waiting_;  // fewer than two blocks between calls
};

class Aes256Encryptor final : public Cipher {
 public:
  explicit Aes256Encryptor(const SecretKey& key) {
    aes256_set_encrypt_key(&context_, key.data());
    FillRandom(iv_.data(), iv_.size());
  }

  Aes256Encryptor(const Aes256Encryptor&) = delete;
  Aes256Encryptor& operator=(const Aes256Encryptor&) = delete;

  ~Aes256Encryptor() override { explicit_bzero(&context_, sizeof context_); }

  void Update(std::string_view input, std::string& out) override {
    PutIv(out);
    if (waiting_.size() != 0) {
      if (!waiting_.FillTo(kBlock, input)) {
        return;
      }
      Encrypt(waiting_.data(), kBlock, out);
      waiting_.Drop(kBlock);
    }
    const std::size_t whole = input.size() / kBlock * kBlock;
    Encrypt(Octets(input), whole, out);
    input.remove_prefix(whole);
    waiting_.FillTo(input.size(), input);
  }

  bool Finish(std::string& out) override {
    PutIv(out);
    const std::size_t padding = kBlock - waiting_.size();
    std::fill_n(waiting_.data() + waiting_.size(), padding, static_cast<std::uint8_t>(padding));
    Encrypt(waiting_.data(), kBlock, out);
    return true;
  }

 private:
  void PutIv(std::string& out) {
    if (!iv_written_) {
      out.append(View(iv_));
      iv_written_ = true;
    }
  }

  void Encrypt(const std::uint8_t* blocks, std::size_t bytes, std::string& out) {
    const std::size_t start = out.size();
    out.resize(start + bytes);
    cbc_aes256_encrypt(&context_, iv_.data(), bytes, Octets(out) + start, blocks);
  }

  aes256_ctx context_;
  Block<kBlock> iv_;
  bool iv_written_ = false;
  Waiting<kBlock> waiting_;
};

}  // namespace

std::unique_ptr<Cipher> NewRc4(const SecretKey& key) {
  return std::make_unique<Rc4>(key);
}

std::unique_ptr<Cipher> NewAesDecryptor(const SecretKey& key) {
  switch (key.size()) {
    case AES128_KEY_SIZE:
      return std::make_unique<AesDecryptor<Aes128>>(key);
    case AES256_KEY_SIZE:
      return std::make_unique<AesDecryptor<Aes256>>(key);
    default:
      throw Error(ErrorCode::kUnsupportedSecurity, "encryption key does not fit the cipher");
  }
}

std::unique_ptr<Cipher> NewAes256Encryptor(const SecretKey& key) {
  if (key.size() != AES256_KEY_SIZE) {
    throw Error(ErrorCode::kUnsupportedSecurity, "encryption key does not fit the cipher");
  }
  return std::make_unique<Aes256Encryptor>(key);
}

}  // namespace TarnixTools::pdf::crypt
