#include "engines/optimizer/fonts/FontUse.h"

#include <string_view>

#include "pdf/content/Appearances.h"

namespace TarnixTools::engines::optimizer {

using pdf::Arena;
using pdf::Object;

namespace {

constexpr std::uint32_t kSmallCodes = 0x10000;

}  // namespace

void CodeSet::Add(std::uint32_t code) {
  if (code >= kSmallCodes) {
    large_.insert(code);
    return;
  }
  if (code >= small_.size()) {
    small_.resize(code < 256 ? 256 : kSmallCodes);
  }
  small_[code] = true;
}

std::vector<std::uint32_t> CodeSet::Codes() const {
  std::vector<std::uint32_t> codes;
  for (std::size_t code = 0; code < small_.size(); ++code) {
    if (small_[code]) {
      codes.push_back(static_cast<std::uint32_t>(code));
    }
  }
  codes.insert(codes.end(), large_.begin(), large_.end());
  return codes;
}

FontUse::Font& FontUse::FontOf(std::uint32_t number) {
  Font& entry = fonts_[number];
  if (entry.font == nullptr) {
    const Object reference = Object::Ref({number, document_->GenerationOf(number)});
    entry.font = std::make_shared<const fonts::DocumentFont>(*document_, reference);
    entry.is_whole = entry.font->codes() == nullptr;
  }
  return entry;
}

void FontUse::Note(const pdf::StringUse& string) {
  const Object& font = string.state.text.font;
  if (!font.IsReference()) {
    KeepInPlace(font);
    return;
  }
  Font& entry = FontOf(font.AsReference().number);
  if (entry.is_whole) {
    return;
  }
  split_.clear();
  entry.is_whole = !entry.font->codes()->Split(string.bytes, split_);
  for (const std::uint32_t code : split_) {
    entry.codes.Add(code);
  }
  entry.is_whole = entry.is_whole || entry.codes.LargeCount() > limits::kMaxLargeCodes;
}

void FontUse::KeepWhole(std::uint32_t number) {
  FontOf(number).is_whole = true;
}

// A font that is no object of its own cannot be told from others: all that it may show is kept.
// What it refers to tells whether it is known already.
void FontUse::KeepInPlace(const Object& font) {
  if (!font.IsDictionary() || keeps_all_) {
    return;
  }
  const Object descriptor = font.Get("FontDescriptor");
  const Object descendants = font.Get("DescendantFonts");
  const Object& own = descriptor.IsReference() ? descriptor : descendants;
  const std::uint32_t key = own.AsReference().number;
  if (key == 0 && in_place_left_ == 0) {
    keeps_all_ = true;
    return;
  }
  in_place_left_ -= key == 0 ? 1 : 0;
  if (key == 0 || seen_in_place_.insert(key).second) {
    whole_programs_.insert(fonts::DocumentFont(*document_, font).descriptor().program);
  }
}

void FontUse::KeepEntry(const Object& font) {
  if (font.IsReference()) {
    KeepWhole(font.AsReference().number);
  } else {
    KeepInPlace(font);
  }
}

void FontUse::KeepResources(const Object& resources) {
  Arena arena;
  const pdf::Followed found = document_->Follow(resources, arena);
  if (found.number != 0 && !kept_resources_.insert(found.number).second) {
    return;
  }
  for (const pdf::DictionaryEntry& entry :
       document_->Resolve(found.value.Get("Font"), arena).Entries()) {
    KeepEntry(entry.value);
  }
}

void FontUse::KeepField(const Object& field) {
  KeepResources(field.Get("DR"));
  Arena arena;
  for (const std::uint32_t number : pdf::AppearancesOf(*document_, field)) {
    if (kept_resources_.insert(number).second) {
      KeepResources(document_->Load({number, 0}, arena).Get("Resources"));
    }
  }
}

void FontUse::KeepFormFonts() {
  Arena arena;
  const Object form = document_->Resolve(document_->Catalog(arena).Get("AcroForm"), arena);
  KeepResources(form.Get("DR"));
  std::vector<std::uint32_t> waiting;
  std::set<std::uint32_t> seen;
  const auto add = [&](const Object& parent, std::string_view key) {
    for (const Object& kid : document_->Resolve(parent.Get(key), arena).Items()) {
      const std::uint32_t number = kid.AsReference().number;
      if (number != 0 && seen.insert(number).second) {
        waiting.push_back(number);
      }
    }
  };
  add(form, "Fields");
  while (!waiting.empty() && !keeps_all_) {
    const Object field = document_->Load({waiting.back(), 0}, arena);
    waiting.pop_back();
    KeepField(field);
    add(field, "Kids");
    keeps_all_ = seen.size() > limits::kMaxFormFields;
  }
}

}  // namespace TarnixTools::engines::optimizer
