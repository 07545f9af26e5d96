// All that the analysis makes of whole documents, and what the writers write of that.
#include <atomic>
#include <string>

#include <gtest/gtest.h>

#include "engines/office/layout/MadeDocuments.h"
#include "engines/office/writers/PackageText.h"
#include "engines/office/writers/WriterDocuments.h"
#include "engines/office/writers/sheets/SheetWriter.h"
#include "engines/support/layout/LayoutDump.h"
#include "support/Expected.h"

namespace TarnixTools::engines::office {
namespace {

using TarnixTools::testing::IsAsExpected;

TEST(AnalysedDocuments, HaveTheirParts) {
  for (const auto& [name, document] : MadeDocuments()) {
    std::string text;
    for (const OfficePage& page : document.pages) {
      text += DumpLayout(page.layout);
    }
    EXPECT_TRUE(IsAsExpected("office/made-" + name + ".layout.txt", text));
  }
}

TEST(AnalysedDocuments, AreWritten) {
  const OfficeDocument plain = DocumentOf({PageWith({Block{TextAt(72, 100, {"Plain text"})}})});
  const Parts document_parts = PartsOf(WordBytesOf(plain));
  const Parts slide_parts = PartsOf(SlideBytesOf(plain));
  for (const auto& [name, document] : MadeDocuments()) {
    EXPECT_TRUE(IsAsExpected("office/made-" + name + ".docx.txt",
                             PackageText(PartsOf(WordBytesOf(document)), document_parts)));
    EXPECT_TRUE(IsAsExpected("office/made-" + name + ".pptx.txt",
                             PackageText(PartsOf(SlideBytesOf(document)), slide_parts)));
  }
}

TEST(AnalysedDocuments, AreWrittenAsSheets) {
  for (const auto& [name, document] : MadeDocuments()) {
    for (const bool is_single : {false, true}) {
      const std::atomic<bool> is_cancelled = false;
      pdf::StringSink sink;
      const bool has_tables = WriteSheets(document, is_single, is_cancelled, sink);
      ASSERT_EQ(has_tables, name != "journal");
      if (has_tables) {
        EXPECT_TRUE(IsAsExpected("office/made-" + name + (is_single ? ".single" : "") + ".xlsx.txt",
                                 PackageText(PartsOf(sink.bytes()))));
      }
    }
  }
}

}  // namespace
}  // namespace TarnixTools::engines::office
