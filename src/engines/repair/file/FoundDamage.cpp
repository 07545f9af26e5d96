#include "engines/repair/file/FoundDamage.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <unordered_set>
#include <vector>

#include "pdf/write/ReachedObjects.h"

namespace TarnixTools::engines::repair {

namespace {

using pdf::FindingCode;

struct Row {
  FindingCode finding;
  ProblemCode problem;
  Outcome outcome;
};

constexpr auto kRows = std::to_array<Row>({
    {FindingCode::kHeaderMissing, ProblemCode::kHeaderMissing, Outcome::kFixed},
    {FindingCode::kHeaderNotFirst, ProblemCode::kHeaderNotFirst, Outcome::kFixed},
    {FindingCode::kStartXrefMissing, ProblemCode::kStartXrefMissing, Outcome::kFixed},
    {FindingCode::kXrefDamaged, ProblemCode::kXrefDamaged, Outcome::kFixed},
    {FindingCode::kXrefLoop, ProblemCode::kXrefLoop, Outcome::kFixed},
    {FindingCode::kXrefRebuilt, ProblemCode::kXrefRebuilt, Outcome::kWorkedAround},
    {FindingCode::kTrailerRebuilt, ProblemCode::kTrailerRebuilt, Outcome::kWorkedAround},
    {FindingCode::kCatalogInTrailer, ProblemCode::kCatalogInTrailer, Outcome::kFixed},
    {FindingCode::kObjectMissing, ProblemCode::kObjectMissing, Outcome::kLost},
    {FindingCode::kObjectDamaged, ProblemCode::kObjectDamaged, Outcome::kLost},
    {FindingCode::kObjectStreamDamaged, ProblemCode::kObjectStreamDamaged, Outcome::kLost},
    {FindingCode::kPageTreeDamaged, ProblemCode::kPageTreeDamaged, Outcome::kWorkedAround},
    {FindingCode::kPageTreeLoop, ProblemCode::kPageTreeLoop, Outcome::kWorkedAround},
    {FindingCode::kPageCountWrong, ProblemCode::kPageCountWrong, Outcome::kFixed},
    {FindingCode::kPagesSalvaged, ProblemCode::kPagesSalvaged, Outcome::kWorkedAround},
    {FindingCode::kPageAdopted, ProblemCode::kPageAdopted, Outcome::kFixed},
    {FindingCode::kPagesMissing, ProblemCode::kPagesMissing, Outcome::kLost},
    {FindingCode::kStringUndecryptable, ProblemCode::kDataUndecryptable, Outcome::kLost},
});

// Numbers that what will be written refers to, of objects that are there and of others.
std::unordered_set<std::uint32_t> NeededObjects(pdf::Document& document,
                                                pdf::DocumentRewriter& rewriter) {
  std::vector<std::uint32_t> numbers;
  std::unordered_set<std::uint32_t> needed;
  const auto take = [&](const pdf::Object& value) {
    numbers.clear();
    pdf::CollectReferences(value, numbers);
    needed.insert(numbers.begin(), numbers.end());
  };
  take(document.trailer());
  pdf::ForEachReached(document, rewriter,
                      [&](std::uint32_t /*number*/, const pdf::Object& value) { take(value); });
  return needed;
}

class FoundDamage {
 public:
  FoundDamage(pdf::Document& document, pdf::DocumentRewriter& rewriter, ProblemList& problems)
      : document_(&document), rewriter_(&rewriter), problems_(&problems) {}

  void Add(const pdf::Finding& finding) {
    const auto row = std::ranges::find(kRows, finding.code, &Row::finding);
    const std::uint64_t offset = finding.object == 0 ? finding.offset : 0;
    if (row == kRows.end() || IsPlain(finding) ||
        !listed_.insert({row->problem, finding.object, offset}).second) {
      return;
    }
    Problem problem = {.code = row->problem,
                       .outcome = row->outcome,
                       .object = finding.object,
                       .detail = DetailOf(finding)};
    if (offset != 0) {
      problem.offset = offset;
    }
    if (finding.code == FindingCode::kObjectMissing && !IsNeeded(finding.object)) {
      problem.code = ProblemCode::kXrefEntryWrong;
      problem.outcome = Outcome::kFixed;
    } else if (finding.code == FindingCode::kObjectDamaged && !IsNeeded(finding.object)) {
      problem.outcome = Outcome::kFixed;
    }
    problems_->Add(std::move(problem));
  }

 private:
  bool IsNeeded(std::uint32_t number) {
    if (!needed_) {
      needed_ = NeededObjects(*document_, *rewriter_);
    }
    return needed_->contains(number) || document_->IsCatalogObject(number);
  }

  // What is never encrypted (7.6.2): the identifier in a cross-reference stream, and the bytes of a
  // signature.
  bool IsPlain(const pdf::Finding& finding) const {
    if (finding.code != FindingCode::kStringUndecryptable) {
      return false;
    }
    pdf::Arena arena;
    const pdf::Object value = document_->Load({finding.object, 0}, arena);
    return value.Get("Type").IsName("XRef") || value.Has("ByteRange");
  }

  std::string DetailOf(const pdf::Finding& finding) const {
    if (finding.code != FindingCode::kXrefRebuilt) {
      return {};
    }
    std::size_t elsewhere = 0;
    for (std::uint32_t number = 1; number < document_->object_limit(); ++number) {
      elsewhere += document_->IsLost(number) ? 1 : 0;
    }
    return elsewhere > 0 ? std::to_string(elsewhere) + " not in their places" : std::string();
  }

  pdf::Document* document_;
  pdf::DocumentRewriter* rewriter_;
  ProblemList* problems_;
  std::set<std::tuple<ProblemCode, std::uint32_t, std::uint64_t>> listed_;
  std::optional<std::unordered_set<std::uint32_t>> needed_;
};

}  // namespace

void ListFoundDamage(pdf::Document& document, pdf::DocumentRewriter& rewriter,
                     ProblemList& problems) {
  FoundDamage damage(document, rewriter, problems);
  const std::vector<pdf::Finding> findings = document.findings().kept();  // it may grow meanwhile
  for (const pdf::Finding& finding : findings) {
    damage.Add(finding);
  }
}

}  // namespace TarnixTools::engines::repair
