// JBIG2 data for tests, coded arithmetically (ISO/IEC 14492).
//
//   Coder coder;
//   coder.PutGeneric(picture);
//   const std::string data = Page(41, 25) + Segment(1, 38, RegionInformation(41, 25) + kTemplate3 +
//                                                              kAdaptive + coder.Finish());
#ifndef TARNIX_TESTS_ENGINES_SUPPORT_CODECS_JBIG2CODER_H_
#define TARNIX_TESTS_ENGINES_SUPPORT_CODECS_JBIG2CODER_H_

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "engines/support/codecs/Jbig2Decoder.h"
#include "engines/support/codecs/jbig2/ArithmeticEncoder.h"
#include "support/PnmImage.h"
#include "support/RawPdf.h"
#include "support/TestImages.h"

namespace TarnixTools::testing::jbig2 {

// A picture as text: '#' is black.
using Picture = std::vector<std::string>;

inline bool IsBlack(const Picture& picture, int x, int y) {
  return y >= 0 && y < static_cast<int>(picture.size()) && x >= 0 &&
         x < static_cast<int>(picture[static_cast<std::size_t>(y)].size()) &&
         picture[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)] == '#';
}

inline Picture Painted(int width, int height, const std::function<bool(int, int)>& is_black) {
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

// Codes decisions in contexts that have names: those of the integer decoding procedures begin with the
// procedure's.
class Coder {
 public:
  void Put(const std::string& name, int value) { encoder_.Encode(contexts_[name], value); }

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

  // A generic region of template 3.
  //   adaptive - the adaptive template pixel
  //   skip     - pixels that are not coded
  void PutGeneric(const Picture& picture, bool typical_prediction = false,
                  std::pair<int, int> adaptive = {2, -1}, const Picture& skip = {}) {
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
        if (IsBlack(skip, x, y)) {
          continue;
        }
        int context = 0;
        for (const auto& [dx, dy] : std::initializer_list<std::pair<int, int>>{{-3, -1},
                                                                               {-2, -1},
                                                                               {-1, -1},
                                                                               {0, -1},
                                                                               {1, -1},
                                                                               adaptive,
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

  // A generic refinement region; the adaptive template pixels of template 0 at (-1, -1).
  //   typical_prediction - pixels amid others of one colour are not coded, in rows where they have
  //                        that colour
  void PutRefinement(const Picture& picture, const Picture& reference, int dx, int dy,
                     int template_number = 1, bool typical_prediction = false) {
    const auto is_black = [&](int x, int y) { return IsBlack(reference, x - dx, y - dy); };
    bool was_typical = false;
    for (int y = 0; y < static_cast<int>(picture.size()); ++y) {
      const int width = static_cast<int>(picture[0].size());
      bool is_typical = typical_prediction;
      for (int x = 0; x < width; ++x) {
        is_typical =
            is_typical && (!IsUniform(is_black, x, y) || IsBlack(picture, x, y) == is_black(x, y));
      }
      if (typical_prediction) {
        // The context in which only the pixel below is black.
        Put(template_number == 0 ? "refinement0000000100000" : "refinement0000001000",
            is_typical != was_typical ? 1 : 0);
        was_typical = is_typical;
      }
      for (int x = 0; x < width; ++x) {
        if (!is_typical || !IsUniform(is_black, x, y)) {
          Put(RefinementContext(picture, is_black, x, y, template_number),
              IsBlack(picture, x, y) ? 1 : 0);
        }
      }
    }
  }

  std::string Finish() { return encoder_.Finish(); }

 private:
  using Pixels = std::vector<std::pair<int, int>>;

  static bool IsUniform(const std::function<bool(int, int)>& is_black, int x, int y) {
    for (int i = 0; i < 9; ++i) {
      if (is_black(x - 1 + i % 3, y - 1 + i / 3) != is_black(x, y)) {
        return false;
      }
    }
    return true;
  }

  // The pixels of the templates (figures 12 and 13).
  static std::string RefinementContext(const Picture& picture,
                                       const std::function<bool(int, int)>& is_black, int x, int y,
                                       int template_number) {
    const Pixels decoded = template_number == 0 ? Pixels{{0, -1}, {1, -1}, {-1, 0}, {-1, -1}}
                                                : Pixels{{-1, -1}, {0, -1}, {1, -1}, {-1, 0}};
    const Pixels reference =
        template_number == 0
            ? Pixels{{0, -1}, {1, -1}, {-1, 0}, {0, 0}, {1, 0}, {-1, 1}, {0, 1}, {1, 1}, {-1, -1}}
            : Pixels{{0, -1}, {-1, 0}, {0, 0}, {1, 0}, {0, 1}, {1, 1}};
    std::string context = "refinement";
    for (const auto& [dx, dy] : decoded) {
      context += IsBlack(picture, x + dx, y + dy) ? '1' : '0';
    }
    for (const auto& [dx, dy] : reference) {
      context += is_black(x + dx, y + dy) ? '1' : '0';
    }
    return context;
  }

  std::map<std::string, engines::jbig2::Context> contexts_;
  engines::jbig2::ArithmeticEncoder encoder_;
};

// referred: the numbers of the segments that it refers to.
inline std::string Segment(int number, int type, const std::string& data,
                           const std::string& referred = {}) {
  std::string segment = Big32(static_cast<std::uint32_t>(number));
  segment += static_cast<char>(type);
  segment += static_cast<char>(referred.size() << 5U);
  segment += referred + '\1' + Big32(static_cast<std::uint32_t>(data.size()));
  return segment + data;
}

// flags: 4 for a page that is black at first.
inline std::string Page(int width, int height, char flags = 0) {
  return Segment(0, 48,
                 Big32(static_cast<std::uint32_t>(width)) +
                     Big32(static_cast<std::uint32_t>(height)) + Big32(0) + Big32(0) + flags +
                     std::string(2, '\0'));
}

// combination_operator: 0 or, 1 and, 2 exclusive or, 3 its opposite, 4 instead.
inline std::string RegionInformation(int width, int height, int left = 0, int top = 0,
                                     char combination_operator = 0) {
  std::string info;
  for (const int value : {width, height, left, top}) {
    info += Big32(static_cast<std::uint32_t>(value));
  }
  return info + combination_operator;
}

inline constexpr char kTemplate3 = 3 << 1;
inline const std::string kAdaptive("\x02\xFF", 2);

// What the library decodes; nothing where it does not.
inline Picture Decoded(const std::string& data, int width, int height,
                       const std::string& globals = {}) {
  const auto decoded = engines::DecodeJbig2(globals, data, static_cast<std::uint32_t>(width),
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

// A document with one page that the picture covers, a point for each pixel.
inline std::string DocumentOf(const std::string& data, int width, int height) {
  const std::string sides[] = {std::to_string(width), std::to_string(height)};
  std::string page = "/MediaBox[0 0 " + sides[0] + ' ' + sides[1] + ']';
  page += "/Contents 9 0 R/Resources<</XObject<</I 10 0 R>>>>";
  return RawPdf()
      .Pages(1, page)
      .Stream(9, "", sides[0] + " 0 0 " + sides[1] + " 0 0 cm /I Do")
      .Stream(10,
              "/Type/XObject/Subtype/Image/ColorSpace/DeviceGray/BitsPerComponent 1"
              "/Filter/JBIG2Decode/Width " +
                  sides[0] + "/Height " + sides[1],
              data)
      .Table();
}

// What poppler decodes; nothing where it does not.
inline Picture DecodedByPoppler(const std::string& data, int width, int height) {
  const PnmImage image = ImageByPoppler(DocumentOf(data, width, height));
  return image.width != width || image.height != height
             ? Picture()
             : Painted(width, height, [&](int x, int y) { return image.At(x, y)[0] == 0; });
}

}  // namespace TarnixTools::testing::jbig2

#endif  // TARNIX_TESTS_ENGINES_SUPPORT_CODECS_JBIG2CODER_H_
