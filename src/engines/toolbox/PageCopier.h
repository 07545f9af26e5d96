// Writes copies of a source's pages into a file, each with what belongs to it: resources (once,
// however many pages share them), annotations, boxes and rotation, inherited ones included.
// References to pages that are not copied become null.
#ifndef TARNIX_ENGINES_TOOLBOX_PAGECOPIER_H_
#define TARNIX_ENGINES_TOOLBOX_PAGECOPIER_H_

#include <cstdint>
#include <map>
#include <string>
#include <unordered_set>
#include <vector>

#include "pdf/syntax/Object.h"
#include "pdf/tree/PageTree.h"
#include "pdf/write/FileWriter.h"
#include "pdf/write/ObjectCopier.h"

namespace TarnixTools::engines {

class SourceDocument;

struct PageRequest {
  std::uint32_t page_index = 0;     // in the source, zero-based
  std::uint32_t target_number = 0;  // of the page in the target
  std::uint32_t parent_number = 0;  // its page tree node in the target
  int rotation = 0;                 // degrees clockwise, added to the page's own
};

class PageCopier {
 public:
  PageCopier(SourceDocument& source, pdf::FileWriter& target);
  ~PageCopier();
  PageCopier(const PageCopier&) = delete;
  PageCopier& operator=(const PageCopier&) = delete;

  // Writes all pages that are copied from the source into the target: they are known at once, so
  // that references between them hold whichever comes first.
  void Write(const std::vector<PageRequest>& requests);

 private:
  void WritePage(const PageRequest& request);
  void AppendInherited(std::string& out, const pdf::PageTree::Page& page,
                       const pdf::Object& dictionary);
  void AppendResources(std::string& out, const pdf::PageTree::Inherited& resources);
  void AppendRotation(std::string& out, const pdf::PageTree::Page& page,
                      const pdf::Object& dictionary, int rotation);
  void AppendAnnotations(std::string& out, const pdf::Object& annotations,
                         const PageRequest& request, bool is_repeated);
  void AppendAnnotation(std::string& out, const pdf::Object& dictionary,
                        const PageRequest& request);

  SourceDocument* source_;
  pdf::FileWriter* target_;
  pdf::ObjectCopier objects_;
  pdf::Arena arena_;
  std::unordered_set<std::uint32_t> written_pages_;          // page indexes
  std::map<std::uint32_t, std::uint32_t> shared_resources_;  // by page tree node of the source
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_ENGINES_TOOLBOX_PAGECOPIER_H_
