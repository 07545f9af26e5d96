// Resources of copied pages: shared ones once. When only some pages of a source are copied, what
// the others alone use stays behind.
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_PAGERESOURCES_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_PAGERESOURCES_H_

#include <cstdint>
#include <map>
#include <string>

#include "pdf/syntax/Object.h"
#include "pdf/tree/PageTree.h"

namespace TarnixTools::engines {

class CopyContext;

class PageResourceCopier {
 public:
  explicit PageResourceCopier(CopyContext& context) : context_(&context) {}

  // Before any page is written: looks at what the copied pages use.
  void Prepare();
  // Appends the page's /Resources entry.
  void Copy(std::string& page, const pdf::PageTree::Page& source_page,
            const pdf::Object& dictionary);

 private:
  CopyContext* context_;
  std::map<std::uint32_t, std::uint32_t>
      inherited_;  // target numbers by page tree node of the source
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_PAGERESOURCES_H_
