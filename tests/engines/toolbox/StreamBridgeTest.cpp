// Files of the caller, and what is said when they do not do as they should.
#include <string>

#include <gtest/gtest.h>

#include "engines/toolbox/StreamBridge.h"
#include "pdf/Error.h"
#include "support/MemoryFile.h"

namespace TarnixTools::engines::toolbox {
namespace {

// Code and text of the error that the call throws.
template <typename Call>
std::pair<pdf::ErrorCode, std::string> ErrorOf(Call&& call) {
  try {
    call();
  } catch (const pdf::Error& error) {
    return {error.code(), error.what()};
  }
  return {pdf::ErrorCode::kInternal, "none"};
}

using Failure = std::pair<pdf::ErrorCode, std::string>;

TEST(StreamBridge, ReadsWhereItIsAsked) {
  MemoryFile file{"0123456789"};
  StreamSource source(file.Descriptor());
  EXPECT_EQ(source.Size(), 10U);
  char buffer[6] = {};
  EXPECT_EQ(source.ReadAt(2, buffer, 3), 3U);
  EXPECT_EQ(std::string(buffer), "234");
  EXPECT_EQ(source.ReadAt(5, buffer, 2), 2U);  // where the file stands already
  EXPECT_EQ(std::string(buffer), "564");
  EXPECT_EQ(source.ReadAt(0, buffer, 1), 1U);
  EXPECT_EQ(std::string(buffer), "064");
  EXPECT_EQ(source.ReadAt(8, buffer, 5), 2U);
  EXPECT_EQ(std::string(buffer), "894");
  EXPECT_EQ(source.ReadAt(10, buffer, 5), 0U);
}

TEST(StreamBridge, TellsThatThereIsNoLength) {
  MemoryFile file;
  TPdfStream stream = file.Descriptor();
  stream.get_length = [](void*) { return std::int64_t{-1}; };
  EXPECT_EQ(ErrorOf([&] { StreamSource source(stream); }),
            (Failure{pdf::ErrorCode::kReadFailed, "the length of the file cannot be had"}));
  stream.get_length = [](void*) { return std::int64_t{0}; };
  EXPECT_EQ(StreamSource(stream).Size(), 0U);
}

TEST(StreamBridge, TellsThatItCannotGoThere) {
  MemoryFile file{"0123456789"};
  TPdfStream stream = file.Descriptor();
  stream.seek = [](void*, std::int64_t) { return 0; };
  StreamSource source(stream);
  char buffer[2] = {};
  EXPECT_EQ(ErrorOf([&] { source.ReadAt(1, buffer, 2); }),
            (Failure{pdf::ErrorCode::kReadFailed, "the file cannot be positioned"}));
}

TEST(StreamBridge, SeeksAgainAfterAReadThatFailed) {
  MemoryFile file{"0123456789"};
  StreamSource source(file.Descriptor());
  char buffer[3] = {};
  EXPECT_EQ(source.ReadAt(4, buffer, 2), 2U);
  file.reads_fail = true;
  EXPECT_EQ(ErrorOf([&] { source.ReadAt(6, buffer, 2); }),
            (Failure{pdf::ErrorCode::kReadFailed, "the file cannot be read"}));
  file.reads_fail = false;
  file.position = 0;
  EXPECT_EQ(source.ReadAt(6, buffer, 2), 2U);
  EXPECT_EQ(std::string(buffer), "67");
}

TEST(StreamBridge, TellsThatNotAllWasWritten) {
  MemoryFile file;
  file.room = 4;
  StreamSink sink(file.Descriptor());
  sink.Write("abcd");
  EXPECT_EQ(file.bytes, "abcd");
  EXPECT_EQ(ErrorOf([&] { sink.Write("e"); }),
            (Failure{pdf::ErrorCode::kWriteFailed, "the file cannot be written"}));
}

}  // namespace
}  // namespace TarnixTools::engines::toolbox
