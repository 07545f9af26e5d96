// Checks actions (ISO 19005-1, 6.6; -2 and -3, 6.5): each once, wherever it stands, and those that
// follow it.
#ifndef TARNIX_ENGINES_PDFA_CHECKS_ACTIONCHECK_H_
#define TARNIX_ENGINES_PDFA_CHECKS_ACTIONCHECK_H_

#include <cstddef>

#include "engines/pdfa/checks/CheckedDocument.h"
#include "engines/pdfa/checks/NodeWalk.h"

namespace TarnixTools::engines::pdfa {

class ActionCheck {
 public:
  // The document outlives this.
  explicit ActionCheck(CheckedDocument& checked) : checked_(&checked), walk_(checked.document()) {}

  // The catalog's, those of the outline and those that names lead to.
  void CheckDocument();

  //   action - a reference or a dictionary; anything else is none
  //   place  - of what has it
  void Check(const pdf::Object& action, const Place& place);
  // Those of a dictionary of additional actions.
  void CheckAll(const pdf::Object& actions, const Place& place);

 private:
  void CheckOutline(const pdf::Object& catalog);

  CheckedDocument* checked_;
  NodeWalk walk_;
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CHECKS_ACTIONCHECK_H_
