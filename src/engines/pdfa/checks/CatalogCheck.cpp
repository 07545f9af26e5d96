#include "engines/pdfa/checks/CatalogCheck.h"

#include <array>
#include <cmath>
#include <string>
#include <unordered_set>
#include <vector>

#include "engines/pdfa/checks/NodeWalk.h"
#include "engines/pdfa/rules/DocumentFacts.h"
#include "engines/pdfa/rules/StructureFacts.h"
#include "pdf/Limits.h"
#include "pdf/tree/TextString.h"

namespace TarnixTools::engines::pdfa {

namespace {

constexpr std::array<std::string_view, 3> kOwnBoxes = {"BleedBox", "TrimBox", "ArtBox"};

void CheckBox(CheckedDocument& checked, const pdf::Object& box, const Place& place) {
  pdf::Arena arena;
  if (box.Items().size() < 4) {
    return;
  }
  std::array<double, 4> sides{};
  for (std::size_t i = 0; i < sides.size(); ++i) {
    sides[i] = checked.document().Resolve(box.Items()[i], arena).NumberOr(0);
  }
  checked.findings().Check(
      PageBoxFacts{std::abs(sides[2] - sides[0]), std::abs(sides[3] - sides[1])}, place);
}

// The layers that a list names, however deep in it.
std::unordered_set<std::uint32_t> LayersIn(CheckedDocument& checked, const pdf::Object& order) {
  pdf::Arena arena;
  std::unordered_set<std::uint32_t> layers;
  std::vector<pdf::Object> waiting = {order};
  std::size_t looked_at = 0;
  while (!waiting.empty() && looked_at++ < pdf::limits::kMaxLayerTerms) {
    const pdf::Object value = waiting.back();
    waiting.pop_back();
    const pdf::Followed followed = checked.document().Follow(value, arena);
    if (followed.value.IsArray()) {
      waiting.insert(waiting.end(), followed.value.Items().begin(), followed.value.Items().end());
    } else if (followed.number != 0) {
      layers.insert(followed.number);
    }
  }
  return layers;
}

class LayerCheck {
 public:
  LayerCheck(CheckedDocument& checked, const pdf::Object& properties)
      : checked_(&checked), all_(LayersIn(checked, properties.Get("OCGs"))) {}

  void Check(const pdf::Object& value) {
    pdf::Arena arena;
    const pdf::Followed configuration = checked_->document().Follow(value, arena);
    if (!configuration.value.IsDictionary()) {
      return;
    }
    const pdf::Object name = checked_->Get(configuration.value, "Name", arena);
    LayerConfigurationFacts facts;
    facts.has_name = !name.Text().empty();
    facts.has_name_of_another = facts.has_name && !names_.insert(std::string(name.Text())).second;
    const pdf::Object order = checked_->Get(configuration.value, "Order", arena);
    if (order.IsArray()) {
      const std::unordered_set<std::uint32_t> listed = LayersIn(*checked_, order);
      for (const std::uint32_t layer : all_) {
        facts.lists_all &= listed.contains(layer);
      }
    }
    facts.has_automatic_states = configuration.value.Has("AS");
    checked_->findings().Check(facts, {.object = configuration.number});
  }

 private:
  CheckedDocument* checked_;
  std::unordered_set<std::uint32_t> all_;
  std::unordered_set<std::string> names_;
};

}  // namespace

void CheckCatalog(CheckedDocument& checked) {
  pdf::Arena arena;
  const pdf::Object catalog = checked.document().Catalog(arena);
  const pdf::Object names = checked.Get(catalog, "Names", arena);
  const pdf::Object mark_information = checked.Get(catalog, "MarkInfo", arena);
  CatalogFacts facts;
  facts.has_additional_actions = catalog.Has("AA");
  facts.has_layers = catalog.Has("OCProperties");
  facts.has_embedded_files = names.Has("EmbeddedFiles");
  facts.has_alternate_presentations = names.Has("AlternatePresentations");
  facts.needs_rendering = checked.Get(catalog, "NeedsRendering", arena).BooleanOr(false);
  facts.has_requirements = catalog.Has("Requirements");
  facts.is_marked = checked.Get(mark_information, "Marked", arena).BooleanOr(false);
  facts.has_structure = checked.Get(catalog, "StructTreeRoot", arena).IsDictionary();
  checked.findings().Check(facts);
  const pdf::Object language = checked.Get(catalog, "Lang", arena);
  if (language.IsString()) {
    const std::string tag = pdf::TextStringToUtf8(language.Text());
    checked.findings().Check(LanguageFacts{tag}, {.subject = tag});
  }
}

void CheckPage(CheckedDocument& checked, const pdf::Object& page, std::size_t page_index) {
  const pdf::PageTree::Page& place_in_tree = checked.pages().pages()[page_index];
  const Place place = {.object = place_in_tree.number, .page_number = page_index + 1};
  checked.findings().Check(PageFacts{.has_additional_actions = page.Has("AA"),
                                     .has_presentation_steps = page.Has("PresSteps")},
                           place);
  pdf::Arena arena;
  for (const auto key : {pdf::InheritableKey::kMediaBox, pdf::InheritableKey::kCropBox}) {
    const pdf::Object box = checked.pages().Attribute(place_in_tree, page, key, arena);
    CheckBox(checked, checked.document().Resolve(box, arena), place);
  }
  for (const std::string_view key : kOwnBoxes) {
    CheckBox(checked, checked.Get(page, key, arena), place);
  }
}

void CheckLayers(CheckedDocument& checked) {
  pdf::Arena arena;
  const pdf::Object catalog = checked.document().Catalog(arena);
  const pdf::Object properties = checked.Get(catalog, "OCProperties", arena);
  LayerCheck check(checked, properties);
  check.Check(properties.Get("D"));
  const pdf::Object others = checked.Get(properties, "Configs", arena);
  for (const pdf::Object& configuration : others.Items()) {
    check.Check(configuration);
  }
}

}  // namespace TarnixTools::engines::pdfa
