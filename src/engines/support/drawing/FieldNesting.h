// How often the form fields of a document lead to the same ones.
#ifndef TARNIX_ENGINES_SUPPORT_DRAWING_FIELDNESTING_H_
#define TARNIX_ENGINES_SUPPORT_DRAWING_FIELDNESTING_H_

#include <cstdint>
#include <unordered_map>

#include "pdf/file/Document.h"

namespace TarnixTools::engines {

class FieldNesting {
 public:
  // The document outlives this.
  explicit FieldNesting(pdf::Document& document) : document_(&document) {}

  // Whether going through the fields (ISO 32000-2, 12.7.3) from every field to its kids comes to an
  // end, not much later than each was met once. Throws pdf::Error.
  //   form - the document's /AcroForm
  bool IsBounded(const pdf::Object& form);

 private:
  std::uint64_t SizeOfAll(const pdf::Object& fields, std::uint32_t depth);
  std::uint64_t SizeOf(const pdf::Object& field, std::uint32_t depth);

  pdf::Document* document_;
  std::unordered_map<std::uint32_t, std::uint64_t> sizes_;  // 0: being looked at
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_DRAWING_FIELDNESTING_H_
