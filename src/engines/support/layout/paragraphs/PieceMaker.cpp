#include "engines/support/layout/paragraphs/PieceMaker.h"

#include <algorithm>

#include "engines/support/layout/Boxes.h"
#include "engines/support/layout/LayoutLimits.h"
#include "engines/support/layout/paragraphs/ListLabels.h"
#include "engines/support/layout/text/Characters.h"
#include "foundation/Utf8.h"

namespace TarnixTools::engines {

namespace {

constexpr double kTabGap = 1.6;  // ems between lines of a row that a space does not explain

TextPiece PieceOf(std::string text, std::uint32_t look, std::int32_t link, double left,
                  double right) {
  TextPiece piece;
  piece.text = std::move(text);
  piece.look = look;
  piece.link = link;
  piece.x = left;
  piece.width = right - left;
  return piece;
}

void Widen(TextPiece& piece, double left, double right) {
  const double end = std::max(piece.x + piece.width, right);
  piece.x = std::min(piece.x, left);
  piece.width = end - piece.x;
}

void AddPlace(std::uint32_t place, TextPiece& piece) {
  if (place != kNoPlace && (piece.places.empty() || piece.places.back() != place)) {
    piece.places.push_back(place);
  }
}

// The text of the last piece of a line; empty where there is none.
std::u32string EndOf(const TextLine& line) {
  return line.pieces.empty() ? std::u32string() : Utf8ToUtf32(line.pieces.back().text);
}

bool IsLetter(char32_t character) {
  return RunsRight(character) || IsLowerCase(character) || IsUpperCase(character);
}

}  // namespace

// The link of each glyph. Where only one link is on a word, it is that of all or of none of it.
std::vector<std::int32_t> PieceMaker::LinksOf(const Word& word) const {
  const std::size_t count = std::min(page_->links.size(), limits::kMaxLinksOfText);
  const double y = MiddleY(word.box);
  std::vector<std::int32_t> links(word.glyphs.size(), -1);
  std::vector<std::int32_t> found;
  for (std::size_t i = 0; i < count; ++i) {
    const pdf::Box& box = page_->links[i].box;
    if (SharedWidth(box, word.box) > 0 && Holds(box, MiddleX(box), y)) {
      found.push_back(static_cast<std::int32_t>(i));
    }
  }
  for (const std::int32_t link : found) {
    const pdf::Box& box = page_->links[static_cast<std::size_t>(link)].box;
    for (std::size_t i = 0; i < links.size(); ++i) {
      const PlacedGlyph& glyph = word.glyphs[i];
      const double x = found.size() == 1 ? MiddleX(word.box) : (glyph.left + glyph.right) / 2;
      links[i] = links[i] < 0 && Holds(box, x, y) ? link : links[i];
    }
  }
  return links;
}

void PieceMaker::AddWord(const Word& word, double line_size, Start start, TextLine& line) {
  const std::vector<std::int32_t> links = LinksOf(word);
  bool is_apart = start == Start::kOwnPiece;
  for (std::size_t i = 0; i < word.glyphs.size(); ++i) {
    const PlacedGlyph& glyph = word.glyphs[i];
    const std::int32_t link = links[i];
    const std::uint32_t look = looks_->Of(glyph, word, line_size);
    const Glyph& source = page_->glyphs[glyph.glyph];
    std::u32string text;
    AppendPlain(text, std::u32string_view(page_->text).substr(source.text, source.length));
    TextPiece* last = line.pieces.empty() ? nullptr : &line.pieces.back();
    if (!is_apart && last != nullptr && last->kind == PieceKind::kText && last->look == look &&
        last->link == link) {
      last->text += ToUtf8(text);
      Widen(*last, glyph.left, glyph.right);
    } else {
      line.pieces.push_back(PieceOf(ToUtf8(text), look, link, glyph.left, glyph.right));
    }
    AddPlace(source.place, line.pieces.back());
    is_apart = false;
  }
}

// A space goes with the piece before it.
void PieceMaker::AddGap(const WordLine* before, const WordLine& next, TextLine& line) {
  if (line.pieces.empty()) {
    return;
  }
  TextPiece& last = line.pieces.back();
  const double gap = before == nullptr ? 0 : -SharedWidth(before->box, next.box);
  if (gap <= kTabGap * next.size) {
    last.text += ' ';
    return;
  }
  TextPiece tab = PieceOf("\t", last.look, -1, before->box.right, next.box.left);
  tab.kind = PieceKind::kTab;
  line.pieces.push_back(std::move(tab));
}

// A label that a text may begin with is a piece of its own.
TextLine PieceMaker::LineOf(const TextRow& row) {
  TextLine line;
  line.box = row.box;
  line.box.left += row.inset;
  line.inset = row.inset;
  line.baseline = row.baseline;
  const WordLine* before = nullptr;
  const bool has_label = ReadLabel(row.first().words.front().text).has_value();
  std::size_t count = 0;
  for (const WordLine* part : row.lines) {
    for (const Word& word : part->words) {
      const bool is_behind_label = has_label && ++count == 2;
      AddGap(&word == &part->words.front() ? before : nullptr, *part, line);
      AddWord(word, part->size, is_behind_label ? Start::kOwnPiece : Start::kGoesOn, line);
    }
    before = part;
  }
  return line;
}

void JoinLines(TextLine& line, const TextLine& next) {
  const std::u32string end = EndOf(line);
  const std::u32string start =
      next.pieces.empty() ? std::u32string() : Utf8ToUtf32(next.pieces.front().text);
  if (end.empty() || start.empty()) {
    return;
  }
  if (HasNoSpaces(end.back()) && HasNoSpaces(start.front())) {
    line.joint = LineJoint::kNothing;
    return;
  }
  const bool is_parted = IsHyphen(end.back()) && end.size() > 1 && IsLetter(end[end.size() - 2]);
  if (!is_parted || !IsLetter(start.front())) {
    return;
  }
  line.joint = LineJoint::kNothing;
  if (IsLowerCase(start.front())) {
    line.pieces.back().text = ToUtf8(std::u32string_view(end).substr(0, end.size() - 1));
  }
}

}  // namespace TarnixTools::engines
