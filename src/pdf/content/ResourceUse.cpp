#include "pdf/content/ResourceUse.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

#include "pdf/Limits.h"
#include "pdf/content/Appearances.h"
#include "pdf/content/PageContents.h"

namespace TarnixTools::pdf {

namespace {

constexpr std::size_t kTrimmedIds = std::size_t{1} << 17;
constexpr std::size_t kTrimmedNames = std::size_t{1} << 20;
constexpr std::size_t kKeptDictionaries = 64;

// Stands for whoever uses a resource, whose own resources are not looked at.
constexpr std::uint32_t kUser = ~std::uint32_t{0};
// As what an object's needs are kept, above its number: a category of resources, or this.
constexpr std::uint64_t kAppearanceKey = kResourceCategoryKeys.size();

constexpr std::uint64_t KeyOf(std::uint64_t role, std::uint32_t number) {
  return role << 32U | number;
}

ResourceScope UserScope() {
  return {.resources = {}, .owner = kUser};
}

void Settle(ResourceUse& use) {
  std::sort(use.names.begin(), use.names.end());
  use.names.erase(std::unique(use.names.begin(), use.names.end()), use.names.end());
  if (use.names.size() > limits::kMaxUsedNames) {
    use.names.clear();
    use.is_known = false;
  }
}

void AddAll(ResourceUse& use, const ResourceUse& other) {
  use.is_known = use.is_known && other.is_known;
  use.names.insert(use.names.end(), other.names.begin(), other.names.end());
  if (use.names.size() > 2 * limits::kMaxUsedNames) {
    Settle(use);
  }
}

// Replaces a device colour space without being named (ISO 32000-2, 8.6.5.6).
bool IsDefaultColorSpace(std::string_view name) {
  return name == "DefaultGray" || name == "DefaultRGB" || name == "DefaultCMYK";
}

// Adds to `marked` what was not marked before.
void MarkNamed(const ResourceUse& names, const ResourceDictionary& resources, UsedEntries& used,
               std::vector<std::size_t>& marked) {
  const auto mark = [&](std::size_t entry) {
    if (!used.is_used[entry]) {
      used.is_used[entry] = true;
      marked.push_back(entry);
    }
  };
  used.may_be_all = used.may_be_all || !names.is_known;
  if (names.names.size() < resources.entries.size()) {
    for (const ResourceNameId id : names.names) {
      if (const std::ptrdiff_t entry = resources.Find(id); entry >= 0) {
        mark(static_cast<std::size_t>(entry));
      }
    }
    return;
  }
  for (std::size_t entry = 0; entry < resources.entries.size(); ++entry) {
    if (std::binary_search(names.names.begin(), names.names.end(), resources.entries[entry].id)) {
      mark(entry);
    }
  }
}

std::optional<ResourceCategory> CategoryOfKey(std::string_view key) {
  const auto& keys = kResourceCategoryKeys;
  const auto found = std::find(keys.begin(), keys.end(), key);
  return found == keys.end()
             ? std::nullopt
             : std::optional(static_cast<ResourceCategory>(std::distance(keys.begin(), found)));
}

}  // namespace

std::ptrdiff_t ResourceDictionary::Find(ResourceNameId id) const {
  const auto after = std::upper_bound(
      by_id.begin(), by_id.end(), id,
      [this](ResourceNameId wanted, std::uint32_t index) { return wanted < entries[index].id; });
  const bool is_there = after != by_id.begin() && entries[*std::prev(after)].id == id;
  return is_there ? static_cast<std::ptrdiff_t>(*std::prev(after)) : -1;
}

ResourceUseReader::ResourceUseReader(Document& document)
    : document_(&document),
      budget_(limits::kScannedAllowance + limits::kScannedRatio * document.reader().size()) {}

void ResourceUseReader::Trim() {
  if (ids_.size() > kTrimmedIds || kept_names_ > kTrimmedNames) {
    ids_.clear();
    streams_.clear();
    needs_.clear();
    dictionaries_.clear();
    kept_names_ = 0;
  }
}

ResourceNameId ResourceUseReader::IdOf(ResourceCategory category, std::string_view name) {
  if (name.size() > limits::kMaxNameBytes) {
    return 0;
  }
  key_.assign(1, static_cast<char>(category));
  key_ += name;
  const auto found = ids_.find(key_);
  if (found != ids_.end()) {
    return found->second;
  }
  if (ids_.size() >= limits::kMaxNameIds) {
    return 0;
  }
  return ids_.emplace(key_, static_cast<ResourceNameId>(ids_.size() + 1)).first->second;
}

ResourceNameSink ResourceUseReader::AddTo(ResourceUse& use) {
  return [this, &use](ResourceCategory category, std::string_view name) {
    const ResourceNameId id = IdOf(category, name);
    use.is_known = use.is_known && id != 0;
    if (!use.names.empty() && use.names.back() == id) {
      return;
    }
    use.names.push_back(id);
    if (use.names.size() > 2 * limits::kMaxUsedNames) {
      Settle(use);
    }
  };
}

ResourceUse ResourceUseReader::OfPage(const Object& page) {
  ResourceUse use;
  Arena arena;
  AddContents(use, page.Get("Contents"));
  AddAppearances(use, Resolve(page.Get("Annots"), arena), arena);
  AddColorSpace(use, Resolve(page.Get("Group"), arena).Get("CS"), arena);
  Settle(use);
  return use;
}

ResourceUse ResourceUseReader::OfForm(const Object& form, std::uint32_t number) {
  ResourceUse use;
  Arena arena;
  AddForm(use, form, number, arena);
  Settle(use);
  return use;
}

ResourceUse ResourceUseReader::OfGlyphs(const Object& font) {
  ResourceUse use;
  std::vector<std::uint32_t> glyphs = GlyphsOf(*document_, font);
  if (Spend(glyphs.size() * limits::kBytesPerScannedItem)) {
    AddStreams(use, std::move(glyphs));
  } else {
    use.is_known = false;
  }
  Settle(use);
  return use;
}

ResourceUse ResourceUseReader::NeedsOf(ResourceCategory category, const Object& entry) {
  const std::uint32_t number = entry.AsReference().number;
  const std::uint64_t key = KeyOf(static_cast<std::uint64_t>(category), number);
  if (const auto known = needs_.find(key); number != 0 && known != needs_.end()) {
    return known->second;
  }
  ResourceGraph graph(*document_);
  graph.AddResource(category, entry, UserScope());
  ResourceUse use = NeedsBelow(graph);
  if (category == ResourceCategory::kColorSpace) {  // a name leads nowhere
    Arena arena;
    AddColorSpace(use, entry, arena);
    Settle(use);
  }
  return number == 0 ? use : Keep(key, std::move(use));
}

ResourceUse ResourceUseReader::NeedsOfAppearance(std::uint32_t number) {
  const std::uint64_t key = KeyOf(kAppearanceKey, number);
  if (const auto known = needs_.find(key); known != needs_.end()) {
    return known->second;
  }
  ResourceGraph graph(*document_);
  graph.AddContent({ResourceKind::kAppearance, number}, UserScope());
  return Keep(key, NeedsBelow(graph));
}

const ResourceUse& ResourceUseReader::Keep(std::uint64_t key, ResourceUse use) {
  Count(use);
  return needs_.emplace(key, std::move(use)).first->second;
}

std::vector<std::size_t> ResourceUseReader::Mark(const ResourceUse& names,
                                                 const ResourceDictionary& resources,
                                                 UsedEntries& used) {
  used.is_used.resize(resources.entries.size());
  std::vector<std::size_t> marked;
  MarkNamed(names, resources, used, marked);
  for (std::size_t next = 0; next < marked.size() && !used.may_be_all; ++next) {
    const NamedResource& entry = resources.entries[marked[next]];
    MarkNamed(NeedsOf(entry.category, entry.value), resources, used, marked);
  }
  return marked;
}

// What has resources of its own looks up nothing elsewhere.
ResourceUse ResourceUseReader::NeedsBelow(ResourceGraph& graph) {
  ResourceUse use;
  use.is_known = kept_names_ <= limits::kMaxKeptNames;
  Arena arena;
  while (const ResourceNode* node = use.is_known ? graph.Next() : nullptr) {
    use.is_known = Spend(limits::kBytesPerScannedItem);
    if (node->scope.owner != kUser) {
      graph.SkipBelow();
    } else if (HasContent(node->kind)) {
      AddForm(use, node->value, node->number, arena);
    } else {
      AddColorSpace(use, node->value.IsArray() ? node->value : node->value.Get("ColorSpace"),
                    arena);
    }
  }
  use.is_known = use.is_known && graph.is_complete();
  Settle(use);
  return use;
}

ResourceNameId ResourceUseReader::FontOfWidget(const Object& widget) {
  Arena arena;
  Object field = widget;
  Object appearance = Resolve(field.Get("DA"), arena);
  for (std::uint32_t level = 0;
       level < limits::kMaxFieldNesting && !appearance.IsString() && field.Has("Parent"); ++level) {
    field = Resolve(field.Get("Parent"), arena);
    appearance = Resolve(field.Get("DA"), arena);
  }
  if (!appearance.IsString()) {
    const Object catalog = document_->Catalog(arena);
    appearance = Resolve(Resolve(catalog.Get("AcroForm"), arena).Get("DA"), arena);
  }
  ResourceNameId font = 0;
  CollectResourceNames(appearance.Text(), [&](ResourceCategory category, std::string_view name) {
    font = category == ResourceCategory::kFont ? IdOf(category, name) : font;
  });
  return font;
}

// False once too much has been read: what is not known then counts as used.
bool ResourceUseReader::Spend(std::uint64_t bytes) {
  const bool is_enough = budget_ > 0;
  budget_ -= std::min(budget_, bytes);
  return is_enough;
}

// Keeps the number of names that are held within bounds.
void ResourceUseReader::Count(ResourceUse& use) {
  if (kept_names_ > limits::kMaxKeptNames) {
    use = {{}, false};
  }
  use.names.shrink_to_fit();
  kept_names_ += use.names.size();
}

const ResourceUseReader::StreamUse& ResourceUseReader::ReadStream(std::uint32_t number) {
  if (const auto known = streams_.find(number); known != streams_.end()) {
    return known->second;
  }
  StreamUse stream;
  std::string content;
  stream.use.is_known = DecodeInto(content, number);
  const ContentNames names = CollectResourceNames(content, AddTo(stream.use));
  stream.use.is_known = stream.use.is_known && names.is_complete;
  stream.has_operands_left = names.has_operands_left;
  Settle(stream.use);
  Count(stream.use);
  return streams_.emplace(number, std::move(stream)).first->second;
}

// Appends a stream's content; false when not all of it can be read. An object that is no stream has
// none.
bool ResourceUseReader::DecodeInto(std::string& content, std::uint32_t number) {
  const std::size_t room =
      limits::kMaxScannedContent - std::min(content.size(), limits::kMaxScannedContent);
  if (number == 0) {
    return true;
  }
  if (!Spend(1)) {
    return false;
  }
  const std::optional<Decoded> decoded = document_->TryDecodeStream(number, room);
  if (!decoded) {
    return true;
  }
  Spend(decoded->is_too_long ? room : decoded->data.size());
  content += decoded->data;
  return decoded->complete;
}

void ResourceUseReader::AddContents(ResourceUse& use, const Object& contents) {
  const std::uint32_t number = contents.AsReference().number;
  if (number != 0 && streams_.contains(number)) {
    AddAll(use, OfStream(number));
    return;
  }
  if (!Spend(1)) {
    use.is_known = false;
    return;
  }
  ContentStreams streams = StreamsOfContents(*document_, contents);
  if (!streams.is_array) {
    AddStreams(use, std::move(streams.numbers));
    return;
  }
  StreamUse all;
  all.use.is_known = streams.is_regular;
  AddStreamArray(all.use, std::move(streams.numbers));
  Settle(all.use);
  AddAll(use, all.use);
  if (streams.array != 0) {
    Count(all.use);
    streams_.emplace(streams.array, std::move(all));
  }
}

// Contents may be cut anywhere between two tokens (table 31). Mostly they are cut between
// operations; then each stream is read for itself, and once for all pages that share it.
void ResourceUseReader::AddStreamArray(ResourceUse& use, std::vector<std::uint32_t> streams) {
  if (!Spend(streams.size() * limits::kBytesPerScannedItem)) {
    use.is_known = false;
    return;
  }
  const bool are_whole = std::all_of(streams.begin(), streams.end(), [&](std::uint32_t number) {
    const StreamUse& stream = ReadStream(number);
    return stream.use.is_known && !stream.has_operands_left;
  });
  if (are_whole || streams.size() == 1) {
    AddStreams(use, std::move(streams));
  } else {
    AddJoined(use, streams);
  }
}

void ResourceUseReader::AddStreams(ResourceUse& use, std::vector<std::uint32_t> streams) {
  std::sort(streams.begin(), streams.end());
  streams.erase(std::unique(streams.begin(), streams.end()), streams.end());
  for (const std::uint32_t number : streams) {
    AddAll(use, OfStream(number));
  }
}

void ResourceUseReader::AddJoined(ResourceUse& use, const std::vector<std::uint32_t>& streams) {
  std::string content;
  for (const std::uint32_t number : streams) {
    use.is_known = use.is_known && DecodeInto(content, number);
    content += '\n';
    if (!use.is_known) {
      return;
    }
  }
  const ContentNames names = CollectResourceNames(content, AddTo(use));
  use.is_known = use.is_known && names.is_complete;
}

// Appearances without resources of their own take the page's in some readers.
void ResourceUseReader::AddAppearances(ResourceUse& use, const Object& annotations, Arena& arena) {
  for (const Object& item : annotations.Items()) {
    const std::vector<std::uint32_t> appearances = AppearancesOf(*document_, Resolve(item, arena));
    if (!Spend((appearances.size() + 1) * limits::kBytesPerScannedItem)) {
      use.is_known = false;
      return;
    }
    for (const std::uint32_t number : appearances) {
      AddAll(use, NeedsOfAppearance(number));
    }
  }
}

// number: 0 for what is no object of its own, and so has no content.
void ResourceUseReader::AddForm(ResourceUse& use, const Object& form, std::uint32_t number,
                                Arena& arena) {
  const auto kind = KindOf(*document_, ResourceCategory::kXObject, form);
  if (kind == ResourceKind::kImage) {
    return;  // its data is no content
  }
  AddAll(use, OfStream(number));
  AddColorSpace(use, Resolve(form.Get("Group"), arena).Get("CS"), arena);
}

void ResourceUseReader::AddColorSpace(ResourceUse& use, const Object& color_space, Arena& arena) {
  const Object value = Resolve(color_space, arena);
  if (value.IsName()) {
    CollectColorSpaceNames(value, AddTo(use));
    return;
  }
  // The first item names the family; a base or an alternate may be named by its place.
  for (const Object& item : value.Items()) {
    CollectColorSpaceNames(item.IsReference() ? Resolve(item, arena) : item, AddTo(use));
  }
}

Object ResourceUseReader::Resolve(const Object& value, Arena& arena) {
  return value.IsReference() ? document_->Resolve(value, arena) : value;
}

std::shared_ptr<const ResourceDictionary> ResourceUseReader::Read(const Object& resources) {
  return Index(resources);
}

std::shared_ptr<const ResourceDictionary> ResourceUseReader::ReadShared(const Object& resources,
                                                                        std::uint64_t key) {
  if (const auto known = dictionaries_.find(key); known != dictionaries_.end()) {
    return known->second;
  }
  if (dictionaries_.size() >= kKeptDictionaries) {
    dictionaries_.clear();
  }
  return dictionaries_.emplace(key, Index(resources)).first->second;
}

std::shared_ptr<ResourceDictionary> ResourceUseReader::Index(const Object& resources) {
  auto dictionary = std::make_shared<ResourceDictionary>();
  dictionary->object = Resolve(resources, dictionary->arena);
  if (!dictionary->object.IsDictionary()) {
    return nullptr;
  }
  for (std::size_t i = 0; i < kResourceCategoryKeys.size(); ++i) {
    const Object named =
        Resolve(dictionary->object.Get(kResourceCategoryKeys[i]), dictionary->arena);
    for (const DictionaryEntry& entry : named.Entries()) {
      AddEntry(*dictionary, static_cast<ResourceCategory>(i), entry);
    }
  }
  std::vector<std::uint32_t> foreign;
  for (const DictionaryEntry& entry : dictionary->object.Entries()) {
    if (!CategoryOfKey(entry.Key()) && entry.Key() != "ProcSet") {
      CollectReferences(entry.value, foreign);
    }
  }
  dictionary->has_foreign_entries = !foreign.empty();
  auto& by_id = dictionary->by_id;
  by_id.resize(dictionary->entries.size());
  for (std::uint32_t i = 0; i < by_id.size(); ++i) {
    by_id[i] = i;
  }
  std::sort(by_id.begin(), by_id.end(), [&](std::uint32_t a, std::uint32_t b) {
    return std::pair(dictionary->entries[a].id, a) < std::pair(dictionary->entries[b].id, b);
  });
  return dictionary;
}

void ResourceUseReader::AddEntry(ResourceDictionary& dictionary, ResourceCategory category,
                                 const DictionaryEntry& entry) {
  NamedResource resource;
  resource.category = category;
  resource.name = entry.Key();
  resource.value = entry.value;
  resource.id = IdOf(category, entry.Key());
  resource.first_object = static_cast<std::uint32_t>(dictionary.objects.size());
  CollectReferences(entry.value, dictionary.objects);
  resource.object_count =
      static_cast<std::uint32_t>(dictionary.objects.size()) - resource.first_object;
  // A plain name holds nothing, so that its use need not be found out.
  resource.is_implied =
      resource.id == 0 || entry.value.IsName() || entry.value.IsNull() ||
      (category == ResourceCategory::kColorSpace && IsDefaultColorSpace(entry.Key()));
  dictionary.entries.push_back(resource);
}

}  // namespace TarnixTools::pdf
