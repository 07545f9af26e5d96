// Opens any bytes as a document and writes it again, changed in ways that its size decides. What is
// written must be a document with as many pages, which written again is the same to the byte.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "pdf/Error.h"
#include "pdf/crypt/Security.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"
#include "pdf/write/DocumentRewriter.h"

namespace pdf = TarnixTools::pdf;

namespace {

constexpr std::size_t kMaxPages = 200;  // more are slow, not different

// Every third object is changed, each in another way.
void ChangeObjects(pdf::Document& document, pdf::DocumentRewriter& rewriter) {
  const std::uint32_t limit = std::min<std::uint32_t>(document.object_limit(), 1000);
  for (std::uint32_t number = 1; number < limit; number += 3) {
    const std::string next = std::to_string(number + 1) + " 0 R";
    switch (number % 8) {
      case 0:
        rewriter.Change(number, pdf::ObjectChange::Value("[" + next + "(text)]"));
        break;
      case 1:
        rewriter.Change(number, pdf::ObjectChange::Stream("<</Next " + next + ">>", "data"));
        break;
      case 2:
        rewriter.Drop(number, number % 2 == 0 ? pdf::Gap::kNull : pdf::Gap::kClosed);
        break;
      case 3:
        rewriter.Merge(number, number * 7 % limit);
        break;
      case 4:
        rewriter.SetEntry(number, "Next", next);
        rewriter.RemoveEntry(number, "Type");
        break;
      case 5:
        rewriter.ChangeLater(number, [&rewriter, next] {
          const std::uint32_t added = rewriter.Add(pdf::ObjectChange::Value("[" + next + "]"));
          return pdf::ObjectChange::Value("<</Added " + std::to_string(added) + " 0 R>>");
        });
        break;
      case 6:
        rewriter.Change(number, pdf::ObjectChange::StreamFrom("<<>>", [](pdf::ByteSink& sink) {
                          sink.Write(std::string(3000, 'x'));
                        }));
        break;
      default:
        rewriter.Change(number, pdf::ObjectChange::LeaveOut());
        break;
    }
  }
}

void Require(bool holds) {
  if (!holds) {
    std::abort();
  }
}

std::size_t CountPages(pdf::Document& document) {
  return pdf::PageTree(document).pages().size();
}

// What was written opens without a finding.
std::unique_ptr<pdf::Document> OpenWritten(const std::string& bytes, const char* password) {
  try {
    auto document = pdf::Document::Open(std::make_unique<pdf::MemorySource>(bytes), password);
    Require(!document->is_rebuilt());
    return document;
  } catch (const pdf::Error&) {
    std::abort();
  }
}

void WriteUnchanged(pdf::Document& document, const pdf::PageTree& tree,
                    const pdf::RewriteOptions& options) {
  pdf::DocumentRewriter rewriter(document);
  rewriter.SetPages(tree);
  pdf::StringSink sink;
  rewriter.Write(sink, options);
  const std::string once = sink.Take();
  const auto written = OpenWritten(once, "user");
  Require(CountPages(*written) == tree.pages().size());
  if (options.security == nullptr) {
    pdf::DocumentRewriter(*written).Write(sink, options);
    const std::string twice = sink.Take();
    pdf::DocumentRewriter(*OpenWritten(twice, "")).Write(sink, options);
    Require(sink.bytes() == twice);
  }
}

void WriteChanged(pdf::Document& document, const pdf::RewriteOptions& options) {
  pdf::DocumentRewriter rewriter(document);
  ChangeObjects(document, rewriter);
  pdf::StringSink sink;
  rewriter.Write(sink, options);
  Require(!sink.bytes().empty());
}

void Rewrite(std::string_view bytes) {
  const auto document = pdf::Document::Open(std::make_unique<pdf::MemorySource>(bytes), "");
  const pdf::PageTree tree(*document);
  if (tree.pages().size() > kMaxPages) {
    return;
  }
  static const pdf::Security security = pdf::Security::Create("user", "", -4);
  pdf::RewriteOptions options;
  options.security = bytes.size() % 5 == 0 ? &security : nullptr;
  options.layout =
      bytes.size() % 2 == 0 ? pdf::FileLayout::kTable : pdf::FileLayout::kObjectStreams;
  WriteUnchanged(*document, tree, options);
  WriteChanged(*document, options);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  try {
    Rewrite({reinterpret_cast<const char*>(data), size});
  } catch (const pdf::Error&) {
    // The document cannot be read, and says so.
  }
  return 0;
}
