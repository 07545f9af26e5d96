// What the tests of drawing pages and of extracting images share.
#ifndef TARNIX_TESTS_CONVERSIONS_PDF2IMGFIXTURE_H_
#define TARNIX_TESTS_CONVERSIONS_PDF2IMGFIXTURE_H_

#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "Pdf2ImgTask.h"
#include "support/DocumentTest.h"

namespace TarnixTools {

// What is written to std::cout meanwhile.
class CapturedOutput {
 public:
  CapturedOutput() : before_(std::cout.rdbuf(text_.rdbuf())) {}

  ~CapturedOutput() { std::cout.rdbuf(before_); }

  std::string Text() const { return text_.str(); }

 private:
  std::ostringstream text_;
  std::streambuf* before_;
};

class Pdf2ImgFixture : public testing::DocumentTest {
 protected:
  Pdf2ImgFixture() { directory_.MakeDir("out"); }

  Pdf2ImgTask TaskFor(const std::string& name, Pdf2ImgMode mode = Pdf2ImgRenderPages) const {
    Pdf2ImgTask task({Doc(name)}, mode);
    task.SetOutputPath(Path("out"));
    return task;
  }

  // A page that draws so many small gray images.
  std::string MakeWithImages(const std::string& name, int count) const {
    std::string content;
    for (int i = 0; i < count; ++i) {
      content += "BI /W 8 /H 8 /BPC 1 /CS /G /F /AHx ID 00FF00FF00FF00FF> EI ";
    }
    return testing::TestPdf().Page().Content(content).Page().Content(content).Write(Path(name));
  }

  std::vector<std::string> Outputs() const { return directory_.Names("out"); }
};

}  // namespace TarnixTools

#endif  // TARNIX_TESTS_CONVERSIONS_PDF2IMGFIXTURE_H_
