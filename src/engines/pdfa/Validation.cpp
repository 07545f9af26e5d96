#include "engines/pdfa/Validation.h"

#include "engines/pdfa/checks/ActionCheck.h"
#include "engines/pdfa/checks/AnnotationCheck.h"
#include "engines/pdfa/checks/CatalogCheck.h"
#include "engines/pdfa/checks/CheckedDocument.h"
#include "engines/pdfa/checks/ContentCheck.h"
#include "engines/pdfa/checks/FileCheck.h"
#include "engines/pdfa/checks/FormCheck.h"
#include "engines/pdfa/checks/MetadataCheck.h"
#include "engines/pdfa/checks/OutputProfiles.h"
#include "engines/pdfa/checks/StructureCheck.h"
#include "foundation/JobWatch.h"

namespace TarnixTools::engines::pdfa {

namespace {

void CheckPages(CheckedDocument& checked, ActionCheck& actions) {
  ContentCheck content(checked);
  JobSteps steps(static_cast<std::int64_t>(checked.pages().pages().size()));
  for (std::size_t i = 0; i < checked.pages().pages().size(); ++i) {
    pdf::Arena arena;
    const pdf::Object page = checked.LoadPage(i, arena);
    CheckPage(checked, page, i);
    actions.CheckAll(page.Get("AA"), {.page_number = i + 1});
    CheckAnnotations(checked, actions, page, i);
    content.CheckPage(i);
    steps.Done();
  }
  content.CheckFonts();
}

}  // namespace

ValidationResult Validate(pdf::Document& document, Level level, const ValidationOptions& options) {
  FindingList findings(level, options.most_of_rule);
  CheckedDocument checked(document, findings, options.embedded_depth);
  FileCheck(checked).Run();
  CheckCatalog(checked);
  CheckOutputIntents(checked);
  CheckMetadata(checked);
  CheckLayers(checked);
  ActionCheck actions(checked);
  actions.CheckDocument();
  CheckForm(checked, actions);
  CheckPages(checked, actions);
  CheckStructure(checked);
  return {findings.Take()};
}

}  // namespace TarnixTools::engines::pdfa
