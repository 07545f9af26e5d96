// A document whose page shows text, and what the cutting of its fonts makes of it.
//
//   FontCase test(RawPdf().Stream(4, "", "BT /F 12 Tf (A) Tj ET").Object(5, "<</Subtype/...>>")...);
//   EXPECT_EQ(test.Cut().left_alone[...], 0U);
//   pdf::Document& written = test.written();
#ifndef TARNIX_TESTS_ENGINES_OPTIMIZER_FONTS_FONTFIXTURE_H_
#define TARNIX_TESTS_ENGINES_OPTIMIZER_FONTS_FONTFIXTURE_H_

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "engines/optimizer/fonts/FontLimits.h"
#include "engines/optimizer/fonts/FontPlan.h"
#include "pdf/content/ContentWalker.h"
#include "pdf/write/RewriteFixture.h"

namespace TarnixTools::testing {

// Takes down the text of a walk.
class TextNoter : public pdf::ContentVisitor {
 public:
  explicit TextNoter(engines::optimizer::FontUse& use) : use_(&use) {}

  std::optional<pdf::TextAdvance> ShowText(const pdf::StringUse& string) override {
    use_->Note(string);
    return std::nullopt;
  }

 private:
  engines::optimizer::FontUse* use_;
};

inline void NoteText(pdf::Document& document, engines::optimizer::FontUse& use) {
  const pdf::PageTree pages(document);
  TextNoter noter(use);
  pdf::ContentWalker walker(document, noter,
                            {.text = true,
                             .forms = true,
                             .patterns = true,
                             .soft_masks = true,
                             .glyphs = true,
                             .appearances = true});
  for (std::size_t page = 0; page < pages.pages().size(); ++page) {
    walker.BeginPage(pages, page);
    walker.Run();
  }
}

// Cuts all fonts that can be.
inline engines::optimizer::FontReport CutAll(pdf::Document& document,
                                             pdf::DocumentRewriter& rewriter,
                                             const engines::optimizer::FontUse& use,
                                             const engines::optimizer::FontOptions& options) {
  engines::optimizer::FontReport report;
  for (const auto& job : PlanFonts(document, use, rewriter, options, report)) {
    const auto program =
        document.TryDecodeStream(job.program, engines::optimizer::limits::kMaxProgramBytes);
    const auto result = engines::optimizer::CutFont(program ? program->data : "", job);
    ApplyCut(rewriter, document, job, result, report);
  }
  return report;
}

class FontCase {
 public:
  // The page is object 3 with the content 4, the fonts /F, 5, and /G, 6, and annotation 30.
  //   form - entries of the catalog
  explicit FontCase(RawPdf pdf, const std::string& entries = "")
      : bytes_(pdf.Object(1, "<</Type/Catalog/Pages 2 0 R" + entries + ">>")
                   .Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>")
                   .Object(3,
                           "<</Type/Page/Parent 2 0 R/MediaBox[0 0 99 99]/Contents 4 0 R"
                           "/Resources<</Font<</F 5 0 R/G 6 0 R>>>>>>")
                   .Table()),
        document_(OpenBytes(bytes_)),
        use_(*document_) {
    NoteText(*document_, use_);
  }

  pdf::Document& source() { return *document_; }

  engines::optimizer::FontUse& use() { return use_; }

  //   into - of two objects, the first becomes the second beforehand
  engines::optimizer::FontReport Cut(const engines::optimizer::FontOptions& options = {},
                                     std::pair<std::uint32_t, std::uint32_t> into = {}) {
    pdf::DocumentRewriter rewriter(*document_);
    if (into.first != 0) {
      rewriter.Merge(into.first, into.second);
    }
    const auto report = CutAll(*document_, rewriter, use_, options);
    pdf::StringSink sink;
    rewriter.Write(sink);
    written_bytes_ = sink.Take();
    written_ = OpenBytes(written_bytes_);
    return report;
  }

  // A font of the document that was written, by its name on the page.
  pdf::Object WrittenFont(const std::string& name) {
    const pdf::PageTree pages(*written_);
    const pdf::Object page = pages.Load(pages.pages()[0], arena_);
    const pdf::Object resources = written_->Resolve(page.Get("Resources"), arena_);
    return written_->Resolve(written_->Resolve(resources.Get("Font"), arena_).Get(name), arena_);
  }

  // The dictionary of the program of that font, and its bytes.
  pdf::Followed ProgramOf(const std::string& name, const std::string& entry) {
    const pdf::Object descriptor =
        written_->Resolve(WrittenFont(name).Get("FontDescriptor"), arena_);
    return written_->Follow(descriptor.Get(entry), arena_);
  }

  std::string BytesOf(const pdf::Followed& program) {
    const auto decoded = written_->TryDecodeStream(program.number);
    return decoded ? decoded->data : std::string();
  }

  pdf::Document& written() { return *written_; }

 private:
  std::string bytes_;
  std::unique_ptr<pdf::Document> document_;
  engines::optimizer::FontUse use_;
  std::string written_bytes_;
  std::unique_ptr<pdf::Document> written_;
  pdf::Arena arena_;
};

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_ENGINES_OPTIMIZER_FONTS_FONTFIXTURE_H_
