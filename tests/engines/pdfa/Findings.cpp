#include "engines/pdfa/Findings.h"

#include <memory>

#include "engines/pdfa/Validation.h"

namespace TarnixTools::testing {

std::set<std::string> BrokenRules(const std::string& bytes, const std::string& level) {
  const auto document = pdf::Document::Open(std::make_unique<pdf::MemorySource>(bytes), "");
  const engines::pdfa::ValidationResult result =
      engines::pdfa::Validate(*document, *engines::pdfa::LevelOf(level[0] - '0', level[1]));
  std::set<std::string> rules;
  for (const engines::pdfa::Finding& finding : result.findings) {
    rules.insert(finding.rule.clause + ("-" + std::to_string(finding.rule.test)));
  }
  return rules;
}

}  // namespace TarnixTools::testing
