// PdfDoc: new files out of the pages of existing ones.
#include <algorithm>
#include <string>
#include <utility>

#include "PdfCommonUtils.h"
#include "PdfDoc.h"
#include "PdfException.h"
#include "document/OpenDocument.h"
#include "document/ToolboxHandles.h"
#include "engines/toolbox/Toolbox.h"
#include "foundation/JobWatch.h"
#include "foundation/PageNumber.h"
#include "foundation/Protection.h"

namespace TarnixTools {
namespace {

// error - of the opening, where that failed.
[[noreturn]] void ThrowNullPages(const std::string& path, std::int32_t error) {
  throw PdfException(PdfExceptionCode::EngineError, error != 0 ? error : engines::PdfGetLastError(),
                     "NULL pages object at PDF doc [%s]", path.c_str());
}

[[noreturn]] void ThrowNullOutputPages() {
  throw PdfException(PdfExceptionCode::EngineError, engines::PdfGetLastError(),
                     "NULL pages object at output PDF doc");
}

std::string RangeLabel(const PdfPageRange& range) {
  std::string label = std::to_string(range.GetStartPageNum());
  if (range.GetEndPageNum() != range.GetStartPageNum()) {
    label += "-" + std::to_string(range.GetEndPageNum());
  }
  return label;
}

void RequirePage(int number, int count, const std::string& name) {
  if (number < 1 || number > count) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "Invalid page [%d] for PDF [%s] ([%d] pages available)", number,
                       name.c_str(), count);
  }
}

}  // namespace

void PdfDoc::Append(const std::list<PdfDoc>& documents) {
  report_.Clear();
  OpenCheckPassword();
  AppendDocuments(documents);
}

void PdfDoc::Append(const PdfDoc& document) {
  Append(std::list<PdfDoc>{document});
}

void PdfDoc::Merge(const std::list<PdfDoc>& documents, const std::string& output_path,
                   const std::string& password, PdfReport* report) {
  Merge(documents, output_path, password, PdfMergeOptions(), report);
}

void PdfDoc::Merge(const std::list<PdfDoc>& documents, const std::string& output_path,
                   const std::string& password, const PdfMergeOptions& options, PdfReport* report) {
  if (report != nullptr) {
    report->Clear();
  }
  PdfDoc output = CreateOutput(output_path, password, !password.empty());
  output.AppendDocuments(documents, options);
  if (report != nullptr) {
    *report = output.report_;
  }
}

void PdfDoc::Rotate(PdfRotationAngle angle, const std::string& output_path,
                    const std::string& password) {
  report_.Clear();
  PdfDoc output = CreateOutput(output_path, password, !password.empty());
  OpenCheckPassword();
  const DiscardGuard closing(*this);
  NoteProtection(output, report_);
  CopyAllTo(std::move(output), angle);
}

void PdfDoc::Rotate(PdfRotationAngle angle, const std::set<int>& pages,
                    const std::string& output_path, const std::string& password) {
  report_.Clear();
  OpenAndCountPages();
  const DiscardGuard closing(*this);
  for (const int page : pages) {
    RequirePage(page, pages_num_, name_);
  }
  PdfDoc output = CreateOutput(output_path, password, !password.empty());
  NoteProtection(output, report_);
  CopyAllTo(std::move(output), pages.empty() ? PdfRotationAngle::Rotate0 : angle, pages);
}

void PdfDoc::Lock(const std::string& password, const std::string& output_path) {
  report_.Clear();
  CopyAllTo(CreateOutput(output_path, password, true), PdfRotationAngle::Rotate0);
}

void PdfDoc::Lock(const std::string& password, const std::string& owner_password,
                  std::uint32_t permissions, const std::string& output_path) {
  report_.Clear();
  PdfDoc output(output_path, password, false);
  output.owner_password_ = owner_password;
  output.permissions_ = permissions;
  output.Create(true);
  output.RequirePasswordAccepted();
  CopyAllTo(std::move(output), PdfRotationAngle::Rotate0);
}

void PdfDoc::UnLock(const std::string& password, const std::string& output_path) {
  report_.Clear();
  CopyAllTo(CreateOutput(output_path, password, false), PdfRotationAngle::Rotate0);
}

void PdfDoc::Split(const std::vector<PdfPageRange>& ranges, const std::string& output_dir,
                   const std::string& /*prefix*/, bool merge_after, const std::string& merged_name,
                   const std::string& password) {
  report_.Clear();
  pieces_.clear();
  OpenAndCountPages();
  const DiscardGuard closing(*this);
  if (merge_after) {
    const std::string name = merged_name.empty() ? name_ + "_split-merge_.pdf" : merged_name;
    WriteMerged(ranges, output_dir + name, password);
    return;
  }
  JobSteps steps(static_cast<std::int64_t>(ranges.size()));
  for (const PdfPageRange& range : ranges) {
    RequireRange(range);
    WritePiece(output_dir + PieceName(RangeLabel(range)), password, range.GetStartPageNum() - 1,
               range.GetEndPageNum());
    steps.Done();
  }
}

void PdfDoc::Split(int size, const std::string& output_dir, const std::string& /*prefix*/,
                   const std::string& password) {
  report_.Clear();
  pieces_.clear();
  OpenAndCountPages();
  const DiscardGuard closing(*this);
  const int count = pages_num_;
  if (size < 1 || size > count) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "Invalid split size [%d] for PDF [%s] ([%d] pages available)", size,
                       name_.c_str(), count);
  }
  const std::size_t width = std::to_string(count).size() + 1;
  JobSteps steps((count - 1) / size + 1);
  int number = 1;
  for (int first = 0; first < count; first += std::min(size, count - first)) {
    WritePiece(output_dir + PieceName(PaddedNumber(number, width)), password, first,
               first + std::min(size, count - first));
    ++number;
    steps.Done();
  }
}

// An output of which the creation failed is returned closed: what is copied to it then reports the
// failure.
PdfDoc PdfDoc::CreateOutput(const std::string& output_path, const std::string& password,
                            bool encrypt) {
  PdfDoc output(output_path, password, false);
  output.Create(encrypt);
  output.RequirePasswordAccepted();
  return output;
}

void PdfDoc::CopyAllTo(PdfDoc output, PdfRotationAngle angle, const std::set<int>& pages) {
  OpenCheckPassword();
  const DiscardGuard closing(*this);
  KeepMetadataIn(output);
  AppendPages(output.Document(), angle, pages);
  Complete(output);
}

void PdfDoc::NoteProtection(const PdfDoc& output, PdfReport& report) const {
  if (IsOpen() && output.password_.empty() && engines::PdfDocumentIsEncrypted(Document()) != 0) {
    report.Add(ProtectionDropped(path_));
  }
}

// This document is open. What could not be opened or created is told by what copies the pages.
void PdfDoc::KeepMetadataIn(const PdfDoc& output) const {
  if (keep_metadata_ && IsOpen() && output.IsOpen() &&
      engines::PdfDocumentKeepMetadata(output.Document(), Document()) == 0) {
    throw PdfException(PdfExceptionCode::EngineError, engines::PdfGetLastError(),
                       "Unable to keep metadata of doc [%s]", path_.c_str());
  }
}

// This document is open. What could not be created is told by what copies the pages.
void PdfDoc::KeepClaimIn(engines::TPdfDocument* target) const {
  if (IsOpen() && target != nullptr && engines::PdfDocumentKeepClaim(target, Document()) == 0) {
    throw PdfException(PdfExceptionCode::EngineError, engines::PdfGetLastError(),
                       "Unable to keep metadata of doc [%s]", path_.c_str());
  }
}

// Closes an output of this document, which writes it.
void PdfDoc::Complete(PdfDoc& output) {
  output.Close();
  report_.Add(output.report_);
}

void PdfDoc::AppendDocuments(const std::list<PdfDoc>& documents, const PdfMergeOptions& options) {
  const DiscardGuard dropping(*this);
  PageListPtr pages(engines::PdfDocumentGetPages(Document()));
  if (pages == nullptr) {
    ThrowNullOutputPages();
  }
  JobSteps steps(static_cast<std::int64_t>(documents.size()));
  for (const PdfDoc& document : documents) {
    PdfDoc source(document);
    if (source.open_ == open_) {
      throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                         "Unable to append PDF doc [%s] to itself", path_.c_str());
    }
    source.OpenCheckPassword();
    source.NoteProtection(*this, report_);
    if (options.outline_items && source.IsOpen()) {
      source.SetOutlineHeadingIn(Document());
    }
    if (options.ranges_only && !source.ranges_.empty()) {
      source.AppendRanges(Document());
    } else {
      source.AppendPages(Document(), PdfRotationAngle::Rotate0);
    }
    steps.Done();
  }
  pages.reset();
  Close();
}

void PdfDoc::SetOutlineHeadingIn(engines::TPdfDocument* target) const {
  if (engines::PdfDocumentSetOutlineHeading(target, Document(), name_.c_str()) == 0) {
    throw PdfException(PdfExceptionCode::EngineError, engines::PdfGetLastError(),
                       "Unable to add an outline item for doc [%s]", path_.c_str());
  }
}

void PdfDoc::AppendRanges(engines::TPdfDocument* target) {
  OpenAndCountPages();
  const DiscardGuard closing(*this);
  KeepClaimIn(target);
  for (const PdfPageRange& range : ranges_) {
    RequirePage(range.GetEndPageNum(), pages_num_, name_);
    AppendOpenPages(target, range.GetStartPageNum() - 1, range.GetEndPageNum());
  }
}

void PdfDoc::AppendPages(engines::TPdfDocument* target, PdfRotationAngle angle,
                         const std::set<int>& turned) {
  OpenCheckPassword();
  const DiscardGuard closing(*this);
  const PageListPtr pages(engines::PdfDocumentGetPages(Document()));
  if (pages == nullptr) {
    ThrowNullPages(path_, IsOpen() ? 0 : last_error_);
  }
  const PageListPtr target_pages(engines::PdfDocumentGetPages(target));
  if (target_pages == nullptr) {
    throw PdfException(PdfExceptionCode::EngineError, engines::PdfGetLastError(),
                       "NULL pages object at output PDF doc for doc [%s]", path_.c_str());
  }
  KeepClaimIn(target);
  const int count = engines::PdfPageListGetCount(pages.get());
  CopyPages({target, target_pages.get(), pages.get()}, 0, count, angle, turned);
}

void PdfDoc::AppendPages(engines::TPdfDocument* target, int first, int last) {
  OpenCheckPassword();
  const DiscardGuard closing(*this);
  AppendOpenPages(target, first, last);
}

void PdfDoc::AppendOpenPages(engines::TPdfDocument* target, int first, int last) {
  const PageListPtr pages(engines::PdfDocumentGetPages(Document()));
  if (pages == nullptr) {
    ThrowNullPages(path_, IsOpen() ? 0 : last_error_);
  }
  const PageListPtr target_pages(engines::PdfDocumentGetPages(target));
  if (target_pages == nullptr) {
    ThrowNullOutputPages();
  }
  const int count = engines::PdfPageListGetCount(pages.get());
  if (first < 0 || last > count) {
    throw PdfException(PdfExceptionCode::InternalError, 0,
                       "Invalid pages range [%d-%d], pages number is [%d]", first, last, count);
  }
  CopyPages({target, target_pages.get(), pages.get()}, first, last, PdfRotationAngle::Rotate0);
}

void PdfDoc::CopyPages(const CopyRoute& route, int first, int last, PdfRotationAngle angle,
                       const std::set<int>& turned) const {
  JobSteps steps(last - first);
  for (int i = first; i < last; ++i) {
    const PagePtr page(engines::PdfPageListGet(route.pages, i));
    const PagePtr copy(engines::PdfDocumentCopyPage(route.target, page.get(), PDF_COPY_OPTIONS));
    if (copy == nullptr) {
      ThrowCannotCopy(i);
    }
    const bool is_turned = turned.empty() || turned.contains(i + 1);
    if (angle != PdfRotationAngle::Rotate0 && is_turned &&
        engines::PdfPageRotate(copy.get(), static_cast<int>(angle)) == 0) {
      throw PdfException(PdfExceptionCode::EngineError, engines::PdfGetLastError(),
                         "Unable to rotate page [%d] at doc [%s]", i, name_with_extension_.c_str());
    }
    if (engines::PdfPageListAppend(route.target_pages, copy.get()) == 0) {
      ThrowCannotCopy(i);
    }
    steps.Done();
  }
}

void PdfDoc::ThrowCannotCopy(int page_index) const {
  throw PdfException(PdfExceptionCode::EngineError, engines::PdfGetLastError(),
                     "Unable to copy page [%d] of doc [%s]", page_index + 1, path_.c_str());
}

void PdfDoc::RequireRange(const PdfPageRange& range) const {
  if (!IsValidRange(range, pages_num_)) {
    throw PdfException(PdfExceptionCode::InvalidParameter, 0,
                       "Could not split file, invalid range [%d-%d] ([%d] pages available)",
                       range.GetStartPageNum(), range.GetEndPageNum(), pages_num_);
  }
}

void PdfDoc::WritePiece(const std::string& output_path, const std::string& password, int first,
                        int last) {
  PdfDoc output = CreateOutput(output_path, password, !password.empty());
  KeepMetadataIn(output);
  NoteProtection(output, report_);
  KeepClaimIn(output.Document());
  AppendOpenPages(output.Document(), first, last);
  Complete(output);
  pieces_.push_back(output_path);
}

std::string PdfDoc::PieceName(const std::string& label) const {
  return PdfCommonUtils::FormName(piece_names_.empty() ? "{stem}-{n}.pdf" : piece_names_, name_,
                                  label);
}

// The ranges go straight from the open document into the merged file. That gives the pages that
// writing each range to a file of its own, merging these files and deleting them would give, in the
// same order and under the same name, without writing and parsing every page a second time.
void PdfDoc::WriteMerged(const std::vector<PdfPageRange>& ranges, const std::string& output_path,
                         const std::string& password) {
  for (const PdfPageRange& range : ranges) {
    RequireRange(range);
  }
  PdfDoc output = CreateOutput(output_path, password, !password.empty());
  KeepMetadataIn(output);
  NoteProtection(output, report_);
  JobSteps steps(static_cast<std::int64_t>(ranges.size()));
  KeepClaimIn(output.Document());
  for (const PdfPageRange& range : ranges) {
    AppendOpenPages(output.Document(), range.GetStartPageNum() - 1, range.GetEndPageNum());
    steps.Done();
  }
  Complete(output);
  pieces_.push_back(output_path);
}

}  // namespace TarnixTools
