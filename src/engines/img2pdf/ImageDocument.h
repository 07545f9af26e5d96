// A document being made of pictures: written as the pages come, put under its name when complete.
#ifndef TARNIX_ENGINES_IMG2PDF_IMAGEDOCUMENT_H_
#define TARNIX_ENGINES_IMG2PDF_IMAGEDOCUMENT_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "engines/img2pdf/PageLayout.h"
#include "engines/support/files/SavedFile.h"
#include "engines/support/imagefiles/ImageFile.h"
#include "engines/support/images/ImageWriter.h"
#include "foundation/Platform.h"
#include "pdf/crypt/Security.h"
#include "pdf/file/ByteSource.h"
#include "pdf/write/FileWriter.h"
#include "pdf/write/PageTreeWriter.h"

namespace TarnixTools::engines::img2pdf {

// Reads a file of the system.
class FileSource : public pdf::ByteSource {
 public:
  // Throws Error(kReadFailed) when its length cannot be had.
  explicit FileSource(platform::FilePtr file);

  std::uint64_t Size() const override { return size_; }

  std::size_t ReadAt(std::uint64_t offset, char* buffer, std::size_t size) override;

 private:
  platform::FilePtr file_;
  std::uint64_t size_ = 0;
};

class ImageDocument {
 public:
  // security: for an encrypted document.
  ImageDocument(platform::OutputFile output, std::optional<pdf::Security> security);

  // A page for each picture of the file. Throws pdf::Error and ImageError, and afterwards the
  // document is good for nothing; false when the settings leave no space for a picture.
  bool AddPages(ImageFile& file, pdf::ByteSource& source, const PageSettings& settings);

  // Throws pdf::Error; nothing is left of the document then.
  void Close();

 private:
  void AddPage(const EncodedImage& image, pdf::ByteSource& source, const PageLayout& layout);
  std::uint32_t WriteContent(const pdf::Matrix& matrix);

  SavedFile file_;
  std::optional<pdf::Security> security_;
  pdf::FileWriter writer_;
  pdf::PageTreeWriter pages_;
  ImageWriter images_;
};

}  // namespace TarnixTools::engines::img2pdf

#endif  // TARNIX_ENGINES_IMG2PDF_IMAGEDOCUMENT_H_
