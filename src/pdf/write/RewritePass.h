// Writes a document as a RewritePlan changes it.
#ifndef TARNIX_PDF_WRITE_REWRITEPASS_H_
#define TARNIX_PDF_WRITE_REWRITEPASS_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "pdf/file/Document.h"
#include "pdf/write/DocumentRewriter.h"
#include "pdf/write/FileWriter.h"
#include "pdf/write/NumberMap.h"
#include "pdf/write/ObjectCopier.h"
#include "pdf/write/PageTreeWriter.h"
#include "pdf/write/RewritePlan.h"

namespace TarnixTools::pdf {

class RewritePass : private CopyChanges {
 public:
  // Everything outlives the pass.
  RewritePass(Document& document, RewritePlan& plan, ByteSink& sink, const RewriteOptions& options);
  ~RewritePass() override;
  RewritePass(const RewritePass&) = delete;
  RewritePass& operator=(const RewritePass&) = delete;

  // Writes the whole file; once.
  void Write();

 private:
  std::uint32_t StandIn(std::uint32_t number) override;
  bool Write(std::uint32_t number, std::uint32_t target_number) override;

  const ObjectChange& ChangeOf(std::uint32_t number, ObjectChange& made);
  RewritePlan::Entries EntriesOf(std::uint32_t number) const;
  bool WriteEdited(std::uint32_t number, std::uint32_t target_number,
                   const RewritePlan::Entries& entries);
  void WriteStream(const ObjectChange& change, const Object& dictionary,
                   std::uint32_t target_number);
  std::uint32_t AddText(std::string text);

  void WritePages();
  void WritePage(const RewrittenPage& page, std::uint32_t target_number);
  std::uint32_t NumberOf(const RewrittenPage& page);
  Object PageDictionary(std::uint32_t number, Arena& arena);
  void PutInherited(RewritePlan::Entries& entries, const PageTree::Page& page,
                    const Object& dictionary);
  Object Inherited(const PageTree::Given& given, InheritableKey key, Arena& arena);
  std::string SharedText(const PageTree::Given& given, InheritableKey key);
  FileTrailer Trailer();

  Document* document_;
  RewritePlan* plan_;
  bool keeps_id_;
  std::size_t added_before_;
  FileWriter writer_;
  NumberMap numbers_;
  ObjectCopier objects_;
  std::unordered_set<std::uint32_t> page_numbers_;  // of the plan's pages
  std::uint32_t parent_ = 0;                        // stands for that of the page being written
  std::uint32_t page_root_ = 0;                     // stands for the new page tree's
  // Objects with values that pages inherit, by key and by the node that gives them.
  std::array<std::unordered_map<std::uint32_t, std::uint32_t>, 4> shared_;
};

}  // namespace TarnixTools::pdf

#endif  // TARNIX_PDF_WRITE_REWRITEPASS_H_
