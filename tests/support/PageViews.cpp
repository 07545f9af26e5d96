#include "support/PageViews.h"

#include <algorithm>
#include <filesystem>
#include <regex>
#include <sstream>
#include <stdexcept>

#include "support/Readers.h"
#include "support/TempDir.h"

namespace TarnixTools::testing {
namespace {

Picture ParsePpm(const std::string& bytes) {
  std::istringstream in(bytes);
  std::string magic;
  int most = 0;
  Picture picture;
  in >> magic >> picture.width >> picture.height >> most;
  in.get();
  if (magic != "P6" || most != 255) {
    throw std::runtime_error("not a picture");
  }
  picture.pixels = bytes.substr(static_cast<std::size_t>(in.tellg()));
  return picture;
}

// Runs a program that draws pages into files of the directory, whose numbers are of equal length.
std::vector<Picture> Drawn(const TempDir& directory, const std::vector<std::string>& command) {
  const ProgramResult result = RunProgram(command);
  const std::vector<std::string> names = directory.Names();
  if (names.empty()) {  // MuPDF tells of damage by its exit status, too, and draws what it can
    throw std::runtime_error(command.front() + ": " + result.errors);
  }
  std::vector<Picture> pictures;
  for (const std::string& name : names) {
    pictures.push_back(ParsePpm(ReadBytes(directory.Path(name))));
  }
  return pictures;
}

}  // namespace

std::vector<std::vector<WordBox>> WordBoxes(const std::string& path) {
  const ProgramResult result =
      RunProgram({"pdftotext", "-bbox", "-cropbox", "-enc", "UTF-8", path, "-"});
  static const std::regex page_line(R"re(<page width="([0-9.]+)" height="([0-9.]+)">)re");
  static const std::regex word_line(
      R"re(<word xMin="([-0-9.]+)" yMin="([-0-9.]+)" xMax="([-0-9.]+)" yMax="([-0-9.]+)">(.*)</word>)re");
  const std::vector<PageFacts> facts = PageFactsOf(path);  // page sizes come without the rotation
  std::vector<std::vector<WordBox>> pages;
  double height = 0;
  std::istringstream lines(result.output);
  for (std::string line; std::getline(lines, line);) {
    std::smatch match;
    if (std::regex_search(line, match, page_line)) {
      const bool is_lying = facts.at(pages.size()).rotation % 180 != 0;
      height = std::stod(match[is_lying ? 1 : 2]);
      pages.emplace_back();
    } else if (std::regex_search(line, match, word_line)) {
      pages.back().push_back({match[5],
                              {std::stod(match[1]), height - std::stod(match[4]),
                               std::stod(match[3]), height - std::stod(match[2])}});
    }
  }
  return pages;
}

Pixel Picture::At(int x, int y) const {
  const auto at = static_cast<std::size_t>(y * width + x) * 3;
  return {static_cast<unsigned char>(pixels[at]), static_cast<unsigned char>(pixels[at + 1]),
          static_cast<unsigned char>(pixels[at + 2])};
}

std::vector<Picture> Pictures(const std::string& path, int dpi) {
  return Pictures(path, dpi, "");
}

std::vector<Picture> Pictures(const std::string& path, int dpi, const std::string& password) {
  const TempDir directory;
  return Drawn(directory, {"pdftoppm", "-cropbox", "-upw", password, "-r", std::to_string(dpi),
                           path, directory.Path("page")});
}

std::vector<Picture> PicturesByMupdf(const std::string& path, int dpi) {
  const TempDir directory;
  return Drawn(directory, {"mutool", "draw", "-q", "-r", std::to_string(dpi), "-F", "ppm", "-o",
                           directory.Path("page%04d.ppm"), path});
}

std::optional<Box> BoxOf(const Picture& picture, int dpi,
                         const std::function<bool(int x, int y)>& question) {
  int left = picture.width;
  int right = -1;
  int top = picture.height;
  int bottom = -1;
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      if (question(x, y)) {
        left = std::min(left, x);
        right = std::max(right, x);
        top = std::min(top, y);
        bottom = std::max(bottom, y);
      }
    }
  }
  if (right < 0) {
    return std::nullopt;
  }
  const double points = 72.0 / dpi;
  return Box{left * points, (picture.height - bottom - 1) * points, (right + 1) * points,
             (picture.height - top) * points};
}

std::optional<Box> DifferenceOf(const Picture& a, const Picture& b, int dpi) {
  if (a.width != b.width || a.height != b.height) {
    throw std::runtime_error("pictures of different sizes");
  }
  return BoxOf(a, dpi, [&](int x, int y) { return a.At(x, y) != b.At(x, y); });
}

}  // namespace TarnixTools::testing
