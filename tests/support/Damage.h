// What becomes of bytes of which one is another one, and of those that end too early: for readers,
// whose every look at a byte shows then.
//
//   const std::string text = DamageText(file, [](const std::string& bytes) { return Read(bytes); });
//   EXPECT_TRUE(IsAsExpected("room/damage.txt", text));
#ifndef TARNIX_TESTS_SUPPORT_DAMAGE_H_
#define TARNIX_TESTS_SUPPORT_DAMAGE_H_

#include <cstddef>
#include <functional>
#include <string>

namespace TarnixTools::testing {

// What comes of the bytes, in a line.
using Outcome = std::function<std::string(const std::string& bytes)>;

// Every outcome, in the order in which they come, with what leads to it: "whole"; "7+" for the byte
// at 7 being one more, "7~" for its highest bit being another, "7" for both and "7-9" for those of
// three; "cut 3-5" for the first 3 to 5 bytes. Of those after the first stands what differs: "[4 for 2] abc" is the first with "abc" for
// the two letters at 4.
//   end     - bytes from there on are not changed
//   cut_end - the bytes are cut before there only
std::string DamageText(const std::string& bytes, const Outcome& outcome,
                       std::size_t end = std::string::npos,
                       std::size_t cut_end = std::string::npos);

// What becomes of a document of which a digit is another one, or, with_names, the first letter of a
// name: line by line, how many of them change nothing, and a checksum of what comes of the others.
//   end - lines from there on are not changed
std::string DigitsText(const std::string& bytes, const Outcome& outcome, std::size_t end,
                       bool with_names = false);

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_SUPPORT_DAMAGE_H_
