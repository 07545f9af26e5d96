#include "engines/toolbox/copy/pages/PageResources.h"

#include <algorithm>
#include <array>

#include "engines/toolbox/copy/CopyContext.h"
#include "engines/toolbox/copy/pages/AddedResources.h"
#include "pdf/write/Serialize.h"

namespace TarnixTools::engines::toolbox {

using pdf::DictionaryEntry;
using pdf::Object;

namespace {

// A bit in the keys of resources: which kind of place they stand in, above a number.
constexpr std::uint64_t kNodeKey = std::uint64_t{1} << 32;
constexpr std::uint64_t kPageKey = std::uint64_t{2} << 32;

constexpr std::string_view kResourcesKey = "/Resources";
constexpr std::string_view kNoResources = "<<>>";

}  // namespace

void PageResourceCopier::Prepare() {
  if (context_->is_whole()) {
    return;
  }
  context_->objects().set_resource_filter(*this);
  context_->source().parts().resources().Trim();
  const auto& pages = context_->source().pages().pages();
  for (const PageRequest& request : context_->requests()) {
    Look(pages[request.page_index]);
  }
}

PageResourceCopier::Place PageResourceCopier::PlaceOf(const pdf::PageTree::Page& page,
                                                      const Object& dictionary) const {
  const pdf::PageTree& tree = context_->source().pages();
  const auto given = tree.FindAttribute(page, dictionary, pdf::InheritableKey::kResources);
  Place place;
  place.value = given.value;
  place.key = given.node != 0 ? kNodeKey | given.node
                              : kPageKey | static_cast<std::uint64_t>(&page - tree.pages().data());
  place.is_shared = given.node != 0;
  if (place.value.IsReference()) {
    place.key = place.value.AsReference().number;
    place.is_shared = true;
  }
  return place;
}

std::shared_ptr<const pdf::ResourceDictionary> PageResourceCopier::Read(const Place& place) {
  pdf::ResourceUseReader& resources = context_->source().parts().resources();
  return place.is_shared ? resources.ReadShared(place.value, place.key)
                         : resources.Read(place.value);
}

// Notes what a page uses of its resources, as far as that is not settled already.
void PageResourceCopier::Look(const pdf::PageTree::Page& page) {
  arena_.Reset();
  const Object dictionary = context_->source().pages().Load(page, arena_);
  const Place place = PlaceOf(page, dictionary);
  const auto resources = Read(place);
  if (resources == nullptr) {
    return;
  }
  Use& use = uses_[place.key];
  if (!IsSettled(*resources, use)) {
    Apply(context_->source().parts().resources().OfPage(dictionary), *resources, use);
  }
}

// Whether all entries stay, whatever else is used.
bool PageResourceCopier::IsSettled(const pdf::ResourceDictionary& resources, Use& use) const {
  while (use.settled_entries < resources.entries.size() &&
         IsKept(resources, use, use.settled_entries)) {
    ++use.settled_entries;
  }
  return use.settled_entries == resources.entries.size();
}

// An entry stays when it is named, and also when all that it holds comes along anyway.
bool PageResourceCopier::IsKept(const pdf::ResourceDictionary& resources, const Use& use,
                                std::size_t entry) const {
  const pdf::NamedResource& resource = resources.entries[entry];
  if (resource.is_implied || use.entries.Holds(entry)) {
    return true;
  }
  const auto first = resources.objects.begin() + resource.first_object;
  return resource.object_count > 0 &&
         std::all_of(first, first + resource.object_count,
                     [this](std::uint32_t number) { return proven_.contains(number); });
}

void PageResourceCopier::Apply(const pdf::ResourceUse& names,
                               const pdf::ResourceDictionary& resources, Use& use) {
  for (const std::size_t entry :
       context_->source().parts().resources().Mark(names, resources, use.entries)) {
    const auto first = resources.objects.begin() + resources.entries[entry].first_object;
    proven_.insert(first, first + resources.entries[entry].object_count);
  }
  if (use.entries.may_be_all) {
    proven_.insert(resources.objects.begin(), resources.objects.end());
  }
}

bool PageResourceCopier::IsWhole(const pdf::ResourceDictionary& resources, const Use& use) const {
  for (std::size_t entry = 0; entry < resources.entries.size(); ++entry) {
    if (!IsKept(resources, use, entry)) {
      return false;
    }
  }
  return !resources.has_foreign_entries;
}

void PageResourceCopier::Copy(std::string& page, const pdf::PageTree::Page& source_page,
                              const Object& dictionary) {
  const Place place = PlaceOf(source_page, dictionary);
  page += kResourcesKey;
  if (place.value.IsNull()) {
    page += kNoResources;
    return;
  }
  Use& use = uses_[place.key];
  if (use.target_number != 0) {
    pdf::AppendReference(page, use.target_number);
    return;
  }
  const auto resources =
      context_->is_whole() || use.is_whole.value_or(false) ? nullptr : Read(place);
  if (!use.is_whole) {
    use.is_whole = resources == nullptr || IsWhole(*resources, use);
  }
  const bool is_object = place.value.IsReference();
  std::string text;
  if (*use.is_whole) {
    context_->objects().Append(text, place.value);
  } else {
    text = Pruned(*resources, use);
  }
  // Pruned resources, and those from a node of the page tree, become an object that all their pages
  // refer to.
  if (place.is_shared && !(is_object && *use.is_whole)) {
    use.target_number = context_->writer().Reserve();
    context_->writer().WriteObject(use.target_number, text);
    text.clear();
    pdf::AppendReference(text, use.target_number);
  }
  pdf::AppendToken(page, text);
}

void PageResourceCopier::NoteWidget(const Object& widget) {
  if (context_->is_whole()) {
    return;
  }
  pdf::Arena arena;
  pdf::Document& document = context_->document();
  const Object appearances = document.Resolve(widget.Get("AP"), arena);
  if (appearances.Entries().empty()) {
    return;
  }
  const pdf::ResourceNameId font = context_->source().parts().resources().FontOfWidget(widget);
  for (const DictionaryEntry& entry : appearances.Entries()) {
    widget_fonts_[entry.value.AsReference().number] = font;
  }
}

bool PageResourceCopier::AppendResources(std::string& out, std::uint32_t number,
                                         const Object& dictionary, bool is_stream) {
  const Object type = dictionary.Get("Type");
  if (is_stream ? type.IsName("3D") : !dictionary.Has("CharProcs")) {
    return false;
  }
  pdf::ResourceUseReader& source = context_->source().parts().resources();
  const Object value = dictionary.Get("Resources");
  const auto resources = value.IsReference() ? source.ReadShared(value, value.AsReference().number)
                                             : source.Read(value);
  if (resources == nullptr) {
    pdf::AppendToken(out, "null");
    return true;
  }
  Use use;
  if (!IsSettled(*resources, use)) {
    Apply(is_stream ? source.OfForm(dictionary, number) : source.OfGlyphs(dictionary), *resources,
          use);
    if (const auto font = widget_fonts_.find(number); font != widget_fonts_.end()) {
      Apply({{font->second}, true}, *resources, use);
    }
  }
  if (IsWhole(*resources, use)) {
    return false;
  }
  const std::string text = Pruned(*resources, use);
  if (text == kNoResources) {
    out += text;
  } else {
    // An object of its own: strings in a stream's dictionary would have to be encrypted here.
    pdf::AppendReference(out, Write(text));
  }
  return true;
}

std::uint32_t PageResourceCopier::Write(const std::string& text) {
  const auto [place, is_new] = written_.emplace(text, 0);
  if (is_new) {
    place->second = context_->writer().Reserve();
    context_->writer().WriteObject(place->second, text);
  }
  return place->second;
}

PageResourceCopier::PageResources PageResourceCopier::Open(const pdf::PageTree::Page& source_page,
                                                           const Object& dictionary) {
  PageResources resources;
  resources.place_ = PlaceOf(source_page, dictionary);
  if (!resources.place_.value.IsNull()) {
    resources.dictionary_ = Read(resources.place_);
  }
  return resources;
}

std::vector<std::string_view> PageResourceCopier::PageResources::DefaultSpaces() const {
  std::vector<std::string_view> names;
  if (dictionary_ == nullptr) {
    return names;
  }
  for (const pdf::NamedResource& resource : dictionary_->entries) {
    if (resource.category != pdf::ResourceCategory::kColorSpace) {
      break;
    }
    if (resource.is_implied) {
      names.push_back(resource.name);
    }
  }
  return names;
}

std::string PageResourceCopier::CopyWith(std::string& page, const PageResources& own,
                                         const std::vector<AddedResource>& added) {
  page += kResourcesKey;
  if (own.dictionary_ == nullptr) {
    page += AddedOnly(added, std::string(kFirstPrefix));
    return std::string(kFirstPrefix);
  }
  const std::string prefix = FreePrefix(*own.dictionary_, added);
  if (!own.place_.is_shared) {
    page += Merged(own.place_, *own.dictionary_, added, prefix);
    return prefix;
  }
  const auto [known, is_new] =
      merged_.try_emplace(std::to_string(own.place_.key) + AddedOnly(added, prefix), 0);
  if (is_new) {
    const std::string text = Merged(own.place_, *own.dictionary_, added, prefix);
    known->second = Write(text);
  }
  pdf::AppendReference(page, known->second);
  return prefix;
}

void PageResourceCopier::CopyToForm(std::string& form, const pdf::PageTree::Page& source_page,
                                    const Object& dictionary) {
  std::string text;
  Copy(text, source_page, dictionary);
  text.erase(0, kResourcesKey.size());
  form += kResourcesKey;
  if (text.starts_with("<<") && text != kNoResources) {
    // An object of its own: strings in a stream's dictionary would have to be encrypted here.
    pdf::AppendReference(form, Write(text));
  } else {
    form += text;
  }
}

std::string PageResourceCopier::Merged(const Place& place, const pdf::ResourceDictionary& resources,
                                       const std::vector<AddedResource>& added,
                                       const std::string& prefix) {
  const Use& use = uses_[place.key];
  const bool is_whole = context_->is_whole() || IsWhole(resources, use);
  const std::vector<bool> is_kept =
      is_whole ? std::vector<bool>(resources.entries.size(), true) : KeptOf(resources, use);
  std::string text = "<<";
  std::size_t entry = 0;
  for (std::size_t i = 0; i < pdf::kResourceCategoryKeys.size(); ++i) {
    const auto category = static_cast<pdf::ResourceCategory>(i);
    std::string names;
    for (; entry < resources.entries.size() && resources.entries[entry].category == category;
         ++entry) {
      if (is_kept[entry]) {
        pdf::AppendName(names, resources.entries[entry].name);
        context_->objects().Append(names, resources.entries[entry].value);
      }
    }
    AppendAdded(names, category, added, prefix);
    if (!names.empty()) {
      pdf::AppendName(text, pdf::kResourceCategoryKeys[i]);
      text += "<<" + names + ">>";
    }
  }
  for (const DictionaryEntry& other : resources.object.Entries()) {
    const bool is_category =
        std::find(pdf::kResourceCategoryKeys.begin(), pdf::kResourceCategoryKeys.end(),
                  other.Key()) != pdf::kResourceCategoryKeys.end();
    if (!is_category && (is_whole || other.Key() == "ProcSet")) {
      pdf::AppendName(text, other.Key());
      context_->objects().Append(text, other.value);
    }
  }
  return text + ">>";
}

// The resources as text, without what is not used.
std::string PageResourceCopier::Pruned(const pdf::ResourceDictionary& resources, const Use& use) {
  const std::vector<bool> is_kept = KeptOf(resources, use);
  std::string text = "<<";
  const auto& entries = resources.entries;
  for (std::size_t first = 0; first < entries.size();) {
    std::size_t end = first;
    while (end < entries.size() && entries[end].category == entries[first].category) {
      ++end;
    }
    AppendCategory(text, resources, is_kept, first, end);
    first = end;
  }
  if (resources.object.Has("ProcSet")) {
    text += "/ProcSet";
    context_->objects().Append(text, resources.object.Get("ProcSet"));
  }
  return text + ">>";
}

// Which entries stay; the report is told of the others.
std::vector<bool> PageResourceCopier::KeptOf(const pdf::ResourceDictionary& resources,
                                             const Use& use) {
  std::vector<bool> is_kept(resources.entries.size());
  for (std::size_t entry = 0; entry < is_kept.size(); ++entry) {
    is_kept[entry] = IsKept(resources, use, entry);
  }
  const auto dropped = std::count(is_kept.begin(), is_kept.end(), false);
  if (dropped > 0) {
    context_->report().Add(CopiedKind::kResource, CopyOutcome::kDropped,
                           "not used by the pages copied", static_cast<std::uint64_t>(dropped));
  }
  return is_kept;
}

// Entries from `first` to before `end`, all of one category.
void PageResourceCopier::AppendCategory(std::string& out, const pdf::ResourceDictionary& resources,
                                        const std::vector<bool>& is_kept, std::size_t first,
                                        std::size_t end) {
  const auto kept_begin = is_kept.begin() + static_cast<std::ptrdiff_t>(first);
  const auto kept_end = is_kept.begin() + static_cast<std::ptrdiff_t>(end);
  const std::string_view key =
      pdf::kResourceCategoryKeys[static_cast<std::size_t>(resources.entries[first].category)];
  if (std::find(kept_begin, kept_end, true) == kept_end) {
    return;
  }
  pdf::AppendName(out, key);
  if (std::find(kept_begin, kept_end, false) == kept_end) {
    context_->objects().Append(out, resources.object.Get(key));
    return;
  }
  out += "<<";
  for (std::size_t entry = first; entry < end; ++entry) {
    if (is_kept[entry]) {
      pdf::AppendName(out, resources.entries[entry].name);
      context_->objects().Append(out, resources.entries[entry].value);
    }
  }
  out += ">>";
}

}  // namespace TarnixTools::engines::toolbox
