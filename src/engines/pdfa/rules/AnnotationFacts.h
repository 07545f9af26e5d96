// Annotations (ISO 19005-1, 6.5; -2 and -3, 6.3), widgets of form fields among them.
#ifndef TARNIX_ENGINES_PDFA_RULES_ANNOTATIONFACTS_H_
#define TARNIX_ENGINES_PDFA_RULES_ANNOTATIONFACTS_H_

#include <cstdint>
#include <optional>
#include <string_view>

#include "engines/pdfa/rules/Rule.h"

namespace TarnixTools::engines::pdfa {

// What an annotation's /AP has as its /N.
enum class NormalAppearance : std::uint8_t { kNone, kStream, kStates };

struct AnnotationFacts {
  std::string_view subtype;
  std::optional<std::int64_t> flags;
  std::optional<double> opacity;  // /CA
  bool has_color = false;         // /C or /IC
  bool output_is_rgb = false;     // the document's output intent is for RGB
  double width = 0;               // of its rectangle
  double height = 0;
  bool has_appearance = false;   // an /AP
  bool has_only_normal = false;  // and /N is all that is in there
  NormalAppearance normal{};
  bool has_states = false;  // in /N
  bool is_button = false;   // the widget of a push button, check box or radio button

  bool IsWidget() const { return subtype == "Widget"; }

  bool HasFlag(std::int64_t flag) const { return flags && (*flags & flag) != 0; }
};

struct WidgetFacts {
  bool has_action = false;              // /A
  bool has_additional_actions = false;  // /AA
  bool has_appearance = false;
};

template <>
std::span<const Rule<AnnotationFacts>> RulesFor<AnnotationFacts>();
template <>
std::span<const Rule<WidgetFacts>> RulesFor<WidgetFacts>();

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_RULES_ANNOTATIONFACTS_H_
