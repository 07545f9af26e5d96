#include "engines/support/layout/paragraphs/HeadingLooks.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <optional>
#include <utility>

#include "engines/support/layout/LayoutLimits.h"
#include "engines/support/layout/paragraphs/ListLabels.h"
#include "foundation/Utf8.h"

namespace TarnixTools::engines {

namespace {

constexpr double kLarger = 1.12;  // than the text of the document
constexpr std::size_t kMostLines = 3;
constexpr std::size_t kLongestBold = 110;  // bytes of a heading that only its weight tells
constexpr double kMuchText = 0.12;         // of the document, that no style of headings has
constexpr std::size_t kSeveral = 8;   // paragraphs, of which the shares of styles tell something
constexpr double kMuchLarger = 1.35;  // so that even a sentence is a heading

// The size in tenths of a point, and whether all of it is bold.
using Style = std::pair<std::int32_t, bool>;

Style StyleOf(const HeadingLook& look) {
  return {look.size, look.is_bold};
}

bool IsSpace(char c) {
  return c == ' ' || c == '\t';
}

void SetStyle(const PageLayout& page, const Paragraph& paragraph, HeadingLook& look) {
  std::map<std::int32_t, std::size_t> sizes;
  bool is_bold = true;
  for (const TextLine& line : paragraph.lines) {
    for (const TextPiece& piece : line.pieces) {
      if (std::all_of(piece.text.begin(), piece.text.end(), IsSpace)) {
        continue;
      }
      const TextLook& own = page.looks[piece.look];
      const double tenths = std::clamp(own.size * 10, 0.0, limits::kMaxFontSize * 10);
      sizes[static_cast<std::int32_t>(std::lround(tenths))] += piece.text.size();
      is_bold = is_bold && own.face != nullptr && own.face->is_bold;
    }
  }
  const auto most = std::max_element(
      sizes.begin(), sizes.end(), [](const auto& a, const auto& b) { return a.second < b.second; });
  look.size = most == sizes.end() ? 0 : most->first;
  look.is_bold = is_bold && most != sizes.end();
}

// How much text there is in each style.
std::map<Style, std::size_t> CountStyles(const std::vector<HeadingLook>& looks) {
  std::map<Style, std::size_t> styles;
  for (const HeadingLook& look : looks) {
    styles[StyleOf(look)] += look.bytes;
  }
  return styles;
}

// What most of the text is set in.
Style BodyStyle(const std::map<Style, std::size_t>& styles) {
  const auto most =
      std::max_element(styles.begin(), styles.end(),
                       [](const auto& a, const auto& b) { return a.second < b.second; });
  return most == styles.end() ? Style{} : most->first;
}

bool HasLetter(std::string_view text) {
  return std::any_of(text.begin(), text.end(), [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c & 0x80) != 0;
  });
}

bool HasBullet(std::string_view text) {
  const std::optional<FoundLabel> label = ReadLabel(Utf8ToUtf32(text.substr(0, text.find(' '))));
  return label && label->kind == ListKind::kBullet;
}

bool LooksLikeHeading(const HeadingLook& look, const Style& body) {
  if (!look.may_be_heading) {
    return false;
  }
  const double larger = static_cast<double>(look.size) / static_cast<double>(body.first);
  if (larger >= (look.ends_a_sentence ? kMuchLarger : kLarger)) {
    return true;
  }
  return look.is_bold && !body.second && look.size >= body.first && look.lines <= 2 &&
         look.bytes <= kLongestBold && !look.ends_a_sentence;
}

}  // namespace

HeadingLook LookOf(const PageLayout& page, const Paragraph& paragraph, std::string_view text) {
  HeadingLook look;
  SetStyle(page, paragraph, look);
  look.lines = static_cast<std::uint32_t>(paragraph.lines.size());
  look.bytes = static_cast<std::uint32_t>(text.size());
  look.may_be_heading = look.lines <= kMostLines && text.size() <= kLongestHeading &&
                        HasLetter(text) && !HasBullet(text);
  const char end = text.empty() ? ' ' : text.back();
  look.ends_a_sentence = end == '.' || end == ',' || end == ';' || end == ':';
  return look;
}

std::vector<std::uint8_t> HeadingLevels(const std::vector<HeadingLook>& looks) {
  std::vector<std::uint8_t> levels(looks.size());
  const std::map<Style, std::size_t> counts = CountStyles(looks);
  const Style body = BodyStyle(counts);
  std::size_t all = 0;
  for (const auto& [style, count] : counts) {
    all += count;
  }
  if (body.first <= 0) {
    return levels;
  }
  std::map<Style, std::uint8_t, std::greater<>> styles;  // of headings
  for (std::size_t i = 0; i < looks.size(); ++i) {
    const auto count = static_cast<double>(counts.at(StyleOf(looks[i])));
    const bool is_common = count > kMuchText * static_cast<double>(all) && looks.size() >= kSeveral;
    if (!is_common && LooksLikeHeading(looks[i], body)) {
      levels[i] = 1;
      styles.try_emplace(StyleOf(looks[i]));
    }
  }
  std::uint8_t level = 0;
  for (auto& [style, own] : styles) {
    level = static_cast<std::uint8_t>(std::min<std::size_t>(level + 1U, kHeadingLevels));
    own = level;
  }
  for (std::size_t i = 0; i < looks.size(); ++i) {
    levels[i] = levels[i] != 0 ? styles.at(StyleOf(looks[i])) : levels[i];
  }
  return levels;
}

}  // namespace TarnixTools::engines
