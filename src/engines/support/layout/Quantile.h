// The value that a share of several values is not above.
#ifndef TARNIX_ENGINES_SUPPORT_LAYOUT_QUANTILE_H_
#define TARNIX_ENGINES_SUPPORT_LAYOUT_QUANTILE_H_

#include <algorithm>
#include <cstddef>
#include <vector>

namespace TarnixTools::engines {

// One of the values; 0 when there is none.
//   share - from 0 for the least to 1 for the greatest
inline double Quantile(std::vector<double> values, double share) {
  if (values.empty()) {
    return 0;
  }
  const auto at =
      values.begin() + static_cast<std::ptrdiff_t>(share * static_cast<double>(values.size() - 1));
  std::nth_element(values.begin(), at, values.end());
  return *at;
}

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_LAYOUT_QUANTILE_H_
