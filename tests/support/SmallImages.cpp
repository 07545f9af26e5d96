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

std::vector<SmallImage> ReadList(const std::string& name, std::string_view ending) {
  std::istringstream list(ReadBytes(SourceDir() + "/tests/support/" + name));
  std::vector<SmallImage> images;
  SmallImage image;
  std::string digits;
  while (list >> image.name >> digits) {
    if (image.name.ends_with(ending)) {
      image.bytes = FromHexadecimal(digits);
      images.push_back(image);
    }
  }
  return images;
}

}  // namespace

std::vector<SmallImage> SmallImages(std::string_view ending) {
  return ReadList("small_images.txt", ending);
}

std::vector<SmallImage> SmallJpx() {
  return ReadList("small_jpx.txt", "");
}

std::vector<SmallImage> SmallJbig2() {
  return ReadList("small_jbig2.txt", "");
}

}  // namespace TarnixTools::testing
