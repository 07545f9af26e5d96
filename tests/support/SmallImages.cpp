#include "support/SmallImages.h"

#include <sstream>

#include "support/Surroundings.h"

namespace TarnixTools::testing {
namespace {

std::string FromHexadecimal(const std::string& digits) {
  std::string bytes;
  for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
    bytes += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
  }
  return bytes;
}

}  // namespace

std::vector<SmallImage> SmallImages(std::string_view ending) {
  std::istringstream list(ReadBytes(SourceDir() + "/tests/support/small_images.txt"));
  std::vector<SmallImage> images;
  std::string name;
  std::string digits;
  while (list >> name >> digits) {
    if (name.ends_with(ending)) {
      images.push_back({name, FromHexadecimal(digits)});
    }
  }
  return images;
}

std::string SmallImageOf(std::string_view name) {
  const std::vector<SmallImage> images = SmallImages(name);
  return images.empty() ? "" : images.front().bytes;
}

}  // namespace TarnixTools::testing
