#include "engines/pdfa/rules/FindingList.h"

#include <algorithm>
#include <utility>

namespace TarnixTools::engines::pdfa {

namespace {

bool IsSame(const Finding& finding, const Place& place, std::string_view subject) {
  return finding.object == place.object && finding.page_number == place.page_number &&
         finding.subject == subject && finding.box.has_value() == place.box.has_value();
}

// The numbers of a clause, which compare as "6.1.10" after "6.1.9" does.
std::vector<int> NumbersOf(std::string_view clause) {
  std::vector<int> numbers(1);
  for (const char c : clause) {
    if (c == '.') {
      numbers.push_back(0);
    } else {
      numbers.back() = numbers.back() * 10 + (c - '0');
    }
  }
  return numbers;
}

}  // namespace

void FindingList::Add(const void* rule, const Finding& finding, const Place& place) {
  std::vector<std::size_t>& known = of_rule_[rule];
  const std::string_view subject = place.subject.substr(0, limits::kMaxSubjectBytes);
  for (const std::size_t index : known) {
    if (IsSame(findings_[index], place, subject)) {
      return;
    }
  }
  if (known.size() < most_of_rule_) {
    known.push_back(findings_.size());
    findings_.push_back({finding.rule, finding.wrong, finding.cure, place.object, place.page_number,
                         place.box, std::string(subject)});
  }
}

std::vector<Finding> FindingList::Take() {
  std::stable_sort(findings_.begin(), findings_.end(), [](const Finding& a, const Finding& b) {
    return std::pair(NumbersOf(a.rule.clause), a.rule.test) <
           std::pair(NumbersOf(b.rule.clause), b.rule.test);
  });
  return std::exchange(findings_, {});
}

}  // namespace TarnixTools::engines::pdfa
