// Pictures of a document's pages as files that Office documents hold.
#ifndef TARNIX_ENGINES_OFFICE_PAGES_PICTURESOURCE_H_
#define TARNIX_ENGINES_OFFICE_PAGES_PICTURESOURCE_H_

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "engines/support/pages/PageModel.h"

namespace TarnixTools::engines::office {

struct OfficePicture {
  std::string bytes;  // of a JPEG or a PNG file
  bool is_jpeg = false;
  std::uint32_t width = 0;  // pixels
  std::uint32_t height = 0;
};

// Where writers get pictures from, one at a time. For one thread.
class PictureSource {
 public:
  virtual ~PictureSource() = default;

  // Images that make one picture, as they are seen within the box: an image that stands upright and
  // whole as it is, with its transparency; all else as the page shows it, without the text. Nothing
  // for what cannot be read.
  //   page_index - zero-based, in the document
  //   box        - of the picture, in points on the page as it is seen, from its upper-left corner
  virtual std::optional<OfficePicture> PictureOf(std::size_t page_index,
                                                 std::span<const ImagePlace> images,
                                                 const pdf::Box& box) = 0;

  // What the page shows within the box, without its text. Nothing for what cannot be drawn.
  virtual std::optional<OfficePicture> DrawingOf(std::size_t page_index, const pdf::Box& box) = 0;
};

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_PAGES_PICTURESOURCE_H_
