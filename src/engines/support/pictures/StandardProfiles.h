// The ICC profile of sRGB (IEC 61966-2-1), and one of grays with its curve, for output that is to
// look alike whatever the device does.
#ifndef TARNIX_ENGINES_SUPPORT_PICTURES_STANDARDPROFILES_H_
#define TARNIX_ENGINES_SUPPORT_PICTURES_STANDARDPROFILES_H_

#include <array>
#include <cstdint>
#include <functional>
#include <string>

namespace TarnixTools::engines {

// Version 4 profiles (ICC.1:2004) of about half a kilobyte. Their date is a fixed one, so that they
// are always the same bytes.
std::string SrgbProfile();
std::string GrayProfile();

// Version 2 profiles (ICC.1:1998-09), for readers and standards that know no later ones: of sRGB,
// and of an input in CMYK whose colours are given in sRGB.
std::string SrgbProfileOfVersion2();

using Cmyk = std::array<std::uint8_t, 4>;
using Srgb = std::array<std::uint8_t, 3>;
std::string CmykProfileOfVersion2(const std::function<Srgb(const Cmyk&)>& color_of);

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PICTURES_STANDARDPROFILES_H_
