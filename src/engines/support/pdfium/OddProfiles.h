// ICC profiles of other colours than their colour space has, as those of RGB in gray images. PDFium
// draws nothing in such a colour space; other programs do without the profile.
#ifndef TARNIX_ENGINES_SUPPORT_PDFIUM_ODDPROFILES_H_
#define TARNIX_ENGINES_SUPPORT_PDFIUM_ODDPROFILES_H_

#include <cstdint>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "pdf/file/Document.h"
#include "pdf/syntax/Object.h"

namespace TarnixTools::engines {

class OddProfiles {
 public:
  // The document outlives this.
  explicit OddProfiles(pdf::Document& document) : document_(&document) {}

  // Looks at the colour spaces of these resources, and at those of the images, forms and patterns
  // in there. Every object is looked at once. Throws pdf::Error for a document that cannot be read
  // any more.
  void Find(const pdf::Object& resources) { FindInResources(resources, 0); }

  // Numbers of the profiles found so far.
  const std::vector<std::uint32_t>& numbers() const { return numbers_; }

 private:
  void FindInResources(const pdf::Object& resources, int depth);
  void FindInObject(const pdf::Object& entry, int depth);
  void FindInSpace(const pdf::Object& space, int depth);
  void Check(std::uint32_t number);
  bool IsOdd(std::uint32_t number);
  bool IsNew(const pdf::Object& entry);

  pdf::Document* document_;
  std::unordered_set<std::uint32_t> seen_;
  std::vector<std::uint32_t> numbers_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_SUPPORT_PDFIUM_ODDPROFILES_H_
