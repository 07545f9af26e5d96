// What the tests of compressing share: a task that writes into a folder of its own, and how much smaller
// its output is.
#ifndef TARNIX_TESTS_CONVERSIONS_COMPRESSFIXTURE_H_
#define TARNIX_TESTS_CONVERSIONS_COMPRESSFIXTURE_H_

#include <string>

#include "PdfCompressTask.h"
#include "support/DocumentTest.h"

namespace TarnixTools {

class CompressFixture : public testing::DocumentTest {
 protected:
  PdfCompressTask TaskFor(const std::string& name, const std::string& password = "") const {
    PdfCompressTask task(Doc(name, password));
    task.SetOutputPath(directory_.MakeDir("out"));
    return task;
  }

  float PercentOf(const std::string& input, const std::string& output) const {
    return static_cast<float>(testing::ReadBytes(Path(output)).size()) /
           static_cast<float>(testing::ReadBytes(Path(input)).size()) * 100;
  }
};

}  // namespace TarnixTools

#endif  // TARNIX_TESTS_CONVERSIONS_COMPRESSFIXTURE_H_
