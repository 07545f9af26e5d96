#include "engines/office/pages/Destinations.h"

#include "pdf/tree/KeyedTree.h"
#include "pdf/tree/PageGeometry.h"

namespace TarnixTools::engines::office {

using pdf::Arena;
using pdf::Object;

Destinations::Destinations(pdf::Document& document, const pdf::PageTree& pages)
    : document_(&document), pages_(&pages) {
  for (std::uint32_t index = 0; index < pages.pages().size(); ++index) {
    indexes_.try_emplace(pages.pages()[index].number, index);
  }
}

std::optional<std::uint32_t> Destinations::IndexOf(std::uint32_t number) const {
  const auto found = number != 0 ? indexes_.find(number) : indexes_.end();
  return found == indexes_.end() ? std::nullopt : std::optional(found->second);
}

std::optional<PagePlace> Destinations::PlaceOf(const Object& destination) {
  Arena arena;
  const Object value = document_->Resolve(destination, arena);
  if (value.IsString() || value.IsName()) {
    ReadNames();
    const auto found = names_.find(std::string(value.Text()));
    return found == names_.end() ? std::nullopt : std::optional(PlaceOf(found->second));
  }
  const auto target = TargetOf(value);
  return target ? std::optional(PlaceOf(*target)) : std::nullopt;
}

std::optional<PagePlace> Destinations::PlaceOfEntry(const Object& entry) {
  if (entry.Has("Dest")) {
    return PlaceOf(entry.Get("Dest"));
  }
  Arena arena;
  const Object action = document_->Resolve(entry.Get("A"), arena);
  const bool goes_there = document_->Resolve(action.Get("S"), arena).IsName("GoTo");
  return goes_there ? PlaceOf(action.Get("D")) : std::nullopt;
}

// Many readers take a name from the name tree and from the catalog's dictionary alike.
void Destinations::ReadNames() {
  if (has_names_) {
    return;
  }
  has_names_ = true;
  Arena arena;
  const Object catalog = document_->Catalog(arena);
  const Object names = document_->Resolve(catalog.Get("Names"), arena);
  pdf::ForEachInTree(
      *document_, names.Get("Dests"), "Names",
      [this](const Object& key, const Object& value) { AddName(key.Text(), value); });
  for (const pdf::DictionaryEntry& entry :
       document_->Resolve(catalog.Get("Dests"), arena).Entries()) {
    AddName(entry.Key(), entry.value);
  }
}

void Destinations::AddName(std::string_view name, const Object& value) {
  if (const auto target = TargetOf(value)) {
    names_.try_emplace(std::string(name), *target);
  }
}

std::optional<std::uint32_t> Destinations::PageOf(const Object& item) {
  if (const auto index = IndexOf(item.AsReference().number)) {
    return index;
  }
  Arena arena;
  const std::int64_t index = document_->Resolve(item, arena).IntegerOr(-1);
  const bool is_there = index >= 0 && static_cast<std::uint64_t>(index) < pages_->pages().size();
  return is_there ? std::optional(static_cast<std::uint32_t>(index)) : std::nullopt;
}

// Of an explicit destination, or of a dictionary that holds one. Only views with an upper edge say
// how far down on the page they begin.
std::optional<Destinations::Target> Destinations::TargetOf(const Object& value) {
  Arena arena;
  Object array = document_->Resolve(value, arena);
  if (array.IsDictionary()) {
    array = document_->Resolve(array.Get("D"), arena);
  }
  const auto items = array.Items();
  const auto page = items.empty() ? std::nullopt : PageOf(items[0]);
  if (!page) {
    return std::nullopt;
  }
  const Object view = items.size() > 1 ? document_->Resolve(items[1], arena) : Object();
  const std::size_t place = view.IsName("XYZ")                            ? 3
                            : view.IsName("FitH") || view.IsName("FitBH") ? 2
                            : view.IsName("FitR")                         ? 5
                                                                          : 0;
  Target target{*page, std::nullopt};
  if (place != 0 && place < items.size()) {
    const Object top = document_->Resolve(items[place], arena);
    target.top = top.IsNumber() ? std::optional(top.NumberOr(0)) : std::nullopt;
  }
  return target;
}

PagePlace Destinations::PlaceOf(const Target& target) {
  PagePlace place{target.page, 0};
  if (!target.top) {
    return place;
  }
  const pdf::PageGeometry geometry =
      pdf::ReadPageGeometry(*document_, *pages_, pages_->pages()[target.page]).Within(room_);
  const pdf::Point point = geometry.ToSeenPoints().Apply(geometry.crop_box.left, *target.top);
  const double y = geometry.SeenHeight() - point.y;
  place.y = y > 0 && y < geometry.SeenHeight() ? y : 0;
  return place;
}

}  // namespace TarnixTools::engines::office
