// Annotations of a copied page (ISO 32000-2, 12.5).
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_ANNOTATIONS_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_ANNOTATIONS_H_

#include <cstdint>
#include <string>

#include "pdf/syntax/Arena.h"
#include "pdf/syntax/Object.h"

namespace TarnixTools::engines {

class CopyContext;
struct CopyParts;
struct PageRequest;

class AnnotationCopier {
 public:
  AnnotationCopier(CopyContext& context, CopyParts& parts) : context_(&context), parts_(&parts) {}

  // Writes the annotations and appends the page's /Annots entry. is_repeated: the page was copied
  // before in this copy; its annotations then become objects of their own.
  void Copy(std::string& page, const pdf::Object& annotations, const PageRequest& request,
            bool is_repeated);

 private:
  struct Copied {
    pdf::Object dictionary;
    std::uint32_t source_number;  // 0: no object of its own
    std::uint32_t target_number;
  };

  void AppendAnnotation(std::string& out, const Copied& copy, const PageRequest& request);
  void AppendEntries(std::string& out, const pdf::Object& dictionary);

  CopyContext* context_;
  CopyParts* parts_;
  pdf::Arena arena_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_ANNOTATIONS_H_
