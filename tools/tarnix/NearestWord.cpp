#include "NearestWord.h"

#include <algorithm>

namespace TarnixTools::cli {
namespace {

constexpr std::size_t kLongestWord = 40;

// How many letters have to be put in, taken out, replaced or swapped with their neighbour.
std::size_t Distance(std::string_view a, std::string_view b) {
  std::vector<std::vector<std::size_t>> rows(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
  for (std::size_t i = 0; i <= a.size(); ++i) {
    for (std::size_t j = 0; j <= b.size(); ++j) {
      if (i == 0 || j == 0) {
        rows[i][j] = i + j;
        continue;
      }
      const std::size_t replaced = rows[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
      rows[i][j] = std::min({rows[i - 1][j] + 1, rows[i][j - 1] + 1, replaced});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
        rows[i][j] = std::min(rows[i][j], rows[i - 2][j - 2] + 1);
      }
    }
  }
  return rows[a.size()][b.size()];
}

}  // namespace

std::string Suggestion(std::string_view typed, const std::vector<std::string>& words) {
  if (typed.size() > kLongestWord) {
    return "";
  }
  std::string_view nearest;
  std::size_t least = std::max<std::size_t>(typed.size() / 3, 1) + 1;
  for (const std::string& word : words) {
    if (const std::size_t distance = Distance(typed, word); distance < least) {
      least = distance;
      nearest = word;
    }
  }
  return nearest.empty() ? "" : " (did you mean " + std::string(nearest) + "?)";
}

}  // namespace TarnixTools::cli
