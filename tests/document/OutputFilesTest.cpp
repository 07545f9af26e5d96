// Outputs are written whole or not at all, under whatever name.
#include <algorithm>
#include <cerrno>
#include <filesystem>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/DocumentTest.h"
#include "support/FileSizeLimit.h"

namespace TarnixTools {
namespace {

using testing::Backslashes;
using ::testing::ElementsAre;
using testing::Exists;
using testing::Failure;
using testing::FailureOf;
using testing::FileSizeLimit;
using ::testing::IsEmpty;
using testing::PageTexts;
using testing::PermissionsOf;
using testing::QpdfComplaints;
using testing::ReadBytes;
using ::testing::StartsWith;
using testing::TestPdf;
using testing::WriteBytes;

std::size_t OpenFileCount() {
  std::size_t count = 0;
  for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
    ++count;
  }
  return count;
}

class OutputFilesTest : public testing::DocumentTest {
 protected:
  void SetUp() override {
    TARNIX_NEED_PROGRAM("pdftotext");
    MakePdf("in.pdf", 2, "In");
  }

  // A one-input merge: the simplest job that writes a file.
  void CopyTo(const std::string& output) const { PdfDoc::Merge({Doc("in.pdf")}, output, ""); }

  Failure FailureOfCopyTo(const std::string& output) const {
    return FailureOf([&] { CopyTo(output); });
  }

  static Failure CannotCreate(const std::string& path, const std::string& reason) {
    return {PdfExceptionCode::FileNotFound,
            "Unable to create new file [" + Backslashes(path) + "] (" + reason + ")"};
  }
};

// Ctrl-C, a crash, a kill: whatever ends the process, the directory is as it was before.
TEST_F(OutputFilesTest, LeaveNothingWhenTheProcessEnds) {
  const pid_t child = fork();
  if (child == 0) {
    PdfDoc output(Path("half.pdf"), "", false);
    output.Create(false);
    raise(SIGKILL);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFSIGNALED(status));
  EXPECT_THAT(directory_.Names(), ElementsAre("in.pdf"));
}

// Files are descriptors 0 and 1 then.
TEST_F(OutputFilesTest, AreWrittenWithoutStandardStreamsToo) {
  const pid_t child = fork();
  if (child == 0) {
    close(STDIN_FILENO);
    close(STDOUT_FILENO);
    _exit(FailureOfCopyTo(Path("out.pdf")) == Failure() ? 0 : 1);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(Texts("out.pdf"), Labels(1, 2, "In"));
}

TEST_F(OutputFilesTest, HaveAnyName) {
  const std::string names[] = {
      "with spaces (1).pdf",
      "caf\xC3\xA9 \xC3\x9C.pdf",
      "\xE6\x96\x87\xE6\x9B\xB8.pdf",
      "\xF0\x9F\x98\x80.pdf",
      "latin1 \xFF\xE9.pdf",
      "cut \xE6\x96.pdf",
      "new\nline.pdf",
      "100%s%n.pdf",
      "-dash.pdf",
      ".hidden",
      "quote'\".pdf",
      std::string(255, 'n'),
  };
  for (const std::string& name : names) {
    CopyTo(Path(name));
    EXPECT_EQ(PageTexts(Path(name)), Labels(1, 2, "In")) << name;
    EXPECT_EQ(PdfDoc(Path(name), "", true).GetPagesNum(), 2) << name;
    CopyTo(Backslashes(Path(name)));
  }
  EXPECT_EQ(directory_.Names().size(), std::size(names) + 1);
}

TEST_F(OutputFilesTest, OfInputsWithAnyNameAreNamedAfterThem) {
  const std::string name = "latin1 \xFF 100%n";
  TestPdf().Pages(2).Write(Path(name + ".pdf"));
  Doc(name + ".pdf").Split(1, directory_.MakeDir("\xFE") + "/", "", "");
  EXPECT_THAT(directory_.Names("\xFE"), ElementsAre(name + "-01.pdf", name + "-02.pdf"));
}

TEST_F(OutputFilesTest, WithANameThatIsTooLongFail) {
  const std::string path = Path(std::string(256, 'n'));
  EXPECT_EQ(FailureOfCopyTo(path), CannotCreate(path, "File name too long"));
  EXPECT_THAT(directory_.Names(), ElementsAre("in.pdf"));
}

TEST_F(OutputFilesTest, InADirectoryThatIsMissingFail) {
  const std::string path = Path("missing/out.pdf");
  EXPECT_EQ(FailureOfCopyTo(path), CannotCreate(path, "No such file or directory"));
}

TEST_F(OutputFilesTest, BelowAFileFail) {
  const std::string path = Path("in.pdf/out.pdf");
  EXPECT_EQ(FailureOfCopyTo(path), CannotCreate(path, "Not a directory"));
}

TEST_F(OutputFilesTest, DoNotReplaceADirectory) {
  const std::string path = directory_.MakeDir("out.pdf");
  EXPECT_EQ(FailureOfCopyTo(path), CannotCreate(path, "Is a directory"));
  EXPECT_EQ(FailureOfCopyTo(path + "/"), CannotCreate(path + "/", "Is a directory"));
  EXPECT_THAT(directory_.Names(), ElementsAre("in.pdf", "out.pdf"));
  EXPECT_THAT(directory_.Names("out.pdf"), IsEmpty());
}

TEST_F(OutputFilesTest, NeedADirectoryThatMayBeWritten) {
  if (geteuid() == 0) {
    GTEST_SKIP() << "root may write everywhere";
  }
  const std::string directory = directory_.MakeDir("closed");
  ASSERT_EQ(chmod(directory.c_str(), 0500), 0);
  EXPECT_EQ(FailureOfCopyTo(directory + "/out.pdf"),
            CannotCreate(directory + "/out.pdf", "Permission denied"));
}

TEST_F(OutputFilesTest, DoNotReplaceAFileThatMayNotBeWritten) {
  if (geteuid() == 0) {
    GTEST_SKIP() << "root may write everything";
  }
  const std::string path = WriteBytes(Path("out.pdf"), "old");
  ASSERT_EQ(chmod(path.c_str(), 0400), 0);
  EXPECT_EQ(FailureOfCopyTo(path), CannotCreate(path, "Permission denied"));
  EXPECT_EQ(ReadBytes(path), "old");
}

TEST_F(OutputFilesTest, GoToAFullDeviceAndSaySo) {
  if (!Exists("/dev/full")) {
    GTEST_SKIP() << "needs /dev/full";
  }
  const Failure failure = FailureOfCopyTo("/dev/full");
  EXPECT_EQ(failure.code, PdfExceptionCode::EngineError);
  EXPECT_NE(failure.engine_code, 0);
  EXPECT_THAT(failure.message, StartsWith("Unable to write PDF [\\dev\\full] (engine error [0x"));
  EXPECT_TRUE(Exists("/dev/full"));
}

TEST_F(OutputFilesTest, GoToADeviceThatTakesEverything) {
  EXPECT_EQ(FailureOfCopyTo("/dev/null"), Failure());
  EXPECT_TRUE(Exists("/dev/null"));
}

TEST_F(OutputFilesTest, GoThroughAPipeThatIsRead) {
  const std::string path = Path("pipe");
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  const int reader = open(path.c_str(), O_RDONLY | O_NONBLOCK);
  ASSERT_GE(reader, 0);
  CopyTo(path);
  std::string bytes(60000, '\0');  // less than what a pipe holds
  const ssize_t count = read(reader, bytes.data(), bytes.size());
  close(reader);
  ASSERT_GT(count, 0);
  bytes.resize(static_cast<std::size_t>(count));
  EXPECT_EQ(PageTexts(WriteBytes(Path("copy.pdf"), bytes)), Labels(1, 2, "In"));
  EXPECT_THAT(directory_.Names(), ElementsAre("copy.pdf", "in.pdf", "pipe"));
}

TEST_F(OutputFilesTest, ThatGoThroughAPipeAreNotCompletedWhenTheJobFails) {
  const std::string path = Path("pipe");
  WriteBytes(Path("not.pdf"), "hello");
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  const int reader = open(path.c_str(), O_RDONLY | O_NONBLOCK);
  ASSERT_GE(reader, 0);
  EXPECT_EQ(FailureOf([&] {
              PdfDoc::Merge({Doc("in.pdf"), Doc("not.pdf")}, path, "");
            }).code,
            PdfExceptionCode::EngineError);
  std::string bytes(60000, '\0');
  const ssize_t count = read(reader, bytes.data(), bytes.size());
  close(reader);
  bytes.resize(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
  EXPECT_THAT(bytes, ::testing::Not(::testing::HasSubstr("%%EOF")));
}

TEST_F(OutputFilesTest, DoNotWaitForAPipeThatNobodyReads) {
  const std::string path = Path("pipe");
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  EXPECT_EQ(FailureOfCopyTo(path), CannotCreate(path, "No such device or address"));
}

TEST_F(OutputFilesTest, MayBeOneOfTheInputs) {
  MakePdf("a.pdf", 2, "Alpha");
  PdfDoc::Merge({Doc("in.pdf"), Doc("a.pdf"), Doc("in.pdf")}, Path("in.pdf"), "");
  EXPECT_THAT(Texts("in.pdf"), ElementsAre("In 1", "In 2", "Alpha 1", "Alpha 2", "In 1", "In 2"));
  Doc("a.pdf").Rotate(PdfRotationAngle::Rotate90, Path("a.pdf"), "");
  EXPECT_THAT(Texts("a.pdf"), ElementsAre("Alpha 1", "Alpha 2"));
  Doc("a.pdf").Split({PdfPageRange(2, 2), PdfPageRange(1, 1)}, directory_.Path() + "/", "", true,
                     "a.pdf", "");
  EXPECT_THAT(Texts("a.pdf"), ElementsAre("Alpha 2", "Alpha 1"));
  EXPECT_THAT(directory_.Names(), ElementsAre("a.pdf", "in.pdf"));
}

TEST_F(OutputFilesTest, ReplaceALongerFileWhole) {
  WriteBytes(Path("out.pdf"), std::string(100000, 'x'));
  CopyTo(Path("out.pdf"));
  EXPECT_LT(ReadBytes(Path("out.pdf")).size(), 100000U);
  EXPECT_EQ(Texts("out.pdf"), Labels(1, 2, "In"));
}

// Whoever has the old one open goes on with that, whatever failed before.
TEST_F(OutputFilesTest, ReplaceAFileThatIsOpen) {
  WriteBytes(Path("out.pdf"), "old");
  const int reader = open(Path("out.pdf").c_str(), O_RDONLY | O_CLOEXEC);
  ASSERT_GE(reader, 0);
  errno = EACCES;
  CopyTo(Path("out.pdf"));
  char content[4] = {};
  EXPECT_EQ(read(reader, content, sizeof(content)), 3);
  close(reader);
  EXPECT_STREQ(content, "old");
  EXPECT_EQ(Texts("out.pdf"), Labels(1, 2, "In"));
}

TEST_F(OutputFilesTest, LeaveAnOlderFileWhenTheJobFails) {
  WriteBytes(Path("out.pdf"), "old");
  WriteBytes(Path("not.pdf"), "hello");
  EXPECT_EQ(FailureOf([&] {
              PdfDoc::Merge({Doc("in.pdf"), Doc("not.pdf")}, Path("out.pdf"), "");
            }).code,
            PdfExceptionCode::EngineError);
  EXPECT_EQ(ReadBytes(Path("out.pdf")), "old");
  EXPECT_THAT(directory_.Names(), ElementsAre("in.pdf", "not.pdf", "out.pdf"));
}

TEST_F(OutputFilesTest, LeaveAnOlderFileWhenTheDiskIsFull) {
  WriteBytes(Path("out.pdf"), "old");
  Failure failure;
  {
    const FileSizeLimit full(100);
    failure = FailureOfCopyTo(Path("out.pdf"));
  }
  EXPECT_EQ(failure.code, PdfExceptionCode::EngineError);
  EXPECT_NE(failure.engine_code, 0);
  EXPECT_THAT(failure.message, StartsWith("Unable to write PDF [" + Backslashes(Path("out.pdf")) +
                                          "] (engine error [0x"));
  EXPECT_EQ(ReadBytes(Path("out.pdf")), "old");
  EXPECT_THAT(directory_.Names(), ElementsAre("in.pdf", "out.pdf"));
}

TEST_F(OutputFilesTest, AreNotThereUntilTheyAreComplete) {
  WriteBytes(Path("out.pdf"), "old");
  PdfDoc out(Path("out.pdf"), "", false);
  out.Create(false);
  EXPECT_EQ(ReadBytes(Path("out.pdf")), "old");
  out.Append(Doc("in.pdf"));
  EXPECT_EQ(Texts("out.pdf"), Labels(1, 2, "In"));
  EXPECT_THAT(directory_.Names(), ElementsAre("in.pdf", "out.pdf"));
}

TEST_F(OutputFilesTest, AreDroppedWhenNeverCompleted) {
  {
    PdfDoc out(Path("out.pdf"), "", false);
    out.Create(false);
    const PdfDoc copy(out);
    EXPECT_NE(ReadBytes(Path("in.pdf")), "");
  }
  EXPECT_THAT(directory_.Names(), ElementsAre("in.pdf"));
}

TEST_F(OutputFilesTest, OfCreatedDocumentsAreDroppedByDelete) {
  WriteBytes(Path("out.pdf"), "old");
  PdfDoc out(Path("out.pdf"), "", false);
  out.Create(false);
  PdfDoc::Delete(out);
  EXPECT_THAT(directory_.Names(), ElementsAre("in.pdf"));
}

TEST_F(OutputFilesTest, AreCreatedAsTheUsersMaskWants) {
  const mode_t old_mask = umask(0027);
  CopyTo(Path("out.pdf"));
  umask(old_mask);
  EXPECT_EQ(PermissionsOf(Path("out.pdf")), 0640U);
}

TEST_F(OutputFilesTest, TakeOverThePermissionsOfWhatTheyReplace) {
  for (const mode_t mode : {0600U, 0666U, 0755U}) {
    WriteBytes(Path("out.pdf"), "old");
    ASSERT_EQ(chmod(Path("out.pdf").c_str(), mode), 0);
    CopyTo(Path("out.pdf"));
    EXPECT_EQ(PermissionsOf(Path("out.pdf")), mode);
    EXPECT_EQ(Texts("out.pdf"), Labels(1, 2, "In"));
  }
}

TEST_F(OutputFilesTest, TakeOverTheOwnerOfWhatTheyReplace) {
  if (geteuid() != 0) {
    GTEST_SKIP() << "only root gives files away";
  }
  for (const auto& [user, group] : {std::pair(1234U, 4321U), {1234U, 0U}, {0U, 4321U}}) {
    WriteBytes(Path("out.pdf"), "old");
    ASSERT_EQ(chown(Path("out.pdf").c_str(), user, group), 0);
    CopyTo(Path("out.pdf"));

    struct stat info {};

    ASSERT_EQ(stat(Path("out.pdf").c_str(), &info), 0);
    EXPECT_EQ(info.st_uid, user);
    EXPECT_EQ(info.st_gid, group);
    ASSERT_EQ(unlink(Path("out.pdf").c_str()), 0);
  }
}

TEST_F(OutputFilesTest, FollowLinks) {
  directory_.MakeDir("far");
  WriteBytes(Path("far/target.pdf"), "old");
  ASSERT_EQ(symlink("far/hop.pdf", Path("link.pdf").c_str()), 0);
  ASSERT_EQ(symlink("target.pdf", Path("far/hop.pdf").c_str()), 0);
  CopyTo(Path("link.pdf"));
  EXPECT_TRUE(std::filesystem::is_symlink(Path("link.pdf")));
  EXPECT_TRUE(std::filesystem::is_symlink(Path("far/hop.pdf")));
  EXPECT_FALSE(std::filesystem::is_symlink(Path("far/target.pdf")));
  EXPECT_EQ(Texts("far/target.pdf"), Labels(1, 2, "In"));
  EXPECT_THAT(directory_.Names(), ElementsAre("far", "in.pdf", "link.pdf"));
}

TEST_F(OutputFilesTest, FollowALinkToAFileThatIsNotThereYet) {
  ASSERT_EQ(symlink(Path("target.pdf").c_str(), Path("link.pdf").c_str()), 0);
  CopyTo(Path("link.pdf"));
  EXPECT_TRUE(std::filesystem::is_symlink(Path("link.pdf")));
  EXPECT_EQ(Texts("target.pdf"), Labels(1, 2, "In"));
}

TEST_F(OutputFilesTest, DoNotFollowLinksInCircles) {
  ASSERT_EQ(symlink("b.pdf", Path("a.pdf").c_str()), 0);
  ASSERT_EQ(symlink("a.pdf", Path("b.pdf").c_str()), 0);
  EXPECT_EQ(FailureOfCopyTo(Path("a.pdf")),
            CannotCreate(Path("a.pdf"), "Too many levels of symbolic links"));
}

TEST_F(OutputFilesTest, GoToTheDirectoryThatWasCurrentWhenTheyWereCreated) {
  const std::filesystem::path old_directory = std::filesystem::current_path();
  std::filesystem::current_path(directory_.Path());
  PdfDoc out("relative.pdf", "", false);
  out.Create(false);
  std::filesystem::current_path(old_directory);
  out.Append(Doc("in.pdf"));
  EXPECT_THAT(directory_.Names(), ElementsAre("in.pdf", "relative.pdf"));
}

TEST_F(OutputFilesTest, AndInputsAreClosedAfterEveryOperation) {
  WriteBytes(Path("not.pdf"), "hello");
  const auto work = [this] {
    CopyTo(Path("out.pdf"));
    FailureOfCopyTo("/dev/full");
    FailureOfCopyTo(Path("missing/out.pdf"));
    FailureOf([&] { Doc("not.pdf").GetPagesNum(); });
    FailureOf([&] { PdfDoc::Merge({Doc("in.pdf"), Doc("not.pdf")}, Path("out.pdf"), ""); });
    FailureOf([&] { Doc("in.pdf").GetPageSize(9, PdfSizeUnits::Points, 72, 1); });
    FailureOf([&] { Doc("in.pdf").Split(9, directory_.Path() + "/", "", ""); });
    PdfDoc created(Path("created.pdf"), "", false);
    created.Create(true);
  };
  work();
  const std::size_t count = OpenFileCount();
  work();
  EXPECT_EQ(OpenFileCount(), count);
}

}  // namespace
}  // namespace TarnixTools
