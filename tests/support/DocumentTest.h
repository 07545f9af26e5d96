// What tests of documents and of the jobs on them share: a directory, inputs, and a look at what
// was written.
#ifndef TARNIX_TESTS_SUPPORT_DOCUMENT_TEST_H_
#define TARNIX_TESTS_SUPPORT_DOCUMENT_TEST_H_

#include <list>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "PdfDoc.h"
#include "support/Failures.h"
#include "support/Readers.h"
#include "support/TempDir.h"
#include "support/TestPdf.h"

namespace TarnixTools::testing {

class DocumentTest : public ::testing::Test {
 protected:
  std::string Path(const std::string& name) const { return directory_.Path(name); }

  // A file in the test's directory with the pages "LABEL 1", "LABEL 2", ...
  std::string MakePdf(const std::string& name, int page_count,
                      const std::string& label = "Page") const {
    return TestPdf().Pages(page_count, label).Write(Path(name));
  }

  PdfDoc Doc(const std::string& name, const std::string& password = "") const {
    return {Path(name), password, true};
  }

  // Texts as PageTexts returns them for pages of MakePdf.
  static std::vector<std::string> Labels(int first, int last, const std::string& label = "Page") {
    std::vector<std::string> labels;
    for (int i = first; i <= last; ++i) {
      labels.push_back(label + " " + std::to_string(i));
    }
    return labels;
  }

  std::vector<std::string> Texts(const std::string& name, const std::string& password = "") const {
    return PageTexts(Path(name), password);
  }

  TempDir directory_;
};

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_SUPPORT_DOCUMENT_TEST_H_
