// Facts and what the rules of every level say of them, line by line:
//
//   Sayings sayings;
//   sayings.Say("encrypted", TrailerFacts{.is_encrypted = true});
//   EXPECT_TRUE(IsAsExpected("pdfa/facts/files.txt", sayings.text()));
#ifndef TARNIX_TESTS_ENGINES_PDFA_SAYINGS_H_
#define TARNIX_TESTS_ENGINES_PDFA_SAYINGS_H_

#include <algorithm>
#include <cstddef>
#include <string>

#include "engines/pdfa/Findings.h"
#include "engines/pdfa/rules/FindingList.h"

namespace TarnixTools::engines::pdfa {

// Facts by what they are, and what the levels find in them.
class Sayings {
 public:
  template <typename Facts>
  void Say(const std::string& what, const Facts& facts) {
    std::string found = testing::TextOfLevels([&](const std::string& level) {
      FindingList findings(*LevelOf(level[0] - '0', level[1]));
      findings.Check(facts);
      return testing::TextOf(findings.Take());
    });
    std::replace(found.begin(), found.end(), '\n', ';');
    text_ += what + " | " + found + "\n";
  }

  const std::string& text() const { return text_; }

 private:
  std::string text_;
};

// Every one of the facts with the others being true.
template <typename Facts, std::size_t kCount>
void SayEach(Sayings& sayings, const std::string& what, bool Facts::*const (&members)[kCount]) {
  for (std::size_t bits = 0; bits < std::size_t{1} << kCount; ++bits) {
    Facts facts;
    std::string name = what;
    for (std::size_t i = 0; i < kCount; ++i) {
      facts.*members[i] = (bits >> i & 1) != 0;
      name += facts.*members[i] ? '1' : '0';
    }
    sayings.Say(name, facts);
  }
}

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_TESTS_ENGINES_PDFA_SAYINGS_H_
