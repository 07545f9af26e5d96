#include "engines/toolbox/copy/layers/LayerConfiguration.h"

#include <algorithm>
#include <span>

#include "engines/toolbox/Limits.h"
#include "engines/toolbox/SourceDocument.h"
#include "pdf/Limits.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::toolbox {

using pdf::Object;

namespace {

std::string StringText(const Object& value) {
  std::string text;
  if (value.IsString()) {
    pdf::AppendString(text, value.Text(), value.is_hex());
  }
  return text;
}

// Reads one configuration.
class Reading {
 public:
  explicit Reading(LayerIndex& index) : index_(&index) {}

  SourceLayerConfiguration Read(const Object& dictionary) {
    SourceLayerConfiguration configuration;
    configuration.facts = ReadFacts(dictionary);
    Mark(configuration.marks, kMarkedOn, dictionary.Get("ON"));
    Mark(configuration.marks, kMarkedOff, dictionary.Get("OFF"));
    Mark(configuration.marks, kMarkedLocked, dictionary.Get("Locked"));
    ReadNested(configuration.order, dictionary.Get("Order"));
    ReadNested(configuration.radio_groups, dictionary.Get("RBGroups"));
    ReadUsages(configuration.usages, dictionary.Get("AS"));
    return configuration;
  }

 private:
  struct OpenArray {
    std::span<const Object> items;
    std::size_t next = 0;
    std::uint32_t number = 0;  // 0: no object of its own
  };

  Object Look(const Object& value) { return index_->Look(value, arena_); }

  std::uint32_t LayerOf(const Object& item) {
    return item.IsReference() ? index_->Note(item.AsReference().number) : LayerIndex::kNone;
  }

  LayerConfigurationFacts ReadFacts(const Object& dictionary) {
    LayerConfigurationFacts facts;
    const Object base_state = Look(dictionary.Get("BaseState"));
    facts.base_state = base_state.IsName("OFF")         ? LayerState::kOff
                       : base_state.IsName("Unchanged") ? LayerState::kUnchanged
                                                        : LayerState::kOn;
    facts.name = StringText(Look(dictionary.Get("Name")));
    facts.creator = StringText(Look(dictionary.Get("Creator")));
    facts.intents = LayerIntents(Look(dictionary.Get("Intent")));
    facts.lists_visible_pages_only = Look(dictionary.Get("ListMode")).IsName("VisiblePages");
    return facts;
  }

  void Mark(std::vector<std::uint8_t>& marks, LayerMark mark, const Object& list) {
    for (const Object& item : Look(list).Items()) {
      const std::uint32_t index = LayerOf(item);
      if (index != LayerIndex::kNone) {
        marks.resize(std::max<std::size_t>(marks.size(), index + std::size_t{1}));
        marks[index] |= mark;
      }
    }
  }

  void ReadNested(LayerTree& tree, const Object& list) {
    open_.push_back({Look(list).Items(), 0, list.AsReference().number});
    while (!open_.empty()) {
      if (open_.back().next < open_.back().items.size()) {
        ReadItem(tree, open_.back().items[open_.back().next++]);
        continue;
      }
      open_.pop_back();
      if (!open_.empty()) {
        tree.Close();
      }
    }
    tree.Finish();
  }

  void ReadItem(LayerTree& tree, const Object& item) {
    const std::uint32_t index = LayerOf(item);
    if (index != LayerIndex::kNone) {
      tree.AddLayer(index);
      return;
    }
    const Object value = Look(item);
    if (value.IsString()) {
      tree.AddLabel(StringText(value));
    } else if (value.IsArray() && open_.size() < pdf::limits::kMaxLayerNesting && !IsOpen(item)) {
      tree.Open();
      open_.push_back({value.Items(), 0, item.AsReference().number});
    }
  }

  bool IsOpen(const Object& item) const {
    return item.IsReference() &&
           std::any_of(open_.begin(), open_.end(), [&](const OpenArray& array) {
             return array.number == item.AsReference().number;
           });
  }

  void ReadUsages(LayerTree& tree, const Object& list) {
    for (const Object& item : Look(list).Items()) {
      const Object usage = Look(item);
      const Object event = Look(usage.Get("Event"));
      if (!event.IsName()) {
        continue;
      }
      std::string opening = "<</Event";
      pdf::AppendName(opening, event.Text());
      AppendCategories(opening, Look(usage.Get("Category")));
      tree.Open(opening + "/OCGs[");
      for (const Object& layer : Look(usage.Get("OCGs")).Items()) {
        const std::uint32_t index = LayerOf(layer);
        if (index != LayerIndex::kNone) {
          tree.AddLayer(index);
        }
      }
      tree.Close("]>>");
    }
    tree.Finish();
  }

  void AppendCategories(std::string& out, const Object& categories) {
    out += "/Category[";
    for (const Object& category : categories.Items()) {
      if (category.IsName()) {
        pdf::AppendName(out, category.Text());
      }
    }
    out += ']';
  }

  LayerIndex* index_;
  pdf::Arena arena_;
  std::vector<OpenArray> open_;
};

}  // namespace

std::vector<std::string> LayerIntents(const Object& intent) {
  std::vector<std::string> names;
  if (intent.IsName()) {
    names.emplace_back(intent.Text());
  }
  for (const Object& item : intent.Items()) {
    if (item.IsName() && names.size() < limits::kMaxLayerIntents) {
      names.emplace_back(item.Text());
    }
  }
  if (names.empty()) {
    names.emplace_back("View");
  }
  return names;
}

LayerIndex::LayerIndex(SourceDocument& source) : source_(&source), reader_(source.document()) {}

std::uint32_t LayerIndex::Note(std::uint32_t number) {
  const auto [place, is_new] = indexes_.emplace(number, kNone);
  if (!is_new) {
    return place->second;
  }
  arena_.Reset();
  const Object dictionary = source_->document().Load({number, 0}, arena_);
  const Object type = Look(dictionary.Get("Type"), arena_);
  if (!dictionary.IsDictionary() || !(type.IsNull() || type.IsName("OCG")) ||
      source_->IsBarred(number)) {
    return kNone;
  }
  place->second = static_cast<std::uint32_t>(layers_.size());
  layers_.push_back({number, false, LayerIntents(Look(dictionary.Get("Intent"), arena_))});
  return place->second;
}

std::uint32_t LayerIndex::Find(std::uint32_t number) const {
  const auto found = indexes_.find(number);
  return found == indexes_.end() ? kNone : found->second;
}

SourceLayerConfiguration ReadLayerConfiguration(const Object& dictionary, LayerIndex& index) {
  return Reading(index).Read(dictionary);
}

}  // namespace TarnixTools::engines::toolbox
