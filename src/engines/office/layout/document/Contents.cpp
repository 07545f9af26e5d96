#include "engines/office/layout/document/Contents.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "engines/support/layout/paragraphs/FlowParagraphs.h"
#include "engines/support/layout/paragraphs/Leaders.h"

namespace TarnixTools::engines::office {

namespace {

constexpr double kSameIndent = 4;  // points between entries of one level
constexpr std::size_t kMostLevel = 8;

// If there is one at that place.
void EraseTab(TextLine& line, std::size_t index) {
  if (index < line.pieces.size() && line.pieces[index].kind == PieceKind::kTab) {
    line.pieces.erase(line.pieces.begin() + static_cast<std::ptrdiff_t>(index));
  }
}

// Replaces the leader of an entry by a tab; false for a line that is no entry.
bool TakeLeader(const std::vector<TextLook>& looks, TextLine& line) {
  for (std::size_t i = 0; i < line.pieces.size(); ++i) {
    const TextPiece whole = line.pieces[i];
    const Leader leader = LeaderIn(whole.text);
    if (whole.kind != PieceKind::kText || leader.end == 0) {
      continue;
    }
    std::string rest = whole.text.substr(leader.end);
    for (std::size_t k = i + 1; k < line.pieces.size(); ++k) {
      rest += line.pieces[k].kind == PieceKind::kText ? line.pieces[k].text : "";
    }
    if (!IsPageNumber(rest) || (i == 0 && leader.begin == 0)) {
      return false;
    }
    const Typeface* face = looks[whole.look].face.get();
    std::vector<TextPiece> parts;
    if (leader.begin > 0) {
      parts.push_back(PartOf(whole, 0, leader.begin, face));
    }
    TextPiece tab = PartOf(whole, leader.begin, leader.end, face);
    tab.kind = PieceKind::kTab;
    tab.text = std::string(1, '\t');
    parts.push_back(std::move(tab));
    if (leader.end < whole.text.size()) {
      parts.push_back(PartOf(whole, leader.end, whole.text.size(), face));
    }
    line.pieces.erase(line.pieces.begin() + static_cast<std::ptrdiff_t>(i));
    line.pieces.insert(line.pieces.begin() + static_cast<std::ptrdiff_t>(i), parts.begin(),
                       parts.end());
    // Tabs that stood around the dots lead nowhere more.
    EraseTab(line, i + parts.size());
    if (i > 0 && leader.begin == 0) {
      EraseTab(line, i - 1);
    }
    return true;
  }
  return false;
}

}  // namespace

void FindContents(OfficeDocument& document) {
  std::vector<double> indents;
  for (OfficePage& page : document.pages) {
    for (Paragraph* paragraph : FlowParagraphs(page.layout)) {
      if (paragraph->lines.empty() || !TakeLeader(page.layout.looks, paragraph->lines.back())) {
        continue;
      }
      while (!indents.empty() && indents.back() > paragraph->box.left + kSameIndent) {
        indents.pop_back();
      }
      if (indents.empty() || paragraph->box.left > indents.back() + kSameIndent) {
        indents.push_back(paragraph->box.left);
      }
      paragraph->role = ParagraphRole::kContents;
      paragraph->alignment = Alignment::kLeft;
      paragraph->level = static_cast<std::uint8_t>(std::min(indents.size() - 1, kMostLevel));
    }
  }
}

}  // namespace TarnixTools::engines::office
