#include "conversions/DocumentNames.h"

#include <string_view>

#include "foundation/Platform.h"

namespace TarnixTools {
namespace {

constexpr std::string_view kExtension = ".pdf";

}  // namespace

bool DocumentNames::IsFree(const std::string& path) const {
  return !uses_.contains(path) &&
         (!spares_files_ || replaceable_.contains(path) || !platform::Exists(path));
}

std::string DocumentNames::Take(const std::string& wanted, const std::string& image) {
  if (IsFree(wanted)) {
    uses_[wanted] = {.image = image};
    return wanted;
  }
  const auto [use, is_new] = uses_.try_emplace(wanted);
  if (!is_new && use->second.image == image) {
    return wanted;
  }
  const std::size_t length = wanted.size() - (wanted.ends_with(kExtension) ? kExtension.size() : 0);
  std::string path;
  do {
    path = wanted.substr(0, length) + "-" + std::to_string(++use->second.last_number) +
           wanted.substr(length);
  } while (!IsFree(path));
  uses_[path] = {.image = image};
  return path;
}

}  // namespace TarnixTools
