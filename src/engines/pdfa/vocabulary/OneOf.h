// Whether a name is one of some, for predicates.
#ifndef TARNIX_ENGINES_PDFA_VOCABULARY_ONEOF_H_
#define TARNIX_ENGINES_PDFA_VOCABULARY_ONEOF_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace TarnixTools::engines::pdfa {

template <std::size_t kCount>
constexpr bool IsOneOf(std::string_view name, const std::array<std::string_view, kCount>& names) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_ENGINES_PDFA_VOCABULARY_ONEOF_H_
