// Content without operators that the standard does not know (ISO 19005-2, 6.2.2; 19005-1, 6.2.10),
// which readers pass over anyway, without interpolation of inline images, and for part 1 without
// real numbers that are too large.
#ifndef TARNIX_ENGINES_PDFA_CONVERT_CONTENTS_CONTENTS_H_
#define TARNIX_ENGINES_PDFA_CONVERT_CONTENTS_CONTENTS_H_

#include "engines/pdfa/convert/Conversion.h"
#include "engines/pdfa/convert/survey/ContentSurvey.h"

namespace TarnixTools::engines::pdfa {

// Contents are edited, and written by WriteEditedContents. Throws pdf::Error for a document that cannot be
// read any more.
void MendContents(Conversion& conversion, const ContentSurvey& survey);

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_CONVERT_CONTENTS_CONTENTS_H_
