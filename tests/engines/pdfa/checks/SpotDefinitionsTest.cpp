// Which definitions of a spot colour are the same.
#include <string>

#include <gtest/gtest.h>

#include "engines/pdfa/Limits.h"
#include "engines/pdfa/checks/SpotDefinitions.h"
#include "pdf/write/RewriteFixture.h"
#include "support/RawPdf.h"

namespace TarnixTools::engines::pdfa {
namespace {

using testing::RawPdf;

constexpr const char* kTint = "/FunctionType 4/Domain[0 1]/Range[0 1]";

// Whether the two are the same tint of one colour.
bool AreSame(RawPdf file, std::uint32_t first, std::uint32_t second) {
  const auto document = testing::OpenBytes(file.Table());
  SpotDefinitions colors(*document);
  const pdf::Object space = pdf::Object::Name("DeviceCMYK");
  EXPECT_TRUE(colors.Note("Gold", space, pdf::Object::Ref({first, 0}))) << "the first one";
  const bool is_same = colors.Note("Gold", space, pdf::Object::Ref({second, 0}));
  EXPECT_EQ(colors.Note("Gold", space, pdf::Object::Ref({second, 0})), is_same) << "asked again";
  EXPECT_TRUE(colors.Note("Gold", space, pdf::Object::Ref({first, 0})));
  EXPECT_TRUE(colors.Note("Silver", space, pdf::Object::Ref({second, 0})));
  return is_same;
}

RawPdf Tints() {
  RawPdf file;
  file.Pages(1);
  const std::string joined = "<</FunctionType 3/Domain[0 1]/Bounds[]/Encode[0 1]/Functions[";
  file.Stream(10, kTint, "{dup}");
  file.Stream(11, kTint, "{dup}");
  file.Stream(12, kTint, "{pop}");
  file.Stream(13, "/Range[0 1]/Domain[0 1]/FunctionType 4/F null/DL 5", "{dup}");
  file.Stream(14, std::string(kTint) + "/Filter/ASCIIHexDecode/DecodeParms null", "7B6475707D>");
  file.Stream(15, "/FunctionType 4/Domain[0 1]/Range[0 2]", "{dup}");
  file.Object(16, joined + "10 0 R]>>");
  file.Object(17, joined + "11 0 R]>>");
  file.Object(18, joined + "12 0 R]>>");
  file.Object(19, "<</F(a)" + joined.substr(2) + "10 0 R]>>");
  file.Object(20, "<</F(b)" + joined.substr(2) + "10 0 R]>>");
  file.Object(21, "<</FunctionType 4/Domain[0 1]/Range[0 1]>>");
  return file;
}

TEST(SpotDefinitions, AreTheSameWhereTheirTintsAre) {
  EXPECT_TRUE(AreSame(Tints(), 10, 11));
  EXPECT_FALSE(AreSame(Tints(), 10, 12)) << "other data";
  EXPECT_TRUE(AreSame(Tints(), 10, 13)) << "stored otherwise";
  EXPECT_TRUE(AreSame(Tints(), 10, 14)) << "filtered";
  EXPECT_FALSE(AreSame(Tints(), 10, 15)) << "another entry";
  EXPECT_TRUE(AreSame(Tints(), 16, 17)) << "by references";
  EXPECT_FALSE(AreSame(Tints(), 16, 18));
  EXPECT_FALSE(AreSame(Tints(), 19, 20)) << "/F says how only streams are stored";
  EXPECT_FALSE(AreSame(Tints(), 10, 21)) << "no stream";
}

TEST(SpotDefinitions, AreTheSameWhereTheirSpacesAre) {
  const auto document = testing::OpenBytes(Tints().Table());
  SpotDefinitions colors(*document);
  const pdf::Object tint = pdf::Object::Ref({10, 0});
  const pdf::Object cmyk = pdf::Object::Name("DeviceCMYK");
  const pdf::Object rgb = pdf::Object::Name("DeviceRGB");
  EXPECT_TRUE(colors.Note("Gold", cmyk, tint));
  EXPECT_FALSE(colors.Note("Gold", rgb, tint));
  EXPECT_FALSE(colors.Note("Gold", tint, cmyk)) << "the other way round";
  EXPECT_TRUE(colors.Note("Gol", rgb, tint));
  EXPECT_FALSE(colors.Note("Gold", cmyk, pdf::Object())) << "a tint that is no object of its own";
  EXPECT_FALSE(colors.Note("Gold", cmyk, rgb));
}

// A chain of dictionaries whose last one says something, so many below the first.
RawPdf Chains(int depth) {
  RawPdf file;
  file.Pages(1);
  for (const int first : {100, 200}) {
    for (int i = 0; i < depth; ++i) {
      file.Object(first + i, "<</A " + std::to_string(first + i + 1) + " 0 R>>");
    }
    file.Object(first + depth, "<</A " + std::to_string(first) + ">>");
  }
  return file;
}

TEST(SpotDefinitions, AreComparedOnlySoDeep) {
  EXPECT_FALSE(AreSame(Chains(limits::kMaxDefinitionDepth - 1), 100, 200));
  EXPECT_TRUE(AreSame(Chains(limits::kMaxDefinitionDepth), 100, 200));
}

TEST(SpotDefinitions, AreRememberedUpToABound) {
  const auto document = testing::OpenBytes(Tints().Table());
  SpotDefinitions colors(*document);
  const auto note = [&](std::size_t i, const char* space) {
    return colors.Note(std::to_string(i), pdf::Object::Name(space), pdf::Object());
  };
  for (std::size_t i = 0; i < limits::kMaxSpotColors; ++i) {
    EXPECT_TRUE(note(i, "DeviceCMYK"));
  }
  EXPECT_TRUE(note(0, "DeviceRGB")) << "nothing more is compared";
  EXPECT_TRUE(note(limits::kMaxSpotColors, "DeviceCMYK"));
  EXPECT_TRUE(note(limits::kMaxSpotColors, "DeviceRGB"));
}

TEST(SpotDefinitions, AreComparedUpToABound) {
  const auto document = testing::OpenBytes(Tints().Table());
  SpotDefinitions colors(*document);
  const pdf::Object cmyk = pdf::Object::Name("DeviceCMYK");
  for (std::size_t i = 1; i < limits::kMaxSpotColors; ++i) {
    EXPECT_TRUE(colors.Note(std::to_string(i), cmyk, pdf::Object()));
  }
  EXPECT_FALSE(colors.Note("1", pdf::Object::Name("DeviceRGB"), pdf::Object()));
}

}  // namespace
}  // namespace TarnixTools::engines::pdfa
