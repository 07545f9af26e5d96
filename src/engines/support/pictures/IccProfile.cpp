#include "engines/support/pictures/IccProfile.h"

#include <cstdint>

#include "engines/support/files/ByteReader.h"
#include "engines/support/pictures/PictureLimits.h"

namespace TarnixTools::engines {

namespace {

constexpr std::uint64_t kHeaderSize = 128;
constexpr std::uint64_t kTagSize = 12;

std::string_view SpaceOf(int components) {
  switch (components) {
    case 1:
      return "GRAY";
    case 3:
      return "RGB ";
    case 4:
      return "CMYK";
    default:
      return "";
  }
}

bool IsDevice(std::string_view device_class) {
  return device_class == "scnr" || device_class == "mntr" || device_class == "prtr" ||
         device_class == "spac";
}

}  // namespace

std::string UsableProfile(std::string_view profile, int components) {
  pdf::MemorySource source(profile);
  ByteReader reader(source);
  const std::uint64_t size = reader.Number32(0);
  if (size < kHeaderSize + 4 || size > profile.size() || size > limits::kMaxProfileBytes ||
      profile.substr(36, 4) != "acsp" || profile.substr(16, 4) != SpaceOf(components) ||
      !IsDevice(profile.substr(12, 4))) {
    return {};
  }
  const std::uint32_t tags = reader.Number32(kHeaderSize);
  if (tags == 0 || tags > limits::kMaxProfileTags) {
    return {};
  }
  for (std::uint32_t i = 0; i < tags; ++i) {
    const std::uint64_t tag = kHeaderSize + 4 + kTagSize * i;
    const std::uint64_t offset = reader.Number32(tag + 4);
    if (tag + kTagSize > size || offset > size || reader.Number32(tag + 8) > size - offset) {
      return {};
    }
  }
  return std::string(profile.substr(0, static_cast<std::size_t>(size)));
}

}  // namespace TarnixTools::engines
