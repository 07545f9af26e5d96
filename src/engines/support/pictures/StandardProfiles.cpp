#include "engines/support/pictures/StandardProfiles.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <map>
#include <string_view>
#include <utility>
#include <vector>

namespace TarnixTools::engines {

namespace {

constexpr std::size_t kHeaderSize = 128;
constexpr std::size_t kTagEntrySize = 12;
constexpr std::uint32_t kVersion = 0x04200000;

// The white of the profile connection space (ICC.1:2004, 7.2.16).
constexpr std::array<double, 3> kD50 = {0.9642, 1.0, 0.8249};
// From D65, the white of sRGB, to that, by the Bradford method.
constexpr std::array<double, 9> kAdaptation = {1.04788,  0.02292,  -0.05021, 0.02957, 0.99048,
                                               -0.01706, -0.00925, 0.01508,  0.75168};
constexpr std::array<double, 3> kRed = {0.43607, 0.22249, 0.01392};
constexpr std::array<double, 3> kGreen = {0.38515, 0.71687, 0.09708};
constexpr std::array<double, 3> kBlue = {0.14307, 0.06061, 0.71410};
// Above `d` ((a x + b) to the power of g), else c x: g, a, b, c, d.
constexpr std::array<double, 5> kCurve = {2.4, 1 / 1.055, 0.055 / 1.055, 1 / 12.92, 0.04045};

using Tags = std::vector<std::pair<std::string_view, std::string>>;

void Put16(std::string& out, std::uint32_t value) {
  out += static_cast<char>(value >> 8);
  out += static_cast<char>(value);
}

void Put32(std::string& out, std::uint32_t value) {
  Put16(out, value >> 16);
  Put16(out, value & 0xFFFF);
}

template <std::size_t N>
void PutFixed(std::string& out, const std::array<double, N>& values) {
  for (const double value : values) {
    Put32(out, static_cast<std::uint32_t>(std::lround(value * 65536)));
  }
}

std::string TagOf(std::string_view type) {
  std::string tag(type);
  Put32(tag, 0);
  return tag;
}

// One text, in English.
std::string Text(std::string_view text) {
  constexpr std::uint32_t kRecordSize = 12;
  constexpr std::uint32_t kTextStart = 28;
  std::string tag = TagOf("mluc");
  Put32(tag, 1);
  Put32(tag, kRecordSize);
  tag += "enUS";
  Put32(tag, static_cast<std::uint32_t>(2 * text.size()));
  Put32(tag, kTextStart);
  for (const char c : text) {
    Put16(tag, static_cast<unsigned char>(c));
  }
  return tag;
}

template <std::size_t N>
std::string Numbers(std::string_view type, const std::array<double, N>& values) {
  std::string tag = TagOf(type);
  PutFixed(tag, values);
  return tag;
}

std::string Curve() {
  constexpr std::uint32_t kWithLinearStart = 3;
  std::string tag = TagOf("para");
  Put16(tag, kWithLinearStart);
  Put16(tag, 0);
  PutFixed(tag, kCurve);
  return tag;
}

std::string Header(std::string_view space) {
  std::string header(4, '\0');  // the size, known last
  Put32(header, 0);
  Put32(header, kVersion);
  header += "mntr";
  header += space;
  header += "XYZ ";
  for (const std::uint32_t part : {2000, 1, 1, 0, 0, 0}) {  // a date
    Put16(header, part);
  }
  header += "acsp";
  header.append(28, '\0');
  PutFixed(header, kD50);
  header.resize(kHeaderSize);
  return header;
}

// Tags whose data is the same share it.
std::string Profile(std::string_view space, const Tags& tags) {
  std::string profile = Header(space);
  std::string data;
  std::map<std::string_view, std::size_t> places;
  const std::size_t start = kHeaderSize + 4 + tags.size() * kTagEntrySize;
  Put32(profile, static_cast<std::uint32_t>(tags.size()));
  for (const auto& [name, tag] : tags) {
    const auto [place, is_new] = places.try_emplace(tag, data.size());
    if (is_new) {
      data += tag;
      data.resize((data.size() + 3) / 4 * 4);
    }
    profile += name;
    Put32(profile, static_cast<std::uint32_t>(start + place->second));
    Put32(profile, static_cast<std::uint32_t>(tag.size()));
  }
  profile += data;
  std::string size;
  Put32(size, static_cast<std::uint32_t>(profile.size()));
  return profile.replace(0, size.size(), size);
}

Tags CommonTags(std::string_view name) {
  return {{"desc", Text(name)},
          {"cprt", Text("No copyright, use freely")},
          {"wtpt", Numbers("XYZ ", kD50)},
          {"chad", Numbers("sf32", kAdaptation)}};
}

}  // namespace

std::string SrgbProfile() {
  Tags tags = CommonTags("sRGB");
  tags.insert(tags.end(), {{"rXYZ", Numbers("XYZ ", kRed)},
                           {"gXYZ", Numbers("XYZ ", kGreen)},
                           {"bXYZ", Numbers("XYZ ", kBlue)},
                           {"rTRC", Curve()},
                           {"gTRC", Curve()},
                           {"bTRC", Curve()}});
  return Profile("RGB ", tags);
}

std::string GrayProfile() {
  Tags tags = CommonTags("Gray");
  tags.emplace_back("kTRC", Curve());
  return Profile("GRAY", tags);
}

}  // namespace TarnixTools::engines
