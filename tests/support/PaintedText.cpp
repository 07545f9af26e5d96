#include "support/PaintedText.h"

#include <sstream>

#include "support/Expected.h"

namespace TarnixTools::testing {
namespace {

bool IsLeftOut(const std::string& object) {
  for (const char* key : {"\"/Length1\"", "\"/ObjStm\"", "\"/XRef\""}) {
    if (object.find(key) != std::string::npos) {
      return true;
    }
  }
  return false;
}

}  // namespace

std::string PaintedText(const std::string& path) {
  std::string text;
  std::istringstream lines(PdfText(path));
  std::string object;
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("obj:") || line.starts_with("trailer")) {
      text += IsLeftOut(object) ? "" : object;
      object.clear();
    }
    object += line + "\n";
  }
  return text;
}

}  // namespace TarnixTools::testing
