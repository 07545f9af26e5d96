// Small image files of other programs, a few pixels each, in small_images.txt beside this: in
// hexadecimal, behind their names.
//
// Pillow 9.4 wrote them (with zlib, libtiff, libjpeg, libwebp and OpenJPEG), but for the interlaced
// PNG files, whose passes a script put together; all of noise made for this.
#ifndef TARNIX_TESTS_SUPPORT_SMALLIMAGES_H_
#define TARNIX_TESTS_SUPPORT_SMALLIMAGES_H_

#include <string>
#include <string_view>
#include <vector>

namespace TarnixTools::testing {

struct SmallImage {
  std::string name;  // "gray.png"
  std::string bytes;
};

// Those whose names end so, in the order of the list.
std::vector<SmallImage> SmallImages(std::string_view ending = {});

// The one of this name; empty where there is none.
std::string SmallImageOf(std::string_view name);

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_SUPPORT_SMALLIMAGES_H_
