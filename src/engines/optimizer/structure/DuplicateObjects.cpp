#include "engines/optimizer/structure/DuplicateObjects.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "engines/optimizer/structure/CanonicalForm.h"
#include "pdf/content/Appearances.h"
#include "pdf/crypt/Digests.h"
#include "pdf/write/NumberMap.h"

namespace TarnixTools::engines::optimizer {

namespace {

using pdf::Arena;
using pdf::DictionaryEntry;
using pdf::Object;

// Two objects with one digest are equal: nobody knows how to make two that are not.
using Digest = pdf::crypt::Block<32>;

struct DigestHash {
  std::size_t operator()(const Digest& digest) const {
    std::size_t hash = 0;
    std::memcpy(&hash, digest.data(), sizeof hash);
    return hash;
  }
};

// How a dictionary is gone through.
enum class Way : std::uint8_t {
  kByKeys,     // the keys below
  kAllValues,  // its keys are names of resources
};

// A key that is followed, and how a dictionary is gone through that stands there.
struct FollowedKey {
  std::string_view key;
  Way way = Way::kByKeys;
};

// Where resources lead (ISO 32000-2, 7.8.3 and clauses 8, 9 and 11): keys under which nothing stands
// that counts as itself. Not among them: layers (/OC, /Properties), metadata, private data, measures.
constexpr FollowedKey kFollowedKeys[] = {
    // Resources.
    {"Resources"},
    {"ColorSpace", Way::kAllValues},
    {"ExtGState", Way::kAllValues},
    {"Font", Way::kAllValues},
    {"Pattern", Way::kAllValues},
    {"Shading", Way::kAllValues},
    {"XObject", Way::kAllValues},
    {"ProcSet"},
    // Fonts.
    {"CIDSet"},
    {"CIDSystemInfo"},
    {"CIDToGIDMap"},
    {"CharProcs", Way::kAllValues},
    {"DescendantFonts"},
    {"Differences"},
    {"Encoding"},
    {"FD", Way::kAllValues},
    {"FontBBox"},
    {"FontDescriptor"},
    {"FontFile"},
    {"FontFile2"},
    {"FontFile3"},
    {"FontMatrix"},
    {"Style"},
    {"ToUnicode"},
    {"UseCMap"},
    {"W"},
    {"W2"},
    {"Widths"},
    // Images, forms and patterns.
    {"BBox"},
    {"Decode"},
    {"DecodeParms"},
    {"Group"},
    {"JBIG2Globals"},
    {"Mask"},
    {"Matrix"},
    {"SMask"},
    // Colour spaces, functions and shadings.
    {"Alternate"},
    {"BG"},
    {"BG2"},
    {"Background"},
    {"Bounds"},
    {"C0"},
    {"C1"},
    {"CS"},
    {"Colorants", Way::kAllValues},
    {"Coords"},
    {"Domain"},
    {"Encode"},
    {"Function"},
    {"Functions"},
    {"G"},
    {"HT"},
    {"Process"},
    {"Range"},
    {"TR"},
    {"TR2"},
    {"UCR"},
    {"UCR2"},
};

const FollowedKey* FindFollowed(std::string_view key) {
  static const auto index = [] {
    std::unordered_map<std::string_view, const FollowedKey*> keys;
    for (const FollowedKey& followed : kFollowedKeys) {
      keys.emplace(followed.key, &followed);
    }
    return keys;
  }();
  const auto found = index.find(key);
  return found == index.end() ? nullptr : found->second;
}

// What may say of itself what it is.
constexpr std::array<std::string_view, 10> kTypes = {
    "Font",     "FontDescriptor", "XObject",  "ExtGState", "Pattern",
    "Encoding", "CMap",           "Halftone", "Mask",      "Group"};

// An object that is to be looked at.
struct Step {
  std::uint32_t number = 0;
  Way way = Way::kByKeys;
};

// Adds the objects that the value leads to, in their order.
void CollectSteps(const Object& value, Way way, std::vector<Step>& steps) {
  std::vector<std::pair<Object, Way>> waiting = {{value, way}};
  while (!waiting.empty()) {
    const auto [next, next_way] = waiting.back();
    waiting.pop_back();
    if (next.IsReference()) {
      steps.push_back({next.AsReference().number, next_way});
    }
    for (auto item = next.Items().rbegin(); item != next.Items().rend(); ++item) {
      waiting.emplace_back(*item, Way::kByKeys);
    }
    for (auto entry = next.Entries().rbegin(); entry != next.Entries().rend(); ++entry) {
      const FollowedKey* key = FindFollowed(entry->Key());
      if (next_way == Way::kAllValues) {
        waiting.emplace_back(entry->value, Way::kByKeys);
      } else if (key != nullptr) {
        waiting.emplace_back(entry->value, key->way);
      }
    }
  }
}

class SummingSink : public pdf::ByteSink {
 public:
  void Write(std::string_view bytes) override { sum_.Add(bytes); }

  Digest Take() { return sum_.Take(); }

 private:
  pdf::crypt::Sha256Sum sum_;
};

class DuplicateObjects {
 public:
  DuplicateObjects(pdf::Document& document, const pdf::PageTree& pages,
                   const std::unordered_set<std::uint32_t>& taken, pdf::DocumentRewriter& rewriter)
      : document_(&document), pages_(&pages), taken_(&taken), rewriter_(&rewriter) {}

  std::size_t Merge() {
    for (const pdf::PageTree::Page& page : pages_->pages()) {
      LookAtPage(page);
    }
    Arena arena;
    const Object catalog = rewriter_->Load(rewriter_->catalog(), arena);
    const Object form = document_->Resolve(catalog.Get("AcroForm"), arena);
    LookAt(form.Get("DR"));
    return merged_;
  }

 private:
  // An object whose turn comes after that of all it leads to.
  struct Level {
    Step step;
    std::vector<Step> steps;
    std::size_t next = 0;
  };

  // The objects with one canonical form; of streams, and one length.
  struct Group {
    std::uint32_t first = 0;
    bool has_others = false;
  };

  void LookAtPage(const pdf::PageTree::Page& page) {
    Arena arena;
    const Object dictionary =
        page.number != 0 ? rewriter_->Load(page.number, arena) : pages_->Load(page, arena);
    LookAt(pages_->FindAttribute(page, dictionary, pdf::InheritableKey::kResources).value);
    LookAt(dictionary.Get("Contents"));
    LookAt(document_->Resolve(dictionary.Get("Group"), arena).Get("CS"));
    for (const Object& item : document_->Resolve(dictionary.Get("Annots"), arena).Items()) {
      Arena annotation_arena;
      const Object annotation = document_->Resolve(item, annotation_arena);
      for (const std::uint32_t number : pdf::AppearancesOf(*document_, annotation)) {
        LookAt(Object::Ref({.number = number, .generation = 0}));
      }
    }
  }

  void LookAt(const Object& value) {
    std::vector<Step> steps;
    CollectSteps(value, Way::kByKeys, steps);
    for (const Step& step : steps) {
      LookAt(step);
    }
  }

  void LookAt(const Step& first) {
    std::vector<Level> levels;
    Enter(first, levels);
    while (!levels.empty()) {
      Level& level = levels.back();
      if (level.next < level.steps.size()) {
        const Step step = level.steps[level.next++];
        Enter(step, levels);
      } else {
        Settle(level.step.number);
        levels.pop_back();
      }
    }
  }

  // An object that leads back to itself is its own meanwhile.
  void Enter(Step step, std::vector<Level>& levels) {
    step.number = rewriter_->Successor(step.number);
    if (!document_->Exists(step.number) || stand_ins_.Get(step.number) != 0) {
      return;
    }
    stand_ins_.Set(step.number, step.number);
    Arena arena;
    const Object value = rewriter_->Load(step.number, arena);
    if (IsResource(step.number, value)) {
      levels.push_back({step, {}});
      CollectSteps(value, step.way, levels.back().steps);
    }
  }

  // Whether the object is not known to be something that counts as itself.
  bool IsResource(std::uint32_t number, const Object& value) {
    if (pages_->IsPage(number) || pages_->IsNode(number) || document_->IsCatalogObject(number)) {
      return false;
    }
    Arena arena;
    const Object type = document_->Resolve(value.Get("Type"), arena);
    return type.IsNull() || std::find(kTypes.begin(), kTypes.end(), type.Text()) != kTypes.end();
  }

  void Settle(std::uint32_t number) {
    Arena arena;
    const Object value = rewriter_->Load(number, arena);
    const bool stays = taken_->contains(number) || rewriter_->IsChanged(number) || value.IsNull() ||
                       value.Has("StructParent") || value.Has("StructParents");
    if (stays) {
      return;
    }
    const auto stream = document_->StreamOf(number);
    const Digest form = FormOf(value, stream);
    const auto [group, is_new] = groups_.emplace(form, Group{.first = number});
    if (is_new) {
      return;
    }
    if (stream) {
      SettleStream(number, *stream, form, group->second);
    } else {
      MergeInto(number, group->second.first);
    }
  }

  // Among those of its group by its data, which nobody has looked at as long as there was but one.
  void SettleStream(std::uint32_t number, const pdf::StreamData& stream, const Digest& form,
                    Group& group) {
    const auto first =
        std::exchange(group.has_others, true) ? std::nullopt : document_->StreamOf(group.first);
    if (first) {
      streams_.emplace(DataOf(form, *first), group.first);
    }
    const auto [same, is_first] = streams_.emplace(DataOf(form, stream), number);
    if (!is_first) {
      MergeInto(number, same->second);
    }
  }

  // Of a stream its length is a part, and its /Length none.
  Digest FormOf(const Object& value, const std::optional<pdf::StreamData>& stream) {
    const auto stand_in = [this](std::uint32_t number) {
      const std::uint32_t end = rewriter_->Successor(number);
      const std::uint32_t known = stand_ins_.Get(end);
      return known != 0 ? known : end;
    };
    if (!stream) {
      return pdf::crypt::Sha256({CanonicalForm(value, stand_in)});
    }
    std::vector<DictionaryEntry> entries(value.Entries().begin(), value.Entries().end());
    std::erase_if(entries, [](const DictionaryEntry& entry) { return entry.Key() == "Length"; });
    return pdf::crypt::Sha256({CanonicalForm(Object::Dictionary(entries), stand_in), "stream",
                               std::to_string(document_->PlainLength(*stream))});
  }

  // Of a stream's form and its data, decrypted and otherwise as it stands.
  Digest DataOf(const Digest& form, const pdf::StreamData& stream) {
    SummingSink sum;
    sum.Write(pdf::crypt::View(form));
    document_->CopyStreamData(stream, sum);
    return sum.Take();
  }

  void MergeInto(std::uint32_t number, std::uint32_t into) {
    rewriter_->Merge(number, into);
    stand_ins_.Set(number, into);
    ++merged_;
  }

  pdf::Document* document_;
  const pdf::PageTree* pages_;
  const std::unordered_set<std::uint32_t>* taken_;
  pdf::DocumentRewriter* rewriter_;
  pdf::NumberMap stand_ins_;  // by number: itself, or what it was merged into; 0: not looked at yet
  std::unordered_map<Digest, Group, DigestHash> groups_;
  std::unordered_map<Digest, std::uint32_t, DigestHash> streams_;  // of groups with others
  std::size_t merged_ = 0;
};

}  // namespace

std::size_t MergeDuplicateObjects(pdf::Document& document, const pdf::PageTree& pages,
                                  const std::unordered_set<std::uint32_t>& taken,
                                  pdf::DocumentRewriter& rewriter) {
  return DuplicateObjects(document, pages, taken, rewriter).Merge();
}

}  // namespace TarnixTools::engines::optimizer
