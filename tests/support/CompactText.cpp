#include "support/CompactText.h"

#include <algorithm>
#include <sstream>

namespace TarnixTools::testing {

namespace {

// Adds the lines up to the end of what begins in the line.
void JoinTo(std::string& line, std::istream& lines) {
  for (std::string next; std::getline(lines, next);) {
    line += next.substr(std::min(next.find_first_not_of(' '), next.size()));
    if (next == "}" || next == "]") {
      return;
    }
  }
}

bool HoldsOthers(const std::string& line) {
  return line.starts_with("obj:") && (line.find("\"/Type\": \"/ObjStm\"") != std::string::npos ||
                                      line.find("\"/Type\": \"/XRef\"") != std::string::npos);
}

}  // namespace

std::string OnLines(const std::string& pdf_text) {
  std::istringstream lines(pdf_text);
  std::string text;
  bool is_left_out = false;
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("obj:") || line.starts_with("trailer ")) {
      if (line.ends_with('{') || line.ends_with('[')) {
        JoinTo(line, lines);
      }
      is_left_out = HoldsOthers(line);
    }
    text += is_left_out ? "" : line + "\n";
  }
  return text;
}

}  // namespace TarnixTools::testing
