#include "engines/pdfa/checks/FormCheck.h"

#include "engines/pdfa/checks/NodeWalk.h"
#include "engines/pdfa/checks/SignatureCheck.h"
#include "engines/pdfa/rules/FormFacts.h"

namespace TarnixTools::engines::pdfa {

namespace {

// Kids without a name are widgets of their field, and no fields.
bool IsField(const pdf::Object& node) {
  return node.Has("T") || !node.Get("Subtype").IsName("Widget");
}

void CheckPermissions(CheckedDocument& checked, const pdf::Object& catalog) {
  pdf::Arena arena;
  const pdf::Object permissions = checked.Get(catalog, "Perms", arena);
  PermissionsFacts facts;
  for (const pdf::DictionaryEntry& entry : permissions.Entries()) {
    facts.has_others |= entry.Key() != "DocMDP" && entry.Key() != "UR3";
  }
  checked.findings().Check(facts);
}

}  // namespace

void CheckForm(CheckedDocument& checked, ActionCheck& actions) {
  pdf::Arena arena;
  const pdf::Object catalog = checked.document().Catalog(arena);
  CheckPermissions(checked, catalog);
  const pdf::Followed form = checked.document().Follow(catalog.Get("AcroForm"), arena);
  const pdf::Object needs = checked.Get(form.value, "NeedAppearances", arena);
  checked.findings().Check(
      FormFacts{.needs_appearances = needs.BooleanOr(false), .has_xfa = form.value.Has("XFA")},
      {.object = form.number});
  NodeWalk fields(checked.document());
  fields.Add(form.value.Get("Fields"));
  while (const pdf::Followed* field = fields.Next()) {
    if (IsField(field->value)) {
      const Place place = {.object = field->number};
      checked.findings().Check(FieldFacts{field->value.Has("AA")}, place);
      actions.CheckAll(field->value.Get("AA"), place);
      CheckSignatureField(checked, *field);
    }
    fields.Add(field->value.Get("Kids"));
  }
}

}  // namespace TarnixTools::engines::pdfa
