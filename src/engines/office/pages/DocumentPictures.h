// Pictures of the pages of a document in a file.
#ifndef TARNIX_ENGINES_OFFICE_PAGES_DOCUMENTPICTURES_H_
#define TARNIX_ENGINES_OFFICE_PAGES_DOCUMENTPICTURES_H_

#include <atomic>
#include <map>
#include <memory>
#include <string>

#include "engines/office/pages/PictureSource.h"
#include "foundation/Platform.h"

namespace TarnixTools::engines::office {

class DocumentPictures : public PictureSource {
 public:
  // The file is opened when the first picture is wanted.
  //   password     - UTF-8
  //   is_cancelled - ends drawing; outlives this
  DocumentPictures(platform::WidePath path, std::string password,
                   const std::atomic<bool>& is_cancelled);
  ~DocumentPictures() override;

  // The page's boxes are so much smaller than on the page as it is seen (PageModel.h).
  void SetScale(std::size_t page_index, double scale) { scales_[page_index] = scale; }

  std::optional<OfficePicture> PictureOf(std::size_t page_index, std::span<const ImagePlace> images,
                                         const pdf::Box& box) override;
  std::optional<OfficePicture> DrawingOf(std::size_t page_index, const pdf::Box& box) override;

 private:
  class Images;
  class Drawings;

  platform::WidePath path_;
  std::string password_;
  const std::atomic<bool>* is_cancelled_;
  std::map<std::size_t, double> scales_;  // of the pages that have another one than 1
  std::unique_ptr<Images> images_;        // null before the first
  std::unique_ptr<Drawings> drawings_;    // null before the first
};

}  // namespace TarnixTools::engines::office

#endif  // TARNIX_ENGINES_OFFICE_PAGES_DOCUMENTPICTURES_H_
