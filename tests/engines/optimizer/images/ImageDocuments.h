// A document for each class of images that documents have, of a page that draws it.
//
//   for (const ImageDocument& document : ImageDocuments()) {
//     WriteBytes(path, document.make());
#ifndef TARNIX_TESTS_ENGINES_OPTIMIZER_IMAGES_IMAGEDOCUMENTS_H_
#define TARNIX_TESTS_ENGINES_OPTIMIZER_IMAGES_IMAGEDOCUMENTS_H_

#include <ostream>
#include <string>
#include <vector>

namespace TarnixTools::engines::optimizer {

// How much of a page may change by being compressed.
enum class Keeps {
  kLook,        // pixels are resampled and coded with loss
  kLookOfInks,  // and CMYK becomes RGB where that is asked for: viewers differ on what inks look like
  kPixels,      // every pixel is what it was
};

struct ImageDocument {
  const char* name;  // of the class, fit for the name of a test
  std::string (*make)();
  Keeps keeps = Keeps::kLook;
};

// All of them, each under a name of its own.
const std::vector<ImageDocument>& ImageDocuments();

inline void PrintTo(const ImageDocument& document, std::ostream* out) {
  *out << document.name;
}

}  // namespace TarnixTools::engines::optimizer

#endif  // TARNIX_TESTS_ENGINES_OPTIMIZER_IMAGES_IMAGEDOCUMENTS_H_
