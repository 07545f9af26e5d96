#include "engines/support/pictures/IccProfile.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "engines/support/files/ByteReader.h"
#include "engines/support/pictures/PictureLimits.h"

namespace TarnixTools::engines {

namespace {

constexpr std::uint64_t kHeaderSize = 128;
constexpr std::uint64_t kTagSize = 12;

constexpr std::size_t kSpaceAt = 16;

struct ProfileSpace {
  std::string_view signature;
  int components;
};

constexpr std::string_view kLab = "Lab ";
constexpr std::array kSpaces = {ProfileSpace{"GRAY", 1}, ProfileSpace{"RGB ", 3},
                                ProfileSpace{kLab, 3}, ProfileSpace{"CMYK", 4}};

bool IsDevice(std::string_view device_class) {
  return device_class == "scnr" || device_class == "mntr" || device_class == "prtr" ||
         device_class == "spac";
}

// Whether all tags lie within the profile, of which the header says its size.
bool HasItsTags(ByteReader& reader, std::uint64_t size) {
  const std::uint32_t tags = reader.Number32(kHeaderSize);
  if (tags == 0 || tags > limits::kMaxProfileTags) {
    return false;
  }
  for (std::uint32_t i = 0; i < tags; ++i) {
    const std::uint64_t tag = kHeaderSize + 4 + kTagSize * i;
    const std::uint64_t offset = reader.Number32(tag + 4);
    if (tag + kTagSize > size || offset > size || reader.Number32(tag + 8) > size - offset) {
      return false;
    }
  }
  return true;
}

}  // namespace

int ComponentsOfProfile(std::string_view profile) {
  if (profile.size() < kHeaderSize) {
    return 0;
  }
  const auto* const space =
      std::find_if(kSpaces.begin(), kSpaces.end(), [&](const ProfileSpace& candidate) {
        return candidate.signature == profile.substr(kSpaceAt, 4);
      });
  return space != kSpaces.end() ? space->components : 0;
}

std::string UsableProfile(std::string_view profile, int components) {
  pdf::MemorySource source(profile);
  ByteReader reader(source);
  const std::uint64_t size = reader.Number32(0);
  if (size < kHeaderSize + 4 || size > profile.size() || size > limits::kMaxProfileBytes ||
      profile.substr(36, 4) != "acsp" || components < 1 ||
      ComponentsOfProfile(profile) != components || profile.substr(kSpaceAt, 4) == kLab ||
      !IsDevice(profile.substr(12, 4)) || !HasItsTags(reader, size)) {
    return {};
  }
  return std::string(profile.substr(0, static_cast<std::size_t>(size)));
}

}  // namespace TarnixTools::engines
