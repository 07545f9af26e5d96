// The content of a page: one stream, or several that are read as one (ISO 32000-2, table 31).
#ifndef TARNIX_PDF_CONTENT_PAGECONTENTS_H_
#define TARNIX_PDF_CONTENT_PAGECONTENTS_H_

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "pdf/Limits.h"
#include "pdf/file/Document.h"

namespace TarnixTools::pdf {

// Which streams a page's /Contents name.
struct ContentStreams {
  std::vector<std::uint32_t> numbers;  // in their order; whether each is a stream shows on reading
  std::uint32_t array = 0;             // number of the array, when that is an object of its own
  bool is_array = false;
  bool is_regular = true;  // false: something in there is no reference, and passed over
};

// Arrays within the array are passed over, as by all readers that were tried.
ContentStreams StreamsOfContents(Document& document, const Object& contents);

// The content as a whole.
struct PageContents {
  struct Part {
    std::uint32_t number = 0;  // of the stream
    std::size_t begin = 0;     // of its data in `bytes`
  };

  std::string bytes;  // a line feed after each part of several: no token goes on in the next one
  std::vector<Part> parts;
  bool is_whole = true;  // false: something could not be read, or is too much
};

PageContents ReadPageContents(Document& document, const Object& contents);

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_CONTENT_PAGECONTENTS_H_
