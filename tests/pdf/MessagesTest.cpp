// In which words the core refuses documents and data.
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "pdf/Error.h"
#include "pdf/Limits.h"
#include "pdf/crypt/Security.h"
#include "pdf/file/Document.h"
#include "pdf/filters/Filters.h"
#include "support/RawPdf.h"

namespace TarnixTools::pdf {
namespace {

using ::TarnixTools::testing::RawPdf;

std::string MessageOf(const std::function<void()>& call) {
  try {
    call();
  } catch (const Error& error) {
    return error.what();
  }
  return "";
}

std::string OpenMessage(const std::string& bytes) {
  return MessageOf([&] { Document::Open(std::make_unique<MemorySource>(bytes), ""); });
}

// A document with this encryption dictionary.
std::string Encrypted(const std::string& entries) {
  return RawPdf().Pages(1).Object(9, "<<" + entries + ">>").Table("/Root 1 0 R/Encrypt 9 0 R");
}

TEST(Messages, TellWhyADocumentDoesNotOpen) {
  EXPECT_EQ(OpenMessage(""), "the file is empty");
  EXPECT_EQ(OpenMessage("hello"), "no PDF object in the file");
  EXPECT_EQ(OpenMessage(RawPdf().Pages(1).bytes() + "trailer<</Root 1 0 R/Encrypt 99 0 R>>"),
            "the encryption dictionary is missing");
  EXPECT_EQ(OpenMessage(Encrypted("/Filter/Own/V 4")),
            "document is encrypted by another security handler");
  EXPECT_EQ(OpenMessage(Encrypted("/Filter/Standard/V 9/R 9")),
            "document is encrypted by an unknown version of the security handler");
  EXPECT_EQ(OpenMessage(Encrypted("/Filter/Standard/V 4/R 4/CF<</A<</CFM/Own>>>>")),
            "unknown crypt filter method");
  EXPECT_EQ(OpenMessage(Encrypted("/Filter/Standard/V 4/R 4/StmF/A")),
            "a crypt filter that is not defined");
  EXPECT_EQ(OpenMessage(Encrypted("/Filter/Standard/V 2/R 3/Length 128/O(short)/U(short)")),
            "encryption dictionary: /O or /U is too short");
}

TEST(Messages, TellOfPasswords) {
  const Security writer = Security::Create("user", "owner", -1);
  EXPECT_EQ(MessageOf([&] { Security::Open(writer.facts(), ""); }), "document needs a password");
  EXPECT_EQ(MessageOf([&] { Security::Open(writer.facts(), "other"); }), "password is wrong");
  EXPECT_EQ(MessageOf([&] { Security::Open(writer.facts(), "user"); }), "");
}

TEST(Messages, TellWhyAStreamIsNotDecoded) {
  const auto message_of = [](const std::vector<FilterStep>& steps) {
    return MessageOf([&] { Decode(steps, "data", 1000); });
  };
  EXPECT_EQ(message_of({{FilterKind::kImage, {}}}), "stream has a filter that is not decoded here");
  EXPECT_EQ(message_of({{FilterKind::kUnknown, {}}}),
            "stream has a filter that is not decoded here");
  EXPECT_EQ(message_of({{FilterKind::kLzw, {.early_change = 2}}}),
            "LZWDecode: /EarlyChange is neither 0 nor 1");
  EXPECT_EQ(message_of({{FilterKind::kFlate, {.predictor = 12, .columns = 0}}}),
            "stream filter has unusable predictor parameters");
  EXPECT_EQ(message_of(std::vector<FilterStep>(static_cast<std::size_t>(limits::kMaxFilters) + 1,
                                               {FilterKind::kAsciiHex, {}})),
            "stream has too many filters");
}

}  // namespace
}  // namespace TarnixTools::pdf
