#include "engines/pdfa/convert/annotations/TextLines.h"

#include <algorithm>
#include <utility>

namespace TarnixTools::engines::pdfa {

namespace {

// How many of the characters there is room for; one at least.
std::size_t CountWithin(std::u32string_view text, double room, const TextWidth& width_of) {
  double width = 0;
  std::size_t count = 0;
  while (count < text.size()) {
    width += width_of(text.substr(count, 1));
    if (width > room && count > 0) {
      break;
    }
    ++count;
  }
  return count;
}

void Wrap(std::u32string_view text, double room, const TextWidth& width_of,
          std::vector<std::u32string>& lines) {
  do {
    const std::size_t most = CountWithin(text, room, width_of);
    std::size_t end = most;
    if (most < text.size()) {
      const std::size_t space = text.substr(0, most + 1).rfind(U' ');
      end = space == std::u32string_view::npos || space == 0
                ? most
                : text.substr(0, space).find_last_not_of(U' ') + 1;
    }
    lines.emplace_back(text.substr(0, end));
    text.remove_prefix(end);
    text.remove_prefix(std::min(text.find_first_not_of(U' '), text.size()));
  } while (!text.empty());
}

}  // namespace

std::vector<std::u32string> LinesOf(std::u32string_view text) {
  std::vector<std::u32string> lines(1);
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool is_pair = text[i] == U'\r' && i + 1 < text.size() && text[i + 1] == U'\n';
    if (text[i] == U'\r' || text[i] == U'\n') {
      lines.emplace_back();
      i += is_pair ? 1 : 0;
    } else {
      lines.back() += text[i] < U' ' ? U' ' : text[i];
    }
  }
  return lines;
}

std::vector<std::u32string> WrappedLines(std::u32string_view text, double room,
                                         const TextWidth& width_of) {
  std::vector<std::u32string> lines;
  for (const std::u32string& line : LinesOf(text)) {
    Wrap(line, room, width_of, lines);
  }
  return lines;
}

}  // namespace TarnixTools::engines::pdfa
