#include <algorithm>
#include <array>
#include <cmath>

#include "engines/pdfa/rules/GraphicsFacts.h"
#include "engines/pdfa/vocabulary/Names.h"

namespace TarnixTools::engines::pdfa {

namespace {

constexpr double kAlphaTolerance = 0.000001;
constexpr std::string_view kDefault = "Default";

bool IsOpaque(double alpha) {
  return std::abs(alpha - 1) < kAlphaTolerance;
}

bool IsNormal(std::string_view blend_mode) {
  return blend_mode == "Normal" || blend_mode == "Compatible";
}

// Blend modes of ISO 32000-1, tables 136 and 137.
constexpr std::array<std::string_view, 4> kProcessColors = {"Cyan", "Magenta", "Yellow", "Black"};

// Only colours that are no process colours need one (ISO 32000-1, tables 130 to 134).
bool TransferIsAsRequired(const HalftoneFacts& halftone) {
  if (halftone.colorant == kDefault) {
    return true;
  }
  const bool is_process = !halftone.colorant || IsOneOf(*halftone.colorant, kProcessColors);
  return is_process != halftone.has_transfer_function;
}

constexpr const char* kFlatten = "Flatten the transparency, or choose a later part of PDF/A.";

constexpr std::array<Rule<GraphicsStateFacts>, 7> kGraphicsStateRules = {{
    {.levels = kAllLevels,
     .part1 = {"6.2.8", 1},
     .later = {"6.2.5", 1},
     .holds = [](const GraphicsStateFacts& state) { return !state.has_transfer_function; },
     .wrong = "A graphics state has a transfer function.",
     .cure = "Remove /TR."},
    {.levels = kAllLevels,
     .part1 = {"6.2.8", 2},
     .later = {"6.2.5", 2},
     .holds =
         [](const GraphicsStateFacts& state) {
           return !state.newer_transfer || *state.newer_transfer == kDefault;
         },
     .wrong = "A graphics state has a transfer function other than the default one.",
     .cure = "Remove /TR2, or set it to /Default."},
    {.levels = kParts2And3,
     .later = {"6.2.5", 3},
     .holds = [](const GraphicsStateFacts& state) { return !state.has_halftone_phase; },
     .wrong = "A graphics state has the key /HTP.",
     .cure = "Remove /HTP."},
    {.levels = kPart1,
     .part1 = {"6.4", 1},
     .holds =
         [](const GraphicsStateFacts& state) {
           return !state.soft_mask || *state.soft_mask == "None";
         },
     .wrong = "A graphics state has a soft mask.",
     .cure = kFlatten},
    {.levels = kPart1,
     .part1 = {"6.4", 4},
     .holds =
         [](const GraphicsStateFacts& state) {
           return !state.blend_mode || IsNormal(*state.blend_mode);
         },
     .wrong = "A graphics state has a blend mode other than Normal.",
     .cure = kFlatten},
    {.levels = kPart1,
     .part1 = {"6.4", 5},
     .holds = [](const GraphicsStateFacts& state) { return IsOpaque(state.stroke_alpha); },
     .wrong = "A graphics state makes strokes transparent.",
     .cure = kFlatten},
    {.levels = kPart1,
     .part1 = {"6.4", 6},
     .holds = [](const GraphicsStateFacts& state) { return IsOpaque(state.fill_alpha); },
     .wrong = "A graphics state makes what is filled transparent.",
     .cure = kFlatten},
}};

constexpr std::array<Rule<BlendModeFacts>, 1> kBlendModeRules = {{
    {.levels = kParts2And3,
     .later = {"6.2.10", 1},
     .holds = [](const BlendModeFacts& mode) { return IsOneOf(mode.name, kBlendModes); },
     .wrong = "A blend mode is none that the standard has.",
     .cure = "Use one of the standard blend modes."},
}};

constexpr std::array<Rule<HalftoneFacts>, 3> kHalftoneRules = {{
    {.levels = kParts2And3,
     .later = {"6.2.5", 4},
     .holds =
         [](const HalftoneFacts& halftone) { return halftone.type == 1 || halftone.type == 5; },
     .wrong = "A halftone is of a type other than 1 and 5.",
     .cure = "Remove the halftone, or use one of type 1 or 5."},
    {.levels = kParts2And3,
     .later = {"6.2.5", 5},
     .holds = [](const HalftoneFacts& halftone) { return !halftone.has_name; },
     .wrong = "A halftone has a /HalftoneName.",
     .cure = "Remove the name."},
    {.levels = kParts2And3,
     .later = {"6.2.5", 6},
     .holds = TransferIsAsRequired,
     .wrong = "A halftone has a transfer function that the standard does not ask for, or lacks one "
              "that it does.",
     .cure = "Keep transfer functions in halftones of spot colours only, where each has one."},
}};

constexpr std::array<Rule<RenderingIntentFacts>, 1> kRenderingIntentRules = {{
    {.levels = kAllLevels,
     .part1 = {"6.2.9", 1},
     .later = {"6.2.6", 1},
     .holds = [](const RenderingIntentFacts& intent) { return IsOneOf(intent.name, kIntents); },
     .wrong = "A rendering intent is none of the four that the standard has.",
     .cure = "Use RelativeColorimetric, AbsoluteColorimetric, Perceptual or Saturation."},
}};

constexpr std::array<Rule<GroupFacts>, 1> kGroupRules = {{
    {.levels = kPart1,
     .part1 = {"6.4", 3},
     .holds = [](const GroupFacts& group) { return !group.is_transparency; },
     .wrong = "A page or a form is a transparency group.",
     .cure = kFlatten},
}};

constexpr std::array<Rule<PageTransparencyFacts>, 1> kPageTransparencyRules = {{
    {.levels = kParts2And3,
     .later = {"6.2.10", 2},
     .holds =
         [](const PageTransparencyFacts& page) {
           return page.has_output_intent || page.has_blending_space || !page.has_transparency;
         },
     .wrong = "A page has transparency, and neither the page nor the document says in which colour "
              "space it is computed.",
     .cure = "Add an output intent, or a /Group with a /CS to the page."},
}};

}  // namespace

template <>
std::span<const Rule<GraphicsStateFacts>> RulesFor<GraphicsStateFacts>() {
  return kGraphicsStateRules;
}

template <>
std::span<const Rule<BlendModeFacts>> RulesFor<BlendModeFacts>() {
  return kBlendModeRules;
}

template <>
std::span<const Rule<HalftoneFacts>> RulesFor<HalftoneFacts>() {
  return kHalftoneRules;
}

template <>
std::span<const Rule<RenderingIntentFacts>> RulesFor<RenderingIntentFacts>() {
  return kRenderingIntentRules;
}

template <>
std::span<const Rule<GroupFacts>> RulesFor<GroupFacts>() {
  return kGroupRules;
}

template <>
std::span<const Rule<PageTransparencyFacts>> RulesFor<PageTransparencyFacts>() {
  return kPageTransparencyRules;
}

}  // namespace TarnixTools::engines::pdfa
