#include "engines/office/writers/text/BulletLabel.h"

#include <algorithm>
#include <array>
#include <utility>

#include "foundation/Utf8.h"

namespace TarnixTools::engines::office {

namespace {

constexpr char32_t kFirstPrivate = 0xE000;
constexpr char32_t kLastPrivate = 0xF8FF;
constexpr std::string_view kUsual = "•";

// Bullets of Symbol and Wingdings, by the codes that these fonts have in documents.
constexpr std::array<std::pair<char32_t, std::string_view>, 12> kBullets = {{{0xF0A7, "▪"},
                                                                             {0xF06E, "■"},
                                                                             {0xF071, "❑"},
                                                                             {0xF0A8, "◻"},
                                                                             {0xF06C, "●"},
                                                                             {0xF0D8, "➢"},
                                                                             {0xF0E0, "→"},
                                                                             {0xF0E8, "➔"},
                                                                             {0xF0FC, "✓"},
                                                                             {0xF076, "❖"},
                                                                             {0xF02D, "-"},
                                                                             {0xF0B0, "°"}}};

}  // namespace

BulletLabel BulletLabelOf(const std::string& text) {
  if (text.empty()) {
    return {std::string(kUsual), false};
  }
  const char32_t first = DecodeUtf8(text).character;
  if (first < kFirstPrivate || first > kLastPrivate) {
    return {text, true};
  }
  const auto known = std::find_if(kBullets.begin(), kBullets.end(),
                                  [first](const auto& entry) { return entry.first == first; });
  return {std::string(known == kBullets.end() ? kUsual : known->second), false};
}

}  // namespace TarnixTools::engines::office
