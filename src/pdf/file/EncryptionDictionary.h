// The encryption dictionary read into plain values (ISO 32000-2, 7.6.2 and 7.6.6).
#ifndef TARNIX_PDF_FILE_ENCRYPTIONDICTIONARY_H_
#define TARNIX_PDF_FILE_ENCRYPTIONDICTIONARY_H_

#include <map>
#include <string>
#include <string_view>

#include "pdf/crypt/Security.h"
#include "pdf/file/StreamFilters.h"
#include "pdf/syntax/Object.h"

namespace TarnixTools::pdf {

struct EncryptionDictionary {
  EncryptionFacts facts;
  std::map<std::string, CryptMethod, std::less<>>
      crypt_filters;  // by name; "Identity" is always there
};

// References inside the dictionary are followed through `resolve`. file_id: first element of the
// trailer's /ID. Throws Error(kUnsupportedSecurity) for a crypt filter method that is not known.
EncryptionDictionary ReadEncryptionDictionary(const Object& dictionary, std::string_view file_id,
                                              const Resolver& resolve);

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_FILE_ENCRYPTIONDICTIONARY_H_
