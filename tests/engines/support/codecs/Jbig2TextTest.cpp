// Text regions of JBIG2 pictures: where symbols come to stand (ISO/IEC 14492, 6.4.5), with poppler as
// a judge.
#include <array>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/codecs/Jbig2Coder.h"
#include "support/Readers.h"

namespace TarnixTools::engines {
namespace {

using namespace testing::jbig2;
using testing::Big16;
using testing::Big32;

constexpr int kWidth = 48;
constexpr int kHeight = 40;

const std::array<Picture, 2> kSymbols = {Picture{"####.", "#....", "#...."},
                                         Picture{"##", ".#", ".#", "##", "#."}};

// A dictionary of the two, in the order of their heights.
std::string Dictionary() {
  Coder coder;
  int height = 0;
  for (const Picture& symbol : kSymbols) {
    coder.PutInteger("IADH", static_cast<int>(symbol.size()) - height);
    height = static_cast<int>(symbol.size());
    coder.PutInteger("IADW", static_cast<int>(symbol[0].size()));
    coder.PutGeneric(symbol);
    coder.PutInteger("IADW", std::nullopt);
  }
  coder.PutInteger("IAEX", 0);
  coder.PutInteger("IAEX", 2);
  return Segment(1, 0, Big16(3 << 10) + kAdaptive + Big32(2) + Big32(2) + coder.Finish());
}

struct Text {
  int corner = 1;  // 0 bottom left, 1 top left, 2 bottom right, 3 top right
  bool is_transposed = false;
  int combination_operator = 0;
  bool is_black = false;
  int offset = 0;  // between symbols
  int log_strip_size = 0;
};

struct Instance {
  unsigned id;
  int distance;  // from the one before
  int t;         // within the strip
};

struct Strip {
  int t;  // in strips from the one before
  int s;  // from the start of the one before
  std::vector<Instance> instances;
};

const std::vector<Strip> kStrips = {{1, 3, {{0, 0, 0}, {1, 4, 1}, {0, 5, 0}}},
                                    {2, 2, {{1, 0, 1}, {1, 2, 0}}}};

// Far enough down for symbols that hang on their lower corners.
int FirstStrip(const Text& text) {
  return text.log_strip_size == 0 ? 6 : 2;
}

std::string Segment(const Text& text) {
  Coder coder;
  coder.PutInteger("IADT", -FirstStrip(text));
  std::uint32_t count = 0;
  for (const Strip& strip : kStrips) {
    coder.PutInteger("IADT", strip.t);
    coder.PutInteger("IAFS", strip.s);
    for (const Instance& instance : strip.instances) {
      if (&instance != strip.instances.data()) {
        coder.PutInteger("IADS", instance.distance);
      }
      if (text.log_strip_size > 0) {
        coder.PutInteger("IAIT", instance.t);
      }
      coder.PutId(instance.id, 1);
      ++count;
    }
    coder.PutInteger("IADS", std::nullopt);
  }
  const unsigned flags =
      static_cast<unsigned>(text.log_strip_size) << 2U | static_cast<unsigned>(text.corner) << 4U |
      (text.is_transposed ? 0x40U : 0U) | static_cast<unsigned>(text.combination_operator) << 7U |
      (text.is_black ? 0x200U : 0U) | (static_cast<unsigned>(text.offset) & 31U) << 10U;
  return testing::jbig2::Segment(
      2, 6, RegionInformation(kWidth, kHeight) + Big16(flags) + Big32(count) + coder.Finish(),
      "\1");
}

bool Combined(bool a, bool b, int combination_operator) {
  switch (combination_operator) {
    case 0:
      return a || b;
    case 1:
      return a && b;
    case 2:
      return a != b;
    default:
      return a == b;
  }
}

// What the strips stand for: along the text symbols take their length, across it they hang on their
// reference corner.
Picture Expected(const Text& text) {
  Picture picture = Painted(kWidth, kHeight, [&](int, int) { return text.is_black; });
  const int strip_size = 1 << text.log_strip_size;
  const bool is_bottom = text.corner == 0 || text.corner == 2;
  const bool is_right = text.corner == 2 || text.corner == 3;
  int strip_t = FirstStrip(text) * strip_size;
  int first_s = 0;
  for (const Strip& strip : kStrips) {
    strip_t += strip.t * strip_size;
    first_s += strip.s;
    int s = first_s;
    for (const Instance& instance : strip.instances) {
      const Picture& symbol = kSymbols[instance.id];
      const int width = static_cast<int>(symbol[0].size());
      const int height = static_cast<int>(symbol.size());
      if (&instance != strip.instances.data()) {
        s += instance.distance + text.offset;
      }
      const int t = strip_t + (text.log_strip_size > 0 ? instance.t : 0);
      const int left = !text.is_transposed ? s : is_right ? t - width + 1 : t;
      const int top = text.is_transposed ? s : is_bottom ? t - height + 1 : t;
      for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
          if (top + y < 0 || top + y >= kHeight || left + x < 0 || left + x >= kWidth) {
            continue;
          }
          char& pixel =
              picture[static_cast<std::size_t>(top + y)][static_cast<std::size_t>(left + x)];
          pixel =
              Combined(pixel == '#', IsBlack(symbol, x, y), text.combination_operator) ? '#' : '.';
        }
      }
      s += (text.is_transposed ? height : width) - 1;
    }
  }
  return picture;
}

void ExpectPlaced(const Text& text) {
  const std::string data = Page(kWidth, kHeight) + Dictionary() + Segment(text);
  EXPECT_EQ(Decoded(data, kWidth, kHeight), Expected(text));
  // Poppler passes over symbols within a byte where they are to be kept with what is there.
  if (text.combination_operator != 1 && testing::HasProgram("pdfimages")) {
    EXPECT_EQ(DecodedByPoppler(data, kWidth, kHeight), Expected(text)) << "by poppler";
  }
}

TEST(Jbig2Text, HangsOnAnyCornerInEitherDirection) {
  for (int corner = 0; corner < 4; ++corner) {
    for (const bool is_transposed : {false, true}) {
      SCOPED_TRACE(std::to_string(corner) + (is_transposed ? " transposed" : ""));
      ExpectPlaced({.corner = corner, .is_transposed = is_transposed});
    }
  }
}

TEST(Jbig2Text, IsCombinedWithWhatTheRegionHas) {
  for (int combination_operator = 0; combination_operator < 4; ++combination_operator) {
    for (const bool is_black : {false, true}) {
      SCOPED_TRACE(std::to_string(combination_operator) + (is_black ? " on black" : ""));
      ExpectPlaced({.combination_operator = combination_operator, .is_black = is_black});
    }
  }
}

TEST(Jbig2Text, MayHaveMoreOrLessBetweenSymbols) {
  for (const int offset : {3, -2, 15, -16}) {
    SCOPED_TRACE(offset);
    ExpectPlaced({.offset = offset});
  }
}

// The header of a segment in its long form: more than four segments that it refers to, numbers of two
// and four bytes, and pages of four.
TEST(Jbig2Text, MayReferToManySegments) {
  const std::string text = Segment(Text{});
  const std::string data = text.substr(text.find(Big32(kWidth) + Big32(kHeight)));
  for (const std::uint32_t number : {200U, 256U, 257U, 65536U, 65537U}) {
    for (const std::uint32_t count : {5U, 7U, 8U, 300U}) {
      std::string segment = Big32(number) + '\x46' + Big32(7U << 29U | count);
      segment += std::string(count / 8 + 1, '\0');
      for (std::uint32_t i = 0; i < count; ++i) {  // the dictionary comes last
        const std::string referred = Big32(i + 1 == count ? 1 : 99);
        segment += referred.substr(number <= 256 ? 3 : number <= 65536 ? 2 : 0);
      }
      segment += Big32(1) + Big32(static_cast<std::uint32_t>(data.size())) + data;
      EXPECT_EQ(Decoded(Page(kWidth, kHeight) + Dictionary() + segment, kWidth, kHeight),
                Expected(Text{}))
          << number << " " << count;
    }
  }
}

TEST(Jbig2Text, StandsInStripsOfSeveralRows) {
  for (int size = 1; size < 4; ++size) {
    SCOPED_TRACE(size);
    ExpectPlaced({.log_strip_size = size});
    ExpectPlaced({.corner = 2, .is_transposed = true, .log_strip_size = size});
  }
}

}  // namespace
}  // namespace TarnixTools::engines
