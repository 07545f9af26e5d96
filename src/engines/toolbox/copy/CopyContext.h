// What the parts of one copy share. A copy is all pages that go from one source into one target in
// one go: they are known before the first of them is written.
#ifndef TARNIX_ENGINES_TOOLBOX_COPY_COPYCONTEXT_H_
#define TARNIX_ENGINES_TOOLBOX_COPY_COPYCONTEXT_H_

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

#include "engines/toolbox/SourceDocument.h"
#include "engines/toolbox/content/PageContent.h"
#include "engines/toolbox/copy/TargetParts.h"
#include "engines/toolbox/copy/report/CopyReport.h"
#include "pdf/write/FileWriter.h"
#include "pdf/write/ObjectCopier.h"

namespace TarnixTools::engines::toolbox {

struct PageRequest {
  std::uint32_t page_index = 0;                // in the source, zero-based
  std::uint32_t target_number = 0;             // object number of the page in the target
  std::uint32_t parent_number = 0;             // of its page tree node in the target
  std::uint32_t target_position = 0;           // in the target's page order, zero-based
  int rotation = 0;                            // degrees clockwise, added to the page's own
  std::int32_t options = 0;                    // PdfCopyOption bits
  std::shared_ptr<const PageContent> painted;  // onto it; may be null
};

class CopyContext {
 public:
  // All of it outlives the context.
  CopyContext(SourceDocument& source, pdf::FileWriter& target, TargetParts& parts,
              const std::vector<PageRequest>& requests);
  ~CopyContext();
  CopyContext(const CopyContext&) = delete;
  CopyContext& operator=(const CopyContext&) = delete;

  SourceDocument& source() { return *source_; }

  pdf::Document& document() { return source_->document(); }

  pdf::FileWriter& writer() { return *writer_; }

  pdf::ObjectCopier& objects() { return objects_; }

  TargetParts& parts() { return *parts_; }

  // Every part that meets a destination or an action has it led to the copied pages by this.
  DestinationCopier& destinations() { return destinations_; }

  // Names of the source's fields that actions need to know.
  FieldRenames& field_renames() { return field_renames_; }

  CopyReport& report() { return parts_->report; }

  const std::vector<PageRequest>& requests() const { return *requests_; }

  // Every page of the source is copied.
  bool is_whole() const { return is_whole_; }

  // The first copy of a source page, by its object number or its zero-based index; null when it is
  // not copied.
  const PageRequest* CopyOfPage(std::uint32_t page_number) const;
  const PageRequest* CopyOfPageIndex(std::uint32_t page_index) const;

 private:
  SourceDocument* source_;
  pdf::FileWriter* writer_;
  TargetParts* parts_;
  const std::vector<PageRequest>* requests_;
  pdf::ObjectCopier objects_;
  DestinationCopier destinations_{*this};
  FieldRenames field_renames_;
  bool is_whole_ = false;
  std::unordered_map<std::uint32_t, const PageRequest*> by_number_;
  std::unordered_map<std::uint32_t, const PageRequest*> by_index_;
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_COPY_COPYCONTEXT_H_
