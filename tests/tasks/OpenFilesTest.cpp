// Jobs leave no file open, whether they come to their end or fail.
#include <filesystem>
#include <iostream>
#include <sstream>

#include "Img2PdfTask.h"
#include "Pdf2ImgTask.h"
#include "Pdf2OfficeTask.h"
#include "Pdf2PdfATask.h"
#include "PdfCompressTask.h"
#include "PdfMergeTask.h"
#include "PdfPageNumberTask.h"
#include "PdfRepairTask.h"
#include "PdfRotateTask.h"
#include "PdfSplitTask.h"
#include "PdfStampImageTask.h"
#include "PdfUnlockTask.h"
#include "support/DocumentTest.h"
#include "support/TestImages.h"

namespace TarnixTools {
namespace {

std::ptrdiff_t OpenFiles() {
  return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

class OpenFilesTest : public testing::DocumentTest {
 protected:
  OpenFilesTest() : before_(std::cout.rdbuf(told_.rdbuf())) {
    testing::TestPdf()
        .Page("text")
        .Content("BI /W 8 /H 8 /BPC 1 /CS /G /F /AHx ID 00FF00FF00FF00FF> EI BT (x) Tj ET")
        .Page("text")
        .Write(Path("doc.pdf"));
    Doc("doc.pdf").Lock("pw", Path("locked.pdf"));
    MakePdf("plain.pdf", 1);
    testing::WriteBytes(Path("torn.pdf"), testing::ReadBytes(Path("doc.pdf")).substr(0, 600));
    testing::WriteBytes(Path("text.pdf"), "no document");
    testing::WriteBytes(Path("photo.jpg"), testing::TestJpeg(3));
    testing::WriteBytes(Path("text.jpg"), "no image");
    directory_.MakeDir("out");
  }

  ~OpenFilesTest() override { std::cout.rdbuf(before_); }

  // Libraries that are loaded on first use may keep files of theirs.
  template <typename Job>
  void ExpectNoneLeft(const char* name, const Job& job) const {
    job();
    const std::ptrdiff_t before = OpenFiles();
    job();
    EXPECT_EQ(OpenFiles(), before) << name;
  }

  // Of each of the documents, and without a directory for the output.
  template <typename Make>
  void ExpectNoneLeftBy(const char* name, const Make& make) const {
    for (const char* const document : {"doc.pdf", "torn.pdf", "text.pdf", "locked.pdf"}) {
      for (const char* const directory : {"out", "missing"}) {
        ExpectNoneLeft(name, [&] {
          testing::FailureOf([&] {
            auto task = make(PdfDoc(Path(document), "", false));
            task.SetOutputPath(Path(directory));
            task.Execute();
          });
        });
      }
    }
  }

 private:
  std::ostringstream told_;
  std::streambuf* before_;
};

TEST_F(OpenFilesTest, NoneIsLeftByJobs) {
  ExpectNoneLeftBy("compress", [](const PdfDoc& it) { return PdfCompressTask(it); });
  ExpectNoneLeftBy("repair", [](const PdfDoc& it) { return PdfRepairTask(it); });
  ExpectNoneLeftBy("PDF/A", [](const PdfDoc& it) { return Pdf2PdfATask(it); });
  ExpectNoneLeftBy("pages to images", [](const PdfDoc& it) {
    Pdf2ImgTask task(it);
    task.SetDpi(9);
    return task;
  });
  ExpectNoneLeftBy("extract images",
                   [](const PdfDoc& it) { return Pdf2ImgTask({it}, Pdf2ImgExtractImages); });
  ExpectNoneLeftBy("office", [](const PdfDoc& it) { return Pdf2OfficeTask(it); });
  ExpectNoneLeftBy("merge", [](const PdfDoc& it) { return PdfMergeTask(std::list{it, it}); });
  ExpectNoneLeftBy("split", [](const PdfDoc& it) { return PdfSplitTask(it); });
  ExpectNoneLeftBy("rotate", [](const PdfDoc& it) { return PdfRotateTask(it); });
  ExpectNoneLeftBy("number", [](const PdfDoc& it) { return PdfPageNumberTask(it); });
  ExpectNoneLeftBy("unlock", [](const PdfDoc& it) { return PdfUnlockTask(it, "wrong"); });
  ExpectNoneLeftBy("stamp", [this](const PdfDoc& it) {
    PdfStampImageTask task(it);
    task.SetInputImage(Path("photo.jpg"));
    return task;
  });
}

TEST_F(OpenFilesTest, NoneIsLeftByImages) {
  for (const char* const image : {"photo.jpg", "text.jpg"}) {
    for (const char* const directory : {"out", "missing"}) {
      for (const bool merges : {true, false}) {
        ExpectNoneLeft(image, [&] {
          Img2PdfTask task(std::list<std::string>{Path("photo.jpg"), Path(image)});
          task.SetMergeAfter(merges);
          task.SetOutputPath(Path(directory));
          testing::FailureOf([&] { task.Execute(); });
        });
      }
    }
  }
}

TEST_F(OpenFilesTest, NoneIsLeftByQuestions) {
  for (const char* const name : {"doc.pdf", "torn.pdf", "text.pdf", "locked.pdf", "plain.pdf"}) {
    const PdfDoc document(Path(name), "", false);
    ExpectNoneLeft(name, [&] {
      testing::FailureOf([&] { PdfRepairTask::IsDamaged(document); });
      testing::FailureOf([&] { PdfDoc(document).GetPagesNum(); });
      std::vector<int> scanned;
      testing::FailureOf([&] { Pdf2OfficeTask(document).CheckScan(scanned); });
      Pdf2ImgTask images({document}, Pdf2ImgExtractImages);
      images.SetOutputPath(Path("out"));
      testing::FailureOf([&] { images.Execute(); });
    });
  }
}

}  // namespace
}  // namespace TarnixTools
