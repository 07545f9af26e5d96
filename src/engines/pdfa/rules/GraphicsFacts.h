// Parameters of painting and transparency (ISO 19005-1, 6.2.8, 6.2.9 and 6.4; -2 and -3, 6.2.5,
// 6.2.6 and 6.2.10).
#ifndef TARNIX_ENGINES_PDFA_RULES_GRAPHICSFACTS_H_
#define TARNIX_ENGINES_PDFA_RULES_GRAPHICSFACTS_H_

#include <cstdint>
#include <optional>
#include <string_view>

#include "engines/pdfa/rules/Rule.h"

namespace TarnixTools::engines::pdfa {

// A graphics state that content sets.
struct GraphicsStateFacts {
  bool has_transfer_function = false;              // /TR
  std::optional<std::string_view> newer_transfer;  // /TR2: its name; empty for what is no name
  bool has_halftone_phase = false;                 // /HTP
  std::optional<std::string_view> soft_mask;       // its name; empty for what is no name
  std::optional<std::string_view> blend_mode;      // its name; empty for what is no name
  double stroke_alpha = 1;
  double fill_alpha = 1;
};

// A name that a blend mode is given by.
struct BlendModeFacts {
  std::string_view name;
};

struct HalftoneFacts {
  std::optional<std::int64_t> type;
  bool has_name = false;                     // /HalftoneName
  std::optional<std::string_view> colorant;  // in a halftone for several; nothing for the whole
  bool has_transfer_function = false;
};

// Wherever a rendering intent is named.
struct RenderingIntentFacts {
  std::string_view name;
};

// The group of a page or a form.
struct GroupFacts {
  bool is_transparency = false;
};

// A page and all that is painted on it.
struct PageTransparencyFacts {
  bool has_transparency = false;
  bool has_blending_space = false;  // its group has a colour space
  bool has_output_intent = false;
};

template <>
std::span<const Rule<GraphicsStateFacts>> RulesFor<GraphicsStateFacts>();
template <>
std::span<const Rule<BlendModeFacts>> RulesFor<BlendModeFacts>();
template <>
std::span<const Rule<HalftoneFacts>> RulesFor<HalftoneFacts>();
template <>
std::span<const Rule<RenderingIntentFacts>> RulesFor<RenderingIntentFacts>();
template <>
std::span<const Rule<GroupFacts>> RulesFor<GroupFacts>();
template <>
std::span<const Rule<PageTransparencyFacts>> RulesFor<PageTransparencyFacts>();

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_RULES_GRAPHICSFACTS_H_
