#include "pdf/content/Type3Font.h"

#include "pdf/content/Differences.h"
#include "pdf/file/NumberArrays.h"

namespace TarnixTools::pdf {

namespace {

constexpr std::int64_t kCodes = 256;
constexpr Matrix kUsualMatrix = {0.001, 0, 0, 0.001, 0, 0};

}  // namespace

Type3Font::Type3Font(Document& document, const Object& font) {
  const Followed found = document.Follow(font, arena_);
  number_ = found.number;
  matrix_ = ReadMatrix(document, found.value.Get("FontMatrix")).value_or(kUsualMatrix);
  scope_ = ScopeOf(document, found.value, number_, {}, arena_);
  ReadGlyphs(document, found.value);
  ReadWidths(document, found.value);
}

ResourceScope Type3Font::ScopeFor(const ResourceScope& user) const {
  return scope_.resources.IsDictionary() ? scope_ : user;
}

void Type3Font::ReadGlyphs(Document& document, const Object& font) {
  Arena arena;
  const auto resolve = [&](const Object& value) { return document.Resolve(value, arena); };
  const auto names = ReadDifferences(document, resolve(font.Get("Encoding")), arena);
  const Object procedures = resolve(font.Get("CharProcs"));
  for (std::size_t i = 0; i < names.size(); ++i) {
    glyphs_[i] = names[i].empty() ? 0 : document.Follow(procedures.Get(names[i]), arena).number;
  }
}

void Type3Font::ReadWidths(Document& document, const Object& font) {
  Arena arena;
  const std::int64_t first = document.Resolve(font.Get("FirstChar"), arena).IntegerOr(0);
  const auto widths = document.Resolve(font.Get("Widths"), arena).Items();
  if (first < 0 || first >= kCodes) {
    return;
  }
  const auto begin = static_cast<std::size_t>(first);
  for (std::size_t i = 0; i < widths.size() && begin + i < widths_.size(); ++i) {
    widths_[begin + i] = document.Resolve(widths[i], arena).NumberOr(0);
  }
}

}  // namespace TarnixTools::pdf
