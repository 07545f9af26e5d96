// Small files of other programs: what is read of them, whole, damaged and cut. Where a part of the
// file does not count, nothing changes; where it does, the text tells what.
#include <algorithm>
#include <string>

#include <gtest/gtest.h>

#include "engines/support/imagefiles/ImageFileText.h"
#include "engines/support/images/WrittenImage.h"
#include "support/Damage.h"
#include "support/Expected.h"
#include "support/SmallImages.h"

namespace TarnixTools::engines {
namespace {

using testing::DamageText;
using testing::ImageFileText;
using testing::IsAsExpected;
using testing::SmallImage;
using testing::SmallImages;

// Pictures whose pixels an independent decoder (Pillow) gives alike, but for what a lossy one rounds.
TEST(SmallImages, AreReadPixelByPixel) {
  std::string text;
  for (const SmallImage& image : SmallImages()) {
    text += image.name + " " + ImageFileText(image.bytes) + "\n";
    testing::OpenedImage opened(image.bytes);
    for (std::size_t i = 0; i < opened.file().frame_count(); ++i) {
      WrittenImage written(opened.Embed(i), image.bytes);
      Pixels pixels = written.Read(false);
      text += std::to_string(BytesPerPixel(pixels.layout)) + " bytes a pixel\n" + pixels.Text();
    }
  }
  EXPECT_TRUE(IsAsExpected("imagefiles/pixels.txt", text));
}

// Where the data of a PNG picture begins, of which every byte depends on the one before; elsewhere it
// is the header that counts.
std::size_t EndOfHeader(const std::string& file) {
  return std::min<std::size_t>(file.find("IDAT"), 240) + 12;
}

class DamagedImages : public ::testing::TestWithParam<SmallImage> {};

TEST_P(DamagedImages, GiveWhatIsLeftOfThem) {
  const auto& [name, bytes] = GetParam();
  EXPECT_TRUE(IsAsExpected("imagefiles/damaged/" + name + ".txt",
                           DamageText(bytes, &ImageFileText, EndOfHeader(bytes))));
}

INSTANTIATE_TEST_SUITE_P(Files, DamagedImages, ::testing::ValuesIn(SmallImages()),
                         [](const auto& file) {
                           std::string name = file.param.name;
                           std::replace(name.begin(), name.end(), '.', '_');
                           return name;
                         });

}  // namespace
}  // namespace TarnixTools::engines
