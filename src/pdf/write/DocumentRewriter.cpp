#include "pdf/write/DocumentRewriter.h"

#include <algorithm>
#include <utility>

#include "pdf/write/RewritePass.h"
#include "pdf/write/Serialize.h"

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

DocumentRewriter::DocumentRewriter(Document& document) : document_(&document) {
  plan_.catalog = AddLater([&document] {
    Arena arena;
    const Object catalog = document.Catalog(arena);
    std::string text;
    AppendObject(text, catalog.IsDictionary() ? catalog : Object::Dictionary({}));
    return ObjectChange::Value(std::move(text));
  });
}

std::uint32_t DocumentRewriter::Add(ObjectChange object) {
  plan_.added.push_back({std::move(object), {}});
  return kFirstAddedObject + static_cast<std::uint32_t>(plan_.added.size()) - 1;
}

std::uint32_t DocumentRewriter::AddLater(RewritePlan::Later object) {
  plan_.added.push_back({{}, std::move(object)});
  return kFirstAddedObject + static_cast<std::uint32_t>(plan_.added.size()) - 1;
}

// The catalog's own number means what stands for it.
std::uint32_t DocumentRewriter::NumberOf(std::uint32_t number) const {
  return document_->IsCatalogObject(number) ? plan_.catalog : number;
}

void DocumentRewriter::Change(std::uint32_t number, ObjectChange change) {
  plan_.changes[NumberOf(number)] = {std::move(change), {}};
}

void DocumentRewriter::ChangeLater(std::uint32_t number, RewritePlan::Later change) {
  plan_.changes[NumberOf(number)] = {{}, std::move(change)};
}

void DocumentRewriter::ChangeEach(std::function<ObjectChange(std::uint32_t number)> change) {
  plan_.each = std::move(change);
}

void DocumentRewriter::SetEntry(std::uint32_t number, std::string_view key, std::string text) {
  RewritePlan::Put(plan_.entries[NumberOf(number)], key, std::move(text));
}

void DocumentRewriter::RemoveEntry(std::uint32_t number, std::string_view key) {
  RewritePlan::Put(plan_.entries[NumberOf(number)], key, std::nullopt);
}

void DocumentRewriter::Drop(std::uint32_t number, Gap gap) {
  plan_.dropped[number] = gap;
}

void DocumentRewriter::Merge(std::uint32_t number, std::uint32_t into) {
  const std::uint32_t end = plan_.Representative(into);
  if (end != number) {
    plan_.merged[number] = end;
  }
}

void DocumentRewriter::SetPages(const PageTree& tree, std::vector<RewrittenPage> pages) {
  plan_.tree = &tree;
  plan_.pages = std::move(pages);
}

void DocumentRewriter::SetPages(const PageTree& tree) {
  std::vector<RewrittenPage> pages(tree.pages().size());
  for (std::size_t i = 0; i < pages.size(); ++i) {
    pages[i].index = i;
  }
  SetPages(tree, std::move(pages));
}

void DocumentRewriter::SetTrailerEntry(std::string_view key, std::string text) {
  RewritePlan::Put(plan_.trailer, key, std::move(text));
}

void DocumentRewriter::RemoveTrailerEntry(std::string_view key) {
  RewritePlan::Put(plan_.trailer, key, std::nullopt);
}

void DocumentRewriter::Write(ByteSink& sink, const RewriteOptions& options) {
  RewritePass(*document_, plan_, sink, options).Write();
}

}  // namespace TarnixTools::pdf
