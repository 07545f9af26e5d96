// Follows references with bounded work: however often they lead to the same large object, no more
// is read than is reasonable for one source.
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_BOUNDEDREADER_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_BOUNDEDREADER_H_

#include <cstddef>

#include "pdf/file/Document.h"
#include "pdf/syntax/Object.h"

namespace TarnixTools::engines::toolbox {

class BoundedReader {
 public:
  explicit BoundedReader(pdf::Document& document) : document_(&document) {}

  // The value, or what it refers to; null when too much was looked at already.
  pdf::Object Look(const pdf::Object& value, pdf::Arena& arena);

 private:
  pdf::Document* document_;
  std::size_t budget_ = std::size_t{16} << 20;  // bytes that may still be looked at, about
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_BOUNDEDREADER_H_
