#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engines/support/codecs/JpxHeader.h"
#include "support/TestImages.h"

namespace TarnixTools::engines {

namespace {

using testing::Big16;
using testing::Big32;
using ::testing::ElementsAre;

// depth: of each component, one less than its bits, 0x80 more for signed ones.
std::string CodeStream(std::uint32_t components, char depth = 7) {
  std::string stream = "\xFF\x4F\xFF\x51" + Big16(38 + 3 * components) + Big16(0) + Big32(17) +
                       Big32(15) + Big32(10) + Big32(10) + std::string(16, '\0') +
                       Big16(components);
  for (std::uint32_t i = 0; i < components; ++i) {
    stream += depth + std::string("\1\1");
  }
  return stream;
}

std::string Box(const std::string& type, const std::string& content) {
  return Big32(static_cast<std::uint32_t>(content.size() + 8)) + type + content;
}

std::string Jp2(const std::string& header_boxes, std::uint32_t components = 3) {
  return Box("jP  ", "\r\n\x87\n") + Box("ftyp", "jp2 ") + Box("jp2h", header_boxes) +
         Box("jp2c", CodeStream(components));
}

std::string Numbered(std::uint32_t space) {
  return Box("colr", std::string("\1\0\0", 3) + Big32(space));
}

TEST(JpxHeader, TellsOfTheCodeStream) {
  const auto header = ReadJpxHeader(CodeStream(2, static_cast<char>(0x8B)));
  ASSERT_TRUE(header);
  EXPECT_FALSE(header->has_boxes);
  EXPECT_EQ(header->width, 7U);
  EXPECT_EQ(header->height, 5U);
  ASSERT_EQ(header->components.size(), 2U);
  EXPECT_EQ(header->components[1].bits, 12);
  EXPECT_TRUE(header->components[1].is_signed);
  EXPECT_EQ(header->CountColors(), 0U);
  EXPECT_FALSE(header->HasAlpha());
}

TEST(JpxHeader, TellsOfAFile) {
  const auto header = ReadJpxHeader(Jp2(""));
  ASSERT_TRUE(header);
  EXPECT_TRUE(header->has_boxes);
  EXPECT_EQ(header->width, 7U);
  EXPECT_EQ(header->components.size(), 3U);
  EXPECT_EQ(header->components[0].bits, 8);
  EXPECT_FALSE(header->components[0].is_signed);
}

TEST(JpxHeader, CountsTheColorsOfKnownSpaces) {
  const auto count = [](std::uint32_t space) {
    return ReadJpxHeader(Jp2(Numbered(space)))->CountColors();
  };
  EXPECT_EQ(count(17), 1U);
  EXPECT_EQ(count(16), 3U);
  EXPECT_EQ(count(18), 3U);
  EXPECT_EQ(count(12), 4U);
  EXPECT_EQ(count(14), 0U);
  EXPECT_TRUE(ReadJpxHeader(Jp2(Numbered(18)))->IsYcc());
  EXPECT_FALSE(ReadJpxHeader(Jp2(Numbered(16)))->IsYcc());
}

TEST(JpxHeader, TakesTheFirstColorSpaceThatReadersKnow) {
  const std::string extension = Box("colr", std::string("\3\0\1icc", 6));
  const std::string profile = Box("colr", std::string("\2\0\0icc", 6));
  const auto later = ReadJpxHeader(Jp2(extension + Numbered(12)));
  EXPECT_EQ(later->CountColors(), 4U);
  ASSERT_EQ(later->colors.size(), 2U);
  EXPECT_EQ(later->colors[0].method, 3);
  EXPECT_EQ(later->colors[0].approximation, 1);
  EXPECT_EQ(ReadJpxHeader(Jp2(profile + Numbered(12)))->CountColors(), 0U);
}

TEST(JpxHeader, TellsOfChannels) {
  const auto channels = [](std::uint32_t kind) {
    return Box("cdef",
               Big16(2) + Big16(0) + Big16(0) + Big16(1) + Big16(1) + Big16(kind) + Big16(0));
  };
  const auto plain = ReadJpxHeader(Jp2(channels(1)));
  EXPECT_THAT(plain->channels, ElementsAre(JpxChannelKind::kColor, JpxChannelKind::kAlpha));
  EXPECT_TRUE(plain->HasAlpha());
  EXPECT_FALSE(plain->HasPremultipliedAlpha());
  EXPECT_TRUE(ReadJpxHeader(Jp2(channels(2)))->HasPremultipliedAlpha());
  EXPECT_TRUE(ReadJpxHeader(Jp2(channels(2)))->HasAlpha());
  const std::string cut = Box("cdef", Big16(9) + Big16(0) + Big16(0) + Big16(1) + Big16(1));
  EXPECT_EQ(ReadJpxHeader(Jp2(cut))->channels.size(), 1U);
}

TEST(JpxHeader, TellsOfAPalette) {
  EXPECT_EQ(ReadJpxHeader(Jp2(Box("pclr", Big16(4) + "\3" + "rest"), 1))->palette_columns, 3U);
  EXPECT_EQ(ReadJpxHeader(Jp2(Box("pclr", "x"), 1))->palette_columns, 0U);
}

TEST(JpxHeader, TellsResolutionPerInch) {
  const std::string per_centimetre = Big16(100) + Big16(1) + Big16(50) + Big16(1) + "\2\2";
  const std::string per_metre =
      Big16(5906) + Big16(1) + Big16(11811) + Big16(1) + std::string(2, '\0');
  const auto shown = ReadJpxHeader(Jp2(Box("res ", Box("resd", per_metre))));
  EXPECT_NEAR(shown->dpi_x, 300, 0.01);
  EXPECT_NEAR(shown->dpi_y, 150, 0.02);
  const auto captured =
      ReadJpxHeader(Jp2(Box("res ", Box("resc", per_centimetre) + Box("resd", per_metre))));
  EXPECT_NEAR(captured->dpi_x, 127, 1e-9);
  EXPECT_NEAR(captured->dpi_y, 254, 1e-9);
  const std::string senseless = Big16(1) + Big16(0) + Big16(1) + Big16(0) + std::string(2, '\0');
  EXPECT_EQ(ReadJpxHeader(Jp2(Box("res ", Box("resd", senseless))))->dpi_x, 0);
}

TEST(JpxHeader, ReadsBoxesOfAnyLength) {
  const std::string start = Box("jP  ", "\r\n\x87\n");
  const std::string to_the_end = Big32(0) + "jp2c" + CodeStream(1);
  EXPECT_TRUE(ReadJpxHeader(start + to_the_end));
  const std::string long_length =
      Big32(1) + "xml " + Big32(0) + Big32(16 + 5) + "words" + Box("jp2c", CodeStream(1));
  EXPECT_TRUE(ReadJpxHeader(start + long_length));
  const std::string more_than_there = Big32(900) + "jp2c" + CodeStream(1);
  EXPECT_TRUE(ReadJpxHeader(start + more_than_there));
}

TEST(JpxHeader, IsNothingWithoutACodeStream) {
  EXPECT_FALSE(ReadJpxHeader(""));
  EXPECT_FALSE(ReadJpxHeader(Box("jP  ", "\r\n\x87\n")));
  EXPECT_FALSE(ReadJpxHeader(CodeStream(3).substr(0, 50)));
  EXPECT_FALSE(ReadJpxHeader(Big32(7) + "jp2c" + CodeStream(1)));
  EXPECT_FALSE(ReadJpxHeader(Big32(1) + "xml " + "long"));
  EXPECT_FALSE(ReadJpxHeader(Box("jp2c", "no code stream")));
}

TEST(JpxHeader, HasNoSizeWhereItsSidesMakeNone) {
  std::string empty = CodeStream(1);
  empty.replace(8, 4, Big32(10));
  const auto header = ReadJpxHeader(empty);
  ASSERT_TRUE(header);
  EXPECT_EQ(header->width, 0U);
}

TEST(JpxHeader, IsKnownByItsStart) {
  const auto is_jpx = [](const std::string& data) {
    pdf::MemorySource source(data);
    ByteReader reader(source);
    return IsJpx(reader);
  };
  EXPECT_TRUE(is_jpx(CodeStream(1)));
  EXPECT_TRUE(is_jpx(Jp2("")));
  EXPECT_FALSE(is_jpx("\xFF\xD8\xFF"));
}

}  // namespace

}  // namespace TarnixTools::engines
