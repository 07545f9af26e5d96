// What a job kept of its inputs beside the pages themselves, what it renamed and what it dropped;
// and what it added to the pages. A job that throws nothing may still have had to leave something
// out: this is where it says so.
//
//   task.Execute();
//   for (const PdfReportEntry& entry : task.GetReport().GetEntries()) {
//     std::cerr << PdfReport::GetText(entry) << '\n';      // "12 outline items kept"
//   }
//
// What a host may want to show a person is what has been Dropped or Renamed:
//
//   if (entry.outcome == PdfReportOutcome::Dropped) { ... entry.reason ... }
#ifndef TARNIX_PDF_REPORT_H_
#define TARNIX_PDF_REPORT_H_

#include <cstdint>
#include <string>
#include <vector>

#include "TarnixExport.h"

namespace TarnixTools {

// What an entry is about. A host had better pass over values that it does not know: later versions
// may tell of more kinds.
enum class PdfReportKind : std::int32_t {
  // An annotation that leads to a page, a file or a web address.
  Link = 0,
  // Every other annotation: notes, highlights, stamps.
  Annotation = 1,
  // A place in the document that links know by name.
  NamedDestination = 2,
  // A bookmark.
  OutlineItem = 3,
  // A page's number as viewers show it, such as "iv".
  PageLabel = 4,
  // A field of a form that is filled in, its widgets on the pages included.
  FormField = 5,
  // A digital signature. It does not hold for a file that has been written anew.
  Signature = 6,
  // A form in XML (XFA) beside the fields of the document.
  XfaForm = 7,
  // JavaScript that the document runs when it is opened.
  Script = 8,
  // Optional content, with what is shown and hidden at first.
  Layer = 9,
  // A file within the file.
  Attachment = 10,
  // A tag that tells what the content is: heading, table, figure.
  StructureElement = 11,
  // A text that runs over several columns and pages, to be followed by a viewer.
  ArticleThread = 12,
  // A small picture of a page, made by the program that wrote the document.
  Thumbnail = 13,
  // The printing condition that the document was made for.
  OutputIntent = 14,
  // How the document is opened: page layout, mode, preferences of the viewer.
  ViewerSetting = 15,
  // A font, an image or another thing that pages draw with.
  Resource = 16,
  // Of an input: Kept when everything could be read all the same, Dropped when something is lost.
  Damage = 17,
  // What PdfPageNumberTask puts onto pages: Dropped where it could not be painted.
  PageNumber = 18,
  // What PdfStampTextTask puts onto pages; a mosaic counts once for each page.
  TextStamp = 19,
  // What PdfStampImageTask puts onto pages; a mosaic counts once for each page.
  ImageStamp = 20,
  // A font that was asked for: Replaced when it cannot be used.
  Font = 21,
  Language = 22,
  MetadataValue = 23,  // of the document information
  XmpPacket = 24,
  PdfAClaim = 25,
  // What a conversion to PDF/A did: Replaced for what is there in another way, Dropped for what is
  // not in the output, Kept for what stands in the way of the level that was asked for.
  Conversion = 26,
  // Encryption of an input whose output has none, beside the job that takes it off.
  Protection = 27,
  // The text of a scanned page, or of one whose fonts do not tell it: Dropped where it could not be
  // recognised. What is scanned is a picture then.
  ScannedText = 28,
  // How large a page is: Replaced for one that is larger than the output can have, and smaller there.
  PageSize = 29,
};

enum class PdfReportOutcome : std::int32_t {
  Kept = 0,      // it is in the output, and does what it did
  Renamed = 1,   // it is in the output under another name, for its own was taken
  Dropped = 2,   // it is not in the output
  Added = 3,     // no input had it: the job put it there
  Replaced = 4,  // something else is used in its place
};

// Things of one kind, of one input where that is known, that had the same outcome for the same reason.
struct PdfReportEntry {
  // Whether all six are alike.
  bool operator==(const PdfReportEntry&) const = default;

  PdfReportKind kind{};
  PdfReportOutcome outcome{};
  std::int64_t count = 0;  // of things with this kind, outcome and reason
  // The one-based page of the output that the first of them is on; 0 for none in particular.
  std::int32_t page = 0;
  std::string reason;  // in a few words; empty where there is nothing to explain
  // Path of the input that they belong to, or of the image file; empty where a job has one input, or
  // does not tell.
  std::string source = {};
};

// A plain value, independent of the job that it came from. There is one entry for each kind,
// outcome, reason and source, whatever the number of inputs and outputs of the job.
class TARNIX_EXPORT PdfReport {
 public:
  PdfReport();
  PdfReport(const PdfReport& other);
  PdfReport(PdfReport&& other) noexcept;
  PdfReport& operator=(const PdfReport& other);
  PdfReport& operator=(PdfReport&& other) noexcept;
  ~PdfReport();

  // In the order in which they came up; empty when there is nothing to tell. Valid until the report
  // is changed or destroyed.
  const std::vector<PdfReportEntry>& GetEntries() const { return entries_; }

  // Counts it to the entry of the same kind, outcome, reason and source, which keeps its page, or appends
  // it. Of a report, every entry in its order; a report may be added to itself.
  void Add(const PdfReportEntry& entry);
  void Add(const PdfReport& report);

  // Leaves no entry.
  void Clear();

  // In English, singular: "outline item", "damage", ...; "thing" for a value that is none. The text
  // is static.
  static const char* GetKindName(PdfReportKind kind);

  // In English: "kept", "renamed", "dropped", "added" or "replaced"; "dropped" for a value that is
  // none. The text is static.
  static const char* GetOutcomeName(PdfReportOutcome outcome);

  // An entry as a line in English, without a line end and without its page:
  //   12 outline items kept
  //   1 signature dropped: REASON
  //   damage: REASON (3 times)
  //   protection dropped: REASON
  //   changed for PDF/A: REASON; left out for PDF/A: REASON; in the way of PDF/A: REASON
  static std::string GetText(const PdfReportEntry& entry);

 private:
  // No two with the same kind, outcome, reason and source.
  std::vector<PdfReportEntry> entries_;
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_REPORT_H_
