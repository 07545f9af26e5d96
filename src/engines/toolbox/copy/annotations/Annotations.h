// Annotations of a copied page (ISO 32000-2, 12.5).
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_ANNOTATIONS_ANNOTATIONS_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_ANNOTATIONS_ANNOTATIONS_H_

#include <cstdint>
#include <span>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "pdf/syntax/Arena.h"
#include "pdf/syntax/Object.h"

namespace TarnixTools::pdf {
class Document;
}  // namespace TarnixTools::pdf

namespace TarnixTools::engines::toolbox {

class CopyContext;
struct CopyParts;
struct PageRequest;
class SourceDocument;

// Which objects are annotations of which page; read once per source.
class SourceAnnotations {
 public:
  explicit SourceAnnotations(SourceDocument& source);

  // Whether the object is an annotation of any page.
  bool Contains(std::uint32_t number);
  // What a page, by zero-based index, lists as its annotations, in order: objects of their own, of
  // which damaged lists may hold some that are no annotations.
  std::span<const std::uint32_t> OfPage(std::uint32_t page_index) const;

 private:
  pdf::Document* document_;
  std::vector<std::uint32_t> numbers_;  // page by page
  std::vector<std::uint32_t> starts_;   // of each page in numbers_, and the end; empty for none
  std::vector<std::uint32_t> sorted_;
  std::unordered_map<std::uint32_t, bool> are_annotations_;  // as far as it was asked
};

class AnnotationCopier {
 public:
  AnnotationCopier(CopyContext& context, CopyParts& parts);

  // Before any page is written: gives the annotations of the copied pages their numbers in the
  // target, so that references to them hold in either direction.
  void Prepare();
  // Writes the annotations and appends the page's /Annots entry. Where an annotation was copied
  // before in this copy, with the same page or another, it becomes an object of its own.
  void Copy(std::string& page, const pdf::Object& annotations, const PageRequest& request);

 private:
  struct Annotation {
    pdf::Object item;                  // as it stands in the page's list
    std::uint32_t target_number = 0;   // 0: it does not come along
    bool is_promised = false;          // under this number, before any page was written
    std::uint32_t earlier_number = 0;  // in the target, of the copy before this one
    bool is_popup = false;
  };

  // The page that is being copied.
  struct Page {
    const PageRequest* request = nullptr;
    std::vector<Annotation> annotations;
    std::unordered_set<std::uint32_t> numbers;  // of the annotations in the source
    // Source and target numbers that hold again when the page is done.
    std::vector<std::pair<std::uint32_t, std::uint32_t>> earlier;
    // Target numbers of the annotations that have popups, by the popup's source number.
    std::unordered_map<std::uint32_t, std::uint32_t> popup_parents;
    std::uint64_t kept_links = 0;
    std::uint64_t links_to_others = 0;  // to pages that are not copied
    std::uint64_t dead_links = 0;       // to nothing in the source already
    std::uint64_t kept_annotations = 0;
    std::uint64_t too_many = 0;  // shared by more pages than it is copied for
  };

  void NumberAnnotations(const pdf::Object& annotations);
  bool GiveNumber(Annotation& annotation);
  void Drop(Annotation& annotation);
  void LeaveOut(Annotation& annotation);
  void CopyAnnotation(Annotation& annotation);
  bool AppendTarget(std::string& out, const pdf::Object& dictionary);
  bool LeadsToPage(const pdf::Object& dictionary);
  void AppendRelations(std::string& out, const pdf::Object& dictionary,
                       std::uint32_t target_number);
  std::uint32_t PopupFor(const pdf::Object& popup, std::uint32_t parent_number);
  void CopyListedPopup(Annotation& annotation);
  void WritePopup(std::uint32_t source_number, std::uint32_t target_number,
                  const pdf::Object& dictionary, std::uint32_t parent_number);
  void AppendOtherEntries(std::string& out, const pdf::Object& dictionary);
  void Write(std::uint32_t source_number, std::uint32_t target_number, std::string& text,
             const pdf::Object& dictionary);
  void AppendList(std::string& page) const;
  void Report();

  CopyContext* context_;
  CopyParts* parts_;
  pdf::Arena arena_;
  std::unordered_set<std::uint32_t> promised_;  // source numbers of annotations still to come
  std::unordered_set<std::uint32_t> written_;   // source numbers
  std::uint64_t budget_;  // bytes that may still be written of annotations beyond their first copy
  Page page_;
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_ANNOTATIONS_ANNOTATIONS_H_
