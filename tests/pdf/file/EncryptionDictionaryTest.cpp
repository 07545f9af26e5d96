#include <string>

#include <gtest/gtest.h>

#include "pdf/file/EncryptionDictionary.h"
#include "pdf/syntax/Parser.h"

namespace TarnixTools::pdf {
namespace {

EncryptionDictionary Read(const std::string& entries) {
  const std::string text = "<<" + entries + ">>";
  Arena arena;
  Parser parser(arena);
  Lexer lexer(text, true);
  Object dictionary;
  parser.Parse(lexer, nullptr, dictionary);
  return ReadEncryptionDictionary(dictionary, "file id", [](const Object&) {
    return Object::Name("AESV2");  // what every reference leads to
  });
}

TEST(EncryptionDictionary, HasItsEntries) {
  const EncryptionFacts facts =
      Read(
          "/Filter/Standard/V 2/R 3/Length 96/O(o)/U(u)/OE(oe)/UE(ue)/Perms(p)/P -44"
          "/EncryptMetadata false")
          .facts;
  EXPECT_EQ(facts.filter, "Standard");
  EXPECT_EQ(facts.version, 2);
  EXPECT_EQ(facts.revision, 3);
  EXPECT_EQ(facts.key_bits, 96);
  EXPECT_EQ(facts.owner, "o");
  EXPECT_EQ(facts.user, "u");
  EXPECT_EQ(facts.owner_key, "oe");
  EXPECT_EQ(facts.user_key, "ue");
  EXPECT_EQ(facts.perms, "p");
  EXPECT_EQ(facts.permissions, -44);
  EXPECT_FALSE(facts.encrypt_metadata);
  EXPECT_EQ(facts.file_id, "file id");
}

TEST(EncryptionDictionary, HasDefaults) {
  const EncryptionFacts facts = Read("").facts;
  EXPECT_EQ(facts.version, 0);
  EXPECT_EQ(facts.revision, 0);
  EXPECT_EQ(facts.key_bits, 40);
  EXPECT_EQ(facts.permissions, 0);
  EXPECT_TRUE(facts.encrypt_metadata);
  EXPECT_EQ(Read("/V 4").facts.key_bits, 128);
  EXPECT_EQ(Read("/V 4").facts.stream_method, CryptMethod::kIdentity);
  EXPECT_EQ(Read("/V 4").facts.string_method, CryptMethod::kIdentity);
  EXPECT_EQ(Read("/V 4").facts.embedded_file_method, CryptMethod::kIdentity);
}

TEST(EncryptionDictionary, NamesMethodsByItsFilters) {
  const EncryptionDictionary dictionary = Read(
      "/V 4/CF<</A<</CFM/V2>>/B<</CFM/AESV2>>/C<</CFM/AESV3>>/D<</CFM/None>>/E<<>>"
      "/F<</CFM 9 0 R>>>>/StmF/A/StrF/B/EFF/C");
  EXPECT_EQ(dictionary.facts.stream_method, CryptMethod::kRc4);
  EXPECT_EQ(dictionary.facts.string_method, CryptMethod::kAes128);
  EXPECT_EQ(dictionary.facts.embedded_file_method, CryptMethod::kAes256);
  EXPECT_EQ(dictionary.crypt_filters.at("D"), CryptMethod::kIdentity);
  EXPECT_EQ(dictionary.crypt_filters.at("E"), CryptMethod::kIdentity);
  EXPECT_EQ(dictionary.crypt_filters.at("F"), CryptMethod::kAes128);
  EXPECT_EQ(dictionary.crypt_filters.at("Identity"), CryptMethod::kIdentity);
  // Embedded files are encrypted as streams are where nothing else is said.
  EXPECT_EQ(Read("/V 4/CF<</A<</CFM/AESV2>>>>/StmF/A").facts.embedded_file_method,
            CryptMethod::kAes128);
}

TEST(EncryptionDictionary, TakesTheLengthOfAFilterWhereItHasNone) {
  const std::string filters = "/CF<</A<</CFM/V2/Length 64>>>>";
  EXPECT_EQ(Read("/V 4" + filters).facts.key_bits, 64);
  EXPECT_EQ(Read("/V 4/Length 96" + filters).facts.key_bits, 96);
  EXPECT_EQ(Read("/V 5" + filters).facts.key_bits, 128);
}

}  // namespace
}  // namespace TarnixTools::pdf
