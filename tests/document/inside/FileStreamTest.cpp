// The callbacks by which the document engine reaches a file.
#include <array>
#include <cerrno>

#include <gtest/gtest.h>
#include <unistd.h>

#include "document/FileStream.h"
#include "support/TempDir.h"

namespace TarnixTools {
namespace {

using testing::TempDir;

class FileStreamTest : public ::testing::Test {
 protected:
  // Opens a file of ten bytes, "0123456789", with a mode of fopen.
  FileStream Open(const char* mode) const {
    const std::string path = testing::WriteBytes(directory_.Path("file"), "0123456789");
    return FileStream(platform::FilePtr(std::fopen(path.c_str(), mode)));
  }

  std::string Content() const { return testing::ReadBytes(directory_.Path("file")); }

  TempDir directory_;
};

TEST_F(FileStreamTest, TellsItsLengthWhereverItStands) {
  FileStream file = Open("rb");
  const engines::TPdfStream stream = file.Descriptor();
  EXPECT_EQ(stream.get_length(stream.handle), 10);
  EXPECT_EQ(stream.tell(stream.handle), 0);
  ASSERT_EQ(stream.seek(stream.handle, 7), 1);
  EXPECT_EQ(stream.get_length(stream.handle), 10);
  EXPECT_EQ(stream.tell(stream.handle), 7);
}

TEST_F(FileStreamTest, SeeksFromTheStart) {
  FileStream file = Open("rb");
  const engines::TPdfStream stream = file.Descriptor();
  EXPECT_EQ(stream.seek(stream.handle, 4), 1);
  EXPECT_EQ(stream.seek(stream.handle, 6), 1);
  EXPECT_EQ(stream.tell(stream.handle), 6);
  EXPECT_EQ(stream.seek(stream.handle, -1), 0);
  EXPECT_EQ(stream.tell(stream.handle), 6);
}

TEST_F(FileStreamTest, HasNoLengthAndNoPlaceInAPipe) {
  int ends[2] = {};
  ASSERT_EQ(pipe(ends), 0);
  close(ends[1]);
  FileStream file{platform::FilePtr(fdopen(ends[0], "rb"))};
  const engines::TPdfStream stream = file.Descriptor();
  EXPECT_EQ(stream.get_length(stream.handle), -1);
  EXPECT_EQ(stream.tell(stream.handle), -1);
  EXPECT_EQ(stream.seek(stream.handle, 0), 0);
  char byte = 0;
  EXPECT_EQ(stream.read(stream.handle, &byte, 1), 0);
}

TEST_F(FileStreamTest, ReadsAsFarAsTheFileGoes) {
  FileStream file = Open("rb");
  const engines::TPdfStream stream = file.Descriptor();
  std::array<char, 8> buffer{};
  EXPECT_EQ(stream.read(stream.handle, buffer.data(), 8), 8);
  EXPECT_EQ(std::string(buffer.data(), 8), "01234567");
  EXPECT_EQ(stream.read(stream.handle, buffer.data(), 8), 2);
  EXPECT_EQ(std::string(buffer.data(), 2), "89");
  EXPECT_EQ(stream.read(stream.handle, buffer.data(), 8), 0);
  EXPECT_EQ(stream.read(stream.handle, buffer.data(), 0), 0);
  EXPECT_EQ(stream.read(stream.handle, buffer.data(), -1), -1);
}

TEST_F(FileStreamTest, SaysThatItCannotRead) {
  FileStream file = Open("ab");
  const engines::TPdfStream stream = file.Descriptor();
  char byte = 0;
  EXPECT_EQ(stream.read(stream.handle, &byte, 1), -1);
  EXPECT_EQ(stream.read(stream.handle, &byte, 0), 0);  // judged by itself
}

TEST_F(FileStreamTest, WritesAllOrSaysThatItCannot) {
  FileStream file = Open("wb+");
  const engines::TPdfStream stream = file.Descriptor();
  EXPECT_EQ(stream.write(stream.handle, "abcdef", 4), 4);
  EXPECT_EQ(stream.write(stream.handle, "x", 0), 0);
  EXPECT_EQ(stream.write(stream.handle, "x", -1), -1);
  stream.release(stream.handle);
  EXPECT_EQ(Content(), "abcd");
  EXPECT_EQ(file.CloseError(), 0);

  FileStream closed = Open("rb");
  const engines::TPdfStream input = closed.Descriptor();
  EXPECT_EQ(input.write(input.handle, "abcdef", 4), -1);
}

TEST_F(FileStreamTest, TellsWhyItCouldNotBeClosed) {
  std::FILE* full = std::fopen("/dev/full", "wb");
  if (full == nullptr) {
    GTEST_SKIP() << "needs /dev/full";
  }
  FileStream file{platform::FilePtr(full)};
  const engines::TPdfStream stream = file.Descriptor();
  EXPECT_EQ(stream.write(stream.handle, "abc", 3), 3);  // is in a buffer
  stream.release(stream.handle);
  EXPECT_EQ(file.CloseError(), ENOSPC);
  stream.release(stream.handle);  // there is no file any more
}

}  // namespace
}  // namespace TarnixTools
