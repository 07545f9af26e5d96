// The ICC profile of sRGB (IEC 61966-2-1), and one of grays with its curve, for output that is to
// look alike whatever the device does.
#ifndef TARNIX_ENGINES_SUPPORT_PICTURES_STANDARDPROFILES_H_
#define TARNIX_ENGINES_SUPPORT_PICTURES_STANDARDPROFILES_H_

#include <string>

namespace TarnixTools::engines {

// Version 4 profiles (ICC.1:2004) of about half a kilobyte. Their date is a fixed one, so that they
// are always the same bytes.
std::string SrgbProfile();
std::string GrayProfile();

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PICTURES_STANDARDPROFILES_H_
