// What the catalog and the pages of a document have, and its layers.
#ifndef TARNIX_ENGINES_PDFA_RULES_DOCUMENTFACTS_H_
#define TARNIX_ENGINES_PDFA_RULES_DOCUMENTFACTS_H_

#include <string_view>

#include "engines/pdfa/rules/Rule.h"

namespace TarnixTools::engines::pdfa {

// The catalog.
struct CatalogFacts {
  bool has_additional_actions = false;       // /AA
  bool has_layers = false;                   // /OCProperties
  bool has_embedded_files = false;           // in /Names
  bool has_alternate_presentations = false;  // in /Names
  bool needs_rendering = false;              // /NeedsRendering is true
  bool has_requirements = false;             // /Requirements
  bool is_marked = false;                    // /MarkInfo says so
  bool has_structure = false;                // /StructTreeRoot
};

struct PageFacts {
  bool has_additional_actions = false;  // /AA
  bool has_presentation_steps = false;  // /PresSteps
};

// One of a page's boxes.
struct PageBoxFacts {
  double width = 0;
  double height = 0;
};

// A configuration of layers.
struct LayerConfigurationFacts {
  bool has_name = false;  // which is not empty
  bool has_name_of_another = false;
  bool lists_all = true;              // its /Order, if it has one, has every layer
  bool has_automatic_states = false;  // /AS
};

template <>
std::span<const Rule<CatalogFacts>> RulesFor<CatalogFacts>();
template <>
std::span<const Rule<PageFacts>> RulesFor<PageFacts>();
template <>
std::span<const Rule<PageBoxFacts>> RulesFor<PageBoxFacts>();
template <>
std::span<const Rule<LayerConfigurationFacts>> RulesFor<LayerConfigurationFacts>();

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_RULES_DOCUMENTFACTS_H_
