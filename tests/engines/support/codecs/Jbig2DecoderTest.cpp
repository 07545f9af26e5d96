#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "engines/support/codecs/Jbig2Coder.h"
#include "engines/support/codecs/Jbig2Decoder.h"
#include "support/TestImages.h"

namespace TarnixTools::engines {
namespace {

using namespace testing::jbig2;
using testing::Big16;
using testing::Big32;

bool IsInDisc(int x, int y) {
  return (x - 20) * (x - 20) + (y - 12) * (y - 12) < 90;
}

TEST(Jbig2Decoder, DecodesPixels) {
  const Picture disc = Painted(41, 25, IsInDisc);
  Coder coder;
  coder.PutGeneric(disc);
  EXPECT_EQ(Decoded(Page(41, 25) + Segment(1, 38,
                                           RegionInformation(41, 25) + kTemplate3 + kAdaptive +
                                               coder.Finish()),
                    41, 25),
            disc);
}

TEST(Jbig2Decoder, DecodesRowsThatAreLikeTheOneAbove) {
  const Picture bars = Painted(70, 40, [](int x, int y) { return y / 6 % 2 == 1 && x % 9 < 4; });
  Coder coder;
  coder.PutGeneric(bars, true);
  const std::string flags(1, static_cast<char>(kTemplate3 | 8));
  EXPECT_EQ(
      Decoded(Page(70, 40) +
                  Segment(1, 39, RegionInformation(70, 40) + flags + kAdaptive + coder.Finish()),
              70, 40),
      bars);
}

TEST(Jbig2Decoder, PutsRegionsWhereTheyBelong) {
  const Picture disc = Painted(41, 25, IsInDisc);
  Coder coder;
  coder.PutGeneric(disc);
  const std::string data =
      Page(60, 40) +
      Segment(1, 38, RegionInformation(41, 25, 30, -5) + kTemplate3 + kAdaptive + coder.Finish());
  EXPECT_EQ(Decoded(data, 60, 40),
            Painted(60, 40, [](int x, int y) { return x >= 30 && IsInDisc(x - 30, y + 5); }));
}

const Picture kCross = {"..#..", "..#..", "#####", "..#..", "..#.."};
const Picture kThickCross = {".###.", ".###.", "#####", ".###.", "..#.."};

// Two symbols, the second of which is the first one refined.
std::string RefinedSymbols() {
  Coder coder;
  coder.PutInteger("IADH", 5);
  coder.PutInteger("IADW", 5);
  coder.PutGeneric(kCross);
  coder.PutInteger("IADW", std::nullopt);
  coder.PutInteger("IAEX", 0);
  coder.PutInteger("IAEX", 1);
  const std::string first =
      Segment(1, 0, Big16(3 << 10) + kAdaptive + Big32(1) + Big32(1) + coder.Finish());
  Coder refining;
  refining.PutInteger("IADH", 5);
  refining.PutInteger("IADW", 5);
  refining.PutInteger("IAAI", 1);
  refining.PutId(0, 1);
  refining.PutInteger("IARDX", 0);
  refining.PutInteger("IARDY", 0);
  refining.PutRefinement(kThickCross, kCross, 0, 0);
  refining.PutInteger("IADW", std::nullopt);
  refining.PutInteger("IAEX", 0);
  refining.PutInteger("IAEX", 2);
  return first +
         Segment(2, 0,
                 Big16(1 << 12 | 3 << 10 | 2) + kAdaptive + Big32(2) + Big32(1) + refining.Finish(),
                 "\1");
}

// The cross and the thick one, and the cross refined in place.
std::string TextOfSymbols() {
  Coder coder;
  coder.PutInteger("IADT", 0);
  coder.PutInteger("IADT", 2);
  coder.PutInteger("IAFS", 1);
  coder.PutId(0, 1);
  coder.PutInteger("IARI", 0);
  coder.PutInteger("IADS", 4);
  coder.PutId(1, 1);
  coder.PutInteger("IARI", 0);
  coder.PutInteger("IADS", 90);
  coder.PutId(0, 1);
  coder.PutInteger("IARI", 1);
  for (const char* const name : {"IARDW", "IARDH", "IARDX", "IARDY"}) {
    coder.PutInteger(name, 0);
  }
  coder.PutRefinement(kThickCross, kCross, 0, 0);
  coder.PutInteger("IADS", std::nullopt);
  // SBREFINE, REFCORNER top left, SBRTEMPLATE 1.
  const std::string flags = Big16(1 << 15 | 1 << 4 | 2);
  return Segment(3, 6, RegionInformation(120, 12) + flags + Big32(3) + coder.Finish(), "\2");
}

Picture ExpectedText() {
  return Painted(120, 12, [](int x, int y) {
    return IsBlack(kCross, x - 1, y - 2) || IsBlack(kThickCross, x - 9, y - 2) ||
           IsBlack(kThickCross, x - 103, y - 2);
  });
}

TEST(Jbig2Decoder, DecodesSymbolsThatAreRefined) {
  EXPECT_EQ(Decoded(Page(120, 12) + RefinedSymbols() + TextOfSymbols(), 120, 12), ExpectedText());
}

TEST(Jbig2Decoder, FindsSymbolsInTheGlobalSegments) {
  const std::string data = Page(120, 12) + TextOfSymbols();
  EXPECT_EQ(Decoded(data, 120, 12, RefinedSymbols()), ExpectedText());
  EXPECT_EQ(Decoded(data, 120, 12), Picture());
}

TEST(Jbig2Decoder, TellsWhatIsItsOwn) {
  EXPECT_TRUE(NeedsOwnJbig2(RefinedSymbols(), Page(9, 9)));
  EXPECT_TRUE(NeedsOwnJbig2("", Page(9, 9) + TextOfSymbols()));
  EXPECT_FALSE(
      NeedsOwnJbig2("", Page(9, 9) + Segment(1, 38, RegionInformation(9, 9) + kTemplate3)));
  EXPECT_TRUE(NeedsOwnJbig2("", Page(9, 9) + Segment(1, 38, RegionInformation(9, 9) + '\1')));
  EXPECT_FALSE(NeedsOwnJbig2("", "not JBIG2 at all, but long enough"));
}

TEST(Jbig2Decoder, KeepsWhatComesBeforeDamage) {
  const Picture disc = Painted(41, 25, IsInDisc);
  Coder coder;
  coder.PutGeneric(disc);
  const std::string good =
      Page(41, 25) +
      Segment(1, 38, RegionInformation(41, 25) + kTemplate3 + kAdaptive + coder.Finish());
  const std::string cut = good + Segment(2, 6, "text without anything", "\1");
  EXPECT_EQ(Decoded(cut, 41, 25), disc);
  EXPECT_TRUE(DecodeJbig2("", good, 41, 25)->is_complete);
  EXPECT_FALSE(DecodeJbig2("", cut, 41, 25)->is_complete);
}

TEST(Jbig2Decoder, RefusesWhatCannotBe) {
  EXPECT_EQ(Decoded("", 8, 8), Picture(8, "........"));
  // Huge regions, endless symbols, pixels that are not decoded yet.
  const std::string huge = RegionInformation(0x7FFFFFFF, 0x7FFFFFFF) + kTemplate3 + kAdaptive;
  EXPECT_EQ(Decoded(Page(8, 8) + Segment(1, 38, huge), 8, 8), Picture());
  const std::string endless = Big16(3 << 10) + kAdaptive + Big32(900'000) + Big32(900'000);
  EXPECT_EQ(Decoded(Page(8, 8) + Segment(1, 0, endless + std::string(40, '\x5A')), 8, 8),
            Picture());
  const std::string later = RegionInformation(8, 8) + kTemplate3 + std::string("\1\0", 2);
  EXPECT_EQ(Decoded(Page(8, 8) + Segment(1, 38, later), 8, 8), Picture());
}

}  // namespace
}  // namespace TarnixTools::engines
