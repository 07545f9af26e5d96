#include "engines/office/layout/document/Notes.h"

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "engines/support/layout/Boxes.h"
#include "engines/support/layout/paragraphs/FlowParagraphs.h"

namespace TarnixTools::engines::office {

namespace {

constexpr double kSmaller = 0.95;        // notes against the text of the page
constexpr double kLowerPart = 0.4;       // of the page's height, below which notes begin
constexpr std::size_t kLongestMark = 4;  // bytes

std::string Trimmed(std::string text) {
  while (!text.empty() && text.back() == ' ') {
    text.pop_back();
  }
  return text;
}

bool IsMark(const std::string& text) {
  const bool is_number = !text.empty() && std::all_of(text.begin(), text.end(),
                                                      [](char c) { return c >= '0' && c <= '9'; });
  return text.size() <= kLongestMark &&
         (is_number || text == "*" || text == "**" || text == "\u2020" || text == "\u2021");
}

// The raised mark that a note begins with; empty for none.
std::string MarkOf(const PageLayout& page, const Paragraph& paragraph) {
  if (paragraph.lines.empty() || paragraph.lines.front().pieces.size() < 2) {
    return {};
  }
  const TextPiece& first = paragraph.lines.front().pieces.front();
  const std::string mark = Trimmed(first.text);
  return page.looks[first.look].raise == Raise::kSuperscript && IsMark(mark) ? mark : "";
}

double SizeOf(const PageLayout& page, const Paragraph& paragraph) {
  double size = 0;
  for (const TextLine& line : paragraph.lines) {
    for (const TextPiece& piece : line.pieces) {
      size = std::max(size, page.looks[piece.look].size);
    }
  }
  return size;
}

double BodySize(PageLayout& page) {
  std::map<double, std::size_t> sizes;
  for (const Paragraph* paragraph : FlowParagraphs(page)) {
    for (const TextLine& line : paragraph->lines) {
      for (const TextPiece& piece : line.pieces) {
        sizes[page.looks[piece.look].size] += piece.text.size();
      }
    }
  }
  const auto most = std::max_element(
      sizes.begin(), sizes.end(), [](const auto& a, const auto& b) { return a.second < b.second; });
  return most == sizes.end() ? 0 : most->first;
}

// Notes of columns beside each other stay in them: word processors disagree where notes of such
// sections go, and pages would end elsewhere.
class NoteFinder {
 public:
  explicit NoteFinder(PageLayout& page) : page_(&page), body_(BodySize(page)) {
    for (Band& band : page.bands) {
      if (band.columns.size() == 1) {
        LearnFrom(band.columns.front());
      }
    }
  }

  void Find() {
    for (Band& band : page_->bands) {
      if (band.columns.size() == 1) {
        TakeFrom(band.columns.front());
      }
    }
  }

 private:
  // A raised piece that may refer to a note.
  struct Reference {
    TextPiece* piece;
    const Column* column;
    std::size_t block;  // of the column; there until the column's notes are taken
  };

  void LearnFrom(Column& column);
  void LearnFrom(const Column& column, std::size_t block, Paragraph& paragraph);
  void TakeFrom(Column& column);
  bool MayBeNote(const Block& block) const;
  TextPiece* ReferenceTo(const std::string& mark, const Column& notes, std::size_t first,
                         std::map<std::string, std::size_t>& next) const;

  PageLayout* page_;
  double body_;
  std::map<std::string, std::vector<Reference>> references_;  // by mark, as they are read
  std::map<std::string, std::size_t> taken_;                  // by mark, how many of them
};

bool NoteFinder::MayBeNote(const Block& block) const {
  const auto* paragraph = std::get_if<Paragraph>(&block.content);
  return paragraph != nullptr && SizeOf(*page_, *paragraph) < kSmaller * body_ &&
         UpperEdge(paragraph->box) > kLowerPart * page_->height;
}

void NoteFinder::LearnFrom(Column& column) {
  for (std::size_t i = 0; i < column.blocks.size(); ++i) {
    if (auto* paragraph = std::get_if<Paragraph>(&column.blocks[i].content)) {
      LearnFrom(column, i, *paragraph);
    }
  }
}

void NoteFinder::LearnFrom(const Column& column, std::size_t block, Paragraph& paragraph) {
  for (TextLine& line : paragraph.lines) {
    for (TextPiece& piece : line.pieces) {
      if (piece.kind != PieceKind::kText || page_->looks[piece.look].raise != Raise::kSuperscript) {
        continue;
      }
      const std::string mark = Trimmed(piece.text);
      if (IsMark(mark)) {
        references_[mark].push_back({&piece, &column, block});
      }
    }
  }
}

// The first raised piece with that text which is neither in the notes nor any other note's.
//   next - by mark, which piece is looked at first
TextPiece* NoteFinder::ReferenceTo(const std::string& mark, const Column& notes, std::size_t first,
                                   std::map<std::string, std::size_t>& next) const {
  const auto known = references_.find(mark);
  if (known == references_.end()) {
    return nullptr;
  }
  std::size_t& at = next[mark];
  while (at < known->second.size()) {
    const Reference& reference = known->second[at++];
    const std::size_t end = reference.column == &notes ? first : reference.column->blocks.size();
    if (reference.block < end) {
      return reference.piece;
    }
  }
  return nullptr;
}

void NoteFinder::TakeFrom(Column& column) {
  std::size_t first = column.blocks.size();
  for (std::size_t i = column.blocks.size(); i-- > 0 && MayBeNote(column.blocks[i]);) {
    if (!MarkOf(*page_, std::get<Paragraph>(column.blocks[i].content)).empty()) {
      first = i;
    }
  }
  std::vector<TextPiece*> references;
  std::map<std::string, std::size_t> next = taken_;
  for (std::size_t i = first; i < column.blocks.size(); ++i) {
    const std::string mark = MarkOf(*page_, std::get<Paragraph>(column.blocks[i].content));
    if (!mark.empty()) {
      references.push_back(ReferenceTo(mark, column, first, next));
      if (references.back() == nullptr) {
        return;
      }
    }
  }
  if (first == 0 || references.empty()) {
    return;
  }
  taken_ = std::move(next);
  auto reference = references.begin();
  for (std::size_t i = first; i < column.blocks.size(); ++i) {
    auto& paragraph = std::get<Paragraph>(column.blocks[i].content);
    const std::string mark = MarkOf(*page_, paragraph);
    if (!mark.empty()) {
      TextPiece& piece = **reference++;
      piece.kind = PieceKind::kNoteMark;
      piece.number = static_cast<std::uint32_t>(page_->notes.size());
      page_->notes.push_back({.label = mark, .blocks = {}});
      std::vector<TextPiece>& pieces = paragraph.lines.front().pieces;
      pieces.erase(pieces.begin());
    }
    page_->notes.back().blocks.push_back(std::move(column.blocks[i]));
  }
  column.blocks.resize(first);
}

}  // namespace

void FindNotes(OfficeDocument& document) {
  for (OfficePage& page : document.pages) {
    NoteFinder(page.layout).Find();
  }
}

}  // namespace TarnixTools::engines::office
