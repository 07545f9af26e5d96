// Checks images and forms that content paints, as their dictionaries and JPEG 2000 data are (ISO
// 19005-1, 6.2.4 to 6.2.7 and 6.4; -2 and -3, 6.2.8 and 6.2.9).
#ifndef TARNIX_ENGINES_PDFA_CHECKS_PAINTEDOBJECTCHECK_H_
#define TARNIX_ENGINES_PDFA_CHECKS_PAINTEDOBJECTCHECK_H_

#include <cstdint>

#include "engines/pdfa/checks/CheckedDocument.h"

namespace TarnixTools::engines::pdfa {

// An XObject; an appearance and the group of a soft mask are forms.
//   number - of its stream
void CheckPaintedObject(CheckedDocument& checked, const pdf::Object& dictionary,
                        std::uint32_t number, const Place& place);

// An inline image.
//   dictionary - with the names that an image XObject would have
//   entries    - as they stand
void CheckInlineImage(CheckedDocument& checked, const pdf::Object& dictionary,
                      const pdf::Object& entries, const Place& place);

// Whether painting it makes its page transparent.
bool IsTransparent(CheckedDocument& checked, const pdf::Object& dictionary);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CHECKS_PAINTEDOBJECTCHECK_H_
