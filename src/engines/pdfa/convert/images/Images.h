// Images whose data PDF/A does not allow (ISO 19005-2, 6.2.8; 19005-1, 6.2.4), stored in another way
// that loses nothing.
#ifndef TARNIX_ENGINES_PDFA_CONVERT_IMAGES_IMAGES_H_
#define TARNIX_ENGINES_PDFA_CONVERT_IMAGES_IMAGES_H_

#include "engines/pdfa/convert/Conversion.h"

namespace TarnixTools::engines::pdfa {

// Throws pdf::Error for a document that cannot be read any more.
void MendImages(Conversion& conversion);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_IMAGES_IMAGES_H_
