// Pages copied through the document engine's contract, and the outcome looked at with the core.
//
//   CopiedDocument copy({{first_bytes, {0, 2}}, {second_bytes, {1}}});
//   copy.Annotations(0).at(0).Get("Dest")
#ifndef TARNIX_TESTS_ENGINES_TOOLBOX_COPY_COPIEDDOCUMENT_H_
#define TARNIX_TESTS_ENGINES_TOOLBOX_COPY_COPIEDDOCUMENT_H_

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/toolbox/Toolbox.h"
#include "engines/toolbox/WrittenDocument.h"
#include "pdf/write/Serialize.h"
#include "support/MemoryFile.h"

namespace TarnixTools::engines::toolbox {

// Pages of one document, by zero-based index, in the order in which they are copied; none: all of
// them.
struct PagesOf {
  std::string bytes;
  std::vector<int> indexes = {};
  const char* heading = nullptr;  // of its outline; null: none
};

struct ReportedEntry {
  TPdfCopiedKind kind;
  TPdfCopyOutcome outcome;
  std::uint64_t count;
  std::string reason;
  std::uint32_t page;  // one-based, 0: none in particular
};

inline void CopyInto(TPdfDocument* target, const PagesOf& part, int options = 15) {
  MemoryFile input{part.bytes};
  const TPdfStream stream = input.Descriptor();
  TPdfDocument* source = PdfDocumentOpenA(&stream, "");
  ASSERT_NE(source, nullptr);
  TPdfPageList* source_pages = PdfDocumentGetPages(source);
  TPdfPageList* target_pages = PdfDocumentGetPages(target);
  std::vector<int> indexes = part.indexes;
  for (int i = 0; part.indexes.empty() && i < PdfPageListGetCount(source_pages); ++i) {
    indexes.push_back(i);
  }
  for (const int index : indexes) {
    TPdfPage* page = PdfPageListGet(source_pages, index);
    TPdfPage* copy = PdfDocumentCopyPage(target, page, options);
    EXPECT_EQ(PdfPageListAppend(target_pages, copy), 1);
    PdfClose(copy);
    PdfClose(page);
  }
  if (part.heading != nullptr) {
    EXPECT_EQ(PdfDocumentSetOutlineHeading(target, source, part.heading), 1);
  }
  PdfClose(source_pages);
  PdfClose(target_pages);
  EXPECT_EQ(PdfClose(source), 1);
}

// report, when not null, gets what the copies reported.
inline std::string CopyAll(const std::vector<PagesOf>& parts, int options = 15,
                           std::vector<ReportedEntry>* report = nullptr,
                           const TPdfEncryption* encryption = nullptr) {
  MemoryFile output;
  const TPdfStream stream = output.Descriptor();
  TPdfDocument* target = PdfDocumentCreateW(&stream, 0, encryption);
  const auto take = [](void* context, const TPdfReportEntry* entry) {
    static_cast<std::vector<ReportedEntry>*>(context)->push_back(
        {entry->kind, entry->outcome, entry->count, entry->reason, entry->page});
  };
  if (report != nullptr) {
    PdfDocumentSetReport(target, take, report);
  }
  for (const PagesOf& part : parts) {
    CopyInto(target, part, options);
  }
  EXPECT_EQ(PdfClose(target), 1);
  return output.bytes;
}

// What copies reported. A base, since it has to be there before the document is.
struct CopyReportEntries {
  std::vector<ReportedEntry> entries;
};

class CopiedDocument : private CopyReportEntries, public WrittenDocument {
 public:
  explicit CopiedDocument(const std::vector<PagesOf>& parts, int options = 15)
      : WrittenDocument(CopyAll(parts, options, &entries)) {}

  // How many things of this kind had this outcome.
  std::uint64_t Reported(TPdfCopiedKind kind, TPdfCopyOutcome outcome) const {
    std::uint64_t count = 0;
    for (const ReportedEntry& entry : entries) {
      count += entry.kind == kind && entry.outcome == outcome ? entry.count : 0;
    }
    return count;
  }

  // Why things of this kind had this outcome.
  std::set<std::string> Reasons(TPdfCopiedKind kind, TPdfCopyOutcome outcome) const {
    std::set<std::string> reasons;
    for (const ReportedEntry& entry : entries) {
      if (entry.kind == kind && entry.outcome == outcome) {
        reasons.insert(entry.reason);
      }
    }
    return reasons;
  }

  std::vector<pdf::Object> Annotations(std::size_t page) {
    std::vector<pdf::Object> annotations;
    for (const pdf::Object& item : Follow(Page(page).Get("Annots")).Items()) {
      annotations.push_back(Follow(item));
    }
    return annotations;
  }

  // An explicit destination with the zero-based index of its page: "1/XYZ 0 0 null"; "" for what is
  // none.
  std::string Place(const pdf::Object& destination) {
    const auto items = Follow(destination).Items();
    for (std::size_t i = 0; i < PageCount() && !items.empty(); ++i) {
      if (items[0].AsReference().number == PageNumber(i)) {
        std::string text = std::to_string(i);
        for (const pdf::Object& item : items.subspan(1)) {
          pdf::AppendObject(text, item);
        }
        return text;
      }
    }
    return "";
  }
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_TESTS_ENGINES_TOOLBOX_COPY_COPIEDDOCUMENT_H_
