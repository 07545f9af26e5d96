#include "engines/toolbox/copy/layers/Layers.h"

#include <algorithm>

#include "engines/toolbox/Limits.h"
#include "engines/toolbox/copy/CopyContext.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::toolbox {

using pdf::Object;

namespace {

using Configuration = LayerContribution::Configuration;

bool Shares(const std::vector<std::string>& a, const std::vector<std::string>& b) {
  const auto has = [](const std::vector<std::string>& names, const std::string& name) {
    return std::find(names.begin(), names.end(), name) != names.end();
  };
  return has(a, "All") || has(b, "All") ||
         std::any_of(a.begin(), a.end(), [&](const std::string& name) { return has(b, name); });
}

// Nothing when there are no items.
void AppendArray(std::string& out, std::string_view key, const std::string& items) {
  if (!items.empty()) {
    pdf::AppendName(out, key);
    out += '[';
    out += items;
    out += ']';
  }
}

void AppendText(std::string& out, std::string_view key, const std::string& text) {
  if (!text.empty()) {
    pdf::AppendName(out, key);
    out += text;
  }
}

void AppendIntents(std::string& out, const std::vector<std::string>& intents) {
  if (intents.size() == 1 && intents.front() == "View") {
    return;
  }
  std::string names;
  for (const std::string& intent : intents) {
    pdf::AppendName(names, intent);
  }
  AppendArray(out, "Intent", names);
}

// Appends the numbers of the layers that satisfy the predicate (layer, marks).
template <typename Predicate>
void AppendLayers(std::string& items, const LayerContribution& contribution,
                  const Configuration& configuration, Predicate is_wanted) {
  for (std::size_t i = 0; i < contribution.layers.size(); ++i) {
    if (is_wanted(contribution.layers[i], configuration.marks[i])) {
      pdf::AppendReference(items, contribution.layers[i].number);
    }
  }
}

void AppendMarked(std::string& items, const LayerContribution& contribution,
                  const Configuration& configuration, LayerMark mark) {
  AppendLayers(
      items, contribution, configuration,
      [mark](const LayerContribution::Layer&, std::uint8_t marks) { return (marks & mark) != 0; });
}

// What the marks make of a layer whose state was `base`: /OFF has the last word.
LayerState StateOf(LayerState base, std::uint8_t marks) {
  return (marks & kMarkedOff) != 0  ? LayerState::kOff
         : (marks & kMarkedOn) != 0 ? LayerState::kOn
                                    : base;
}

void AppendWithState(std::string& items, const LayerContribution& contribution,
                     const Configuration& configuration, LayerState state) {
  AppendLayers(items, contribution, configuration,
               [&](const LayerContribution::Layer&, std::uint8_t marks) {
                 return StateOf(configuration.facts.base_state, marks) == state;
               });
}

}  // namespace

SourceLayers::SourceLayers(SourceDocument& source) : index_(source) {
  pdf::Arena arena;
  pdf::Document& document = source.document();
  const Object properties = document.Resolve(document.Catalog(arena).Get("OCProperties"), arena);
  if (!properties.IsDictionary()) {
    return;
  }
  for (const Object& item : index_.Look(properties.Get("OCGs"), arena).Items()) {
    const std::uint32_t index =
        item.IsReference() ? index_.Note(item.AsReference().number) : LayerIndex::kNone;
    if (index != LayerIndex::kNone) {
      index_.layers()[index].is_listed = true;
    }
  }
  ReadConfigurations(properties, arena);
}

void SourceLayers::ReadConfigurations(const Object& properties, pdf::Arena& arena) {
  configurations_.push_back(
      ReadLayerConfiguration(index_.Look(properties.Get("D"), arena), index_));
  for (const Object& item : index_.Look(properties.Get("Configs"), arena).Items()) {
    const Object alternate = index_.Look(item, arena);
    if (alternate.IsDictionary() && configurations_.size() <= limits::kMaxAlternateConfigurations) {
      configurations_.push_back(ReadLayerConfiguration(alternate, index_));
    }
  }
}

void TargetLayers::Finish(pdf::FileWriter& writer, std::string& catalog) {
  if (contributions_.empty()) {
    return;
  }
  std::string text = "<</OCGs[";
  for (const LayerContribution& contribution : contributions_) {
    for (const LayerContribution::Layer& layer : contribution.layers) {
      if (layer.is_listed) {
        pdf::AppendReference(text, layer.number);
      }
    }
  }
  text += "]/D<<";
  AppendDefault(text);
  text += ">>";
  std::string alternates;
  for (const LayerContribution& contribution : contributions_) {
    for (std::size_t i = 1; i < contribution.configurations.size(); ++i) {
      alternates += "<<";
      AppendAlternate(alternates, contribution, contribution.configurations[i]);
      alternates += ">>";
    }
  }
  AppendArray(text, "Configs", alternates);
  const std::uint32_t number = writer.Reserve();
  writer.WriteObject(number, text + ">>");
  catalog += "/OCProperties";
  pdf::AppendReference(catalog, number);
}

// One default configuration for the layers of all sources.
void TargetLayers::AppendDefault(std::string& out) const {
  std::string name;
  std::string creator;
  std::string order;
  std::string radio_groups;
  std::string usages;
  std::string locked;
  bool lists_visible_pages_only = true;
  for (const LayerContribution& contribution : contributions_) {
    const Configuration& configuration = contribution.configurations.front();
    name = name.empty() ? configuration.facts.name : name;
    creator = creator.empty() ? configuration.facts.creator : creator;
    // A label at the start would become one of all that follows.
    const bool starts_with_label =
        configuration.order.starts_with('(') || configuration.order.starts_with('<');
    const bool is_wrapped = starts_with_label && contributions_.size() > 1;
    pdf::AppendToken(order, is_wrapped ? "[" + configuration.order + "]" : configuration.order);
    radio_groups += configuration.radio_groups;
    usages += configuration.usages;
    AppendMarked(locked, contribution, configuration, kMarkedLocked);
    lists_visible_pages_only &= configuration.facts.lists_visible_pages_only;
  }
  AppendText(out, "Name", name);
  AppendText(out, "Creator", creator);
  AppendDefaultStates(out);
  AppendArray(out, "Order", order);
  out += lists_visible_pages_only ? "/ListMode/VisiblePages" : "";
  AppendArray(out, "RBGroups", radio_groups);
  AppendArray(out, "AS", usages);
  AppendArray(out, "Locked", locked);
}

// States and intents. Where the sources start from different ones, each layer's state is said.
void TargetLayers::AppendDefaultStates(std::string& out) const {
  const LayerConfigurationFacts& first = contributions_.front().configurations.front().facts;
  std::vector<std::string> intents;
  bool has_one_base = true;
  bool has_one_intent = true;
  for (const LayerContribution& contribution : contributions_) {
    const LayerConfigurationFacts& facts = contribution.configurations.front().facts;
    has_one_base &= facts.base_state == first.base_state;
    has_one_intent &= facts.intents == first.intents;
    std::copy_if(facts.intents.begin(), facts.intents.end(), std::back_inserter(intents),
                 [&](const std::string& intent) {
                   return std::find(intents.begin(), intents.end(), intent) == intents.end();
                 });
  }
  const bool is_uniform = has_one_base && has_one_intent;
  std::string on;
  std::string off;
  for (const LayerContribution& contribution : contributions_) {
    const Configuration& configuration = contribution.configurations.front();
    AppendMarked(on, contribution, configuration, kMarkedOn);
    if (is_uniform) {
      AppendMarked(off, contribution, configuration, kMarkedOff);
      continue;
    }
    // A layer that its own document's intent did not cover was shown whatever its state.
    AppendLayers(off, contribution, configuration,
                 [&](const LayerContribution::Layer& layer, std::uint8_t marks) {
                   return layer.has_effect &&
                          StateOf(configuration.facts.base_state, marks) == LayerState::kOff;
                 });
  }
  out += is_uniform && first.base_state == LayerState::kOff ? "/BaseState/OFF" : "";
  AppendIntents(out, intents);
  AppendArray(out, "ON", on);
  AppendArray(out, "OFF", off);
}

// An alternate configuration speaks of the layers of its own source only.
void TargetLayers::AppendAlternate(std::string& out, const LayerContribution& contribution,
                                   const Configuration& configuration) const {
  const LayerConfigurationFacts& facts = configuration.facts;
  const bool has_others = contributions_.size() > 1;
  std::string on;
  std::string off;
  std::string locked;
  if (has_others) {
    AppendWithState(on, contribution, configuration, LayerState::kOn);
    AppendWithState(off, contribution, configuration, LayerState::kOff);
  } else {
    AppendMarked(on, contribution, configuration, kMarkedOn);
    AppendMarked(off, contribution, configuration, kMarkedOff);
  }
  AppendMarked(locked, contribution, configuration, kMarkedLocked);
  AppendText(out, "Name", facts.name);
  AppendText(out, "Creator", facts.creator);
  if (has_others || facts.base_state == LayerState::kUnchanged) {
    out += "/BaseState/Unchanged";
  } else if (facts.base_state == LayerState::kOff) {
    out += "/BaseState/OFF";
  }
  AppendIntents(out, facts.intents);
  AppendArray(out, "ON", on);
  AppendArray(out, "OFF", off);
  AppendArray(out, "Order", configuration.order);
  out += facts.lists_visible_pages_only ? "/ListMode/VisiblePages" : "";
  AppendArray(out, "RBGroups", configuration.radio_groups);
  AppendArray(out, "AS", configuration.usages);
  AppendArray(out, "Locked", locked);
}

void LayerCopier::Copy() {
  const SourceLayers& source = context_->source().parts().layers();
  const std::vector<KeptLayer> kept = FindKept(source.index());
  if (kept.empty()) {
    return;
  }
  LayerContribution contribution;
  std::uint64_t listed = 0;
  const std::vector<std::string>& intents = source.configurations().front().facts.intents;
  for (const KeptLayer& layer : kept) {
    const LayerIndex::Layer& of_source = source.index().layers()[layer.index];
    contribution.layers.push_back(
        {layer.target_number, of_source.is_listed, Shares(of_source.intents, intents)});
    listed += of_source.is_listed ? 1 : 0;
  }
  for (const SourceLayerConfiguration& configuration : source.configurations()) {
    Configuration& copy = contribution.configurations.emplace_back();
    copy.facts = configuration.facts;
    for (const KeptLayer& layer : kept) {
      copy.marks.push_back(
          layer.index < configuration.marks.size() ? configuration.marks[layer.index] : 0);
    }
    configuration.order.AppendKept(copy.order, kept);
    configuration.radio_groups.AppendKept(copy.radio_groups, kept);
    configuration.usages.AppendKept(copy.usages, kept);
  }
  context_->report().Kept(CopiedKind::kLayer, listed);
  context_->parts().layers.Add(std::move(contribution));
}

// Sorted by index.
std::vector<KeptLayer> LayerCopier::FindKept(const LayerIndex& index) {
  pdf::ObjectCopier& objects = context_->objects();
  const std::vector<LayerIndex::Layer>& layers = index.layers();
  std::vector<KeptLayer> kept;
  const auto keep = [&](std::uint32_t i) { kept.push_back({i, objects.Map(layers[i].number)}); };
  if (!context_->is_whole() && layers.size() > objects.mapped().size()) {
    for (const std::uint32_t number : objects.mapped()) {
      if (const std::uint32_t i = index.Find(number); i != LayerIndex::kNone) {
        keep(i);
      }
    }
    std::sort(kept.begin(), kept.end(),
              [](const KeptLayer& a, const KeptLayer& b) { return a.index < b.index; });
    return kept;
  }
  for (std::uint32_t i = 0; i < layers.size(); ++i) {
    if ((context_->is_whole() && layers[i].is_listed) || objects.IsMapped(layers[i].number)) {
      keep(i);
    }
  }
  return kept;
}

}  // namespace TarnixTools::engines::toolbox
