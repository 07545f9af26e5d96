#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "pdf/Error.h"
#include "pdf/Limits.h"
#include "pdf/filters/Filters.h"

namespace TarnixTools::pdf {
namespace {

constexpr std::size_t kAmple = std::size_t{1} << 30;

ErrorCode CodeOf(const std::vector<FilterStep>& steps, std::string_view encoded,
                 std::size_t max_bytes = kAmple) {
  try {
    Decode(steps, encoded, max_bytes);
  } catch (const Error& error) {
    return error.code();
  }
  ADD_FAILURE() << "nothing was thrown";
  return ErrorCode::kInternal;
}

std::string Deflated(std::string_view data) {
  std::string out;
  DeflateTo(out, data, 9);
  return out;
}

TEST(Filters, KnowsFullAndAbbreviatedNames) {
  EXPECT_EQ(FilterKindOf("FlateDecode"), FilterKind::kFlate);
  EXPECT_EQ(FilterKindOf("Fl"), FilterKind::kFlate);
  EXPECT_EQ(FilterKindOf("LZW"), FilterKind::kLzw);
  EXPECT_EQ(FilterKindOf("A85"), FilterKind::kAscii85);
  EXPECT_EQ(FilterKindOf("AHx"), FilterKind::kAsciiHex);
  EXPECT_EQ(FilterKindOf("RL"), FilterKind::kRunLength);
  EXPECT_EQ(FilterKindOf("Crypt"), FilterKind::kCrypt);
  EXPECT_EQ(FilterKindOf("DCT"), FilterKind::kImage);
  EXPECT_EQ(FilterKindOf("JBIG2Decode"), FilterKind::kImage);
  EXPECT_EQ(FilterKindOf("flatedecode"), FilterKind::kUnknown);
  EXPECT_EQ(FilterKindOf(""), FilterKind::kUnknown);
}

TEST(Filters, GivesTheDataItselfWithoutSteps) {
  EXPECT_EQ(Decode({}, "as it is", kAmple).data, "as it is");
  EXPECT_EQ(CodeOf({}, "as it is", 7), ErrorCode::kLimitExceeded);
}

TEST(Filters, RunsStepsFirstToLast) {
  const std::vector<FilterStep> steps = {{FilterKind::kAsciiHex, {}}, {FilterKind::kRunLength, {}}};
  const Decoded decoded = Decode(steps, "02 61 62 63 FE 64 80>", kAmple);
  EXPECT_EQ(decoded.data, "abcddd");
  EXPECT_TRUE(decoded.complete);
}

TEST(Filters, RemembersDamageInAnEarlyStep) {
  const std::vector<FilterStep> steps = {{FilterKind::kAsciiHex, {}}, {FilterKind::kRunLength, {}}};
  const Decoded decoded = Decode(steps, "02 61 62 63 80", kAmple);
  EXPECT_EQ(decoded.data, "abc");
  EXPECT_FALSE(decoded.complete);
}

TEST(Filters, TakesEmptyDataAsEmpty) {
  for (const FilterKind kind : {FilterKind::kFlate, FilterKind::kLzw, FilterKind::kAscii85,
                                FilterKind::kAsciiHex, FilterKind::kRunLength}) {
    const Decoded decoded = Decode({{kind, {.predictor = 12, .columns = 4}}}, "", kAmple);
    EXPECT_EQ(decoded.data, "");
    EXPECT_TRUE(decoded.complete);
  }
}

TEST(Filters, RefusesStepsThatAreNotDecodedHere) {
  for (const FilterKind kind : {FilterKind::kCrypt, FilterKind::kImage, FilterKind::kUnknown}) {
    EXPECT_EQ(CodeOf({{kind, {}}}, "x"), ErrorCode::kFilterFailed);
  }
}

TEST(Filters, RefusesTooManySteps) {
  const FilterStep hex{FilterKind::kAsciiHex, {}};
  const auto most = static_cast<std::size_t>(limits::kMaxFilters);
  EXPECT_NO_THROW(Decode(std::vector<FilterStep>(most, hex), ">", kAmple));
  EXPECT_EQ(CodeOf(std::vector<FilterStep>(most + 1, hex), ">"), ErrorCode::kFilterFailed);
}

TEST(Filters, BoundsTheOutputOfEveryStep) {
  const std::string deflated = Deflated(std::string(1000, 'a'));
  const FilterStep flate{FilterKind::kFlate, {}};
  EXPECT_EQ(Decode({flate}, deflated, 1000).data.size(), 1000U);
  EXPECT_EQ(CodeOf({flate}, deflated, 999), ErrorCode::kLimitExceeded);
  EXPECT_EQ(CodeOf({{FilterKind::kRunLength, {}}}, "\x81x\x81x\x80", 255),
            ErrorCode::kLimitExceeded);
  EXPECT_EQ(CodeOf({{FilterKind::kAsciiHex, {}}}, "616263>", 2), ErrorCode::kLimitExceeded);
  EXPECT_EQ(CodeOf({{FilterKind::kAscii85, {}}}, "zz~>", 7), ErrorCode::kLimitExceeded);
  EXPECT_EQ(CodeOf({flate, {FilterKind::kRunLength, {}}}, Deflated("\x81x\x80"), 100),
            ErrorCode::kLimitExceeded);
}

TEST(Filters, GiveWhatCanBeHadWhereDamageMayNotThrow) {
  const FilterStep hex{FilterKind::kAsciiHex, {}};
  const Decoded sound = TryDecode({hex}, "6162>", kAmple);
  EXPECT_EQ(sound.data, "ab");
  EXPECT_TRUE(sound.complete);
  const Decoded cut = TryDecode({hex}, "6162", kAmple);
  EXPECT_EQ(cut.data, "ab");
  EXPECT_FALSE(cut.complete);
  EXPECT_FALSE(cut.is_too_long);
}

TEST(Filters, GiveNothingOfWhatIsRefusedWhereDamageMayNotThrow) {
  const Decoded unknown = TryDecode({{FilterKind::kUnknown, {}}}, "x", kAmple);
  EXPECT_EQ(unknown.data, "");
  EXPECT_FALSE(unknown.complete);
  EXPECT_FALSE(unknown.is_too_long);
  const Decoded long_data = TryDecode({{FilterKind::kAsciiHex, {}}}, "616263>", 2);
  EXPECT_EQ(long_data.data, "");
  EXPECT_FALSE(long_data.complete);
  EXPECT_TRUE(long_data.is_too_long);
}

TEST(Filters, StopsBombsOfSeveralLayers) {
  // 200 MB of zeros deflate to 200 KB and these to 1 KB: within max_bytes, but not within any sane
  // expansion.
  const std::string bomb = Deflated(Deflated(std::string(200'000'000, '\0')));
  ASSERT_LT(bomb.size(), 20'000U);
  const FilterStep flate{FilterKind::kFlate, {}};
  EXPECT_EQ(CodeOf({flate, flate}, bomb), ErrorCode::kLimitExceeded);
}

}  // namespace
}  // namespace TarnixTools::pdf
