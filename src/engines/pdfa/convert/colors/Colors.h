// Colours that look alike on every device (ISO 19005-2, 6.2.3 and 6.2.4): an output intent, and
// colour spaces for what is in inks of the device.
#ifndef TARNIX_ENGINES_PDFA_CONVERT_COLORS_COLORS_H_
#define TARNIX_ENGINES_PDFA_CONVERT_COLORS_COLORS_H_

#include "engines/pdfa/convert/Conversion.h"
#include "engines/pdfa/convert/survey/ContentSurvey.h"

namespace TarnixTools::engines::pdfa {

// Throws pdf::Error for a document that cannot be read any more.
void MendColors(Conversion& conversion, const ContentSurvey& survey);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_COLORS_COLORS_H_
