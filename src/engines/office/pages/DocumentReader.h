// A document as the conversion reads it: its pages one by one, and what it says of itself.
//
//   auto reader = DocumentReader::Open(path, "");
//   for (std::size_t i = 0; i < reader->page_count(); ++i) {
//     const PageModel page = reader->Read(i);
//
// A reader is for one thread. Several threads have a reader each, over one file.
#ifndef TARNIX_ENGINES_OFFICE_PAGES_DOCUMENTREADER_H_
#define TARNIX_ENGINES_OFFICE_PAGES_DOCUMENTREADER_H_

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "engines/support/pages/PageModel.h"
#include "foundation/Platform.h"
#include "pdf/tree/PageGeometry.h"

namespace TarnixTools::engines::office {

// An outline item that leads to a page of the document.
struct OutlineEntry {
  std::string title;        // UTF-8
  std::uint32_t level = 0;  // 0 for the outermost
  std::uint32_t page = 0;   // zero-based
  double y = 0;             // on that page as it is seen, from its top, in points
};

// What a document says of itself. All text is UTF-8.
struct DocumentFacts {
  std::string title;
  std::string author;
  std::string subject;
  std::string keywords;
  std::string language;  // as /Lang has it: "en-GB"; empty for none
  bool is_tagged = false;
  std::vector<OutlineEntry> outline;  // as it is shown
};

class DocumentReader {
 public:
  // password: UTF-8. Throws pdf::Error.
  static std::unique_ptr<DocumentReader> Open(const platform::WidePath& path,
                                              const std::string& password);

  // One more over the same file, which shares what was found out about the document so far. Throws
  // pdf::Error.
  std::unique_ptr<DocumentReader> OpenAgain();

  ~DocumentReader();
  DocumentReader(const DocumentReader&) = delete;
  DocumentReader& operator=(const DocumentReader&) = delete;

  // Reading a page ends with Cancelled once the flag is set, which outlives this; readers that are
  // opened again go by it too.
  void SetCancelFlag(const std::atomic<bool>& is_cancelled);

  std::size_t page_count() const;

  // Pages that are larger come out smaller, as a whole. For readers that are opened again, too.
  void SetRoom(const pdf::SeenSize& room);

  // What a page measures as it is seen, whatever the room. Throws pdf::Error for a document that
  // cannot be read any more.
  pdf::SeenSize SizeOf(std::size_t page_index);

  // Of a damaged page there is what can be read. Throws pdf::Error for a document that cannot be
  // read any more.
  PageModel Read(std::size_t page_index);

  // Whether the page is a picture of a page (ScanCheck.h). Nothing is recognised for that.
  bool IsScanned(std::size_t page_index);

  // Read when it is first asked for.
  const DocumentFacts& facts();

 private:
  struct Inside;

  explicit DocumentReader(std::unique_ptr<Inside> inside);

  std::unique_ptr<Inside> inside_;
};

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_PAGES_DOCUMENTREADER_H_
