#include <algorithm>
#include <array>

#include "engines/pdfa/rules/ColorFacts.h"

namespace TarnixTools::engines::pdfa {

namespace {

constexpr std::size_t kMostColorants1 = 8;
constexpr std::size_t kMostColorants = 32;

bool IsForInput(const ProfileFacts& profile, int versions) {
  constexpr std::array<std::string_view, 4> kClasses = {"prtr", "mntr", "scnr", "spac"};
  constexpr std::array<std::string_view, 4> kSpaces = {"RGB ", "CMYK", "GRAY", "Lab "};
  return profile.is_readable && profile.major_version < versions &&
         std::find(kClasses.begin(), kClasses.end(), profile.Class()) != kClasses.end() &&
         std::find(kSpaces.begin(), kSpaces.end(), profile.Space()) != kSpaces.end();
}

constexpr std::array<Rule<DeviceColorFacts>, 3> kDeviceColorRules = {{
    {.levels = kAllLevels,
     .part1 = {"6.2.3.3", 1},
     .later = {"6.2.4.3", 2},
     .holds =
         [](const DeviceColorFacts& color) {
           return color.kind != DeviceKind::kRgb || color.output_space == "RGB ";
         },
     .wrong = "DeviceRGB is used, and the document has no output intent with an RGB profile.",
     .cure =
         "Add an output intent such as sRGB, set /DefaultRGB, or use an ICC-based colour space."},
    {.levels = kAllLevels,
     .part1 = {"6.2.3.3", 2},
     .later = {"6.2.4.3", 3},
     .holds =
         [](const DeviceColorFacts& color) {
           return color.kind != DeviceKind::kCmyk || color.output_space == "CMYK";
         },
     .wrong = "DeviceCMYK is used, and the document has no output intent with a CMYK profile.",
     .cure = "Add an output intent for CMYK, set /DefaultCMYK, or use an ICC-based colour space."},
    {.levels = kAllLevels,
     .part1 = {"6.2.3.3", 3},
     .later = {"6.2.4.3", 4},
     .holds =
         [](const DeviceColorFacts& color) {
           return color.kind != DeviceKind::kGray || !color.output_space.empty();
         },
     .wrong = "DeviceGray is used, and the document has no output intent.",
     .cure = "Add an output intent, set /DefaultGray, or use an ICC-based colour space."},
}};

constexpr std::array<Rule<InputProfileFacts>, 2> kInputProfileRules = {{
    {.levels = kPart1,
     .part1 = {"6.2.3.2", 1},
     .holds = [](const InputProfileFacts& input) { return IsForInput(input.profile, 3); },
     .wrong = "The profile of a colour space is not one of version 2 for gray, RGB, CMYK or Lab.",
     .cure = "Embed a profile of version 2."},
    {.levels = kParts2And3,
     .later = {"6.2.4.2", 1},
     .holds = [](const InputProfileFacts& input) { return IsForInput(input.profile, 5); },
     .wrong =
         "The profile of a colour space is not one of version 2 or 4 for gray, RGB, CMYK or Lab.",
     .cure = "Embed a profile of version 2 or 4."},
}};

constexpr std::array<Rule<ProfileComponentsFacts>, 1> kProfileComponentsRules = {{
    {.levels = kPart1,
     .part1 = {"6.2.3.2", 2},
     .holds =
         [](const ProfileComponentsFacts& facts) {
           switch (facts.components) {
             case 1:
               return facts.color_space == "GRAY";
             case 3:
               return facts.color_space == "RGB " || facts.color_space == "Lab ";
             case 4:
               return facts.color_space == "CMYK";
             default:
               return false;
           }
         },
     .wrong = "The number of components that is stated for a colour profile is not that of its "
              "colour space.",
     .cure = "Give /N the number of components that the profile has."},
}};

constexpr std::array<Rule<IccCmykFacts>, 1> kIccCmykRules = {{
    {.levels = kParts2And3,
     .later = {"6.2.4.2", 2},
     .holds = [](const IccCmykFacts& use) { return !use.overprints || use.overprint_mode == 0; },
     .wrong = "Something is painted over the colours below it with overprint mode 1 and ICC-based "
              "CMYK.",
     .cure = "Set /OPM to 0, or paint without overprinting."},
}};

constexpr std::array<Rule<DeviceNFacts>, 3> kDeviceNRules = {{
    {.levels = kPart1,
     .part1 = {"6.1.12", 9},
     .holds = [](const DeviceNFacts& space) { return space.components <= kMostColorants1; },
     .wrong = "A DeviceN colour space has more than 8 components.",
     .cure = "Use fewer components, or convert the colours."},
    {.levels = kParts2And3,
     .later = {"6.1.13", 9},
     .holds = [](const DeviceNFacts& space) { return space.components <= kMostColorants; },
     .wrong = "A DeviceN colour space has more than 32 components.",
     .cure = "Use fewer components, or convert the colours."},
    {.levels = kParts2And3,
     .later = {"6.2.4.4", 1},
     .holds = [](const DeviceNFacts& space) { return space.has_all_colorants; },
     .wrong = "A spot colour of a DeviceN colour space is not described in its /Colorants.",
     .cure = "Add the Separation colour space of each spot colour to /Colorants."},
}};

constexpr std::array<Rule<SeparationFacts>, 1> kSeparationRules = {{
    {.levels = kParts2And3,
     .later = {"6.2.4.4", 2},
     .holds = [](const SeparationFacts& separation) { return separation.is_as_before; },
     .wrong =
         "Two Separation colour spaces of the same name differ in their alternate colour space "
         "or their tint transform.",
     .cure = "Use the same definition of a spot colour everywhere."},
}};

}  // namespace

template <>
std::span<const Rule<DeviceColorFacts>> RulesFor<DeviceColorFacts>() {
  return kDeviceColorRules;
}

template <>
std::span<const Rule<InputProfileFacts>> RulesFor<InputProfileFacts>() {
  return kInputProfileRules;
}

template <>
std::span<const Rule<ProfileComponentsFacts>> RulesFor<ProfileComponentsFacts>() {
  return kProfileComponentsRules;
}

template <>
std::span<const Rule<IccCmykFacts>> RulesFor<IccCmykFacts>() {
  return kIccCmykRules;
}

template <>
std::span<const Rule<DeviceNFacts>> RulesFor<DeviceNFacts>() {
  return kDeviceNRules;
}

template <>
std::span<const Rule<SeparationFacts>> RulesFor<SeparationFacts>() {
  return kSeparationRules;
}

}  // namespace TarnixTools::engines::pdfa
