// Tables of encoded data and what is decoded of it.
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "pdf/Error.h"
#include "pdf/file/StreamFilters.h"
#include "pdf/filters/Filters.h"
#include "pdf/syntax/Parser.h"

namespace TarnixTools::pdf {
namespace {

using Table = std::vector<std::pair<std::string, std::string>>;

constexpr std::size_t kAmple = std::size_t{1} << 20;

// Bytes in digits; "!" after data that is not whole, "~" after data that is not well wrapped.
std::string Shown(const Decoded& decoded) {
  constexpr const char* kDigits = "0123456789abcdef";
  std::string text;
  for (const char c : decoded.data) {
    const auto byte = static_cast<unsigned char>(c);
    text += kDigits[byte / 16];
    text += kDigits[byte % 16];
  }
  return text + (decoded.complete ? "" : "!") + (decoded.is_well_wrapped ? "" : "~");
}

std::string DecodedBy(FilterKind kind, const std::string& encoded,
                      const FilterParameters& parameters = {}) {
  return Shown(Decode({{kind, parameters}}, encoded, kAmple));
}

TEST(FilterTables, OfAscii85) {
  const Table table = {{"~>", ""},
                       {"87cUR~>", "48656c6c"},
                       {"87cURDZ~>", "48656c6c6f"},
                       {"!!~>", "00"},
                       {"!!!~>", "0000"},
                       {"!!!!~>", "000000"},
                       {"!!!!!~>", "00000000"},
                       {"!!!!\"~>", "00000001"},
                       {"!!~", "00"},
                       {"z~>", "00000000"},
                       {"zz!!~>", "000000000000000000"},
                       {"s8W-!~>", "ffffffff"},
                       {"s8W-\"~>", "!"},
                       {"uuuuu~>", "!"},
                       {"uu~>", "!"},
                       {"!~>", "!"},
                       {"!!z~>", "00!"},
                       {"!!!!!", "00000000!"},
                       {"!!", "00!"},
                       {"8 7\ncU\tR ~>", "48656c6c"},
                       {" <~87cUR~>", "48656c6c"},
                       {"<~~>", ""},
                       {"!!v!!~>", "00!"},
                       {"87cUR~87cUR", "48656c6c"}};
  for (const auto& [encoded, bytes] : table) {
    EXPECT_EQ(DecodedBy(FilterKind::kAscii85, encoded), bytes) << encoded;
  }
}

TEST(FilterTables, OfAsciiHex) {
  const Table table = {
      {">", ""},         {"4a>", "4a"},     {"4A6>", "4a60"}, {"4 A\n6\tb>", "4a6b"},
      {"4a", "4a!"},     {"4", "40!"},      {"4a>4b", "4a"},  {"4ag5>", "4a!"},
      {"0f9F>", "0f9f"}, {"aAfF>", "aaff"}, {"@>", "!"},      {"G>", "!"},
      {"/>", "!"},       {":>", "!"},       {"`>", "!"},      {" ", "!"}};
  for (const auto& [encoded, bytes] : table) {
    EXPECT_EQ(DecodedBy(FilterKind::kAsciiHex, encoded), bytes) << encoded;
  }
}

TEST(FilterTables, OfRunLengths) {
  const auto text = [](std::initializer_list<int> bytes) {
    std::string encoded;
    for (const int byte : bytes) {
      encoded += static_cast<char>(byte);
    }
    return DecodedBy(FilterKind::kRunLength, encoded);
  };
  EXPECT_EQ(text({128}), "");
  EXPECT_EQ(text({0, 65, 128}), "41");
  EXPECT_EQ(text({1, 65, 66, 128}), "4142");
  EXPECT_EQ(text({255, 65, 128}), "4141");
  EXPECT_EQ(text({254, 65, 128}), "414141");
  EXPECT_EQ(text({129, 7, 128}).size(), 2U * 128);
  EXPECT_EQ(text({1, 65, 128}), "4180!");
  EXPECT_EQ(text({2, 65}), "41!");
  EXPECT_EQ(text({255}), "!");
  EXPECT_EQ(text({0, 65}), "41!");
  EXPECT_EQ(text({128, 0, 65}), "");
  std::string longest(1, static_cast<char>(127));
  longest.append(128, 'x');
  EXPECT_EQ(DecodedBy(FilterKind::kRunLength, longest + '\x80').size(), 2U * 128);
}

// Codes of nine bits, put together.
std::string Codes(const std::vector<unsigned>& codes) {
  std::string bytes;
  unsigned held = 0;
  unsigned count = 0;
  for (const unsigned code : codes) {
    held = held << 9U | code;
    count += 9;
    while (count >= 8) {
      count -= 8;
      bytes += static_cast<char>(held >> count & 0xFFU);
    }
  }
  return count == 0 ? bytes : bytes + static_cast<char>(held << (8 - count) & 0xFFU);
}

TEST(FilterTables, OfLzwCodes) {
  const std::vector<std::pair<std::vector<unsigned>, std::string>> table = {
      {{256, 257}, ""},
      {{256, 65, 66, 257}, "4142"},
      {{65, 66, 257}, "4142"},
      {{256, 65, 258, 257}, "414141"},
      {{256, 65, 66, 258, 257}, "41424142"},
      {{256, 65, 66, 258, 260, 257}, "41424142414241"},
      {{256, 65, 66, 258, 259, 257}, "414241424241"},
      {{256, 65, 259, 257}, "41!"},
      {{256, 258, 257}, "!"},
      {{256, 65, 66, 256, 67, 258, 257}, "4142434343"},
      {{256, 65, 66, 256, 258, 257}, "4142!"},
      {{256, 65}, "41!"},
      {{256}, "!"},
      {{256, 65, 67, 66, 68, 70, 69, 257}, "414342444645"},
      {{256, 65, 257, 66}, "41"}};
  for (const auto& [codes, bytes] : table) {
    EXPECT_EQ(DecodedBy(FilterKind::kLzw, Codes(codes)), bytes) << bytes;
    EXPECT_EQ(DecodedBy(FilterKind::kLzw, Codes(codes), {.early_change = 0}), bytes) << bytes;
  }
}

TEST(FilterTables, OfFlateData) {
  // "abc", stored and with fixed codes, by RFC 1950 and 1951.
  const std::string stored(
      "\x01\x03\x00\xFC\xFF"
      "abc",
      8);
  const std::string checksum("\x02\x4D\x01\x27", 4);
  const std::string header("\x78\x01", 2);
  const auto decoded = [](const std::string& encoded) {
    return DecodedBy(FilterKind::kFlate, encoded);
  };
  EXPECT_EQ(decoded(header + stored + checksum), "616263");
  EXPECT_EQ(decoded(header + stored + checksum + "more"), "616263");
  EXPECT_EQ(decoded(header + stored + "\x02\x4D\x01\x28"), "616263~");
  EXPECT_EQ(decoded(header + stored + "\x02\x4D\x01"), "616263");
  EXPECT_EQ(decoded(header + stored), "616263");
  EXPECT_EQ(decoded(" \n" + header + stored + checksum), "616263");
  EXPECT_EQ(decoded(stored), "616263~");
  EXPECT_EQ(decoded("\x78\x02" + stored + checksum), "616263~");
  EXPECT_EQ(decoded("\x78\x20" + stored + checksum), "616263~");
  EXPECT_EQ(decoded("\x79\x01" + stored + checksum), "616263~");
  EXPECT_EQ(decoded(header + stored.substr(0, 7)), "6162!");
  EXPECT_EQ(decoded(header + std::string("\x00\x03\x00\xFC\xFF"
                                         "abc",
                                         8)),
            "616263!");
  EXPECT_EQ(decoded(header), "!~");
}

// The samples of a row, of so many bits each.
std::string RowOf(const std::vector<unsigned>& samples, unsigned bits) {
  std::string row((samples.size() * bits + 7) / 8, '\0');
  for (std::size_t i = 0; i < samples.size(); ++i) {
    for (unsigned bit = 0; bit < bits; ++bit) {
      const std::size_t at = i * bits + bit;
      const unsigned value = samples[i] >> (bits - 1 - bit) & 1U;
      row[at / 8] =
          static_cast<char>(static_cast<unsigned char>(row[at / 8]) | (value << (7 - at % 8)));
    }
  }
  return row;
}

std::string Hex(const std::string& bytes) {
  constexpr const char* kDigits = "0123456789ABCDEF";
  std::string text;
  for (const char c : bytes) {
    text += kDigits[static_cast<unsigned char>(c) / 16];
    text += kDigits[static_cast<unsigned char>(c) % 16];
  }
  return text + ">";
}

// The filters that have a predictor are run on what stands in the data: by Flate, stored.
std::string Stored(const std::string& data) {
  const auto size = static_cast<unsigned>(data.size());
  std::string deflated = "\x78\x01\x01";
  for (const unsigned value : {size, ~size}) {
    deflated += static_cast<char>(value & 0xFFU);
    deflated += static_cast<char>(value >> 8U & 0xFFU);
  }
  return deflated + data;
}

// As TIFF 6.0, section 14, has it: each sample is the difference to the one before of its colour.
TEST(FilterTables, OfTiffRowsOfEveryDepth) {
  unsigned seed = 7;
  for (const unsigned bits : {1U, 2U, 4U, 8U, 16U}) {
    for (const std::size_t colors : {1U, 2U, 3U, 4U, 5U}) {
      for (const std::size_t columns : {1U, 2U, 3U, 7U, 9U}) {
        std::string plain;
        std::string predicted;
        for (int row = 0; row < 3; ++row) {
          std::vector<unsigned> samples;
          std::vector<unsigned> differences;
          for (std::size_t i = 0; i < colors * columns; ++i) {
            seed = seed * 1664525U + 1013904223U;
            samples.push_back(seed >> 16U & ((1U << bits) - 1));
            const unsigned before = i < colors ? 0 : samples[i - colors];
            differences.push_back((samples[i] - before) & ((1U << bits) - 1));
          }
          plain += RowOf(samples, bits);
          predicted += RowOf(differences, bits);
        }
        const FilterParameters parameters{.predictor = 2,
                                          .colors = static_cast<std::int64_t>(colors),
                                          .bits_per_component = bits,
                                          .columns = static_cast<std::int64_t>(columns)};
        const Decoded decoded =
            Decode({{FilterKind::kFlate, parameters}}, Stored(predicted), kAmple);
        EXPECT_EQ(Hex(decoded.data), Hex(plain)) << bits << ' ' << colors << ' ' << columns;
        EXPECT_TRUE(decoded.complete);
        // Of a row that was cut, its whole bytes.
        if (plain.size() > 1) {
          const Decoded cut = Decode({{FilterKind::kFlate, parameters}},
                                     Stored(predicted.substr(0, predicted.size() - 1)), kAmple);
          EXPECT_EQ(cut.complete, plain.size() == 3) << bits << ' ' << colors << ' ' << columns;
          // Half a sample of two bytes stays as it is.
          std::string expected = plain.substr(0, plain.size() - 1);
          if (bits == 16) {
            expected.back() = predicted[expected.size() - 1];
          }
          EXPECT_EQ(Hex(cut.data), Hex(expected)) << bits << ' ' << colors << ' ' << columns;
        }
      }
    }
  }
}

TEST(FilterTables, OfPredictorsAndTheirBounds) {
  const auto refused = [](FilterParameters parameters) {
    try {
      Decode({{FilterKind::kFlate, parameters}}, Stored("abc"), kAmple);
    } catch (const Error& error) {
      EXPECT_EQ(error.code(), ErrorCode::kFilterFailed);
      return std::string(error.what());
    }
    return std::string();
  };
  const std::string unusable = "stream filter has unusable predictor parameters";
  for (const std::int64_t predictor : {-1, 0, 3, 9, 16}) {
    EXPECT_EQ(refused({.predictor = predictor}), unusable) << predictor;
  }
  for (const std::int64_t predictor : {1, 2, 10, 11, 12, 13, 14, 15}) {
    EXPECT_EQ(refused({.predictor = predictor}), "") << predictor;
  }
  for (const std::int64_t bits : {0, 3, 5, 6, 7, 9, 12, 15, 17, 32}) {
    EXPECT_EQ(refused({.predictor = 2, .bits_per_component = bits}), unusable) << bits;
  }
  EXPECT_EQ(refused({.predictor = 2, .colors = 0}), unusable);
  EXPECT_EQ(refused({.predictor = 2, .columns = 0}), unusable);
  EXPECT_EQ(refused({.predictor = 2, .columns = std::int64_t{1} << 62}), unusable);
  EXPECT_EQ(refused({.predictor = 1, .colors = 0}), "");
  EXPECT_EQ(refused({.predictor = 2, .colors = 1, .columns = 1}), "");
}

TEST(FilterTables, OfEarlyChanges) {
  const std::string codes = Codes({256, 65, 257});
  for (const std::int64_t early_change : {-1, 2, 256}) {
    try {
      DecodedBy(FilterKind::kLzw, codes, {.early_change = early_change});
      ADD_FAILURE() << early_change;
    } catch (const Error& error) {
      EXPECT_EQ(error.code(), ErrorCode::kFilterFailed);
      EXPECT_STREQ(error.what(), "LZWDecode: /EarlyChange is neither 0 nor 1");
    }
    EXPECT_EQ(DecodedBy(FilterKind::kFlate, Stored("a"), {.early_change = early_change}), "61");
  }
}

TEST(FilterTables, OfPngRows) {
  const auto rows = [](const std::string& data, const FilterParameters& parameters) {
    return DecodedBy(FilterKind::kFlate, Stored(data), parameters);
  };
  const FilterParameters three{.predictor = 15, .columns = 3};
  EXPECT_EQ(rows(std::string("\0abc", 4), three), "616263");
  EXPECT_EQ(rows("\x01"
                 "a\1\1",
                 three),
            "616263");
  EXPECT_EQ(rows("\x01"
                 "a\1\1\x02\1\1\1",
                 three),
            "616263626364");
  EXPECT_EQ(rows("\x01"
                 "a\1\1\x03\1\1\1",
                 three),
            "616263314a57");
  EXPECT_EQ(rows("\x01"
                 "a\1\1\x04\1\1\1",
                 three),
            "616263626364");
  EXPECT_EQ(rows("\x05"
                 "abc",
                 three),
            "616263!");
  EXPECT_EQ(rows("\x01"
                 "a\1\1\x02\1",
                 three),
            "61626362!");
  EXPECT_EQ(rows("\x01"
                 "a\1\1\x02",
                 three),
            "616263");
  const FilterParameters wide{.predictor = 12, .colors = 2, .bits_per_component = 16, .columns = 1};
  EXPECT_EQ(rows("\x01"
                 "abcd\x01"
                 "abcd\x03"
                 "\4\4\4\4",
                 wide),
            "616263646162636434353536");
}

std::string StepsText(const std::string& dictionary) {
  Arena arena;
  Parser parser(arena);
  Lexer lexer(dictionary, true);
  Object value;
  parser.Parse(lexer, nullptr, value);
  std::string text;
  for (const FilterStep& step : FilterStepsOf(value)) {
    text += std::to_string(static_cast<int>(step.kind));
    for (const std::int64_t number :
         {step.parameters.predictor, step.parameters.colors, step.parameters.bits_per_component,
          step.parameters.columns, step.parameters.early_change}) {
      text += ' ' + std::to_string(number);
    }
    text += "|" + PredictorEntries(step.parameters) + ";";
  }
  return text;
}

TEST(FilterTables, OfSteps) {
  const std::string all = "<</Predictor 12/Colors 3/BitsPerComponent 4/Columns 5/EarlyChange 0>>";
  const std::string entries = "/Predictor 12/Colors 3/BitsPerComponent 4/Columns 5";
  const Table table = {
      {"<<>>", ""},
      {"<</Filter null>>", ""},
      {"<</Filter[]>>", ""},
      {"<</Filter/FlateDecode>>", "0 1 1 8 1 1|;"},
      {"<</F/Fl/DP" + all + ">>", "0 12 3 4 5 0|" + entries + ";"},
      {"<</Filter/LZW/DecodeParms[" + all + "]>>", "1 12 3 4 5 0|" + entries + ";"},
      {"<</Filter[/A85/LZWDecode]/DecodeParms[null" + all + "]>>",
       "2 1 1 8 1 1|;1 12 3 4 5 0|" + entries + ";"},
      {"<</Filter[/FlateDecode]/DecodeParms" + all + ">>", "0 12 3 4 5 0|" + entries + ";"},
      {"<</Filter[/AHx/Fl]/DecodeParms" + all + ">>", "3 1 1 8 1 1|;0 1 1 8 1 1|;"},
      {"<</Filter[/RL/Crypt/DCT/None 5]>>",
       "4 1 1 8 1 1|;5 1 1 8 1 1|;6 1 1 8 1 1|;7 1 1 8 1 1|;7 1 1 8 1 1|;"},
      {"<</Filter/Fl/DecodeParms<</Predictor(x)/Columns 2.7>>>>", "0 1 1 8 2 1|/Columns 2;"}};
  for (const auto& [dictionary, steps] : table) {
    EXPECT_EQ(StepsText(dictionary), steps) << dictionary;
  }
}

}  // namespace
}  // namespace TarnixTools::pdf
