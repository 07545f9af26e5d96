// Colour profiles and output intents (ISO 19005-1, 6.2.2 and 6.2.3.2; -2 and -3, 6.2.3 and 6.2.4.2).
#ifndef TARNIX_ENGINES_PDFA_RULES_PROFILEFACTS_H_
#define TARNIX_ENGINES_PDFA_RULES_PROFILEFACTS_H_

#include <array>
#include <string_view>

#include "engines/pdfa/rules/Rule.h"

namespace TarnixTools::engines::pdfa {

// The header of an ICC profile (ICC.1:2022, 7.2). Four letters each, as they stand.
struct ProfileFacts {
  bool is_readable = false;
  int major_version = 0;
  std::array<char, 4> device_class{};
  std::array<char, 4> color_space{};
  std::array<char, 16> id{};

  std::string_view Class() const { return {device_class.data(), device_class.size()}; }

  std::string_view Space() const { return {color_space.data(), color_space.size()}; }
};

// The profile of an output intent.
struct OutputProfileFacts {
  ProfileFacts profile;
};

// The output intents of the document.
struct OutputIntentsFacts {
  bool have_one_profile = true;  // those that have one have the same object
};

struct OutputIntentFacts {
  std::string_view subtype;            // /S
  bool has_profile_reference = false;  // /DestOutputProfileRef
};

template <>
std::span<const Rule<OutputProfileFacts>> RulesFor<OutputProfileFacts>();
template <>
std::span<const Rule<OutputIntentsFacts>> RulesFor<OutputIntentsFacts>();
template <>
std::span<const Rule<OutputIntentFacts>> RulesFor<OutputIntentFacts>();

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_RULES_PROFILEFACTS_H_
