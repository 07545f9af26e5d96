#include <cerrno>
#include <cstdio>
#include <thread>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "foundation/Platform.h"
#include "support/TempDir.h"

namespace TarnixTools::platform {
namespace {

TEST(Platform, EmptiesAFileToBeWrittenAnew) {
  const testing::TempDir directory;
  const std::string path = directory.Path("out");
  std::optional<OutputFile> output = OutputFile::Create(path);
  ASSERT_TRUE(output);
  FilePtr stream = output->TakeStream();
  std::fputs("something long", stream.get());
  EXPECT_TRUE(Empty(stream.get()));
  EXPECT_EQ(Tell(stream.get()), 0);
  EXPECT_EQ(std::fgetc(stream.get()), EOF);
  EXPECT_TRUE(Seek(stream.get(), 0));
  std::fputs("short", stream.get());
  stream.reset();
  EXPECT_TRUE(output->Commit());
  EXPECT_EQ(testing::ReadBytes(path), "short");
}

TEST(Platform, EmptiesNoDevice) {
  const FilePtr device(std::fopen("/dev/null", "w"));
  ASSERT_NE(device, nullptr);
  EXPECT_FALSE(Empty(device.get()));
}

TEST(Platform, GoesToAnyPlaceOfAFile) {
  const testing::TempDir directory;
  const FilePtr file = OpenForReading(testing::WriteBytes(directory.Path("file"), "content"));
  ASSERT_NE(file, nullptr);
  EXPECT_TRUE(SeekToEnd(file.get()));
  EXPECT_EQ(Tell(file.get()), 7);
  EXPECT_FALSE(Seek(file.get(), -1));
  EXPECT_EQ(Tell(file.get()), 7);
  EXPECT_TRUE(Seek(file.get(), 0));
  EXPECT_EQ(std::fgetc(file.get()), 'c');
  EXPECT_EQ(lseek(fileno(file.get()), 0, SEEK_CUR), 1) << "it is read without a buffer";
  EXPECT_EQ(fcntl(fileno(file.get()), F_GETFD) & FD_CLOEXEC, FD_CLOEXEC);
  EXPECT_TRUE(Seek(file.get(), 9));
  EXPECT_EQ(std::fgetc(file.get()), EOF);
}

TEST(Platform, TellsWhyAFileCannotBeRead) {
  const testing::TempDir directory;
  const auto error_of = [](const std::string& path) {
    errno = 0;
    return OpenForReading(path) != nullptr ? 0 : errno;
  };
  EXPECT_EQ(error_of(directory.Path("missing")), ENOENT);
  EXPECT_EQ(error_of(directory.Path("")), EISDIR);
  EXPECT_EQ(error_of(testing::WriteBytes(directory.Path("file"), "")), 0);
  EXPECT_EQ(error_of(directory.Path("file/below")), ENOTDIR);
  ASSERT_EQ(mkfifo(directory.Path("pipe").c_str(), 0600), 0);
  EXPECT_EQ(error_of(directory.Path("pipe")), 0);  // and nobody waits for who writes to it
}

TEST(Platform, KnowsWhatIsThere) {
  const testing::TempDir directory;
  const std::string file = testing::WriteBytes(directory.Path("file"), "");
  const std::string link = directory.Path("link");
  ASSERT_EQ(symlink("nothing", link.c_str()), 0);
  EXPECT_TRUE(Exists(file));
  EXPECT_TRUE(Exists(link));
  EXPECT_TRUE(Exists(directory.Path("")));
  EXPECT_FALSE(Exists(directory.Path("nothing")));
  EXPECT_TRUE(IsDirectory(directory.Path("")));
  EXPECT_FALSE(IsDirectory(file));
  EXPECT_FALSE(IsDirectory(directory.Path("nothing")));
  EXPECT_TRUE(RemoveFile(link));
  EXPECT_TRUE(RemoveFile(file));
  errno = 0;
  EXPECT_FALSE(RemoveFile(file));
  EXPECT_EQ(errno, ENOENT);
  EXPECT_FALSE(RemoveFile(directory.MakeDir("directory")));
  EXPECT_TRUE(IsDirectory(directory.Path("directory")));
}

TEST(Platform, NotesSystemErrorsOfEachThreadForItself) {
  EXPECT_EQ(ErrorText(ENOENT), "No such file or directory");
  NoteSystemError(ENOSPC);
  EXPECT_EQ(LastSystemError(), ENOSPC);
  std::thread([] {
    EXPECT_EQ(LastSystemError(), 0);
    NoteSystemError(EIO);
  }).join();
  EXPECT_EQ(LastSystemError(), ENOSPC);
  NoteSystemError(0);
  EXPECT_EQ(LastSystemError(), 0);
}

}  // namespace
}  // namespace TarnixTools::platform
