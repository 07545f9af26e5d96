#include "engines/toolbox/copy/navigation/Outline.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "engines/toolbox/Limits.h"
#include "engines/toolbox/copy/CopyContext.h"
#include "pdf/tree/TextString.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::toolbox {

using pdf::Object;

namespace {

constexpr std::uint32_t kNone = SourceOutline::kNoParent;
constexpr std::size_t kLongTitle = 1024;  // bytes

}  // namespace

SourceOutline::SourceOutline(SourceDocument& source) {
  pdf::Arena arena;
  const Object catalog = source.document().Catalog(arena);
  const Object outlines = source.document().Resolve(catalog.Get("Outlines"), arena);
  Read(source, outlines);
  for (std::uint32_t index = 0; index < items_.size(); ++index) {
    if (items_[index].page) {
      by_page_.push_back(index);
    }
  }
  std::stable_sort(by_page_.begin(), by_page_.end(), [this](std::uint32_t a, std::uint32_t b) {
    return items_[a].page < items_[b].page;
  });
}

// Goes by /First and /Next alone: each item is taken once, wherever it is met first.
void SourceOutline::Read(SourceDocument& source, const Object& outlines) {
  struct Step {
    std::uint32_t number;
    std::uint32_t parent;
    int level;
  };

  pdf::Document& document = source.document();
  SourceDestinations& destinations = source.parts().destinations();
  pdf::Arena arena;
  std::unordered_set<std::uint32_t> visited;
  std::vector<Step> steps = {{outlines.Get("First").AsReference().number, kNone, 1}};
  while (!steps.empty()) {
    const Step step = steps.back();
    steps.pop_back();
    if (step.number == 0 || source.pages().IsPage(step.number) ||
        !visited.insert(step.number).second) {
      continue;
    }
    arena.Reset();
    const Object item = document.Load({step.number, 0}, arena);
    if (!item.IsDictionary()) {
      continue;
    }
    const Object action = document.Resolve(item.Get("A"), arena);
    const Object destination = item.Has("Dest")                 ? item.Get("Dest")
                               : action.Get("S").IsName("GoTo") ? action.Get("D")
                                                                : Object();
    const auto index = static_cast<std::uint32_t>(items_.size());
    const bool is_open = document.Resolve(item.Get("Count"), arena).IntegerOr(0) > 0;
    items_.push_back({step.number, step.parent, destinations.PageOf(destination), is_open});
    const bool may_have_kids = step.level < limits::kMaxOutlineLevels;
    steps.push_back({item.Get("Next").AsReference().number, step.parent, step.level});
    steps.push_back({item.Get("First").AsReference().number, may_have_kids ? index : step.parent,
                     may_have_kids ? step.level + 1 : step.level});
  }
}

std::span<const std::uint32_t> SourceOutline::OfPage(PageKey page) const {
  const auto first = std::partition_point(by_page_.begin(), by_page_.end(),
                                          [&](std::uint32_t i) { return items_[i].page < page; });
  const auto last = std::partition_point(first, by_page_.end(),
                                         [&](std::uint32_t i) { return items_[i].page <= page; });
  return {first, last};
}

std::uint32_t TargetOutline::Root(pdf::FileWriter& writer) {
  if (root_ == 0) {
    root_ = writer.Reserve();
  }
  return root_;
}

void TargetOutline::Add(pdf::FileWriter& writer, std::uint32_t number, std::string text) {
  if (last_ == 0) {
    first_ = number;
  } else {
    last_text_ += "/Next";
    pdf::AppendReference(last_text_, number);
    writer.WriteObject(last_, last_text_ + ">>");
  }
  last_ = number;
  last_text_ = std::move(text);
}

void TargetOutline::Finish(pdf::FileWriter& writer, std::string& catalog) {
  if (last_ == 0) {
    return;
  }
  writer.WriteObject(last_, last_text_ + ">>");
  std::string text = "<</Type/Outlines/First";
  pdf::AppendReference(text, first_);
  text += "/Last";
  pdf::AppendReference(text, last_);
  text += "/Count";
  pdf::AppendInteger(text, visible_);
  writer.WriteObject(root_, text + ">>");
  catalog += "/Outlines";
  pdf::AppendReference(catalog, root_);
}

void OutlineCopier::Copy() {
  const auto wants_outline = [](const PageRequest& request) {
    return (request.options & kCopyOutlineItems) != 0;
  };
  const auto& requests = context_->requests();
  if (std::none_of(requests.begin(), requests.end(), wants_outline)) {
    return;
  }
  const std::optional<std::string>& heading = context_->parts().outline.heading();
  if (heading) {
    heading_number_ = context_->writer().Reserve();
  }
  SourceOutline& outline = context_->source().parts().outline();
  if (!outline.items().empty()) {
    Relate(outline, Choose(outline));
    CountVisible();
    WriteItems();
  }
  if (heading) {
    WriteHeading(*heading);
  }
  context_->report().Kept(CopiedKind::kOutlineItem, chosen_.size());
  context_->report().Add(CopiedKind::kOutlineItem, CopyOutcome::kDropped,
                         "leads to a page that is not copied",
                         outline.items().size() - chosen_.size());
}

void OutlineCopier::WriteItems() {
  pdf::FileWriter& writer = context_->writer();
  TargetOutline& target = context_->parts().outline;
  for (const Chosen& chosen : chosen_) {
    std::string text = ItemText(chosen);
    if (chosen.parent == kNone && heading_number_ == 0) {
      target.Add(writer, chosen.target_number, std::move(text));
      target.AddVisible(1 + (chosen.item->is_open ? chosen.visible_below : 0));
    } else {
      writer.WriteObject(chosen.target_number, text + ">>");
    }
  }
}

// The item above all others of the source; closed, so that only itself is visible.
void OutlineCopier::WriteHeading(const std::string& title) {
  pdf::FileWriter& writer = context_->writer();
  TargetOutline& target = context_->parts().outline;
  std::string text = "<</Title";
  pdf::AppendString(text, pdf::Utf8ToTextString(title), false);
  text += "/Parent";
  pdf::AppendReference(text, target.Root(writer));
  if (target.last() != 0) {
    text += "/Prev";
    pdf::AppendReference(text, target.last());
  }
  const Chosen* first = nullptr;
  const Chosen* last = nullptr;
  std::int64_t visible_below = 0;
  for (const Chosen& chosen : chosen_) {
    if (chosen.parent == kNone) {
      first = first == nullptr ? &chosen : first;
      last = &chosen;
      visible_below += 1 + (chosen.item->is_open ? chosen.visible_below : 0);
    }
  }
  if (first != nullptr) {
    text += "/First";
    pdf::AppendReference(text, first->target_number);
    text += "/Last";
    pdf::AppendReference(text, last->target_number);
    text += "/Count";
    pdf::AppendInteger(text, -visible_below);
  }
  text += "/Dest[";
  pdf::AppendReference(text, context_->requests().front().target_number);
  target.Add(writer, heading_number_, text + "/Fit]");
  target.AddVisible(1);
}

// Indexes of the items that come along, in order: of a whole document all of them, else those that
// lead to a copied page, and their ancestors.
std::vector<std::uint32_t> OutlineCopier::Choose(SourceOutline& outline) const {
  std::vector<std::uint32_t> indexes;
  if (context_->is_whole()) {
    indexes.resize(outline.items().size());
    for (std::uint32_t i = 0; i < indexes.size(); ++i) {
      indexes[i] = i;
    }
    return indexes;
  }
  std::unordered_set<std::uint32_t> known;
  for (const PageRequest& request : context_->requests()) {
    for (std::uint32_t index :
         outline.OfPage(PageKey::OfPage(context_->source(), request.page_index))) {
      while (index != kNone && known.insert(index).second) {
        indexes.push_back(index);
        index = outline.items()[index].parent;
      }
    }
  }
  std::sort(indexes.begin(), indexes.end());
  return indexes;
}

void OutlineCopier::Relate(const SourceOutline& outline,
                           const std::vector<std::uint32_t>& indexes) {
  std::unordered_map<std::uint32_t, std::uint32_t> places;  // in chosen_, by index in the source
  std::uint32_t last_top = kNone;
  for (const std::uint32_t index : indexes) {
    const auto place = static_cast<std::uint32_t>(chosen_.size());
    Chosen& chosen = chosen_.emplace_back();
    chosen.item = &outline.items()[index];
    chosen.target_number = context_->writer().Reserve();
    places.emplace(index, place);
    std::uint32_t* last_sibling = &last_top;
    if (chosen.item->parent != kNone) {
      chosen.parent = places.at(chosen.item->parent);
      Chosen& parent = chosen_[chosen.parent];
      last_sibling = &parent.last_kid;
      if (parent.first_kid == kNone) {
        parent.first_kid = place;
      }
    }
    if (*last_sibling != kNone) {
      chosen.previous = *last_sibling;
      chosen_[*last_sibling].next = place;
    }
    *last_sibling = place;
  }
}

void OutlineCopier::CountVisible() {
  for (auto chosen = chosen_.rbegin(); chosen != chosen_.rend(); ++chosen) {
    if (chosen->parent != kNone) {
      chosen_[chosen->parent].visible_below +=
          1 + (chosen->item->is_open ? chosen->visible_below : 0);
    }
  }
}

// The text of an item: without what TargetOutline adds for one of the top level, without the
// closing ">>" for others.
std::string OutlineCopier::ItemText(const Chosen& chosen) {
  arena_.Reset();
  const Object item = context_->document().Load({chosen.item->number, 0}, arena_);
  std::string text = "<<";
  AppendLook(text, item);
  AppendRelations(text, chosen);
  AppendTarget(text, item);
  return text;
}

void OutlineCopier::AppendRelations(std::string& out, const Chosen& chosen) {
  const auto append = [&](const char* key, std::uint32_t number) {
    if (number != 0) {
      out += key;
      pdf::AppendReference(out, number);
    }
  };
  const auto number_of = [&](std::uint32_t place) {
    return place == kNone ? 0 : chosen_[place].target_number;
  };
  TargetOutline& target = context_->parts().outline;
  const bool is_below = chosen.parent != kNone;
  const bool is_top = !is_below && heading_number_ == 0;
  append("/Parent", is_below ? number_of(chosen.parent)
                    : is_top ? target.Root(context_->writer())
                             : heading_number_);
  append("/Prev", is_top ? target.last() : number_of(chosen.previous));
  append("/Next", is_top ? 0 : number_of(chosen.next));
  append("/First", number_of(chosen.first_kid));
  append("/Last", number_of(chosen.last_kid));
  if (chosen.visible_below > 0) {
    out += "/Count";
    pdf::AppendInteger(out, chosen.item->is_open ? chosen.visible_below : -chosen.visible_below);
  }
}

// Title, colour and style.
void OutlineCopier::AppendLook(std::string& out, const Object& item) {
  pdf::Document& document = context_->document();
  const Object title = document.Resolve(item.Get("Title"), arena_);
  out += "/Title";
  if (title.IsString() && title.Text().size() > kLongTitle) {
    context_->objects().Append(out, item.Get("Title"));  // one that is shared stays so
  } else {
    pdf::AppendObject(out, title.IsString() ? title : Object::String(""));
  }
  const Object colour = document.Resolve(item.Get("C"), arena_);
  const auto is_number = [](const Object& component) { return component.IsNumber(); };
  if (colour.Items().size() == 3 &&
      std::all_of(colour.Items().begin(), colour.Items().end(), is_number)) {
    out += "/C";
    pdf::AppendObject(out, colour);
  }
  const Object style = document.Resolve(item.Get("F"), arena_);
  if (style.IsInteger()) {
    out += "/F";
    pdf::AppendObject(out, style);
  }
}

void OutlineCopier::AppendTarget(std::string& out, const Object& item) {
  DestinationCopier& destinations = context_->destinations();
  if (item.Has("Dest")) {
    if (const auto copied = destinations.Copy(item.Get("Dest"))) {
      out += "/Dest" + *copied;
      return;
    }
  }
  if (item.Has("A")) {
    destinations.AppendActionEntry(out, "A", item.Get("A"));
  }
}

}  // namespace TarnixTools::engines::toolbox
