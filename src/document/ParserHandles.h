// Owners of the content parser's handles: what a guard holds is released on every path.
#ifndef TARNIX_DOCUMENT_PARSER_HANDLES_H_
#define TARNIX_DOCUMENT_PARSER_HANDLES_H_

#include <memory>

#include "engines/parser/Parser.h"

namespace TarnixTools {

struct ParserSession {
  ParserSession() { engines::ExpaInitialize(); }

  ~ParserSession() { engines::ExpaUnInitialize(); }

  ParserSession(const ParserSession&) = delete;
  ParserSession& operator=(const ParserSession&) = delete;
};

struct ExpaDocCloser {
  void operator()(engines::TExpaDoc* document) const noexcept {
    engines::ExpaDocClose(document);
    engines::ExpaDocDestroyObject(document);
  }
};

using ExpaDocPtr = std::unique_ptr<engines::TExpaDoc, ExpaDocCloser>;

}  // namespace TarnixTools

#endif  // TARNIX_DOCUMENT_PARSER_HANDLES_H_
