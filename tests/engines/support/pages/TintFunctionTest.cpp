// What functions make of tints, by each of the ways that a document may describe them in.
#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/support/pages/TintFunction.h"
#include "pdf/write/RewriteFixture.h"
#include "support/RawPdf.h"

namespace TarnixTools::engines {
namespace {

using ::testing::DoubleNear;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

// The function that is object 5, a stream where there is data.
std::optional<TintFunction> Read(const std::string& entries, const std::optional<std::string>& data,
                                 std::size_t inputs, std::size_t outputs) {
  testing::RawPdf file;
  file.Object(1, "<</Type/Catalog/Pages<</Kids[]>>>>");
  if (data) {
    file.Stream(5, entries, *data);
  } else {
    file.Object(5, "<<" + entries + ">>");
  }
  const std::string bytes = file.Table();
  const auto document = testing::OpenBytes(bytes);
  pdf::Arena arena;
  return TintFunction::Read(*document, document->Follow(pdf::Object::Ref({5, 0}), arena), inputs,
                            outputs);
}

std::vector<double> At(const std::optional<TintFunction>& function, std::vector<double> tints) {
  return function ? function->At(tints) : std::vector<double>{-1};
}

auto Near(double value) {
  return DoubleNear(value, 1e-6);
}

TEST(TintFunction, LeadsFromOneColorToAnother) {
  const auto line = Read("/FunctionType 2/C0[0 1]/C1[1 0.5]/N 1", std::nullopt, 1, 2);
  EXPECT_THAT(At(line, {0}), ElementsAre(Near(0), Near(1)));
  EXPECT_THAT(At(line, {0.5}), ElementsAre(Near(0.5), Near(0.75)));
  EXPECT_THAT(At(line, {1}), ElementsAre(Near(1), Near(0.5)));
  EXPECT_THAT(At(line, {7}), ElementsAre(Near(1), Near(0.5)));
  EXPECT_THAT(At(line, {-7}), ElementsAre(Near(0), Near(1)));
  EXPECT_THAT(At(line, {}), ElementsAre(Near(1), Near(0.5)));
  EXPECT_EQ(line->step_count(), 1U);
  const auto curve = Read("/FunctionType 2/N 2", std::nullopt, 1, 1);
  EXPECT_THAT(At(curve, {0.5}), ElementsAre(Near(0.25)));
  EXPECT_THAT(At(Read("/FunctionType 2/C0[0.2]", std::nullopt, 1, 2), {0}),
              ElementsAre(Near(0.2), Near(0)));
}

TEST(TintFunction, ComputesAsItsProgramSays) {
  const auto swapped = Read("/FunctionType 4/Range[0 1 0 0.5]", "{exch}", 2, 2);
  EXPECT_THAT(At(swapped, {0.25, 0.75}), ElementsAre(Near(0.75), Near(0.25)));
  EXPECT_THAT(At(swapped, {0.75, 1.5}), ElementsAre(Near(1), Near(0.5)));  // in the range
  EXPECT_EQ(swapped->step_count(), 2U);
  // The last numbers count.
  EXPECT_THAT(At(Read("/FunctionType 4/Range[0 9]", "{1 2 3}", 1, 1), {0}), ElementsAre(Near(3)));
  EXPECT_THAT(At(Read("/FunctionType 4/Range[0 1 0 1]", "{pop 1}", 1, 2), {0}), IsEmpty());
}

TEST(TintFunction, LooksUpSamples) {
  const std::string entries = "/FunctionType 0/BitsPerSample 8/Range[0 1 0 1]";
  const auto line = Read(entries + "/Size[3]", std::string("\x00\xFF\x33\x66\xFF\x00", 6), 1, 2);
  EXPECT_THAT(At(line, {0}), ElementsAre(Near(0), Near(1)));
  EXPECT_THAT(At(line, {0.5}), ElementsAre(Near(0.2), Near(0.4)));
  EXPECT_THAT(At(line, {0.75}), ElementsAre(Near(0.6), Near(0.2)));
  EXPECT_THAT(At(line, {1}), ElementsAre(Near(1), Near(0)));
  EXPECT_THAT(At(line, {2}), ElementsAre(Near(1), Near(0)));
  EXPECT_EQ(line->step_count(), 2U);
  // The other way round, and to other numbers.
  const auto turned = Read(entries + "/Size[3]/Encode[2 0]/Decode[0 10 -1 1]",
                           std::string("\x00\xFF\x33\x66\xFF\x00", 6), 1, 2);
  EXPECT_THAT(At(turned, {0}), ElementsAre(Near(10), Near(-1)));
  EXPECT_THAT(At(turned, {1}), ElementsAre(Near(0), Near(1)));
}

TEST(TintFunction, MixesTheSamplesAroundAPlace) {
  const auto grid = Read("/FunctionType 0/BitsPerSample 8/Range[0 255]/Size[2 3]",
                         std::string("\x00\x0A\x14\x1E\x28\x32", 6), 2, 1);
  EXPECT_THAT(At(grid, {0, 0}), ElementsAre(Near(0)));
  EXPECT_THAT(At(grid, {1, 0}), ElementsAre(Near(10)));
  EXPECT_THAT(At(grid, {0, 0.5}), ElementsAre(Near(20)));
  EXPECT_THAT(At(grid, {1, 1}), ElementsAre(Near(50)));
  EXPECT_THAT(At(grid, {0.5, 0.25}), ElementsAre(Near(15)));
  EXPECT_THAT(At(grid, {0.5}), ElementsAre(Near(5)));
  EXPECT_EQ(grid->step_count(), 4U);
}

TEST(TintFunction, TakesTheNearestSampleOfManyInks) {
  std::string samples;
  std::string sizes;
  for (int i = 0; i < 128; ++i) {
    samples += static_cast<char>(2 * i);
  }
  for (int i = 0; i < 7; ++i) {
    sizes += " 2";
  }
  const auto grid =
      Read("/FunctionType 0/BitsPerSample 8/Range[0 255]/Size[" + sizes + "]", samples, 7, 1);
  EXPECT_THAT(At(grid, {0.4, 0.6, 0, 0, 0, 0, 1}), ElementsAre(Near(2 * (2 + 64))));
  EXPECT_EQ(grid->step_count(), 64U);
}

const std::string kLine = "<</FunctionType 2/C0[0]/C1[1]/N 1>>";

TEST(TintFunction, GoesFromPartToPart) {
  const auto parts = Read(
      "/FunctionType 3/Domain[0.2 0.8]/Bounds[0.4 0.6]/Encode[0 1 1 0 0.5 0.7]"
      "/Functions[" +
          kLine + kLine + "<</FunctionType 2/C0[10]/C1[20]/N 1>>]",
      std::nullopt, 1, 1);
  EXPECT_THAT(At(parts, {0}), ElementsAre(Near(0)));
  EXPECT_THAT(At(parts, {0.2}), ElementsAre(Near(0)));
  EXPECT_THAT(At(parts, {0.25}), ElementsAre(Near(0.25)));
  EXPECT_THAT(At(parts, {0.4}), ElementsAre(Near(1)));
  EXPECT_THAT(At(parts, {0.45}), ElementsAre(Near(0.75)));
  EXPECT_THAT(At(parts, {0.6}), ElementsAre(Near(15)));
  EXPECT_THAT(At(parts, {0.7}), ElementsAre(Near(16)));
  EXPECT_THAT(At(parts, {0.8}), ElementsAre(Near(17)));
  EXPECT_THAT(At(parts, {1}), ElementsAre(Near(17)));
  EXPECT_THAT(At(parts, {}), ElementsAre(Near(17)));
  EXPECT_EQ(parts->step_count(), 4U);
  // What is missing: one part up to 1, and 0 for all of its tints.
  const auto bare = Read("/FunctionType 3/Functions[" + kLine + "]", std::nullopt, 1, 1);
  EXPECT_THAT(At(bare, {0.5}), ElementsAre(Near(0)));
  const auto turned =
      Read("/FunctionType 3/Domain[1 0]/Encode[0 1]/Functions[" + kLine + "]", std::nullopt, 1, 1);
  EXPECT_THAT(At(turned, {0.5}), ElementsAre(Near(0)));
}

TEST(TintFunction, HasBoundsForItsParts) {
  const auto nested = [](int depth) {
    std::string function = kLine;
    for (int i = 0; i < depth; ++i) {
      function = "<</FunctionType 3/Domain[0 1]/Encode[0 1]/Functions[" + function + "]>>";
    }
    return Read(function.substr(2, function.size() - 4), std::nullopt, 1, 1).has_value();
  };
  EXPECT_TRUE(nested(8));
  EXPECT_FALSE(nested(9));
  const auto wide = [](int count, int others) {
    std::string parts;
    for (int i = 0; i < count; ++i) {
      parts += kLine;
    }
    std::string more;
    for (int i = 0; i < others; ++i) {
      more += kLine;
    }
    return Read("/FunctionType 3/Domain[0 1]/Functions[<</FunctionType 3/Functions[" + parts +
                    "]>><</FunctionType 3/Functions[" + more + "]>>]",
                std::nullopt, 1, 1)
        .has_value();
  };
  EXPECT_TRUE(wide(500, 498));
  EXPECT_FALSE(wide(500, 499));
  EXPECT_FALSE(wide(500, 0));
  // The depth is that of one branch, not of all of them.
  std::string flat;
  for (int i = 0; i < 12; ++i) {
    flat += "<</FunctionType 3/Functions[" + kLine + "]>>";
  }
  EXPECT_TRUE(Read("/FunctionType 3/Functions[" + flat + "]", std::nullopt, 1, 1));
}

TEST(TintFunction, ReadsSamplesOfEveryDepth) {
  const struct {
    int bits;
    std::string data;
    std::vector<double> values;  // in hundredths of the greatest
  } kRows[] = {
      {1, "\x50", {0, 100, 0, 100}},
      {2, "\x1B", {0, 100 / 3.0, 200 / 3.0, 100}},
      {4, std::string("\x0F\x5A", 2), {0, 100, 100 / 3.0, 200 / 3.0}},
      {12, std::string("\x00\x0F\xFF\x80\x08\x01", 6), {0, 100, 204800 / 4095.0, 204900 / 4095.0}},
      {16,
       std::string("\x00\x00\xFF\xFF\x80\x00\x00\x01", 8),
       {0, 100, 3276800 / 65535.0, 100 / 65535.0}},
      {24,
       std::string("\x00\x00\x00\xFF\xFF\xFF\x80\x00\x00\x00\x00\x00", 12),
       {0, 100, 838860800 / 16777215.0, 0}},
      {32,
       std::string("\x00\x00\x00\x00\xFF\xFF\xFF\xFF\x80\x00\x00\x00\x00\x00\x00\x00", 16),
       {0, 100, 214748364800 / 4294967295.0, 0}},
  };

  for (const auto& row : kRows) {
    const auto grid =
        Read("/FunctionType 0/Range[0 100]/Size[4]/BitsPerSample " + std::to_string(row.bits),
             row.data, 1, 1);
    for (std::size_t i = 0; i < 4; ++i) {
      EXPECT_THAT(At(grid, {static_cast<double>(i) / 3}), ElementsAre(Near(row.values.at(i))))
          << row.bits << " bits";
    }
  }
}

TEST(TintFunction, IsNoneWhereItCannotBeRead) {
  EXPECT_FALSE(Read("/FunctionType 3", std::nullopt, 1, 1));
  EXPECT_FALSE(Read("/FunctionType 2", std::nullopt, 2, 1));
  EXPECT_FALSE(Read("/FunctionType 4", "no program", 1, 1));
  EXPECT_FALSE(Read("/FunctionType 4", std::nullopt, 1, 1));
  const std::string grid = "/FunctionType 0/Range[0 1]/BitsPerSample ";
  EXPECT_FALSE(Read(grid + "5/Size[2]", "abcd", 1, 1));
  EXPECT_FALSE(Read(grid + "8/Size[2]", std::nullopt, 1, 1));
  EXPECT_FALSE(Read(grid + "8/Size[1]", "abcd", 1, 1));
  EXPECT_FALSE(Read(grid + "8/Size[2 3]", "abcde", 2, 1));
  EXPECT_FALSE(Read(grid + "8", "abcd", 2, 1));
  EXPECT_THAT(At(Read(grid + "8", std::string("\x00\x00\xFF", 3), 1, 1), {1}),
              ElementsAre(Near(1)));
}

}  // namespace
}  // namespace TarnixTools::engines
