// What ExpaDocGetLastError answers; listed with their meaning in docs/engines.md.
#ifndef TARNIX_ENGINES_PARSER_ERRORCODES_H_
#define TARNIX_ENGINES_PARSER_ERRORCODES_H_

#include <cstdint>

namespace TarnixTools::engines {

enum ExpaError : std::int32_t {
  kExpaNoError = 0,
  kExpaInternalError = 1,
  kExpaFileError = 2,         // the file cannot be opened or read
  kExpaNotAPdfError = 3,      // the file is no PDF document, or damaged beyond reading
  kExpaNoPagesError = 4,      // the document is damaged and no page can be found in it
  kExpaSecurityError = 5,     // the encryption is not known or cannot be used
  kExpaLimitError = 6,        // a bound was passed
  kExpaArgumentError = 7,     // a call out of order, or a value out of range
  kExpaMemoryError = 8,       // no memory
  kExpaImageError = 9,        // nothing of the image can be read
  kExpaCreateError = 10,      // the image file cannot be created
  kExpaWriteError = 11,       // the image file cannot be written
  kExpaNoMetadataError = 12,  // the document has no XMP packet
  kExpaMetadataError = 13,    // its XMP packet cannot be decoded, or is too large
  kExpaPasswordError = 17,    // the password is missing or wrong
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_PARSER_ERRORCODES_H_
