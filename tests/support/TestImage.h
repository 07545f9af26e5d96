// Image files in code, and the data of compressed streams.
#ifndef TARNIX_TESTS_SUPPORT_TEST_IMAGE_H_
#define TARNIX_TESTS_SUPPORT_TEST_IMAGE_H_

#include <array>
#include <cstdint>
#include <string>

namespace TarnixTools::testing {

// The bytes of a PNG file of one colour: red, green, blue.
std::string PngOf(int width, int height, const std::array<std::uint8_t, 3>& color);

// The data in zlib's format, as filters of PDF have it.
std::string Deflated(const std::string& data);

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_SUPPORT_TEST_IMAGE_H_
