#include "engines/pdfa/Validation.h"

#include "engines/pdfa/checks/CheckedDocument.h"
#include "engines/pdfa/checks/FileCheck.h"
#include "engines/pdfa/checks/OutputProfiles.h"

namespace TarnixTools::engines::pdfa {

ValidationResult Validate(pdf::Document& document, Level level, std::size_t most_of_rule) {
  FindingList findings(level, most_of_rule);
  CheckedDocument checked(document, findings);
  FileCheck(checked).Run();
  CheckOutputIntents(checked);
  const std::size_t count = findings.count();
  return {level, findings.Take(), count};
}

}  // namespace TarnixTools::engines::pdfa
