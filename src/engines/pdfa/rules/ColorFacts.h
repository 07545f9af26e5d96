// Colour spaces that something is painted in (ISO 19005-1, 6.2.3; -2 and -3, 6.2.4).
#ifndef TARNIX_ENGINES_PDFA_RULES_COLORFACTS_H_
#define TARNIX_ENGINES_PDFA_RULES_COLORFACTS_H_

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "engines/pdfa/rules/ProfileFacts.h"
#include "engines/pdfa/rules/Rule.h"

namespace TarnixTools::engines::pdfa {

enum class DeviceKind : std::uint8_t { kGray, kRgb, kCmyk };

// A colour space of a device that no default colour space stands in for.
struct DeviceColorFacts {
  DeviceKind kind = DeviceKind::kGray;
  std::string_view output_space;  // of the output intent's profile, four letters; empty for none
};

// The profile of an ICCBased colour space.
struct InputProfileFacts {
  ProfileFacts profile;
};

// Any profile, and the number of components that the document says it has.
struct ProfileComponentsFacts {
  std::string_view color_space;  // four letters
  std::int64_t components = 0;   // /N; 0 for none
};

// An ICCBased colour space of four components that something is filled or stroked with.
struct IccCmykFacts {
  bool overprints = false;
  int overprint_mode = 0;
};

struct DeviceNFacts {
  std::size_t components = 0;
  bool has_all_colorants = true;  // each spot colour has an entry in /Colorants
};

struct SeparationFacts {
  bool is_as_before = true;  // those of the same name have the same alternate and tint transform
};

template <>
std::span<const Rule<DeviceColorFacts>> RulesFor<DeviceColorFacts>();
template <>
std::span<const Rule<InputProfileFacts>> RulesFor<InputProfileFacts>();
template <>
std::span<const Rule<ProfileComponentsFacts>> RulesFor<ProfileComponentsFacts>();
template <>
std::span<const Rule<IccCmykFacts>> RulesFor<IccCmykFacts>();
template <>
std::span<const Rule<DeviceNFacts>> RulesFor<DeviceNFacts>();
template <>
std::span<const Rule<SeparationFacts>> RulesFor<SeparationFacts>();

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_RULES_COLORFACTS_H_
