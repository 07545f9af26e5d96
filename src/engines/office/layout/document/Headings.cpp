#include "engines/office/layout/document/Headings.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "engines/support/layout/paragraphs/FlowParagraphs.h"
#include "engines/support/layout/paragraphs/ListLabels.h"
#include "foundation/Utf8.h"

namespace TarnixTools::engines::office {

namespace {

constexpr double kLarger = 1.12;  // than the text of the document
constexpr std::size_t kMostLines = 3;
constexpr std::size_t kMostBytes = 220;
constexpr std::size_t kLongestBold = 110;  // bytes of a heading that only its weight tells
constexpr std::size_t kMostLevels = 6;
constexpr double kMuchText = 0.12;    // of the document, that no style of headings has
constexpr std::size_t kSeveral = 8;   // paragraphs, of which the shares of styles tell something
constexpr double kMuchLarger = 1.35;  // so that even a sentence is a heading

// How a paragraph looks: its size in tenths of a point, and whether all of it is bold.
using Style = std::pair<long, bool>;

struct Flow {
  Paragraph* paragraph = nullptr;
  std::size_t page = 0;
  Style style;
  std::string text;
};

bool IsSpace(char c) {
  return c == ' ' || c == '\t';
}

Style StyleOf(const PageLayout& page, const Paragraph& paragraph) {
  std::map<long, std::size_t> sizes;
  bool is_bold = true;
  for (const TextLine& line : paragraph.lines) {
    for (const TextPiece& piece : line.pieces) {
      if (std::all_of(piece.text.begin(), piece.text.end(), IsSpace)) {
        continue;
      }
      const TextLook& look = page.looks[piece.look];
      sizes[std::lround(look.size * 10)] += piece.text.size();
      is_bold = is_bold && look.face != nullptr && look.face->is_bold;
    }
  }
  const auto most = std::max_element(
      sizes.begin(), sizes.end(), [](const auto& a, const auto& b) { return a.second < b.second; });
  return {most == sizes.end() ? 0 : most->first, is_bold && most != sizes.end()};
}

std::vector<Flow> FlowOf(OfficeDocument& document) {
  std::vector<Flow> flow;
  for (std::size_t i = 0; i < document.pages.size(); ++i) {
    PageLayout& page = document.pages[i].layout;
    for (Paragraph* paragraph : FlowParagraphs(page)) {
      flow.push_back({paragraph, i, StyleOf(page, *paragraph), TextOf(*paragraph)});
    }
  }
  return flow;
}

// How much text there is in each style.
std::map<Style, std::size_t> CountStyles(const std::vector<Flow>& flow) {
  std::map<Style, std::size_t> styles;
  for (const Flow& part : flow) {
    styles[part.style] += part.text.size();
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

bool HasLetter(const std::string& text) {
  return std::any_of(text.begin(), text.end(), [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c & 0x80) != 0;
  });
}

bool HasBullet(const std::string& text) {
  const std::optional<FoundLabel> label =
      ReadLabel(Utf8ToUtf32(std::string_view(text).substr(0, text.find(' '))));
  return label && label->kind == ListKind::kBullet;
}

// A heading by its look alone.
bool LooksLikeHeading(const Flow& part, const Style& body) {
  const bool may_be = part.paragraph->lines.size() <= kMostLines &&
                      part.text.size() <= kMostBytes && HasLetter(part.text) &&
                      !HasBullet(part.text);
  if (!may_be) {
    return false;
  }
  const char end = part.text.back();
  const bool ends_a_sentence = end == '.' || end == ',' || end == ';' || end == ':';
  const double larger = static_cast<double>(part.style.first) / static_cast<double>(body.first);
  if (larger >= (ends_a_sentence ? kMuchLarger : kLarger)) {
    return true;
  }
  return part.style.second && !body.second && part.style.first >= body.first &&
         part.paragraph->lines.size() <= 2 && part.text.size() <= kLongestBold && !ends_a_sentence;
}

// Letters and digits only: outlines leave out what headings have between words.
std::string Plain(const std::string& text) {
  std::string plain;
  for (const char c : text) {
    if ((c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c & 0x80) != 0) {
      plain += c;
    } else if (c >= 'a' && c <= 'z') {
      plain += static_cast<char>(c - 'a' + 'A');
    }
  }
  return plain;
}

void TakeOutline(const OfficeDocument& document, std::vector<Flow>& flow) {
  std::map<std::pair<std::uint32_t, std::string>, std::uint32_t> titles;
  for (const OutlineEntry& entry : document.facts.outline) {
    titles.try_emplace({entry.page, Plain(entry.title)}, entry.level);
  }
  for (Flow& part : flow) {
    if (titles.empty() || part.text.size() > kMostBytes) {
      continue;
    }
    const std::uint32_t page = document.pages[part.page].layout.number;
    const auto title = titles.find({page, Plain(part.text)});
    if (title != titles.end()) {
      part.paragraph->role = ParagraphRole::kHeading;
      part.paragraph->level =
          static_cast<std::uint8_t>(std::min<std::size_t>(title->second + 1, kMostLevels));
    }
  }
}

// Larger type is a higher level; of one size, bold type is.
void TakeLooks(std::vector<Flow>& flow) {
  const std::map<Style, std::size_t> counts = CountStyles(flow);
  const Style body = BodyStyle(counts);
  std::size_t all = 0;
  for (const auto& [style, count] : counts) {
    all += count;
  }
  if (body.first <= 0) {
    return;
  }
  std::set<Style, std::greater<>> styles;
  std::vector<Flow*> headings;
  for (Flow& part : flow) {
    const bool is_common =
        static_cast<double>(counts.at(part.style)) > kMuchText * static_cast<double>(all) &&
        flow.size() >= kSeveral;
    if (part.paragraph->role == ParagraphRole::kBody && !is_common &&
        LooksLikeHeading(part, body)) {
      headings.push_back(&part);
      styles.insert(part.style);
    }
  }
  for (Flow* heading : headings) {
    const auto level =
        static_cast<std::size_t>(std::distance(styles.begin(), styles.find(heading->style)) + 1);
    heading->paragraph->role = ParagraphRole::kHeading;
    heading->paragraph->level = static_cast<std::uint8_t>(std::min(level, kMostLevels));
  }
}

}  // namespace

void FindHeadings(OfficeDocument& document) {
  std::vector<Flow> flow = FlowOf(document);
  const bool has_tags = std::any_of(flow.begin(), flow.end(), [](const Flow& part) {
    return part.paragraph->is_tagged && part.paragraph->role == ParagraphRole::kHeading;
  });
  if (has_tags) {
    return;
  }
  TakeOutline(document, flow);
  TakeLooks(flow);
}

}  // namespace TarnixTools::engines::office
