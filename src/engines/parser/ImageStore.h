// Puts images into JPEG files.
#ifndef TARNIX_ENGINES_PARSER_IMAGESTORE_H_
#define TARNIX_ENGINES_PARSER_IMAGESTORE_H_

#include <cstdint>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>

#include "engines/support/images/DocumentImage.h"
#include "engines/support/pictures/RowSource.h"
#include "foundation/Platform.h"

namespace TarnixTools::engines::parser {

// An image that can be stored.
struct PreparedImage {
  DocumentImage image;
  const ImageFacts* facts = nullptr;
  int orientation = 1;
  bool is_ready_jpeg = false;  // its data is the file
  RowSourcePtr picture;        // upright; null when it has been stored before
};

class ImageStore {
 public:
  enum class Outcome : std::uint8_t {
    kComplete,
    kPartial,  // some of it could not be read and is white
  };

  // Nothing for an image of which nothing can be read, or that is too large for a file. Throws
  // pdf::Error for a document that cannot be read any more.
  //   facts       - outlive what is returned
  //   orientation - as in EXIF: how the image is drawn
  std::optional<PreparedImage> Prepare(const DocumentImage& image, const ImageFacts& facts,
                                       int orientation);

  // Writes the image as the document stores it; false when a part could not be read and is white. Throws
  // ExpaFailure and pdf::Error.
  static bool StoreOriginal(const DocumentImage& image, const ImageFacts& facts,
                            const platform::WidePath& path);

  // Writes the image to a file. Throws ExpaFailure and pdf::Error.
  Outcome Store(PreparedImage& prepared, const platform::WidePath& path);

 private:
  // What a file was made of, for when the same image comes again.
  struct Kept {
    std::uint64_t key = 0;
    Outcome outcome = Outcome::kComplete;
    std::shared_ptr<const std::string> bytes;
  };

  static std::uint64_t KeyOf(const DocumentImage& image, int orientation);
  const Kept* Find(std::uint64_t key);
  void Keep(Kept kept);

  std::list<Kept> kept_;  // last used first
  std::size_t kept_bytes_ = 0;

  // What has been stored, and where it is kept, if it is.
  std::unordered_map<std::uint64_t, std::optional<std::list<Kept>::iterator>> stored_;
};

}  // namespace TarnixTools::engines::parser

#endif  // TARNIX_ENGINES_PARSER_IMAGESTORE_H_
