// Repair: the input is a document. All checks go over it, and what they say to change is written.
// What comes out has as many pages, and a second repair finds its content in order.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "engines/repair/checks/Check.h"
#include "engines/repair/checks/MendedContent.h"
#include "pdf/Error.h"
#include "pdf/content/ContentBalance.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"
#include "pdf/write/DocumentRewriter.h"

namespace {

using namespace TarnixTools;
using namespace TarnixTools::engines::repair;

constexpr std::size_t kMaxPages = 64;

void Require(bool holds) {
  if (!holds) {
    std::abort();
  }
}

// One that throws for a damaged document ends there, and the others go on.
void RunChecks(CheckContext& context) {
  for (const Check& check : Checks()) {
    pdf::UnlessDamaged(0, [&] {
      check.run(context);
      return 0;
    });
  }
}

void Repair(std::string_view bytes) {
  const auto document = pdf::Document::Open(std::make_unique<pdf::MemorySource>(bytes), "");
  const pdf::PageTree pages(*document);
  if (pages.pages().size() > kMaxPages) {
    return;
  }
  pdf::DocumentRewriter rewriter(*document);
  ProblemList problems;
  CheckContext context{*document, pages, rewriter, problems};
  RunChecks(context);
  rewriter.SetPages(pages);
  pdf::StringSink sink;
  rewriter.Write(sink);
  const std::string repaired = sink.Take();
  const auto again = pdf::Document::Open(std::make_unique<pdf::MemorySource>(repaired), "");
  Require(again->findings().count() == 0);
  Require(pages.pages().empty() || pdf::PageTree(*again).pages().size() == pages.pages().size());
}

// Mended once, content has nothing more to be mended.
void Mend(std::string_view content) {
  const std::string mended = MendedContent(content);
  const auto balance = pdf::MeasureBalance(mended);
  const bool has_images = content.find("BI") != std::string_view::npos;
  Require(has_images ||
          (!balance.is_cut() && balance.surplus_restores() == 0 && balance.closing().empty()));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  Mend(bytes);
  try {
    Repair(bytes);
  } catch (const pdf::Error&) {
    // The document cannot be read, and says so.
  }
  return 0;
}
