#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/files/ByteReader.h"

namespace TarnixTools::engines {
namespace {

// A source that counts how often it is read, and may claim more than it has.
class CountingSource : public pdf::MemorySource {
 public:
  explicit CountingSource(std::string_view bytes, std::uint64_t claimed = 0)
      : MemorySource(bytes), claimed_(claimed) {}

  std::uint64_t Size() const override { return claimed_ != 0 ? claimed_ : MemorySource::Size(); }

  std::size_t ReadAt(std::uint64_t offset, char* buffer, std::size_t size) override {
    ++reads_;
    return MemorySource::ReadAt(offset, buffer, size);
  }

  int reads() const { return reads_; }

 private:
  std::uint64_t claimed_;
  int reads_ = 0;
};

std::string ManyBytes(std::size_t count) {
  std::string bytes;
  for (std::size_t i = 0; i < count; ++i) {
    bytes += static_cast<char>(i * 7 % 251);
  }
  return bytes;
}

TEST(ByteReader, ReadsNumbersInBothOrders) {
  pdf::MemorySource source("\x01\x02\x03\x04\x05\x06\x07\x08");
  ByteReader reader(source);
  EXPECT_EQ(reader.Byte(2), 3);
  EXPECT_EQ(reader.Number16(0), 0x0102);
  EXPECT_EQ(reader.Number16(0, ByteOrder::kLittle), 0x0201);
  EXPECT_EQ(reader.Number32(1), 0x02030405U);
  EXPECT_EQ(reader.Number32(1, ByteOrder::kLittle), 0x05040302U);
  EXPECT_EQ(reader.Number64(0), 0x0102030405060708U);
  EXPECT_EQ(reader.Number64(0, ByteOrder::kLittle), 0x0807060504030201U);
}

TEST(ByteReader, ReadsZerosBeyondTheEnd) {
  pdf::MemorySource source("\x01\x02");
  ByteReader reader(source);
  EXPECT_EQ(reader.Number32(0), 0x01020000U);
  EXPECT_EQ(reader.Number32(0, ByteOrder::kLittle), 0x0201U);
  EXPECT_EQ(reader.Byte(2), 0);
  EXPECT_EQ(reader.Number64(~std::uint64_t{0}), 0U);
}

TEST(ByteReader, TellsWhatIsThere) {
  pdf::MemorySource source("abcd");
  const ByteReader reader(source);
  EXPECT_EQ(reader.size(), 4U);
  EXPECT_EQ(&reader.source(), &source);
  EXPECT_TRUE(reader.Has(0, 4));
  EXPECT_TRUE(reader.Has(4, 0));
  EXPECT_FALSE(reader.Has(1, 4));
  EXPECT_FALSE(reader.Has(5, 0));
  EXPECT_FALSE(reader.Has(1, ~std::uint64_t{0}));
}

TEST(ByteReader, ShowsBytesThroughItsWindow) {
  const std::string bytes = ManyBytes(3 * ByteReader::kWindow);
  CountingSource source(bytes);
  ByteReader reader(source);
  EXPECT_EQ(reader.View(0, 10), bytes.substr(0, 10));
  EXPECT_EQ(reader.View(ByteReader::kWindow - 5, 5), bytes.substr(ByteReader::kWindow - 5, 5));
  EXPECT_EQ(source.reads(), 1);
  EXPECT_EQ(reader.View(ByteReader::kWindow - 5, 6), bytes.substr(ByteReader::kWindow - 5, 6));
  EXPECT_EQ(source.reads(), 2);
  EXPECT_EQ(reader.View(7, 3), bytes.substr(7, 3));  // back again
  EXPECT_EQ(source.reads(), 3);
  EXPECT_EQ(reader.View(0, bytes.size()).size(), ByteReader::kWindow);
  EXPECT_EQ(reader.View(bytes.size() - 2, 10), bytes.substr(bytes.size() - 2));
  EXPECT_EQ(reader.View(bytes.size(), 1), "");
}

TEST(ByteReader, GivesAllThatCanBeHadAtOnce) {
  const std::string bytes = ManyBytes(ByteReader::kWindow + 100);
  CountingSource source(bytes);
  ByteReader reader(source);
  EXPECT_EQ(reader.Available(0).size(), ByteReader::kWindow);
  EXPECT_EQ(reader.Available(50).size(), ByteReader::kWindow - 50);
  EXPECT_EQ(source.reads(), 1);
  EXPECT_EQ(reader.Available(ByteReader::kWindow), bytes.substr(ByteReader::kWindow));
  EXPECT_EQ(reader.Available(bytes.size()), "");
}

TEST(ByteReader, ReadsAnyNumberOfBytes) {
  const std::string bytes = ManyBytes(2 * ByteReader::kWindow);
  CountingSource source(bytes);
  ByteReader reader(source);
  EXPECT_EQ(reader.Read(3, bytes.size()), bytes.substr(3));
  EXPECT_EQ(reader.Read(bytes.size(), 5), "");
  std::vector<unsigned char> buffer(bytes.size());
  EXPECT_EQ(reader.ReadInto(5, buffer.data(), bytes.size()), bytes.size() - 5);
  EXPECT_EQ(std::string(buffer.begin(), buffer.end() - 5), bytes.substr(5));
  EXPECT_EQ(reader.ReadInto(bytes.size(), buffer.data(), 1), 0U);
  // Small pieces come through the window.
  const int reads = source.reads();
  EXPECT_EQ(reader.ReadInto(0, buffer.data(), 100), 100U);
  EXPECT_EQ(reader.ReadInto(100, buffer.data(), 100), 100U);
  EXPECT_EQ(source.reads(), reads + 1);
  EXPECT_EQ(std::string(buffer.begin(), buffer.begin() + 100), bytes.substr(100, 100));
}

TEST(ByteReader, GetsAlongWithASourceThatHasBecomeShorter) {
  CountingSource source("abc", 1000);
  ByteReader reader(source);
  EXPECT_EQ(reader.View(1, 10), "bc");
  EXPECT_EQ(reader.View(500, 10), "");
  EXPECT_EQ(reader.Available(500), "");
  EXPECT_EQ(reader.Read(2, 10), "c");
  EXPECT_EQ(reader.Number32(1), 0x62630000U);
}

}  // namespace
}  // namespace TarnixTools::engines
