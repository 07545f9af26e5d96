#include <string>

#include <gtest/gtest.h>

#include "pdf/Error.h"
#include "pdf/filters/FlateReader.h"

namespace TarnixTools::pdf {
namespace {

std::string Deflated(const std::string& data) {
  std::string out;
  DeflateTo(out, data, 6);
  return out;
}

std::string Noise(std::size_t size) {
  std::string noise(size, '\0');
  unsigned state = 1;
  for (char& c : noise) {
    state = state * 1664525 + 1013904223;
    c = static_cast<char>(state >> 28);
  }
  return noise;
}

// Read in pieces of a size that fits nothing.
std::string ReadAll(const std::string& encoded, const FilterParameters& parameters = {}) {
  const auto reader = FlateReader::Open(encoded, parameters);
  if (reader == nullptr) {
    return "null";
  }
  std::string all;
  std::string piece(977, '\0');
  while (const std::size_t count = reader->Read(piece.data(), piece.size())) {
    all += piece.substr(0, count);
  }
  return all;
}

TEST(FlateReader, ReadsWhatDecodeDecodes) {
  for (const std::size_t size : {0U, 1U, 977U, 65'536U, 300'001U}) {
    const std::string data = Noise(size);
    EXPECT_EQ(ReadAll(Deflated(data)), data) << size;
  }
}

TEST(FlateReader, UndoesPredictorsAcrossBlocks) {
  for (const std::int64_t predictor : {2, 10, 15}) {
    for (const std::int64_t columns : {1, 7, 100, 70'000}) {
      const FilterParameters parameters{.predictor = predictor, .colors = 3, .columns = columns};
      // As rows with tags from 0 to 4 and beyond, the last one cut.
      const std::string encoded = Deflated(Noise(500'003));
      EXPECT_EQ(ReadAll(encoded, parameters),
                Decode({{FilterKind::kFlate, parameters}}, encoded, 1U << 20U).data)
          << predictor << " " << columns;
    }
  }
}

TEST(FlateReader, EndsWhereDataIsCutOrDamaged) {
  const std::string data = Noise(300'000);
  std::string encoded = Deflated(data);
  const std::string cut = ReadAll(encoded.substr(0, encoded.size() / 2));
  EXPECT_GT(cut.size(), data.size() / 3);
  EXPECT_EQ(cut, data.substr(0, cut.size()));
  encoded[encoded.size() / 2] ^= 0x55;
  EXPECT_LE(ReadAll(encoded).size(), 2 * data.size());
}

TEST(FlateReader, LeavesOddDataToDecode) {
  EXPECT_EQ(ReadAll("no header"), "null");
  EXPECT_EQ(ReadAll(""), "null");
  EXPECT_EQ(ReadAll(Deflated("a"), {.predictor = 15, .columns = 1 << 30}), "null");
  EXPECT_THROW(ReadAll(Deflated("a"), {.predictor = 15, .columns = -1}), Error);
}

TEST(FlateReader, ReadsByteByByte) {
  const std::string data = "abcabcabc" + Noise(300);
  for (const std::size_t size : {1U, 2U, 3U}) {
    const std::string encoded = Deflated(data);
    const auto reader = FlateReader::Open(encoded, {});
    ASSERT_NE(reader, nullptr);
    std::string all;
    std::string piece(size, '\0');
    while (const std::size_t count = reader->Read(piece.data(), size)) {
      EXPECT_TRUE(count == size || all.size() + count == data.size());
      all += piece.substr(0, count);
    }
    EXPECT_EQ(all, data);
  }
}

}  // namespace
}  // namespace TarnixTools::pdf
