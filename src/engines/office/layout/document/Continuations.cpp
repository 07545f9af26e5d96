#include "engines/office/layout/document/Continuations.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

#include "engines/support/layout/paragraphs/FlowParagraphs.h"
#include "engines/support/layout/text/Characters.h"
#include "foundation/Utf8.h"

namespace TarnixTools::engines::office {

namespace {

constexpr double kReaches = 0.9;   // of the column's width, that a line that goes on covers
constexpr double kSameSize = 0.3;  // points
constexpr std::array<std::string_view, 10> kCaptionWords = {
    "Figure",  "Fig.",    "Table",  "Abbildung", "Abb.",
    "Tabelle", "Tableau", "Figura", "Tabla",     "Chart"};

struct Place {
  const PageLayout* page = nullptr;
  const Column* column = nullptr;
  Block* block = nullptr;
};

const TextLook* LookOf(const Place& place, const TextLine& line) {
  return line.pieces.empty() ? nullptr : &place.page->looks[line.pieces.front().look];
}

bool LookAlike(const Place& a, const TextLine& last, const Place& b, const TextLine& first) {
  const TextLook* one = LookOf(a, last);
  const TextLook* other = LookOf(b, first);
  return one != nullptr && other != nullptr && std::abs(one->size - other->size) < kSameSize &&
         one->face != nullptr && other->face != nullptr && one->face->family == other->face->family;
}

// A sentence that is not at its end, in a line that is full, before one that begins small.
bool GoesOn(const Place& from, const Paragraph& before, const Place& to, const Paragraph& next) {
  if (before.role != next.role && next.role != ParagraphRole::kBody) {
    return false;
  }
  const std::u32string end = Utf8ToUtf32(TextOf(before));
  const std::u32string start = Utf8ToUtf32(TextOf(next));
  if (end.empty() || start.empty() || next.label || !IsLowerCase(start.front())) {
    return false;
  }
  const TextLine& last = before.lines.back();
  const bool is_full = last.box.width() >= kReaches * from.column->box.width();
  const bool is_open = std::u32string_view(U".!?:;").find(end.back()) == std::u32string_view::npos;
  return is_full && is_open && before.role != ParagraphRole::kHeading &&
         LookAlike(from, last, to, next.lines.front());
}

void Join(const Place& from, const Place& to) {
  auto* before = std::get_if<Paragraph>(&from.block->content);
  auto* next = std::get_if<Paragraph>(&to.block->content);
  if (before != nullptr && next != nullptr && !before->lines.empty() && !next->lines.empty()) {
    next->goes_on = GoesOn(from, *before, to, *next);
  }
}

bool BeginsAsCaption(const std::string& text) {
  return std::any_of(kCaptionWords.begin(), kCaptionWords.end(), [&text](std::string_view word) {
    if (!text.starts_with(word) || text.size() < word.size() + 2) {
      return false;
    }
    const char number = text[word.size() + 1];
    return text[word.size()] == ' ' &&
           ((number >= '0' && number <= '9') || number == 'I' || number == 'V');
  });
}

bool IsThing(const Block& block) {
  return !std::holds_alternative<Paragraph>(block.content);
}

}  // namespace

void FindContinuations(OfficeDocument& document) {
  Place before;
  for (OfficePage& page : document.pages) {
    for (Band& band : page.layout.bands) {
      for (Column& column : band.columns) {
        if (column.blocks.empty()) {
          continue;
        }
        if (before.block != nullptr) {
          Join(before, {&page.layout, &column, &column.blocks.front()});
        }
        before = {&page.layout, &column, &column.blocks.back()};
      }
    }
  }
}

void FindCaptions(OfficeDocument& document) {
  for (OfficePage& page : document.pages) {
    for (Band& band : page.layout.bands) {
      for (Column& column : band.columns) {
        for (std::size_t i = 0; i < column.blocks.size(); ++i) {
          auto* paragraph = std::get_if<Paragraph>(&column.blocks[i].content);
          const bool is_beside = (i > 0 && IsThing(column.blocks[i - 1])) ||
                                 (i + 1 < column.blocks.size() && IsThing(column.blocks[i + 1]));
          if (paragraph != nullptr && is_beside && paragraph->role == ParagraphRole::kBody &&
              BeginsAsCaption(TextOf(*paragraph))) {
            paragraph->role = ParagraphRole::kCaption;
          }
        }
      }
    }
  }
}

}  // namespace TarnixTools::engines::office
