#include "engines/pdfa/convert/structure/OwnObjects.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "engines/pdfa/Limits.h"
#include "engines/pdfa/vocabulary/OneOf.h"
#include "engines/support/files/DiskFile.h"
#include "pdf/write/DocumentRewriter.h"
#include "pdf/write/ReachedObjects.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::pdfa {

using pdf::Arena;
using pdf::Object;

namespace {

constexpr std::array<std::string_view, 7> kFontTypes = {
    "Type0", "Type1", "MMType1", "TrueType", "Type3", "CIDFontType0", "CIDFontType2"};

class Lifter {
 public:
  Lifter(pdf::Document& document, pdf::DocumentRewriter& rewriter)
      : document_(&document), rewriter_(&rewriter) {
    hooks_.nested = [this](std::string& out, const Object& value) { return Lift(out, value); };
  }

  void LiftFrom(std::uint32_t number, const Object& value) {
    if (pdf::IsAddedObject(number) && number != rewriter_->catalog()) {
      return;  // made of what was in place, with nothing in place in it
    }
    const std::size_t before = lifted_;
    if (value.IsArray()) {
      std::string text = TextOf(value);
      if (lifted_ != before) {
        held_ += text.size();
        rewriter_->Change(number, pdf::ObjectChange::Value(std::move(text)));
      }
    }
    for (const pdf::DictionaryEntry& entry : value.Entries()) {
      LiftFromEntry(number, entry);
    }
  }

  bool has_lifted() const { return lifted_ != 0; }

 private:
  void LiftFromEntry(std::uint32_t number, const pdf::DictionaryEntry& entry) {
    if (!entry.value.IsArray() && !entry.value.IsDictionary()) {
      return;
    }
    const std::size_t before = lifted_;
    std::string text;
    if (!Lift(text, entry.value)) {
      text = TextOf(entry.value);
    }
    if (lifted_ != before) {
      held_ += text.size();
      rewriter_->SetEntry(number, entry.Key(), std::move(text));
    }
  }

  std::string TextOf(const Object& value) {
    std::string text;
    pdf::AppendObject(text, value, hooks_);
    return text;
  }

  // Appends a reference to the object that the value has become; false for one that may stay.
  bool Lift(std::string& out, const Object& value) {
    if (!(value.IsArray() ? IsSpotColor(value) : IsFontOrShading(value)) ||
        held_ > limits::kMaxLiftedBytes) {
      return false;
    }
    ++lifted_;
    const auto [known, is_new] = by_text_.try_emplace(TextOf(value), 0);
    if (is_new) {
      held_ += 2 * known->first.size();
      known->second = rewriter_->Add(pdf::ObjectChange::Value(known->first));
    }
    pdf::AppendReference(out, known->second);
    return true;
  }

  Object Get(const Object& dictionary, std::string_view key, Arena& arena) const {
    return document_->Resolve(dictionary.Get(key), arena);
  }

  // Some lack the type, and some the kind.
  bool IsFontOrShading(const Object& dictionary) const {
    Arena arena;
    const Object type = Get(dictionary, "Type", arena);
    return type.IsName("Font") || type.IsName("FontDescriptor") ||
           IsOneOf(Get(dictionary, "Subtype", arena).Text(), kFontTypes) ||
           (dictionary.Has("FontName") && dictionary.Has("Flags")) || dictionary.Has("ShadingType");
  }

  bool IsSpotColor(const Object& array) const {
    Arena arena;
    constexpr std::size_t kLeastItems = 4;
    const auto items = array.Items();
    const Object family = items.empty() ? Object() : document_->Resolve(items[0], arena);
    return items.size() >= kLeastItems && (family.IsName("Separation") || family.IsName("DeviceN"));
  }

  pdf::Document* document_;
  pdf::DocumentRewriter* rewriter_;
  pdf::SerializeHooks hooks_;
  std::unordered_map<std::string, std::uint32_t> by_text_;
  std::size_t lifted_ = 0;
  std::size_t held_ = 0;  // bytes
};

}  // namespace

std::shared_ptr<std::FILE> WithOwnObjects(pdf::Document& document, const pdf::PageTree& pages) {
  pdf::DocumentRewriter rewriter(document);
  Lifter lifter(document, rewriter);
  pdf::ForEachReached(document, rewriter, [&](std::uint32_t number, const Object& value) {
    lifter.LiftFrom(number, value);
  });
  const bool has_page_in_place =
      std::any_of(pages.pages().begin(), pages.pages().end(),
                  [](const pdf::PageTree::Page& page) { return page.number == 0; });
  if (!has_page_in_place && !lifter.has_lifted()) {
    return nullptr;
  }
  rewriter.SetPages(pages);
  return WriteScratchFile(
      [&](pdf::ByteSink& sink) { rewriter.Write(sink, {.version = {}, .keeps_id = true}); });
}

}  // namespace TarnixTools::engines::pdfa
