#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/codecs/Jbig2Decoder.h"
#include "engines/support/codecs/jbig2/ArithmeticDecoder.h"
#include "engines/support/codecs/jbig2/QeTable.h"
#include "support/TestImages.h"

namespace TarnixTools::engines {
namespace {

using testing::Big16;
using testing::Big32;

// A picture as text: '#' is black.
using Picture = std::vector<std::string>;

bool IsBlack(const Picture& picture, int x, int y) {
  return y >= 0 && y < static_cast<int>(picture.size()) && x >= 0 &&
         x < static_cast<int>(picture[static_cast<std::size_t>(y)].size()) &&
         picture[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)] == '#';
}

Picture Painted(int width, int height, const std::function<bool(int, int)>& is_black) {
  Picture picture(static_cast<std::size_t>(height),
                  std::string(static_cast<std::size_t>(width), '.'));
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      picture[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)] =
          is_black(x, y) ? '#' : '.';
    }
  }
  return picture;
}

// The arithmetic encoder (ISO/IEC 14492, annex E). Contexts have names: those of the integer decoding
// procedures begin with the procedure's.
class Coder {
 public:
  void Put(const std::string& name, int value) {
    jbig2::Context& context = contexts_[name];
    const jbig2::QeRow& row = jbig2::kQeTable[context.index];
    interval_ -= row.qe;
    if (value == context.mps) {
      if ((interval_ & 0x8000U) != 0) {
        code_ += row.qe;
        return;
      }
      if (interval_ < row.qe) {
        interval_ = row.qe;
      } else {
        code_ += row.qe;
      }
      context.index = row.nmps;
    } else {
      if (interval_ < row.qe) {
        code_ += row.qe;
      } else {
        interval_ = row.qe;
      }
      if (row.switches) {
        context.mps = static_cast<std::uint8_t>(1 - context.mps);
      }
      context.index = row.nlps;
    }
    do {
      interval_ <<= 1U;
      code_ <<= 1U;
      if (--count_ == 0) {
        PutByte();
      }
    } while ((interval_ & 0x8000U) == 0);
  }

  // Annex A; nothing is the value OOB.
  void PutInteger(const std::string& name, std::optional<int> value) {
    const unsigned size = static_cast<unsigned>(std::abs(value.value_or(0)));

    struct Range {
      unsigned first, bits, prefix, prefix_bits;
    };

    constexpr std::array<Range, 4> kRanges = {
        {{0, 2, 0b0, 1}, {4, 4, 0b10, 2}, {20, 6, 0b110, 3}, {84, 8, 0b1110, 4}}};
    const Range& range = *std::find_if(kRanges.rbegin(), kRanges.rend(),
                                       [&](const Range& r) { return size >= r.first; });
    unsigned prev = 1;
    const auto put = [&](unsigned bits, unsigned count) {
      for (unsigned i = count; i-- > 0;) {
        const unsigned bit = bits >> i & 1U;
        Put(name + std::to_string(prev), static_cast<int>(bit));
        prev = prev < 256 ? prev << 1U | bit : ((prev << 1U | bit) & 511U) | 256U;
      }
    };
    put(!value || *value < 0 ? 1 : 0, 1);
    put(range.prefix, range.prefix_bits);
    put(size - range.first, range.bits);
  }

  void PutId(unsigned id, unsigned bits) {
    unsigned prev = 1;
    for (unsigned i = bits; i-- > 0;) {
      Put("IAID" + std::to_string(prev), static_cast<int>(id >> i & 1U));
      prev = prev << 1U | (id >> i & 1U);
    }
  }

  // A generic region of template 3, its adaptive template pixel at (2, -1).
  void PutGeneric(const Picture& picture, bool typical_prediction = false) {
    bool was_typical = false;
    for (int y = 0; y < static_cast<int>(picture.size()); ++y) {
      if (typical_prediction) {
        const bool is_typical =
            y > 0 ? picture[static_cast<std::size_t>(y)] == picture[static_cast<std::size_t>(y - 1)]
                  : picture[0].find('#') == std::string::npos;
        Put("generic" + std::to_string(0x0195), is_typical != was_typical ? 1 : 0);
        was_typical = is_typical;
        if (is_typical) {
          continue;
        }
      }
      for (int x = 0; x < static_cast<int>(picture[0].size()); ++x) {
        int context = 0;
        for (const auto& [dx, dy] : std::initializer_list<std::pair<int, int>>{{-3, -1},
                                                                               {-2, -1},
                                                                               {-1, -1},
                                                                               {0, -1},
                                                                               {1, -1},
                                                                               {2, -1},
                                                                               {-4, 0},
                                                                               {-3, 0},
                                                                               {-2, 0},
                                                                               {-1, 0}}) {
          context = 2 * context + (IsBlack(picture, x + dx, y + dy) ? 1 : 0);
        }
        Put("generic" + std::to_string(context), IsBlack(picture, x, y) ? 1 : 0);
      }
    }
  }

  // A generic refinement region of template 1.
  void PutRefinement(const Picture& picture, const Picture& reference, int dx, int dy) {
    for (int y = 0; y < static_cast<int>(picture.size()); ++y) {
      for (int x = 0; x < static_cast<int>(picture[0].size()); ++x) {
        std::string context = "refinement";
        for (const auto& [ox, oy] :
             std::initializer_list<std::pair<int, int>>{{-1, -1}, {0, -1}, {1, -1}, {-1, 0}}) {
          context += IsBlack(picture, x + ox, y + oy) ? '1' : '0';
        }
        for (const auto& [ox, oy] : std::initializer_list<std::pair<int, int>>{
                 {0, -1}, {-1, 0}, {0, 0}, {1, 0}, {0, 1}, {1, 1}}) {
          context += IsBlack(reference, x - dx + ox, y - dy + oy) ? '1' : '0';
        }
        Put(context, IsBlack(picture, x, y) ? 1 : 0);
      }
    }
  }

  std::string Finish() {
    const std::uint32_t most = code_ + interval_;
    code_ |= 0xFFFF;
    if (code_ >= most) {
      code_ -= 0x8000;
    }
    code_ <<= count_;
    PutByte();
    code_ <<= count_;
    PutByte();
    return bytes_.substr(1) + "\xFF\xAC";
  }

 private:
  void PutByte() {
    if (Last() != 0xFF && code_ >= 0x8000000) {
      bytes_.back() = static_cast<char>(Last() + 1);
      if (Last() == 0xFF) {
        code_ &= 0x7FFFFFF;
      }
    }
    const bool is_stuffed = Last() == 0xFF;
    bytes_ += static_cast<char>(code_ >> (is_stuffed ? 20U : 19U));
    code_ &= is_stuffed ? 0xFFFFFU : 0x7FFFFU;
    count_ = is_stuffed ? 7 : 8;
  }

  unsigned Last() const { return static_cast<unsigned char>(bytes_.back()); }

  std::map<std::string, jbig2::Context> contexts_;
  std::string bytes_ = std::string(1, '\0');
  std::uint32_t code_ = 0;
  std::uint32_t interval_ = 0x8000;
  unsigned count_ = 12;
};

std::string Segment(int number, int type, const std::string& data,
                    const std::string& referred = {}) {
  std::string segment = Big32(static_cast<std::uint32_t>(number));
  segment += static_cast<char>(type);
  segment += static_cast<char>(referred.size() << 5U);
  segment += referred + '\1' + Big32(static_cast<std::uint32_t>(data.size()));
  return segment + data;
}

std::string Page(int width, int height) {
  return Segment(0, 48,
                 Big32(static_cast<std::uint32_t>(width)) +
                     Big32(static_cast<std::uint32_t>(height)) + Big32(0) + Big32(0) +
                     std::string(3, '\0'));
}

std::string RegionInformation(int width, int height, int left = 0, int top = 0) {
  std::string info;
  for (const int value : {width, height, left, top}) {
    info += Big32(static_cast<std::uint32_t>(value));
  }
  return info + '\0';
}

constexpr char kTemplate3 = 3 << 1;
const std::string kAdaptive("\x02\xFF", 2);

Picture Decoded(const std::string& data, int width, int height, const std::string& globals = {}) {
  const auto decoded = DecodeJbig2(globals, data, static_cast<std::uint32_t>(width),
                                   static_cast<std::uint32_t>(height));
  if (!decoded) {
    return {};
  }
  const auto row_bytes = static_cast<std::size_t>((width + 7) / 8);
  return Painted(width, height, [&](int x, int y) {
    const std::size_t at =
        row_bytes * static_cast<std::size_t>(y) + static_cast<std::size_t>(x / 8);
    return (static_cast<unsigned char>(decoded->rows[at]) >> (7 - x % 8) & 1) == 0;
  });
}

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
