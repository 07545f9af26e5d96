#include "engines/pdfa/checks/StructureCheck.h"

#include <array>
#include <string>
#include <unordered_map>
#include <unordered_set>

#include "engines/pdfa/checks/NodeWalk.h"
#include "engines/pdfa/checks/ReadableNames.h"
#include "engines/pdfa/rules/StructureFacts.h"
#include "engines/pdfa/vocabulary/OneOf.h"
#include "pdf/tree/TextString.h"

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

class RoleMap {
 public:
  RoleMap(CheckedDocument& checked, const pdf::Object& map) : part_(PartOf(checked.level())) {
    pdf::Arena arena;
    const pdf::Object entries = checked.document().Resolve(map, arena);
    for (const pdf::DictionaryEntry& entry : entries.Entries()) {
      const pdf::Object role = checked.document().Resolve(entry.value, arena);
      roles_[std::string(entry.Key())] = role.Text();
    }
  }

  StructureElementFacts FactsOf(std::string_view type) const {
    StructureElementFacts facts;
    std::unordered_set<std::string> passed;
    std::string role(type);
    while (!IsStandard(role) || passed.empty()) {
      const auto next = roles_.find(role);
      if (next == roles_.end()) {
        break;
      }
      if (!passed.insert(role).second) {
        facts.is_mapped_in_circle = true;
        break;
      }
      role = next->second;
    }
    facts.leads_to_standard_type = IsStandard(role);
    facts.is_remapped_standard_type = IsStandard(type) && !facts.leads_to_standard_type;
    return facts;
  }

 private:
  bool IsStandard(std::string_view type) const {
    return IsOneOf(type, kTypes) ||
           (part_ > 1 && (IsOneOf(type, kLaterTypes) || type == kLastType));
  }

  int part_;
  std::unordered_map<std::string, std::string> roles_;
};

void CheckElement(CheckedDocument& checked, const RoleMap& roles, const pdf::Followed& element) {
  pdf::Arena arena;
  const pdf::Object type = checked.Get(element.value, "S", arena);
  const Place place = {.object = element.number, .subject = type.Text()};
  if (type.IsName()) {
    checked.findings().Check(roles.FactsOf(type.Text()), place);
    CheckReadableName(checked.findings(), type.Text(), place);
  }
  const pdf::Object language = checked.Get(element.value, "Lang", arena);
  if (language.IsString()) {
    const std::string tag = pdf::TextStringToUtf8(language.Text());
    checked.findings().Check(LanguageFacts{tag}, {.object = element.number, .subject = tag});
  }
}

// Of content, and of an object: they have no structure of their own.
bool IsElement(const pdf::Object& kid) {
  const pdf::Object type = kid.Get("Type");
  return !type.IsName("MCR") && !type.IsName("OBJR");
}

}  // namespace

void CheckStructure(CheckedDocument& checked) {
  pdf::Arena arena;
  const pdf::Object root = checked.Get(checked.document().Catalog(arena), "StructTreeRoot", arena);
  const RoleMap roles(checked, root.Get("RoleMap"));
  NodeWalk elements(checked.document());
  elements.Add(root.Get("K"));
  while (const pdf::Followed* element = elements.Next()) {
    if (IsElement(element->value)) {
      CheckElement(checked, roles, *element);
      elements.Add(element->value.Get("K"));
    }
  }
}

}  // namespace TarnixTools::engines::pdfa
