#include "Rights.h"

#include <string_view>

#include "Failure.h"
#include "NearestWord.h"

namespace TarnixTools::cli {
namespace {

struct Right {
  std::string_view word;
  std::uint32_t bits;
};

// Taking text out for people who cannot see it is always allowed, and has no word.
constexpr std::uint32_t kAllRights = 3900;

constexpr Right kRights[] = {{"print", 4U | 2048U}, {"edit", 8U},   {"copy", 16U},
                             {"annotate", 32U},     {"fill", 256U}, {"assemble", 1024U}};

std::uint32_t RightWithout(std::string_view word) {
  std::vector<std::string> words;
  for (const Right& right : kRights) {
    if (right.word == word) {
      return ~right.bits;
    }
    words.emplace_back(right.word);
  }
  throw UsageError("--deny: '" + std::string(word) +
                   "' is none of print,copy,edit,annotate,fill,assemble" + Suggestion(word, words));
}

std::vector<std::string> Words(std::uint32_t rights, bool are_permitted) {
  std::vector<std::string> words;
  for (const Right& right : kRights) {
    if (((rights & right.bits) == right.bits) == are_permitted) {
      words.emplace_back(right.word);
    }
  }
  return words;
}

}  // namespace

std::uint32_t RightsWithout(const std::string& denied) {
  std::uint32_t rights = kAllRights;
  std::string_view rest = denied;
  while (!denied.empty()) {
    const std::size_t comma = rest.find(',');
    rights &= RightWithout(rest.substr(0, comma));
    if (comma == std::string_view::npos) {
      break;
    }
    rest.remove_prefix(comma + 1);
  }
  return rights;
}

std::vector<std::string> PermittedWords(std::uint32_t rights) {
  return Words(rights, true);
}

std::vector<std::string> DeniedWords(std::uint32_t rights) {
  return Words(rights, false);
}

}  // namespace TarnixTools::cli
