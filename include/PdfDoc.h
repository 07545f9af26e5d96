// One PDF file on disk, and what can be done with it as a whole.
//
//   PdfDoc report("/data/report.pdf", "", true);
//   report.Split(10, "/data/parts/", "", "");           // report-01.pdf, report-02.pdf, ...
//
//   std::list<PdfDoc> documents = {report, PdfDoc("/data/annex.pdf", "secret", true)};
//   PdfDoc::Merge(documents, "/data/all.pdf", "");
//
// Paths are UTF-8 with backslashes or slashes; slashes are stored as backslashes, and reach the
// system as it wants them. Bytes that are not valid UTF-8 reach it unchanged.
//
// A PdfDoc at rest holds no open file: every operation opens the file, does its work and closes it
// again, also when it throws. (GetPageSize is the exception: what it throws leaves the file open
// until the next operation or the destructor.)
//
// Output files are written whole or not at all: what is under the final name is either the complete
// new file or what was there before, so an output may also be one of the inputs. The new file takes
// over the permissions of the one it replaces.
//
// Every failure is a PdfException. Beside what each member names, all that read the file throw
//   FileNotFound   the file cannot be opened,
//   PasswordError  it needs a password, or another one than GetPassword(),
//   EngineError    the file is not a PDF document or is damaged beyond reading (with the engine's
//                  code),
// and all that write one throw
//   FileNotFound   the output cannot be created, or not be put in its place,
//   EngineError    the output could not be written to its end (with the engine's code).
//
// A PdfDoc is used by one thread at a time; different ones may be used on different threads.
#ifndef TARNIX_PDF_DOC_H_
#define TARNIX_PDF_DOC_H_

#include <array>
#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "PdfCompliance.h"
#include "PdfFinding.h"
#include "PdfMetadataParam.h"
#include "PdfPageRange.h"
#include "PdfReport.h"
#include "PdfRotationAngle.h"
#include "PdfSize.h"
#include "PdfSummary.h"
#include "TarnixExport.h"

namespace TarnixTools {

namespace engines {
struct TPdf2Pdf;
struct TPdfDocument;
struct TPdfMetadata;
struct TPdfPageList;
}  // namespace engines

class DecorationHandleStore;
class OpenDocument;
class PdfTransformation;
class TemporaryFiles;
struct DecorationMessages;

// The unit of PdfDoc::GetPageSize's result.
enum class PdfSizeUnits : std::int32_t {
  Centimeters = 0,
  Millimeters = 1,
  Custom = 2,  // points divided by a number of the caller's
  Inches = 3,
  Points = 4,
};

// What a merge does beside putting all pages of the documents into one.
//
//   report.AddRange(PdfPageRange(1, 3));
//   PdfDoc::Merge({report, plan}, "/data/book.pdf", "",
//                 {.ranges_only = true, .outline_items = true});
struct PdfMergeOptions {
  // Of a document that has ranges (PdfDoc::AddRange) only these pages are taken, in the order of the
  // ranges.
  bool ranges_only = false;
  // Each document gets an outline item, called as the document is without its extension, which leads to
  // its first page and has its own outline below.
  bool outline_items = false;
};

// Values of the document information (ISO 32000-2, 14.3.3), in UTF-8; nullopt for one that is not given,
// which is not the same as one that is empty.
struct PdfMetadataValues {
  std::array<std::optional<std::string>, 4> params;  // by PdfMetadataParam
  std::optional<std::string> title;
  std::optional<std::string> subject;
};

// What there is to do:
//
//   questions               HasPassword, IsValidPassword, IsEncrypted, GetPagesNum, GetPageSize,
//                           GetPageSizes, GetMetaData, GetSummary, IsValidRange
//   one file of several     Merge; Create and Append
//   several files of one    Split
//   a copy that is changed  Rotate, SetMetaData, Lock, UnLock, Transform
//   no file any more        Delete
//
// The object itself is small: a path, a password, ranges and a report. It knows nothing of what is
// in the file but the page count, so that a file that is changed by others between two operations
// is simply read as it is then.
class TARNIX_EXPORT PdfDoc {
 public:
  // What a page copy brings along: links, annotations, form fields and outline items.
  static constexpr int PDF_COPY_OPTIONS = 15;

  // Bytes of the longest value that GetMetaData gives, its ending NUL included.
  static constexpr int PDFDOC_MAX_META_LENGTH = 2048;

  // A document without a path; SetPath comes first.
  PdfDoc();

  //   path       - must not be empty, or InvalidParameter is thrown.
  //   password   - UTF-8; opens the file, or protects it when it is created. Empty for none.
  //   must_exist - the file must be there and readable, or FileNotFound is thrown.
  PdfDoc(const std::string& path, const std::string& password, bool must_exist);

  // Copies are meant to be made of closed documents. A copy of an open one shares the open file
  // with it: what closes first closes both.
  PdfDoc(const PdfDoc& other);
  PdfDoc(PdfDoc&& other) noexcept;
  PdfDoc& operator=(const PdfDoc& other);
  PdfDoc& operator=(PdfDoc&& other) noexcept;

  // Closes the file. A document made by Create that was never closed by an operation is dropped:
  // nothing is written.
  ~PdfDoc();

  // As it was given, slashes turned into backslashes; empty when none was.
  const std::string& GetPath() const { return path_; }

  // The part of the path after the last backslash: all of it, or without its extension (what
  // follows the last full stop).
  const std::string& GetDocName(bool with_extension) const;

  // The path up to and including the last backslash; empty when there is none.
  const std::string& GetDocDirectory() const { return directory_; }

  // As it was given, or empty after Create without encryption. Kept in memory as plain text.
  const std::string& GetPassword() const { return password_; }

  // The engine's code of the last open or create that failed; 0 when none did. A later success does
  // not reset it.
  std::int32_t GetLastError() const { return last_error_; }

  // Whether Rotate, Lock, UnLock, Transform and both Splits keep what this document says of itself:
  // all of its document information and its XMP packet; false at first. SetMetaData then
  // changes the given values, in the packet too, and keeps the others. Without it, and in what is
  // appended or merged, all of that stays behind. A claim of PDF/A is kept in either case where a
  // validation of the new file confirms it; of documents that are appended or merged where all claim
  // the same part of the standard. Otherwise it is taken out, and the report says so.
  void SetKeepMetadata(bool keep) { keep_metadata_ = keep; }

  bool GetKeepMetadata() const { return keep_metadata_; }

  // What the last operation that writes kept, renamed and dropped beside the pages. After a failed
  // one, that of the files that were completed before.
  const PdfReport& GetReport() const { return report_; }

  // The files that the last Split has written, in order; after a failed one, those that were
  // completed before. Valid until the next Split.
  const std::vector<std::string>& GetPieces() const { return pieces_; }

  // How both Splits name their pieces: "{stem}" stands for the document's name without its extension,
  // "{n}" for the number or the range of each. Empty, as at first, for "{stem}-{n}.pdf".
  void SetPieceNames(const std::string& pattern) { piece_names_ = pattern; }

  const std::string& GetPieceNames() const { return piece_names_; }

  // Both do nothing while the file is open, which it is between Create and Append. Neither looks at
  // the file. After a wrong password, an object stays refused also when it is given the right one:
  // a new object is needed.
  void SetPath(const std::string& path);
  void SetPassword(const std::string& password);

  // Makes a new, empty document at the path, to be filled and closed by Append. A file that is
  // there already stays as it is until then. The symbolic links of the path are followed; a device
  // or a pipe is written to directly.
  //   encrypt - with the password as user and owner password (it may be empty), all permissions
  //             granted; when false, the password is cleared.
  // Throws InternalError when this document is open already and FileNotFound when the file cannot
  // be created.
  void Create(bool encrypt);

  // Closes the document and deletes its file; a missing file is no error. Throws FileNotFound.
  static void Delete(PdfDoc& doc);

  // True when the file cannot be opened without a password, false too when it cannot be opened for
  // another reason. Throws FileNotFound for a file that is not there or not readable and
  // InvalidParameter for an empty path; so does IsValidPassword.
  static bool HasPassword(const std::string& path);

  // True when the file can be opened with this password: as user or as owner password, or because
  // it needs none. False for a file that cannot be opened for another reason than its password,
  // too.
  static bool IsValidPassword(const std::string& path, const std::string& password);

  // True when the file is encrypted, whatever its passwords are: also when it opens without one, or
  // cannot be opened with this document's.
  bool IsEncrypted();

  // The number of pages, counted anew by every call; 0 for a document without any.
  int GetPagesNum();

  // The visible size of a page, its rotation taken into account.
  //   page_number - one-based.
  //   resolution  - points per inch, 72: the size in points is divided by it for Centimeters,
  //                 Millimeters and Inches.
  //   divisor     - what the size in points is divided by for Custom.
  // Throws InvalidParameter for a page the document lacks, for an unknown unit, and for a file that
  // is not a PDF document or is damaged beyond reading.
  PdfSize GetPageSize(int page_number, PdfSizeUnits units, double resolution, double divisor);

  // The visible sizes of all pages in points, their rotation taken into account; the file is opened
  // once.
  std::vector<PdfSize> GetPageSizes();

  // An entry of the document information in UTF-8, empty when the document has none. What is longer
  // than PDFDOC_MAX_META_LENGTH is cut. Throws InternalError for a value that is no entry.
  std::string GetMetaData(PdfMetadataParam param);

  // Writes a copy of the pages with new document information; nothing of this document's own
  // information comes along, unless it is to be kept.
  //   values   - UTF-8, in the order of PdfMetadataParam; values left out at the end are not set.
  //              An empty producer is written as a carriage return, other empty values as empty.
  //   password - protects the output; empty for none.
  // Throws InternalError for a fifth value; no file is written then.
  void SetMetaData(const std::vector<std::string>& values, const std::string& output_path,
                   const std::string& password);

  // The title and the subject, as GetMetaData gives the other values.
  std::string GetTitle();
  std::string GetSubject();

  // Writes a copy of the pages with the values that are given, as SetMetaData does. Others are as they
  // were when this document's information is kept (SetKeepMetadata), its XMP packet says what the new
  // values say, and else there are no others.
  void SetMetaValues(const PdfMetadataValues& values, const std::string& output_path,
                     const std::string& password);

  // Writes the document's XMP packet to a file, byte for byte; where there is none, a packet that
  // says nothing. One that is there and cannot be read counts as none, and GetReport() tells. The
  // file appears whole, in place of one that has its name.
  // Throws InvalidParameter for an empty path, EngineError for a document that cannot be opened (its
  // error code is 17 for a missing or wrong password), FileNotFound for a file that cannot be
  // written.
  void GetXmpMetaData(const std::string& xmp_path);
  static void GetXmpMetaData(PdfDoc& doc, const std::string& xmp_path);

  // The level of PDF/A that the document claims. Of one that claims none, no enumerator: the version
  // of PDF in the same manner, 0x1400 for 1.4, 0x1700 for 1.7, 0x2000 for 2.0; None for a document
  // that names no version. Whether it is what it claims, is not looked at.
  // Throws EngineError for a document that cannot be opened (17 for a missing or wrong password).
  PdfCompliance GetPdfaCompliance();

  // What the document is, in short; its pages are not drawn, and their content is not read. Throws what
  // GetPagesNum and GetPdfaCompliance throw.
  PdfSummary GetSummary();

  // True when the document claims a level of PDF/A and is all that this level asks for; false, too,
  // for one that cannot be judged to its end. GetFindings() tells what is not as it should be; of a
  // document that claims none, by level 2b.
  // Throws EngineError for a document that cannot be opened (17 for a missing or wrong password).
  bool ValidatePdfA();

  // True when the document is all that the level asks for, its claim of just that level included.
  // None: the level that it claims, and 2b where it claims none.
  // Throws what the other form throws, and EngineError for a level that is none and for a document
  // that cannot be judged to its end.
  bool ValidatePdfA(PdfCompliance level);

  // Of the last validation, by clause; empty for a document that is valid and before the first. Of
  // a rule that is broken many times, many findings and not all.
  const std::vector<PdfFinding>& GetFindings() const { return findings_; }

  // The ranges that a host keeps with the document: no operation looks at them, and nothing is
  // checked.
  void AddRange(const PdfPageRange& range);
  void ClearRanges();
  int GetRangesNum() const;

  // True when the document has all pages of the range. The file is opened for that: throws what
  // GetPagesNum throws.
  bool IsValidRange(const PdfPageRange& range);

  // Appends all pages of the listed documents, each opened with its own password, to this one,
  // which was made by Create; then closes it, which writes the file. When it throws, nothing is
  // written. Throws InvalidParameter for a document that is this one, opened.
  void Append(const std::list<PdfDoc>& documents);
  void Append(const PdfDoc& document);

  // Writes all pages of the listed documents, in list order, to one new file. An empty list gives a
  // document without pages.
  //   password - protects the output; empty for none.
  //   report   - when not null, set to what was kept, renamed and dropped.
  static void Merge(const std::list<PdfDoc>& documents, const std::string& output_path,
                    const std::string& password, PdfReport* report = nullptr);

  // Merges as the options say. Throws InvalidParameter, too, for a range that its document lacks.
  static void Merge(const std::list<PdfDoc>& documents, const std::string& output_path,
                    const std::string& password, const PdfMergeOptions& options,
                    PdfReport* report = nullptr);

  // Writes a copy with every page turned by the angle, clockwise, on top of what it is turned by
  // already. Throws EngineError for an angle that is no multiple of 90 degrees.
  //   password - protects the output; empty for none.
  void Rotate(PdfRotationAngle angle, const std::string& output_path, const std::string& password);

  // Writes a copy in which these pages are turned, by their one-based numbers, and the others are not.
  // Throws InvalidParameter for a page that the document lacks, beside what the other form throws.
  void Rotate(PdfRotationAngle angle, const std::set<int>& pages, const std::string& output_path,
              const std::string& password);

  // Writes a copy that is encrypted with the password, also when that is empty. Mind the order of
  // the arguments.
  void Lock(const std::string& password, const std::string& output_path);

  // Writes a copy that the first password opens for what the permissions allow (bits of ISO 32000-2,
  // table 22), and the owner's for everything.
  void Lock(const std::string& password, const std::string& owner_password,
            std::uint32_t permissions, const std::string& output_path);

  // Writes a copy that is not encrypted. This document's own password opens it; the one given here
  // is not used.
  void UnLock(const std::string& password, const std::string& output_path);

  // Writes a copy with a decoration on the pages that it targets, or with several, of which each
  // page gets its own in their order. What drawing rewrites in a transformation stays rewritten.
  //   password - protects the output; empty for none.
  // Throws what is wrong with the settings of a text (InvalidParameter), FileNotFound for an image
  // file that cannot be opened, EngineError for one that is no image, for a font when neither it
  // nor Arial can be used, and for characters that no font of this system has.
  //
  // A transformation of type PdfA writes a copy that is PDF/A: pages look the same, text stays text.
  // GetReport() tells what was changed or left out for it, and what stands in the way of a level
  // that was not reached; it does so when this throws, too. With None the copy has the most useful
  // level that the document can reach, 2b or better. While it works there are files beside the
  // output (its path with "_out.log" and "tmp.pdf" behind it) and beside the document
  // (pdfa_metadata.xmp; beside the output where a file of that name is there, or none can be made);
  // all of them are gone afterwards. PDF/A cannot be encrypted: with a password the copy claims no
  // level any more. Throws EngineError for a document that cannot be converted, with the engine's
  // code; 0x83410540: the level that was asked for cannot be reached, and a lower one was not
  // allowed. Nothing is written then. The second form throws InternalError for this type.
  void Transform(PdfTransformation& transformation, const std::string& output_path,
                 const std::string& password);
  void Transform(std::vector<PdfTransformation>& transformations, const std::string& output_path,
                 const std::string& password);

  // Writes each range to a file of its own: DIRECTORY + NAME "-" START "-" END ".pdf", or "-" START
  // ".pdf" for one page.
  //   output_dir  - ends in a separator: it is put before the name as it stands.
  //   prefix      - not used.
  //   merge_after - the ranges go, one after the other, into a single file instead.
  //   merged_name - that file's name, used as it stands; when empty it is NAME "_split-merge_.pdf".
  //   password    - protects the output; empty for none.
  // Throws InvalidParameter for a range that the document lacks, before a file is made for it;
  // files of the ranges before it stay. With merge_after no range has a file of its own: when it
  // throws, nothing is written.
  void Split(const std::vector<PdfPageRange>& ranges, const std::string& output_dir,
             const std::string& prefix, bool merge_after, const std::string& merged_name,
             const std::string& password);

  // Writes the document in parts of `size` pages, the last of which may have fewer: DIRECTORY +
  // NAME "-" NUMBER ".pdf", the number counting from 1 and padded with zeros to one digit more than
  // the page count has.
  //   prefix - not used.
  // Throws InvalidParameter when size is below 1 or above the page count.
  void Split(int size, const std::string& output_dir, const std::string& prefix,
             const std::string& password);

  // The UTF-16 units of a UTF-8 text, one in each wchar_t; the text ends at its first NUL.
  // Malformed sequences become U+FFFD. Throws nothing but std::bad_alloc.
  static std::wstring Utf8ToWs(const std::string& text);

 private:
  // Drops what is still open when an operation is left: after a failure, the source and the
  // unfinished output.
  class DiscardGuard {
   public:
    explicit DiscardGuard(PdfDoc& doc) : doc_(doc) {}

    DiscardGuard(const DiscardGuard&) = delete;
    DiscardGuard& operator=(const DiscardGuard&) = delete;

    ~DiscardGuard() { doc_.Discard(); }

   private:
    PdfDoc& doc_;
  };

  // From where to where pages are copied; all of it belongs to the caller.
  struct CopyRoute {
    engines::TPdfDocument* target;
    engines::TPdfPageList* target_pages;
    engines::TPdfPageList* pages;
  };

  // Print, modify, copy, annotate, fill forms, extract for accessibility, assemble, print at high
  // quality.
  static constexpr std::uint32_t kAllPermissions = 3900;

  bool IsOpen() const;

  // The engine's document while the file is open, null otherwise. It belongs to open_.
  engines::TPdfDocument* Document() const;

  // Opens the file for reading, unless it is open. What the engine refuses is no exception: it
  // leaves the document closed and the code in last_error_.
  void Open();

  // Opens as Open does, then throws PasswordError when this opening or an earlier one was refused
  // for its password.
  void OpenCheckPassword();

  // Opens, and throws for every reason that the document cannot be read; sets pages_num_.
  void OpenAndCountPages();
  void RequirePasswordAccepted();
  void RequireOpened() const;

  // The engine's document, opened when it was not; the caller closes this one when done.
  engines::TPdfDocument* GetInternalDoc();

  // Completes a created document; Discard drops it.
  void Close();
  void Discard() noexcept;

  static bool IsValidRange(const PdfPageRange& range, int pages_num);
  void RequireRange(const PdfPageRange& range) const;

  // A created document, to be filled and then given to Complete.
  static PdfDoc CreateOutput(const std::string& output_path, const std::string& password,
                             bool encrypt);
  void AppendDocuments(const std::list<PdfDoc>& documents, const PdfMergeOptions& options = {});
  // This document is open.
  void SetOutlineHeadingIn(engines::TPdfDocument* target) const;
  void AppendRanges(engines::TPdfDocument* target);
  // Turns the pages with these one-based numbers, or all where there are none.
  void CopyAllTo(PdfDoc output, PdfRotationAngle angle, const std::set<int>& pages = {});
  // Reports that this open document is protected, where an output is not.
  void NoteProtection(const PdfDoc& output, PdfReport& report) const;
  void KeepMetadataIn(const PdfDoc& output) const;
  void KeepClaimIn(engines::TPdfDocument* target) const;
  void Complete(PdfDoc& output);
  void WriteXmpMetaData(const std::string& xmp_path);
  // What SetMetaData does; `change` sets the values.
  void WriteWithMetaData(const std::string& output_path, const std::string& password,
                         const std::function<void(engines::TPdfMetadata*)>& change);

  // One file of a split: the pages with the zero-based indices from first up to but not including
  // last.
  void WritePiece(const std::string& output_path, const std::string& password, int first, int last);
  // What a piece with this number or range is called.
  std::string PieceName(const std::string& label) const;
  void WriteMerged(const std::vector<PdfPageRange>& ranges, const std::string& output_path,
                   const std::string& password);

  // Copy pages of this document, all or those with the zero-based indices from first up to but not
  // including last, to the end of the target. The first two open this document before and close it
  // after.
  void AppendPages(engines::TPdfDocument* target, PdfRotationAngle angle,
                   const std::set<int>& turned = {});
  void AppendPages(engines::TPdfDocument* target, int first, int last);
  void AppendOpenPages(engines::TPdfDocument* target, int first, int last);
  void CopyPages(const CopyRoute& route, int first, int last, PdfRotationAngle angle,
                 const std::set<int>& turned = {}) const;
  [[noreturn]] void ThrowCannotCopy(int page_index) const;

  // One decoration. Font and paint, or the image, are made before the first page is copied.
  void AddPageNumbersToDoc(PdfTransformation& transformation, const std::string& output_path,
                           const std::string& password);
  void StampTextsInDoc(PdfTransformation& transformation, const std::string& output_path,
                       const std::string& password);
  void StampImagesInDoc(PdfTransformation& transformation, const std::string& output_path,
                        const std::string& password);
  void DecorateDoc(PdfTransformation& transformation, const DecorationMessages& messages,
                   const std::string& output_path, const std::string& password);
  void ConvertDocToPdfA(PdfTransformation& settings, const std::string& output_path,
                        const std::string& password);
  void MergeXmpMetaData(engines::TPdf2Pdf* converter, const std::string& output_path,
                        TemporaryFiles& files);
  void LockConverted(const std::string& converted, const std::string& output_path,
                     const std::string& password);

  // Copies all pages of this open document to the end of the target, each decorated on the way.
  void AppendPages(engines::TPdfDocument* target, std::span<PdfTransformation> transformations,
                   DecorationHandleStore& handles, PdfReport& report);

  std::string path_;
  std::string name_with_extension_;
  std::string name_;
  std::string directory_;
  std::string password_;
  std::shared_ptr<OpenDocument> open_;  // stream, file and engine document; null or closed at rest
  std::int32_t last_error_ = 0;
  std::int32_t pages_num_ = 0;  // as of the last operation that counted them
  bool keep_metadata_ = false;
  std::string piece_names_;
  std::vector<std::string> pieces_;
  // Of the document to be created; an empty owner password stands for the other one.
  std::string owner_password_;
  std::uint32_t permissions_ = kAllPermissions;
  std::vector<PdfPageRange> ranges_;
  PdfReport report_;
  std::vector<PdfFinding> findings_;
};

}  // namespace TarnixTools

#endif  // TARNIX_PDF_DOC_H_
