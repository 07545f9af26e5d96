// Names that structure elements use and the root of the tree explains: element types by the role
// map, attribute classes by the class map (ISO 32000-2, 14.7.3 and 14.7.6.2), and the elements'
// ids. Where sources that are joined use one name for different things, the later gets a new one.
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_STRUCTURE_STRUCTURENAMES_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_STRUCTURE_STRUCTURENAMES_H_

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "pdf/syntax/Object.h"

namespace TarnixTools::pdf {
class FileWriter;
}  // namespace TarnixTools::pdf

namespace TarnixTools::engines::toolbox {

// A dictionary that may be large, by name.
class NamedValues {
 public:
  NamedValues() = default;
  // The dictionary outlives this. Other values count as an empty one.
  explicit NamedValues(const pdf::Object& dictionary);

  // Null for none.
  pdf::Object Get(std::string_view name) const;

  // The names in the dictionary's order.
  const std::vector<std::string_view>& names() const { return names_; }

 private:
  std::vector<std::string_view> names_;
  std::unordered_map<std::string_view, pdf::Object> values_;
};

// What a type is in the end, after following the role map.
std::string_view MeaningOf(const NamedValues& roles, std::string_view name);

// The role map of a document being made.
class TargetRoles {
 public:
  // Types of one source, by the names by which they are known in the target.
  using JoinedNames = std::unordered_map<std::string, std::string>;

  // The name by which a source's type is known in the target, with all that it needs in the role
  // map.
  //   is_first      - no element of another source is in the target
  //   joined_before - what earlier calls for this source gave; gets what this one gives
  std::string Join(const NamedValues& source, std::string_view name, bool is_first,
                   JoinedNames& joined_before);

  // Whether a type that is not in the role map yet can come into it under its own name.
  bool HasRoomFor(std::string_view name, bool is_first) const;

  // What a type is in the end.
  std::string_view Meaning(std::string_view name) const;

  // "<</Name/Type...>>"; empty when there are none.
  std::string Text() const;

 private:
  struct Role {
    std::string value;
    std::string meaning;
  };

  std::string JoinOne(const NamedValues& source, std::string_view name, const std::string& value,
                      bool is_first);

  std::map<std::string, Role, std::less<>> roles_;
};

// The class map of a document being made.
class TargetClasses {
 public:
  // The name by which a source's class is known in the target. value: its attributes as text.
  std::string Join(const NamedValues& source, std::string_view name, const std::string& value);

  std::string Text() const;

 private:
  std::map<std::string, std::string, std::less<>> classes_;
};

// The ids of a document being made.
class TargetIds {
 public:
  bool empty() const { return numbers_.empty(); }

  bool Has(const std::string& id) const { return numbers_.contains(id); }

  // Does nothing for an id that is there already.
  void Add(const std::string& id, std::uint32_t number) { numbers_.emplace(id, number); }

  // Writes the ID tree and returns its root as text.
  std::string Write(pdf::FileWriter& writer) const;

 private:
  std::unordered_map<std::string, std::uint32_t> numbers_;
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_STRUCTURE_STRUCTURENAMES_H_
