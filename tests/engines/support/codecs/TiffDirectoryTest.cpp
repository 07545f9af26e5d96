#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/support/codecs/TiffDirectory.h"
#include "support/TestImages.h"

namespace TarnixTools::engines {

namespace {

using ::testing::ElementsAre;
using testing::Little16;
using testing::Little32;

// The structure of a file, and what it is read with.
class Structure {
 public:
  explicit Structure(std::string bytes, std::size_t most = 100)
      : bytes_(std::move(bytes)),
        source_(bytes_),
        reader_(source_),
        directories_(TiffStructure::Read(reader_, most)) {}

  const std::vector<TiffDirectory>& directories() const { return directories_; }

  ByteReader& reader() { return reader_; }

 private:
  std::string bytes_;
  pdf::MemorySource source_;
  ByteReader reader_;
  std::vector<TiffDirectory> directories_;
};

std::string Field(std::uint32_t tag, std::uint32_t type, std::uint32_t count,
                  const std::string& value) {
  return Little16(tag) + Little16(type) + Little32(count) + value;
}

std::string Directory(const std::vector<std::string>& fields, std::uint32_t next) {
  std::string bytes = Little16(static_cast<std::uint32_t>(fields.size()));
  for (const std::string& field : fields) {
    bytes += field;
  }
  return bytes + Little32(next);
}

const std::string kHeader = std::string("II*\0", 4) + Little32(8);

TEST(TiffDirectory, HasNumbersOfEachSize) {
  Structure file(kHeader +
                 Directory({Field(256, 3, 1, Little32(7)), Field(257, 4, 1, Little32(70'000)),
                            Field(258, 3, 2, Little16(8) + Little16(9)),
                            Field(259, 1, 2, std::string("\1\2\0\0", 4))},
                           0));
  ASSERT_EQ(file.directories().size(), 1U);
  const TiffDirectory& directory = file.directories().front();
  EXPECT_EQ(directory.offset(), 8U);
  EXPECT_FALSE(directory.is_cut());
  EXPECT_EQ(directory.Number(file.reader(), TiffTag::kImageWidth, 0), 7U);
  EXPECT_EQ(directory.Number(file.reader(), TiffTag::kImageLength, 0), 70'000U);
  EXPECT_THAT(directory.Numbers(file.reader(), TiffTag::kBitsPerSample, 9), ElementsAre(8, 9));
  EXPECT_THAT(directory.Numbers(file.reader(), TiffTag::kBitsPerSample, 1), ElementsAre(8));
  EXPECT_THAT(directory.Numbers(file.reader(), TiffTag::kCompression, 9), ElementsAre(1, 2));
  EXPECT_TRUE(directory.Has(TiffTag::kCompression));
  EXPECT_FALSE(directory.Has(TiffTag::kPhotometric));
  EXPECT_EQ(directory.Number(file.reader(), TiffTag::kPhotometric, 5), 5U);
}

// Of each type of a field there is a value of four bytes in place: as a number where the type is a
// whole one, as bytes where it has one byte for each.
TEST(TiffDirectory, HasValuesOfEachType) {
  std::vector<std::string> fields;
  for (std::uint32_t type = 0; type < 20; ++type) {
    fields.push_back(Field(300 + type, type, 1, Little32(0x04030201)));
    fields.push_back(Field(400 + type, type, 4, Little32(8)));
    fields.push_back(Field(500 + type, type, 2, Little32(8)));
  }
  Structure file(kHeader + Directory(fields, 0));
  ASSERT_EQ(file.directories().size(), 1U);
  const TiffDirectory& directory = file.directories().front();
  std::string text;
  for (std::uint32_t type = 0; type < 20; ++type) {
    text += std::to_string(type) + ":";
    for (const std::uint32_t first : {300U, 400U, 500U}) {
      const auto tag = static_cast<TiffTag>(first + type);
      text += directory.Has(tag) ? "" : " none";
      for (const std::uint64_t number : directory.Numbers(file.reader(), tag, 9)) {
        text += " " + std::to_string(number);
      }
      text += " " + std::to_string(directory.Bytes(file.reader(), tag, 4).size()) + "+" +
              std::to_string(directory.Bytes(file.reader(), tag, 3).size()) + ";";
    }
    text += "\n";
  }
  EXPECT_EQ(text,
            "0: none 0+0; none 0+0; none 0+0;\n"
            "1: 1 1+1; 8 0 0 0 4+0; 8 0 2+2;\n"
            "2: 1+1; 4+0; 2+2;\n"
            "3: 513 0+0; 60 300 0 1 0+0; 8 0 0+0;\n"
            "4: 67305985 0+0; 19660860 65536 33619968 26215427 0+0; 19660860 65536 0+0;\n"
            "5: 0+0; 0+0; 0+0;\n"
            "6: 1+1; 4+0; 2+2;\n"
            "7: 1+1; 4+0; 2+2;\n"
            "8: 0+0; 0+0; 0+0;\n"
            "9: 0+0; 0+0; 0+0;\n"
            "10: 0+0; 0+0; 0+0;\n"
            "11: 0+0; 0+0; 0+0;\n"
            "12: 0+0; 0+0; 0+0;\n"
            "13: 67305985 0+0; 19660860 65536 33619968 26215427 0+0; 19660860 65536 0+0;\n"
            "14: none 0+0; none 0+0; none 0+0;\n"
            "15: none 0+0; none 0+0; none 0+0;\n"
            "16: 0+0; 281474996371516 112594401649295360 2251799813947392 562949986189312 0+0; "
            "281474996371516 112594401649295360 0+0;\n"
            "17: 0+0; 0+0; 0+0;\n"
            "18: 0+0; 281474996371516 112594401649295360 2251799813947392 562949986189312 0+0; "
            "281474996371516 112594401649295360 0+0;\n"
            "19: none 0+0; none 0+0; none 0+0;\n");
}

TEST(TiffDirectory, HasValuesElsewhere) {
  const std::uint32_t end = 8 + 2 + 2 * 12 + 4;
  Structure file(
      kHeader +
      Directory({Field(282, 5, 1, Little32(end)), Field(34675, 7, 5, Little32(end + 8))}, 0) +
      Little32(600) + Little32(4) + "bytes");
  const TiffDirectory& directory = file.directories().front();
  EXPECT_EQ(directory.Ratio(file.reader(), TiffTag::kXResolution), 150);
  EXPECT_EQ(directory.Ratio(file.reader(), TiffTag::kYResolution), 0);
  EXPECT_EQ(directory.Bytes(file.reader(), TiffTag::kIccProfile, 100), "bytes");
  EXPECT_EQ(directory.Bytes(file.reader(), TiffTag::kIccProfile, 4), "");
  EXPECT_EQ(directory.Bytes(file.reader(), TiffTag::kXResolution, 100), "");
}

TEST(TiffDirectory, OverlooksFieldsThatCannotBe) {
  Structure file(kHeader +
                 Directory({Field(256, 99, 1, Little32(7)), Field(257, 4, 0xFFFFFFFF, Little32(8)),
                            Field(258, 3, 1, Little32(5)), Field(259, 4, 2, Little32(900))},
                           0));
  const TiffDirectory& directory = file.directories().front();
  EXPECT_FALSE(directory.Has(TiffTag::kImageWidth));
  EXPECT_FALSE(directory.Has(TiffTag::kImageLength));
  EXPECT_TRUE(directory.Has(TiffTag::kBitsPerSample));
  EXPECT_THAT(directory.Numbers(file.reader(), TiffTag::kCompression, 9), ElementsAre());
}

TEST(TiffDirectory, IsCutWhereTheDataEnds) {
  const std::string whole =
      kHeader + Directory({Field(256, 3, 1, Little32(7)), Field(257, 3, 1, Little32(8))}, 0);
  Structure file(whole.substr(0, whole.size() - 4 - 12));
  ASSERT_EQ(file.directories().size(), 1U);
  EXPECT_TRUE(file.directories()[0].is_cut());
  EXPECT_EQ(file.directories()[0].Number(file.reader(), TiffTag::kImageWidth, 0), 7U);
}

TEST(TiffStructure, FollowsTheChain) {
  const std::vector<std::string> field = {Field(256, 3, 1, Little32(7))};
  const std::string chain = kHeader + Directory(field, 8 + 18) + Directory(field, 8);
  EXPECT_EQ(Structure(chain).directories().size(), 2U);
  EXPECT_EQ(Structure(chain, 1).directories().size(), 1U);
  EXPECT_EQ(Structure(kHeader + Directory({}, 0)).directories().size(), 0U);
  EXPECT_EQ(Structure(kHeader).directories().size(), 0U);
}

// Each directory has 4,000 fields and starts four bytes behind the one before.
TEST(TiffStructure, ReadsNoByteTooOften) {
  constexpr std::uint32_t kCount = 12'000;
  std::string counts;
  std::string places;
  for (std::uint32_t i = 0; i < kCount; ++i) {
    counts += Little16(4000) + Little16(0);
    places += Little32(8 + 4 * (i + 1));
  }
  counts.resize(4000 * 12 + 2);
  const Structure nested(kHeader + counts + places);
  EXPECT_GE(nested.directories().size(), 2U);
  EXPECT_LE(nested.directories().size(), 4U);
}

TEST(TiffStructure, ReadsBigFiles) {
  const auto little64 = [](std::uint32_t value) { return Little32(value) + Little32(0); };
  const std::string big = std::string("II+\0\x08\0\0\0", 8) + little64(16) + little64(1) +
                          Little16(257) + Little16(16) + little64(1) + little64(4321) + little64(0);
  Structure file(big);
  ASSERT_EQ(file.directories().size(), 1U);
  EXPECT_EQ(file.directories()[0].Number(file.reader(), TiffTag::kImageLength, 0), 4321U);
}

}  // namespace

}  // namespace TarnixTools::engines
