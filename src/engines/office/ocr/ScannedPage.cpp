#include "engines/office/ocr/ScannedPage.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "engines/support/drawing/PageBitmap.h"
#include "foundation/Utf8.h"

namespace TarnixTools::engines::office {

namespace {

constexpr double kPointsPerInch = 72;
constexpr double kDpi = 300;
constexpr double kMostPixels = 5000;  // of a side
constexpr double kLeastConfidence = 25;
constexpr std::size_t kWordsOfText = 8;  // from here on a page is text
constexpr double kSureOfText = 55;       // of the words' confidence

constexpr double kCapitals = 0.70;  // of the em: capitals, digits and letters with ascenders
constexpr double kSmallLetters = 0.48;

GrayPicture GrayOf(const PageBitmap& bitmap) {
  GrayPicture gray{bitmap.width, bitmap.height, {}};
  gray.pixels.reserve(static_cast<std::size_t>(bitmap.width) *
                      static_cast<std::size_t>(bitmap.height));
  for (int y = 0; y < bitmap.height; ++y) {
    const std::uint8_t* pixel = bitmap.Row(y);
    for (int x = 0; x < bitmap.width; ++x, pixel += 4) {
      gray.pixels.push_back(
          static_cast<std::uint8_t>((29 * pixel[0] + 150 * pixel[1] + 77 * pixel[2]) >> 8));
    }
  }
  return gray;
}

bool IsSmall(char32_t c) {
  constexpr std::u32string_view kSmall = U"acegmnopqrsuvwxyz.,-:;'\"";
  return kSmall.find(c) != std::u32string_view::npos;
}

// The em of a word, in pixels, from how high it is over its baseline.
double EmOf(const RecognisedWord& word) {
  const std::u32string text = Utf8ToUtf32(word.text);
  const bool is_small = std::all_of(text.begin(), text.end(), IsSmall);
  return std::max(1.0, word.baseline - word.top) / (is_small ? kSmallLetters : kCapitals);
}

// Half a point more or less is chance: sizes are what they were typed in.
double Rounded(double points) {
  return std::clamp(std::round(points * 2) / 2, 4.0, 200.0);
}

// Words of one line have one size, in points.
std::map<std::uint32_t, double> SizesOf(const std::vector<RecognisedWord>& words, double scale) {
  std::map<std::uint32_t, std::vector<double>> ems;
  for (const RecognisedWord& word : words) {
    ems[word.line].push_back(EmOf(word));
  }
  std::map<std::uint32_t, double> sizes;
  for (auto& [line, found] : ems) {
    const auto middle = found.begin() + std::ssize(found) / 2;
    std::nth_element(found.begin(), middle, found.end());
    sizes[line] = Rounded(*middle * scale);
  }
  return sizes;
}

// From pixels of the turned picture to points of the page.
pdf::Matrix ToPage(const RecognisedText& text, int width, int height, double scale) {
  const double right = width * scale;
  const double bottom = height * scale;
  switch (text.turn) {
    case 90:
      return {0, -scale, scale, 0, 0, bottom};
    case 180:
      return {-scale, 0, 0, -scale, right, bottom};
    case 270:
      return {0, scale, -scale, 0, right, 0};
    default:
      return {scale, 0, 0, scale, 0, 0};
  }
}

class TextAdder {
 public:
  TextAdder(const pdf::Matrix& matrix, double scale, PageModel& page)
      : matrix_(matrix), scale_(scale), page_(&page) {
    face_ =
        std::make_shared<const Typeface>(Typeface{.family = "Times New Roman", .is_serif = true});
  }

  // The characters share the width of the word.
  void Add(const RecognisedWord& word, double size) {
    const std::u32string text = Utf8ToUtf32(word.text);
    const double step = static_cast<double>(word.right - word.left) /
                        static_cast<double>(std::max<std::size_t>(1, text.size()));
    for (std::size_t i = 0; i < text.size(); ++i) {
      const pdf::Point origin =
          matrix_.Apply(word.left + step * static_cast<double>(i), word.baseline);
      page_->glyphs.push_back({.text = static_cast<std::uint32_t>(page_->text.size()),
                               .length = 1,
                               .style = StyleOf(size),
                               .x = origin.x,
                               .y = origin.y,
                               .advance = step * scale_});
      page_->text += text[i];
    }
  }

 private:
  std::uint32_t StyleOf(double size) {
    const auto [place, is_new] =
        styles_.try_emplace(size, static_cast<std::uint32_t>(page_->styles.size()));
    if (is_new) {
      TextStyle style;
      style.face = face_;
      style.size = size;
      style.direction_x = matrix_.a / scale_;
      style.direction_y = matrix_.b / scale_;
      page_->styles.push_back(style);
    }
    return place->second;
  }

  pdf::Matrix matrix_;
  double scale_;
  PageModel* page_;
  std::shared_ptr<const Typeface> face_;
  std::map<double, std::uint32_t> styles_;
};

// Whether what was recognised is what the page is about.
bool IsText(const std::vector<RecognisedWord>& words) {
  double confidence = 0;
  for (const RecognisedWord& word : words) {
    confidence += word.confidence;
  }
  return words.size() >= kWordsOfText &&
         confidence >= kSureOfText * static_cast<double>(words.size());
}

}  // namespace

void AddRecognisedText(const RecognisedText& text, int picture_width, int picture_height,
                       double scale, PageModel& page) {
  std::vector<RecognisedWord> words = text.words;
  std::erase_if(words,
                [](const RecognisedWord& word) { return word.confidence < kLeastConfidence; });
  if (!IsText(words)) {
    return;  // a photograph: the picture says more than some letters that are found in it
  }
  page.glyphs.clear();  // a stamp or a page number, which was recognised with the rest
  const std::map<std::uint32_t, double> sizes = SizesOf(words, scale);
  TextAdder adder(ToPage(text, picture_width, picture_height, scale), scale, page);
  for (const RecognisedWord& word : words) {
    adder.Add(word, sizes.at(word.line));
  }
  page.images.clear();
}

ScannedPages::ScannedPages(const platform::WidePath& path, const std::string& password,
                           const std::atomic<bool>& is_cancelled)
    : recogniser_(is_cancelled), document_(path, password) {
  document_.time().set_cancel_flag(&is_cancelled);
}

void ScannedPages::AddText(PageModel& page) {
  const double side = std::max({page.width / page.scale, page.height / page.scale, 1.0});
  const double dpi = std::min(kDpi, kMostPixels * kPointsPerInch / side);
  const GrayPicture picture = GrayOf(DrawPage(document_, static_cast<int>(page.number), dpi));
  const RecognisedText text = recogniser_.Recognise(picture, static_cast<int>(std::lround(dpi)));
  AddRecognisedText(text, picture.width, picture.height, page.scale * kPointsPerInch / dpi, page);
}

}  // namespace TarnixTools::engines::office
