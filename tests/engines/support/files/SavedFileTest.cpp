#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/support/files/SavedFile.h"
#include "pdf/Error.h"
#include "support/TempDir.h"

namespace TarnixTools::engines {
namespace {

using ::testing::ElementsAre;

// Gives no more than so many bytes at once, and none from a place on.
class SlowSource : public pdf::MemorySource {
 public:
  SlowSource(std::string_view bytes, std::size_t most, std::uint64_t end)
      : MemorySource(bytes), most_(most), end_(end) {}

  std::size_t ReadAt(std::uint64_t offset, char* buffer, std::size_t size) override {
    asked.push_back(size);
    return offset >= end_ ? 0 : MemorySource::ReadAt(offset, buffer, std::min(size, most_));
  }

  std::vector<std::size_t> asked;

 private:
  std::size_t most_;
  std::uint64_t end_;
};

TEST(CopyAll, CopiesWhatComesInPieces) {
  SlowSource source("0123456789", 4, 99);
  pdf::StringSink sink;
  CopyAll(source, sink);
  EXPECT_EQ(sink.bytes(), "0123456789");
  EXPECT_THAT(source.asked, ElementsAre(262'144, 262'144, 262'144));
  SlowSource by_bytes("abc", 1, 99);
  pdf::StringSink other;
  CopyAll(by_bytes, other);
  EXPECT_EQ(other.bytes(), "abc");
}

TEST(CopyAll, FailsWhereTheFileHasBecomeShorter) {
  SlowSource source("0123456789", 4, 8);
  pdf::StringSink sink;
  try {
    CopyAll(source, sink);
    ADD_FAILURE() << "it should have failed";
  } catch (const pdf::Error& error) {
    EXPECT_EQ(error.code(), pdf::ErrorCode::kSourceChanged);
    EXPECT_STREQ(error.what(), "the file has become shorter");
  }
  EXPECT_EQ(sink.bytes(), "01234567");
}

class SavedFileTest : public ::testing::Test {
 protected:
  SavedFile Create() const {
    return SavedFile(*platform::OutputFile::Create(platform::WidePath(directory_.Path("a"))));
  }

  const testing::TempDir directory_;
};

TEST_F(SavedFileTest, HasItsNameWhenItIsComplete) {
  SavedFile file = Create();
  EXPECT_EQ(file.size(), 0);
  file.sink().Write("12345");
  EXPECT_EQ(file.size(), 5);
  EXPECT_TRUE(file.Empty());
  EXPECT_EQ(file.size(), 0);
  file.sink().Write("abc");
  EXPECT_FALSE(testing::Exists(directory_.Path("a")));
  file.Complete();
  EXPECT_EQ(testing::ReadBytes(directory_.Path("a")), "abc");
}

TEST_F(SavedFileTest, FailsWhereItCannotBeCompleted) {
  SavedFile file = Create();
  file.sink().Write("12345");
  std::filesystem::remove_all(directory_.Path());
  try {
    file.Complete();
    ADD_FAILURE() << "it should have failed";
  } catch (const pdf::Error& error) {
    EXPECT_EQ(error.code(), pdf::ErrorCode::kWriteFailed);
    EXPECT_STREQ(error.what(), "the file cannot be completed");
    EXPECT_EQ(error.system_error(), ENOENT);
  }
}

}  // namespace
}  // namespace TarnixTools::engines
