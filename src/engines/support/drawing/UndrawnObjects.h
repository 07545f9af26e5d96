// Images that PDFium draws nothing of, though they can be drawn: those whose colour space has an
// ICC profile of other colours, as that of RGB in gray images, which other programs do without; and
// JPEG 2000 images with other components than their colour space has, alpha most often; and JBIG2
// images with symbols that are refined. And functions that PDFium would never have done reading,
// since they are made of each other.
#ifndef TARNIX_ENGINES_SUPPORT_DRAWING_UNDRAWNOBJECTS_H_
#define TARNIX_ENGINES_SUPPORT_DRAWING_UNDRAWNOBJECTS_H_

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "engines/support/drawing/Unfolding.h"
#include "pdf/content/ResourceGraph.h"
#include "pdf/file/Document.h"
#include "pdf/syntax/Object.h"
#include "pdf/tree/PageTree.h"

namespace TarnixTools::engines {

class UndrawnObjects {
 public:
  // The document outlives this.
  explicit UndrawnObjects(pdf::Document& document)
      : document_(&document), graph_(document), unfolding_(document, "Functions") {}

  // Looks at all that the page leads to: images and colour spaces of its resources, and those of
  // forms, patterns, soft masks, glyphs and appearances in there. Every object is looked at once.
  // Throws pdf::Error for a document that cannot be read any more.
  void FindOnPage(const pdf::PageTree& pages, std::size_t page_index);

  // Numbers of the objects found so far.
  const std::vector<std::uint32_t>& profiles() const { return profiles_; }

  const std::vector<std::uint32_t>& images() const { return images_; }

  const std::vector<std::uint32_t>& functions() const { return functions_; }

  bool empty() const { return profiles_.empty() && images_.empty() && functions_.empty(); }

 private:
  void CheckResource(const pdf::ResourceNode& node);
  void CheckSpace(const pdf::Object& space);
  void CheckGraphicsState(const pdf::Object& state);
  void CheckFunction(const pdf::Object& function);
  void Check(std::uint32_t number);
  bool IsOdd(std::uint32_t number);
  bool IsOddImage(std::uint32_t number, const pdf::Object& dictionary);
  bool IsOddJbig2(std::uint32_t number, const pdf::Object& dictionary);

  pdf::Document* document_;
  pdf::ResourceGraph graph_;
  Unfolding unfolding_;  // of functions
  std::unordered_set<std::uint32_t> seen_profiles_;
  std::vector<std::uint32_t> profiles_;
  std::vector<std::uint32_t> images_;
  std::vector<std::uint32_t> functions_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_DRAWING_UNDRAWNOBJECTS_H_
