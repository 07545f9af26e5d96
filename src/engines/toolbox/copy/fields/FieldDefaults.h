// What a form's fields take from the form dictionary: resources, appearance, alignment (ISO
// 32000-2, 12.7.3).
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_FIELDS_FIELDDEFAULTS_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_FIELDS_FIELDDEFAULTS_H_

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "engines/toolbox/copy/fields/FieldNames.h"
#include "pdf/syntax/Arena.h"
#include "pdf/syntax/Object.h"

namespace TarnixTools::pdf {
class Document;
class ObjectCopier;
}  // namespace TarnixTools::pdf

namespace TarnixTools::engines::toolbox {

// Resources of a source that have another name in the target, or that come along only when they are
// used.
class ResourceNames {
 public:
  struct Entry {
    std::string name;   // in the target
    pdf::Object value;  // null for one that is in the target already
    bool is_used = false;
  };

  bool empty() const { return entries_.empty(); }

  void Add(std::string_view category, std::string_view from, const std::string& to,
           const pdf::Object& value = {}) {
    entries_[{std::string(category), std::string(from)}] = {to, value, false};
  }

  // A default appearance string (12.7.4.3) with the target's names in it. Notes what it uses.
  std::string Apply(std::string_view appearance);

  // The entries by category and name in the source.
  const std::map<std::pair<std::string, std::string>, Entry>& entries() const { return entries_; }

 private:
  Entry* Find(std::string_view category, std::string_view name);

  std::map<std::pair<std::string, std::string>, Entry> entries_;
};

// The defaults of form fields of a source; read once.
class SourceFieldDefaults {
 public:
  struct Resource {
    std::string_view name;
    pdf::Object value;
    std::string content;  // all it consists of; empty when that is too much, or a stream
  };

  struct Category {
    std::string_view name;
    std::vector<Resource> resources;
  };

  // Reads the defaults of a form dictionary; none when it is null. The dictionary and the arena
  // outlive the object.
  SourceFieldDefaults(pdf::Document& document, const pdf::Object& form, pdf::Arena& arena);

  const std::vector<Category>& categories() const { return categories_; }

  std::optional<std::string_view> appearance() const { return appearance_; }

  std::int64_t alignment() const { return alignment_; }

  // Fills Resource::content, on first use: only a document made of several forms needs it.
  void ReadContents();

 private:
  void ReadResources(const pdf::Object& resources, pdf::Arena& arena);
  std::string ContentOf(const pdf::Object& value);
  bool AppendContent(std::string& out, const pdf::Object& value, int depth);

  pdf::Document* document_;
  std::vector<Category> categories_;
  std::optional<std::string_view> appearance_;
  std::int64_t alignment_ = 0;
  bool has_contents_ = false;
  std::uint32_t loads_left_;  // objects that may still be read for contents
};

// The defaults of form fields of a document being made.
class TargetFieldDefaults {
 public:
  // What the fields of one source must say for themselves.
  struct Differences {
    ResourceNames names;
    std::optional<std::string> appearance;  // for those without one of their own
    std::optional<std::int64_t> alignment;
  };

  // Brings a source's defaults in. Where the same name stands for another resource already, the new
  // one gets a new name. Large ones, such as embedded fonts, wait for AddUsed unless all is to
  // come.
  Differences Add(SourceFieldDefaults& source, pdf::ObjectCopier& objects, bool is_whole);
  // Brings in what was waiting and is used.
  void AddUsed(const Differences& differences, pdf::ObjectCopier& objects);

  // The form dictionary's entries.
  void AppendTo(std::string& form) const;

 private:
  struct Category {
    std::string name;
    std::string entries;  // as text
    TakenNames names;
    std::unordered_map<std::string, std::string> contents;  // by name
    std::unordered_map<std::string, std::string> names_by_content;
  };

  Category& CategoryOf(std::string_view name);
  void AddCategory(const SourceFieldDefaults::Category& source, pdf::ObjectCopier& objects,
                   bool is_whole, ResourceNames& names);
  static std::optional<std::string> SharedName(const Category& category,
                                               const SourceFieldDefaults::Resource& resource);
  static void AddEntry(Category& category, const std::string& name, const pdf::Object& value,
                       pdf::ObjectCopier& objects);

  bool is_empty_ = true;  // nothing was added yet
  std::vector<Category> categories_;
  std::unordered_map<std::string, std::size_t> category_places_;  // in categories_, by name
  std::optional<std::string> appearance_;
  std::int64_t alignment_ = 0;
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_FIELDS_FIELDDEFAULTS_H_
