// Writes copies of a source's pages into a file, each with what belongs to it.
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_PAGES_PAGECOPIER_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_PAGES_PAGECOPIER_H_

#include <string>
#include <unordered_set>
#include <vector>

#include "engines/toolbox/copy/CopyContext.h"
#include "engines/toolbox/copy/CopyParts.h"
#include "engines/toolbox/copy/pages/PaintedContents.h"
#include "pdf/syntax/Object.h"
#include "pdf/tree/PageTree.h"

namespace TarnixTools::engines::toolbox {

class PageCopier {
 public:
  PageCopier(SourceDocument& source, pdf::FileWriter& target, TargetParts& parts,
             const std::vector<PageRequest>& requests)
      : context_(source, target, parts, requests),
        parts_(context_),
        painted_(context_, parts_.resources) {}

  // Once.
  void Write();

 private:
  void WritePage(const PageRequest& request);
  void AppendContents(std::string& out, const pdf::Object& contents);
  void AppendPainted(std::string& out, const PageRequest& request, const pdf::PageTree::Page& page,
                     const pdf::Object& dictionary, const std::string& key);
  bool IsLostStream(const pdf::Object& item);
  void AppendRotation(std::string& out, const pdf::PageTree::Page& page,
                      const pdf::Object& dictionary, int rotation);
  void ReportLeftOut(const pdf::Object& dictionary);

  CopyContext context_;
  CopyParts parts_;
  PaintedContents painted_;
  pdf::Arena arena_;
  std::unordered_set<std::uint32_t> written_pages_;  // page indexes
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_PAGES_PAGECOPIER_H_
