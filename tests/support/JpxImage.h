// JPEG 2000 files, for tests that read them.
#ifndef TARNIX_TESTS_SUPPORT_JPX_IMAGE_H_
#define TARNIX_TESTS_SUPPORT_JPX_IMAGE_H_

#include <string>

namespace TarnixTools::testing {

// A file of samples, a byte each, with 1 component (gray) or 3 (sRGB).
//   ratio - of the bytes of the samples to those of the file
std::string EncodeJpx(int width, int height, int components, const std::string& samples,
                      float ratio);

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_SUPPORT_JPX_IMAGE_H_
