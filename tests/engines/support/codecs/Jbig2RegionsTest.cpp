// Regions of JBIG2 pictures in all their kinds, with poppler as a judge.
#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/codecs/CcittEncoder.h"
#include "engines/support/codecs/Jbig2Coder.h"
#include "engines/support/codecs/Jbig2Decoder.h"
#include "support/Readers.h"

namespace TarnixTools::engines {
namespace {

using namespace testing::jbig2;
using testing::Big16;
using testing::Big32;

constexpr int kGenericRegion = 38;
constexpr int kIntermediateGenericRegion = 36;
constexpr int kRefinementRegion = 42;
constexpr int kPatternDictionary = 16;
constexpr int kHalftoneRegion = 22;

// Where poppler is no judge: it takes another context for the typical prediction of refinements
// than MuPDF, which reads what stands here for template 0, and draws nothing where places are
// skipped.
enum class Judge : std::uint8_t { kPoppler, kNone };

void ExpectDecoded(const std::string& data, const Picture& picture, Judge judge = Judge::kPoppler) {
  const int width = static_cast<int>(picture[0].size());
  const int height = static_cast<int>(picture.size());
  EXPECT_EQ(Decoded(data, width, height), picture);
  if (judge == Judge::kPoppler && testing::HasProgram("pdfimages")) {
    EXPECT_EQ(DecodedByPoppler(data, width, height), picture) << "by poppler";
  }
}

bool IsInDisc(int x, int y) {
  return (x - 20) * (x - 20) + (y - 12) * (y - 12) < 90;
}

const Picture kDisc = Painted(41, 25, IsInDisc);
// The disc with a hole, and something beside it.
const Picture kOther = Painted(
    41, 25, [](int x, int y) { return (IsInDisc(x, y) && (x + y) % 7 != 0) || (x == 3 && y > 4); });

std::string Generic(const Picture& picture, int number = 1, int type = kGenericRegion,
                    char combination_operator = 0) {
  Coder coder;
  coder.PutGeneric(picture);
  return Segment(number, type,
                 RegionInformation(static_cast<int>(picture[0].size()),
                                   static_cast<int>(picture.size()), 0, 0, combination_operator) +
                     kTemplate3 + kAdaptive + coder.Finish());
}

// flags: 0 for template 0, 1 for template 1; 2 for typical prediction. Replaces what is there.
std::string Refinement(const Picture& picture, const Picture& reference, int flags,
                       const std::string& referred = {}) {
  Coder coder;
  coder.PutRefinement(picture, reference, 0, 0, flags & 1, (flags & 2) != 0);
  const std::string adaptive = (flags & 1) == 0 ? std::string(4, '\xFF') : std::string();
  return Segment(
      2, kRefinementRegion,
      RegionInformation(41, 25, 0, 0, 4) + static_cast<char>(flags) + adaptive + coder.Finish(),
      referred);
}

TEST(Jbig2Regions, RefineWhatThePageHas) {
  for (int flags = 0; flags < 4; ++flags) {
    SCOPED_TRACE(flags);
    ExpectDecoded(Page(41, 25) + Generic(kDisc) + Refinement(kOther, kDisc, flags), kOther,
                  flags < 2 ? Judge::kPoppler : Judge::kNone);
  }
}

TEST(Jbig2Regions, RefineAnotherThatIsNotSeenItself) {
  for (int flags = 0; flags < 4; ++flags) {
    SCOPED_TRACE(flags);
    ExpectDecoded(Page(41, 25) + Generic(kDisc, 1, kIntermediateGenericRegion) +
                      Refinement(kOther, kDisc, flags, "\1"),
                  kOther, flags < 2 ? Judge::kPoppler : Judge::kNone);
  }
}

TEST(Jbig2Regions, AreNotRefinedByPixelsToCome) {
  const std::string flags = std::string(1, '\0') + std::string("\1\0\xFF\xFF", 4);
  EXPECT_EQ(
      Decoded(Page(41, 25) + Segment(2, kRefinementRegion,
                                     RegionInformation(41, 25) + flags + std::string(40, 'x')),
              41, 25),
      Picture());
}

TEST(Jbig2Regions, AreCombinedWithWhatThePageHas) {
  const auto combined = [](const std::function<bool(bool, bool)>& combine) {
    return Painted(
        41, 25, [&](int x, int y) { return combine(IsBlack(kDisc, x, y), IsBlack(kOther, x, y)); });
  };
  const std::vector<Picture> wanted = {
      combined([](bool a, bool b) { return a || b; }),
      combined([](bool a, bool b) { return a && b; }),
      combined([](bool a, bool b) { return a != b; }),
      combined([](bool a, bool b) { return a == b; }),
      kOther,
  };
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    SCOPED_TRACE(i);
    ExpectDecoded(
        Page(41, 25) + Generic(kDisc) + Generic(kOther, 2, kGenericRegion, static_cast<char>(i)),
        wanted[i]);
  }
}

TEST(Jbig2Regions, LieOnPagesThatMayBeBlack) {
  ExpectDecoded(Page(41, 25, 4) + Generic(kDisc, 1, kGenericRegion, 2),
                Painted(41, 25, [](int x, int y) { return !IsInDisc(x, y); }));
}

TEST(Jbig2Regions, MayBeCodedAsFax) {
  CcittEncoder encoder(41);
  for (int y = 0; y < 25; ++y) {
    std::vector<std::uint8_t> row(6);
    for (int x = 0; x < 41; ++x) {
      row[static_cast<std::size_t>(x / 8)] |=
          static_cast<std::uint8_t>((IsBlack(kOther, x, y) ? 1 : 0) << (7 - x % 8));
    }
    encoder.AddRow(row.data(), 1);
  }
  encoder.Finish();
  const std::string data =
      Page(41, 25) +
      Segment(1, kGenericRegion, RegionInformation(41, 25) + '\1' + std::string(encoder.data()));
  EXPECT_TRUE(NeedsOwnJbig2("", data));
  ExpectDecoded(data, kOther);
}

// Five patterns of 4 by 3 pixels, from white to black, side by side.
std::string Patterns() {
  Coder coder;
  coder.PutGeneric(Painted(20, 3, [](int x, int y) { return x % 4 + y < x / 4 * 2; }), false,
                   {-4, 0});
  return Segment(1, kPatternDictionary,
                 std::string(1, kTemplate3) + '\4' + '\3' + Big32(4) + coder.Finish());
}

// The gray value of a place of the grid.
int GrayOf(int column, int row) {
  return (column + 2 * row) % 5;
}

bool IsPatternBlack(int gray, int x, int y) {
  return x + y < gray * 2;
}

// The planes of gray values of three bits in Gray code, the highest first.
std::string GrayPlanes(int columns, int rows, const Picture& skip = {}) {
  Coder coder;
  for (int bit = 2; bit >= 0; --bit) {
    coder.PutGeneric(Painted(columns, rows,
                             [&](int x, int y) {
                               const int gray = GrayOf(x, y);
                               return !IsBlack(skip, x, y) &&
                                      ((gray >> bit ^ gray >> (bit + 1)) & 1) != 0;
                             }),
                     false, {2, -1}, skip);
  }
  return coder.Finish();
}

std::string Grid(int columns, int rows, int x, int y, int vector_x, int vector_y) {
  const auto big32 = [](int value) { return Big32(static_cast<std::uint32_t>(value)); };
  return big32(columns) + big32(rows) + big32(256 * x) + big32(256 * y) +
         Big16(static_cast<std::uint32_t>(256 * vector_x)) +
         Big16(static_cast<std::uint32_t>(256 * vector_y));
}

TEST(Jbig2Regions, MayBeHalftones) {
  const std::string data =
      Page(24, 9) + Patterns() +
      Segment(2, kHalftoneRegion,
              RegionInformation(24, 9) + kTemplate3 + Grid(6, 3, 0, 0, 4, 0) + GrayPlanes(6, 3),
              "\1");
  EXPECT_TRUE(NeedsOwnJbig2("", data));
  // The grid's steps: four to the right, and as many downwards.
  ExpectDecoded(data, Painted(24, 9, [](int x, int y) {
                  const int row = y / 4;
                  return y % 4 < 3 && IsPatternBlack(GrayOf(x / 4, row), x % 4, y % 4);
                }));
}

// Patterns that lie over each other, in each way, on white and on black.
TEST(Jbig2Regions, CombinePatternsThatOverlap) {
  const std::vector<std::function<bool(bool, bool)>> operators = {
      [](bool a, bool b) { return a || b; }, [](bool a, bool b) { return a && b; },
      [](bool a, bool b) { return a != b; }, [](bool a, bool b) { return a == b; },
      [](bool, bool b) { return b; }};
  for (std::size_t i = 0; i < 2 * operators.size(); ++i) {
    SCOPED_TRACE(i);
    const bool is_black = i >= operators.size();
    const std::size_t number = i % operators.size();
    Picture wanted = Painted(16, 9, [&](int, int) { return is_black; });
    for (int place = 0; place < 6 * 3; ++place) {
      for (int pixel = 0; pixel < 4 * 3; ++pixel) {
        const auto x = static_cast<std::size_t>(place % 6 * 2 + pixel % 4);
        const auto y = static_cast<std::size_t>(place / 6 * 2 + pixel / 4);
        const bool is_dot = IsPatternBlack(GrayOf(place % 6, place / 6), pixel % 4, pixel / 4);
        wanted[y][x] = operators[number](wanted[y][x] == '#', is_dot) ? '#' : '.';
      }
    }
    const unsigned flags = 3U << 1U | static_cast<unsigned>(number) << 4U | (is_black ? 0x80U : 0U);
    const std::string data = Page(16, 9) + Patterns() +
                             Segment(2, kHalftoneRegion,
                                     RegionInformation(16, 9) + static_cast<char>(flags) +
                                         Grid(6, 3, 0, 0, 2, 0) + GrayPlanes(6, 3),
                                     "\1");
    // Poppler passes over patterns within a byte where they are to be kept with what is there.
    ExpectDecoded(data, wanted, number == 1 ? Judge::kNone : Judge::kPoppler);
  }
}

// The grid reaches beyond the region, and its places there are not coded.
TEST(Jbig2Regions, SkipPlacesOutsideOfThem) {
  const Picture skip = Painted(8, 4, [](int column, int row) {
    const int x = 4 * (column - 1);
    const int y = 4 * (row - 1);
    return x + 4 <= 0 || x >= 24 || y + 3 <= 0 || y >= 9;
  });
  const std::string flags(1, static_cast<char>(kTemplate3 | 8));
  const std::string data =
      Page(24, 9) + Patterns() +
      Segment(2, kHalftoneRegion,
              RegionInformation(24, 9) + flags + Grid(8, 4, -4, -4, 4, 0) + GrayPlanes(8, 4, skip),
              "\1");
  ExpectDecoded(data,
                Painted(24, 9,
                        [](int x, int y) {
                          const int column = x / 4 + 1;
                          const int row = y / 4 + 1;
                          return y % 4 < 3 && IsPatternBlack(GrayOf(column, row), x % 4, y % 4);
                        }),
                Judge::kNone);
}

TEST(Jbig2Regions, RefuseHalftonesThatCannotBe) {
  const auto halftone = [](const std::string& grid, const std::string& referred) {
    return Decoded(
        Page(24, 9) + Patterns() +
            Segment(2, kHalftoneRegion,
                    RegionInformation(24, 9) + kTemplate3 + grid + GrayPlanes(6, 3), referred),
        24, 9);
  };
  EXPECT_EQ(halftone(Grid(6, 3, 0, 0, 4, 0), ""), Picture());  // without patterns
  EXPECT_EQ(halftone(Grid(60'000, 60'000, 0, 0, 4, 0), "\1"), Picture());
  EXPECT_EQ(halftone(Grid(6'000, 6'000, 0, 0, 4, 0), "\1"), Picture());
  // Coded as fax, which is left to others.
  EXPECT_EQ(Decoded(Page(24, 9) + Segment(1, kPatternDictionary, "\1\4\3" + Big32(4)), 24, 9),
            Picture());
  // Patterns without pixels, or too many of them.
  for (const std::string& sizes :
       {std::string("\0\3", 2) + Big32(4), std::string("\4\0", 2) + Big32(4),
        std::string("\4\3") + Big32(70'000), std::string("\xFF\xFF") + Big32(65'000)}) {
    EXPECT_EQ(
        Decoded(Page(24, 9) + Segment(1, kPatternDictionary, kTemplate3 + sizes + "data"), 24, 9),
        Picture());
  }
}

}  // namespace
}  // namespace TarnixTools::engines
