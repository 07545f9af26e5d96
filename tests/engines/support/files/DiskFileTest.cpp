#include <cerrno>
#include <cstdio>
#include <memory>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "engines/support/files/DiskFile.h"
#include "pdf/Error.h"
#include "support/FileSizeLimit.h"
#include "support/OpenFilesLimit.h"
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

struct Thrown {
  bool operator==(const Thrown&) const = default;

  pdf::ErrorCode code = pdf::ErrorCode::kInternal;
  std::string message;
  int system_error = 0;
};

template <typename Function>
Thrown ErrorOf(Function&& function) {
  try {
    function();
  } catch (const pdf::Error& error) {
    return {error.code(), error.what(), error.system_error()};
  }
  return {};
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
  EXPECT_EQ(ErrorOf([&] { source.ReadAt(0, &byte, 1); }),
            (Thrown{pdf::ErrorCode::kReadFailed, "the file cannot be read", EBADF}));
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
  EXPECT_EQ(ErrorOf([&] { sink.Write("more"); }),
            (Thrown{pdf::ErrorCode::kWriteFailed, "the file cannot be written", EBADF}));
}

// A file without one has no length.
TEST_F(DiskFile, FailsWhereItHasNoLength) {
  std::FILE* const memory = fmemopen(nullptr, 10, "r+");
  const std::shared_ptr<std::FILE> file(memory, &std::fclose);
  EXPECT_EQ(ErrorOf([&] { DiskSource source(file); }),
            (Thrown{pdf::ErrorCode::kReadFailed, "the length of the file cannot be had", EBADF}));
}

TEST_F(DiskFile, IsNotWrittenOnceTheJobIsToStop) {
  const JobWatch watch([](const std::string&, std::int64_t, std::int64_t) { return false; }, "job");
  const std::shared_ptr<std::FILE> file(std::fopen(directory_.Path("out").c_str(), "wb"),
                                        &std::fclose);
  EXPECT_EQ(ErrorOf([&] { DiskSink(file.get()).Write("x"); }),
            (Thrown{pdf::ErrorCode::kWriteFailed, "the job is to stop"}));
}

// By 64 kilobytes, of which there are three, and some bytes.
TEST(ToldSink, TellsHowFarItIs) {
  std::pair<std::int64_t, std::int64_t> last;
  const JobWatch watch(
      [&](const std::string&, std::int64_t done, std::int64_t of) {
        last = {done, of};
        return true;
      },
      "job");
  pdf::StringSink bytes;
  ToldSink sink(bytes, 3 * 65'536 + 100);
  const auto told_of = [&](std::size_t count) {
    sink.Write(std::string(count, 'x'));
    return std::to_string(last.first) + "/" + std::to_string(last.second);
  };
  EXPECT_EQ(told_of(65'535), "0/3");
  EXPECT_EQ(told_of(1), "1/3");
  EXPECT_EQ(told_of(2 * 65'536 - 1), "2/3");
  EXPECT_EQ(told_of(1), "3/3");
  EXPECT_EQ(bytes.bytes().size(), 3U * 65'536);
}

TEST(ScratchFile, FailsWhereNoFileCanBeMade) {
  const Thrown thrown = ErrorOf([] {
    const testing::OpenFilesLimit none(0);
    OpenScratchFile();
  });
  EXPECT_EQ(thrown,
            (Thrown{pdf::ErrorCode::kWriteFailed, "no temporary file can be made", EMFILE}));
}

TEST(ScratchFile, FailsWhereItCannotBeCompleted) {
  const testing::FileSizeLimit limit(3);
  EXPECT_EQ(ErrorOf([] { WriteScratchFile([](pdf::ByteSink& sink) { sink.Write("bytes"); }); }),
            (Thrown{pdf::ErrorCode::kWriteFailed, "the file cannot be completed", EFBIG}));
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
