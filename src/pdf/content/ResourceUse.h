// Which names of its resources each page, form, pattern and glyph of a document uses: what their
// contents say, each read once.
//
//   ResourceUseReader reader(document);
//   const auto resources = reader.Read(page.Get("Resources"));
//   const ResourceUse use = reader.OfPage(page);
#ifndef TARNIX_PDF_CONTENT_RESOURCEUSE_H_
#define TARNIX_PDF_CONTENT_RESOURCEUSE_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "pdf/content/ResourceGraph.h"
#include "pdf/content/ResourceNames.h"
#include "pdf/syntax/Arena.h"
#include "pdf/syntax/Object.h"

namespace TarnixTools::pdf {

// Stands for a name in a category; 0 when there are too many to tell them apart.
using ResourceNameId = std::uint32_t;

struct ResourceUse {
  std::vector<ResourceNameId> names;  // ascending
  bool is_known = true;               // false: any other name may be used as well
};

struct NamedResource {
  ResourceCategory category = ResourceCategory::kFont;
  ResourceNameId id = 0;
  std::string_view name;
  Object value;
  std::uint32_t first_object = 0;  // in ResourceDictionary::objects
  std::uint32_t object_count = 0;  // objects that the value names, however deep in it
  bool is_implied = false;         // may be used without being named
};

// A resource dictionary, its names looked up.
struct ResourceDictionary {
  Object object;
  std::vector<NamedResource> entries;  // by category
  std::vector<std::uint32_t> by_id;    // indexes of entries, by ascending id
  std::vector<std::uint32_t> objects;
  bool has_foreign_entries = false;  // others that lead to objects: no operator ever names them
  Arena arena;

  // The entry's index, or -1. Of entries with the same name it is the last, as for readers.
  std::ptrdiff_t Find(ResourceNameId id) const;
};

// Which entries of a resource dictionary are used.
struct UsedEntries {
  std::vector<bool> is_used;  // by entry; empty: none
  bool may_be_all = false;    // those that are not known to be used may be so

  bool Holds(std::size_t entry) const {
    return may_be_all || (entry < is_used.size() && is_used[entry]);
  }
};

class ResourceUseReader {
 public:
  // The document outlives this.
  explicit ResourceUseReader(Document& document);

  // Forgets what it knows once that is much, ids included.
  void Trim();

  // What a page's contents use, and what appears on the page without resources of its own.
  ResourceUse OfPage(const Object& page);
  // What a form, a pattern or another stream that paints uses; number: its object's.
  ResourceUse OfForm(const Object& form, std::uint32_t number);
  // What the glyphs of a Type 3 font use.
  ResourceUse OfGlyphs(const Object& font);
  // What an entry of resources uses of the resources of whoever uses it: a form that has none
  // itself, or an image whose colour space has a name.
  ResourceUse NeedsOf(ResourceCategory category, const Object& entry);
  // Marks the entries with these names, and those that what they lead to uses in turn. Gives the
  // ones that were not marked before.
  std::vector<std::size_t> Mark(const ResourceUse& names, const ResourceDictionary& resources,
                                UsedEntries& used);
  // The font that variable text of a widget is set in: it has to stay even while there is no text.
  ResourceNameId FontOfWidget(const Object& widget);

  // Looks through a resource dictionary; null when it is none. It must not outlive the object.
  std::shared_ptr<const ResourceDictionary> Read(const Object& resources);
  // The same for one that is an object, or stands in a node of the page tree; the last ones asked
  // for are kept, each under its key.
  std::shared_ptr<const ResourceDictionary> ReadShared(const Object& resources, std::uint64_t key);

 private:
  struct StreamUse {
    ResourceUse use;
    bool has_operands_left = false;
  };

  ResourceNameId IdOf(ResourceCategory category, std::string_view name);
  ResourceNameSink AddTo(ResourceUse& use);
  const StreamUse& ReadStream(std::uint32_t number);
  bool DecodeInto(std::string& content, std::uint32_t number);
  bool Spend(std::uint64_t bytes);
  void Count(ResourceUse& use);

  const ResourceUse& OfStream(std::uint32_t number) { return ReadStream(number).use; }

  void AddContents(ResourceUse& use, const Object& contents);
  void AddStreamArray(ResourceUse& use, std::vector<std::uint32_t> streams);
  void AddStreams(ResourceUse& use, std::vector<std::uint32_t> streams);
  void AddJoined(ResourceUse& use, const std::vector<std::uint32_t>& streams);
  void AddAppearances(ResourceUse& use, const Object& annotations, Arena& arena);
  ResourceUse NeedsOfAppearance(std::uint32_t number);
  ResourceUse NeedsBelow(ResourceGraph& graph);
  const ResourceUse& Keep(std::uint64_t key, ResourceUse use);
  void AddForm(ResourceUse& use, const Object& form, std::uint32_t number, Arena& arena);
  void AddColorSpace(ResourceUse& use, const Object& color_space, Arena& arena);
  Object Resolve(const Object& value, Arena& arena);
  std::shared_ptr<ResourceDictionary> Index(const Object& resources);
  void AddEntry(ResourceDictionary& dictionary, ResourceCategory category,
                const DictionaryEntry& entry);

  Document* document_;
  std::unordered_map<std::string, ResourceNameId> ids_;
  std::unordered_map<std::uint32_t, StreamUse> streams_;
  std::unordered_map<std::uint64_t, ResourceUse> needs_;  // by number and what it is looked at as
  std::unordered_map<std::uint64_t, std::shared_ptr<const ResourceDictionary>> dictionaries_;
  std::size_t kept_names_ = 0;  // in streams_ and needs_
  std::uint64_t budget_ = 0;    // bytes that may still be read, roughly
  std::string key_;
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_CONTENT_RESOURCEUSE_H_
