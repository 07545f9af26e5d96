#include "pdf/content/ResourceKind.h"

namespace TarnixTools::pdf {

namespace {

ResourceKind KindOfXObject(const Object& subtype) {
  if (subtype.IsName("Image")) {
    return ResourceKind::kImage;
  }
  return subtype.IsName("Form") ? ResourceKind::kForm : ResourceKind::kUnknown;
}

ResourceKind KindOfPattern(const Object& type) {
  constexpr std::int64_t kTiling = 1;
  constexpr std::int64_t kShading = 2;
  switch (type.IntegerOr(0)) {
    case kTiling:
      return ResourceKind::kTilingPattern;
    case kShading:
      return ResourceKind::kShadingPattern;
    default:
      return ResourceKind::kUnknown;
  }
}

}  // namespace

ResourceKind KindOf(Document& document, ResourceCategory category, const Object& value) {
  Arena arena;
  switch (category) {
    case ResourceCategory::kXObject:
      return KindOfXObject(document.Resolve(value.Get("Subtype"), arena));
    case ResourceCategory::kPattern:
      return KindOfPattern(document.Resolve(value.Get("PatternType"), arena));
    case ResourceCategory::kFont:
      return document.Resolve(value.Get("Subtype"), arena).IsName("Type3")
                 ? ResourceKind::kType3Font
                 : ResourceKind::kFont;
    case ResourceCategory::kColorSpace:
      return ResourceKind::kColorSpace;
    case ResourceCategory::kExtGState:
      return ResourceKind::kGraphicsState;
    case ResourceCategory::kShading:
      return ResourceKind::kShading;
    case ResourceCategory::kProperties:
      return ResourceKind::kProperties;
  }
  return ResourceKind::kUnknown;
}

ContentPlace ContentOf(Document& document, ResourceCategory category, const Object& entry) {
  Arena arena;
  const Followed found = document.Follow(entry, arena);
  const ResourceKind kind = KindOf(document, category, found.value);
  if (kind == ResourceKind::kGraphicsState) {
    return SoftMaskOf(document, found.value, arena);
  }
  return HasContent(kind) || kind == ResourceKind::kType3Font ? ContentPlace{kind, found.number}
                                                              : ContentPlace{};
}

ContentPlace SoftMaskOf(Document& document, const Object& graphics_state, Arena& arena) {
  const Object mask = document.Resolve(graphics_state.Get("SMask"), arena);
  const std::uint32_t number = document.Follow(mask.Get("G"), arena).number;
  return number == 0 ? ContentPlace{} : ContentPlace{ResourceKind::kSoftMaskGroup, number};
}

std::vector<std::uint32_t> GlyphsOf(Document& document, const Object& font) {
  Arena arena;
  std::vector<std::uint32_t> numbers;
  for (const DictionaryEntry& glyph : document.Resolve(font.Get("CharProcs"), arena).Entries()) {
    if (glyph.value.IsReference()) {
      numbers.push_back(glyph.value.AsReference().number);
    }
  }
  return numbers;
}

ResourceScope ScopeOf(Document& document, const Object& dictionary, std::uint32_t number,
                      const ResourceScope& user, Arena& arena) {
  const Followed own = document.Follow(dictionary.Get("Resources"), arena);
  if (!own.value.IsDictionary()) {
    return user;
  }
  return {own.value, own.number != 0 ? own.number : number};
}

ResourceScope ScopeOfPage(Document& document, const PageTree& pages, std::size_t page_index,
                          Arena& arena) {
  const PageTree::Page& page = pages.pages()[page_index];
  const PageTree::Given given =
      pages.FindAttribute(page, pages.Load(page, arena), InheritableKey::kResources);
  const Followed found = document.Follow(given.value, arena);
  const std::size_t place = given.node == 0 ? page_index : pages.pages().size() + given.node;
  return {found.value, found.number != 0
                           ? found.number
                           : document.object_limit() + static_cast<std::uint32_t>(place)};
}

}  // namespace TarnixTools::pdf
