#include "pdf/content/Differences.h"

#include <cstdint>

namespace TarnixTools::pdf {

std::array<std::string_view, 256> ReadDifferences(Document& document, const Object& encoding,
                                                  Arena& arena) {
  std::array<std::string_view, 256> names;
  constexpr auto kCodes = static_cast<std::int64_t>(names.size());
  std::int64_t code = 0;
  for (const Object& item : document.Resolve(encoding.Get("Differences"), arena).Items()) {
    const Object value = document.Resolve(item, arena);
    if (value.IsNumber()) {
      code = value.IntegerOr(kCodes);
    } else if (value.IsName() && code >= 0 && code < kCodes) {
      names[static_cast<std::size_t>(code++)] = value.Text();
    }
  }
  return names;
}

}  // namespace TarnixTools::pdf
