#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/pictures/IccProfile.h"
#include "engines/support/pictures/IccTransform.h"
#include "engines/support/pictures/StandardProfiles.h"

namespace TarnixTools::engines {
namespace {

TEST(StandardProfiles, AreProfiles) {
  EXPECT_EQ(UsableProfile(SrgbProfile(), 3), SrgbProfile());
  EXPECT_EQ(UsableProfile(GrayProfile(), 1), GrayProfile());
  EXPECT_LT(SrgbProfile().size(), 600U);
  EXPECT_LT(GrayProfile().size(), 500U);
}

std::uint32_t NumberAt(const std::string& bytes, std::size_t place, std::size_t size = 4) {
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < size; ++i) {
    number = number << 8U | static_cast<unsigned char>(bytes.at(place + i));
  }
  return number;
}

double FixedAt(const std::string& bytes, std::size_t place) {
  return static_cast<std::int32_t>(NumberAt(bytes, place)) / 65536.0;
}

// What a profile holds, by the signatures of its tags.
std::map<std::string, std::string> TagsOf(const std::string& profile) {
  std::map<std::string, std::string> tags;
  const std::uint32_t count = NumberAt(profile, 128);
  for (std::uint32_t i = 0; i < count; ++i) {
    const std::size_t entry = 132 + std::size_t{12} * i;
    EXPECT_EQ(NumberAt(profile, entry + 4) % 4, 0U);
    tags[profile.substr(entry, 4)] =
        profile.substr(NumberAt(profile, entry + 4), NumberAt(profile, entry + 8));
  }
  EXPECT_EQ(tags.size(), count);
  return tags;
}

void ExpectHeader(const std::string& profile, int version, const std::string& kinds) {
  EXPECT_EQ(NumberAt(profile, 0), profile.size());
  EXPECT_EQ(profile[8], version);
  EXPECT_EQ(profile.substr(12, 12), kinds);
  EXPECT_EQ(NumberAt(profile, 24, 2), 2000U);
  EXPECT_EQ(NumberAt(profile, 26), 0x00010001U);
  EXPECT_EQ(profile.substr(36, 4), "acsp");
  EXPECT_NEAR(FixedAt(profile, 68), 0.9642, 1e-4);
  EXPECT_NEAR(FixedAt(profile, 72), 1.0, 1e-4);
  EXPECT_NEAR(FixedAt(profile, 76), 0.8249, 1e-4);
}

TEST(StandardProfiles, SayWhatTheyAreIn) {
  ExpectHeader(SrgbProfile(), 4, "mntrRGB XYZ ");
  ExpectHeader(GrayProfile(), 4, "mntrGRAYXYZ ");
  ExpectHeader(SrgbProfileOfVersion2(), 2, "mntrRGB XYZ ");
  ExpectHeader(CmykProfileOfVersion2([](const Cmyk&) { return Srgb{}; }), 2, "scnrCMYKLab ");
}

TEST(StandardProfiles, HaveANameAndNoCopyright) {
  const auto text_of = [](const std::string& tag) {
    EXPECT_EQ(tag.substr(0, 8), std::string("mluc\0\0\0\0", 8));
    EXPECT_EQ(NumberAt(tag, 8), 1U);
    EXPECT_EQ(NumberAt(tag, 12), 12U);
    EXPECT_EQ(tag.substr(16, 4), "enUS");
    std::string text;
    for (std::size_t i = 0; i < NumberAt(tag, 20); i += 2) {
      text += static_cast<char>(NumberAt(tag, NumberAt(tag, 24) + i, 2));
    }
    EXPECT_EQ(tag.size(), 28 + 2 * text.size());
    return text;
  };
  EXPECT_EQ(text_of(TagsOf(SrgbProfile())["desc"]), "sRGB");
  EXPECT_EQ(text_of(TagsOf(GrayProfile())["desc"]), "Gray");
  EXPECT_EQ(text_of(TagsOf(GrayProfile())["cprt"]), "No copyright, use freely");
  auto tags = TagsOf(SrgbProfileOfVersion2());
  const std::string kNulls(4, '\0');
  EXPECT_EQ(tags["desc"],
            "desc" + kNulls + std::string("\0\0\0\x05sRGB", 8) + std::string(79, '\0'));
  EXPECT_EQ(tags["cprt"], "text" + kNulls + "No copyright, use freely" + '\0');
}

// The primaries make white together, and so does D65 when it is adapted.
TEST(StandardProfiles, HaveTheWhiteOfTheConnectionSpace) {
  constexpr double kWhite[] = {0.9642, 1.0, 0.8249};
  constexpr double kD65[] = {0.95047, 1.0, 1.08883};
  for (const std::string& profile : {SrgbProfile(), SrgbProfileOfVersion2()}) {
    auto tags = TagsOf(profile);
    for (const char* name : {"wtpt", "rXYZ", "gXYZ", "bXYZ"}) {
      EXPECT_EQ(tags[name].substr(0, 8), std::string("XYZ \0\0\0\0", 8)) << name;
      EXPECT_EQ(tags[name].size(), 20U) << name;
    }
    for (std::size_t i = 0; i < 3; ++i) {
      EXPECT_NEAR(FixedAt(tags["wtpt"], 8 + 4 * i), kWhite[i], 1e-4);
      EXPECT_NEAR(FixedAt(tags["rXYZ"], 8 + 4 * i) + FixedAt(tags["gXYZ"], 8 + 4 * i) +
                      FixedAt(tags["bXYZ"], 8 + 4 * i),
                  kWhite[i], 3e-4);
    }
    // Green is the lightest, blue the darkest.
    EXPECT_NEAR(FixedAt(tags["rXYZ"], 12), 0.2225, 1e-3);
    EXPECT_NEAR(FixedAt(tags["gXYZ"], 12), 0.7169, 1e-3);
    EXPECT_NEAR(FixedAt(tags["bXYZ"], 16), 0.7141, 1e-3);
  }
  for (const std::string& profile : {SrgbProfile(), GrayProfile()}) {
    auto tags = TagsOf(profile);
    EXPECT_EQ(tags["chad"].substr(0, 8), std::string("sf32\0\0\0\0", 8));
    for (std::size_t row = 0; row < 3; ++row) {
      double sum = 0;
      for (std::size_t i = 0; i < 3; ++i) {
        sum += FixedAt(tags["chad"], 8 + 12 * row + 4 * i) * kD65[i];
      }
      EXPECT_NEAR(sum, kWhite[row], 2e-4) << row;
    }
  }
}

// IEC 61966-2-1.
double SrgbLight(double value) {
  return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

TEST(StandardProfiles, HaveTheCurveOfSrgb) {
  auto tags = TagsOf(SrgbProfile());
  tags["kTRC"] = TagsOf(GrayProfile())["kTRC"];
  for (const char* name : {"rTRC", "gTRC", "bTRC", "kTRC"}) {
    const std::string& curve = tags[name];
    EXPECT_EQ(curve.substr(0, 12), std::string("para\0\0\0\0\0\3\0\0", 12)) << name;
    ASSERT_EQ(curve.size(), 32U) << name;
    const auto part = [&](std::size_t i) { return FixedAt(curve, 12 + 4 * i); };
    for (double value = 0; value <= 1; value += 1.0 / 64) {
      const double light =
          value >= part(4) ? std::pow(part(1) * value + part(2), part(0)) : part(3) * value;
      EXPECT_NEAR(light, SrgbLight(value), 1e-4) << name;
    }
  }
  auto listed = TagsOf(SrgbProfileOfVersion2());
  for (const char* name : {"rTRC", "gTRC", "bTRC"}) {
    const std::string& curve = listed[name];
    EXPECT_EQ(curve.substr(0, 12), std::string("curv\0\0\0\0\0\0\1\0", 12)) << name;
    ASSERT_EQ(curve.size(), 12U + 2 * 256) << name;
    for (std::size_t i = 0; i < 256; ++i) {
      EXPECT_NEAR(NumberAt(curve, 12 + 2 * i, 2) / 65535.0, SrgbLight(static_cast<double>(i) / 255),
                  1e-5)
          << name;
    }
  }
}

// Little CMS sees the colours that were given for the inks.
TEST(StandardProfiles, OfInksHaveTheirColors) {
  const auto color_of = [](const Cmyk& inks) {
    Srgb color{};
    for (std::size_t i = 0; i < 3; ++i) {
      color[i] = static_cast<std::uint8_t>((255 - inks[i]) * (255 - inks[3] / 2) / 255);
    }
    return color;
  };
  const std::string profile = CmykProfileOfVersion2(color_of);
  EXPECT_EQ(UsableProfile(profile, 4), profile);
  const auto transform = IccTransform::Make(profile, 4);
  ASSERT_NE(transform, nullptr);
  for (unsigned place = 0; place < 7 * 7 * 7 * 7; place += 5) {
    Cmyk inks{};
    unsigned rest = place;
    for (std::uint8_t& ink : inks) {
      ink = static_cast<std::uint8_t>(rest % 7 * 255 / 6);
      rest /= 7;
    }
    Srgb seen{};
    transform->Convert(inks.data(), seen.data(), 1);
    const Srgb wanted = color_of(inks);
    for (std::size_t i = 0; i < 3; ++i) {
      EXPECT_NEAR(seen[i], wanted[i], 16) << place;
    }
  }
}

// Little CMS takes its colours for what they are.
TEST(StandardProfiles, LeaveColoursAsTheyAre) {
  const auto transform = IccTransform::Make(SrgbProfile(), 3);
  ASSERT_NE(transform, nullptr);
  std::vector<std::uint8_t> colors;
  for (int i = 0; i < 256; ++i) {
    for (const int component : {i, 255 - i, i * 7 % 256}) {
      colors.push_back(static_cast<std::uint8_t>(component));
    }
  }
  std::vector<std::uint8_t> seen(colors.size());
  transform->Convert(colors.data(), seen.data(), 256);
  for (std::size_t i = 0; i < colors.size(); ++i) {
    EXPECT_LE(std::abs(seen[i] - colors[i]), 1) << i;
  }
}

}  // namespace
}  // namespace TarnixTools::engines
