// What the pages of a document show of its images, and how large: looked at once, before anything is
// changed.
//
//   const DocumentSurvey survey(document, pages);
//   if (const ImagePlacement* placement = survey.PlacementOf(number)) {
//     const double dpi = 72 * image.width / placement->width_points;
#ifndef TARNIX_ENGINES_OPTIMIZER_SURVEY_DOCUMENTSURVEY_H_
#define TARNIX_ENGINES_OPTIMIZER_SURVEY_DOCUMENTSURVEY_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "pdf/Box.h"
#include "pdf/content/ContentVisitor.h"
#include "pdf/file/Document.h"
#include "pdf/tree/PageTree.h"

namespace TarnixTools::engines::optimizer {

// All uses of an image together.
struct ImagePlacement {
  void Include(const ImagePlacement& other);

  double width_points = 0;  // of the largest use, along the image's own sides
  double height_points = 0;
  pdf::Box shown{1, 1, 0, 0};  // of the unit square that the image fills, around what all uses show
  bool is_known = true;        // false: of some use nobody knows the size
  // By each use it is the only image of a page, covers most of it, and hides what is behind it.
  bool is_page_picture = true;
  bool has_default_spaces = false;  // device colours may stand for others (ISO 32000-2, 8.6.5.6)
};

class DocumentSurvey : private pdf::ContentVisitor {
 public:
  // Goes through all pages, on all layers, and all that they lead to. Both are used only here.
  // Throws pdf::Error for a document that cannot be read any more.
  //   text - is told of each string that is shown; null for nobody
  DocumentSurvey(pdf::Document& document, const pdf::PageTree& pages,
                 pdf::ContentVisitor* text = nullptr);

  // Null for an image that no content draws.
  const ImagePlacement* PlacementOf(std::uint32_t number) const;

  // All images that content draws, ascending.
  std::vector<std::uint32_t> Images() const;

  // Streams of content in which, or beside which, images stand inline.
  const std::set<std::uint32_t>& ContentsWithImages() const { return contents_with_images_; }

 private:
  void WalkPages(pdf::Document& document, const pdf::PageTree& pages);
  void WalkRest(pdf::Document& document, const pdf::PageTree& pages);

  void EndPage();
  bool CoversPage(const pdf::ImageUse& image) const;

  bool EnterContent(const pdf::ContentEntry& entry) override;
  void LeaveContent(const pdf::ContentEntry& entry) override;
  void DrawImage(const pdf::ImageUse& image) override;
  std::optional<pdf::TextAdvance> ShowText(const pdf::StringUse& string) override;

  std::unordered_map<std::uint32_t, ImagePlacement> placements_;
  std::unordered_set<std::uint32_t> entered_;  // content other than pages
  pdf::ContentVisitor* text_;
  std::set<std::uint32_t> contents_with_images_;
  std::vector<bool> has_inline_images_;  // of the content that is open, the innermost last
  std::size_t images_on_page_ = 0;
  std::vector<std::uint32_t> page_pictures_;  // of them, those that cover the page
  std::size_t depth_in_others_ = 0;           // content within the page that is no form
  pdf::Box page_;                             // what is seen of it, in points
  bool has_places_ = true;                    // whether the walk knows where things are on a page
};

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_ENGINES_OPTIMIZER_SURVEY_DOCUMENTSURVEY_H_
