#include "engines/office/writers/word/FlowChoice.h"

#include <algorithm>

#include "engines/support/layout/Boxes.h"

namespace TarnixTools::engines::office {

namespace {

constexpr double kOverlap = 5;             // points by which blocks that flow may overlap
constexpr std::size_t kMostBlocks = 2000;  // that are held against each other
constexpr double kWeightOfMark = 1e6;      // of a note, in letters

// A paragraph or a table, and the best flow that ends with it.
struct Link {
  const Block* block = nullptr;
  double upper = 0;
  double lower = 0;
  double weight = 0;  // of all text of that flow
  std::size_t before = 0;
  bool is_first = true;
};

double LettersOf(const Paragraph& paragraph) {
  double letters = 1;
  for (const TextLine& line : paragraph.lines) {
    for (const TextPiece& piece : line.pieces) {
      letters += static_cast<double>(piece.text.size());
      letters += piece.kind == PieceKind::kNoteMark ? kWeightOfMark : 0;
    }
  }
  return letters;
}

double WeightOf(const Block& block) {
  if (const auto* paragraph = std::get_if<Paragraph>(&block.content)) {
    return LettersOf(*paragraph);
  }
  double letters = 1;
  for (const TableCell& cell : std::get<Table>(block.content).cells) {
    for (const Block& inside : cell.blocks) {
      const auto* paragraph = std::get_if<Paragraph>(&inside.content);
      letters += paragraph == nullptr ? 1 : LettersOf(*paragraph);
    }
  }
  return letters;
}

std::vector<Link> LinksOf(const BlockLists& lists) {
  std::vector<Link> links;
  for (const std::vector<Block>* list : lists) {
    for (const Block& block : *list) {
      if (std::holds_alternative<Paragraph>(block.content) ||
          std::holds_alternative<Table>(block.content)) {
        const pdf::Box& box = BoxOf(block);
        links.push_back({.block = &block,
                         .upper = UpperEdge(box),
                         .lower = LowerEdge(box),
                         .weight = WeightOf(block)});
      }
    }
  }
  return links;
}

// Makes the best flow that ends with each of them out of those before it.
void FindFlows(std::vector<Link>& links) {
  for (std::size_t i = 0; i < links.size(); ++i) {
    Link& link = links[i];
    const double own = link.weight;
    for (std::size_t k = 0; k < i; ++k) {
      const bool is_below = link.upper >= links[k].lower - kOverlap;
      if (is_below && links[k].weight + own > link.weight) {
        link.weight = links[k].weight + own;
        link.before = k;
        link.is_first = false;
      }
    }
  }
}

}  // namespace

std::set<const Block*> BlocksApart(const BlockLists& lists) {
  std::vector<Link> links = LinksOf(lists);
  std::set<const Block*> apart;
  if (links.empty() || links.size() > kMostBlocks) {
    return apart;
  }
  for (const Link& link : links) {
    if (link.weight < kWeightOfMark) {
      apart.insert(link.block);
    }
  }
  FindFlows(links);
  const auto best = std::max_element(
      links.begin(), links.end(), [](const Link& a, const Link& b) { return a.weight < b.weight; });
  for (auto at = static_cast<std::size_t>(best - links.begin());; at = links[at].before) {
    apart.erase(links[at].block);
    if (links[at].is_first) {
      return apart;
    }
  }
}

bool HasNoteMark(const Block& block) {
  const auto* paragraph = std::get_if<Paragraph>(&block.content);
  return paragraph != nullptr && LettersOf(*paragraph) >= kWeightOfMark;
}

}  // namespace TarnixTools::engines::office
