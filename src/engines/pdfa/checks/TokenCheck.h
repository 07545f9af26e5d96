// Checks numbers, strings and names as they are written, in objects and in content.
//
//   TokenCheck tokens(findings);
//   tokens.SetPlace({.object = 12});
//   pdf::ObserveTokens(operation.operands, offset, tokens);  // or as a part of a file's observer
#ifndef TARNIX_ENGINES_PDFA_CHECKS_TOKENCHECK_H_
#define TARNIX_ENGINES_PDFA_CHECKS_TOKENCHECK_H_

#include <string>

#include "engines/pdfa/rules/FindingList.h"
#include "pdf/syntax/SyntaxObserver.h"

namespace TarnixTools::engines::pdfa {

class TokenCheck : public pdf::SyntaxObserver {
 public:
  // The list outlives this.
  explicit TokenCheck(FindingList& findings) : findings_(&findings) {}

  // Where the tokens to come stand. The subject outlives them.
  void SetPlace(const Place& place) { place_ = place; }

  void OnToken(const pdf::TokenSyntax& token) override { Check(token.token); }

  void Check(const pdf::Token& token);

 private:
  void CheckReal(std::string_view text);
  void CheckString(const pdf::Token& token);
  void CheckName(const pdf::Token& token);

  FindingList* findings_;
  Place place_;
  std::string scratch_;
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CHECKS_TOKENCHECK_H_
