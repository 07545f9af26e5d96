#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "pdf/crypt/Passwords.h"
#include "pdf/crypt/Saslprep.h"

namespace TarnixTools::pdf::crypt {
namespace {

using std::string_literals::operator""s;
using ::testing::ElementsAre;

// U+2168, ROMAN NUMERAL NINE; one character beyond ASCII tells whether libidn is there.
constexpr const char* kRomanNine = "\xE2\x85\xA8";

TEST(Saslprep, LeavesAsciiAlone) {
  EXPECT_EQ(PreparePassword("user"), "user");
  EXPECT_EQ(PreparePassword("USER"), "USER");
  EXPECT_EQ(PreparePassword(""), "");
  EXPECT_EQ(PreparePassword("a\x07"s), "a\x07"s);
}

TEST(Saslprep, PreparesTheExamplesOfItsStandard) {
  if (!PreparePassword(kRomanNine)) {
    GTEST_SKIP() << "needs libidn";
  }
  // RFC 4013, 3.
  EXPECT_EQ(PreparePassword("I\xC2\xADX"), "IX");
  EXPECT_EQ(PreparePassword("\xC2\xAA"), "a");
  EXPECT_EQ(PreparePassword(kRomanNine), "IX");
}

TEST(Saslprep, MapsSpacesAndComposes) {
  if (!PreparePassword(kRomanNine)) {
    GTEST_SKIP() << "needs libidn";
  }
  EXPECT_EQ(PreparePassword("a\xC2\xA0z"), "a z");
  EXPECT_EQ(PreparePassword("ho\xCC\x82tel"), "h\xC3\xB4tel");
  EXPECT_EQ(PreparePassword("\xF0\x9F\x94\x91"), "\xF0\x9F\x94\x91");  // newer than the profile
}

TEST(Saslprep, LeavesWhatTheProfileRefuses) {
  if (!PreparePassword(kRomanNine)) {
    GTEST_SKIP() << "needs libidn";
  }
  for (const std::string& refused :
       {"\xD8\xA7\x31"s, "\xC3\xB4\x07"s, "\xC3\xB4\0x"s, "\xFF\xFE"s, "\xC3"s}) {
    EXPECT_EQ(PreparePassword(refused), refused);
  }
}

TEST(PasswordCandidates, AreOneForAscii) {
  EXPECT_THAT(PasswordCandidates("secret", 2), ElementsAre("secret"));
  EXPECT_THAT(PasswordCandidates("secret", 6), ElementsAre("secret"));
  EXPECT_THAT(PasswordCandidates("", 4), ElementsAre(""));
  EXPECT_THAT(PasswordCandidates("", 6), ElementsAre(""));
}

TEST(PasswordCandidates, AreEncodingsForOldRevisions) {
  EXPECT_THAT(PasswordCandidates("h\xC3\xB4tel", 3), ElementsAre("h\xF4tel", "h\xC3\xB4tel"));
  // The euro sign and a Polish letter are at places of their own in PDFDocEncoding, and not in
  // Latin-1.
  EXPECT_THAT(PasswordCandidates("\xE2\x82\xAC\xC5\x82", 4),
              ElementsAre("\xA0\x9B", "\xE2\x82\xAC\xC5\x82"));
  // A no-break space is in Latin-1 only.
  EXPECT_THAT(PasswordCandidates("\xC2\xA0", 4), ElementsAre("\xC2\xA0", "\xA0"));
  // A control character is in Latin-1 only.
  EXPECT_THAT(PasswordCandidates("\x01\xC3\xA9", 4), ElementsAre("\x01\xC3\xA9", "\x01\xE9"));
  // Cyrillic is in neither.
  EXPECT_THAT(PasswordCandidates("\xD0\xBF", 4), ElementsAre("\xD0\xBF"));
}

TEST(PasswordCandidates, KeepWhatIsNotUtf8) {
  // Latin-1 from an old shell, a surrogate, an overlong form, a code beyond Unicode, a cut
  // character.
  for (const char* given :
       {"h\xF4tel", "\xED\xA0\x80", "\xC0\x80", "\xF4\x90\x80\x80", "\xE2\x82"}) {
    EXPECT_THAT(PasswordCandidates(given, 3), ElementsAre(given));
  }
}

TEST(PasswordCandidates, ArePreparedThenAsGivenForNewRevisions) {
  if (!PreparePassword(kRomanNine)) {
    GTEST_SKIP() << "needs libidn";
  }
  EXPECT_THAT(PasswordCandidates(kRomanNine, 6), ElementsAre("IX", kRomanNine));
  EXPECT_THAT(PasswordCandidates("h\xC3\xB4tel", 5), ElementsAre("h\xC3\xB4tel"));
}

}  // namespace
}  // namespace TarnixTools::pdf::crypt
