#include <algorithm>
#include <memory>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "pdf/Error.h"
#include "pdf/crypt/Ciphers.h"

namespace TarnixTools::pdf::crypt {
namespace {

using std::string_literals::operator""s;

std::string FromHex(std::string_view hex) {
  std::string bytes;
  for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
    bytes.push_back(static_cast<char>(std::stoi(std::string(hex.substr(i, 2)), nullptr, 16)));
  }
  return bytes;
}

struct Result {
  std::string bytes;
  bool well_formed = false;

  bool operator==(const Result&) const = default;
};

// Feeds the input in pieces of `step` bytes.
Result Pass(Cipher& cipher, std::string_view input, std::size_t step = std::string_view::npos) {
  Result result;
  while (!input.empty()) {
    const std::string_view piece = input.substr(0, step);
    cipher.Update(piece, result.bytes);
    input.remove_prefix(piece.size());
  }
  result.well_formed = cipher.Finish(result.bytes);
  return result;
}

Result DecryptAes(const SecretKey& key, std::string_view input) {
  return Pass(*NewAesDecryptor(key), input);
}

// NIST SP 800-38A, appendix F.2: the plain text and initialization vector of all its CBC examples.
const std::string kPlain = FromHex(
    "6bc1bee22e409f96e93d7e117393172aae2d8a571e03ac9c9eb76fac45af8e51"
    "30c81c46a35ce411e5fbc1191a0a52eff69f2445df4f9b17ad2b417be66c3710");
const std::string kIv = FromHex("000102030405060708090a0b0c0d0e0f");
const SecretKey kKey128(FromHex("2b7e151628aed2a6abf7158809cf4f3c"));
const SecretKey kKey256(
    FromHex("603deb1015ca71be2b73aef0857d77811f352c073b6108d72d9810a30914dff4"));

std::string Encrypted(std::string_view plain) {
  return Pass(*NewAes256Encryptor(kKey256), plain).bytes;
}

std::string SomeBytes(std::size_t size) {
  std::string bytes;
  for (std::size_t i = 0; i < size; ++i) {
    bytes.push_back(static_cast<char>(i * 131 + i / 256));
  }
  return bytes;
}

TEST(Rc4Cipher, MakesTheStreamOfItsStandard) {
  // RFC 6229: keys of 40 and 128 bits, stream at 0.
  const std::string zeros(16, '\0');
  EXPECT_EQ(Pass(*NewRc4(SecretKey(FromHex("0102030405"))), zeros).bytes,
            FromHex("b2396305f03dc027ccc3524a0a1118a8"));
  EXPECT_EQ(Pass(*NewRc4(SecretKey(FromHex("0102030405060708090a0b0c0d0e0f10"))), zeros).bytes,
            FromHex("9ac7cc9a609d1ef7b2932899cde41b97"));
}

TEST(Rc4Cipher, GoesOnFromPieceToPiece) {
  const std::string data = SomeBytes(1000);
  const std::string whole = Pass(*NewRc4(kKey128), data).bytes;
  EXPECT_NE(whole, data);
  EXPECT_EQ(Pass(*NewRc4(kKey128), data, 7).bytes, whole);
  EXPECT_EQ(Pass(*NewRc4(kKey128), whole).bytes, data);
}

TEST(AesDecryptor, DecryptsTheExamplesOfItsStandard) {
  // F.2.2 and F.2.6. They have no padding, so the last block stays whole and the result is no
  // well-formed value.
  EXPECT_EQ(
      DecryptAes(kKey128,
                 kIv + FromHex("7649abac8119b246cee98e9b12e9197d5086cb9b507219ee95db113a917678b2"
                               "73bed6b8e3c1743b7116e69e222295163ff1caa1681fac09120eca307586e1a7")),
      (Result{kPlain, false}));
  EXPECT_EQ(
      DecryptAes(kKey256,
                 kIv + FromHex("f58c4c04d6e5f1ba779eabfb5f7bfbd69cfc4e967edb808d679f777bc6702c7d"
                               "39f23369a9d9bacfa530e26304231461b2eb05e2c39be9fcda6c19078c6a9d1b")),
      (Result{kPlain, false}));
}

TEST(AesDecryptor, UndoesTheEncryptorForAnyLengthAndPieces) {
  for (std::size_t size = 0; size < 100; ++size) {
    const std::string plain = SomeBytes(size);
    const std::string encrypted = Encrypted(plain);
    ASSERT_EQ(encrypted.size(), Security::EncryptedSize(size));
    for (const std::size_t step : {1, 15, 16, 17, 31, 32, 33, 1000}) {
      EXPECT_EQ(Pass(*NewAesDecryptor(kKey256), encrypted, step), (Result{plain, true}))
          << size << " by " << step;
    }
  }
}

TEST(AesDecryptor, DecryptsLargeDataInUnevenPieces) {
  const std::string plain = SomeBytes(300'001);
  EXPECT_TRUE((Pass(*NewAesDecryptor(kKey256), Encrypted(plain), 4097) == Result{plain, true}));
}

TEST(AesDecryptor, TakesNoInputAsEmpty) {
  EXPECT_EQ(DecryptAes(kKey256, ""), (Result{"", true}));
}

TEST(AesDecryptor, GivesNothingForLessThanABlock) {
  EXPECT_EQ(DecryptAes(kKey256, "short"), (Result{"", false}));
  EXPECT_EQ(DecryptAes(kKey256, kIv), (Result{"", false}));
  EXPECT_EQ(DecryptAes(kKey256, kIv + "short"), (Result{"", false}));
}

TEST(AesDecryptor, DropsStrayBytesAndStillThePadding) {
  const std::string plain = SomeBytes(50);
  for (std::size_t extra = 1; extra < 16; ++extra) {
    EXPECT_EQ(DecryptAes(kKey256, Encrypted(plain) + std::string(extra, '\n')),
              (Result{plain, false}))
        << extra;
  }
}

TEST(AesDecryptor, KeepsWholeBlocksOfCutData) {
  const std::string plain = SomeBytes(64);
  // The vector, four blocks of data, one of padding.
  const std::string encrypted = Encrypted(plain);
  EXPECT_EQ(DecryptAes(kKey256, encrypted.substr(0, 16 + 3 * 16)),
            (Result{plain.substr(0, 48), false}));
  EXPECT_EQ(DecryptAes(kKey256, encrypted.substr(0, 16 + 3 * 16 + 5)),
            (Result{plain.substr(0, 48), false}));
}

TEST(AesDecryptor, KeepsABlockWithPaddingThatIsNotWellFormed) {
  // Blocks that end like padding but are not: zero, too long, unequal.
  for (const std::string& end : {"\x00"s, "\x11"s, "\x02\x03\x03"s}) {
    const std::string block = std::string(16 - end.size(), 'x') + end;
    const std::string encrypted =
        Encrypted(block).substr(0, 32);  // without the block of real padding
    EXPECT_EQ(DecryptAes(kKey256, encrypted), (Result{block, false}));
  }
}

TEST(Aes256Encryptor, NeverRepeatsItself) {
  EXPECT_NE(Encrypted("same"), Encrypted("same"));
}

TEST(AesCiphers, RefuseKeysOfOtherLengths) {
  for (const std::size_t size : {0, 5, 15, 17, 31}) {
    EXPECT_THROW(NewAesDecryptor(SecretKey(size)), Error);
    EXPECT_THROW(NewAes256Encryptor(SecretKey(size)), Error);
  }
  EXPECT_THROW(NewAes256Encryptor(kKey128), Error);
}

}  // namespace
}  // namespace TarnixTools::pdf::crypt
