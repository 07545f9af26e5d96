#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/codecs/CcittDecoder.h"
#include "engines/support/codecs/TiffDirectory.h"
#include "support/Readers.h"
#include "support/TempDir.h"
#include "support/TestTiff.h"

namespace TarnixTools::engines {
namespace {

// Fax codes as text of zeros and ones, spaces for the eye.
std::string Bits(const std::string& text) {
  std::string bytes;
  unsigned byte = 0;
  unsigned count = 0;
  for (const char c : text) {
    if (c == ' ') {
      continue;
    }
    byte = byte << 1U | (c == '1' ? 1U : 0U);
    if (++count % 8 == 0) {
      bytes += static_cast<char>(byte);
    }
  }
  if (count % 8 != 0) {
    bytes += static_cast<char>(byte << (8 - count % 8));
  }
  return bytes;
}

// All rows as text: '#' for a bit that is 0, which is black unless it is said otherwise.
std::string Rows(const std::string& data, const CcittParameters& parameters) {
  CcittDecoder decoder(data, parameters);
  std::vector<std::uint8_t> row(decoder.row_bytes());
  std::string text;
  for (int y = 0; y < 100 && decoder.ReadRow(row.data()); ++y) {
    for (std::uint32_t x = 0; x < parameters.columns; ++x) {
      text += (row[x / 8] >> (7 - x % 8) & 1U) != 0 ? '.' : '#';
    }
    text += '\n';
  }
  EXPECT_FALSE(decoder.ReadRow(row.data()));
  return text;
}

CcittParameters Columns(std::uint32_t columns, std::int64_t k = 0) {
  CcittParameters parameters;
  parameters.k = k;
  parameters.columns = columns;
  return parameters;
}

// Runs (T.4, tables 2 and 3): white 4 is 1011, 8 is 10011, 2 is 0111; black 4 is 011, 2 is 11.
TEST(CcittDecoder, ReadsRowsOfOneDimension) {
  EXPECT_EQ(Rows(Bits("1011 011 1011 011"), Columns(8)), "....####\n....####\n");
  EXPECT_EQ(Rows(Bits("10011"), Columns(8)), "........\n");
  EXPECT_EQ(Rows(Bits("00110101 000101"), Columns(8)), "########\n");  // no white, black 8
}

TEST(CcittDecoder, ReadsRunsOfSeveralCodes) {
  // White 2560 + 64 + 0, black 64 + 0.
  const std::string data = Bits("000000011111 11011 00110101 0000001111 0000110111");
  const std::string rows = Rows(data, Columns(2688));
  EXPECT_EQ(rows, std::string(2624, '.') + std::string(64, '#') + "\n");
}

TEST(CcittDecoder, PassesOverEndsOfLine) {
  const std::string end = "000000000001";
  CcittParameters parameters = Columns(8);
  EXPECT_EQ(Rows(Bits(end + "1011 011" + "0000" + end + "10011"), parameters),
            "....####\n........\n");
  // Several in a row end the block.
  EXPECT_EQ(Rows(Bits("1011 011" + end + end + "10011"), parameters), "....####\n");
  parameters.has_ends_of_line = true;
  parameters.is_byte_aligned = true;
  EXPECT_EQ(Rows(Bits("0000" + end + "1011 011 0 0000" + end + "10011"), parameters),
            "....####\n........\n");
}

TEST(CcittDecoder, ReadsRowsThatStartAtABytesStart) {
  CcittParameters parameters = Columns(8);
  parameters.is_byte_aligned = true;
  EXPECT_EQ(Rows(Bits("1011 011 0 10011 000 1011 011"), parameters),
            "....####\n........\n....####\n");
}

// Codes of two dimensions (T.4, table 4): V0 1, VR1 011, VL1 010, VR2 000011, VL2 000010, VR3
// 0000011, VL3 0000010, horizontal 001, pass 0001.
TEST(CcittDecoder, ReadsRowsOfTwoDimensions) {
  const std::string first = "001 1011 11 1";  // horizontal: white 4, black 2; white to the end
  EXPECT_EQ(Rows(Bits(first), Columns(10, -1)), "....##....\n");
  EXPECT_EQ(Rows(Bits(first + "1 1 1"), Columns(10, -1)), "....##....\n....##....\n");
  EXPECT_EQ(Rows(Bits(first + "011 1 1"), Columns(10, -1)), "....##....\n.....#....\n");
  EXPECT_EQ(Rows(Bits(first + "010 011 1"), Columns(10, -1)), "....##....\n...####...\n");
  EXPECT_EQ(Rows(Bits(first + "000010 000011 1"), Columns(10, -1)), "....##....\n..######..\n");
  EXPECT_EQ(Rows(Bits(first + "0000010 0000011 1"), Columns(10, -1)), "....##....\n.########.\n");
  EXPECT_EQ(Rows(Bits(first + "0001 1"), Columns(10, -1)), "....##....\n..........\n");
  EXPECT_EQ(Rows(Bits(first + "000000000001 000000000001 1"), Columns(10, -1)), "....##....\n");
}

TEST(CcittDecoder, ReadsMixedRows) {
  const std::string end = "000000000001";
  const std::string data = end + "1 1011 011" + end + "0 011 1" + end + "1 10011";
  EXPECT_EQ(Rows(Bits(data), Columns(8, 4)), "....####\n.....###\n........\n");
}

TEST(CcittDecoder, PaintsBlackAsItIsTold) {
  CcittParameters parameters = Columns(8);
  parameters.black_is_1 = true;
  EXPECT_EQ(Rows(Bits("1011 011"), parameters), "####....\n");
}

TEST(CcittDecoder, StopsWhereNothingMakesSense) {
  EXPECT_EQ(Rows("", Columns(8, -1)), "");
  EXPECT_EQ(Rows(std::string(20, '\0'), Columns(8)), "");
  // A run that is no code, of which the start of its row is kept.
  EXPECT_EQ(Rows(Bits("1011 011 0111 00000000001111"), Columns(8)), "....####\n..######\n");
  // No code of two dimensions; one that goes back before its start.
  EXPECT_EQ(Rows(Bits("001 1011 11 0000000"), Columns(10, -1)), "....##....\n");
  EXPECT_EQ(Rows(Bits("001 0111 11 1 001 000111 11 0000010 1"), Columns(10, -1)).substr(0, 11),
            "..##......\n");
  EXPECT_EQ(Rows(Bits("001 1011"), Columns(10, -1)), "....######\n");
}

TEST(CcittDecoder, CutsRunsThatAreTooLong) {
  EXPECT_EQ(Rows(Bits("1011 000101"), Columns(8)), "....####\n");
  // Make-up codes without end.
  std::string endless;
  for (int i = 0; i < 50; ++i) {
    endless += "000000011111";
  }
  EXPECT_EQ(Rows(Bits(endless), Columns(8)), "");
}

TEST(CcittDecoder, GivesChangesOfRowsThatAreExact) {
  const std::string data = Bits("001 1011 11 1 1 1 1 000000000001 000000000001");
  CcittDecoder decoder(data, Columns(10, -1));
  std::vector<std::uint32_t> changes;
  for (int y = 0; y < 2; ++y) {
    ASSERT_TRUE(decoder.ReadChanges(changes));
    EXPECT_EQ(changes, (std::vector<std::uint32_t>{4, 6}));
  }
  EXPECT_FALSE(decoder.ReadChanges(changes));
  // A run of no pixels, a row that is too long, one that is cut.
  for (const char* bits : {"001 00110101 0000110111 1", "001 10011 10 1", "001 1011"}) {
    const std::string odd = Bits(bits);
    CcittDecoder refused(odd, Columns(10, -1));
    EXPECT_FALSE(refused.ReadChanges(changes)) << bits;
  }
}

// A picture of text-like marks, packed, 1 for black.
std::string Marks(unsigned width, unsigned height) {
  std::string samples;
  unsigned state = 3;
  for (unsigned y = 0; y < height; ++y) {
    for (unsigned x = 0; x < (width + 7) / 8; ++x) {
      state = state * 1664525 + 1013904223;
      samples += static_cast<char>((state >> 27) < 6 ? state >> 16 : y % 16 == 0 ? 0xFF : 0);
    }
  }
  return samples;
}

// What tiffcp codes is what was given to it.
TEST(CcittDecoder, ReadsWhatLibtiffWrites) {
  TARNIX_NEED_PROGRAM("tiffcp");
  constexpr unsigned kWidth = 203;
  constexpr unsigned kHeight = 60;
  const testing::TempDir directory;
  std::string samples = Marks(kWidth, kHeight);
  testing::WriteBytes(directory.Path("in.tif"), testing::TestTiff()
                                                    .Sides(kWidth, kHeight)
                                                    .Set(258, {1})
                                                    .Set(259, {1})
                                                    .Set(262, {0})
                                                    .Set(277, {1})
                                                    .Set(278, {kHeight})
                                                    .Data({samples})
                                                    .Bytes());
  for (const char* coding : {"g3:1d", "g3:1d:fill", "g3:2d", "g3:2d:fill", "g4"}) {
    ASSERT_EQ(testing::RunProgram({"tiffcp", "-r", "1000", "-c", coding, directory.Path("in.tif"),
                                   directory.Path("out.tif")})
                  .exit_status,
              0);
    const std::string file = testing::ReadBytes(directory.Path("out.tif"));
    pdf::MemorySource source(file);
    ByteReader reader(source);
    const TiffDirectory tiff = TiffStructure::Read(reader, 1).at(0);
    const auto offset = tiff.Number(reader, TiffTag::kStripOffsets, 0);
    const auto length = tiff.Number(reader, TiffTag::kStripByteCounts, 0);
    const std::string_view data = std::string_view(file).substr(offset, length);
    CcittParameters parameters = Columns(kWidth, coding[1] == '4'                         ? -1
                                                 : std::string_view(coding, 5) == "g3:2d" ? 4
                                                                                          : 0);
    parameters.black_is_1 = true;
    CcittDecoder decoder(data, parameters);
    std::vector<std::uint8_t> row(decoder.row_bytes());
    for (std::size_t y = 0; y < kHeight; ++y) {
      ASSERT_TRUE(decoder.ReadRow(row.data())) << coding << " " << y;
      std::string wanted = samples.substr(y * row.size(), row.size());
      wanted.back() = static_cast<char>(wanted.back() & 0xE0);  // beyond the width
      EXPECT_EQ(std::string(row.begin(), row.end()), wanted) << coding << " " << y;
    }
    EXPECT_FALSE(decoder.ReadRow(row.data())) << coding;
  }
}

}  // namespace
}  // namespace TarnixTools::engines
