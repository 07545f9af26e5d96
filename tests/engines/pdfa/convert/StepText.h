// What the steps of a conversion make of a document, whole, as text:
//
//   EXPECT_TRUE(IsAsExpected("pdfa/layers.txt", Text(file, {Level::k1b, Level::k3u}, &MendLayers)));
#ifndef TARNIX_TESTS_ENGINES_PDFA_CONVERT_STEP_TEXT_H_
#define TARNIX_TESTS_ENGINES_PDFA_CONVERT_STEP_TEXT_H_

#include <functional>
#include <string>
#include <vector>

#include "engines/pdfa/convert/ConversionTest.h"
#include "support/CompactText.h"
#include "support/Expected.h"

namespace TarnixTools::engines::pdfa {

class StepTextTest : public ConversionTest {
 protected:
  // By level: what is reported, and the objects, each on one line and what its stream has below.
  std::string Text(const testing::RawPdf& file, const std::vector<Level>& levels,
                   const std::function<void(Conversion&)>& step) {
    return SurveyText(file, levels,
                      [&](Conversion& conversion, const ContentSurvey&) { step(conversion); });
  }

  std::string SurveyText(const testing::RawPdf& file, const std::vector<Level>& levels,
                         const SurveyStep& step) {
    std::string text;
    for (const Level level : levels) {
      report_ = {};
      Run(file, level, step);
      text += std::string("== ") + NameOf(level) + "\n" + Report() +
              testing::OnLines(testing::PdfText(Path("out.pdf")));
    }
    return text;
  }
};

}  // namespace TarnixTools::engines::pdfa

#endif  // TARNIX_TESTS_ENGINES_PDFA_CONVERT_STEP_TEXT_H_
