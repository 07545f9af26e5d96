#include "engines/support/layout/paragraphs/Lists.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "engines/support/layout/Boxes.h"
#include "engines/support/layout/paragraphs/FlowParagraphs.h"
#include "engines/support/layout/paragraphs/ListLabels.h"
#include "engines/support/layout/text/Characters.h"
#include "foundation/Utf8.h"

namespace TarnixTools::engines {

namespace {

constexpr double kSameIndent = 5;        // points between labels of one level
constexpr std::size_t kMostBetween = 4;  // other paragraphs between the items of a list
constexpr std::size_t kMostLevel = 8;
constexpr std::size_t kMostOpen = 64;  // lists that may go on
// Characters that begin other texts too: one such item alone is none.
constexpr std::u32string_view kWeakBullets = U"\u00B7\u2013\u2014\u2212\u002D\u002A\u00A7";

// A paragraph that begins with a label.
struct Item {
  Paragraph* paragraph = nullptr;
  std::size_t place = 0;  // among all paragraphs
  FoundLabel label;
  std::u32string word;
  double x = 0;
  std::uint32_t list = 0;  // 0 for none
};

// Headings and entries of contents keep their labels as text.
bool MayBeItem(ParagraphRole role) {
  using enum ParagraphRole;
  return role != kHeading && role != kTitle && role != kContents;
}

// Nothing for a paragraph without a label. What is raised is the mark of a note.
std::optional<Item> ItemOf(const PageLayout& page, Paragraph& paragraph, std::size_t place) {
  if (paragraph.lines.empty() || paragraph.lines.front().pieces.empty() ||
      !MayBeItem(paragraph.role)) {
    return std::nullopt;
  }
  const std::vector<TextPiece>& pieces = paragraph.lines.front().pieces;
  if (page.looks[pieces.front().look].raise != Raise::kNone) {
    return std::nullopt;
  }
  std::u32string word = Utf8ToUtf32(pieces.front().text);
  while (!word.empty() && word.back() == ' ') {
    word.pop_back();
  }
  const std::optional<FoundLabel> label = ReadLabel(word);
  if (!label || pieces.size() < 2) {
    return std::nullopt;
  }
  return Item{&paragraph, place, *label, std::move(word), pieces.front().x, 0};
}

std::vector<Item> ItemsOf(const std::vector<PageLayout*>& pages) {
  std::vector<Item> items;
  std::size_t place = 0;
  for (PageLayout* page : pages) {
    for (Paragraph* paragraph : FlowParagraphs(*page)) {
      if (std::optional<Item> item = ItemOf(*page, *paragraph, place++)) {
        items.push_back(std::move(*item));
      }
    }
  }
  return items;
}

bool IsBullet(const Item& item) {
  return item.label.kind == ListKind::kBullet;
}

// How a label is put together, whatever its number: "(#)", "#.".
bool HaveOneForm(const Item& a, const Item& b) {
  return a.label.parts == b.label.parts && (a.word.front() == '(') == (b.word.front() == '(') &&
         a.word.back() == b.word.back();
}

bool IsRoman(const Item& item) {
  return item.label.kind == ListKind::kLowerRoman || item.label.kind == ListKind::kUpperRoman;
}

// Letters that are Roman numbers too are what the item before them makes them.
void SettleKind(const Item& before, Item& item) {
  const bool goes_on_roman = item.label.may_be_roman && !IsRoman(item) && IsRoman(before) &&
                             item.label.roman_value == before.label.value + 1;
  if (goes_on_roman) {
    item.label.kind = before.label.kind;
    item.label.value = item.label.roman_value;
  }
}

bool GoesOn(const Item& before, Item& item) {
  if (IsBullet(before) || IsBullet(item)) {
    return IsBullet(before) && IsBullet(item) && before.word == item.word &&
           item.place - before.place <= 1 + kMostBetween;
  }
  SettleKind(before, item);
  return before.label.kind == item.label.kind && HaveOneForm(before, item) &&
         item.label.value == before.label.value + 1;
}

// A first item that is "i" begins Roman numbers, when "ii" follows it.
void ReadFirstRoman(std::vector<Item>& items) {
  for (std::size_t i = 0; i + 1 < items.size(); ++i) {
    Item& item = items[i];
    const Item& next = items[i + 1];
    if (item.label.may_be_roman && item.label.roman_value == 1 && IsRoman(next) &&
        next.label.value == 2) {
      item.label.kind = next.label.kind;
      item.label.value = 1;
    }
  }
}

// Gives the items of one list one number.
void Number(std::vector<Item>& items) {
  std::uint32_t lists = 0;
  std::vector<std::size_t> open;  // the last items of lists
  for (std::size_t i = 0; i < items.size(); ++i) {
    Item& item = items[i];
    const auto before = std::find_if(open.rbegin(), open.rend(),
                                     [&](std::size_t other) { return GoesOn(items[other], item); });
    if (before != open.rend()) {
      item.list = items[*before].list;
      open.erase(std::prev(before.base()));
    } else {
      item.list = ++lists;
    }
    open.push_back(i);
    if (open.size() > kMostOpen) {
      open.erase(open.begin());
    }
  }
}

// Items that are sure: of several, or with a sign that is nothing else.
std::vector<Item> SureItems(std::vector<Item> items) {
  std::vector<std::size_t> counts(items.size() + 1);
  for (const Item& item : items) {
    ++counts[item.list];
  }
  std::erase_if(items, [&counts](const Item& item) {
    const bool is_weak = !IsBullet(item) || kWeakBullets.find(item.word[0]) != std::u32string::npos;
    const bool is_tagged = item.paragraph->role == ParagraphRole::kListItem;
    return counts[item.list] < 2 && is_weak && !is_tagged;
  });
  return items;
}

// Items further in than the one before them are a level below.
void SetLevels(std::vector<Item>& items) {
  std::vector<double> indents;
  std::size_t last = 0;
  for (Item& item : items) {
    if (item.place > last + 1 + kMostBetween) {
      indents.clear();
    }
    last = item.place;
    while (!indents.empty() && indents.back() > item.x + kSameIndent) {
      indents.pop_back();
    }
    if (indents.empty() || item.x > indents.back() + kSameIndent) {
      indents.push_back(item.x);
    }
    item.paragraph->level = static_cast<std::uint8_t>(std::min(indents.size() - 1, kMostLevel));
  }
}

// The text begins behind the label from now on.
void TakeLabel(const Item& item) {
  Paragraph& paragraph = *item.paragraph;
  TextLine& first = paragraph.lines.front();
  ListLabel label;
  label.kind = item.label.kind;
  label.value = item.label.value;
  label.text = ToUtf8(item.word);
  label.look = first.pieces.front().look;
  label.x = item.x;
  label.list = item.list;
  label.places = first.pieces.front().places;
  first.pieces.erase(first.pieces.begin());
  if (first.pieces.front().kind == PieceKind::kTab && first.pieces.size() > 1) {
    first.pieces.erase(first.pieces.begin());
  }
  const double text = first.pieces.front().x;
  double body = text;
  if (paragraph.lines.size() > 1) {
    body = paragraph.lines[1].box.left;
    for (std::size_t i = 1; i < paragraph.lines.size(); ++i) {
      body = std::min(body, paragraph.lines[i].box.left);
    }
  }
  if (!paragraph.is_right_to_left) {
    first.box.left = text;
    paragraph.box.left = std::min(text, body);
    paragraph.first_indent = std::abs(text - body) > 2 ? text - body : 0;
  }
  paragraph.alignment =
      paragraph.alignment == Alignment::kCenter ? Alignment::kLeft : paragraph.alignment;
  paragraph.role = ParagraphRole::kListItem;
  paragraph.label = std::move(label);
}

}  // namespace

void FindLists(const std::vector<PageLayout*>& pages) {
  std::vector<Item> items = ItemsOf(pages);
  ReadFirstRoman(items);
  Number(items);
  items = SureItems(std::move(items));
  SetLevels(items);
  for (const Item& item : items) {
    TakeLabel(item);
  }
}

}  // namespace TarnixTools::engines
