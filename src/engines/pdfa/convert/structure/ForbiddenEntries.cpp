#include "engines/pdfa/convert/structure/ForbiddenEntries.h"

#include <deque>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "engines/pdfa/convert/contents/LargeReals.h"
#include "engines/pdfa/convert/structure/EntryRules.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::pdfa {

using pdf::Arena;
using pdf::DictionaryEntry;
using pdf::Object;

namespace {

class Cleaner {
 public:
  explicit Cleaner(Conversion& conversion) : conversion_(&conversion) {
    hooks_.entries = [this](std::span<const DictionaryEntry> entries) { return Kept(entries); };
    if (conversion.is_part1()) {
      hooks_.real = [this](std::string& out, std::string_view number) { AppendReal(out, number); };
    }
  }

  void CleanAll() {
    for (std::uint32_t number = 1; number < document().object_limit(); ++number) {
      if (document().Exists(number) && !document().IsCatalogObject(number)) {
        arena_.Reset();
        Clean(number, document().Load({number, 0}, arena_));
      }
    }
    arena_.Reset();
    Clean(conversion_->rewriter.catalog(), document().Catalog(arena_));
  }

 private:
  pdf::Document& document() { return conversion_->document; }

  // What changes at any depth is written anew, so that no more is touched than has to be.
  void Clean(std::uint32_t number, const Object& value) {
    if (value.IsArray()) {
      if (const std::string text = TextOf(value); has_changed_) {
        conversion_->rewriter.Change(number, pdf::ObjectChange::Value(text));
      }
      return;
    }
    const bool is_stream = value.Has("Length") && document().IsStream(number);
    for (const DictionaryEntry& entry : value.Entries()) {
      if (IsForbidden(entry, value, is_stream)) {
        conversion_->rewriter.RemoveEntry(number, entry.Key());
      } else if (entry.value.IsArray() || entry.value.IsDictionary() || entry.value.IsNumber()) {
        if (std::string text = TextOf(entry.value); has_changed_) {
          conversion_->rewriter.SetEntry(number, entry.Key(), std::move(text));
        }
      }
    }
  }

  void AppendReal(std::string& out, std::string_view number) {
    const bool is_large = IsLargeReal(number);
    pdf::AppendToken(out, is_large ? Rounded(number) : std::string(number));
    if (is_large) {
      has_changed_ = true;
      conversion_->report.Changed("numbers that are too large for real ones");
    }
  }

  std::string TextOf(const Object& value) {
    has_changed_ = false;
    kept_.clear();
    std::string text;
    pdf::AppendObject(text, value, hooks_);
    return text;
  }

  // The entries of a dictionary that is written in place.
  std::span<const DictionaryEntry> Kept(std::span<const DictionaryEntry> entries) {
    const Object owner = Object::Dictionary(entries);
    std::vector<DictionaryEntry> kept;
    for (const DictionaryEntry& entry : entries) {
      if (!IsForbidden(entry, owner, false)) {
        kept.push_back(entry);
      }
    }
    if (kept.size() == entries.size()) {
      return entries;
    }
    has_changed_ = true;
    return kept_.emplace_back(std::move(kept));
  }

  bool IsForbidden(const DictionaryEntry& entry, const Object& owner, bool is_stream) {
    if (!IsRuledKey(entry.Key())) {
      return false;
    }
    Arena arena;
    const EntryLook look{.document = &document(),
                         .arena = &arena,
                         .owner = owner,
                         .value = document().Resolve(entry.value, arena),
                         .level = conversion_->level,
                         .files = &files_,
                         .is_stream = is_stream};
    const EntryRule* rule = RuleAgainst(entry.Key(), look);
    if (rule != nullptr) {
      conversion_->report.Dropped(rule->what);
    }
    return rule != nullptr;
  }

  Conversion* conversion_;
  Arena arena_;
  pdf::SerializeHooks hooks_;
  std::deque<std::vector<DictionaryEntry>> kept_;  // of the value that is being written
  bool has_changed_ = false;
  KnownFiles files_;
};

}  // namespace

void RemoveForbiddenEntries(Conversion& conversion) {
  Cleaner(conversion).CleanAll();
}

}  // namespace TarnixTools::engines::pdfa
