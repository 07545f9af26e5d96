// Where an operation stands in the content that is walked through.
#ifndef TARNIX_ENGINES_PDFA_CONVERT_CONTENTS_OPERATIONPLACE_H_
#define TARNIX_ENGINES_PDFA_CONVERT_CONTENTS_OPERATIONPLACE_H_

#include <cstddef>

#include "pdf/content/ContentReader.h"

namespace TarnixTools::engines::pdfa {

struct OperationPlace {
  std::size_t begin = 0;  // with its operands
  std::size_t end = 0;
};

//   offset - of the operator, as ContentVisitor::Operator is told it
OperationPlace PlaceOf(const pdf::Operation& operation, std::size_t offset);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_CONTENTS_OPERATIONPLACE_H_
