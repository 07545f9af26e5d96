#include <array>

#include "engines/pdfa/rules/DocumentFacts.h"

namespace TarnixTools::engines::pdfa {

namespace {

bool IsSide(double length) {
  return length >= 3 && length <= 14'400;
}

constexpr std::array<Rule<CatalogFacts>, 8> kCatalogRules = {{
    {.levels = kPart1,
     .part1 = {"6.1.11", 2},
     .holds = [](const CatalogFacts& catalog) { return !catalog.has_embedded_files; },
     .wrong = "The document has embedded files.",
     .cure = "Remove them, or validate by PDF/A-3."},
    {.levels = kPart1,
     .part1 = {"6.1.13", 1},
     .holds = [](const CatalogFacts& catalog) { return !catalog.has_layers; },
     .wrong = "The document has layers.",
     .cure = "Remove them, or validate by PDF/A-2 or -3."},
    {.levels = kAllLevels,
     .part1 = {"6.6.2", 3},
     .later = {"6.5.2", 1},
     .holds = [](const CatalogFacts& catalog) { return !catalog.has_additional_actions; },
     .wrong = "The document has additional actions.",
     .cure = "Remove the catalog's /AA."},
    {.levels = kParts2And3,
     .later = {"6.4.2", 2},
     .holds = [](const CatalogFacts& catalog) { return !catalog.needs_rendering; },
     .wrong = "The document must be made by a form before it can be seen.",
     .cure = "Remove /NeedsRendering and /XFA."},
    {.levels = kParts2And3,
     .later = {"6.10", 1},
     .holds = [](const CatalogFacts& catalog) { return !catalog.has_alternate_presentations; },
     .wrong = "The document has alternate presentations.",
     .cure = "Remove them from the catalog's /Names."},
    {.levels = kParts2And3,
     .later = {"6.11", 1},
     .holds = [](const CatalogFacts& catalog) { return !catalog.has_requirements; },
     .wrong = "The document asks viewers for features.",
     .cure = "Remove the catalog's /Requirements."},
    {.levels = kTaggedLevels,
     .part1 = {"6.8.2.2", 1},
     .later = {"6.7.2.2", 1},
     .holds = [](const CatalogFacts& catalog) { return catalog.is_marked; },
     .wrong = "The document does not say that it is tagged.",
     .cure = "Set /Marked to true in /MarkInfo, if its tags are sound."},
    {.levels = kTaggedLevels,
     .part1 = {"6.8.3.3", 1},
     .later = {"6.7.3.3", 1},
     .holds = [](const CatalogFacts& catalog) { return catalog.has_structure; },
     .wrong = "The document has no logical structure.",
     .cure = "Tag the document."},
}};

constexpr std::array<Rule<PageFacts>, 2> kPageRules = {{
    {.levels = kParts2And3,
     .later = {"6.5.2", 2},
     .holds = [](const PageFacts& page) { return !page.has_additional_actions; },
     .wrong = "A page has additional actions.",
     .cure = "Remove its /AA."},
    {.levels = kParts2And3,
     .later = {"6.10", 2},
     .holds = [](const PageFacts& page) { return !page.has_presentation_steps; },
     .wrong = "A page has presentation steps.",
     .cure = "Remove its /PresSteps."},
}};

constexpr std::array<Rule<PageBoxFacts>, 1> kPageBoxRules = {{
    {.levels = kParts2And3,
     .later = {"6.1.13", 11},
     .holds = [](const PageBoxFacts& box) { return IsSide(box.width) && IsSide(box.height); },
     .wrong = "A page is smaller than 3 or larger than 14,400 units.",
     .cure = "Scale the page, or change its unit."},
}};

constexpr std::array<Rule<LayerConfigurationFacts>, 4> kLayerConfigurationRules = {{
    {.levels = kParts2And3,
     .later = {"6.9", 1},
     .holds = [](const LayerConfigurationFacts& layers) { return layers.has_name; },
     .wrong = "A configuration of layers has no name.",
     .cure = "Give it a /Name."},
    {.levels = kParts2And3,
     .later = {"6.9", 2},
     .holds = [](const LayerConfigurationFacts& layers) { return !layers.has_name_of_another; },
     .wrong = "Two configurations of layers have the same name.",
     .cure = "Give each a name of its own."},
    {.levels = kParts2And3,
     .later = {"6.9", 3},
     .holds = [](const LayerConfigurationFacts& layers) { return layers.lists_all; },
     .wrong = "The list of layers that viewers show lacks some of them.",
     .cure = "Add them to /Order, or remove it."},
    {.levels = kParts2And3,
     .later = {"6.9", 4},
     .holds = [](const LayerConfigurationFacts& layers) { return !layers.has_automatic_states; },
     .wrong = "Layers change their visibility by themselves.",
     .cure = "Remove /AS."},
}};

}  // namespace

template <>
std::span<const Rule<CatalogFacts>> RulesFor<CatalogFacts>() {
  return kCatalogRules;
}

template <>
std::span<const Rule<PageFacts>> RulesFor<PageFacts>() {
  return kPageRules;
}

template <>
std::span<const Rule<PageBoxFacts>> RulesFor<PageBoxFacts>() {
  return kPageBoxRules;
}

template <>
std::span<const Rule<LayerConfigurationFacts>> RulesFor<LayerConfigurationFacts>() {
  return kLayerConfigurationRules;
}

}  // namespace TarnixTools::engines::pdfa
