#include "engines/pdfa/vocabulary/StructureRoles.h"

#include <array>
#include <unordered_set>

#include "engines/pdfa/vocabulary/OneOf.h"

namespace TarnixTools::engines::pdfa {

namespace {

// PDF Reference 1.4, 9.7.4; ISO 32000-1, 14.8.4.
constexpr std::array<std::string_view, 39> kTypes = {"Document", "Part",      "Art",
                                                     "Sect",     "Div",       "BlockQuote",
                                                     "Caption",  "TOC",       "TOCI",
                                                     "Index",    "NonStruct", "Private",
                                                     "P",        "H",         "H1",
                                                     "H2",       "H3",        "H4",
                                                     "H5",       "H6",        "L",
                                                     "LI",       "Lbl",       "LBody",
                                                     "Table",    "TR",        "TH",
                                                     "TD",       "Span",      "Quote",
                                                     "Note",     "Reference", "BibEntry",
                                                     "Code",     "Link",      "Figure",
                                                     "Formula",  "Form",      "StructTreeRoot"};

// That ISO 32000-1 has beside those.
constexpr std::array<std::string_view, 10> kLaterTypes = {
    "THead", "TBody", "TFoot", "Annot", "Ruby", "RB", "RT", "RP", "Warichu", "WT"};
constexpr std::string_view kLastType = "WP";

}  // namespace

StructureRoles::StructureRoles(pdf::Document& document, const pdf::Object& map, int part)
    : part_(part) {
  pdf::Arena arena;
  const pdf::Object entries = document.Resolve(map, arena);
  for (const pdf::DictionaryEntry& entry : entries.Entries()) {
    const pdf::Object role = document.Resolve(entry.value, arena);
    roles_[std::string(entry.Key())] = role.Text();
  }
}

StructureRole StructureRoles::RoleOf(std::string_view type) const {
  StructureRole found;
  std::unordered_set<std::string> passed;
  std::string role(type);
  while (!IsStandard(role) || passed.empty()) {
    const auto next = roles_.find(role);
    if (next == roles_.end()) {
      break;
    }
    if (!passed.insert(role).second) {
      found.is_circle = true;
      break;
    }
    role = next->second;
  }
  found.is_standard = IsStandard(role);
  found.is_remapped = IsStandard(type) && !found.is_standard;
  return found;
}

bool StructureRoles::IsStandard(std::string_view type) const {
  return IsOneOf(type, kTypes) || (part_ > 1 && (IsOneOf(type, kLaterTypes) || type == kLastType));
}

}  // namespace TarnixTools::engines::pdfa
