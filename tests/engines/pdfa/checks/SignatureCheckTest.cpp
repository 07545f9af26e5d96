#include <cstdio>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/pdfa/Findings.h"
#include "engines/pdfa/checks/SignatureCheck.h"
#include "support/ArchiveFile.h"

namespace TarnixTools::engines::pdfa {
namespace {

using TarnixTools::testing::ArchiveFile;
using TarnixTools::testing::BrokenRules;
using ::testing::Contains;
using ::testing::Not;

// A value of the basic encoding.
std::string Value(unsigned char tag, const std::string& content) {
  return static_cast<char>(tag) + std::string(1, static_cast<char>(content.size())) + content;
}

std::string Sequence(const std::string& content) {
  return Value(0x30, content);
}

std::string Certificate(const std::string& serial) {
  const std::string version = Value(0xA0, Value(2, "\x02"));
  return Sequence(
      Sequence(version + Value(2, serial) + Sequence("") + Sequence(Value(12, "issuer"))));
}

std::string Signer(const std::string& serial) {
  return Sequence(Value(2, "\x01") + Sequence(Sequence(Value(12, "issuer")) + Value(2, serial)));
}

std::string SignedData(const std::string& certificates, const std::string& signers) {
  return Value(2, "\x01") + Value(0x31, "") + Sequence("") + Value(0xA0, certificates) +
         Value(0x31, signers);
}

std::string Message(const std::string& certificates, const std::string& signers) {
  return Sequence(Value(6, "\x2A") + Value(0xA0, Sequence(SignedData(certificates, signers))));
}

TEST(SignatureCheck, FindsTheSigner) {
  const SignatureMessageFacts facts =
      FactsOfMessage(Message(Certificate("1") + Certificate("2"), Signer("2")));
  EXPECT_TRUE(facts.has_certificate);
  EXPECT_EQ(facts.signers, 1U);
}

TEST(SignatureCheck, MissesACertificate) {
  EXPECT_FALSE(FactsOfMessage(Message(Certificate("1"), Signer("2"))).has_certificate);
  EXPECT_FALSE(FactsOfMessage(Message("", Signer("2"))).has_certificate);
}

TEST(SignatureCheck, CountsSigners) {
  EXPECT_EQ(FactsOfMessage(Message(Certificate("1"), Signer("1") + Signer("1"))).signers, 2U);
  EXPECT_EQ(FactsOfMessage(Message(Certificate("1"), "")).signers, 0U);
}

TEST(SignatureCheck, ReadsMessagesWithoutLengths) {
  const auto open = [](unsigned char tag, const std::string& content) {
    return static_cast<char>(tag) + ("\x80" + content) + std::string(2, '\0');
  };
  const std::string data = SignedData(Certificate("1"), Signer("1"));
  const std::string message = open(0x30, Value(6, "\x2A") + open(0xA0, open(0x30, data)));
  EXPECT_EQ(FactsOfMessage(message).signers, 1U);
  EXPECT_TRUE(FactsOfMessage(message + std::string(100, '\0')).has_certificate);
  EXPECT_EQ(FactsOfMessage(message.substr(0, message.size() - 1)).signers, 0U);
}

TEST(SignatureCheck, BearsWhatIsNoMessage) {
  for (const std::string& message :
       {std::string(), std::string("\x30"), std::string("\x30\x84\xFF\xFF\xFF\xFF"),
        std::string("\x30\x85\x01\x01\x01\x01\x01"), std::string(1000, '\x30'),
        std::string("\x30\x80") + std::string(1000, '\x80')}) {
    EXPECT_EQ(FactsOfMessage(message).signers, 0U);
  }
}

// A signed file whose byte range has these numbers; those in front of the message and behind it are
// right where they are 0.
std::string SignedFile(long first, long wrong_by) {
  constexpr const char* kNumbers = "[0000 00000 00000 00000]";
  ArchiveFile file("2b");
  file.Catalog("/AcroForm<</Fields[20 0 R]/SigFlags 3>>")
      .Object(20, "<</FT/Sig/T(a)/V 21 0 R>>")
      .Object(21, std::string("<</Type/Sig/ByteRange") + kNumbers + "/Contents<00AA>>>");
  const std::string bytes = file.Bytes();
  const std::size_t begin = bytes.find("<00AA>");
  const std::size_t end = begin + 6;
  char numbers[64];
  std::snprintf(numbers, sizeof numbers, "[%04ld %05zu %05zu %05zu]", first, begin, end,
                bytes.size() - end - static_cast<std::size_t>(wrong_by));
  return file.Replace(kNumbers, numbers).Bytes();
}

TEST(SignatureCheck, WantsTheWholeFileCovered) {
  EXPECT_THAT(BrokenRules(SignedFile(0, 0), "2b"), Not(Contains("6.4.3-1")));
  EXPECT_THAT(BrokenRules(SignedFile(1, 0), "2b"), Contains("6.4.3-1"));
  EXPECT_THAT(BrokenRules(SignedFile(0, 20), "2b"), Contains("6.4.3-1"));
  EXPECT_THAT(BrokenRules(SignedFile(0, 0), "2b"), Contains("6.4.3-2"));
  EXPECT_THAT(BrokenRules(SignedFile(0, 0), "2b"), Contains("6.4.3-3"));
}

TEST(SignatureCheck, WantsNoDigestsUnderCertifiedPermissions) {
  const auto rules = [](const std::string& permissions, const std::string& reference) {
    return BrokenRules(
        ArchiveFile("2b")
            .Catalog("/AcroForm<</Fields[20 0 R]>>/Perms<<" + permissions + ">>")
            .Object(20, "<</FT/Sig/T(a)/V<</Type/Sig/Reference[<<" + reference + ">>]>>>>")
            .Bytes(),
        "2b");
  };
  EXPECT_THAT(rules("/DocMDP 21 0 R", "/DigestMethod/SHA1"), Contains("6.1.12-2"));
  EXPECT_THAT(rules("/DocMDP 21 0 R", ""), Not(Contains("6.1.12-2")));
  EXPECT_THAT(rules("/UR3 21 0 R", "/DigestMethod/SHA1"), Not(Contains("6.1.12-2")));
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
