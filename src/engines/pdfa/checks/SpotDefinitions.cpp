#include "engines/pdfa/checks/SpotDefinitions.h"

#include <algorithm>
#include <array>
#include <vector>

#include "engines/pdfa/Limits.h"
#include "pdf/crypt/Digests.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::pdfa {

using pdf::Arena;
using pdf::DictionaryEntry;
using pdf::Object;

namespace {

// What only says how a stream is stored.
constexpr std::array<std::string_view, 5> kStorageKeys = {"Length", "Filter", "DecodeParms", "DL",
                                                          "F"};

// Objects as text that is the same for objects that mean the same.
class Definition {
 public:
  explicit Definition(pdf::Document& document) : document_(&document) {}

  std::string Of(const Object& alternate, const Object& tint) {
    Append(text_, alternate);
    Append(text_, tint);
    const auto digest = pdf::crypt::Sha256({text_});
    return {digest.begin(), digest.end()};
  }

 private:
  // References lead at most kMaxDefinitionDepth deep, which bounds the recursion.
  void Append(std::string& out, const Object& value) {
    const pdf::Followed found = document_->Follow(value, arena_);
    if (depth_ >= limits::kMaxDefinitionDepth || text_.size() > limits::kMaxDefinitionBytes) {
      return;
    }
    ++depth_;
    pdf::SerializeHooks hooks;
    hooks.reference = [this](std::string& to, pdf::Reference reference) {
      Append(to, Object::Ref(reference));
    };
    const bool is_stream =
        found.number != 0 && found.value.IsDictionary() && document_->IsStream(found.number);
    hooks.entries = [this, is_stream](std::span<const DictionaryEntry> entries) {
      return Sorted(entries, is_stream);
    };
    pdf::AppendObject(out, found.value, hooks);
    if (is_stream) {
      const auto data = document_->TryDecodeStream(found.number, limits::kMaxDefinitionBytes);
      out += data ? data->data : std::string();
    }
    --depth_;
  }

  std::span<const DictionaryEntry> Sorted(std::span<const DictionaryEntry> entries,
                                          bool is_stream) {
    std::vector<DictionaryEntry> sorted;
    for (const DictionaryEntry& entry : entries) {
      if (!is_stream ||
          std::find(kStorageKeys.begin(), kStorageKeys.end(), entry.Key()) == kStorageKeys.end()) {
        sorted.push_back(entry);
      }
    }
    std::stable_sort(
        sorted.begin(), sorted.end(),
        [](const DictionaryEntry& a, const DictionaryEntry& b) { return a.Key() < b.Key(); });
    return arena_.CopyItems(std::span<const DictionaryEntry>(sorted));
  }

  pdf::Document* document_;
  Arena arena_;
  std::string text_;
  int depth_ = 0;
};

}  // namespace

// What is asked often is compared once: most tints are objects of their own.
bool SpotDefinitions::Note(std::string_view name, const Object& alternate, const Object& tint) {
  if (!tint.IsReference() || known_.size() >= limits::kMaxSpotColors) {
    return Compare(name, alternate, tint);
  }
  std::string key;
  pdf::AppendName(key, name);
  pdf::AppendObject(key, alternate);
  pdf::AppendObject(key, tint);
  const auto known = known_.find(key);
  if (known != known_.end()) {
    return known->second;
  }
  const bool is_same = Compare(name, alternate, tint);
  known_.emplace(key, is_same);
  return is_same;
}

bool SpotDefinitions::Compare(std::string_view name, const Object& alternate, const Object& tint) {
  std::string definition = Definition(*document_).Of(alternate, tint);
  if (definitions_.size() >= limits::kMaxSpotColors) {
    return true;
  }
  const auto [known, is_new] = definitions_.try_emplace(std::string(name), definition);
  return is_new || known->second == definition;
}

}  // namespace TarnixTools::engines::pdfa
