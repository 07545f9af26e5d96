// Pictures painted onto pages of one document, each stored once however often its file is given.
#ifndef TARNIX_ENGINES_TOOLBOX_CONTENT_TARGETIMAGES_H_
#define TARNIX_ENGINES_TOOLBOX_CONTENT_TARGETIMAGES_H_

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>

#include "engines/support/imagefiles/ImageFile.h"
#include "engines/support/images/EncodedImage.h"
#include "engines/support/images/ImageWriter.h"
#include "engines/toolbox/content/PageContent.h"
#include "pdf/Matrix.h"
#include "pdf/file/ByteSource.h"
#include "pdf/write/FileWriter.h"

namespace TarnixTools::engines::toolbox {

// What is known of an image file by its bytes.
struct StoredImage {
  std::uint32_t width = 0;  // pixels, as the picture is seen upright
  std::uint32_t height = 0;
  pdf::Matrix orientation;                // puts the stored picture upright into the unit square
  std::optional<AddedResource> resource;  // once it is written
  // Until then: what will be written. Parts of it may lie in the file.
  std::optional<EncodedImage> picture;
};

class TargetImages {
 public:
  // The writer outlives this.
  explicit TargetImages(pdf::FileWriter& writer) : images_(writer) {}

  // Throws ImageError; pdf::Error when the file cannot be read.
  std::shared_ptr<StoredImage> Open(pdf::ByteSource& file);

  // The image's resource, written when it is first asked for. file: the image's.
  AddedResource ResourceOf(StoredImage& image, pdf::ByteSource& file);

 private:
  std::string IdentityOf(pdf::ByteSource& file);

  ImageWriter images_;
  std::unordered_map<std::string, std::shared_ptr<StoredImage>> by_identity_;
  std::size_t kept_bytes_ = 0;  // of small files, which are their own identity
  std::size_t written_ = 0;
};

}  // namespace TarnixTools::engines::toolbox

#endif  // TARNIX_ENGINES_TOOLBOX_CONTENT_TARGETIMAGES_H_
