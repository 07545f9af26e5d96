// Arrays of numbers that stand for one thing: a rectangle (ISO 32000-2, 7.9.5) or a matrix (8.3.3).
#ifndef TARNIX_PDF_FILE_NUMBERARRAYS_H_
#define TARNIX_PDF_FILE_NUMBERARRAYS_H_

#include <optional>

#include "pdf/Box.h"
#include "pdf/Matrix.h"
#include "pdf/file/Document.h"

namespace TarnixTools::pdf {

// The rectangle, its corners in order; it may be empty. None for a value that does not lead to an
// array of exactly four elements; one of them that is no number counts as 0.
std::optional<Box> ReadBox(Document& document, const Object& value);

// The matrix of the array's first six elements; one of them that is no number counts as 0. None for
// a value that does not lead to an array of at least six.
std::optional<Matrix> ReadMatrix(Document& document, const Object& value);

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_FILE_NUMBERARRAYS_H_
