#include <array>

#include "engines/pdfa/rules/ProfileFacts.h"

namespace TarnixTools::engines::pdfa {

namespace {

constexpr const char* kOtherProfile = "Embed a profile that is allowed, such as one for sRGB.";

bool IsForOutput(const ProfileFacts& profile, int versions) {
  return profile.is_readable && profile.major_version < versions &&
         (profile.Class() == "prtr" || profile.Class() == "mntr") &&
         (profile.Space() == "RGB " || profile.Space() == "CMYK" || profile.Space() == "GRAY");
}

constexpr std::array<Rule<OutputProfileFacts>, 2> kOutputProfileRules = {{
    {.levels = kPart1,
     .part1 = {"6.2.2", 1},
     .holds = [](const OutputProfileFacts& output) { return IsForOutput(output.profile, 3); },
     .wrong = "The output intent's profile is not one of version 2 for a monitor or a printer in "
              "gray, RGB or CMYK.",
     .cure = kOtherProfile},
    {.levels = kParts2And3,
     .later = {"6.2.3", 1},
     .holds = [](const OutputProfileFacts& output) { return IsForOutput(output.profile, 5); },
     .wrong =
         "The output intent's profile is not one of version 2 or 4 for a monitor or a printer in "
         "gray, RGB or CMYK.",
     .cure = kOtherProfile},
}};

constexpr std::array<Rule<OutputIntentsFacts>, 1> kOutputIntentsRules = {{
    {.levels = kAllLevels,
     .part1 = {"6.2.2", 2},
     .later = {"6.2.3", 2},
     .holds = [](const OutputIntentsFacts& intents) { return intents.have_one_profile; },
     .wrong = "The output intents of the document name different profiles.",
     .cure = "Let all of them refer to the same object, or keep one output intent."},
}};

constexpr std::array<Rule<OutputIntentFacts>, 1> kOutputIntentRules = {{
    {.levels = kParts2And3,
     .later = {"6.2.3", 3},
     .holds =
         [](const OutputIntentFacts& intent) {
           return intent.subtype != "GTS_PDFX" || !intent.has_profile_reference;
         },
     .wrong = "An output intent for PDF/X refers to a profile outside of the document.",
     .cure = "Embed the profile and name it in /DestOutputProfile."},
}};

}  // namespace

template <>
std::span<const Rule<OutputProfileFacts>> RulesFor<OutputProfileFacts>() {
  return kOutputProfileRules;
}

template <>
std::span<const Rule<OutputIntentsFacts>> RulesFor<OutputIntentsFacts>() {
  return kOutputIntentsRules;
}

template <>
std::span<const Rule<OutputIntentFacts>> RulesFor<OutputIntentFacts>() {
  return kOutputIntentRules;
}

}  // namespace TarnixTools::engines::pdfa
