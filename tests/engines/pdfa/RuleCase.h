// Rules by example: one way to hold a rule and one to break it.
//
//   constexpr RuleCase kCases[] = {
//       {"2b", "6.5.2-1", Part::kCatalog, "", "/AA<<>>"},
//   };
//   TEST(DocumentRules, HoldAndBreak) { ExpectCases(kCases, "pdfa/findings/catalog.txt"); }
#ifndef TARNIX_TESTS_ENGINES_PDFA_RULE_CASE_H_
#define TARNIX_TESTS_ENGINES_PDFA_RULE_CASE_H_

#include <span>
#include <string>

namespace TarnixTools::testing {

// What of an ArchiveFile an example is.
enum class Part {
  kCatalog,     // entries
  kPage,        // entries
  kTrailer,     // entries
  kAnnotation,  // entries of the page's one annotation
  kObject,      // object 20, whole
  kPacket,      // descriptions
  kBytes,       // "text|by": what stands in the file instead of a text; empty for nothing
};

// {rect} stands for a rectangle, {form} for an appearance, {file} for an embedded file, and {layers}
// for a layer and what comes before the entries of its configuration.
struct RuleCase {
  const char* level;
  const char* rule;
  Part part;
  const char* good;          // breaks no rule at all
  const char* bad;           // breaks this one, and maybe others
  const char* catalog = "";  // entries that both have; they count before others of the same key
};

// Something that a file may have, whatever it breaks.
struct OddCase {
  Part part;
  const char* text;
  const char* catalog = "";
};

// What every level finds in each of them is what the text in tests/expected says.
void ExpectFindings(std::span<const OddCase> cases, const std::string& expected);

// The good ones break no rule of their level, the bad ones their rule; and what every level finds in
// each of them is what the text in tests/expected says.
void ExpectCases(std::span<const RuleCase> cases, const std::string& expected);

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_ENGINES_PDFA_RULE_CASE_H_
