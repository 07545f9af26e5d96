#include "engines/support/layout/paragraphs/Leaders.h"

#include <algorithm>

namespace TarnixTools::engines {

namespace {

constexpr std::size_t kLeastDots = 4;
constexpr std::size_t kLongestNumber = 8;

}  // namespace

Leader LeaderIn(std::string_view text) {
  std::size_t begin = text.size();
  std::size_t dots = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '.') {
      begin = dots++ == 0 ? i : begin;
    } else if (text[i] != ' ') {
      if (dots >= kLeastDots) {
        return {begin, i};
      }
      dots = 0;
    }
  }
  return dots >= kLeastDots ? Leader{begin, text.size()} : Leader{};
}

bool IsPageNumber(std::string_view text) {
  while (!text.empty() && text.back() == ' ') {
    text.remove_suffix(1);
  }
  while (!text.empty() && text.front() == ' ') {
    text.remove_prefix(1);
  }
  return !text.empty() && text.size() <= kLongestNumber &&
         std::all_of(text.begin(), text.end(), [](char c) {
           return (c >= '0' && c <= '9') || c == '-' ||
                  std::string_view("ivxlcIVXLCA").find(c) != std::string_view::npos;
         });
}

bool EndsAsEntry(std::string_view text) {
  const Leader leader = LeaderIn(text);
  return leader.end != 0 && leader.begin > 0 && IsPageNumber(text.substr(leader.end));
}

}  // namespace TarnixTools::engines
