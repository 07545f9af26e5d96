#include "engines/pdfa/convert/LevelChoice.h"

#include <algorithm>

#include "engines/support/metadata/PdfAClaim.h"

namespace TarnixTools::engines::pdfa {

using pdf::Arena;
using pdf::Object;

namespace {

void Add(std::vector<Level>& levels, std::optional<Level> level) {
  if (level && std::find(levels.begin(), levels.end(), *level) == levels.end()) {
    levels.push_back(*level);
  }
}

// With those of its part that ask for less. Part 1 has no level u.
void AddWithLower(std::vector<Level>& levels, Level level) {
  const int part = PartOf(level);
  Add(levels, level);
  if (ConformanceOf(level) == 'a') {
    Add(levels, LevelOf(part, 'u'));
  }
  Add(levels, LevelOf(part, 'b'));
}

bool HasEmbeddedFiles(pdf::Document& document) {
  Arena arena;
  const Object names = document.Resolve(document.Catalog(arena).Get("Names"), arena);
  return document.Resolve(names.Get("EmbeddedFiles"), arena).IsDictionary();
}

// Whether the document says that its structure is that of tags (ISO 32000-2, 14.8).
bool IsTagged(pdf::Document& document) {
  Arena arena;
  const Object catalog = document.Catalog(arena);
  const Object marks = document.Resolve(catalog.Get("MarkInfo"), arena);
  return document.Resolve(marks.Get("Marked"), arena).BooleanOr(false) &&
         document.Resolve(catalog.Get("StructTreeRoot"), arena).IsDictionary();
}

}  // namespace

std::vector<Level> LevelsToTry(pdf::Document& document, std::optional<Level> wanted) {
  std::vector<Level> levels;
  if (wanted) {
    AddWithLower(levels, *wanted);
  } else {
    Add(levels, LevelOfCode(ComplianceOf(document)));
    AddWithLower(levels,
                 *LevelOf(HasEmbeddedFiles(document) ? 3 : 2, IsTagged(document) ? 'a' : 'u'));
  }
  Add(levels, Level::k2b);
  return levels;
}

}  // namespace TarnixTools::engines::pdfa
