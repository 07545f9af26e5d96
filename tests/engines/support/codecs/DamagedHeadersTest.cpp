// All that the headers of JPEG and JPEG 2000 data say, for every byte of them being another one.
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "engines/support/codecs/JpegMarkers.h"
#include "engines/support/codecs/JpxHeader.h"
#include "support/ByteText.h"
#include "support/Damage.h"
#include "support/Expected.h"
#include "support/SmallImages.h"
#include "support/TestImages.h"

namespace TarnixTools::engines {
namespace {

using testing::Big16;
using testing::Big32;
using testing::DamageText;
using testing::IsAsExpected;
using testing::JpegSegment;

std::string NumberText(double number) {
  char text[32];
  std::snprintf(text, sizeof text, "%.6g", number);
  return text;
}

std::string StepsText(const JpegSteps& steps) {
  std::string bytes;
  for (const std::uint16_t step : steps) {
    bytes += Big16(step);
  }
  return steps[63] == 0 && steps[0] == 0 ? "-" : testing::ChecksumOf(bytes);
}

std::string JpegText(const std::string& data) {
  const std::optional<JpegHeader> header = ReadJpegHeader(data);
  if (!header) {
    return "none";
  }
  std::string text = std::to_string(header->width) + " x " + std::to_string(header->height) +
                     " x " + std::to_string(header->components) + " of " +
                     std::to_string(header->bits) + " coding " +
                     std::to_string(static_cast<int>(header->coding)) +
                     (header->is_progressive ? " progressive" : "");
  for (const JpegComponent& component : header->component) {
    text += " " + std::to_string(component.id) + ":" + std::to_string(component.across) +
            std::to_string(component.down) + std::to_string(component.table);
  }
  for (const JpegSteps& steps : header->steps) {
    text += " " + StepsText(steps);
  }
  text +=
      (header->has_jfif ? " jfif " : " ") + NumberText(header->jfif_dpi_x) + " " +
      NumberText(header->jfif_dpi_y) + " adobe " + std::to_string(header->adobe_transform) +
      " exif " + std::to_string(header->exif.orientation) + " " + NumberText(header->exif.dpi_x) +
      " " + NumberText(header->exif.dpi_y) + (header->IsSubsampled() ? " subsampled" : "") +
      (header->has_more_pictures ? " more" : "") + " scan " + std::to_string(header->scan_start);
  for (const JpegProfilePart& part : header->profile_parts) {
    text += " part " + std::to_string(part.number) + ":" + std::to_string(part.length) + "@" +
            std::to_string(part.offset);
  }
  pdf::MemorySource source(data);
  ByteReader reader(source);
  return text + " end " + std::to_string(FindJpegEnd(reader, header->scan_start));
}

// Of a table of steps nearly every byte is like the others: the first few are enough.
TEST(DamagedHeaders, OfJpegTellWhatIsLeft) {
  const std::string exif(testing::TestExif(6, 300));
  const std::string segments = JpegSegment(0xE0, std::string("JFIF\0\1\2\2\0\x76\0\x3B\0\0", 14)) +
                               JpegSegment(0xE1, std::string("Exif\0\0", 6) + exif) +
                               JpegSegment(0xE2, std::string("ICC_PROFILE\0\1\2abc", 17)) +
                               JpegSegment(0xE2, std::string("ICC_PROFILE\0\2\2d", 15)) +
                               JpegSegment(0xE2, std::string("MPF\0x", 5)) + "\xFF" +
                               JpegSegment(0xEE, std::string("Adobe\0\x64\0\0\0\0\2", 12)) +
                               "between" + JpegSegment(0xFE, "comment");
  std::string text;
  std::string wide(129, '\0');
  wide[0] = 0x12;
  wide[4] = 9;
  for (const std::string& jpeg :
       {testing::TestJpeg(3, segments) + "behind", testing::TestJpeg(1, JpegSegment(0xDB, wide)),
        testing::TestJpeg(4) + "\xFF\xD9"}) {
    text += DamageText(jpeg, &JpegText, jpeg.find("\xFF\xDB") + 8);
  }
  const std::string jpeg = testing::TestJpeg(3);
  text += DamageText(jpeg.substr(jpeg.find("\xFF\xC0")), [&](const std::string& bytes) {
    return JpegText(jpeg.substr(0, jpeg.find("\xFF\xC0")) + bytes);
  });
  for (unsigned code = 0xC0; code <= 0xFE; ++code) {
    std::string other = jpeg;
    other[other.find("\xFF\xC0") + 1] = static_cast<char>(code);
    text += std::to_string(code) + " " + JpegText(other) + "\n";
  }
  EXPECT_TRUE(IsAsExpected("codecs/jpeg_headers.txt", text));
}

std::string JpxText(const std::string& data) {
  const std::optional<JpxHeader> header = ReadJpxHeader(data);
  if (!header) {
    return "none";
  }
  std::string text = std::to_string(header->width) + " x " + std::to_string(header->height) +
                     (header->has_boxes ? " boxes" : "");
  for (const JpxComponent& component : header->components) {
    text += " " + std::to_string(component.bits) + (component.is_signed ? "s" : "");
  }
  for (const JpxColor& color : header->colors) {
    text += " color " + std::to_string(color.method) + " " + std::to_string(color.approximation) +
            " " + std::to_string(color.space);
  }
  for (const JpxChannelKind channel : header->channels) {
    text += " channel " + std::to_string(static_cast<int>(channel));
  }
  return text + " columns " + std::to_string(header->palette_columns) + " at " +
         NumberText(header->dpi_x) + " " + NumberText(header->dpi_y) +
         (header->HasAlpha() ? " alpha" : "") + (header->HasPremultipliedAlpha() ? " mixed" : "") +
         " colors " + std::to_string(header->CountColors()) + (header->IsYcc() ? " ycc" : "");
}

std::string Box(const std::string& type, const std::string& content) {
  return Big32(static_cast<std::uint32_t>(content.size() + 8)) + type + content;
}

TEST(DamagedHeaders, OfJpxTellWhatIsLeft) {
  const std::string stream = std::string("\xFF\x4F\xFF\x51", 4) + Big16(44) + Big16(0) + Big32(12) +
                             Big32(9) + Big32(2) + Big32(3) + std::string(16, '\0') + Big16(2) +
                             std::string("\7\1\1\x87\1\1", 6);
  const auto resolution = [](const char* type, unsigned up, unsigned across) {
    return Box(type, Big16(up) + Big16(2) + Big16(across) + Big16(3) + std::string("\1\2", 2));
  };
  const std::string colors = Box("colr", std::string("\4\0\1", 3)) +
                             Box("colr", std::string("\2\0\2", 3)) +
                             Box("colr", std::string("\1\0\3", 3) + Big32(18));
  const std::string head =
      Box("jP  ", "\r\n\x87\n") + Big32(1) + "free" + Big32(0) + Big32(20) + "1234" +
      Box("jp2h", colors +
                      Box("cdef", Big16(2) + Big16(0) + Big16(0) + Big16(1) + Big16(1) + Big16(2) +
                                      Big16(0)) +
                      Box("pclr", std::string("\0\2\3", 3)) +
                      Box("res ", resolution("resd", 100, 200) + resolution("resc", 300, 150)));
  std::string text = DamageText(stream, &JpxText);
  text += DamageText(head + Box("jp2c", stream), &JpxText);
  text += DamageText(head + Big32(0) + "jp2c" + stream, &JpxText, 0);
  for (const unsigned space : {12U, 14U, 15U, 16U, 17U, 18U, 19U}) {
    const std::string color = Box("colr", std::string("\1\0\0", 3) + Big32(space));
    text += JpxText(Box("jP  ", "\r\n\x87\n") + Box("jp2h", color) + Box("jp2c", stream)) + "\n";
  }
  EXPECT_TRUE(IsAsExpected("codecs/jpx_headers.txt", text));
}

}  // namespace
}  // namespace TarnixTools::engines
