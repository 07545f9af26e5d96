// What a document is, in short.
//
//   const PdfSummary summary = PdfDoc("/data/report.pdf", "", true).GetSummary();
//   std::cout << "PDF " << summary.version << ", " << summary.rotations.size() << " pages\n";
//   if (summary.is_encrypted && !summary.is_owner && (summary.permissions & 4U) == 0) {
//     std::cout << "not to be printed\n";
//   }
//
// Nothing in it is a promise about the content: a document that says that it is tagged may be tagged
// badly, one that claims a level of PDF/A need not be of it (PdfDoc::ValidatePdfA tells), and fields
// that are signed may have been signed by anybody.
#ifndef TARNIX_PDF_SUMMARY_H_
#define TARNIX_PDF_SUMMARY_H_

#include <cstdint>
#include <string>
#include <vector>

#include "PdfCompliance.h"
#include "PdfSize.h"

namespace TarnixTools {

struct PdfSummary {
  // The later of what the file's header and the document say: "1.7", "2.0"; empty when both say none.
  std::string version;

  // Of each page in order, as PdfDoc::GetPageSizes gives them: points, as it is seen.
  std::vector<PdfSize> sizes;

  // Of each page in order, by how many degrees viewers turn it clockwise: 0, 90, 180 or 270.
  std::vector<int> rotations;

  // The document information, UTF-8; empty where there is none. As PdfDoc::GetMetaData, GetTitle and
  // GetSubject give it.
  std::string author;
  std::string keywords;
  std::string creator;
  std::string producer;
  std::string title;
  std::string subject;

  // Whether the file is encrypted, and whether the password is the owner's, who may do everything.
  bool is_encrypted = false;
  bool is_owner = false;

  // What others may do: bits of ISO 32000-2, table 22, of which these are all: 4 print, 8 modify, 16 copy,
  // 32 annotate, 256 fill forms, 512 extract for accessibility, 1024 assemble, 2048 print at high
  // quality. All of them for a file that is not encrypted.
  std::uint32_t permissions = 0;

  // As PdfDoc::GetPdfaCompliance gives it: the level of PDF/A that is claimed, or no level.
  PdfCompliance claims = PdfCompliance::None;

  // Whether the document says that it is tagged, and has tags.
  bool is_tagged = false;

  // Fields that are signed. Whether the signatures hold is not looked at.
  std::int64_t signatures = 0;

  // Fields of its form that can have a value, signed ones included.
  std::int64_t fields = 0;

  // Files that are attached to the document as a whole.
  std::int64_t attachments = 0;
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_SUMMARY_H_
