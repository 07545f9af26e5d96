#include "engines/pdfa/checks/ActionCheck.h"

#include "engines/pdfa/rules/ActionFacts.h"

namespace TarnixTools::engines::pdfa {

void ActionCheck::CheckDocument() {
  pdf::Arena arena;
  const pdf::Object catalog = checked_->document().Catalog(arena);
  Check(catalog.Get("OpenAction"), {});
  CheckAll(catalog.Get("AA"), {});
  CheckOutline(catalog);
}

void ActionCheck::Check(const pdf::Object& action, const Place& place) {
  pdf::Arena arena;
  const pdf::Object value = checked_->document().Resolve(action, arena);
  if (!value.IsDictionary()) {
    return;  // an array is a destination
  }
  walk_.Add(action);
  while (const pdf::Followed* node = walk_.Next()) {
    arena.Reset();
    Place here = place;
    here.object = node->number != 0 ? node->number : place.object;
    const pdf::Object type = checked_->Get(node->value, "S", arena);
    here.subject = type.Text();
    checked_->findings().Check(ActionFacts{type.Text()}, here);
    if (type.IsName("Named")) {
      const pdf::Object name = checked_->Get(node->value, "N", arena);
      here.subject = name.Text();
      checked_->findings().Check(NamedActionFacts{name.Text()}, here);
    }
    walk_.Add(node->value.Get("Next"));
  }
}

void ActionCheck::CheckAll(const pdf::Object& actions, const Place& place) {
  pdf::Arena arena;
  const pdf::Object dictionary = checked_->document().Resolve(actions, arena);
  for (const pdf::DictionaryEntry& entry : dictionary.Entries()) {
    Check(entry.value, place);
  }
}

void ActionCheck::CheckOutline(const pdf::Object& catalog) {
  pdf::Arena arena;
  NodeWalk items(checked_->document());
  items.Add(checked_->Get(catalog, "Outlines", arena).Get("First"));
  while (const pdf::Followed* item = items.Next()) {
    Check(item->value.Get("A"), {.object = item->number});
    items.Add(item->value.Get("Next"));
    items.Add(item->value.Get("First"));
  }
}

}  // namespace TarnixTools::engines::pdfa
