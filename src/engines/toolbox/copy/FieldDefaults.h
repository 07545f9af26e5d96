// What a form's fields take from the form dictionary: resources, appearance, alignment (ISO
// 32000-2, 12.7.3).
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_FIELDDEFAULTS_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_FIELDDEFAULTS_H_

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "engines/toolbox/copy/FieldNames.h"
#include "pdf/syntax/Arena.h"
#include "pdf/syntax/Object.h"

namespace TarnixTools::pdf {
class Document;
class ObjectCopier;
}  // namespace TarnixTools::pdf

namespace TarnixTools::engines {

// Resources that have another name in the target.
class ResourceRenames {
 public:
  bool empty() const { return names_.empty(); }

  void Add(std::string_view category, std::string_view from, const std::string& to) {
    names_[{std::string(category), std::string(from)}] = to;
  }

  // A default appearance string (12.7.4.3) with the new names in it.
  std::string Apply(std::string_view appearance) const;

 private:
  const std::string* Find(std::string_view category, std::string_view name) const;

  std::map<std::pair<std::string, std::string>, std::string> names_;
};

// Of a source; read once.
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

// Of a document being made.
class TargetFieldDefaults {
 public:
  // What the fields of one source must say for themselves.
  struct Differences {
    ResourceRenames renames;
    std::optional<std::string> appearance;  // for those without one of their own
    std::optional<std::int64_t> alignment;
  };

  // Brings a source's defaults in. Where the same name stands for another resource already, the new
  // one gets a new name.
  Differences Add(SourceFieldDefaults& source, pdf::ObjectCopier& objects);

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
  void AddResource(Category& category, const SourceFieldDefaults::Resource& resource,
                   const std::unordered_set<std::string>& source_names, pdf::ObjectCopier& objects,
                   ResourceRenames& renames);

  bool is_empty_ = true;  // nothing was added yet
  std::vector<Category> categories_;
  std::optional<std::string> appearance_;
  std::int64_t alignment_ = 0;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_FIELDDEFAULTS_H_
