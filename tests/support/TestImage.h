// Image files in code.
#ifndef TARNIX_TESTS_SUPPORT_TEST_IMAGE_H_
#define TARNIX_TESTS_SUPPORT_TEST_IMAGE_H_

#include <array>
#include <cstdint>
#include <string>

namespace TarnixTools::testing {

// The bytes of a PNG file of one colour: red, green, blue.
std::string PngOf(int width, int height, const std::array<std::uint8_t, 3>& color);

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_SUPPORT_TEST_IMAGE_H_
