// Outputs that cannot be replaced by a rename: the finished content is copied over them.
#include <functional>

#include <fcntl.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/DocumentTest.h"

namespace TarnixTools {
namespace {

using ::testing::ElementsAre;
using testing::PageFactsOf;
using testing::PageTexts;
using testing::QpdfComplaints;
using testing::ReadBytes;
using testing::WriteBytes;

constexpr uid_t kNobody = 65534;

// The exit status of a process that may not write everywhere, as root may.
int StatusAsNobody(const std::function<int()>& action) {
  const pid_t child = fork();
  if (child == 0) {
    if (geteuid() == 0 && (setgid(kNobody) != 0 || setuid(kNobody) != 0)) {
      _exit(99);
    }
    _exit(action());
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

class CopiedOutputsTest : public testing::DocumentTest {
 protected:
  void SetUp() override {
    TARNIX_NEED_PROGRAM("qpdf");
    TARNIX_NEED_PROGRAM("pdftotext");
    MakePdf("in.pdf", 2, "In");
    chmod(Path("").c_str(), 0755);
    chmod(Path("in.pdf").c_str(), 0644);
  }

  // In a directory that takes no new files.
  std::string WritableFile(const std::string& content) {
    const std::string directory = directory_.MakeDir("closed");
    const std::string path = WriteBytes(directory + "/out.pdf", content);
    chmod(path.c_str(), 0666);
    chmod(directory.c_str(), 0555);
    return path;
  }

  // 0, or the library's code.
  int Merge(const std::vector<std::string>& inputs, const std::string& output) const {
    try {
      std::list<PdfDoc> documents;
      for (const std::string& input : inputs) {
        documents.push_back(Doc(input));
      }
      PdfDoc::Merge(documents, output, "");
      return 0;
    } catch (PdfException& exception) {
      return static_cast<int>(exception.GetCode());
    }
  }
};

TEST_F(CopiedOutputsTest, AreWrittenWhereTheDirectoryTakesNoFiles) {
  for (const std::size_t old_size : {std::size_t{3}, std::size_t{200'000}}) {
    const std::string path = WritableFile(std::string(old_size, 'x'));
    EXPECT_EQ(StatusAsNobody([&] { return Merge({"in.pdf"}, path); }), 0);
    EXPECT_EQ(QpdfComplaints(path), "");
    EXPECT_EQ(PageTexts(path), Labels(1, 2, "In"));
    EXPECT_THAT(directory_.Names("closed"), ElementsAre("out.pdf"));
    chmod((Path("closed")).c_str(), 0755);
  }
}

// Of a directory it is enough that it takes new files.
TEST_F(CopiedOutputsTest, AreNotNeededWhereADirectoryOnlyCannotBeListed) {
  const std::string directory = directory_.MakeDir("hidden");
  chmod(directory.c_str(), 0333);
  EXPECT_EQ(StatusAsNobody([&] { return Merge({"in.pdf"}, directory + "/out.pdf"); }), 0);
  chmod(directory.c_str(), 0755);
  EXPECT_THAT(directory_.Names("hidden"), ElementsAre("out.pdf"));
  EXPECT_EQ(PageTexts(directory + "/out.pdf"), Labels(1, 2, "In"));
}

TEST_F(CopiedOutputsTest, StayAsTheyWereWhenTheJobFails) {
  const std::string path = WritableFile("old");
  WriteBytes(Path("bad.pdf"), "no document");
  chmod(Path("bad.pdf").c_str(), 0644);
  EXPECT_EQ(StatusAsNobody([&] {
              return Merge({"in.pdf", "bad.pdf"}, path);
            }),
            static_cast<int>(PdfExceptionCode::EngineError));
  EXPECT_EQ(ReadBytes(path), "old");
}

TEST_F(CopiedOutputsTest, MayBeTheInputOnceThatIsRead) {
  const std::string path = WritableFile(ReadBytes(Path("in.pdf")));
  EXPECT_EQ(StatusAsNobody([&] {
              PdfDoc(path, "", true).Rotate(PdfRotationAngle::Rotate90, path, "");
              return 0;
            }),
            0);
  EXPECT_EQ(PageFactsOf(path).at(1).rotation, 90);
}

TEST_F(CopiedOutputsTest, AreRefusedWhileTheyAreOpen) {
  const std::string path = WritableFile("old");
  const int status = StatusAsNobody([&] {
    const int reader = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    return reader < 0 ? 0 : Merge({"in.pdf"}, path);
  });
  EXPECT_EQ(status, static_cast<int>(PdfExceptionCode::FileNotFound));
  EXPECT_EQ(ReadBytes(path), "old");
}

TEST_F(CopiedOutputsTest, AreWrittenOnAMountPoint) {
  const std::string path = WriteBytes(Path("out.pdf"), "old");
  const std::string mounted = WriteBytes(Path("mounted.pdf"), "old");
  if (mount(mounted.c_str(), path.c_str(), nullptr, MS_BIND, nullptr) != 0) {
    GTEST_SKIP() << "needs to be allowed to mount";
  }
  EXPECT_EQ(Merge({"in.pdf"}, path), 0);
  umount(path.c_str());
  EXPECT_EQ(PageTexts(mounted), Labels(1, 2, "In"));
  EXPECT_EQ(ReadBytes(path), "old");
  EXPECT_THAT(directory_.Names(), ElementsAre("in.pdf", "mounted.pdf", "out.pdf"));
}

}  // namespace
}  // namespace TarnixTools
