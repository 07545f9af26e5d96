#include "engines/pdfa/checks/StructureCheck.h"

#include <string>

#include "engines/pdfa/checks/NodeWalk.h"
#include "engines/pdfa/checks/ReadableNames.h"
#include "engines/pdfa/rules/StructureFacts.h"
#include "engines/pdfa/vocabulary/StructureRoles.h"
#include "pdf/tree/TextString.h"

namespace TarnixTools::engines::pdfa {

namespace {

StructureElementFacts FactsOf(const StructureRole& role) {
  return {.leads_to_standard_type = role.is_standard,
          .is_mapped_in_circle = role.is_circle,
          .is_remapped_standard_type = role.is_remapped};
}

void CheckElement(CheckedDocument& checked, const StructureRoles& roles,
                  const pdf::Followed& element) {
  pdf::Arena arena;
  const pdf::Object type = checked.Get(element.value, "S", arena);
  const Place place = {.object = element.number, .subject = type.Text()};
  if (type.IsName()) {
    checked.findings().Check(FactsOf(roles.RoleOf(type.Text())), place);
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
  const StructureRoles roles(checked.document(), root.Get("RoleMap"), PartOf(checked.level()));
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
