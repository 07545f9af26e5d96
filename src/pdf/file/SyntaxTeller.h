// Tells an observer how the parts of a file are written that stand around its values: nothing is
// read here that the core has not read and found usable.
#ifndef TARNIX_PDF_FILE_SYNTAXTELLER_H_
#define TARNIX_PDF_FILE_SYNTAXTELLER_H_

#include <cstdint>
#include <optional>
#include <string_view>

#include "pdf/file/ObjectReader.h"
#include "pdf/syntax/SyntaxObserver.h"

namespace TarnixTools::pdf {

class SyntaxTeller {
 public:
  // Both outlive the teller.
  SyntaxTeller(ObjectReader& reader, SyntaxObserver& observer)
      : reader_(&reader), observer_(&observer) {}

  // The header, where there is one at the offset.
  void TellHeader(std::uint64_t offset);
  void TellFileEnd();

  // The keyword "xref" at the offset.
  void TellXrefTable(std::uint64_t offset);
  // The two numbers whose first is at the offset.
  void TellXrefSubsection(std::uint64_t offset, std::int64_t first, std::int64_t count);
  // The entry at the offset; `is_fixed` tells of its first nineteen bytes.
  void TellXrefEntry(std::uint64_t offset, std::int64_t number, bool is_fixed);
  // A table's trailer; `begin` is the offset after the keyword "trailer".
  void TellTrailer(std::uint64_t begin, const ValueAt& trailer);
  // A cross-reference stream, at the offset or behind white space there.
  void TellXrefStream(std::uint64_t offset, const Object& dictionary);

  // The "12 0 obj" at the offset or behind white space there.
  void TellObject(Reference reference, std::uint64_t offset);
  void TellTokens(std::uint64_t begin, std::uint64_t end);
  // `dictionary_end` is the offset after the stream's dictionary. Returns the offset after
  // "endstream", or where the data ends without it.
  std::uint64_t TellStream(Reference reference, std::uint64_t dictionary_end,
                           const StreamExtent& extent, std::optional<std::int64_t> claimed);
  // `end` is the offset after the value, or after "endstream".
  void TellObjectEnd(Reference reference, std::uint64_t end, const Object& value, bool is_regular);

 private:
  std::string_view WindowAt(std::uint64_t offset, std::size_t size);

  ObjectReader* reader_;
  SyntaxObserver* observer_;
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_FILE_SYNTAXTELLER_H_
