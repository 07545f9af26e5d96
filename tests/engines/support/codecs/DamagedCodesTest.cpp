// What decoders give of data that is damaged or cut, for every byte of it.
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/codecs/CcittDecoder.h"
#include "engines/support/codecs/Jbig2Decoder.h"
#include "engines/support/codecs/JpxDecoder.h"
#include "support/ByteText.h"
#include "support/Damage.h"
#include "support/Expected.h"
#include "support/SmallImages.h"

namespace TarnixTools::engines {
namespace {

using testing::DamageText;
using testing::IsAsExpected;
using testing::NoiseBytes;
using testing::ShortBytes;
using testing::ShortBytesOf;
using testing::SmallImage;

// The rows as bits, and those that a caller gets who wants changes of exact rows.
std::string FaxText(const std::string& data, const CcittParameters& parameters) {
  CcittDecoder decoder(data, parameters);
  std::string rows;
  std::string row(decoder.row_bytes(), '\0');
  int count = 0;
  for (; count < 40 && decoder.ReadRow(reinterpret_cast<std::uint8_t*>(row.data())); ++count) {
    rows += row;
  }
  CcittDecoder exact(data, parameters);
  std::vector<std::uint32_t> changes;
  int exact_rows = 0;
  std::string places;
  for (; exact_rows < 40 && exact.ReadChanges(changes); ++exact_rows) {
    for (const std::uint32_t change : changes) {
      places += std::to_string(change) + " ";
    }
    places += "/";
  }
  return std::to_string(count) + " rows " + ShortBytes(rows) + ", " + std::to_string(exact_rows) +
         " exact " + ShortBytes(places, 0);
}

// Fax codes as text of zeros and ones, spaces for the eye.
std::string Bits(const std::string& text) {
  std::string bytes;
  unsigned count = 0;
  for (const char c : text) {
    if (c != ' ') {
      if (count % 8 == 0) {
        bytes += '\0';
      }
      bytes.back() = static_cast<char>(bytes.back() | (c == '1' ? 0x80U >> count % 8 : 0));
      ++count;
    }
  }
  return bytes;
}

struct Fax {
  const char* name;
  CcittParameters parameters;
  std::string data;
};

// Rows of ten and of twenty pixels, in each of the three codings, with all codes of two dimensions.
std::vector<Fax> Faxes() {
  const std::string end = "000000000001";
  const std::string one = "1011 11 0111 10 00111";                   // 4 2 2 3
  const std::string two = "001 1011 11 1 1 001 0111 11";             // horizontal and vertical
  const std::string all = "011 010 000011 1 000010 0001 0000011 1";  // every kind
  std::vector<Fax> faxes = {
      {"group 4", {.k = -1, .columns = 20}, Bits(two + "1" + all + "1 1 1 0000010 1" + end + end)},
      {"group 4 on white",
       {.k = -1, .columns = 20, .black_is_1 = true},
       Bits("1 1 001 000111 000101 1 010 011 1 0001 1 " + end + end)},
      {"one dimension", {.k = 0, .columns = 10}, Bits(one + one + one + one)},
      {"bytes", {.k = 0, .is_byte_aligned = true, .columns = 9}, NoiseBytes(30, 200, 3)},
      {"ends of line",
       {.k = 0, .has_ends_of_line = true, .columns = 10},
       Bits(end + one + end + one + "0000" + end + one + end + end + end + end + end + end)},
      {"aligned ends of line",
       {.k = 0, .is_byte_aligned = true, .has_ends_of_line = true, .columns = 8},
       Bits("0000" + end + "1011 011 0 0000" + end + "10011 000 0000" + end + "1011 011 0")},
      {"mixed",
       {.k = 4, .columns = 20},
       Bits(end + "1 1011 11 0111 11 10011 00 " + end + "0 1 011 1 010 1 " + end +
            "0 001 0111 11 1 1 " + end + "1" + end + "1" + end + "1")},
      {"long runs",
       {.k = 0, .columns = 2700},
       Bits("000000011111 11011 0111 0000001111 11  000000010100 11010111 1011 000000010101"
            "0000001111 0000110111 000000011111 0000000100000000")}};
  for (const std::int64_t k : {-1, 0, 4}) {
    for (const std::uint32_t columns : {1U, 7U, 8U, 40U}) {
      faxes.push_back({"noise", {.k = k, .columns = columns}, NoiseBytes(40, 256, columns)});
    }
  }
  return faxes;
}

TEST(DamagedCodes, OfFaxGiveTheRowsBefore) {
  std::string text;
  for (const auto& [name, parameters, data] : Faxes()) {
    text += "--- " + std::string(name) + " " + std::to_string(parameters.k) + " of " +
            std::to_string(parameters.columns) + "\n" +
            DamageText(data, [&, parameters = parameters](const std::string& bytes) {
              return FaxText(bytes, parameters);
            });
  }
  EXPECT_TRUE(IsAsExpected("codecs/damaged_fax.txt", text));
}

class DamagedJbig2 : public ::testing::TestWithParam<SmallImage> {};

TEST_P(DamagedJbig2, GivesTheSegmentsBefore) {
  const auto& [name, bytes] = GetParam();
  unsigned width = 0;
  unsigned height = 0;
  ASSERT_EQ(std::sscanf(name.c_str() + name.rfind('_'), "_%ux%u", &width, &height), 2);
  const std::string text = DamageText(bytes, [&](const std::string& data) {
    const auto rows = DecodeJbig2("", data, width, height);
    return std::string(NeedsOwnJbig2("", data) ? "own " : "") +
           (rows ? ShortBytes(rows->rows, 0) + (rows->is_complete ? "" : " cut") : "nothing");
  });
  EXPECT_TRUE(IsAsExpected("codecs/jbig2/" + name + ".txt", text));
}

INSTANTIATE_TEST_SUITE_P(Streams, DamagedJbig2, ::testing::ValuesIn(testing::SmallJbig2()),
                         [](const auto& stream) {
                           return stream.param.name.substr(0, stream.param.name.find('.'));
                         });

std::string JpxText(const std::string& data, JpxDepth depth) {
  const auto samples = DecodeJpx(data, depth);
  if (!samples) {
    return "nothing";
  }
  return std::to_string(samples->width) + " x " + std::to_string(samples->height) + " x " +
         std::to_string(samples->components) + " colors " + std::to_string(samples->colors) + " " +
         ShortBytesOf(samples->samples) + " alpha " + ShortBytesOf(samples->alpha) +
         (samples->is_alpha_mixed_in ? " mixed" : "") + " profile " + ShortBytes(samples->profile);
}

// The samples of the first are those that Pillow reads. Their boxes are what counts.
TEST(DamagedCodes, OfJpxGiveWhatCanBeDecoded) {
  std::string text;
  for (const SmallImage& image : testing::SmallJpx()) {
    text += "--- " + image.name + " " +
            ShortBytesOf(DecodeJpx(image.bytes, JpxDepth::kScaled)->samples, 120) + "\n";
    const std::size_t end = image.bytes.find("\xFF\x4F\xFF\x51") + 8;
    text += DamageText(
        image.bytes,
        [](const std::string& bytes) {
          return JpxText(bytes, JpxDepth::kScaled) + ", " + JpxText(bytes, JpxDepth::kIndex);
        },
        end, image.bytes.find("\xFF\x93"));
  }
  EXPECT_TRUE(IsAsExpected("codecs/damaged_jpx.txt", text));
}

}  // namespace
}  // namespace TarnixTools::engines
