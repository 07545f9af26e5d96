#include "engines/toolbox/copy/structure/StructureCopier.h"

#include <algorithm>
#include <optional>
#include <tuple>

#include "engines/toolbox/Limits.h"
#include "engines/toolbox/copy/CopyContext.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::toolbox {

using pdf::Object;
using Element = SourceStructure::Element;
using Kid = ElementWriter::Kid;

namespace {

// Marked-content ids of a page that are believed.
std::size_t MaxIds(std::size_t item_count) {
  return limits::kMarkedIdAllowance + limits::kMarkedIdRatio * item_count;
}

}  // namespace

StructureCopier::~StructureCopier() {
  if (source_ != nullptr) {
    source_->slots().Clear();
  }
}

void StructureCopier::Prepare() {
  SourceStructure& source = context_->source().parts().structure();
  target_ = &context_->parts().structure;
  target_->AddSource(source.mark_info(), source.is_tagged());
  CopyMarkInfo(source.mark_info());
  if (!source.is_tagged()) {
    return;
  }
  source_ = &source;
  shift_ = target_->parent_tree().Take(source.key_count());
  context_->objects().set_structure_keys(shift_, source.key_count());
  for (const PageRequest& request : context_->requests()) {
    const auto& page = context_->source().pages().pages()[request.page_index];
    if (context_->CopyOfPage(page.number) == &request) {
      KeepPage(page.number);
    }
  }
  if (context_->is_whole()) {
    KeepRange(1, static_cast<std::uint32_t>(source.elements().size()));
  }
}

// A document that is one whole source says of itself what that said.
void StructureCopier::CopyMarkInfo(const MarkInfo& marks) {
  if (!marks.is_there || !context_->is_whole()) {
    return;
  }
  arena_.Reset();
  pdf::Document& document = context_->document();
  const Object catalog = document.Catalog(arena_);
  std::string text;
  context_->objects().Append(text, document.Resolve(catalog.Get("MarkInfo"), arena_));
  target_->SetWholeMarkInfo(text);
}

// The element's number in the target; its ancestors come with it.
std::uint32_t StructureCopier::Keep(std::uint32_t index) {
  pdf::NumberMap& slots = source_->slots();
  for (std::uint32_t i = index; i != 0 && slots.Get(i) == 0; i = source_->elements()[i].parent) {
    const std::uint32_t target_number = context_->writer().Reserve();
    slots.Set(i, target_number);
    kept_.push_back({i, target_number, 0});
    if (const std::uint32_t number = source_->elements()[i].number; number != 0) {
      context_->objects().Assign(number, target_number);
    }
  }
  return slots.Get(index);
}

void StructureCopier::KeepRange(std::uint32_t first, std::uint32_t end) {
  for (std::uint32_t i = first; i < end; ++i) {
    Keep(i);
  }
}

void StructureCopier::KeepItem(const Item& item) {
  Keep(item.element);
  kids_.push_back({item.element, item.position, 0});
}

// The elements of a page's own content.
void StructureCopier::KeepPage(std::uint32_t page_number) {
  const auto items = source_->ItemsOfPage(page_number);
  std::vector<const Item*> by_mcid;
  for (const Item& item : items) {
    const auto mcid = static_cast<std::size_t>(item.mcid);
    if (item.object != 0 || mcid >= MaxIds(items.size())) {
      continue;
    }
    by_mcid.resize(std::max(by_mcid.size(), mcid + 1));
    if (by_mcid[mcid] == nullptr) {
      by_mcid[mcid] = &item;
      KeepItem(item);
    }
  }
  if (!by_mcid.empty()) {
    page_arrays_.emplace(page_number, WriteHolders(by_mcid));
  }
}

// The parent tree's value for marked content: the elements that hold it, by its ids.
std::uint32_t StructureCopier::WriteHolders(const std::vector<const Item*>& by_mcid) {
  std::string text = "[";
  for (const Item* item : by_mcid) {
    if (item == nullptr) {
      pdf::AppendToken(text, "null");
    } else {
      pdf::AppendReference(text, Keep(item->element));
    }
  }
  const std::uint32_t number = context_->writer().Reserve();
  context_->writer().WriteObject(number, text + "]");
  return number;
}

// The key that something is to have in the target: its own, raised, unless that is no key or
// something else has used it.
std::int64_t StructureCopier::KeyFor(const Object& own_key) {
  const std::int64_t key = own_key.IntegerOr(-1);
  if (key >= 0 && key < source_->key_count() && used_keys_.insert(key).second) {
    return shift_ + key;
  }
  return target_->parent_tree().Take(1);
}

void StructureCopier::CopyPageKey(std::string& page, const Object& dictionary,
                                  const PageRequest& request, bool is_repeated) {
  if (source_ == nullptr) {
    return;
  }
  page_marks_.emplace_back(context_->objects().keyed_objects().size(), request.target_number);
  const std::uint32_t number = context_->source().pages().pages()[request.page_index].number;
  const auto array = page_arrays_.find(number);
  if (array == page_arrays_.end()) {
    return;
  }
  if (is_repeated || context_->CopyOfPage(number) != &request) {
    target_->NoteUntaggedContent();
    context_->report().Add(CopiedKind::kStructureElement, CopyOutcome::kDropped,
                           "holds content of a page that is copied again",
                           source_->ItemsOfPage(number).size(), request.target_position + 1);
    return;
  }
  const std::int64_t key =
      KeyFor(context_->document().Resolve(dictionary.Get("StructParents"), arena_));
  page += "/StructParents";
  pdf::AppendInteger(page, key);
  target_->parent_tree().Add(key, array->second);
}

void StructureCopier::CopyAnnotationKey(std::string& out, const Object& dictionary,
                                        std::uint32_t source_number, std::uint32_t target_number) {
  if (source_ == nullptr) {
    return;
  }
  const auto indexes = source_->ItemsOfObject(source_number);
  const auto found = std::find_if(indexes.begin(), indexes.end(), [&](std::uint32_t i) {
    return source_->items()[i].IsWholeObject();
  });
  if (found == indexes.end() || !annotations_.emplace(source_number, target_number).second) {
    return;
  }
  const Item& item = source_->items()[*found];
  KeepItem(item);
  const std::int64_t key =
      KeyFor(context_->document().Resolve(dictionary.Get("StructParent"), arena_));
  out += "/StructParent";
  pdf::AppendInteger(out, key);
  target_->parent_tree().Add(key, Keep(item.element));
}

void StructureCopier::Copy() {
  if (source_ == nullptr) {
    return;
  }
  context_->objects().CopyPending();
  KeepObjects();
  if (!context_->is_whole()) {
    KeepEmptyElements();
  }
  CopyNamespaces(true);
  WriteElements();
  CopyNamespaces(false);
  CopyRoot();
  CopyReport& report = context_->report();
  report.Add(CopiedKind::kStructureElement, CopyOutcome::kKept, {}, kept_.size());
  report.Add(CopiedKind::kStructureElement, CopyOutcome::kDropped,
             "belongs to pages that are not copied", source_->elements().size() - 1 - kept_.size());
}

// Elements of what is in form XObjects and appearances, and of XObjects as a whole.
void StructureCopier::KeepObjects() {
  std::unordered_set<std::uint32_t> done;
  auto mark = page_marks_.begin();
  std::size_t i = 0;
  for (const auto& keyed : context_->objects().keyed_objects()) {
    while (mark != page_marks_.end() && std::next(mark) != page_marks_.end() &&
           std::next(mark)->first <= i) {
      ++mark;
    }
    ++i;
    if (mark != page_marks_.end()) {
      stream_pages_.emplace(keyed.number, mark->second);
    }
    if (done.insert(keyed.number).second) {
      KeepObject(keyed.number, &keyed.key);
    }
  }
  for (const PageRequest& request : context_->requests()) {
    const auto& page = context_->source().pages().pages()[request.page_index];
    for (const Item& item : source_->ItemsOfPage(page.number)) {
      if (item.object != 0 && done.insert(item.object).second) {
        KeepObject(item.object, nullptr);
      }
    }
  }
}

// key: with which it was copied, or null.
void StructureCopier::KeepObject(std::uint32_t number, const pdf::StructureKey* key) {
  const auto indexes = source_->ItemsOfObject(number);
  if (indexes.empty() || annotations_.contains(number) || !context_->objects().IsMapped(number) ||
      !context_->document().IsStream(number)) {
    return;
  }
  std::vector<const Item*> by_mcid;
  bool has_holder = false;
  for (const std::uint32_t index : indexes) {
    const Item& item = source_->items()[index];
    if (item.IsWholeObject()) {
      if (!has_holder) {
        has_holder = true;
        KeepItem(item);
        AddKey(key, false, Keep(item.element));
      }
      continue;
    }
    const auto mcid = static_cast<std::size_t>(item.mcid);
    if (mcid >= MaxIds(indexes.size())) {
      continue;
    }
    by_mcid.resize(std::max(by_mcid.size(), mcid + 1));
    if (by_mcid[mcid] == nullptr) {
      by_mcid[mcid] = &item;
      KeepItem(item);
    }
  }
  if (!by_mcid.empty() && key != nullptr && key->is_plural) {
    AddKey(key, true, WriteHolders(by_mcid));
  }
}

// The key stands in the copied object already; where it serves another, the object does without.
void StructureCopier::AddKey(const pdf::StructureKey* key, bool is_plural, std::uint32_t number) {
  if (key != nullptr && key->is_plural == is_plural && used_keys_.insert(key->key).second) {
    target_->parent_tree().Add(shift_ + key->key, number);
  }
}

// Elements that never held anything go with what surrounds them: all of them where nothing of their
// parent's content stays behind, and the empty cells of a table row of which anything is kept,
// without which its other cells would stand in other columns.
void StructureCopier::KeepEmptyElements() {
  CountItems();
  const std::vector<Element>& elements = source_->elements();
  const std::size_t count = kept_.size();
  std::uint32_t complete_end = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const Kept kept = kept_[i];
    const Element& element = elements[kept.index];
    if (kept.index < complete_end) {
      continue;
    }
    if (kept.item_count == element.item_count) {
      complete_end = element.end;
      KeepRange(kept.index, complete_end);
    } else if (element.is_row && element.end - kept.index <= limits::kMaxRowElements) {
      for (std::uint32_t cell = kept.index + 1; cell < element.end; cell = elements[cell].end) {
        if (elements[cell].item_count == 0) {
          KeepRange(cell, elements[cell].end);
        }
      }
    }
  }
}

void StructureCopier::CountItems() {
  const auto by_index = [](const Kept& a, const Kept& b) { return a.index < b.index; };
  std::sort(kept_.begin(), kept_.end(), by_index);
  const auto kept_of = [&](std::uint32_t index) {
    return std::lower_bound(kept_.begin(), kept_.end(), Kept{index, 0, 0}, by_index);
  };
  for (const Kid& kid : kids_) {
    ++kept_of(kid.element)->item_count;
  }
  for (auto kept = kept_.rbegin(); kept != kept_.rend(); ++kept) {
    if (const std::uint32_t parent = source_->elements()[kept->index].parent; parent != 0) {
      kept_of(parent)->item_count += kept->item_count;
    }
  }
}

void StructureCopier::WriteElements() {
  const std::vector<Element>& elements = source_->elements();
  std::sort(kept_.begin(), kept_.end(),
            [](const Kept& a, const Kept& b) { return a.index < b.index; });
  for (const Kept& kept : kept_) {
    const Element& element = elements[kept.index];
    if (element.parent != 0) {
      kids_.push_back({element.parent, element.position, kept.target_number});
    }
  }
  std::sort(kids_.begin(), kids_.end(), [](const Kid& a, const Kid& b) {
    return std::tie(a.element, a.position) < std::tie(b.element, b.position);
  });
  ElementWriter writer(*context_, *source_, {annotations_, stream_pages_, page_forms_});
  pdf::NumberMap& slots = source_->slots();
  writer.RenameIds([&](std::uint32_t index) { return slots.Get(index) != 0; });
  std::optional<std::uint32_t> top_namespace;
  auto first = kids_.cbegin();
  for (const Kept& kept : kept_) {
    const std::uint32_t parent = elements[kept.index].parent;
    const auto last = std::find_if(first, kids_.cend(),
                                   [&](const Kid& kid) { return kid.element != kept.index; });
    writer.Write(kept.index, kept.target_number,
                 parent == 0 ? target_->Top(context_->writer()) : slots.Get(parent), {first, last});
    first = last;
    if (parent == 0) {
      target_->AddKid(kept.target_number);
      const std::uint32_t number = context_->objects().Map(NamespaceOf(kept.index));
      top_namespace = top_namespace.value_or(number) == number ? number : 0;
    }
  }
  target_->EndSource(top_namespace.value_or(0));
  if (context_->is_whole()) {
    writer.JoinAllNames();
  }
  writer.Report();
}

// Object number of an element's namespace, or 0.
std::uint32_t StructureCopier::NamespaceOf(std::uint32_t index) {
  arena_.Reset();
  return source_->Load(index, arena_).dictionary.Get("NS").AsReference().number;
}

// Before the elements are written, lets them use the namespaces that the target has already; after
// that, adds those that they have brought.
void StructureCopier::CopyNamespaces(bool is_before) {
  arena_.Reset();
  pdf::Document& document = context_->document();
  pdf::ObjectCopier& objects = context_->objects();
  const Object all =
      document.Resolve(source_->Load(0, arena_).dictionary.Get("Namespaces"), arena_);
  for (const Object& item : all.Items()) {
    const std::uint32_t number = item.AsReference().number;
    const Object dictionary = document.Resolve(item, arena_);
    if (number == 0 || !dictionary.IsDictionary()) {
      continue;
    }
    const bool is_plain = !dictionary.Has("RoleMapNS") && !dictionary.Has("Schema");
    const std::string name(is_plain ? document.Resolve(dictionary.Get("NS"), arena_).Text()
                                    : std::string_view());
    const std::uint32_t known = target_->FindNamespace(name);
    if (is_before) {
      if (known != 0 && !objects.IsMapped(number)) {
        objects.Assign(number, known);
      }
    } else if (context_->is_whole() || objects.IsMapped(number)) {
      if (const std::uint32_t mapped = objects.Map(number); mapped != 0 && mapped != known) {
        target_->AddNamespace(name, mapped);
      }
    }
  }
}

void StructureCopier::CopyRoot() {
  arena_.Reset();
  const Object root = source_->Load(0, arena_).dictionary;
  const auto text_of = [&](const char* key) {
    std::string text;
    const Object value = root.Get(key);
    const Object resolved = context_->document().Resolve(value, arena_);
    const auto items = resolved.IsArray() ? resolved.Items() : std::span<const Object>(&value, 1);
    for (const Object& item : items) {
      if (!item.IsNull()) {
        context_->objects().Append(text, item);
      }
    }
    return text;
  };
  target_->AddLexicons(text_of("PronunciationLexicon"));
  if (context_->is_whole()) {
    target_->AddFiles(text_of("AF"));
  }
}

}  // namespace TarnixTools::engines::toolbox
