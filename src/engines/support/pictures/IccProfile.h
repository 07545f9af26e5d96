// What ICC profiles say of themselves, and whether what a file gives as its colour profile can be one
// (ICC.1:2022, 7.2 and 7.3).
#ifndef TARNIX_ENGINES_SUPPORT_PICTURES_ICCPROFILE_H_
#define TARNIX_ENGINES_SUPPORT_PICTURES_ICCPROFILE_H_

#include <string>
#include <string_view>

namespace TarnixTools::engines {

// The components of a colour, as the header says: of gray, RGB, CMYK or L*a*b*. 0 for other colours,
// and for what is too short to be a profile.
int ComponentsOfProfile(std::string_view profile);

// The profile, cut to the size that it states; empty when it is damaged, no profile of an input,
// display, output or colour space device, one of L*a*b*, or one of another number of components.
std::string UsableProfile(std::string_view profile, int components);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PICTURES_ICCPROFILE_H_
