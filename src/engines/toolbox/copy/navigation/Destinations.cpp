#include "engines/toolbox/copy/navigation/Destinations.h"

#include <algorithm>
#include <numeric>
#include <tuple>
#include <unordered_set>

#include "engines/toolbox/Limits.h"
#include "engines/toolbox/copy/CopyContext.h"
#include "pdf/tree/KeyedTree.h"
#include "pdf/tree/TextString.h"
#include "pdf/write/Serialize.h"
#include "pdf/write/TreeWriter.h"

namespace TarnixTools::engines::toolbox {

using pdf::Object;

namespace {

// The explicit destination itself, where the value is one, or a dictionary that holds one.
Object ExplicitOf(const Object& value, pdf::Document& document, pdf::Arena& arena) {
  const Object resolved = document.Resolve(value, arena);
  return resolved.IsDictionary() ? document.Resolve(resolved.Get("D"), arena) : resolved;
}

// What follows the page in an explicit destination, as PDF text.
std::string ViewOf(const Object& destination, pdf::Document& document) {
  std::string text;
  pdf::Arena arena;
  const auto items = destination.Items();
  for (std::size_t i = 1; i < std::min(items.size(), limits::kMaxViewItems); ++i) {
    const Object item = document.Resolve(items[i], arena);
    pdf::AppendObject(text, item.IsNumber() || item.IsName() ? item : Object());
  }
  return text;
}

std::string ExplicitText(std::uint32_t page_number, std::string_view view) {
  std::string text = "[";
  pdf::AppendReference(text, page_number);
  pdf::AppendToken(text, view);
  return text + ']';
}

}  // namespace

PageKey PageKey::OfPage(SourceDocument& source, std::uint32_t page_index) {
  const std::uint32_t number = source.pages().pages()[page_index].number;
  return number != 0 ? OfNumber(number) : OfIndex(page_index);
}

const PageRequest* PageKey::CopyIn(const CopyContext& context) const {
  if (value_ == 0) {
    return nullptr;
  }
  return (value_ & kIndexFlag) != 0 ? context.CopyOfPageIndex(value_ & ~kIndexFlag)
                                    : context.CopyOfPage(value_);
}

SourceDestinations::SourceDestinations(SourceDocument& source) : source_(&source) {
  pdf::Document& document = source.document();
  pdf::Arena arena;
  const Object catalog = document.Catalog(arena);
  const Object names = document.Resolve(catalog.Get("Names"), arena);
  pdf::ForEachInTree(
      document, names.Get("Dests"), "Names",
      [this](const Object& key, const Object& value) { Add(key.Text(), value, false); });
  const Object old_style = document.Resolve(catalog.Get("Dests"), arena);
  for (const pdf::DictionaryEntry& entry : old_style.Entries()) {
    Add(entry.Key(), entry.value, true);
  }
  Sort();
}

void SourceDestinations::Add(std::string_view name, const Object& value, bool is_old_style) {
  pdf::Arena scratch;
  pdf::Document& document = source_->document();
  const Object destination = ExplicitOf(value, document, scratch);
  if (destination.Items().empty()) {
    return;
  }
  if (const PageKey page = PageOfItem(destination.Items()[0])) {
    names_.push_back({arena_.CopyText(name), arena_.CopyText(ViewOf(destination, document)), page,
                      is_old_style});
  }
}

// Where names are equal the first one counts.
void SourceDestinations::Sort() {
  const auto key = [](const Named& named) { return std::tie(named.name, named.is_old_style); };
  std::stable_sort(names_.begin(), names_.end(),
                   [&](const Named& a, const Named& b) { return key(a) < key(b); });
  names_.erase(std::unique(names_.begin(), names_.end(),
                           [&](const Named& a, const Named& b) { return key(a) == key(b); }),
               names_.end());
  names_.shrink_to_fit();
  by_page_.resize(names_.size());
  std::iota(by_page_.begin(), by_page_.end(), 0U);
  std::stable_sort(by_page_.begin(), by_page_.end(), [this](std::uint32_t a, std::uint32_t b) {
    return names_[a].page < names_[b].page;
  });
}

std::optional<std::uint32_t> SourceDestinations::Find(const Object& name) const {
  const auto by_name = [](const Named& named, std::string_view text) { return named.name < text; };
  const auto first = std::lower_bound(names_.begin(), names_.end(), name.Text(), by_name);
  if (first == names_.end() || first->name != name.Text()) {
    return std::nullopt;
  }
  // A string is looked up in the name tree, a name object in the old dictionary; many readers take
  // them from either.
  const auto second = first + 1;
  const bool has_both = second != names_.end() && second->name == name.Text();
  return static_cast<std::uint32_t>((has_both && name.IsName() ? second : first) - names_.begin());
}

std::span<const std::uint32_t> SourceDestinations::OfPage(PageKey page) const {
  const auto first = std::partition_point(by_page_.begin(), by_page_.end(),
                                          [&](std::uint32_t i) { return names_[i].page < page; });
  const auto last = std::partition_point(first, by_page_.end(),
                                         [&](std::uint32_t i) { return names_[i].page <= page; });
  return {first, last};
}

PageKey SourceDestinations::PageOf(const Object& destination) {
  pdf::Arena arena;
  const Object value = ExplicitOf(destination, source_->document(), arena);
  if (value.IsString() || value.IsName()) {
    const auto found = Find(value);
    return found ? names_[*found].page : PageKey();
  }
  return value.Items().empty() ? PageKey() : PageOfItem(value.Items()[0]);
}

PageKey SourceDestinations::PageOfItem(const Object& item) {
  const pdf::PageTree& tree = source_->pages();
  if (tree.IsPage(item.AsReference().number)) {
    return PageKey::OfNumber(item.AsReference().number);
  }
  pdf::Arena arena;
  const std::int64_t index = source_->document().Resolve(item, arena).IntegerOr(-1);
  if (index < 0 || static_cast<std::uint64_t>(index) >= tree.pages().size()) {
    return {};
  }
  return PageKey::OfPage(*source_, static_cast<std::uint32_t>(index));
}

std::string_view TargetDestinations::Add(std::string_view name, const Place& place) {
  const auto take = [&](std::string_view free_name) {
    const std::string_view kept = arena_.CopyText(free_name);
    names_[kept] = {{place.page, arena_.CopyText(place.view)}};
    return kept;
  };
  const auto found = names_.find(name);
  if (found == names_.end()) {
    return take(name);
  }
  if (found->second.place == place) {
    return found->first;
  }
  std::string other;
  do {
    other = pdf::TextStringWith(name, '_' + std::to_string(found->second.next_suffix++));
  } while (names_.contains(other));
  return take(other);
}

void TargetDestinations::Finish(pdf::FileWriter& writer, std::string&, std::string& names) {
  if (names_.empty()) {
    return;
  }
  std::vector<std::pair<std::string_view, Place>> sorted;
  sorted.reserve(names_.size());
  for (const auto& [name, entry] : names_) {
    sorted.emplace_back(name, entry.place);
  }
  std::sort(sorted.begin(), sorted.end(),
            [](const auto& a, const auto& b) { return a.first < b.first; });
  pdf::TreeWriter tree(writer, "Names");
  for (const auto& [name, place] : sorted) {
    std::string key;
    pdf::AppendString(key, name, false);
    tree.Add(key, ExplicitText(place.page, place.view));
  }
  names += "/Dests" + tree.Finish();
}

std::optional<std::string> DestinationCopier::Copy(const Object& destination) {
  pdf::Arena arena;
  const Object value = ExplicitOf(destination, context_->document(), arena);
  if (value.IsString() || value.IsName()) {
    return CopyName(value);
  }
  return CopyExplicit(value);
}

std::optional<std::string> DestinationCopier::CopyExplicit(const Object& array) {
  if (array.Items().empty()) {
    return std::nullopt;
  }
  const PageKey page = context_->source().parts().destinations().PageOfItem(array.Items()[0]);
  const PageRequest* copy = page.CopyIn(*context_);
  if (copy == nullptr) {
    return std::nullopt;
  }
  return ExplicitText(copy->target_number, ViewOf(array, context_->document()));
}

std::optional<std::string> DestinationCopier::CopyName(const Object& name) {
  const SourceDestinations& destinations = context_->source().parts().destinations();
  const std::optional<std::uint32_t> index = destinations.Find(name);
  const PageRequest* copy = index ? destinations.all()[*index].page.CopyIn(*context_) : nullptr;
  if (copy == nullptr) {
    return std::nullopt;
  }
  std::string text;
  pdf::AppendString(text, NameInTarget(*index, copy->target_number), false);
  return text;
}

std::string_view DestinationCopier::NameInTarget(std::uint32_t index, std::uint32_t page_number) {
  const auto [known, is_new] = target_names_.try_emplace(index);
  if (is_new) {
    const SourceDestinations::Named& named = context_->source().parts().destinations().all()[index];
    known->second = context_->parts().destinations.Add(named.name, {page_number, named.view});
    if (known->second == named.name) {
      context_->report().Kept(CopiedKind::kNamedDestination);
    } else {
      context_->report().Add(CopiedKind::kNamedDestination, CopyOutcome::kRenamed,
                             "the name is taken");
    }
  }
  return known->second;
}

void DestinationCopier::CopyNames() {
  SourceDestinations& destinations = context_->source().parts().destinations();
  if (destinations.all().empty()) {
    return;
  }
  for (const PageRequest& request : context_->requests()) {
    if ((request.options & kCopyLinks) == 0) {
      continue;
    }
    const PageKey page = PageKey::OfPage(context_->source(), request.page_index);
    for (const std::uint32_t index : destinations.OfPage(page)) {
      NameInTarget(index, page.CopyIn(*context_)->target_number);
    }
  }
  context_->report().Add(CopiedKind::kNamedDestination, CopyOutcome::kDropped,
                         "leads to a page that is not copied",
                         destinations.all().size() - target_names_.size());
}

namespace {

// An action and those that follow it, in the order in which they are carried out.
struct ActionChain {
  std::vector<Object> actions;
  bool is_plain = true;  // can be copied as it is
};

// Actions that lead to pages, or to what is not carried over.
bool IsPlain(const Object& action) {
  const Object type = action.Get("S");
  return !type.IsName("GoTo") && !type.IsName("Thread") && !type.IsName("GoToDp");
}

bool NamesFields(const Object& action, std::string_view key) {
  const Object type = action.Get("S");
  return (key == "Fields" && (type.IsName("ResetForm") || type.IsName("SubmitForm"))) ||
         (key == "T" && type.IsName("Hide"));
}

ActionChain ChainOf(const Object& first, SourceDocument& source, pdf::Arena& arena) {
  pdf::Document& document = source.document();
  ActionChain chain;
  std::vector<Object> waiting = {first};
  std::unordered_set<std::uint32_t> visited;
  while (!waiting.empty()) {
    const Object value = waiting.back();
    waiting.pop_back();
    const std::uint32_t number = value.AsReference().number;
    const bool is_unfit =
        number != 0 && (source.IsBarred(number) || !visited.insert(number).second);
    if (is_unfit || chain.actions.size() == limits::kMaxActionChain) {
      chain.is_plain = false;
      continue;
    }
    const Object action = document.Resolve(value, arena);
    if (action.IsArray()) {
      const auto items =
          action.Items().first(std::min(action.Items().size(), limits::kMaxActionChain));
      chain.is_plain = chain.is_plain && items.size() == action.Items().size();
      waiting.insert(waiting.end(), items.rbegin(), items.rend());
    } else if (action.IsDictionary()) {
      chain.is_plain = chain.is_plain && IsPlain(action);
      chain.actions.push_back(action);
      if (action.Has("Next")) {
        waiting.push_back(action.Get("Next"));
      }
    }
  }
  return chain;
}

}  // namespace

std::optional<std::string> DestinationCopier::CopyAction(const Object& action) {
  const std::uint32_t number = action.AsReference().number;
  if (number == 0) {
    return CopyChain(action);
  }
  // An action that is an object of its own stays one, however many refer to it.
  const auto [known, is_new] = actions_.try_emplace(number, 0);
  if (is_new) {
    if (const std::optional<std::string> text = CopyChain(action)) {
      known->second = context_->writer().Reserve();
      context_->writer().WriteObject(known->second, *text);
    }
  }
  if (known->second == 0) {
    return std::nullopt;
  }
  std::string text;
  pdf::AppendReference(text, known->second);
  return text;
}

std::optional<std::string> DestinationCopier::CopyChain(const Object& first) {
  pdf::Arena arena;
  const ActionChain chain = ChainOf(first, context_->source(), arena);
  if (chain.actions.empty()) {
    return std::nullopt;
  }
  std::string text;
  if (chain.is_plain && context_->field_renames().empty()) {
    context_->objects().Append(text, chain.actions.front());
    return text;
  }
  std::string next;  // what follows the first of those that are left
  std::size_t next_count = 0;
  for (const Object& one : chain.actions) {
    const std::optional<std::string> copied = CopyOneAction(one);
    if (!copied) {
      continue;
    }
    if (text.empty()) {
      text = *copied;
    } else {
      next += *copied + ">>";
      ++next_count;
    }
  }
  if (text.empty()) {
    return std::nullopt;
  }
  if (next_count > 0) {
    text += next_count == 1 ? "/Next" + next : "/Next[" + next + ']';
  }
  return text + ">>";
}

// The action's text without its /Next and the closing ">>".
std::optional<std::string> DestinationCopier::CopyOneAction(const Object& action) {
  std::string text = "<<";
  const bool is_goto = action.Get("S").IsName("GoTo");
  if (is_goto) {
    const std::optional<std::string> destination = Copy(action.Get("D"));
    if (!destination) {
      return std::nullopt;
    }
    text += "/D" + *destination;
  } else if (!IsPlain(action)) {
    return std::nullopt;
  }
  for (const pdf::DictionaryEntry& entry : action.Entries()) {
    // A structure destination is one way more to say where the destination leads.
    const bool is_done = is_goto && (entry.Key() == "D" || entry.Key() == "SD");
    if (!is_done && entry.Key() != "Next") {
      pdf::AppendName(text, entry.Key());
      AppendActionValue(text, action, entry);
    }
  }
  return text;
}

// Actions that name fields name them as the target does.
void DestinationCopier::AppendActionValue(std::string& out, const Object& action,
                                          const pdf::DictionaryEntry& entry) {
  const FieldRenames& renames = context_->field_renames();
  if (renames.empty() || !NamesFields(action, entry.Key())) {
    context_->objects().Append(out, entry.value);
    return;
  }
  pdf::Arena arena;
  const auto append = [&](const Object& item) {
    const Object value = context_->document().Resolve(item, arena);
    if (value.IsString()) {
      pdf::AppendString(out, renames.Apply(value.Text()), value.is_hex());
    } else {
      context_->objects().Append(out, item);
    }
  };
  const Object fields = context_->document().Resolve(entry.value, arena);
  if (!fields.IsArray()) {
    append(entry.value);
    return;
  }
  out += '[';
  for (const Object& item : fields.Items()) {
    append(item);
  }
  out += ']';
}

bool DestinationCopier::AppendActionEntry(std::string& out, std::string_view key,
                                          const Object& value) {
  if (key != "AA") {
    const std::optional<std::string> action = CopyAction(value);
    if (action) {
      pdf::AppendName(out, key);
      pdf::AppendToken(out, *action);
    }
    return action.has_value();
  }
  pdf::Arena arena;
  std::string actions;
  const auto events = context_->document().Resolve(value, arena).Entries();
  for (const pdf::DictionaryEntry& event :
       events.first(std::min(events.size(), limits::kMaxActionEvents))) {
    if (const std::optional<std::string> action = CopyAction(event.value)) {
      pdf::AppendName(actions, event.Key());
      pdf::AppendToken(actions, *action);
    }
  }
  if (!actions.empty()) {
    out += "/AA<<" + actions + ">>";
  }
  return !actions.empty();
}

}  // namespace TarnixTools::engines::toolbox
