#include "engines/support/pictures/StandardProfiles.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <map>
#include <string_view>
#include <utility>
#include <vector>

#include "engines/support/files/BigEndian.h"

namespace TarnixTools::engines {

namespace {

constexpr std::size_t kHeaderSize = 128;
constexpr std::size_t kTagEntrySize = 12;
constexpr std::uint32_t kVersion = 0x04200000;
constexpr std::uint32_t kVersion2 = 0x02100000;

constexpr std::size_t kTableEntries = 256;
// Places along each ink at which the colours of inks are listed; between them readers interpolate.
constexpr unsigned kInkSteps = 7;

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

template <std::size_t N>
void PutFixed(std::string& out, const std::array<double, N>& values) {
  for (const double value : values) {
    AppendBig32(out, static_cast<std::uint32_t>(std::lround(value * 65536)));
  }
}

std::string TagOf(std::string_view type) {
  std::string tag(type);
  AppendBig32(tag, 0);
  return tag;
}

// One text, in English.
std::string Text(std::string_view text) {
  constexpr std::uint32_t kRecordSize = 12;
  constexpr std::uint32_t kTextStart = 28;
  std::string tag = TagOf("mluc");
  AppendBig32(tag, 1);
  AppendBig32(tag, kRecordSize);
  tag += "enUS";
  AppendBig32(tag, static_cast<std::uint32_t>(2 * text.size()));
  AppendBig32(tag, kTextStart);
  for (const char c : text) {
    AppendBig16(tag, static_cast<unsigned char>(c));
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
  AppendBig16(tag, kWithLinearStart);
  AppendBig16(tag, 0);
  PutFixed(tag, kCurve);
  return tag;
}

// What a profile is of.
struct ProfileKind {
  std::uint32_t version = kVersion;
  std::string_view device = "mntr";
  std::string_view space;
  std::string_view connection = "XYZ ";
};

std::string Header(const ProfileKind& kind) {
  std::string header(4, '\0');  // the size, known last
  AppendBig32(header, 0);
  AppendBig32(header, kind.version);
  header += kind.device;
  header += kind.space;
  header += kind.connection;
  for (const std::uint32_t part : {2000, 1, 1, 0, 0, 0}) {  // a date
    AppendBig16(header, part);
  }
  header += "acsp";
  header.append(28, '\0');
  PutFixed(header, kD50);
  header.resize(kHeaderSize);
  return header;
}

// Tags whose data is the same share it.
std::string Profile(const ProfileKind& kind, const Tags& tags) {
  std::string profile = Header(kind);
  std::string data;
  std::map<std::string_view, std::size_t> places;
  const std::size_t start = kHeaderSize + 4 + tags.size() * kTagEntrySize;
  AppendBig32(profile, static_cast<std::uint32_t>(tags.size()));
  for (const auto& [name, tag] : tags) {
    const auto [place, is_new] = places.try_emplace(tag, data.size());
    if (is_new) {
      data += tag;
      data.resize((data.size() + 3) / 4 * 4);
    }
    profile += name;
    AppendBig32(profile, static_cast<std::uint32_t>(start + place->second));
    AppendBig32(profile, static_cast<std::uint32_t>(tag.size()));
  }
  profile += data;
  std::string size;
  AppendBig32(size, static_cast<std::uint32_t>(profile.size()));
  return profile.replace(0, size.size(), size);
}

Tags CommonTags(std::string_view name) {
  return {{"desc", Text(name)},
          {"cprt", Text("No copyright, use freely")},
          {"wtpt", Numbers("XYZ ", kD50)},
          {"chad", Numbers("sf32", kAdaptation)}};
}

// The linear amount of light, from 0 to 1.
double LightOf(double value) {
  const auto& [power, a, b, c, d] = kCurve;
  return value >= d ? std::pow(a * value + b, power) : c * value;
}

std::string Description(std::string_view text) {
  constexpr std::size_t kOtherLanguages = 4 + 4 + 2 + 1 + 67;  // none
  std::string tag = TagOf("desc");
  AppendBig32(tag, static_cast<std::uint32_t>(text.size() + 1));
  tag += text;
  return tag.append(1 + kOtherLanguages, '\0');
}

// The curve as a table.
std::string TableCurve() {
  std::string tag = TagOf("curv");
  AppendBig32(tag, kTableEntries);
  for (std::size_t i = 0; i < kTableEntries; ++i) {
    const double value = static_cast<double>(i) / (kTableEntries - 1);
    AppendBig16(tag, static_cast<std::uint32_t>(std::lround(LightOf(value) * 65535)));
  }
  return tag;
}

Tags TagsOfVersion2(std::string_view name) {
  return {{"desc", Description(name)},
          {"cprt", TagOf("text") + std::string("No copyright, use freely\0", 25)},
          {"wtpt", Numbers("XYZ ", kD50)}};
}

// L*a*b* in eight bits each (ICC.1:1998-09, 6.5.8).
void PutLab(std::string& out, const Srgb& color) {
  std::array<double, 3> cube_roots{};
  for (std::size_t i = 0; i < 3; ++i) {
    const double light = kRed[i] * LightOf(color[0] / 255.0) +
                         kGreen[i] * LightOf(color[1] / 255.0) +
                         kBlue[i] * LightOf(color[2] / 255.0);
    const double part = light / kD50[i];
    cube_roots[i] = part > 216.0 / 24389 ? std::cbrt(part) : (24389.0 / 27 * part + 16) / 116;
  }
  const auto& [x, y, z] = cube_roots;
  for (const double value : {(116 * y - 16) * 2.55, 500 * (x - y) + 128, 200 * (y - z) + 128}) {
    out += static_cast<char>(std::lround(std::clamp(value, 0.0, 255.0)));
  }
}

// From inks to L*a*b*, with tables before and after that change nothing.
std::string InkTable(const std::function<Srgb(const Cmyk&)>& color_of) {
  std::string tag = TagOf("mft1");
  tag += {4, 3, static_cast<char>(kInkSteps), 0};
  PutFixed(tag, std::array<double, 9>{1, 0, 0, 0, 1, 0, 0, 0, 1});
  const auto add_tables = [&tag](int count) {
    for (std::size_t i = 0; i < static_cast<std::size_t>(count) * kTableEntries; ++i) {
      tag += static_cast<char>(i % kTableEntries);
    }
  };
  add_tables(4);
  const unsigned all = kInkSteps * kInkSteps * kInkSteps * kInkSteps;
  for (unsigned place = 0; place < all; ++place) {
    Cmyk inks{};
    unsigned rest = place;
    for (std::size_t ink = 4; ink-- > 0; rest /= kInkSteps) {
      inks[ink] = static_cast<std::uint8_t>(rest % kInkSteps * 255 / (kInkSteps - 1));
    }
    PutLab(tag, color_of(inks));
  }
  add_tables(3);
  return tag;
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
  return Profile({.space = "RGB "}, tags);
}

std::string GrayProfile() {
  Tags tags = CommonTags("Gray");
  tags.emplace_back("kTRC", Curve());
  return Profile({.space = "GRAY"}, tags);
}

std::string SrgbProfileOfVersion2() {
  Tags tags = TagsOfVersion2("sRGB");
  tags.insert(tags.end(), {{"rXYZ", Numbers("XYZ ", kRed)},
                           {"gXYZ", Numbers("XYZ ", kGreen)},
                           {"bXYZ", Numbers("XYZ ", kBlue)},
                           {"rTRC", TableCurve()},
                           {"gTRC", TableCurve()},
                           {"bTRC", TableCurve()}});
  return Profile({.version = kVersion2, .space = "RGB "}, tags);
}

std::string CmykProfileOfVersion2(const std::function<Srgb(const Cmyk&)>& color_of) {
  Tags tags = TagsOfVersion2("CMYK");
  tags.emplace_back("A2B0", InkTable(color_of));
  return Profile({.version = kVersion2, .device = "scnr", .space = "CMYK", .connection = "Lab "},
                 tags);
}

}  // namespace TarnixTools::engines
