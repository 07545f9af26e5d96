#include "pdf/write/DocumentRewriter.h"

#include <utility>

#include "pdf/write/RewritePass.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::pdf {

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

bool DocumentRewriter::IsChanged(std::uint32_t number) const {
  return plan_.changes.contains(NumberOf(number)) || IsAddedObject(number);
}

std::uint32_t DocumentRewriter::Successor(std::uint32_t number) {
  const std::uint32_t end = plan_.Representative(number);
  return plan_.dropped.contains(end) ? 0 : end;
}

Object DocumentRewriter::Load(std::uint32_t number, Arena& arena) {
  const std::uint32_t planned_number = NumberOf(number);
  const RewritePlan::Planned* planned = plan_.Find(planned_number);
  Object value;
  if (planned != nullptr && planned->change.kind != ObjectChange::Kind::kKept) {
    value = RewritePlan::Parse(planned->change.text, arena);
  } else if (planned_number == plan_.catalog) {
    value = document_->Catalog(arena);
  } else if (!IsAddedObject(number)) {
    value = document_->Load({number, 0}, arena);
  }
  const auto entries = plan_.entries.find(planned_number);
  return entries == plan_.entries.end() ? value
                                        : RewritePlan::Edited(value, entries->second, arena);
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
