#include <array>

#include "engines/pdfa/rules/AnnotationFacts.h"
#include "engines/pdfa/vocabulary/Names.h"

namespace TarnixTools::engines::pdfa {

namespace {

// Flags of annotations (ISO 32000-1, table 165).
constexpr std::int64_t kInvisible = 1;
constexpr std::int64_t kHidden = 2;
constexpr std::int64_t kPrint = 4;
constexpr std::int64_t kNoView = 32;
constexpr std::int64_t kToggleNoView = 256;

constexpr const char* kFlagsWrong = "An annotation is hidden, not printed, or not always seen.";
constexpr const char* kFlagsCure =
    "Set the flag Print, and clear Invisible, Hidden, NoView and ToggleNoView.";

constexpr std::array<Rule<AnnotationFacts>, 11> kAnnotationRules = {{
    {.levels = kPart1,
     .part1 = {"6.5.2", 1},
     .holds =
         [](const AnnotationFacts& annotation) {
           return IsOneOf(annotation.subtype, kPlainAnnotations);
         },
     .wrong = "An annotation is of a type that PDF/A-1 does not know or allow.",
     .cure = "Remove the annotation, or validate by PDF/A-2 or -3, which know more types."},
    {.levels = kPart1,
     .part1 = {"6.5.3", 1},
     .holds =
         [](const AnnotationFacts& annotation) {
           return !annotation.opacity || *annotation.opacity == 1;
         },
     .wrong = "An annotation is not opaque.",
     .cure = "Set its /CA to 1."},
    {.levels = kPart1,
     .part1 = {"6.5.3", 2},
     .holds =
         [](const AnnotationFacts& annotation) {
           return annotation.HasFlag(kPrint) && !annotation.HasFlag(kInvisible | kHidden | kNoView);
         },
     .wrong = kFlagsWrong,
     .cure = kFlagsCure},
    {.levels = kPart1,
     .part1 = {"6.5.3", 3},
     .holds =
         [](const AnnotationFacts& annotation) {
           return !annotation.has_color || annotation.output_is_rgb;
         },
     .wrong = "An annotation has a colour in RGB, and the output intent is none for RGB.",
     .cure = "Give the document an output intent for RGB, or remove /C and /IC."},
    {.levels = kAllLevels,
     .part1 = {"6.5.3", 4},
     .later = {"6.3.3", 2},
     .holds =
         [](const AnnotationFacts& annotation) {
           return !annotation.has_appearance || annotation.has_only_normal;
         },
     .wrong = "An annotation's appearances are others than the normal one, or none.",
     .cure = "Keep /N in the appearance dictionary and nothing else."},
    {.levels = kAllLevels,
     .part1 = {"6.5.3", 5},
     .later = {"6.3.3", 3},
     .holds =
         [](const AnnotationFacts& annotation) {
           return !annotation.has_only_normal || !annotation.IsWidget() || !annotation.is_button ||
                  (annotation.normal == NormalAppearance::kStates && annotation.has_states);
         },
     .wrong = "The appearance of a button does not tell its states apart.",
     .cure = "Make /N a dictionary with an appearance stream for each state."},
    {.levels = kAllLevels,
     .part1 = {"6.5.3", 6},
     .later = {"6.3.3", 4},
     .holds =
         [](const AnnotationFacts& annotation) {
           return !annotation.has_only_normal || (annotation.IsWidget() && annotation.is_button) ||
                  annotation.normal == NormalAppearance::kStream;
         },
     .wrong = "The normal appearance of an annotation is no stream.",
     .cure = "Make /N an appearance stream."},
    {.levels = kParts2And3,
     .later = {"6.3.1", 1},
     .holds =
         [](const AnnotationFacts& annotation) {
           return IsOneOf(annotation.subtype, kPlainAnnotations) ||
                  IsOneOf(annotation.subtype, kLaterAnnotations);
         },
     .wrong = "An annotation is of a type that PDF/A does not allow.",
     .cure = "Remove the annotation."},
    {.levels = kParts2And3,
     .later = {"6.3.2", 1},
     .holds =
         [](const AnnotationFacts& annotation) {
           return annotation.subtype == "Popup" || annotation.flags;
         },
     .wrong = "An annotation has no flags, so that it is not printed.",
     .cure = kFlagsCure},
    {.levels = kParts2And3,
     .later = {"6.3.2", 2},
     .holds =
         [](const AnnotationFacts& annotation) {
           return !annotation.flags ||
                  (annotation.HasFlag(kPrint) &&
                   !annotation.HasFlag(kInvisible | kHidden | kNoView | kToggleNoView));
         },
     .wrong = kFlagsWrong,
     .cure = kFlagsCure},
    {.levels = kParts2And3,
     .later = {"6.3.3", 1},
     .holds =
         [](const AnnotationFacts& annotation) {
           return (annotation.width == 0 && annotation.height == 0) ||
                  annotation.subtype == "Popup" || annotation.subtype == "Link" ||
                  annotation.has_appearance;
         },
     .wrong = "An annotation has no appearance, so that each viewer draws it in its own way.",
     .cure = "Give the annotation an appearance stream as its only appearance."},
}};

constexpr std::array<Rule<WidgetFacts>, 4> kWidgetRules = {{
    {.levels = kPart1,
     .part1 = {"6.6.1", 3},
     .holds = [](const WidgetFacts& widget) { return !widget.has_action; },
     .wrong = "A form field has an action.",
     .cure = "Remove its /A."},
    {.levels = kPart1,
     .part1 = {"6.6.2", 1},
     .holds = [](const WidgetFacts& widget) { return !widget.has_additional_actions; },
     .wrong = "A form field has additional actions.",
     .cure = "Remove its /AA."},
    {.levels = kPart1,
     .part1 = {"6.9", 2},
     .holds = [](const WidgetFacts& widget) { return widget.has_appearance; },
     .wrong = "A form field has no appearance.",
     .cure = "Give the field an appearance stream."},
    {.levels = kParts2And3,
     .later = {"6.4.1", 1},
     .holds =
         [](const WidgetFacts& widget) {
           return !widget.has_action && !widget.has_additional_actions;
         },
     .wrong = "A form field has actions.",
     .cure = "Remove its /A and /AA."},
}};

}  // namespace

template <>
std::span<const Rule<AnnotationFacts>> RulesFor<AnnotationFacts>() {
  return kAnnotationRules;
}

template <>
std::span<const Rule<WidgetFacts>> RulesFor<WidgetFacts>() {
  return kWidgetRules;
}

}  // namespace TarnixTools::engines::pdfa
