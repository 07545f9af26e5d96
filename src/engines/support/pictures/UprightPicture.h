// Pictures turned and mirrored, so that they are seen upright.
#ifndef TARNIX_ENGINES_SUPPORT_PICTURES_UPRIGHTPICTURE_H_
#define TARNIX_ENGINES_SUPPORT_PICTURES_UPRIGHTPICTURE_H_

#include "engines/support/pictures/RowSource.h"

namespace TarnixTools::engines {

// Turns and mirrors a picture that is stored as an EXIF orientation says (1 to 8), so that it is
// upright. All of it is held in memory, unless the orientation is 1. Throws
// pdf::Error(kLimitExceeded) for a picture that is too large for that.
RowSourcePtr MakeUpright(RowSourcePtr picture, int orientation);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PICTURES_UPRIGHTPICTURE_H_
