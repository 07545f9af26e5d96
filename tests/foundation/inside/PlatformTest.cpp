#include <gtest/gtest.h>

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

}  // namespace
}  // namespace TarnixTools::platform
