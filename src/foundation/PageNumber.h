// Page numbers as patterns of pages, and names of files, write them.
#ifndef TARNIX_FOUNDATION_PAGENUMBER_H_
#define TARNIX_FOUNDATION_PAGENUMBER_H_

#include <charconv>
#include <cstddef>
#include <limits>
#include <string>
#include <string_view>

namespace TarnixTools {

inline constexpr const char* kPageDigits = "0123456789";
inline constexpr const char* kPagePatternCharacters = "0123456789,-";

// The number that the text begins with; 0 when it begins with none. One that is too large for any
// document becomes the largest there is.
inline int LeadingPageNumber(std::string_view text) {
  int number = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
  return result.ec == std::errc::result_out_of_range ? std::numeric_limits<int>::max() : number;
}

// With zeros in front up to so many digits.
inline std::string PaddedNumber(int number, std::size_t digits) {
  const std::string text = std::to_string(number);
  return text.size() < digits ? std::string(digits - text.size(), '0') + text : text;
}

}  // namespace TarnixTools

#endif  // TARNIX_FOUNDATION_PAGENUMBER_H_
