// Files that get their names when they are complete.
#include <cerrno>
#include <filesystem>
#include <iterator>
#include <string>
#include <utility>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "foundation/JobWatch.h"
#include "foundation/Platform.h"
#include "support/TempDir.h"

namespace TarnixTools::platform {
namespace {

using ::testing::ElementsAre;
using testing::Exists;
using testing::ReadBytes;
using testing::WriteBytes;

class OutputFileTest : public ::testing::Test {
 protected:
  std::string Path(const std::string& name) const { return directory_.Path(name); }

  // An output that is written and closed, but for its name.
  static OutputFile Ready(const std::string& path, const std::string& content) {
    std::optional<OutputFile> output = OutputFile::Create(path);
    if (!output) {
      ADD_FAILURE() << path;
    }
    const FilePtr stream = output->TakeStream();
    EXPECT_NE(stream, nullptr);
    EXPECT_EQ(output->TakeStream(), nullptr);
    std::fputs(content.c_str(), stream.get());
    return *std::move(output);
  }

  // Why no output can be made there; 0 when one can.
  static int ErrorOf(const std::string& path) {
    errno = 0;
    return OutputFile::Create(path) ? 0 : errno;
  }

  mode_t ModeOf(const std::string& name) const {
    struct stat info {};

    EXPECT_EQ(stat(Path(name).c_str(), &info), 0);
    return info.st_mode & 0777U;
  }

  testing::TempDir directory_;
};

TEST_F(OutputFileTest, HasItsNameOnceItIsCommitted) {
  OutputFile output = Ready(Path("new"), "content");
  EXPECT_FALSE(Exists(Path("new")));
  EXPECT_TRUE(output.Commit());
  EXPECT_EQ(ReadBytes(Path("new")), "content");
  EXPECT_THAT(directory_.Names(), ElementsAre("new"));
  output = Ready(Path("new"), "other");
  EXPECT_EQ(ReadBytes(Path("new")), "content");
  EXPECT_TRUE(output.Commit());
  EXPECT_EQ(ReadBytes(Path("new")), "other");
  EXPECT_THAT(directory_.Names(), ElementsAre("new"));
}

TEST_F(OutputFileTest, CanBeReadWhileItIsWritten) {
  std::optional<OutputFile> output = OutputFile::Create(Path("new"));
  ASSERT_TRUE(output);
  const FilePtr stream = output->TakeStream();
  std::fputs("content", stream.get());
  EXPECT_TRUE(Seek(stream.get(), 3));
  EXPECT_EQ(std::fgetc(stream.get()), 't');
  EXPECT_EQ(Tell(stream.get()), 4);
}

TEST_F(OutputFileTest, LeavesNothingUnlessItIsCommitted) {
  WriteBytes(Path("old"), "old");
  { const OutputFile dropped = Ready(Path("new"), "content"); }
  { const OutputFile dropped = Ready(Path("old"), "content"); }
  OutputFile discarded = Ready(Path("old"), "content");
  discarded.Discard();
  EXPECT_TRUE(discarded.Commit());  // of nothing
  EXPECT_EQ(ReadBytes(Path("old")), "old");
  EXPECT_THAT(directory_.Names(), ElementsAre("old"));
}

TEST_F(OutputFileTest, IsMovedWithAllThatBelongsToIt) {
  directory_.MakeDir("a");
  directory_.MakeDir("b");
  OutputFile first = Ready(Path("a/first"), "of the first");
  OutputFile moved(std::move(first));
  EXPECT_TRUE(moved.Commit());
  EXPECT_EQ(ReadBytes(Path("a/first")), "of the first");
  OutputFile second = Ready(Path("a/second"), "of the second");
  {
    OutputFile third = Ready(Path("b/third"), "of the third");
    second = std::move(third);
  }
  EXPECT_TRUE(second.Commit());
  EXPECT_EQ(ReadBytes(Path("b/third")), "of the third");
  EXPECT_THAT(directory_.Names("a"), ElementsAre("first"));
  EXPECT_THAT(directory_.Names("b"), ElementsAre("third"));
  // With its stream.
  std::optional<OutputFile> open = OutputFile::Create(Path("b/fourth"));
  ASSERT_TRUE(open);
  second = *std::move(open);
  open.reset();
  std::fputs("of the fourth", second.TakeStream().get());
  EXPECT_TRUE(second.Commit());
  EXPECT_EQ(ReadBytes(Path("b/fourth")), "of the fourth");
}

TEST_F(OutputFileTest, TellsWhyItCannotBeMade) {
  WriteBytes(Path("file"), "content");
  ASSERT_EQ(symlink("loop", Path("loop").c_str()), 0);
  EXPECT_EQ(ErrorOf(""), ENOENT);
  EXPECT_EQ(ErrorOf(Path("missing/new")), ENOENT);
  EXPECT_EQ(ErrorOf(Path("missing/")), EISDIR);
  EXPECT_EQ(ErrorOf(Path("")), EISDIR);
  EXPECT_EQ(ErrorOf(Path("file/new")), ENOTDIR);
  EXPECT_EQ(ErrorOf(Path("loop")), ELOOP);
  EXPECT_EQ(ErrorOf(Path(std::string(256, 'a'))), ENAMETOOLONG);
  EXPECT_EQ(ErrorOf(Path(std::string(255, 'a'))), 0);
  ASSERT_EQ(mkfifo(Path("pipe").c_str(), 0600), 0);
  EXPECT_EQ(ErrorOf(Path("pipe")), ENXIO);
  EXPECT_EQ(ErrorOf("/dev/null"), 0);
  EXPECT_THAT(directory_.Names(), ElementsAre("file", "loop", "pipe"));
}

TEST_F(OutputFileTest, FollowsLinksToWhatTheyNameFromWhereTheyAre) {
  directory_.MakeDir("far");
  WriteBytes(Path("far/old"), "old");
  ASSERT_EQ(symlink("old", Path("far/second").c_str()), 0);
  ASSERT_EQ(symlink("far/second", Path("first").c_str()), 0);
  ASSERT_EQ(symlink(Path("far/new").c_str(), Path("absolute").c_str()), 0);
  ASSERT_EQ(symlink("absolute", Path("to_absolute").c_str()), 0);
  EXPECT_TRUE(Ready(Path("first"), "replaced").Commit());
  EXPECT_EQ(ReadBytes(Path("far/old")), "replaced");
  EXPECT_TRUE(Ready(Path("to_absolute"), "created").Commit());
  EXPECT_EQ(ReadBytes(Path("far/new")), "created");
  EXPECT_THAT(directory_.Names("far"), ElementsAre("new", "old", "second"));
  EXPECT_THAT(directory_.Names(), ElementsAre("absolute", "far", "first", "to_absolute"));
}

// As many as the system itself follows.
TEST_F(OutputFileTest, FollowsFortyLinksAtMost) {
  for (int i = 0; i < 40; ++i) {
    ASSERT_EQ(
        symlink(("link" + std::to_string(i + 1)).c_str(), Path("link" + std::to_string(i)).c_str()),
        0);
  }
  EXPECT_EQ(ErrorOf(Path("link0")), ELOOP);
  EXPECT_TRUE(Ready(Path("link1"), "content").Commit());
  EXPECT_EQ(ReadBytes(Path("link40")), "content");
}

TEST_F(OutputFileTest, TakesOverThePermissionsOfWhatItReplaces) {
  const mode_t mask = umask(027);
  EXPECT_TRUE(Ready(Path("new"), "content").Commit());
  EXPECT_EQ(ModeOf("new"), 0640U);
  WriteBytes(Path("old"), "old");
  for (const mode_t mode : {0600U, 0666U, 0755U}) {
    ASSERT_EQ(chmod(Path("old").c_str(), mode), 0);
    EXPECT_TRUE(Ready(Path("old"), "content").Commit());
    EXPECT_EQ(ModeOf("old"), mode);
  }
  umask(mask);
}

TEST_F(OutputFileTest, TakesOverTheOwnerOfWhatItReplaces) {
  if (geteuid() != 0) {
    GTEST_SKIP() << "only root gives files away";
  }
  using Owner = std::pair<uid_t, gid_t>;
  WriteBytes(Path("old"), "old");
  for (const Owner& owner : {Owner(0, 2), Owner(1, 0), Owner(1, 2), Owner(0, 0)}) {
    ASSERT_EQ(chown(Path("old").c_str(), owner.first, owner.second), 0);
    EXPECT_TRUE(Ready(Path("old"), "content").Commit());

    struct stat info {};

    EXPECT_EQ(stat(Path("old").c_str(), &info), 0);
    EXPECT_EQ(Owner(info.st_uid, info.st_gid), owner);
  }
}

TEST_F(OutputFileTest, TakesTheNameThatIsGivenAwayInBetween) {
  OutputFile output = Ready(Path("new"), "content");
  WriteBytes(Path("new"), "of another");
  EXPECT_TRUE(output.Commit());
  EXPECT_EQ(ReadBytes(Path("new")), "content");
  OutputFile beaten = Ready(Path("taken"), "content");
  directory_.MakeDir("taken");
  errno = 0;
  EXPECT_FALSE(beaten.Commit());
  EXPECT_EQ(errno, EISDIR);
  EXPECT_THAT(directory_.Names(), ElementsAre("new", "taken"));
}

// Which waits for it as any other writer does.
TEST_F(OutputFileTest, WritesToADeviceAtOnce) {
  OutputFile output = Ready("/dev/null", "content");
  EXPECT_TRUE(output.Commit());
  EXPECT_TRUE(Exists("/dev/null"));
  const FilePtr stream = OutputFile::Create("/dev/null")->TakeStream();
  EXPECT_EQ(fcntl(fileno(stream.get()), F_GETFL) & O_NONBLOCK, 0);
}

// Without a buffer of its own, and nothing that a program inherits that is started meanwhile.
TEST_F(OutputFileTest, IsWrittenToTheFileAtOnceAndKeptFromOtherPrograms) {
  for (const std::string& path : {Path("new"), std::string("/dev/null")}) {
    std::optional<OutputFile> output = OutputFile::Create(path);
    ASSERT_TRUE(output);
    const FilePtr stream = output->TakeStream();
    EXPECT_EQ(fcntl(fileno(stream.get()), F_GETFD) & FD_CLOEXEC, FD_CLOEXEC);
    std::fputs("content", stream.get());

    struct stat info {};

    EXPECT_EQ(fstat(fileno(stream.get()), &info), 0);
    EXPECT_EQ(info.st_size, path == "/dev/null" ? 0 : 7);
  }
}

TEST_F(OutputFileTest, LeavesNoFileOpen) {
  if (!Exists("/proc/self/fd")) {
    GTEST_SKIP() << "needs to see its open files";
  }
  const auto open_count = [] {
    const std::filesystem::directory_iterator files("/proc/self/fd");
    return std::distance(begin(files), end(files));
  };
  const auto before = open_count();
  EXPECT_TRUE(Ready(Path("new"), "content").Commit());
  EXPECT_TRUE(Ready(Path("new"), "content").Commit());
  EXPECT_TRUE(Ready("/dev/null", "content").Commit());
  { const OutputFile dropped = Ready(Path("dropped"), "content"); }
  OutputFile discarded = Ready(Path("discarded"), "content");
  discarded.Discard();
  discarded = Ready(Path("dropped"), "content");
  discarded = Ready(Path("dropped"), "content");
  EXPECT_TRUE(discarded.Commit());
  EXPECT_EQ(ErrorOf(Path("missing/new")), ENOENT);
  EXPECT_EQ(OpenForReading(Path("")), nullptr);
  EXPECT_EQ(open_count(), before + 1) << "the directory of what was written last";
}

TEST_F(OutputFileTest, GetsNoNameOnceTheJobIsToStop) {
  bool goes_on = true;
  const JobWatch watch([&](const std::string&, std::int64_t, std::int64_t) { return goes_on; },
                       "job", this);
  EXPECT_TRUE(Ready(Path("first"), "content").Commit());
  OutputFile second = Ready(Path("second"), "content");
  goes_on = false;
  EXPECT_ANY_THROW(JobWatch::Report(1, 2));
  errno = 0;
  EXPECT_FALSE(second.Commit());
  EXPECT_EQ(errno, ECANCELED);
  EXPECT_THAT(directory_.Names(), ElementsAre("first"));
}

}  // namespace
}  // namespace TarnixTools::platform
