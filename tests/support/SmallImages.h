// Small image files of other programs, a few pixels each, in small_images.txt beside this: in
// hexadecimal, behind their names.
//
// Pillow 9.4 wrote them (with zlib, libtiff, libjpeg, libwebp and OpenJPEG), but for what it does not
// write, which a script put together; all of noise made for this. The JPEG 2000 files in
// small_jpx.txt come from OpenJPEG, their palette and profile from a script: depths, signs, chroma of
// half the samples, alpha, an origin that is not 0. The JBIG2 data in small_jbig2.txt is what this
// project's tests code (Jbig2Coder.h), which poppler decodes alike.
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

std::vector<SmallImage> SmallJpx();

// JBIG2 data as documents have it; the sides of the pictures are in the names: "text_48x40.jb2".
std::vector<SmallImage> SmallJbig2();

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_SUPPORT_SMALLIMAGES_H_
