#include "engines/toolbox/copy/structure/StructureNames.h"

#include <algorithm>
#include <array>
#include <optional>

#include "engines/toolbox/Limits.h"
#include "pdf/write/Serialize.h"
#include "pdf/write/TreeWriter.h"

namespace TarnixTools::engines::toolbox {

using pdf::Object;

namespace {

// The standard structure types (14.8.4), in alphabetic order. A role map may give them another
// meaning, but most documents use them as they are.
constexpr std::array<std::string_view, 57> kStandardTypes = {"Annot",
                                                             "Art",
                                                             "Artifact",
                                                             "Aside",
                                                             "BibEntry",
                                                             "BlockQuote",
                                                             "Caption",
                                                             "Code",
                                                             "Div",
                                                             "Document",
                                                             "DocumentFragment",
                                                             "Em",
                                                             "FENote",
                                                             "Figure",
                                                             "Form",
                                                             "Formula",
                                                             "H",
                                                             "H1",
                                                             "H2",
                                                             "H3",
                                                             "H4",
                                                             "H5",
                                                             "H6",
                                                             "Index",
                                                             "L",
                                                             "LBody",
                                                             "LI",
                                                             "Lbl",
                                                             "Link",
                                                             "NonStruct",
                                                             "Note",
                                                             "P",
                                                             "Part",
                                                             "Private",
                                                             "Quote",
                                                             "RB",
                                                             "RP",
                                                             "RT",
                                                             "Reference",
                                                             "Ruby",
                                                             "Sect",
                                                             "Span",
                                                             "Strong",
                                                             "Sub",
                                                             "TBody",
                                                             "TD",
                                                             "TFoot",
                                                             "TH",
                                                             "THead",
                                                             "TOC",
                                                             "TOCI",
                                                             "TR",
                                                             "Table",
                                                             "Title",
                                                             "WP",
                                                             "WT",
                                                             "Warichu"};

static_assert(std::is_sorted(kStandardTypes.begin(), kStandardTypes.end()));

bool IsStandardType(std::string_view name) {
  return std::binary_search(kStandardTypes.begin(), kStandardTypes.end(), name);
}

// A name like this one that is neither in the target nor in the source.
template <typename Taken>
std::string NewName(std::string_view name, const NamedValues& source, const Taken& taken) {
  for (int i = 2;; ++i) {
    std::string candidate = std::string(name) + "_" + std::to_string(i);
    if (!taken.contains(candidate) && source.Get(candidate).IsNull()) {
      return candidate;
    }
  }
}

}  // namespace

NamedValues::NamedValues(const Object& dictionary) {
  for (const pdf::DictionaryEntry& entry : dictionary.Entries()) {
    if (values_.insert_or_assign(entry.Key(), entry.value).second) {
      names_.push_back(entry.Key());
    }
  }
}

Object NamedValues::Get(std::string_view name) const {
  const auto found = values_.find(name);
  return found == values_.end() ? Object() : found->second;
}

std::string_view MeaningOf(const NamedValues& roles, std::string_view name) {
  for (std::size_t i = 0; i < limits::kMaxRoleSteps; ++i) {
    const Object next = roles.Get(name);
    if (!next.IsName() || next.Text() == name) {
      break;
    }
    name = next.Text();
  }
  return name;
}

std::string TargetRoles::Join(const NamedValues& source, std::string_view name, bool is_first,
                              JoinedNames& joined_before) {
  std::vector<std::string_view> chain = {name};
  while (chain.size() <= limits::kMaxRoleSteps &&
         !joined_before.contains(std::string(chain.back()))) {
    const Object next = source.Get(chain.back());
    if (!next.IsName() || std::find(chain.begin(), chain.end(), next.Text()) != chain.end()) {
      break;
    }
    chain.push_back(next.Text());
  }
  // From the end, so that each name's own value is settled before it.
  std::optional<std::string> joined;
  if (const auto known = joined_before.find(std::string(chain.back()));
      known != joined_before.end()) {
    joined = known->second;
    chain.pop_back();
  } else if (const Object last = source.Get(chain.back()); last.IsName()) {
    joined = std::string(last.Text());
  }
  for (; !chain.empty(); chain.pop_back()) {
    const std::string_view next = chain.back();
    joined = joined ? JoinOne(source, next, *joined, is_first) : std::string(next);
    joined_before.emplace(next, *joined);
  }
  return *std::move(joined);
}

// Elements of other sources use a standard type without asking the role map.
bool TargetRoles::HasRoomFor(std::string_view name, bool is_first) const {
  return !roles_.contains(name) && (is_first || !IsStandardType(name));
}

std::string_view TargetRoles::Meaning(std::string_view name) const {
  const auto known = roles_.find(name);
  return known == roles_.end() ? name : std::string_view(known->second.meaning);
}

std::string TargetRoles::JoinOne(const NamedValues& source, std::string_view name,
                                 const std::string& value, bool is_first) {
  const std::string meaning(MeaningOf(source, name));
  const auto known = roles_.find(name);
  const bool is_free = HasRoomFor(name, is_first);
  if (known != roles_.end() ? known->second.meaning == meaning : !is_free && meaning == name) {
    return std::string(name);
  }
  std::string joined(name);
  for (int i = 2; !is_free; ++i) {
    joined = std::string(name) + "_" + std::to_string(i);
    const auto other = roles_.find(joined);
    if (other == roles_.end() ? source.Get(joined).IsNull() : other->second.meaning == meaning) {
      break;
    }
  }
  roles_.emplace(joined, Role{value, meaning});
  return joined;
}

std::string TargetRoles::Text() const {
  if (roles_.empty()) {
    return {};
  }
  std::string text = "<<";
  for (const auto& [name, role] : roles_) {
    pdf::AppendName(text, name);
    pdf::AppendName(text, role.value);
  }
  return text + ">>";
}

std::string TargetClasses::Join(const NamedValues& source, std::string_view name,
                                const std::string& value) {
  const auto known = classes_.find(name);
  if (known != classes_.end() && known->second == value) {
    return std::string(name);
  }
  std::string joined =
      known == classes_.end() ? std::string(name) : NewName(name, source, classes_);
  classes_.emplace(joined, value);
  return joined;
}

std::string TargetClasses::Text() const {
  if (classes_.empty()) {
    return {};
  }
  std::string text = "<<";
  for (const auto& [name, value] : classes_) {
    pdf::AppendName(text, name);
    pdf::AppendToken(text, value);
  }
  return text + ">>";
}

std::string TargetIds::Write(pdf::FileWriter& writer) const {
  std::vector<const std::pair<const std::string, std::uint32_t>*> sorted;
  sorted.reserve(numbers_.size());
  for (const auto& entry : numbers_) {
    sorted.push_back(&entry);
  }
  std::sort(sorted.begin(), sorted.end(), [](auto a, auto b) { return a->first < b->first; });
  pdf::TreeWriter tree(writer, "Names");
  for (const auto* entry : sorted) {
    std::string key;
    pdf::AppendString(key, entry->first, false);
    std::string value;
    pdf::AppendReference(value, entry->second);
    tree.Add(key, value);
  }
  return tree.Finish();
}

}  // namespace TarnixTools::engines::toolbox
