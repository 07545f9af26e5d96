// A check looks at one part of a document: it lists what is wrong there, and says what repair is to
// write in its place. Whether that is written is not its business; analysis and repair run the same
// checks.
//
//   void CheckOutline(CheckContext& context) {
//     ...
//     context.problems.Add({.code = ProblemCode::kOutlineLoop, .object = number});
//     context.rewriter.RemoveEntry(number, "Next");
//   }
//
// The check of the file comes first and looks for every object: behind it the document is not
// rebuilt any more. Damage that the core meets is a finding of the document, which is listed when all
// checks are through. The table in Check.cpp has a row for each check; one that throws for a damaged
// document ends there, and the others go on.
#ifndef TARNIX_ENGINES_REPAIR_CHECKS_CHECK_H_
#define TARNIX_ENGINES_REPAIR_CHECKS_CHECK_H_

#include <cstdint>
#include <span>

#include "engines/repair/ProblemList.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"
#include "pdf/write/DocumentRewriter.h"

namespace TarnixTools::engines::repair {

struct CheckContext {
  pdf::Document& document;
  const pdf::PageTree& pages;
  pdf::DocumentRewriter& rewriter;  // changes that cost much are made later (ChangeLater)
  ProblemList& problems;
};

struct Check {
  std::uint32_t analysis;  // one of AnalysisBits
  void (*run)(CheckContext& context);
};

// In the order in which they run.
std::span<const Check> Checks();

}  // namespace TarnixTools::engines::repair

#endif  // TARNIX_ENGINES_REPAIR_CHECKS_CHECK_H_
