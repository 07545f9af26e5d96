// What a job kept of its inputs beside the pages themselves, what it renamed and what it dropped;
// and what it added to the pages.
//
//   task.Execute();
//   for (const PdfReportEntry& entry : task.GetReport().GetEntries()) {
//     std::cerr << PdfReport::GetText(entry) << '\n';      // "12 outline items kept"
//   }
#ifndef TARNIX_PDF_REPORT_H_
#define TARNIX_PDF_REPORT_H_

#include <cstdint>
#include <string>
#include <vector>

#include "TarnixExport.h"

namespace TarnixTools {

enum class PdfReportKind : std::int32_t {
  Link = 0,
  Annotation = 1,
  NamedDestination = 2,
  OutlineItem = 3,
  PageLabel = 4,
  FormField = 5,
  Signature = 6,
  XfaForm = 7,
  Script = 8,
  Layer = 9,
  Attachment = 10,
  StructureElement = 11,
  ArticleThread = 12,
  Thumbnail = 13,
  OutputIntent = 14,
  ViewerSetting = 15,
  Resource = 16,
  // Of an input: Kept when everything could be read all the same, Dropped when something is lost.
  Damage = 17,
  PageNumber = 18,
  TextStamp = 19,
  ImageStamp = 20,
  Font = 21,
};

enum class PdfReportOutcome : std::int32_t {
  Kept = 0,
  Renamed = 1,
  Dropped = 2,
  Added = 3,
  Replaced = 4,
};

struct PdfReportEntry {
  bool operator==(const PdfReportEntry&) const = default;

  PdfReportKind kind{};
  PdfReportOutcome outcome{};
  std::int64_t count = 0;  // of things with this kind, outcome and reason
  // The one-based page of the output that the first of them is on; 0 for none in particular.
  std::int32_t page = 0;
  std::string reason;  // in a few words; empty where there is nothing to explain
};

// A plain value. There is one entry for each kind, outcome and reason, whatever the number of
// inputs and outputs of the job.
class TARNIX_EXPORT PdfReport {
 public:
  PdfReport();
  PdfReport(const PdfReport& other);
  PdfReport(PdfReport&& other) noexcept;
  PdfReport& operator=(const PdfReport& other);
  PdfReport& operator=(PdfReport&& other) noexcept;
  ~PdfReport();

  // In the order in which they came up.
  const std::vector<PdfReportEntry>& GetEntries() const { return entries_; }

  // Counts it to the entry of the same kind, outcome and reason, or appends it.
  void Add(const PdfReportEntry& entry);
  void Add(const PdfReport& report);
  void Clear();

  // "outline item", "damage", ...; "thing" for a value that is none. The text is static.
  static const char* GetKindName(PdfReportKind kind);

  // "kept", "renamed", "dropped", "added" or "replaced".
  static const char* GetOutcomeName(PdfReportOutcome outcome);

  // An entry as a line: "12 outline items kept", "1 signature dropped: REASON", "damage: REASON (3
  // times)".
  static std::string GetText(const PdfReportEntry& entry);

 private:
  std::vector<PdfReportEntry> entries_;
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_REPORT_H_
