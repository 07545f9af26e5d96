// Annotations of a copied page (ISO 32000-2, 12.5).
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_ANNOTATIONS_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_ANNOTATIONS_H_

#include <cstdint>
#include <span>
#include <string>
#include <unordered_set>
#include <vector>

#include "pdf/syntax/Arena.h"
#include "pdf/syntax/Object.h"

namespace TarnixTools::engines {

class CopyContext;
struct CopyParts;
struct PageRequest;
class SourceDocument;

// Which objects are annotations of which page; read once per source.
class SourceAnnotations {
 public:
  explicit SourceAnnotations(SourceDocument& source);

  // Whether the object is an annotation of any page.
  bool Contains(std::uint32_t number) const;
  // Annotations of a page, by zero-based index, in order: those that are objects of their own.
  std::span<const std::uint32_t> OfPage(std::uint32_t page_index) const;

 private:
  std::vector<std::uint32_t> numbers_;  // page by page
  std::vector<std::uint32_t> starts_;   // of each page in numbers_, and the end; empty for none
  std::vector<std::uint32_t> sorted_;
};

class AnnotationCopier {
 public:
  AnnotationCopier(CopyContext& context, CopyParts& parts) : context_(&context), parts_(&parts) {}

  // Before any page is written: gives the annotations of the copied pages their numbers in the
  // target, so that references to them hold in either direction.
  void Prepare();
  // Writes the annotations and appends the page's /Annots entry. Where an annotation was copied
  // before in this copy, with the same page or another, it becomes an object of its own.
  void Copy(std::string& page, const pdf::Object& annotations, const PageRequest& request);

 private:
  struct Copied {
    pdf::Object dictionary;
    std::uint32_t source_number;  // 0: no object of its own
    std::uint32_t target_number;
  };

  bool IsPageOrNode(std::uint32_t number);
  std::uint32_t NumberFor(std::uint32_t number, std::vector<Copied>& others);
  void AppendAnnotation(std::string& out, const Copied& copy, const PageRequest& request);
  void AppendEntries(std::string& out, const pdf::Object& dictionary);

  CopyContext* context_;
  CopyParts* parts_;
  pdf::Arena arena_;
  std::unordered_set<std::uint32_t> promised_;  // source numbers of annotations still to come
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_ANNOTATIONS_H_
