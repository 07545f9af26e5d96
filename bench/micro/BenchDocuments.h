// Documents in memory for the micro-benchmarks: the same bytes in every run.
#ifndef TARNIX_BENCH_MICRO_BENCH_DOCUMENTS_H_
#define TARNIX_BENCH_MICRO_BENCH_DOCUMENTS_H_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "pdf/file/ByteSink.h"
#include "pdf/file/Document.h"

namespace TarnixTools::bench {

enum class FileForm {
  kClassic,    // every object in the file, a cross-reference table
  kPacked,     // object streams and a cross-reference stream
  kEncrypted,  // packed, AES-256 with an empty user password
};

// A document of that many pages in a balanced page tree. Each has a content stream of its own, of
// about 1.5 KB that do not compress, an annotation, and fonts that all pages share.
std::string MakeDocument(FileForm form, int page_count);

// `bytes` outlives the document.
std::unique_ptr<pdf::Document> OpenDocument(std::string_view bytes);

// Syntax as it stands in page and font dictionaries; `size` bytes or a little more.
std::string DictionarySyntax(std::size_t size);

// The decoded contents of the example documents, again and again up to `size` bytes or a little
// more; empty when the examples are not there.
std::string ExampleContent(std::size_t size);

// Takes everything and keeps nothing but the count.
class CountingSink : public pdf::ByteSink {
 public:
  void Write(std::string_view bytes) override { count_ += bytes.size(); }

  std::uint64_t count() const { return count_; }

 private:
  std::uint64_t count_ = 0;
};

}  // namespace TarnixTools::bench

#endif  // TARNIX_BENCH_MICRO_BENCH_DOCUMENTS_H_
