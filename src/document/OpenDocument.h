// A PDF file while it is open: the C file, the stream over it and the engine's document.
#ifndef TARNIX_DOCUMENT_OPEN_DOCUMENT_H_
#define TARNIX_DOCUMENT_OPEN_DOCUMENT_H_

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "PdfReport.h"
#include "document/FileStream.h"
#include "engines/toolbox/Toolbox.h"
#include "foundation/Platform.h"

namespace TarnixTools {

// Shared by the copies of a PdfDoc that is open: the first one to close it closes it for all of
// them.
class OpenDocument {
 public:
  // Why a created document could not be completed: the engine's code, or an errno value when the
  // engine was done.
  struct Failure {
    std::int32_t engine_error = 0;
    int system_error = 0;
  };

  // Opens an existing document. Null when the engine cannot, with its code in error; the file is
  // closed then.
  static std::shared_ptr<OpenDocument> Read(platform::FilePtr file, const std::string& password,
                                            std::int32_t& error);

  // Makes a new document, which Close completes. encryption may be null. Null when the engine
  // cannot, with its code in error; nothing is left of the output then.
  static std::shared_ptr<OpenDocument> Create(platform::OutputFile output,
                                              const engines::TPdfEncryption* encryption,
                                              std::int32_t& error);

  OpenDocument(const OpenDocument&) = delete;
  OpenDocument& operator=(const OpenDocument&) = delete;
  ~OpenDocument();  // Discard

  // Null once closed.
  engines::TPdfDocument* Document() const { return document_; }

  // The report of a created document, complete once Close has succeeded; empty for others.
  const PdfReport& Report() const { return report_; }

  // Closes; a created document is written to its end and put under its name. Nothing is returned
  // when all went well or there was nothing to do. After a failure nothing is left of the output.
  std::optional<Failure> Close();

  // Closes without completing a created document.
  void Discard() noexcept;

 private:
  explicit OpenDocument(platform::FilePtr file) : stream_(std::move(file)) {}

  std::optional<platform::OutputFile> output_;  // of a created document
  PdfReport report_;                            // outlives the document, too
  FileStream stream_;                           // outlives the document, which reads and writes it
  engines::TPdfDocument* document_ = nullptr;
};

}  // namespace TarnixTools

#endif  // TARNIX_DOCUMENT_OPEN_DOCUMENT_H_
