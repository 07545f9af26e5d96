#include "engines/pdfa/Findings.h"

#include <algorithm>
#include <memory>
#include <sstream>
#include <utility>

#include "engines/pdfa/Validation.h"

namespace TarnixTools::testing {

namespace {

engines::pdfa::ValidationResult Validate(const std::string& bytes, const std::string& level) {
  const auto document = pdf::Document::Open(std::make_unique<pdf::MemorySource>(bytes), "");
  return engines::pdfa::Validate(*document, *engines::pdfa::LevelOf(level[0] - '0', level[1]));
}

}  // namespace

std::set<std::string> BrokenRules(const std::string& bytes, const std::string& level) {
  std::set<std::string> rules;
  for (const engines::pdfa::Finding& finding : Validate(bytes, level).findings) {
    rules.insert(finding.rule.clause + ("-" + std::to_string(finding.rule.test)));
  }
  return rules;
}

std::string TextOf(const std::vector<engines::pdfa::Finding>& findings) {
  std::ostringstream text;
  for (const engines::pdfa::Finding& finding : findings) {
    text << finding.rule.clause << '-' << finding.rule.test;
    if (finding.page_number != 0) {
      text << " page " << finding.page_number;
    }
    if (finding.object != 0) {
      text << " object " << finding.object;
    }
    if (finding.box) {
      text << " [" << finding.box->left << ' ' << finding.box->bottom << ' ' << finding.box->right
           << ' ' << finding.box->top << ']';
    }
    text << (finding.subject.empty() ? "" : " (" + finding.subject + ")") << '\n';
  }
  return text.str();
}

std::string TextOfLevels(const std::function<std::string(const std::string&)>& findings_at) {
  std::vector<std::pair<std::string, std::string>> said;
  for (const char* level : {"1a", "1b", "2a", "2b", "2u", "3a", "3b", "3u"}) {
    const std::string text = findings_at(level);
    const auto same = std::find_if(said.begin(), said.end(),
                                   [&](const auto& known) { return known.second == text; });
    if (same == said.end()) {
      said.emplace_back(level, text);
    } else {
      same->first += std::string(" ") + level;
    }
  }
  std::string all;
  for (const auto& [levels, text] : said) {
    std::istringstream lines(text);
    all += text.empty() ? levels + ":\n" : "";
    for (std::string line; std::getline(lines, line);) {
      all += levels + ": " + line + '\n';
    }
  }
  return all;
}

std::string FindingsOf(const std::string& bytes, const std::string& level) {
  return TextOf(Validate(bytes, level).findings);
}

}  // namespace TarnixTools::testing
