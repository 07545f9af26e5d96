// Names that several sources share, and numbered ones for those that come second.
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_FIELDS_FIELDNAMES_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_FIELDS_FIELDNAMES_H_

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace TarnixTools::engines::toolbox {

class TakenNames {
 public:
  bool empty() const { return names_.empty(); }

  bool Contains(const std::string& name) const { return names_.contains(name); }

  void Add(const std::string& name) { names_.insert(name); }

  void Add(const std::unordered_set<std::string>& names) {
    names_.insert(names.begin(), names.end());
  }

  // What must follow a name so that nobody has it: "_2", or the next number that makes it new here
  // and to is_taken.
  std::string SuffixFor(const std::string& name,
                        const std::function<bool(const std::string&)>& is_taken);

 private:
  std::unordered_set<std::string> names_;
  std::unordered_map<std::string, std::uint32_t> next_;  // number to try, by name
};

// Root fields of one source that have another name in the target.
class FieldRenames {
 public:
  bool empty() const { return suffixes_.empty(); }

  // name: UTF-8.
  void Add(const std::string& name, const std::string& suffix) { suffixes_[name] = suffix; }

  // What follows the name; null for one that was not renamed.
  const std::string* SuffixOf(const std::string& name) const;
  // A text string that is a field's full name ("root.kid.kid"), as the target says it.
  std::string Apply(std::string_view full_name) const;

 private:
  std::unordered_map<std::string, std::string> suffixes_;
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_FIELDS_FIELDNAMES_H_
