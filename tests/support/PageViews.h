// What pages show: the boxes of their words and pictures of them, as independent programs see them.
//
//   for (const WordBox& word : WordBoxes(path)[0]) { ... }
//   Picture page = Pictures(path, 72)[0];
#ifndef TARNIX_TESTS_SUPPORT_PAGE_VIEWS_H_
#define TARNIX_TESTS_SUPPORT_PAGE_VIEWS_H_

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace TarnixTools::testing {

// Points from the lower-left corner of the page as it is seen.
struct Box {
  bool operator==(const Box&) const = default;

  double left = 0;
  double bottom = 0;
  double right = 0;
  double top = 0;
};

struct WordBox {
  std::string text;
  Box box;
};

// The words of each page, by pdftotext: from the ascent to the descent of the font, and as wide as
// their advance.
std::vector<std::vector<WordBox>> WordBoxes(const std::string& path);

using Pixel = std::array<int, 3>;  // red, green, blue, 0 to 255

struct Picture {
  int width = 0;
  int height = 0;
  std::string pixels;  // three bytes each, top row first

  bool operator==(const Picture&) const = default;

  Pixel At(int x, int y) const;
};

// Every page on white, by pdftoppm, cropped as a viewer shows it.
std::vector<Picture> Pictures(const std::string& path, int dpi);
std::vector<Picture> Pictures(const std::string& path, int dpi, const std::string& password);

// By mutool, which crops in the same way.
std::vector<Picture> PicturesByMupdf(const std::string& path, int dpi);

// Around the pixels for which the question is answered with yes, in points; nothing when there are
// none.
std::optional<Box> BoxOf(const Picture& picture, int dpi,
                         const std::function<bool(int x, int y)>& question);

// Around what two pictures of the same size have different.
std::optional<Box> DifferenceOf(const Picture& a, const Picture& b, int dpi);

}  // namespace TarnixTools::testing

#endif  // TARNIX_TESTS_SUPPORT_PAGE_VIEWS_H_
