#include "engines/optimizer/structure/UnusedResources.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "pdf/content/Appearances.h"
#include "pdf/content/ResourceGraph.h"
#include "pdf/content/ResourceUse.h"
#include "pdf/write/ReachedObjects.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::optimizer {

namespace {

using pdf::Arena;
using pdf::DictionaryEntry;
using pdf::Object;
using pdf::ResourceDictionary;

constexpr std::size_t kCategories = pdf::kResourceCategoryKeys.size();

// Where a resource dictionary stands.
struct Place {
  std::uint32_t owner = 0;   // tells dictionaries apart, as in a ResourceScope
  std::uint32_t user = 0;    // of the object that has /Resources; 0 for none
  std::uint32_t number = 0;  // of the dictionary; 0: it is written in place
};

class UnusedResources {
 public:
  UnusedResources(pdf::Document& document, const pdf::PageTree& pages,
                  pdf::DocumentRewriter& rewriter)
      : document_(&document), pages_(&pages), rewriter_(&rewriter), reader_(document) {}

  std::size_t Remove() {
    pdf::ResourceGraph graph(*document_);
    for (std::size_t i = 0; i < pages_->pages().size(); ++i) {
      LookAtPage(i);
      graph.AddPage(*pages_, i);
      while (const pdf::ResourceNode* node = graph.Next()) {
        LookAtContent(*node);
      }
    }
    FindForeignUsers();
    for (const Known& known : known_) {
      Settle(known);
    }
    for (const auto& [number, category] : categories_) {
      RemoveFrom(number, category);
    }
    return removed_;
  }

 private:
  // A dictionary, with what is used of it by all its users.
  struct Known {
    Place place;
    pdf::UsedEntries used;
  };

  // A category that is an object: what stays of it by all dictionaries that it stands in.
  struct Category {
    std::vector<bool> is_kept;  // by entry
    bool is_whole = false;
  };

  void LookAtPage(std::size_t index) {
    const pdf::PageTree::Page& page = pages_->pages()[index];
    Arena arena;
    const Object dictionary = pages_->Load(page, arena);
    KeepFontsOfFields(dictionary, arena);
    const auto given = pages_->FindAttribute(page, dictionary, pdf::InheritableKey::kResources);
    const pdf::ResourceScope scope = pdf::ScopeOfPage(*document_, *pages_, index, arena);
    const Place place{.owner = scope.owner,
                      .user = given.node == 0 ? page.number : pages_->NumberOf(given),
                      .number = document_->Follow(given.value, arena).number};
    const auto resources = Read(given.value, place, given.node != 0);
    if (resources == nullptr) {
      return;
    }
    pdf::UsedEntries& used = UseOf(place, *resources);
    if (!used.may_be_all) {
      reader_.Mark(reader_.OfPage(dictionary), *resources, used);
    }
  }

  // Content that has resources of its own; what has none counts with its users.
  void LookAtContent(const pdf::ResourceNode& node) {
    const bool is_font = node.kind == pdf::ResourceKind::kType3Font;
    const bool has_content = pdf::HasContent(node.kind) && node.kind != pdf::ResourceKind::kPage;
    if ((!is_font && !has_content) || node.number == 0) {
      return;
    }
    Arena arena;
    const Object value = node.value.Get("Resources");
    const Place place{.owner = node.scope.owner,
                      .user = node.number,
                      .number = document_->Follow(value, arena).number};
    if (const auto resources = Read(value, place, false)) {
      Mark(is_font ? reader_.OfGlyphs(node.value) : reader_.OfForm(node.value, node.number), place,
           *resources);
    }
  }

  void Mark(const pdf::ResourceUse& names, const Place& place,
            const ResourceDictionary& resources) {
    const auto marked = reader_.Mark(names, resources, UseOf(place, resources));
    KeepMissing(names, resources);
    for (const std::size_t entry : marked) {
      const pdf::NamedResource& named = resources.entries[entry];
      KeepMissing(reader_.NeedsOf(named.category, named.value), resources);
    }
  }

  // in_node: written in place in a node of the page tree, for all pages below it.
  std::shared_ptr<const ResourceDictionary> Read(const Object& value, const Place& place,
                                                 bool in_node) {
    return place.number != 0 || in_node ? reader_.ReadShared(value, place.owner)
                                        : reader_.Read(value);
  }

  void KeepMissing(const pdf::ResourceUse& names, const ResourceDictionary& resources) {
    for (const pdf::ResourceNameId id : names.names) {
      if (resources.Find(id) < 0) {
        kept_names_.insert(id);
      }
    }
  }

  // Text that is typed into a field is set in the font that its default appearance names.
  void KeepFontsOfFields(const Object& page, Arena& arena) {
    for (const Object& item : document_->Resolve(page.Get("Annots"), arena).Items()) {
      Arena annotation_arena;
      const Object annotation = document_->Resolve(item, annotation_arena);
      if (document_->Resolve(annotation.Get("Subtype"), annotation_arena).IsName("Widget")) {
        kept_names_.insert(reader_.FontOfWidget(annotation));
      }
    }
  }

  pdf::UsedEntries& UseOf(const Place& place, const ResourceDictionary& resources) {
    const auto [found, is_new] = by_owner_.emplace(place.owner, known_.size());
    if (is_new) {
      known_.push_back({place, {}});
    }
    const std::uint32_t holder = place.number != 0 ? place.number : place.user;
    NoteUser(place.user, place.number);
    for (const std::string_view key : pdf::kResourceCategoryKeys) {
      NoteUser(holder, resources.object.Get(key).AsReference().number);
    }
    return known_[found->second].used;
  }

  static constexpr std::uint64_t PairOf(std::uint32_t user, std::uint32_t number) {
    return std::uint64_t{user} << 32U | number;
  }

  void NoteUser(std::uint32_t user, std::uint32_t number) {
    if (number != 0) {
      shared_.insert(number);
      users_.insert(PairOf(user, number));
    }
  }

  // Whatever else refers to a dictionary may use all of it.
  void FindForeignUsers() {
    std::vector<std::uint32_t> numbers;
    pdf::ForEachReached(*document_, *rewriter_, [&](std::uint32_t user, const Object& value) {
      numbers.clear();
      pdf::CollectReferences(value, numbers);
      for (const std::uint32_t number : numbers) {
        if (shared_.contains(number) && !users_.contains(PairOf(user, number))) {
          foreign_.insert(number);
        }
      }
    });
  }

  void Settle(const Known& known) {
    Arena arena;
    const std::uint32_t holder = known.place.number != 0 ? known.place.number : known.place.user;
    const Object object = document_->Load({.number = holder, .generation = 0}, arena);
    const auto resources = reader_.Read(known.place.number != 0 ? object : object.Get("Resources"));
    if (resources == nullptr) {
      return;
    }
    const bool is_whole = holder == 0 || known.used.may_be_all || foreign_.contains(holder) ||
                          HasDoubledKeys(resources->object);
    const std::vector<bool> is_kept = KeptOf(*resources, known.used, is_whole);
    std::vector<DictionaryEntry> changed;
    for (std::size_t i = 0; i < kCategories; ++i) {
      SettleCategory(i, *resources, is_kept, is_whole, arena, changed);
    }
    if (!changed.empty()) {
      Put(known.place, *resources, changed);
    }
  }

  // Readers disagree about which of two entries counts.
  static bool HasDoubledKeys(const Object& dictionary) {
    std::unordered_set<std::string_view> keys;
    return std::any_of(
        dictionary.Entries().begin(), dictionary.Entries().end(),
        [&](const DictionaryEntry& entry) { return !keys.insert(entry.Key()).second; });
  }

  // By entry. Of several with one name all stay or none.
  std::vector<bool> KeptOf(const ResourceDictionary& resources, const pdf::UsedEntries& used,
                           bool is_whole) const {
    std::unordered_set<pdf::ResourceNameId> names;
    for (std::size_t i = 0; i < resources.entries.size(); ++i) {
      const pdf::NamedResource& entry = resources.entries[i];
      if (is_whole || entry.is_implied || used.Holds(i) || kept_names_.contains(entry.id)) {
        names.insert(entry.id);
      }
    }
    std::vector<bool> is_kept(resources.entries.size());
    for (std::size_t i = 0; i < is_kept.size(); ++i) {
      is_kept[i] = names.contains(resources.entries[i].id);
    }
    return is_kept;
  }

  // Adds what is left of a category that is written in place when that is less than before; null for
  // nothing.
  void SettleCategory(std::size_t category, const ResourceDictionary& resources,
                      const std::vector<bool>& is_kept, bool is_whole, Arena& arena,
                      std::vector<DictionaryEntry>& changed) {
    const std::string_view key = pdf::kResourceCategoryKeys[category];
    const Object value = resources.object.Get(key);
    std::vector<bool> is_kept_here;
    std::vector<DictionaryEntry> entries;
    for (std::size_t i = 0; i < is_kept.size(); ++i) {
      const pdf::NamedResource& entry = resources.entries[i];
      if (entry.category == static_cast<pdf::ResourceCategory>(category)) {
        is_kept_here.push_back(is_kept[i]);
        if (is_kept[i]) {
          entries.push_back({Object::Name(entry.name), entry.value});
        }
      }
    }
    const std::size_t removed = is_kept_here.size() - entries.size();
    if (value.IsReference()) {
      NoteCategory(value.AsReference().number, is_kept_here, is_whole);
    } else if (removed > 0) {
      const std::span<const DictionaryEntry> kept(entries);
      changed.push_back(
          {Object::Name(key), kept.empty() ? Object() : Object::Dictionary(arena.CopyItems(kept))});
      removed_ += removed;
    }
  }

  void NoteCategory(std::uint32_t number, const std::vector<bool>& is_kept, bool is_whole) {
    Category& category = categories_[number];
    category.is_whole = category.is_whole || is_whole;
    category.is_kept.resize(std::max(category.is_kept.size(), is_kept.size()));
    for (std::size_t i = 0; i < is_kept.size(); ++i) {
      category.is_kept[i] = category.is_kept[i] || is_kept[i];
    }
  }

  void Put(const Place& place, const ResourceDictionary& resources,
           const std::vector<DictionaryEntry>& changed) {
    if (place.number != 0) {
      for (const DictionaryEntry& entry : changed) {
        SetEntry(place.number, entry.Key(), entry.value);
      }
      return;
    }
    std::vector<DictionaryEntry> entries(resources.object.Entries().begin(),
                                         resources.object.Entries().end());
    for (DictionaryEntry& entry : entries) {
      const auto found =
          std::find_if(changed.begin(), changed.end(),
                       [&](const DictionaryEntry& other) { return other.Key() == entry.Key(); });
      entry.value = found != changed.end() ? found->value : entry.value;
    }
    std::erase_if(entries, [](const DictionaryEntry& entry) { return entry.value.IsNull(); });
    SetEntry(place.user, "Resources", Object::Dictionary(entries));
  }

  void SetEntry(std::uint32_t number, std::string_view key, const Object& value) {
    if (value.IsNull()) {
      rewriter_->RemoveEntry(number, key);
      return;
    }
    std::string text;
    pdf::AppendObject(text, value);
    rewriter_->SetEntry(number, key, text);
  }

  void RemoveFrom(std::uint32_t number, const Category& category) {
    Arena arena;
    const Object names = document_->Load({.number = number, .generation = 0}, arena);
    const bool is_whole = category.is_whole || foreign_.contains(number) ||
                          by_owner_.contains(number) ||
                          names.Entries().size() != category.is_kept.size();
    for (std::size_t i = 0; i < category.is_kept.size() && !is_whole; ++i) {
      if (!category.is_kept[i]) {
        rewriter_->RemoveEntry(number, names.Entries()[i].Key());
        ++removed_;
      }
    }
  }

  pdf::Document* document_;
  const pdf::PageTree* pages_;
  pdf::DocumentRewriter* rewriter_;
  pdf::ResourceUseReader reader_;
  std::vector<Known> known_;
  std::unordered_map<std::uint32_t, std::size_t> by_owner_;  // index in known_
  std::unordered_map<std::uint32_t, Category> categories_;   // by number
  std::unordered_set<pdf::ResourceNameId> kept_names_;       // in all dictionaries
  std::unordered_set<std::uint32_t> shared_;                 // dictionaries that are objects
  std::unordered_set<std::uint64_t> users_;                  // of those: pairs that are known
  std::unordered_set<std::uint32_t> foreign_;                // those with others
  std::size_t removed_ = 0;
};

}  // namespace

std::size_t RemoveUnusedResources(pdf::Document& document, const pdf::PageTree& pages,
                                  pdf::DocumentRewriter& rewriter) {
  return UnusedResources(document, pages, rewriter).Remove();
}

}  // namespace TarnixTools::engines::optimizer
