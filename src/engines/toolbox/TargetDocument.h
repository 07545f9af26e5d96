// A document being made: pages are noted when they are appended, and written, with all they need,
// when their source closes or the document itself does. So memory grows with the number of pages,
// not with what is on them.
#ifndef TARNIX_ENGINES_TOOLBOX_TARGETDOCUMENT_H_
#define TARNIX_ENGINES_TOOLBOX_TARGETDOCUMENT_H_

#include <cstdint>
#include <exception>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "engines/toolbox/DocumentInfo.h"
#include "engines/toolbox/ErrorCodes.h"
#include "engines/toolbox/StreamBridge.h"
#include "engines/toolbox/Toolbox.h"
#include "engines/toolbox/content/TargetContent.h"
#include "engines/toolbox/copy/CopyContext.h"
#include "engines/toolbox/copy/TargetParts.h"
#include "pdf/crypt/Security.h"
#include "pdf/write/FileWriter.h"
#include "pdf/write/PageTreeWriter.h"

namespace TarnixTools::engines::toolbox {

class SourceDocument;

class TargetDocument {
 public:
  TargetDocument(const TPdfStream& stream, const TPdfEncryption* encryption);
  ~TargetDocument();
  TargetDocument(const TargetDocument&) = delete;
  TargetDocument& operator=(const TargetDocument&) = delete;

  const CopyReport& report() const { return parts_.report; }

  const DocumentInfo& info() const { return info_; }

  void SetInfo(const DocumentInfo& info) { info_ = info; }

  // Keeps what the source says of itself.
  void KeepMetadata(SourceDocument& source);

  // Puts the outline items of the source's pages below an item of this title.
  void SetOutlineHeading(SourceDocument& source, std::string title) {
    RequestsOf(source).heading = std::move(title);
  }

  // Claims what the source claims, if all sources do and the claim is proven in the end; before
  // anything of the source is copied, and once for each.
  void KeepClaim(SourceDocument& source);

  void SetClaimProof(TPdfClaimProof proof, std::FILE* file) {
    parts_.metadata.claim().SetProof(proof, file);
  }

  void SetReportCallback(TPdfReportCallback callback, void* context) {
    report_callback_ = callback;
    report_context_ = context;
  }

  std::int32_t page_count() const { return static_cast<std::int32_t>(pages_.page_count()); }

  // What is painted onto its pages.
  TargetContent& content() { return content_; }

  // Appends a copy of a page: page_index is zero-based, rotation in degrees clockwise is added to
  // the page's own. painted, which may be null, is copied.
  void AppendPage(SourceDocument& source, std::uint32_t page_index, int rotation,
                  std::int32_t options, const PageContent* painted = nullptr);

  // Writes the noted pages of one source. A failure is kept, and reported by Finish.
  void WritePagesOf(SourceDocument& source) noexcept;

  // Writes all that is left. Throws pdf::Error, and what an earlier WritePagesOf failed with.
  void Finish();

  // Tells the callback what the report holds; to be called when all is written.
  void TellReport() const;

 private:
  struct Requests {
    SourceDocument* source;
    std::vector<PageRequest> pages;
    std::optional<std::string> heading;
  };

  Requests& RequestsOf(SourceDocument& source);
  std::uint32_t WriteCatalog();

  StreamSink sink_;
  std::optional<pdf::Security> security_;
  pdf::FileWriter writer_;
  pdf::PageTreeWriter pages_{writer_};
  std::vector<Requests> requests_;  // in the order in which their sources came
  TargetContent content_{writer_};
  TargetParts parts_;
  DocumentInfo info_;
  TPdfReportCallback report_callback_ = nullptr;
  void* report_context_ = nullptr;
  std::exception_ptr failure_;
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_TARGETDOCUMENT_H_
