// How large a tree becomes when all its branches are followed, those that are shared each time they
// are met. PDFium follows them so, and objects that lead to each other make it do so for hours.
//
//   Unfolding functions(document, "Functions");
//   if (functions.SizeOf(shading.Get("Function")) > limits::kMaxUnfoldedFunctions) ...
#ifndef TARNIX_ENGINES_SUPPORT_DRAWING_UNFOLDING_H_
#define TARNIX_ENGINES_SUPPORT_DRAWING_UNFOLDING_H_

#include <cstdint>
#include <string_view>
#include <unordered_map>

#include "pdf/file/Document.h"
#include "pdf/syntax/Object.h"

namespace TarnixTools::engines {

// What is found out about a document is kept, so that every object is looked at once.
class Unfolding {
 public:
  // Of what leads back to itself, or is too deep.
  static constexpr std::uint64_t kEndless = std::uint64_t{1} << 40;

  // kids: the key under which a dictionary or a stream has what is below it. The document and the
  // key outlive this.
  Unfolding(pdf::Document& document, std::string_view kids) : document_(&document), kids_(kids) {}

  // Dictionaries and arrays below the value, with itself; kEndless at most. Throws pdf::Error for a
  // document that cannot be read any more.
  std::uint64_t SizeOf(const pdf::Object& value) { return SizeOf(value, 0); }

  // Objects that were looked at so far.
  std::uint64_t object_count() const { return sizes_.size(); }

 private:
  std::uint64_t SizeOf(const pdf::Object& value, std::uint32_t depth);
  std::uint64_t SizeOfDirect(const pdf::Object& value, std::uint32_t depth);

  pdf::Document* document_;
  std::string_view kids_;
  std::unordered_map<std::uint32_t, std::uint64_t> sizes_;  // by object; 0: being looked at
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_DRAWING_UNFOLDING_H_
