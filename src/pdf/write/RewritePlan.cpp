#include "pdf/write/RewritePlan.h"

#include <algorithm>
#include <utility>

#include "pdf/syntax/Parser.h"
#include "pdf/write/TokenCopier.h"

namespace TarnixTools::pdf {

void RewritePlan::Put(Entries& entries, std::string_view key, std::optional<std::string> text) {
  const auto found =
      std::find_if(entries.begin(), entries.end(), [&](const Entry& e) { return e.key == key; });
  if (found != entries.end()) {
    found->text = std::move(text);
  } else {
    entries.push_back({std::string(key), std::move(text)});
  }
}

const RewritePlan::Planned* RewritePlan::Find(std::uint32_t number) const {
  if (const auto found = changes.find(number); found != changes.end()) {
    return &found->second;
  }
  const std::size_t index = number - kFirstAddedObject;
  return IsAddedObject(number) && index < added.size() ? &added[index] : nullptr;
}

// Every object on the way is told the end of it, so that the way is short the next time.
std::uint32_t RewritePlan::Representative(std::uint32_t number) {
  std::uint32_t end = number;
  for (auto next = merged.find(end); next != merged.end(); next = merged.find(end)) {
    end = next->second;
  }
  while (number != end) {
    number = std::exchange(merged[number], end);
  }
  return end;
}

Object RewritePlan::Parse(std::string_view text, Arena& arena) {
  Parser parser(arena);
  parser.set_max_reference(ReferenceMap::kLeftOut - 1);
  Lexer lexer(text, true);
  Object value;
  parser.Parse(lexer, nullptr, value);
  return value;
}

Object RewritePlan::Edited(const Object& value, const Entries& entries, Arena& arena) {
  if (entries.empty() || !value.IsDictionary()) {
    return value;
  }
  std::vector<DictionaryEntry> edited;
  std::vector<bool> is_set(entries.size(), false);
  const auto set = [&](std::size_t i) {
    if (!is_set[i] && entries[i].text) {
      edited.push_back({Object::Name(entries[i].key), Parse(*entries[i].text, arena)});
    }
    is_set[i] = true;
  };
  for (const DictionaryEntry& entry : value.Entries()) {
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&](const auto& e) { return e.key == entry.Key(); });
    if (found == entries.end()) {
      edited.push_back(entry);
    } else {
      set(static_cast<std::size_t>(found - entries.begin()));
    }
  }
  for (std::size_t i = 0; i < entries.size(); ++i) {
    set(i);
  }
  return Object::Dictionary(arena.CopyItems(std::span<const DictionaryEntry>(edited)));
}

}  // namespace TarnixTools::pdf
