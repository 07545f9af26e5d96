#include <gtest/gtest.h>

#include "engines/support/contract/Encryption.h"

namespace TarnixTools::engines {
namespace {

TEST(Encryption, IsNoneWithoutAPassword) {
  EXPECT_FALSE(EncryptionWith(L"", L"", 0xFFFFFFFF));
}

TEST(Encryption, OpensWithEitherPassword) {
  const auto made = EncryptionWith(L"user", L"\u00F6wner", 0xFFFFFFFC);
  ASSERT_TRUE(made);
  EXPECT_EQ(made->facts().permissions, -4);
  EXPECT_FALSE(pdf::Security::Open(made->facts(), "user").opened_as_owner());
  EXPECT_TRUE(pdf::Security::Open(made->facts(), "\xC3\xB6wner").opened_as_owner());
}

TEST(Encryption, TakesTheUsersPasswordForTheOwners) {
  const auto made = EncryptionWith(L"user", L"", 0xFFFFFFFF);
  ASSERT_TRUE(made);
  EXPECT_TRUE(pdf::Security::Open(made->facts(), "user").opened_as_owner());
}

}  // namespace
}  // namespace TarnixTools::engines
