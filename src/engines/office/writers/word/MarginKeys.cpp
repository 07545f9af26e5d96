#include "engines/office/writers/word/MarginKeys.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <string_view>

namespace TarnixTools::engines::office {

namespace {

constexpr double kSamePlace = 40;  // points
constexpr std::size_t kMostDigits = 6;

void ForEachPiece(const std::vector<Block>& blocks,
                  const std::function<void(const TextPiece&)>& visit) {
  for (const Block& block : blocks) {
    if (const auto* paragraph = std::get_if<Paragraph>(&block.content)) {
      for (const TextLine& line : paragraph->lines) {
        std::for_each(line.pieces.begin(), line.pieces.end(), visit);
      }
    }
  }
}

std::string CellText(const Table& table) {
  std::string text;
  for (const TableCell& cell : table.cells) {
    ForEachPiece(cell.blocks, [&text](const TextPiece& piece) {
      text += piece.kind == PieceKind::kPageNumber ? "#" : piece.text;
    });
    text += '|';
  }
  return text;
}

std::string KeyOf(const std::vector<Block>& blocks) {
  std::string key;
  for (const Block& block : blocks) {
    key += std::to_string(block.content.index());
    if (const auto* paragraph = std::get_if<Paragraph>(&block.content)) {
      key += '@' + std::to_string(std::lround(paragraph->box.left / kSamePlace));
    } else if (const auto* table = std::get_if<Table>(&block.content)) {
      key += CellText(*table);
    }
  }
  ForEachPiece(blocks, [&key](const TextPiece& piece) {
    key += piece.kind == PieceKind::kPageNumber ? "#" : piece.text;
  });
  return key;
}

// 0 for what is no Roman number.
std::int32_t RomanValue(std::string_view text) {
  constexpr std::array<std::pair<char, std::int32_t>, 5> kValues = {
      {{'i', 1}, {'v', 5}, {'x', 10}, {'l', 50}, {'c', 100}}};
  std::int32_t sum = 0;
  std::int32_t last = 0;
  for (std::size_t i = text.size(); i-- > 0;) {
    const char small = static_cast<char>(text[i] | 0x20);
    const auto value = std::find_if(kValues.begin(), kValues.end(),
                                    [small](const auto& entry) { return entry.first == small; });
    if (value == kValues.end()) {
      return 0;
    }
    sum += value->second < last ? -value->second : value->second;
    last = std::max(last, value->second);
  }
  return sum;
}

std::optional<PageNumber> NumberOf(std::string_view text) {
  if (text.empty() || text.size() > kMostDigits) {
    return std::nullopt;
  }
  if (std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; })) {
    return PageNumber{std::stoi(std::string(text)), NumberFormat::kDecimal};
  }
  const std::int32_t value = RomanValue(text);
  if (value <= 0) {
    return std::nullopt;
  }
  const bool is_small = text[0] >= 'a';
  return PageNumber{value, is_small ? NumberFormat::kLowerRoman : NumberFormat::kUpperRoman};
}

}  // namespace

std::string MarginKey(const PageLayout& page) {
  return KeyOf(page.header) + '\n' + KeyOf(page.footer);
}

std::optional<PageNumber> ShownNumber(const PageLayout& page) {
  std::optional<PageNumber> number;
  for (const std::vector<Block>* blocks : {&page.header, &page.footer}) {
    ForEachPiece(*blocks, [&number](const TextPiece& piece) {
      if (piece.kind == PieceKind::kPageNumber && !number) {
        number = NumberOf(piece.text);
      }
    });
  }
  return number;
}

}  // namespace TarnixTools::engines::office
