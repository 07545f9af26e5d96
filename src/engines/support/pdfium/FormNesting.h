// How forms draw forms. PDFium follows them without a bound, so a page is looked at before.
#ifndef TARNIX_ENGINES_SUPPORT_PDFIUM_FORMNESTING_H_
#define TARNIX_ENGINES_SUPPORT_PDFIUM_FORMNESTING_H_

#include <cstdint>
#include <unordered_map>

#include "pdf/file/Document.h"
#include "pdf/syntax/Object.h"

namespace TarnixTools::engines {

class FormNesting {
 public:
  // The document outlives this.
  explicit FormNesting(pdf::Document& document) : document_(&document) {}

  // Whether the forms and patterns of these resources, and those of their own, come to an end: none
  // leads back to itself, and drawing each once for every resource dictionary that names it stays
  // within a bound. What has been found out is kept. Throws pdf::Error.
  bool IsBounded(const pdf::Object& resources);

 private:
  std::uint64_t SizeOfResources(const pdf::Object& resources, int depth);
  std::uint64_t SizeOf(std::uint32_t number, int depth);

  pdf::Document* document_;
  std::unordered_map<std::uint32_t, std::uint64_t> sizes_;  // 0: being looked at
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PDFIUM_FORMNESTING_H_
