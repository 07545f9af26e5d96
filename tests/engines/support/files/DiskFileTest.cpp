#include <cstdio>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "engines/support/files/DiskFile.h"
#include "pdf/Error.h"
#include "support/TempDir.h"

namespace TarnixTools::engines {
namespace {

using platform::WidePath;

class DiskFile : public ::testing::Test {
 protected:
  std::string Write(const std::string& bytes) const {
    return testing::WriteBytes(directory_.Path("file"), bytes);
  }

  const testing::TempDir directory_;
};

template <typename Function>
pdf::ErrorCode CodeOf(Function&& function) {
  try {
    function();
  } catch (const pdf::Error& error) {
    return error.code();
  }
  return pdf::ErrorCode::kInternal;
}

TEST_F(DiskFile, IsReadAnywhere) {
  DiskSource source(OpenShared(WidePath(Write("0123456789"))));
  EXPECT_EQ(source.Size(), 10U);
  std::string buffer(4, '\0');
  EXPECT_EQ(source.ReadAt(3, buffer.data(), 4), 4U);
  EXPECT_EQ(buffer, "3456");
  EXPECT_EQ(source.ReadAt(8, buffer.data(), 4), 2U);
  EXPECT_EQ(buffer.substr(0, 2), "89");
  EXPECT_EQ(source.ReadAt(10, buffer.data(), 4), 0U);
}

TEST_F(DiskFile, IsSharedWhateverItsPosition) {
  const std::shared_ptr<std::FILE> file = OpenShared(WidePath(Write("0123456789")));
  DiskSource first(file);
  DiskSource second(file);
  std::fseek(file.get(), 7, SEEK_SET);
  char byte = 0;
  EXPECT_EQ(first.ReadAt(2, &byte, 1), 1U);
  EXPECT_EQ(byte, '2');
  EXPECT_EQ(second.ReadAt(9, &byte, 1), 1U);
  EXPECT_EQ(byte, '9');
  EXPECT_EQ(std::ftell(file.get()), 7);
}

TEST_F(DiskFile, IsNoneWhereItCannotBeOpened) {
  EXPECT_EQ(OpenShared(WidePath(directory_.Path("missing"))), nullptr);
}

TEST_F(DiskFile, FailsWhereItCannotBeRead) {
  const std::shared_ptr<std::FILE> write_only(std::fopen(directory_.Path("written").c_str(), "wb"),
                                              &std::fclose);
  DiskSource source(write_only);
  char byte = 0;
  EXPECT_EQ(CodeOf([&] { source.ReadAt(0, &byte, 1); }), pdf::ErrorCode::kReadFailed);
}

TEST_F(DiskFile, IsWrittenFromItsPositionOn) {
  const std::string path = directory_.Path("out");
  {
    const std::shared_ptr<std::FILE> file(std::fopen(path.c_str(), "wb"), &std::fclose);
    std::fputs("before ", file.get());
    DiskSink sink(file.get());
    sink.Write("one ");
    sink.Write("two");
  }
  EXPECT_EQ(testing::ReadBytes(path), "before one two");
}

TEST_F(DiskFile, FailsWhereItCannotBeWritten) {
  const std::shared_ptr<std::FILE> read_only = OpenShared(WidePath(Write("x")));
  DiskSink sink(read_only.get());
  EXPECT_EQ(CodeOf([&] { sink.Write("more"); }), pdf::ErrorCode::kWriteFailed);
}

TEST(ScratchFile, IsWrittenAndReadAgain) {
  const std::shared_ptr<std::FILE> file = OpenScratchFile();
  DiskSink(file.get()).Write("bytes");
  ASSERT_EQ(std::fflush(file.get()), 0);
  DiskSource source(file);
  EXPECT_EQ(source.Size(), 5U);
  std::string buffer(5, '\0');
  EXPECT_EQ(source.ReadAt(0, buffer.data(), 5), 5U);
  EXPECT_EQ(buffer, "bytes");
}

TEST(ScratchFile, HasAllThatAFunctionWrites) {
  const std::shared_ptr<std::FILE> file = WriteScratchFile([](pdf::ByteSink& sink) {
    sink.Write("one ");
    sink.Write("two");
  });
  DiskSource source(file);
  std::string buffer(7, '\0');
  EXPECT_EQ(source.ReadAt(0, buffer.data(), 7), 7U);
  EXPECT_EQ(buffer, "one two");
  EXPECT_EQ(source.Size(), 7U);
}

}  // namespace
}  // namespace TarnixTools::engines
