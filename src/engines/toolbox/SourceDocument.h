// A document opened for reading, with the targets that still need pages of it.
#ifndef TARNIX_ENGINES_TOOLBOX_SOURCEDOCUMENT_H_
#define TARNIX_ENGINES_TOOLBOX_SOURCEDOCUMENT_H_

#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "engines/toolbox/Toolbox.h"
#include "engines/toolbox/copy/SourceParts.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageGeometry.h"
#include "pdf/tree/PageTree.h"
#include "pdf/write/ObjectCopier.h"

namespace TarnixTools::engines::toolbox {

class TargetDocument;

class SourceDocument {
 public:
  // Throws pdf::Error as Document::Open does.
  SourceDocument(const TPdfStream& stream, std::string_view password);

  pdf::Document& document() { return *document_; }

  // Read on first use, once. Throws pdf::Error.
  const pdf::PageTree& pages();
  // Of a page, by its zero-based index.
  pdf::PageGeometry GeometryOf(std::uint32_t page_index);

  SourceParts& parts() { return parts_; }

  // Whether a copied page must not bring this object: other pages, the page tree, the catalog and
  // its document-wide trees, annotations, which are written page by page, and form fields.
  bool IsBarred(std::uint32_t number);
  // Adds an object of such a tree.
  void Bar(std::uint32_t number);

  // For one copy at a time; the user clears it.
  pdf::NumberMap& numbers() { return numbers_; }

  // What the core found since this was last asked: a damage is reported with one copy only.
  std::span<const pdf::Finding> TakeFindings();

  void AddWaiting(TargetDocument& target);
  void RemoveWaiting(TargetDocument& target);
  // Has every waiting target write what it needs of this document.
  void ServeWaiting() noexcept;

 private:
  void BarDocumentTrees();

  std::unique_ptr<pdf::Document> document_;
  std::unique_ptr<pdf::PageTree> pages_;
  std::vector<bool> barred_;  // by object number
  pdf::NumberMap numbers_;
  SourceParts parts_{*this};
  std::size_t taken_findings_ = 0;
  std::vector<TargetDocument*> waiting_;
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_SOURCEDOCUMENT_H_
