#include "engines/pdfa/convert/contents/Interpolation.h"

#include <initializer_list>

namespace TarnixTools::engines::pdfa {

std::size_t InterpolationOf(std::string_view entries) {
  constexpr std::string_view kSpaces(" \t\r\n\f\0", 6);
  for (const std::string_view key : {std::string_view("/I"), std::string_view("/Interpolate")}) {
    for (std::size_t at = entries.find(key); at != std::string_view::npos;
         at = entries.find(key, at + 1)) {
      const std::size_t value = entries.find_first_not_of(kSpaces, at + key.size());
      if (value != std::string_view::npos && value > at + key.size() &&
          entries.substr(value).starts_with(kTrue)) {
        return value;
      }
    }
  }
  return std::string_view::npos;
}

}  // namespace TarnixTools::engines::pdfa
