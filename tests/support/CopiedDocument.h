// What page copies bring along, through the document engine's contract: pages of documents in
// memory go into a new one, which is then looked at with the core.
//
//   CopiedDocument copy({{a_bytes}, {b_bytes, {0, 2}}});  // all of a, two pages of b
//   EXPECT_EQ(copy.Text(copy.Catalog().Get("Lang")), "(en)");
#ifndef TARNIX_TESTS_SUPPORT_COPIED_DOCUMENT_H_
#define TARNIX_TESTS_SUPPORT_COPIED_DOCUMENT_H_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "engines/toolbox/Toolbox.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"
#include "pdf/write/Serialize.h"
#include "support/MemoryFile.h"

namespace TarnixTools::engines {

struct CopiedPages {
  std::string bytes;       // of a document
  std::vector<int> pages;  // zero-based; none: all of them
};

struct ReportedEntry {
  TPdfCopiedKind kind;
  TPdfCopyOutcome outcome;
  std::uint64_t count;
  std::string reason;
};

// The bytes of a new document with these pages. report, when not null, gets what the copies
// reported.
inline std::string CopyPages(const std::vector<CopiedPages>& sources,
                             std::vector<ReportedEntry>* report = nullptr,
                             const TPdfEncryption* encryption = nullptr) {
  MemoryFile output;
  const TPdfStream target_stream = output.Descriptor();
  TPdfDocument* target = PdfDocumentCreateW(&target_stream, 0, encryption);
  if (report != nullptr) {
    PdfDocumentSetReport(
        target,
        [](void* context, const TPdfReportEntry* entry) {
          static_cast<std::vector<ReportedEntry>*>(context)->push_back(
              {entry->kind, entry->outcome, entry->count, entry->reason});
        },
        report);
  }
  for (const CopiedPages& pages : sources) {
    MemoryFile input{pages.bytes};
    const TPdfStream source_stream = input.Descriptor();
    TPdfDocument* source = PdfDocumentOpenA(&source_stream, "");
    TPdfPageList* source_pages = PdfDocumentGetPages(source);
    TPdfPageList* target_pages = PdfDocumentGetPages(target);
    std::vector<int> indexes = pages.pages;
    for (int i = 0; pages.pages.empty() && i < PdfPageListGetCount(source_pages); ++i) {
      indexes.push_back(i);
    }
    for (const int index : indexes) {
      TPdfPage* page = PdfPageListGet(source_pages, index);
      TPdfPage* copy = PdfDocumentCopyPage(target, page, 15);
      EXPECT_EQ(PdfPageListAppend(target_pages, copy), 1);
      PdfClose(copy);
      PdfClose(page);
    }
    PdfClose(source_pages);
    PdfClose(target_pages);
    EXPECT_EQ(PdfClose(source), 1);
  }
  EXPECT_EQ(PdfClose(target), 1);
  return output.bytes;
}

class CopiedDocument {
 public:
  explicit CopiedDocument(const std::vector<CopiedPages>& sources)
      : bytes_(CopyPages(sources, &report_)),
        document_(pdf::Document::Open(std::make_unique<pdf::MemorySource>(bytes_), "")),
        pages_(*document_) {
    EXPECT_EQ(document_->findings().count(), 0U);
  }

  const std::string& bytes() const { return bytes_; }

  pdf::Document& document() { return *document_; }

  std::size_t PageCount() const { return pages_.pages().size(); }

  pdf::Object Page(std::size_t index) { return pages_.Load(pages_.pages().at(index), arena_); }

  pdf::Object Catalog() { return document_->Load(document_->root(), arena_); }

  pdf::Object Follow(const pdf::Object& value) { return document_->Resolve(value, arena_); }

  // The value of a key, followed.
  pdf::Object Get(const pdf::Object& dictionary, std::string_view key) {
    return Follow(Follow(dictionary).Get(key));
  }

  std::string Data(const pdf::Object& reference) {
    return document_->DecodeStream(reference.AsReference().number)->data;
  }

  // The value as PDF text.
  static std::string Text(const pdf::Object& value) {
    std::string text;
    pdf::AppendObject(text, value);
    return text;
  }

  // How many things of this kind had this outcome.
  std::uint64_t Reported(TPdfCopiedKind kind, TPdfCopyOutcome outcome) const {
    std::uint64_t count = 0;
    for (const ReportedEntry& entry : report_) {
      count += entry.kind == kind && entry.outcome == outcome ? entry.count : 0;
    }
    return count;
  }

 private:
  std::vector<ReportedEntry> report_;
  std::string bytes_;
  std::unique_ptr<pdf::Document> document_;
  pdf::PageTree pages_;
  pdf::Arena arena_;
};

}  // namespace TarnixTools::engines

#endif  // TARNIX_TESTS_SUPPORT_COPIED_DOCUMENT_H_
