#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <zlib.h>

#include "pdf/Error.h"
#include "pdf/filters/Filters.h"

namespace TarnixTools::pdf {
namespace {

constexpr std::size_t kAmple = std::size_t{1} << 30;

Decoded Inflate(std::string_view encoded, std::size_t max_bytes = kAmple) {
  return Decode({{FilterKind::kFlate, {}}}, encoded, max_bytes);
}

// Deflated by zlib, so that what is tested does not only fit itself.
std::string ZlibDeflated(const std::string& data, int level = 6) {
  uLongf size = compressBound(data.size());
  std::string out(size, '\0');
  EXPECT_EQ(compress2(reinterpret_cast<Bytef*>(out.data()), &size,
                      reinterpret_cast<const Bytef*>(data.data()), data.size(), level),
            Z_OK);
  out.resize(size);
  return out;
}

std::string SomeText(std::size_t size) {
  std::mt19937 random(7);
  std::string text;
  while (text.size() < size) {
    text += std::to_string(random() % 1000) + " 0 obj << /Type /Page >>\n";
  }
  text.resize(size);
  return text;
}

TEST(Flate, DecodesWhatZlibWrote) {
  for (const std::size_t size : {1, 100, 4096, 70'000, 3'000'000}) {
    const std::string text = SomeText(size);
    for (const int level : {0, 1, 9}) {
      const Decoded decoded = Inflate(ZlibDeflated(text, level));
      EXPECT_TRUE(decoded.complete);
      EXPECT_EQ(decoded.data, text);
    }
  }
}

TEST(Flate, DecodesDataBeyondTheFirstGuesses) {
  // Expands a thousandfold: every guess of the size but the last is too small.
  const std::string zeros(90'000'000, '\0');
  const Decoded decoded = Inflate(ZlibDeflated(zeros));
  EXPECT_TRUE(decoded.complete);
  EXPECT_EQ(decoded.data, zeros);
}

TEST(Flate, WritesWhatZlibReads) {
  const std::string text = SomeText(50'000);
  for (int level = 1; level <= 12; ++level) {
    std::string out = "before";
    DeflateTo(out, text, level);
    ASSERT_EQ(out.substr(0, 6), "before");
    std::string back(text.size(), '\0');
    uLongf size = back.size();
    ASSERT_EQ(uncompress(reinterpret_cast<Bytef*>(back.data()), &size,
                         reinterpret_cast<const Bytef*>(out.data() + 6), out.size() - 6),
              Z_OK);
    EXPECT_EQ(back, text);
  }
}

TEST(Flate, WritesEmptyData) {
  std::string out;
  DeflateTo(out, "", 6);
  EXPECT_FALSE(out.empty());
  const Decoded decoded = Inflate(out);
  EXPECT_EQ(decoded.data, "");
  EXPECT_TRUE(decoded.complete);
}

TEST(Flate, ForgivesAChecksumThatIsWrongOrMissing) {
  std::string deflated = ZlibDeflated("the quick brown fox");
  deflated.back() = static_cast<char>(deflated.back() ^ 1);
  EXPECT_TRUE(Inflate(deflated).complete);
  EXPECT_FALSE(Inflate(deflated).is_well_wrapped);
  EXPECT_EQ(Inflate(deflated).data, "the quick brown fox");
  deflated.resize(deflated.size() - 4);
  EXPECT_TRUE(Inflate(deflated).is_well_wrapped);
  EXPECT_TRUE(Inflate(deflated).complete);
  EXPECT_EQ(Inflate(deflated).data, "the quick brown fox");
}

TEST(Flate, IgnoresBytesAfterTheEnd) {
  const Decoded decoded = Inflate(ZlibDeflated("the quick brown fox") + "\r\nendstream");
  EXPECT_TRUE(decoded.complete);
  EXPECT_TRUE(decoded.is_well_wrapped);
  EXPECT_EQ(decoded.data, "the quick brown fox");
}

TEST(Flate, SkipsWhiteSpaceBeforeTheHeader) {
  const Decoded decoded = Inflate("\r\n " + ZlibDeflated("the quick brown fox"));
  EXPECT_TRUE(decoded.complete);
  EXPECT_EQ(decoded.data, "the quick brown fox");
}

TEST(Flate, DecodesWithoutAHeader) {
  const std::string text = SomeText(10'000);
  const Decoded decoded = Inflate(ZlibDeflated(text).substr(2));
  EXPECT_TRUE(decoded.complete);
  EXPECT_FALSE(decoded.is_well_wrapped);
  EXPECT_EQ(decoded.data, text);
}

TEST(Flate, DecodesBehindADamagedHeader) {
  std::string deflated = ZlibDeflated(SomeText(10'000));
  deflated[0] = '\xFF';
  deflated[1] = '\xFF';
  const Decoded decoded = Inflate(deflated);
  EXPECT_TRUE(decoded.complete);
  EXPECT_EQ(decoded.data, SomeText(10'000));
}

TEST(Flate, KeepsWhatComesBeforeACut) {
  const std::string text = SomeText(200'000);
  const std::string deflated = ZlibDeflated(text);
  const Decoded decoded = Inflate(deflated.substr(0, deflated.size() / 2));
  EXPECT_FALSE(decoded.complete);
  EXPECT_GT(decoded.data.size(), text.size() / 4);
  EXPECT_EQ(decoded.data, text.substr(0, decoded.data.size()));
}

TEST(Flate, KeepsWhatComesBeforeDamage) {
  const std::string text = SomeText(200'000);
  std::string stored = ZlibDeflated(text, 0);
  // A stored block: one byte, its length, the complement of that, its data (RFC 1951, 3.2.4).
  const std::size_t first_block = 2;
  const std::size_t length = static_cast<unsigned char>(stored[first_block + 1]) +
                             256U * static_cast<unsigned char>(stored[first_block + 2]);
  const std::size_t second_block = first_block + 5 + length;
  stored.at(second_block + 1) = static_cast<char>(stored.at(second_block + 1) ^ 0x10);
  const Decoded decoded = Inflate(stored);
  EXPECT_FALSE(decoded.complete);
  EXPECT_GT(length, 1000U);
  EXPECT_TRUE(decoded.data == text.substr(0, length));
}

TEST(Flate, SurvivesEveryCut) {
  const std::string text = SomeText(3000);
  const std::string deflated = ZlibDeflated(text);
  for (std::size_t size = 1; size < deflated.size() - 4; ++size) {
    const Decoded decoded = Inflate(deflated.substr(0, size));
    EXPECT_FALSE(decoded.complete) << size;
    EXPECT_EQ(decoded.data, text.substr(0, decoded.data.size()));
  }
}

TEST(Flate, GivesNothingForWhatIsNoDeflateData) {
  const Decoded decoded = Inflate("\xFF\xFF\xFF\xFF\xFF\xFF");
  EXPECT_FALSE(decoded.complete);
  EXPECT_EQ(decoded.data, "");
  EXPECT_FALSE(Inflate("\x78").complete);
  EXPECT_FALSE(Inflate("\x78\x9C").complete);
}

TEST(Flate, StopsAtTheLimitOnEitherPath) {
  const std::string deflated = ZlibDeflated(std::string(100'000, 'a'));
  EXPECT_THROW(Inflate(deflated, 99'999), Error);
  EXPECT_EQ(Inflate(deflated, 100'000).data.size(), 100'000U);
  // Cut, it goes piece by piece.
  EXPECT_THROW(Inflate(deflated.substr(0, deflated.size() - 6), 10'000), Error);
}

}  // namespace
}  // namespace TarnixTools::pdf
