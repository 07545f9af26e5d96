// Finds objects by reading the whole file, for files whose cross-reference cannot be used.
#ifndef TARNIX_PDF_FILE_FILESCAN_H_
#define TARNIX_PDF_FILE_FILESCAN_H_

#include <cstdint>
#include <vector>

#include "pdf/file/ObjectReader.h"

namespace TarnixTools::pdf {

enum class FoundKind : std::uint8_t { kOther, kCatalog, kPages, kPage, kObjectStream, kXrefStream };

struct FoundObject {
  std::uint32_t number = 0;
  std::uint16_t generation = 0;
  FoundKind kind = FoundKind::kOther;
  std::uint64_t offset = 0;
};

struct FileScan {
  std::vector<FoundObject> objects;  // in file order
  std::vector<Object> trailers;  // trailer and cross-reference stream dictionaries, in file order
};

// What an object's dictionary says it is.
FoundKind FoundKindOf(const Object& dictionary);

// Trailer dictionaries are kept in the arena. Stream data is passed over where its end can be told.
FileScan ScanFile(ObjectReader& reader, Arena& arena);

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_FILE_FILESCAN_H_
