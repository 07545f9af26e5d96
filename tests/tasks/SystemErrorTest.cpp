// What hosts learn of a job that the system has refused something.
#include <cerrno>

#include "Img2PdfTask.h"
#include "Pdf2ImgTask.h"
#include "Pdf2PdfATask.h"
#include "PdfCompressTask.h"
#include "PdfRepairTask.h"
#include "PdfRotateTask.h"
#include "support/DocumentTest.h"
#include "support/FileSizeLimit.h"
#include "support/TestImages.h"

namespace TarnixTools {
namespace {

class SystemErrorTest : public testing::DocumentTest {
 protected:
  SystemErrorTest() {
    MakePdf("doc.pdf", 50);
    testing::WriteBytes(Path("photo.jpg"), testing::TestJpeg(3));
    directory_.MakeDir("out");
  }

  template <typename Task>
  int SystemErrorOf(Task task) const {
    task.SetOutputPath(Path("out"));
    try {
      task.Execute();
    } catch (const PdfException& error) {
      EXPECT_NE(error.GetErrorCode(), 0);
      return error.GetSystemError();
    }
    ADD_FAILURE() << "it should have failed";
    return 0;
  }
};

TEST_F(SystemErrorTest, TellsWhyNoOutputCanBeWritten) {
  const testing::FileSizeLimit limit(100);
  EXPECT_EQ(SystemErrorOf(PdfRotateTask(Doc("doc.pdf"))), EFBIG);
  EXPECT_EQ(SystemErrorOf(PdfCompressTask(Doc("doc.pdf"))), EFBIG);
  EXPECT_EQ(SystemErrorOf(PdfRepairTask(Doc("doc.pdf"))), EFBIG);
  EXPECT_EQ(SystemErrorOf(Pdf2PdfATask(Doc("doc.pdf"))), EFBIG);
  EXPECT_EQ(SystemErrorOf(Img2PdfTask(Path("photo.jpg"))), EFBIG);
  Pdf2ImgTask images;
  images.AddPdfDoc(Doc("doc.pdf"));
  EXPECT_EQ(SystemErrorOf(images), EFBIG);  // which is written on another thread
  EXPECT_THAT(directory_.Names("out"), ::testing::ElementsAre());
}

TEST_F(SystemErrorTest, IsNoneWhereTheDocumentIsToBlame) {
  testing::WriteBytes(Path("text.pdf"), "nothing of a document");
  EXPECT_EQ(SystemErrorOf(PdfCompressTask(Doc("text.pdf"))), 0);
}

TEST_F(SystemErrorTest, IsNoneOfAnExceptionWithoutAnEngine) {
  const testing::FileSizeLimit limit(100);
  EXPECT_EQ(SystemErrorOf(PdfCompressTask(Doc("doc.pdf"))), EFBIG);
  EXPECT_EQ(PdfException(PdfExceptionCode::InvalidParameter, 0, "no").GetSystemError(), 0);
}

}  // namespace
}  // namespace TarnixTools
