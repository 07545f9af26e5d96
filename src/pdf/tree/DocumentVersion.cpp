#include "pdf/tree/DocumentVersion.h"

#include <algorithm>

#include "pdf/Limits.h"

namespace TarnixTools::pdf {

int VersionOf(std::string_view text) {
  if (text.size() < 3 || (text[0] != '1' && text[0] != '2') || text[1] != '.' || text[2] < '0' ||
      text[2] > '9') {
    return 0;
  }
  const int minor = text[2] - '0';
  return text[0] == '1' ? 10 + std::min(minor, 7) : 20 + minor;
}

int DocumentVersion(Document& document) {
  constexpr std::string_view kMark = "%PDF-";
  const std::string_view start = document.reader().blocks().Window(0, limits::kHeaderSearch);
  const std::size_t at = start.find(kMark);
  const int in_header =
      at == std::string_view::npos ? 0 : VersionOf(start.substr(at + kMark.size()));
  Arena arena;
  const Object version = document.Resolve(document.Catalog(arena).Get("Version"), arena);
  return std::max(in_header, version.IsName() ? VersionOf(version.Text()) : 0);
}

}  // namespace TarnixTools::pdf
