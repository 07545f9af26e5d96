#include "pdf/content/Appearances.h"

#include <array>
#include <string_view>

#include "pdf/file/NumberArrays.h"

namespace TarnixTools::pdf {

namespace {

// Flags of an annotation (ISO 32000-2, table 167).
constexpr std::int64_t kHidden = 2;
constexpr std::int64_t kNoView = 32;

constexpr std::array<std::string_view, 3> kAppearanceKeys = {"N", "D", "R"};

// Number of the stream, or of the dictionary of states.
struct Entry {
  Followed found;
  bool is_stream = false;
};

Entry EntryOf(Document& document, const Object& appearances, std::string_view key, Arena& arena) {
  Entry entry{document.Follow(appearances.Get(key), arena)};
  entry.is_stream = entry.found.number != 0 && document.IsStream(entry.found.number);
  return entry;
}

}  // namespace

std::vector<std::uint32_t> AppearancesOf(Document& document, const Object& annotation) {
  Arena arena;
  std::vector<std::uint32_t> numbers;
  const Object appearances = document.Resolve(annotation.Get("AP"), arena);
  for (const std::string_view key : kAppearanceKeys) {
    const Entry entry = EntryOf(document, appearances, key, arena);
    if (entry.is_stream) {
      numbers.push_back(entry.found.number);
      continue;
    }
    for (const DictionaryEntry& state : entry.found.value.Entries()) {
      const std::uint32_t number = document.Follow(state.value, arena).number;
      if (number != 0) {
        numbers.push_back(number);
      }
    }
  }
  return numbers;
}

std::uint32_t ShownAppearance(Document& document, const Object& annotation,
                              const VisibleLayers* layers) {
  Arena arena;
  const std::int64_t flags = document.Resolve(annotation.Get("F"), arena).IntegerOr(0);
  if ((flags & (kHidden | kNoView)) != 0 ||
      document.Resolve(annotation.Get("Subtype"), arena).IsName("Popup") ||
      (layers != nullptr && !layers->IsSeen(annotation.Get("OC")))) {
    return 0;
  }
  const Object appearances = document.Resolve(annotation.Get("AP"), arena);
  const Entry normal = EntryOf(document, appearances, "N", arena);
  if (normal.is_stream) {
    return normal.found.number;
  }
  const Object state = document.Resolve(annotation.Get("AS"), arena);
  return document.Follow(normal.found.value.Get(state.Text()), arena).number;
}

Matrix AppearanceMatrix(Document& document, const Object& annotation, const Object& appearance) {
  const Matrix own = ReadMatrix(document, appearance.Get("Matrix")).value_or(Matrix{});
  const auto rectangle = ReadBox(document, annotation.Get("Rect"));
  const auto box = ReadBox(document, appearance.Get("BBox"));
  if (!rectangle || !box) {
    return own;
  }
  const Box drawn = box->Through(own);
  if (drawn.IsEmpty()) {
    return own;
  }
  const double x = rectangle->width() / drawn.width();
  const double y = rectangle->height() / drawn.height();
  return own *
         Matrix{x, 0, 0, y, rectangle->left - drawn.left * x, rectangle->bottom - drawn.bottom * y};
}

}  // namespace TarnixTools::pdf
