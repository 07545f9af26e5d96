// What the things are that resources, images and annotations lead to, and which of them have
// content of their own (ISO 32000-2, 7.8): the one place that tells a form from an image and a
// tiling pattern from a shading.
#ifndef TARNIX_PDF_CONTENT_RESOURCEKIND_H_
#define TARNIX_PDF_CONTENT_RESOURCEKIND_H_

#include <cstdint>
#include <vector>

#include "pdf/content/ResourceNames.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"

namespace TarnixTools::pdf {

enum class ResourceKind : std::uint8_t {
  kUnknown,  // what readers pass over
  // With content:
  kPage,
  kForm,           // an XObject
  kTilingPattern,  // its cell
  kSoftMaskGroup,  // of a graphics state
  kGlyph,          // of a Type 3 font
  kAppearance,     // of an annotation
  // Without:
  kType3Font,  // its glyphs have
  kFont,       // any other
  kImage,      // an XObject
  kImageMask,  // /SMask or /Mask of an image
  kAlternate,  // of an image
  kShading,
  kShadingPattern,
  kColorSpace,
  kGraphicsState,
  kProperties,
};

constexpr bool HasContent(ResourceKind kind) {
  return kind >= ResourceKind::kPage && kind <= ResourceKind::kAppearance;
}

// What an entry of a resource dictionary is; value: resolved.
ResourceKind KindOf(Document& document, ResourceCategory category, const Object& value);

// Something with content, or a Type 3 font, whose glyphs have it.
struct ContentPlace {
  ResourceKind kind = ResourceKind::kUnknown;
  std::uint32_t number = 0;  // of its object; 0 for none
};

// The content that an entry of a resource dictionary brings when it is used: that of a form, a
// tiling pattern, the soft mask of a graphics state, the glyphs of a Type 3 font.
ContentPlace ContentOf(Document& document, ResourceCategory category, const Object& entry);

// The group of a graphics state's soft mask; kUnknown for one without.
ContentPlace SoftMaskOf(Document& document, const Object& graphics_state, Arena& arena);

// Numbers of the glyphs of a Type 3 font.
std::vector<std::uint32_t> GlyphsOf(Document& document, const Object& font);

// Where the names in some content are looked up.
struct ResourceScope {
  Object resources;         // a dictionary; null for none
  std::uint32_t owner = 0;  // number of the object that the dictionary is, or that it stands in
};

// Of something with content: its own resources, or those of what uses it when it has none. Readers
// do so although the standard wants resources of their own (7.8.3).
//   dictionary, number - of the content, or of a Type 3 font
//   user               - where the names of what uses it are looked up
ResourceScope ScopeOf(Document& document, const Object& dictionary, std::uint32_t number,
                      const ResourceScope& user, Arena& arena);

// Of a page: its own resources, or those that it inherits. Where they stand in a page or in a node
// of the page tree, their owner is a number that no object has.
ResourceScope ScopeOfPage(Document& document, const PageTree& pages, std::size_t page_index,
                          Arena& arena);

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_CONTENT_RESOURCEKIND_H_
