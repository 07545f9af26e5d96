// The content of one open file over that of another.
#include <cerrno>
#include <string>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "foundation/FileCopy.h"
#include "support/FileSizeLimit.h"
#include "support/TempDir.h"

namespace TarnixTools::platform {
namespace {

using testing::ReadBytes;
using testing::WriteBytes;

constexpr std::size_t kBlock = 262144;  // what is copied at once

class FileCopyTest : public ::testing::Test {
 protected:
  ~FileCopyTest() override {
    for (const int descriptor : opened_) {
      close(descriptor);
    }
  }

  // A file of this name and content, opened.
  int Open(const std::string& name, const std::string& content, int flags = O_RDWR) {
    opened_.push_back(open(WriteBytes(directory_.Path(name), content).c_str(), flags | O_CLOEXEC));
    EXPECT_GE(opened_.back(), 0);
    return opened_.back();
  }

  std::string Content(const std::string& name) const { return ReadBytes(directory_.Path(name)); }

  // No two neighbouring bytes are alike.
  static std::string Bytes(std::size_t size) {
    std::string bytes(size, '\0');
    for (std::size_t i = 0; i < size; ++i) {
      bytes[i] = static_cast<char>('a' + i % 23);
    }
    return bytes;
  }

  testing::TempDir directory_;
  std::vector<int> opened_;
};

TEST_F(FileCopyTest, TakesThePlaceOfAllThatWasThere) {
  using Sizes = std::pair<std::size_t, std::size_t>;
  for (const auto& [size, old_size] :
       {Sizes(0, 7), Sizes(1, 0), Sizes(kBlock - 1, 4 * kBlock), Sizes(kBlock, kBlock),
        Sizes(kBlock + 1, 7), Sizes(3 * kBlock + 5, 0)}) {
    const int from = Open("from", Bytes(size), O_RDONLY);
    const int to = Open("to", std::string(old_size, '-'));
    EXPECT_TRUE(CopyOver(from, to)) << size;
    EXPECT_EQ(Content("to"), Bytes(size)) << size;
  }
}

TEST_F(FileCopyTest, DoesNotDependOnWhereTheFilesStand) {
  const int from = Open("from", "content", O_RDONLY);
  const int to = Open("to", "-----------");
  EXPECT_EQ(lseek(from, 3, SEEK_SET), 3);
  EXPECT_EQ(lseek(to, 5, SEEK_SET), 5);
  EXPECT_TRUE(CopyOver(from, to));
  EXPECT_EQ(Content("to"), "content");
  EXPECT_EQ(lseek(from, 0, SEEK_CUR), 3);
}

TEST_F(FileCopyTest, LeavesTheOldContentWhereThereIsNoRoom) {
  const int from = Open("from", Bytes(5000), O_RDONLY);
  const int to = Open("to", "old");
  {
    const testing::FileSizeLimit limit(1000);
    errno = 0;
    EXPECT_FALSE(CopyOver(from, to));
    EXPECT_EQ(errno, EFBIG);
  }
  EXPECT_EQ(Content("to"), "old");
}

TEST_F(FileCopyTest, FailsWithoutAFileToReadOrToWrite) {
  EXPECT_FALSE(CopyOver(-1, Open("to", "old")));
  EXPECT_FALSE(CopyOver(Open("from", "new", O_RDONLY), -1));
  EXPECT_FALSE(CopyOver(Open("from", "new", O_WRONLY), Open("to", "old")));
  EXPECT_EQ(Content("to"), "old");
  EXPECT_FALSE(CopyOver(Open("from", "new", O_RDONLY), Open("to", "old", O_RDONLY)));
  EXPECT_EQ(Content("to"), "old");
}

TEST_F(FileCopyTest, KnowsWhetherTheFileIsOpenElsewhere) {
  const int file = Open("file", "content");
  Open("other", "content");
  EXPECT_FALSE(IsOpenElsewhere(file));
  const std::string link = directory_.Path("link");
  ASSERT_EQ(::link(directory_.Path("file").c_str(), link.c_str()), 0);
  EXPECT_FALSE(IsOpenElsewhere(file));
  const int again = open(link.c_str(), O_RDONLY | O_CLOEXEC);
  ASSERT_GE(again, 0);
  EXPECT_TRUE(IsOpenElsewhere(file));
  EXPECT_TRUE(IsOpenElsewhere(again));
  close(again);
  EXPECT_FALSE(IsOpenElsewhere(file));
  EXPECT_TRUE(IsOpenElsewhere(-1)) << "nothing is known of it";
}

}  // namespace
}  // namespace TarnixTools::platform
