#include "engines/office/layout/document/RepeatedBlocks.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "engines/office/layout/document/MarginRows.h"
#include "engines/support/layout/Boxes.h"
#include "engines/support/layout/paragraphs/FlowParagraphs.h"

namespace TarnixTools::engines::office {

namespace {

constexpr double kMargin = 0.2;  // of the page's height, that headers and footers may reach into
constexpr double kSureMargin = 0.14;  // where what is beside text of the page is still one
constexpr double kLastStrip = 0.92;   // of the page's height, below which a line apart is a footer
constexpr std::size_t kLongestNumbered = 40;  // bytes of a line with the number of a page
constexpr double kApart = 12;                 // points above such a line
constexpr double kSamePlace = 4;              // points
constexpr double kBeside = 2;                 // points by which blocks beside each other may miss
constexpr std::size_t kMostBlocks = 5;        // of a header or a footer
constexpr std::size_t kMostPagesApart = 2;    // left and right pages have headers of their own
constexpr std::size_t kMostDigits = 5;
constexpr std::size_t kLongestText = 300;

struct Candidate {
  Block* block = nullptr;
  pdf::Box box;
  std::string text;           // its numbers as #; empty for pictures
  std::vector<long> numbers;  // in their order; -1 for one that counts no pages
  bool is_repeated = false;
};

struct PageEdge {
  std::vector<Candidate> blocks;  // from the edge of the page inwards
  std::string others;             // the text that is not at the edge
};

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// The text with # for each number, and the numbers.
void ReadText(const Paragraph& paragraph, Candidate& candidate) {
  const std::string text = TextOf(paragraph);
  for (std::size_t i = 0; i < text.size() && candidate.text.size() < kLongestText;) {
    if (!IsDigit(text[i])) {
      candidate.text += text[i++];
      continue;
    }
    std::size_t digits = 0;
    long value = 0;
    while (i + digits < text.size() && IsDigit(text[i + digits])) {
      value = digits < kMostDigits ? value * 10 + (text[i + digits] - '0') : value;
      ++digits;
    }
    i += digits;
    candidate.text += '#';
    candidate.numbers.push_back(digits <= kMostDigits ? value : -1);
  }
}

std::optional<Candidate> CandidateOf(Block& block) {
  Candidate candidate{.block = &block, .box = BoxOf(block)};
  if (const auto* paragraph = std::get_if<Paragraph>(&block.content)) {
    ReadText(*paragraph, candidate);
    return candidate;
  }
  return std::holds_alternative<Picture>(block.content) ? std::optional(candidate) : std::nullopt;
}

PageEdge EdgeOf(PageLayout& page, bool is_top) {
  PageEdge edge;
  const double limit = is_top ? kMargin * page.height : (1 - kMargin) * page.height;
  for (Band& band : page.bands) {
    for (Column& column : band.columns) {
      for (Block& block : column.blocks) {
        std::optional<Candidate> candidate = CandidateOf(block);
        const pdf::Box box = BoxOf(block);
        if (candidate && (is_top ? LowerEdge(box) <= limit : UpperEdge(box) >= limit)) {
          edge.blocks.push_back(std::move(*candidate));
        } else if (const auto* paragraph = std::get_if<Paragraph>(&block.content);
                   paragraph != nullptr && edge.others.size() < kLongestText) {
          edge.others += TextOf(*paragraph);
        }
      }
    }
  }
  std::sort(
      edge.blocks.begin(), edge.blocks.end(), [is_top](const Candidate& a, const Candidate& b) {
        return is_top ? UpperEdge(a.box) < UpperEdge(b.box) : LowerEdge(a.box) > LowerEdge(b.box);
      });
  edge.blocks.resize(std::min(edge.blocks.size(), kMostBlocks));
  return edge;
}

bool HaveOneText(const Candidate& a, const Candidate& b) {
  return a.text == b.text && a.numbers.size() == b.numbers.size();
}

// Alone a number says nothing unless it grows with the pages.
bool AreOneBlock(const Candidate& a, const Candidate& b, long pages_apart) {
  if (!HaveOneText(a, b) || std::abs(UpperEdge(a.box) - UpperEdge(b.box)) > kSamePlace) {
    return false;
  }
  if (a.text.empty()) {
    return std::abs(a.box.left - b.box.left) <= kSamePlace &&
           std::abs(a.box.width() - b.box.width()) <= kSamePlace;
  }
  return a.text != "#" || a.numbers.empty() || b.numbers[0] - a.numbers[0] == pages_apart;
}

void MarkRepeated(PageEdge& one, PageEdge& other, long pages_apart) {
  for (Candidate& a : one.blocks) {
    for (Candidate& b : other.blocks) {
      if (AreOneBlock(a, b, pages_apart)) {
        a.is_repeated = true;
        b.is_repeated = true;
      }
    }
  }
}

// Of pages that are copies of each other everything is repeated, and tells nothing.
bool AreCopies(const PageEdge& one, const PageEdge& other) {
  return one.others.size() >= kLongestText && one.others == other.others;
}

void MarkRepeated(std::vector<PageEdge>& edges) {
  for (std::size_t i = 0; i < edges.size(); ++i) {
    for (std::size_t apart = 1; apart <= kMostPagesApart && i + apart < edges.size(); ++apart) {
      if (!AreCopies(edges[i], edges[i + apart])) {
        MarkRepeated(edges[i], edges[i + apart], static_cast<long>(apart));
      }
    }
  }
}

// Where the number stands, not as a part of another one.
std::size_t FindNumber(const std::string& text, const std::string& number) {
  const auto is_part = [&](std::size_t at) {
    const std::size_t end = at + number.size();
    return (at > 0 && IsDigit(text[at - 1])) || (end < text.size() && IsDigit(text[end]));
  };
  std::size_t at = text.find(number);
  while (at != std::string::npos && is_part(at)) {
    at = text.find(number, at + 1);
  }
  return at;
}

// The piece of a text that is the number of the page becomes one of its own.
void MarkPageNumber(Paragraph& paragraph, const std::string& number) {
  for (TextLine& line : paragraph.lines) {
    for (std::size_t i = 0; i < line.pieces.size(); ++i) {
      const TextPiece whole = line.pieces[i];
      const std::size_t at = FindNumber(whole.text, number);
      if (whole.kind != PieceKind::kText || at == std::string::npos) {
        continue;
      }
      std::vector<TextPiece> parts;
      const auto add = [&](std::size_t begin, std::size_t end, PieceKind kind) {
        if (begin < end) {
          parts.push_back(PartOf(whole, begin, end));
          parts.back().kind = kind;
        }
      };
      add(0, at, PieceKind::kText);
      add(at, at + number.size(), PieceKind::kPageNumber);
      add(at + number.size(), whole.text.size(), PieceKind::kText);
      line.pieces.erase(line.pieces.begin() + static_cast<std::ptrdiff_t>(i));
      line.pieces.insert(line.pieces.begin() + static_cast<std::ptrdiff_t>(i), parts.begin(),
                         parts.end());
      return;
    }
  }
}

// The number of the one text that is so much larger in the other, which is alike.
std::optional<long> CountingNumber(const Candidate& one, const Candidate& other, long step) {
  if (!HaveOneText(one, other)) {
    return std::nullopt;
  }
  for (std::size_t i = 0; i < one.numbers.size(); ++i) {
    if (one.numbers[i] >= 0 && other.numbers[i] - one.numbers[i] == step) {
      return one.numbers[i];
    }
  }
  return std::nullopt;
}

// The number of a repeated text that grows with the pages.
std::optional<long> PageNumberOf(const std::vector<PageEdge>& edges, std::size_t page,
                                 const Candidate& own) {
  for (std::size_t apart = 1; apart <= kMostPagesApart; ++apart) {
    for (const long step : {static_cast<long>(apart), -static_cast<long>(apart)}) {
      const long other = static_cast<long>(page) + step;
      if (other < 0 || other >= static_cast<long>(edges.size())) {
        continue;
      }
      for (const Candidate& b : edges[static_cast<std::size_t>(other)].blocks) {
        if (const auto number = CountingNumber(own, b, step)) {
          return number;
        }
      }
    }
  }
  return std::nullopt;
}

// Further in, only what has nothing but headers, or footers, between itself and the edge is one.
bool IsNearEdge(const Candidate& candidate, double height) {
  return LowerEdge(candidate.box) <= kSureMargin * height ||
         UpperEdge(candidate.box) >= (1 - kSureMargin) * height;
}

// Whether a block lies between the candidate and the edge of the page, and not beside it.
bool IsFurtherOut(const Candidate& block, const Candidate& candidate, double height) {
  return UpperEdge(candidate.box) < height / 2
             ? LowerEdge(block.box) <= UpperEdge(candidate.box) + kBeside
             : UpperEdge(block.box) >= LowerEdge(candidate.box) - kBeside;
}

// Whether the place of a repeated block is one of a header or a footer.
bool IsInMargin(const std::vector<Candidate>& blocks, std::size_t index, double height) {
  const auto end = blocks.begin() + static_cast<std::ptrdiff_t>(index);
  if (std::all_of(blocks.begin(), end, [](const Candidate& it) { return it.is_repeated; })) {
    return true;
  }
  return IsNearEdge(blocks[index], height) &&
         std::none_of(blocks.begin(), end, [&](const Candidate& it) {
           return !it.is_repeated && IsFurtherOut(it, blocks[index], height);
         });
}

void TakeOut(std::vector<PageEdge>& edges, std::size_t index, double height,
             std::vector<Block>& target) {
  std::vector<Candidate*> taken;
  std::vector<Candidate>& blocks = edges[index].blocks;
  for (std::size_t i = 0; i < blocks.size(); ++i) {
    if (blocks[i].is_repeated && IsInMargin(blocks, i, height)) {
      taken.push_back(&blocks[i]);
    }
  }
  std::sort(taken.begin(), taken.end(), [](const Candidate* a, const Candidate* b) {
    return UpperEdge(a->box) < UpperEdge(b->box);
  });
  for (Candidate* candidate : taken) {
    auto* paragraph = std::get_if<Paragraph>(&candidate->block->content);
    const auto number = PageNumberOf(edges, index, *candidate);
    if (paragraph != nullptr && number) {
      MarkPageNumber(*paragraph, std::to_string(*number));
    }
    target.push_back(std::move(*candidate->block));
    candidate->block->content = Drawing{};  // its place, until it is swept
  }
  JoinRows(target);
}

// A line at the foot of a page is a footer even when no other page has it: a page of its own number.
void MarkLastLine(PageEdge& edge, double height) {
  if (edge.blocks.empty()) {
    return;
  }
  Candidate& last = edge.blocks.front();
  const auto* paragraph = std::get_if<Paragraph>(&last.block->content);
  const bool is_line = paragraph != nullptr && paragraph->lines.size() == 1 &&
                       !last.numbers.empty() && last.numbers[0] >= 0 &&
                       last.text.size() <= kLongestNumbered;
  const bool is_apart =
      std::all_of(edge.blocks.begin() + 1, edge.blocks.end(), [&last](const Candidate& other) {
        return LowerEdge(other.box) + kApart <= UpperEdge(last.box);
      });
  last.is_repeated =
      last.is_repeated || (is_line && is_apart && UpperEdge(last.box) >= kLastStrip * height);
}

bool IsSwept(const Block& block) {
  const auto* drawing = std::get_if<Drawing>(&block.content);
  return drawing != nullptr && drawing->paths.empty();
}

void Shrink(Column& column) {
  column.box = BoxOf(column.blocks.front());
  for (const Block& block : column.blocks) {
    column.box = Around(column.box, BoxOf(block));
  }
}

// Columns and bands that have nothing any more go, the others become smaller.
void Sweep(PageLayout& page) {
  for (Band& band : page.bands) {
    const bool is_single = band.columns.size() == 1;
    const pdf::Box before = band.box;
    for (Column& column : band.columns) {
      if (std::erase_if(column.blocks, IsSwept) > 0 && !column.blocks.empty()) {
        Shrink(column);
      }
    }
    std::erase_if(band.columns, [](const Column& column) { return column.blocks.empty(); });
    if (band.columns.empty()) {
      continue;
    }
    band.box = band.columns.front().box;
    for (Column& column : band.columns) {
      band.box = Around(band.box, column.box);
      column.box = is_single
                       ? pdf::Box{before.left, column.box.bottom, before.right, column.box.top}
                       : column.box;
    }
    band.box.left = before.left;
    band.box.right = before.right;
  }
  std::erase_if(page.bands, [](const Band& band) { return band.columns.empty(); });
}

// What the header and the footer of a page leave of it.
pdf::Box BetweenMargins(const PageLayout& page) {
  pdf::Box body{0, 0, page.width, page.height};
  for (const Block& block : page.header) {
    body.bottom = std::max(body.bottom, LowerEdge(BoxOf(block)));
  }
  for (const Block& block : page.footer) {
    body.top = std::min(body.top, UpperEdge(BoxOf(block)));
  }
  return body;
}

// Pictures and drawings beside a header or a footer have no place in the flow between them.
void FloatImagesInMargins(PageLayout& page) {
  const pdf::Box body = BetweenMargins(page);
  for (Band& band : page.bands) {
    for (Column& column : band.columns) {
      for (Block& block : column.blocks) {
        const pdf::Box box = BoxOf(block);
        const bool is_image = std::holds_alternative<Picture>(block.content) ||
                              std::holds_alternative<Drawing>(block.content);
        if (is_image && !IsSwept(block) &&
            (UpperEdge(box) < body.bottom || LowerEdge(box) > body.top)) {
          Block moved = block;
          block.content = Drawing{};
          page.floats.push_back({.box = box, .is_behind = true, .blocks = {std::move(moved)}});
        }
      }
    }
  }
}

}  // namespace

void FindHeadersAndFooters(OfficeDocument& document) {
  for (const bool is_top : {true, false}) {
    std::vector<PageEdge> edges;
    for (OfficePage& page : document.pages) {
      edges.push_back(EdgeOf(page.layout, is_top));
    }
    MarkRepeated(edges);
    for (std::size_t i = 0; i < edges.size(); ++i) {
      PageLayout& page = document.pages[i].layout;
      if (!is_top) {
        MarkLastLine(edges[i], page.height);
      }
      TakeOut(edges, i, page.height, is_top ? page.header : page.footer);
    }
  }
  for (OfficePage& page : document.pages) {
    if (!page.layout.header.empty() || !page.layout.footer.empty()) {
      FloatImagesInMargins(page.layout);
      Sweep(page.layout);
    }
  }
}

}  // namespace TarnixTools::engines::office
