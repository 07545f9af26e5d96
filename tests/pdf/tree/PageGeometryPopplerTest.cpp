// The geometry of pages, held against what pdfinfo says of them.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "pdf/tree/PageGeometry.h"
#include "support/RawPdf.h"
#include "support/Readers.h"
#include "support/Surroundings.h"
#include "support/TempDir.h"

namespace TarnixTools::pdf {
namespace {

using ::TarnixTools::testing::RawPdf;

// What is said of one page, by "rot", "MediaBox", ...
using Facts = std::map<std::string, std::string>;

std::string TextOf(double left, double bottom, double right, double top) {
  char text[200];
  // Nothing is less than nothing.
  std::snprintf(text, sizeof text, "%.2f %.2f %.2f %.2f", left + 0.0, bottom + 0.0, right + 0.0,
                top + 0.0);
  return text;
}

// Of all pages, in order; none when pdfinfo cannot read the document.
std::vector<Facts> FactsByPoppler(const std::string& path) {
  std::vector<Facts> pages;
  const auto result = testing::RunProgram({"pdfinfo", "-box", "-f", "1", "-l", "-1", path});
  std::istringstream lines(result.output);
  for (std::string line; std::getline(lines, line);) {
    std::size_t page = 0;
    char key[20] = {};
    int end = 0;
    if (std::sscanf(line.c_str(), "Page %zu %19[A-Za-z]:%n", &page, key, &end) != 2 || end == 0) {
      continue;
    }
    pages.resize(std::max(pages.size(), page));
    const char* value = line.c_str() + end;
    double box[4] = {};
    if (std::sscanf(value, "%lf %lf %lf %lf", &box[0], &box[1], &box[2], &box[3]) == 4) {
      pages[page - 1][key] = TextOf(box[0], box[1], box[2], box[3]);
    } else if (std::string(key) == "rot") {
      pages[page - 1][key] = std::to_string(std::stoi(value));
    }
  }
  return pages;
}

bool ShowsNothing(const Facts& page) {
  double box[4] = {};
  return std::sscanf(page.at("CropBox").c_str(), "%lf %lf %lf %lf", &box[0], &box[1], &box[2],
                     &box[3]) == 4 &&
         (box[0] >= box[2] || box[1] >= box[3]);
}

Facts FactsOf(const PageGeometry& geometry) {
  const auto text = [](const Box& box) { return TextOf(box.left, box.bottom, box.right, box.top); };
  return {{"rot", std::to_string(geometry.rotation)}, {"MediaBox", text(geometry.media_box)},
          {"CropBox", text(geometry.crop_box)},       {"BleedBox", text(geometry.bleed_box)},
          {"TrimBox", text(geometry.trim_box)},       {"ArtBox", text(geometry.art_box)}};
}

std::vector<Facts> FactsByUs(const std::string& bytes) {
  const auto document = Document::Open(std::make_unique<MemorySource>(bytes), "");
  const PageTree pages(*document);
  std::vector<Facts> facts;
  for (const PageTree::Page& page : pages.pages()) {
    facts.push_back(FactsOf(ReadPageGeometry(*document, pages, page)));
  }
  return facts;
}

// One document of which each page has some of the entries; the two nodes above have others.
std::string MadeDocument(const std::vector<std::string>& pages, const std::string& node,
                         const std::string& root) {
  RawPdf file;
  std::string kids;
  for (std::size_t i = 0; i < pages.size(); ++i) {
    kids += std::to_string(10 + i) + " 0 R ";
    file.Object(static_cast<int>(10 + i), "<</Type/Page/Parent 3 0 R" + pages[i] + ">>");
  }
  const std::string count = "/Count " + std::to_string(pages.size());
  return file.Object(1, "<</Type/Catalog/Pages 2 0 R>>")
      .Object(2, "<</Type/Pages/Kids[3 0 R]" + count + root + ">>")
      .Object(3, "<</Type/Pages/Parent 2 0 R/Kids[" + kids + "]" + count + node + ">>")
      .Object(4, "90")
      .Object(5, "[0 0 200 100]")
      .Table();
}

// Where readers differ, poppler is no judge: it takes a crop box that is wider than the media box
// for as wide as that, turns by whole numbers only, and shows nothing of a page whose crop box lies
// beside its media box.
TEST(PageGeometryPoppler, AgreesOnMadeDocuments) {
  TARNIX_NEED_PROGRAM("pdfinfo");
  const std::vector<std::string> pages = {
      "",
      "/MediaBox[0 0 200 100]",
      "/MediaBox 5 0 R/Rotate 4 0 R",
      "/MediaBox[200 100 0 0]/CropBox[150 50 20 10]",
      "/MediaBox[-50.5 -20 150.25 80]/CropBox[-900 -900 900 900]",
      "/MediaBox[0 0 200 100]/CropBox[150 50 250 120]",
      "/MediaBox[0 0 200 100]/CropBox[10 20 110 70]/TrimBox[15 25 100 60]/BleedBox[5 5 300 95]",
      "/MediaBox[0 0 200 100]/ArtBox[20 30 60 50]/UserUnit 2.5",
      "/CropBox[5 5 50 50]",
      "/Rotate 0",
      "/Rotate 180",
      "/Rotate 270",
      "/Rotate 360",
      "/Rotate 450",
      "/Rotate -90",
      "/Rotate -270",
      "/Rotate 3600",
      "/Rotate null/MediaBox null",
  };
  const std::vector<std::pair<std::string, std::string>> above = {
      {"", "/MediaBox[0 0 300 300]"},
      {"/MediaBox[0 0 70 80]/Rotate 90", "/MediaBox[0 0 300 300]/CropBox[0 0 60 60]"},
      {"/CropBox[10 10 110 90]", "/MediaBox[0 0 300 300]/CropBox[0 0 60 60]/Rotate 270"},
  };
  const testing::TempDir directory;
  for (const auto& [node, root] : above) {
    const std::string bytes = MadeDocument(pages, node, root);
    const std::vector<Facts> theirs =
        FactsByPoppler(testing::WriteBytes(directory.Path("made.pdf"), bytes));
    const std::vector<Facts> ours = FactsByUs(bytes);
    ASSERT_EQ(ours.size(), pages.size());
    ASSERT_EQ(theirs.size(), pages.size());
    for (std::size_t i = 0; i < pages.size(); ++i) {
      EXPECT_EQ(ours[i], theirs[i]) << pages[i] << " below " << node << " below " << root;
    }
  }
}

TEST(PageGeometryPoppler, AgreesOnRealDocuments) {
  TARNIX_NEED_PROGRAM("pdfinfo");
  TARNIX_NEED_CORPUS("general");
  std::size_t compared = 0;
  for (const auto& entry : std::filesystem::directory_iterator(testing::CorpusDir() + "/general")) {
    const std::vector<Facts> theirs = FactsByPoppler(entry.path());
    if (theirs.empty()) {
      continue;  // no document, or one with a password
    }
    const std::vector<Facts> ours = FactsByUs(testing::ReadBytes(entry.path()));
    ASSERT_EQ(ours.size(), theirs.size()) << entry.path();
    for (std::size_t i = 0; i < ours.size(); ++i) {
      if (ShowsNothing(theirs[i])) {
        continue;
      }
      EXPECT_EQ(ours[i], theirs[i]) << entry.path() << " page " << i + 1;
    }
    compared += ours.size();
  }
  EXPECT_GT(compared, 100U);
}

}  // namespace
}  // namespace TarnixTools::pdf
