// An ICC profile (ICC.1:2001-04) for tests: that of a monitor like any other, but its red is blue
// and its blue is red.
#ifndef TARNIX_TESTS_SUPPORT_TEST_PROFILE_H_
#define TARNIX_TESTS_SUPPORT_TEST_PROFILE_H_

#include <array>
#include <cmath>
#include <cstdint>
#include <string>
#include <utility>

namespace TarnixTools::testing {

class SwappingProfile {
 public:
  static std::string Bytes() {
    std::string tags;
    std::string data;
    for (const auto& [name, value] :
         {std::pair{"wtpt", Xyz({0.9642, 1, 0.8249})}, std::pair{"rXYZ", Xyz(kBlue)},
          std::pair{"gXYZ", Xyz({0.3851, 0.7169, 0.0971})}, std::pair{"bXYZ", Xyz(kRed)},
          std::pair{"rTRC", Gamma()}, std::pair{"gTRC", Gamma()}, std::pair{"bTRC", Gamma()}}) {
      tags += name + Word(static_cast<std::uint32_t>(kDataStart + data.size())) +
              Word(static_cast<std::uint32_t>(value.size()));
      data += value;
    }
    const std::string after_size = Word(0) + Word(0x02100000) + "mntrRGB XYZ " +
                                   std::string(12, '\0') + "acsp" + std::string(28, '\0') +
                                   Word(0xF6D6) + Word(0x10000) + Word(0xD32D) +
                                   std::string(48, '\0') + Word(kTags);
    const auto size = static_cast<std::uint32_t>(4 + after_size.size() + tags.size() + data.size());
    return Word(size) + after_size + tags + data;
  }

 private:
  using Triple = std::array<double, 3>;

  static constexpr std::uint32_t kTags = 7;
  static constexpr std::size_t kDataStart = 132 + 12 * kTags;
  static constexpr Triple kRed = {0.4361, 0.2225, 0.0139};
  static constexpr Triple kBlue = {0.1431, 0.0606, 0.7141};

  static std::string Word(std::uint32_t value) {
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8) {
      bytes += static_cast<char>(value >> shift & 0xFFU);
    }
    return bytes;
  }

  static std::string Xyz(const Triple& value) {
    std::string bytes = "XYZ " + Word(0);
    for (const double coordinate : value) {
      bytes += Word(static_cast<std::uint32_t>(std::lround(coordinate * 65536)));
    }
    return bytes;
  }

  // An exponent of 2.2.
  static std::string Gamma() { return "curv" + Word(0) + Word(1) + Word(0x02330000); }
};

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_SUPPORT_TEST_PROFILE_H_
