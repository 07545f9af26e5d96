// One step of a conversion over a small document, looked at by qpdf.
//
//   const QpdfDocument written = Run(document, Level::k2b, &MendLayers);
//   EXPECT_EQ(written.Catalog()["/OCProperties"] ...
#ifndef TARNIX_TESTS_ENGINES_PDFA_CONVERT_CONVERSION_TEST_H_
#define TARNIX_TESTS_ENGINES_PDFA_CONVERT_CONVERSION_TEST_H_

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/pdfa/convert/Conversion.h"
#include "engines/pdfa/convert/WrittenFile.h"
#include "engines/pdfa/convert/survey/ContentSurvey.h"
#include "support/QpdfDocument.h"
#include "support/RawPdf.h"
#include "support/TempDir.h"

namespace TarnixTools::engines::pdfa {

class ConversionTest : public ::testing::Test {
 protected:
  using Step = std::function<void(Conversion&)>;
  using SurveyStep = std::function<void(Conversion&, const ContentSurvey&)>;

  testing::QpdfDocument Run(testing::RawPdf file, Level level, const Step& step) {
    return Run(std::move(file), level,
               [&](Conversion& conversion, const ContentSurvey&) { step(conversion); });
  }

  testing::QpdfDocument Run(testing::RawPdf file, Level level, const SurveyStep& step) {
    testing::WriteBytes(Path("in.pdf"), file.Table(trailer_));
    const auto document = pdf::Document::Open(
        std::make_unique<DiskSource>(OpenShared(platform::WidePath(Path("in.pdf")))), "");
    const pdf::PageTree pages(*document);
    pdf::DocumentRewriter rewriter(*document);
    Conversion conversion{.document = *document,
                          .pages = pages,
                          .rewriter = rewriter,
                          .level = level,
                          .report = report_};
    step(conversion, ContentSurvey(*document, pages));
    WrittenFile written(platform::WidePath(Path("out.pdf")));
    rewriter.Write(written.sink(), RewriteOptionsFor(level));
    written.Complete();
    return testing::QpdfDocument(Path("out.pdf"));
  }

  std::string Path(const std::string& name) const { return directory_.Path(name); }

  // "changed: WHAT", ...
  std::string Report() const { return report_.Text(true); }

  std::string trailer_ = "/Root 1 0 R";
  ConversionReport report_;

 private:
  testing::TempDir directory_;
};

// A catalog (1), a page tree (2) and a page (3) with the entries.
inline testing::RawPdf OnePage(const std::string& page, const std::string& catalog = "") {
  testing::RawPdf file;
  file.Object(1, "<</Type/Catalog/Pages 2 0 R" + catalog + ">>");
  file.Object(2, "<</Type/Pages/Kids[3 0 R]/Count 1>>");
  file.Object(3, "<</Type/Page/Parent 2 0 R/MediaBox[0 0 200 100]" + page + ">>");
  return file;
}

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_TESTS_ENGINES_PDFA_CONVERT_CONVERSION_TEST_H_
